// Buffer-style writers of the text forms (Token-text, Text-string, plain
// text, Quoted-string), raw octets, Value-length blocks and Version-values.
// Every octet goes through the guarded stores of buffer.h; a writer returns
// WSP_OK only when each octet it counts was stored.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "buffer.h"
#include "primitives.h"

namespace {

bool usable(const wsp_buffer *buf) { return buf != nullptr && buf->data != nullptr; }

uint16_t text_length(const char *text) { return static_cast<uint16_t>(std::strlen(text)); }

// The octet tests of the two text forms, as objects the copy loop inlines.
constexpr auto token_octet = [](uint8_t c) { return wsp_is_token_char(c); };
// Printable ASCII, by far the most common case, costs one comparison.
constexpr auto text_octet = [](uint8_t c) { return static_cast<uint8_t>(c - 32) < 95 || wsp_is_text_char(c); };

// Copies count characters of text to data[at...], each of which must pass
// `allowed`, then the terminating NUL.  Characters before a refused one stay
// written.  False when a character is refused or an octet could not be
// stored.  When all count + 1 octets lie inside the region the characters
// are copied straight through data; otherwise octet by octet through the
// guarded store, which keeps what fits and refuses the rest.
template <typename Allowed>
bool copy_checked(wsp_buffer *buf, uint32_t at, const char *text, uint16_t count, Allowed allowed) {
    if (wsp_buffer_holds(buf, at, static_cast<uint32_t>(count) + 1)) {
        uint8_t *dst = buf->data + at;
        for (uint16_t i = 0; i < count; ++i) {
            const uint8_t c = static_cast<uint8_t>(text[i]);
            if (!allowed(c)) return false;
            dst[i] = c;
        }
        dst[count] = 0;
        return true;
    }
    for (uint16_t i = 0; i < count; ++i) {
        uint8_t c = static_cast<uint8_t>(text[i]);
        if (!allowed(c) || !wsp_buffer_store(buf, at + i, c)) return false;
    }
    return wsp_buffer_store(buf, at + count, 0);
}

// A Version-value text that fits this area is copied on the stack; longer
// texts get a heap copy.
constexpr uint16_t kVersionLocal = 64;

// The single Version-value octet, or 0 when the text does not have the
// numeric form.  `copy` is cut in place.
uint8_t numeric_version(char *copy) {
    char *pos = copy;
    char *major = wsp_strtoken(&pos, ".");
    if (major == nullptr) return 0;
    if (std::strlen(major) >= 2 || !wsp_ascii_is_digit(static_cast<uint8_t>(major[0]))) return 0;
    uint32_t major_value = wsp_strtou32(major, nullptr, 10);
    if (major_value > 7) return 0;
    uint8_t octet = static_cast<uint8_t>(0x80u | (major_value << 4));
    char *minor = wsp_strtoken(&pos, ".");
    if (minor == nullptr) return static_cast<uint8_t>(octet | 0x0Fu); // major only
    if (std::strlen(minor) != 1 || !wsp_ascii_is_digit(static_cast<uint8_t>(minor[0]))) return 0;
    uint32_t minor_value = wsp_strtou32(minor, nullptr, 10);
    // Minor 0 is written as 15, so "1.0" and "1" give the same octet.
    if (minor_value == 0) return static_cast<uint8_t>(octet | 0x0Fu);
    if (minor_value >= 15) return 0;
    return static_cast<uint8_t>(octet | minor_value);
}

} // namespace

extern "C" WSP_API int wsp_tokentext_encode_buff(const char *text, wsp_buffer *out) {
    if (text == nullptr || !usable(out)) return kWspErrFail;
    uint16_t len = text_length(text);
    if (out->size < static_cast<uint16_t>(len + out->length + 1)) return kWspErrFail;
    uint32_t at = wsp_buffer_tail_index(out);
    if (!copy_checked(out, at, text, len, token_octet)) return kWspErrFail;
    out->length = static_cast<uint16_t>(out->length + len + 1);
    return kWspOk;
}

// A text whose first octet is 128 or above gets the Quote octet 127 in
// front.  Quote and first octet are written before the room test, on
// purpose; length only counts them on success, and success needs them
// stored.
int wsp_append_text_string(const char *text, wsp_buffer *buf) {
    if (text == nullptr || !usable(buf)) return kWspErrFail;
    uint16_t len = text_length(text);
    uint32_t at = wsp_buffer_tail_index(buf);
    const char *rest = text;
    uint16_t count = len;
    uint16_t total = static_cast<uint16_t>(len + 1);
    bool quote_stored = true;
    if (len > 0 && static_cast<uint8_t>(text[0]) >= 128) {
        quote_stored = wsp_buffer_store(buf, at, 127) && wsp_buffer_store(buf, at + 1, static_cast<uint8_t>(text[0]));
        at += 2;
        total = static_cast<uint16_t>(len + 2);
        rest = text + 1;
        count = static_cast<uint16_t>(len - 1);
    }
    if (buf->size < static_cast<uint16_t>(total + buf->length)) return kWspErrFail;
    if (!copy_checked(buf, at, rest, count, text_octet) || !quote_stored) return kWspErrFail;
    buf->length = static_cast<uint16_t>(buf->length + total);
    return kWspOk;
}

// As the Text-string writer without the Quote rule: a first octet of 128
// or above is copied as it is.
int wsp_append_plain_text(const char *text, wsp_buffer *buf) {
    if (text == nullptr || !usable(buf)) return kWspErrFail;
    uint16_t len = text_length(text);
    uint16_t total = static_cast<uint16_t>(len + 1);
    if (buf->size < static_cast<uint16_t>(total + buf->length)) return kWspErrFail;
    uint32_t at = wsp_buffer_tail_index(buf);
    if (!copy_checked(buf, at, text, len, text_octet)) return kWspErrFail;
    buf->length = static_cast<uint16_t>(buf->length + total);
    return kWspOk;
}

// Writes the opening quotation mark, the content and a NUL; the closing
// quotation mark of the text becomes the terminator, so L octets are
// counted for a text of L characters.  A text without a closing mark is
// accepted too: its NUL then falls one octet past the L counted octets, and
// when the text fills the buffer exactly that NUL lands at
// data + offset + size: it is dropped there, and status and length are what
// they would have been had it fitted.
int wsp_append_quoted_string(const char *text, wsp_buffer *buf) {
    if (text == nullptr || !usable(buf)) return kWspErrFail;
    uint16_t len = text_length(text);
    if (buf->size < static_cast<uint16_t>(buf->length + len)) return kWspErrFail;
    if (text[0] != '"') return kWspErrFail;
    uint32_t at = wsp_buffer_tail_index(buf);
    if (!wsp_buffer_store(buf, at, '"')) return kWspErrFail;
    uint32_t written = 1;
    if (len != 1) {
        uint16_t examine = static_cast<uint16_t>(len - 1);
        for (uint16_t i = 0; i < examine; ++i) {
            uint8_t c = static_cast<uint8_t>(text[1 + i]);
            if (!wsp_is_text_char(c)) return kWspErrFail;
            if (c == '"') {
                // Only the very last character may be a quotation mark.
                if (static_cast<uint16_t>(i + 1) != examine) return kWspErrFail;
                continue;
            }
            if (!wsp_buffer_store(buf, at + written, c)) return kWspErrFail;
            ++written;
        }
    }
    // The terminator of an unclosed text is the one octet that may fall
    // exactly past the region.
    if (!wsp_buffer_store_at_end(buf, at + written, 0)) return kWspErrFail;
    buf->length = static_cast<uint16_t>(buf->length + len);
    return kWspOk;
}

int wsp_append_bytes(const uint8_t *bytes, uint16_t n, wsp_buffer *buf) {
    if (!usable(buf) || (bytes == nullptr && n != 0)) return kWspErrFail;
    if (buf->size < static_cast<uint16_t>(buf->length + n)) return kWspErrFail;
    if (!wsp_buffer_store_run(buf, wsp_buffer_tail_index(buf), bytes, n)) return kWspErrFail;
    buf->length = static_cast<uint16_t>(buf->length + n);
    return kWspOk;
}

// Value-length (0..30 itself, or 31 and a uintvar) and then src's valid
// bytes.  The length octets go out without a room test and stay counted when
// the room test for the bytes fails.  Length octets that fall outside the
// region are not stored but still counted; success needs them stored.
int wsp_append_value_block(wsp_buffer *dst, const wsp_buffer *src) {
    if (!usable(dst) || src == nullptr) return kWspErrFail;
    uint16_t len = src->length;
    if (len != 0 && src->data == nullptr) return kWspErrFail;
    uint32_t at = wsp_buffer_tail_index(dst);
    bool prefix_stored;
    if (len > 30) {
        prefix_stored = wsp_buffer_store(dst, at, 31);
        dst->length = static_cast<uint16_t>(dst->length + 1);
        uint8_t octets[5];
        uint8_t *cursor = octets;
        uint8_t count = 0;
        if (wsp_enc_varint(len, &cursor, &count) != kWspOk) return kWspErrFail;
        prefix_stored = wsp_buffer_store_run(dst, at + 1, octets, count) && prefix_stored;
        dst->length = static_cast<uint16_t>(dst->length + count);
    } else {
        prefix_stored = wsp_buffer_store(dst, at, static_cast<uint8_t>(len));
        dst->length = static_cast<uint16_t>(dst->length + 1);
    }
    if (dst->size < static_cast<uint16_t>(dst->length + len)) return kWspErrFail;
    if (!prefix_stored || !wsp_buffer_store_run(dst, wsp_buffer_tail_index(dst), src->data + src->offset, len))
        return kWspErrFail;
    dst->length = static_cast<uint16_t>(dst->length + len);
    return kWspOk;
}

// "major.minor" with a one-digit major of 0..7 and an optional one-digit
// minor becomes one octet; anything else is written as the Text-string of
// the whole text.  The numeric octet goes out without a room test as such,
// but a buffer with no room left at all (length at or past size) gets -214
// rather than a write past its block.  A NULL text is refused with -214.
int wsp_append_version(const char *text, wsp_buffer *buf) {
    if (text == nullptr || !usable(buf)) return kWspErrFail;
    size_t len = std::strlen(text);
    char local[kVersionLocal];
    char *copy = local;
    char *heap = nullptr;
    if (len >= sizeof local) {
        heap = static_cast<char *>(std::calloc(len + 1, 1));
        if (heap == nullptr) return kWspErrFail;
        copy = heap;
    }
    std::memcpy(copy, text, len + 1);
    uint8_t octet = numeric_version(copy);
    std::free(heap);

    if (octet != 0) {
        if (buf->length >= buf->size || !wsp_buffer_store(buf, wsp_buffer_tail_index(buf), octet)) return kWspErrFail;
        buf->length = static_cast<uint16_t>(buf->length + 1);
        return kWspOk;
    }
    return wsp_append_text_string(text, buf) == kWspOk ? kWspOk : kWspErrFail;
}

// Content-type values, text to binary: the exported wsp_encode_content and
// the two writers that the Accept list encoders share with it, one for a
// known media code and one for a value built in a scratch buffer (the
// general form: Value-length, then the bytes).
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"
#include "text_limits.h"

namespace {

// The whole parameterised value (media and parameters) is built here and
// must fit; a longer value is refused with -214.
constexpr uint16_t kContentScratchSize = WSP_CONTENT_TYPE_CAPACITY;

// A media code above 127 is first written as a Long-integer into a 5-byte
// area (length octet and at most four code octets).  wsp_encode_content
// then copies from position N of that area, so its copy reaches up to
// 2 * 5 octets in: the area is this large and zeroed, so every octet it
// copies from past the five Long-integer bytes is 00.
constexpr uint16_t kLongCodeLimit = 5;
constexpr uint16_t kLongCodeArea = 2 * kLongCodeLimit;

// Texts up to this length (with NUL) are copied to the stack.
constexpr size_t kLocalTextSize = 256;

// A private writable copy of the caller's content-type text: the tokenizer
// cuts the text in place and the caller's text is const.  Ordinary texts
// live on the stack, longer ones on the heap; freed on every path.
class text_copy {
  public:
    // Only the text and its NUL are copied: nothing reads past the NUL.
    explicit text_copy(const char *text) : heap_(nullptr), text_(nullptr) {
        size_t n = std::strlen(text) + 1;
        char *dst = local_;
        if (n > kLocalTextSize) {
            heap_ = static_cast<char *>(std::calloc(n, 1));
            dst = heap_;
        }
        if (dst != nullptr) {
            std::memcpy(dst, text, n);
            text_ = dst;
        }
    }
    ~text_copy() { std::free(heap_); }
    text_copy(const text_copy &) = delete;
    text_copy &operator=(const text_copy &) = delete;

    // Null when the heap copy could not be had.
    char *get() { return text_; }

  private:
    char local_[kLocalTextSize];
    char *heap_;
    char *text_;
};

// Builds the Long-integer of code at the start of area (kLongCodeArea
// zeroed bytes) and returns its size N (length octet plus code octets).
uint16_t build_long_code(uint32_t code, uint8_t *area) {
    wsp_buffer b{};
    b.data = area;
    b.size = kLongCodeLimit;
    wsp_append_long_int(code, &b);
    return b.length;
}

// A media code above 127 without parameters: one octet N, then N octets
// taken from the Long-integer area, from its start or (from_n) from
// position N.  The room for all
// N + 1 octets is tested before anything is written.
int write_long_media_code(uint32_t code, bool from_n, wsp_buffer *out) {
    uint8_t area[kLongCodeArea] = {};
    uint16_t n = build_long_code(code, area);
    uint8_t bytes[1 + kLongCodeLimit] = {};
    bytes[0] = static_cast<uint8_t>(n);
    std::memcpy(bytes + 1, area + (from_n ? n : 0), n);
    return wsp_ok(wsp_append_bytes(bytes, static_cast<uint16_t>(n + 1), out)) ? kWspOk : kWspErrFail;
}

// The value of a null or empty content type: a single 00.
int write_empty_content(wsp_buffer *out) {
    const uint8_t zero = 0;
    return wsp_ok(wsp_append_bytes(&zero, 1, out)) ? kWspOk : kWspErrFail;
}

// A known media code in wsp_encode_content's own form.  Above 127 the N
// octets after the octet N are copied from position N of the Long-integer
// area, not from its start: so 0x201..0x20B and 0x312 go out as 03 00 00 00
// instead of their code.  Long-standing behaviour that receivers of this
// library's output have been built against; keep it.  The list encoders
// use wsp_write_media_code and are not affected.
int write_content_media_code(uint32_t code, wsp_buffer *out) {
    if (code <= 127) return wsp_ok(wsp_append_short_int(code, out)) ? kWspOk : kWspErrFail;
    return write_long_media_code(code, true, out);
}

} // namespace

int wsp_write_media_code(uint32_t code, wsp_buffer *out) {
    if (out == nullptr) return kWspErrFail;
    if (code <= 127) return wsp_ok(wsp_append_short_int(code, out)) ? kWspOk : kWspErrFail;
    return write_long_media_code(code, false, out);
}

// The general form is exactly a Value-length followed by the bytes: the
// length octets are counted before the room test, callers rely on it
// (WriteGeneralForm.LengthOctetsStayCountedWhenTheValueDoesNotFit).
int wsp_write_general_form(wsp_buffer *out, const wsp_buffer *scratch) {
    if (out == nullptr || scratch == nullptr) return kWspErrFail;
    return wsp_ok(wsp_append_value_block(out, scratch)) ? kWspOk : kWspErrFail;
}

extern "C" WSP_API int wsp_encode_content(const char *text, wsp_buffer *out, const char *version) {
    int row = wsp_version_index(version);
    if (row < 0) return kWspErrVersion;
    // A missing output (or one without data) is refused rather than written
    // through a null pointer.
    if (out == nullptr || out->data == nullptr) return kWspErrFail;
    const uint16_t limit = wsp_version_limits[row].content_type_rows;
    const uint8_t version_index = static_cast<uint8_t>(row);

    if (text == nullptr) return write_empty_content(out);
    text_copy copy(text);
    if (copy.get() == nullptr) return kWspErrFail;

    char *pos = copy.get();
    char *media = wsp_enc_next_element(&pos, ";");
    if (media == nullptr) return write_empty_content(out);

    // Only the version's leading rows may be sent as a code; the scan runs
    // downward so that the highest admitted row wins.
    int found = wsp_find_name_down(wsp_content_types, static_cast<int>(limit) - 1, media, true);
    uint32_t code = found >= 0 ? wsp_content_types.code(static_cast<uint16_t>(found)) : 0;

    char *param = wsp_enc_next_element(&pos, ";");
    if (param == nullptr) {
        // Extension-media goes out as plain text and NUL: no 127 quote, even
        // when the first octet is 128 or above.
        if (found < 0) return wsp_ok(wsp_append_plain_text(media, out)) ? kWspOk : kWspErrFail;
        return write_content_media_code(code, out);
    }

    wsp_scratch scratch(kContentScratchSize);
    if (!scratch.ok()) return kWspErrFail;
    wsp_buffer *value = scratch.get();
    int status = found >= 0 ? wsp_append_integer(code, value) : wsp_append_plain_text(media, value);
    if (!wsp_ok(status)) return kWspErrFail;
    do {
        if (!wsp_ok(wsp_encode_param(param, value, version_index, media))) return kWspErrFail;
        param = wsp_enc_next_element(&pos, ";");
    } while (param != nullptr);
    return wsp_write_general_form(out, value);
}

// The header block encoder: page records of text lines to a WSP header
// block.  Page 1 lines go through the header-name table within the
// version's limit and the value encoders; unknown names become application
// headers.  Extension pages (0x10..0x7F) are preceded by their shift
// sequence and carry their own name tables.
#include <cstdint>
#include <cstring>

#include "encode.h"
#include "primitives.h"
#include "switches.h"
#include "tables.h"
#include "text_limits.h"

namespace {

constexpr uint8_t kDefaultPage = 1;
constexpr uint8_t kFirstExtensionPage = 0x10;
constexpr uint8_t kLastShortCutPage = 0x1F;
constexpr uint8_t kLastExtensionPage = 0x7F;
constexpr uint8_t kShiftDelimiter = 0x7F;
// An extension page with more names than this writes its shift sequence
// and skips every line: the page tables of our clients never get that big,
// a larger count means a broken record.
constexpr uint8_t kMaxExtensionNames = 128;

// Longest Cookie value (with its NUL) the Cookie test copies into its
// WSP_TEXT_AREA scratch.
constexpr size_t kCookieValueMax = WSP_TEXT_CAPACITY;

// What one call keeps while it walks the records.
struct block_state {
    wsp_buffer *out;
    const char *version;
    // The version's highest header code.  An unknown version text leaves it
    // where it was, and it starts at 0 for the call: only "accept" is then
    // recognised.
    uint8_t limit;
    uint8_t version_index;
};

// One line cut from a record's text.
struct text_line {
    char *name;  // null: nothing but a CR (or an empty line): skipped
    char *value; // everything after the first colon outside quotes
    uint16_t step;
};

// Takes the next line with the tokenizer; false when the text is done.  The
// step counts the newline and a line-ending CR; the CR itself is cut off.
bool next_line(char **cursor, text_line *line) {
    size_t length = 0;
    char *text = wsp_next_token_n(cursor, '\n', &length);
    if (text == nullptr) return false;
    line->step = static_cast<uint16_t>(length + 1);
    if (length > 0 && static_cast<uint8_t>(text[length - 1]) == 0x0D) text[length - 1] = '\0';
    char *rest = text;
    line->name = wsp_next_token(&rest, ':');
    // A line without a colon is a name with an empty value: rest then
    // stands on the line's NUL.
    line->value = rest;
    return true;
}

// Looks the version up on every line; see block_state::limit.  A null
// version text is an unknown one.  The row found for the line before is
// tried first: a text equal to one row equals no other.
void find_version(block_state *state) {
    if (state->version_index != WSP_VERSION_UNKNOWN && wsp_version_is(state->version_index, state->version)) return;
    state->version_index = WSP_VERSION_UNKNOWN;
    int row = wsp_version_index(state->version);
    if (row < 0) return;
    state->limit = static_cast<uint8_t>(wsp_version_limits[row].header_end - 1);
    state->version_index = static_cast<uint8_t>(row);
}

// Token-text name, then the value as a Text-string as it stands.
int write_application_header(const char *name, const char *value, wsp_buffer *out) {
    if (!wsp_ok(wsp_tokentext_encode_buff(name, out))) return kWspErrFail;
    return wsp_ok(wsp_append_text_string(value, out)) ? kWspOk : kWspErrFail;
}

enum class cookie_test { encode, application_header, fail };

// Only a value that starts with its $Version attribute goes to the Cookie
// encoder: "$version" must occur, but not again from the ninth character
// on, and "$port" must not occur at all.  The leading blank of the value
// counts in that position.  Everything else is sent as an application
// header.
cookie_test test_cookie(const char *value) {
    size_t length = std::strlen(value);
    if (length + 1 > kCookieValueMax) return cookie_test::fail;
    char copy[WSP_TEXT_AREA] = {};
    std::memcpy(copy, value, length + 1);
    wsp_str_lower(copy);
    // copy + 8 stays inside the zeroed scratch even for short values.
    if (std::strstr(copy, "$port") != nullptr || std::strstr(copy, "$version") == nullptr ||
        std::strstr(copy + 8, "$version") != nullptr) {
        return cookie_test::application_header;
    }
    return cookie_test::encode;
}

// One line of page 1.  `remembered` is the code of the last recognised line
// of the record; a line that is not recognised leaves it as it is, so the
// Cookie test also runs on an unrecognised line after a Cookie line (it
// then fails a value of 198 bytes or more, and otherwise changes nothing:
// the line becomes an application header either way).  Kept as it is.
int encode_page1_line(block_state *state, const text_line &line, int *remembered) {
    find_version(state);
    int found = wsp_lower_find_name_down(wsp_header_names, state->limit, line.name);
    if (found >= 0) *remembered = found;

    // The content type travels outside the header block.
    if (*remembered == WSP_HDR_CONTENT_TYPE) return kWspErrFail;
    if (*remembered == WSP_HDR_COOKIE) {
        cookie_test verdict = test_cookie(line.value);
        if (verdict == cookie_test::fail) return kWspErrFail;
        if (verdict == cookie_test::application_header) {
            return write_application_header(line.name, line.value, state->out);
        }
    }
    if (found < 0) return write_application_header(line.name, line.value, state->out);

    const uint8_t code = static_cast<uint8_t>(found);
    if (code == WSP_HDR_ACCEPT) return wsp_encode_accept(WSP_HDR_ACCEPT, line.value, state->out, state->version_index);
    if (code == WSP_HDR_ENCODING_VERSION && device_encoding_version_as_text() == 1) {
        return write_application_header(line.name, line.value, state->out);
    }
    // Profile, Profile-Diff, Profile-Warning and Set-Cookie are recognised
    // but have no encoder: such a line fails the call like Content-Type.
    wsp_header_encoder encoder = wsp_header_encoders[code];
    if (encoder == nullptr) return kWspErrFail;
    return encoder(code, line.value, state->out, state->version_index);
}

// One line of an extension page: the name is matched exactly against the
// page's own rows (no lower-casing, no version limit); a row's code goes out
// as a Short-integer, an unknown name as Token-text; the value as a
// Text-string.
int encode_extension_line(const wsp_hdr_page &page, const text_line &line, wsp_buffer *out) {
    int status = kWspErrFail;
    bool matched = false;
    for (uint16_t row = 0; row < page.name_count; ++row) {
        // A table without rows or a row without a name is a broken record.
        if (page.names == nullptr || page.names[row].name == nullptr) return kWspErrFail;
        if (std::strcmp(page.names[row].name, line.name) == 0) {
            status = wsp_append_short_int(page.names[row].code & 0xFFu, out);
            matched = true;
            break;
        }
    }
    if (!matched) status = wsp_tokentext_encode_buff(line.name, out);
    if (!wsp_ok(status)) return kWspErrFail;
    return wsp_ok(wsp_append_text_string(line.value, out)) ? kWspOk : kWspErrFail;
}

// Walks the lines of one record.  The consumed count adds each line's step
// and ends the record once it reaches the text's length; a skipped line
// adds its step only while the count is still below the length and never
// ends the record itself.  Blank lines are swallowed by the tokenizer and
// add nothing, so with blank lines the text's NUL ends the record.
int encode_lines(block_state *state, const wsp_hdr_page &page, char *cursor) {
    const uint16_t text_length = page.text.length;
    const bool extension = page.page != kDefaultPage;
    uint16_t consumed = 0;
    int remembered = 0;
    text_line line{};
    while (next_line(&cursor, &line)) {
        bool skip = line.name == nullptr || (extension && page.name_count > kMaxExtensionNames);
        if (skip) {
            if (consumed < text_length) consumed = static_cast<uint16_t>(consumed + line.step);
            continue;
        }
        int status = extension ? encode_extension_line(page, line, state->out)
                               : encode_page1_line(state, line, &remembered);
        if (!wsp_ok(status)) return kWspErrFail;
        consumed = static_cast<uint16_t>(consumed + line.step);
        if (consumed >= text_length) break;
    }
    return kWspOk;
}

// Appends the page-switch octets after testing the room for all of them,
// so that no byte lands past size.
bool append_switch(const uint8_t *octets, uint16_t n, wsp_buffer *out) {
    if (static_cast<uint32_t>(out->length) + n > out->size) return false;
    return wsp_ok(wsp_append_bytes(octets, n, out));
}

// One page record: its switch octets, then its lines.
int encode_record(block_state *state, const wsp_hdr_page &page, uint16_t index) {
    char *cursor = page.text.data != nullptr ? reinterpret_cast<char *>(page.text.data + page.text.offset) : nullptr;
    if (page.page == kDefaultPage) {
        if (page.name_count != 0) return kWspErrFail;
        // Every page-1 record after the first position opens with the
        // short-cut shift back to page 1, even right after another page-1
        // record: no current page is tracked, on purpose.
        if (index != 0 && page.text.length != 0) {
            const uint8_t shift = kDefaultPage;
            if (!append_switch(&shift, 1, state->out)) return kWspErrFail;
        }
        if (cursor == nullptr || page.text.length == 0) return kWspOk;
        return encode_lines(state, page, cursor);
    }
    if (page.page >= kFirstExtensionPage && page.page <= kLastExtensionPage && page.name_count != 0) {
        // The shift sequence is written even for an empty text.
        uint8_t shift[2] = {kShiftDelimiter, page.page};
        bool written = page.page > kLastShortCutPage ? append_switch(shift, 2, state->out)
                                                      : append_switch(shift + 1, 1, state->out);
        if (!written) return kWspErrFail;
        // A text without data is taken as empty.
        if (cursor == nullptr || page.text.length == 0) return kWspOk;
        return encode_lines(state, page, cursor);
    }
    // Any other page number, or an extension page without names.
    return kWspErrFail;
}

} // namespace

extern "C" WSP_API int wsp_enc_hdr(wsp_hdr_page_list *pages, wsp_hdrbuf *out, const char *version) {
    if (out == nullptr || out->buffer == nullptr) {
        wsp_dealloc_hdrbuf(out); // harmless for a null holder
        return kWspErrFail;
    }
    wsp_buffer *buffer = out->buffer;
    // A caller's own buffer, a missing one or one without room is refused
    // and nothing is freed.
    if ((buffer->flags & WSP_BUFFER_EXTERNAL) != 0 || buffer->data == nullptr || buffer->size == 0) {
        return kWspErrFail;
    }
    // No list, or a count without records, is refused the same way: nothing
    // has been written yet, so nothing is freed.
    if (pages == nullptr || (pages->count != 0 && pages->pages == nullptr)) return kWspErrFail;
    const uint16_t start_length = buffer->length;
    if (pages->count == 0) {
        out->length = 0;
        return kWspOk;
    }

    block_state state{buffer, version, 0, WSP_VERSION_UNKNOWN};
    for (uint16_t i = 0; i < pages->count; ++i) {
        if (!wsp_ok(encode_record(&state, pages->pages[i], i))) {
            // The bytes written so far go with the buffer.
            wsp_dealloc_hdrbuf(out);
            return kWspErrFail;
        }
    }
    out->length = static_cast<uint16_t>(buffer->length - start_length);
    return kWspOk;
}

// Headers whose value is one entry of a small list, given as a code or as a
// token: Accept-Encoding, Accept-Ranges, Connection, Content-Encoding,
// Content-Language, Public, Transfer-Encoding (wsp_dec_listed_value), Allow,
// Vary and Trailer.  All of them merge repeats into one line.
#include <cstring>

#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "tables.h"
#include "text_builder.h"

namespace {

constexpr uint32_t kLastHeaderCode = WSP_HEADER_NAME_ROWS - 1; // the last row of the header-name table
constexpr uint32_t kTrailerCodeLimit = WSP_HEADER_NAME_ROWS;   // codes above this are refused outright

struct listed_table {
    const wsp_table *rows;
    uint16_t count;
};

// 0x3C keeps its row although its dispatch entry is empty.
bool listed_table_for(uint32_t code, listed_table *table) {
    switch (code) {
    case 0x02:
    case 0x0B:
    case 0x3C: *table = {&wsp_content_codings, WSP_CONTENT_CODING_ROWS}; return true;
    case 0x04: *table = {&wsp_range_units, WSP_RANGE_UNIT_ROWS}; return true;
    case 0x09: *table = {&wsp_connection_values, 1}; return true;
    // Content-Language searches the two-letter rows first, so a code that
    // has one is written as its two-letter form.
    case 0x0C: *table = {&wsp_language_run, WSP_LANGUAGE_RUN_ROWS}; return true;
    case 0x22: *table = {&wsp_methods, WSP_METHOD_ROWS}; return true;
    case 0x27: *table = {&wsp_te_values, 1}; return true;
    default: return false;
    }
}

// A Token-text value read into the text area (capacity 198); the reader's
// status comes back unchanged, so an over-long token returns -216.
int read_token_value(const uint8_t **p, wsp_text_builder *value, uint16_t remaining) {
    int status = wsp_read_token_text(p, value->text, remaining, WSP_TEXT_CAPACITY);
    if (status == kWspOk) value->sync();
    return status;
}

// A code given as a Short-integer (class 5) or, for class 0, as a small
// Long-integer (wsp_read_small_long_code, whose status a failed read
// returns).  A Short-integer that does not read gives -214.
int read_small_code(const uint8_t **p, uint8_t cls, uint16_t remaining, uint32_t *code) {
    if (cls != WSP_CLASS_SHORT_INT) return wsp_read_small_long_code(p, remaining, code);
    uint8_t short_code = 0;
    if (wsp_shortint_direct_decode(p, &short_code) != kWspOk) return kWspErrFail;
    *code = short_code;
    return kWspOk;
}

// Trailer names that may not appear as trailers.
bool is_refused_trailer(const char *name) {
    return std::strcmp(name, "transfer-encoding") == 0 || std::strcmp(name, "content-length") == 0 ||
           std::strcmp(name, "trailer") == 0;
}

} // namespace

int wsp_dec_listed_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    auto read = [code, remaining](const uint8_t **p, wsp_text_builder *value) {
        listed_table table{};
        if (!listed_table_for(code, &table)) return kWspErrFail;
        const uint8_t cls = wsp_class_of(**p);
        if (cls == WSP_CLASS_TEXT) {
            int status = read_token_value(p, value, remaining);
            if (status != kWspOk) return status;
        } else if (cls == WSP_CLASS_SHORT_INT || cls == WSP_CLASS_SHORT_LENGTH) {
            // Only Content-Language codes come as Long-integers.
            if (cls == WSP_CLASS_SHORT_LENGTH && code != WSP_HDR_CONTENT_LANGUAGE) return kWspErrFail;
            uint32_t listed_code = 0;
            if (read_small_code(p, cls, remaining, &listed_code) != kWspOk) return kWspErrFail;
            const char *name = wsp_code_name(*table.rows, table.count, listed_code);
            if (name == nullptr) {
                if (code != WSP_HDR_CONTENT_LANGUAGE) return kWspErrFail;
                name = "unknown-language";
            }
            if (!value->append(name, WSP_TEXT_LIMIT)) return kWspErrFail;
        } else {
            return kWspErrArg;
        }
        return value->len > WSP_TEXT_LIMIT ? kWspErrFail : kWspOk;
    };
    return wsp_decode_one_item(code, cursor, out, remaining, wsp_line_writer::merging, wsp_cursor_rule::on_ok, read);
}

int wsp_dec_allow(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    auto read = [](const uint8_t **p, wsp_text_builder *value) {
        uint8_t method = 0;
        if (wsp_class_of(**p) != WSP_CLASS_SHORT_INT || wsp_shortint_direct_decode(p, &method) != kWspOk)
            return kWspErrFail;
        const char *name = wsp_code_name(wsp_methods, WSP_METHOD_ROWS, method);
        if (name != nullptr) return value->append(name, WSP_TEXT_LIMIT) ? kWspOk : kWspErrFail;
        // A method code without a name is written as its number.
        if (method >= 0x40 && method <= 0x7F) return value->append_uint(method, WSP_TEXT_LIMIT) ? kWspOk : kWspErrFail;
        return kWspErrFail;
    };
    return wsp_decode_one_item(code, cursor, out, remaining, wsp_line_writer::merging, wsp_cursor_rule::on_ok, read);
}

int wsp_dec_vary(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    auto read = [remaining](const uint8_t **p, wsp_text_builder *value) {
        const uint8_t cls = wsp_class_of(**p);
        if (cls == WSP_CLASS_TEXT) return read_token_value(p, value, remaining);
        if (cls != WSP_CLASS_SHORT_INT) return kWspErrArg;
        uint8_t field = 0;
        if (wsp_shortint_direct_decode(p, &field) != kWspOk) return kWspErrFail;
        if (field > kLastHeaderCode) return kWspErrFail;
        return value->append(wsp_header_names.name(field), WSP_TEXT_LIMIT) ? kWspOk : kWspErrFail;
    };
    // Vary moves on whatever the merging writer answers.
    return wsp_decode_one_item(code, cursor, out, remaining, wsp_line_writer::merging, wsp_cursor_rule::always, read);
}

int wsp_dec_trailer(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    auto read = [remaining](const uint8_t **p, wsp_text_builder *value) {
        const uint8_t cls = wsp_class_of(**p);
        if (cls == WSP_CLASS_SHORT_INT || cls == WSP_CLASS_SHORT_LENGTH) {
            uint32_t field = 0;
            int status = read_small_code(p, cls, remaining, &field);
            if (status != kWspOk) return status;
            if (field > kTrailerCodeLimit) return kWspErrFail;
            // Code 72 passes the test above but has no name: refused as well.
            if (field >= WSP_HEADER_NAME_ROWS) return kWspErrFail;
            const char *name = wsp_header_names.name(static_cast<uint16_t>(field));
            // Only coded names are checked; the same names as text pass.
            if (is_refused_trailer(name)) return kWspErrFail;
            if (!value->append(name, WSP_TEXT_LIMIT)) return kWspErrFail;
        } else if (cls == WSP_CLASS_TEXT) {
            int status = read_token_value(p, value, remaining);
            if (status != kWspOk) return status;
        } else {
            return kWspErrArg;
        }
        return value->len > WSP_TEXT_LIMIT ? kWspErrFail : kWspOk;
    };
    return wsp_decode_one_item(code, cursor, out, remaining, wsp_line_writer::merging, wsp_cursor_rule::on_ok, read);
}

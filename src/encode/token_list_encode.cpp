// Comma lists of tokens, one header per element: Accept-Encoding (older
// code), the table-driven token lists (Accept-Ranges, Connection,
// Content-Encoding, Content-Language, Public, Transfer-Encoding) and Allow.
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "tables.h"

namespace {

// Allow takes a method that has no row when it is given as its number.
constexpr uint32_t kLowestMethodNumber = 64;
constexpr uint32_t kHighestMethodNumber = 127;

struct token_table {
    const wsp_table *rows;
    uint16_t count;
};

// The table a token-list header is looked up in; rows is null for a code
// that is not a token-list header.
token_table token_table_for(uint8_t code) {
    switch (code) {
    case WSP_HDR_ACCEPT_RANGES: return {&wsp_range_units, WSP_RANGE_UNIT_ROWS};
    case WSP_HDR_CONNECTION: return {&wsp_connection_values, 1};
    case WSP_HDR_CONTENT_ENCODING: return {&wsp_content_codings, WSP_CONTENT_CODING_ROWS};
    case WSP_HDR_CONTENT_LANGUAGE: return {&wsp_language_run, WSP_LANGUAGE_RUN_ROWS};
    case WSP_HDR_PUBLIC: return {&wsp_methods, WSP_METHOD_ROWS};
    case WSP_HDR_TRANSFER_ENCODING: return {&wsp_te_values, 1};
    default: return {nullptr, 0};
    }
}

// A method given by number: hexadecimal after "0x"/"0X", else decimal, read
// the way strtoul reads it (trailing characters are ignored).
uint32_t method_number(const char *element) {
    if (element[0] == '0' && (element[1] == 'x' || element[1] == 'X')) return wsp_strtou32(element + 2, nullptr, 16);
    return wsp_strtou32(element, nullptr, 10);
}

} // namespace

int wsp_encode_accept_encoding(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, true);
    if (cursor == nullptr) return kWspErrFail;
    // No quality values on this code: "gzip;q=0.5" is not a token and the
    // token writer refuses it.
    return wsp_encode_code_or_token_list(code, cursor, wsp_content_codings, WSP_CONTENT_CODING_ROWS, out);
}

int wsp_encode_token_list(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    token_table table = token_table_for(code);
    if (table.rows == nullptr) return kWspErrFail;
    // Method names are upper case in their table and are matched as written.
    char *cursor = wsp_enc_prepare(value, code != WSP_HDR_PUBLIC);
    if (cursor == nullptr) return kWspErrFail;
    // Language codes run past 127 (a Long-integer); the other tables' codes
    // are all Short-integers.
    auto encode_value = [table, out](char *element) {
        return wsp_append_code_or_token(*table.rows, table.count, element, out);
    };
    // "none" first closes the list; "none" after a real unit is kept as one
    // more element.  The asymmetry is deliberate.
    auto none_first = [code](const char *element) {
        return code == WSP_HDR_ACCEPT_RANGES && std::strcmp(element, "none") == 0;
    };
    return wsp_encode_each_element(code, cursor, out, kWspErrFail, encode_value, none_first,
                                   wsp_after_lone_first::refused);
}

int wsp_encode_allow(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, false);
    if (cursor == nullptr) return kWspErrFail;
    return wsp_encode_each_element(code, cursor, out, kWspErrFail, [out](char *element) {
        uint32_t method;
        int row = wsp_find_name(wsp_methods, WSP_METHOD_ROWS, element, false);
        if (row >= 0) {
            method = wsp_methods.code(static_cast<uint16_t>(row));
        } else {
            method = method_number(element);
            if (method < kLowestMethodNumber || method > kHighestMethodNumber) return kWspErrFail;
        }
        return wsp_append_short_int(method, out);
    });
}

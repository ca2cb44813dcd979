// Cache-Control (codes 0x08, 0x3D and 0x47): one header per directive.  A
// directive without argument is its well-known number or its name; one with
// an argument goes inside a Value-length: directive, then the argument (a
// field-name list, a number, or a free-form value for unknown directives).
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

namespace {

// Only the newest Cache-Control code knows "s-maxage", the last directive.
uint16_t directive_rows(uint8_t code) {
    return code == WSP_HDR_CACHE_CONTROL_1_4 ? WSP_CACHE_DIRECTIVE_ROWS : uint16_t{WSP_CACHE_S_MAXAGE};
}

bool requires_argument(int row) { return row == WSP_CACHE_MAX_AGE || row == WSP_CACHE_MIN_FRESH; }

bool refuses_argument(int row) {
    return row == WSP_CACHE_NO_STORE || row == WSP_CACHE_ONLY_IF_CACHED || row == WSP_CACHE_PUBLIC ||
           row == WSP_CACHE_NO_TRANSFORM || row == WSP_CACHE_MUST_REVALIDATE || row == WSP_CACHE_PROXY_REVALIDATE;
}

// The argument of "no-cache" and "private": a quoted, comma-separated list
// of header names, each written as its header code or as its name.  A list
// without its quotes or a name the writer refuses is an argument error
// (-211); a list with no name in it at all is -214.
int append_field_names(char *argument, wsp_buffer *scratch) {
    char *list = argument;
    wsp_trim(&list);
    size_t length = std::strlen(list);
    // A lone quotation mark opens and closes nothing; it is refused like any
    // other unquoted list.
    if (length < 2 || list[0] != '"' || list[length - 1] != '"') return kWspErrArg;
    list[length - 1] = '\0';
    char *cursor = list + 1;
    uint16_t written = 0;
    char *name;
    while ((name = wsp_enc_next_element(&cursor, ",")) != nullptr) {
        if (wsp_append_code_or_token(wsp_header_names, WSP_HEADER_NAME_ROWS, name, scratch) != kWspOk) return kWspErrArg;
        ++written;
    }
    return written != 0 ? kWspOk : kWspErrFail;
}

int encode_directive(uint8_t code, char *directive, uint16_t scratch_size, wsp_buffer *out) {
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    char *cursor = directive;
    char *name = wsp_enc_next_element(&cursor, "=");
    if (name == nullptr) name = directive; // an empty directive: written as an empty token
    char *argument = wsp_enc_next_element(&cursor, "=");
    const uint16_t rows = directive_rows(code);
    int row = wsp_find_name(wsp_cache_directives, rows, name, false);

    // The directive itself goes out as its code, or as its name when it has
    // no row.
    if (argument == nullptr) {
        if (requires_argument(row)) return kWspErrArg;
        return wsp_append_code_or_token(wsp_cache_directives, rows, name, out);
    }
    if (refuses_argument(row)) return kWspErrArg;

    return wsp_append_built_value(scratch_size, out, [name, argument, row, rows](wsp_buffer *body) {
        if (wsp_append_code_or_token(wsp_cache_directives, rows, name, body) != kWspOk) return kWspErrFail;
        if (row == WSP_CACHE_NO_CACHE || row == WSP_CACHE_PRIVATE) return append_field_names(argument, body);
        if (row < 0) return wsp_append_untyped_value(argument, body);
        return wsp_append_integer_text(argument, body) == kWspOk ? kWspOk : kWspErrFail;
    });
}

} // namespace

int wsp_encode_cache_control(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *cursor = wsp_enc_prepare(value, true);
    uint16_t written = 0;
    char *directive;
    while ((directive = wsp_enc_next_element(&cursor, ",")) != nullptr) {
        int status = encode_directive(code, directive, scratch_size, out);
        if (status != kWspOk) return status;
        ++written;
    }
    // Nothing to send is an argument error on this header.
    return written != 0 ? kWspOk : kWspErrArg;
}

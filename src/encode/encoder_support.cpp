// Steps shared by the well-known header value encoders.
#include "encoder_support.h"

#include <cstring>

#include "encode.h"
#include "primitives.h"

namespace {

// Blanks that trimming removes: space, tab, CR and LF.
bool is_blank(uint8_t c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// wsp_trim for a text whose length is known: the leading blanks are
// skipped, the trailing ones cut off with NULs.  Returns the trimmed text;
// *length becomes its length.
char *trim_known(char *text, size_t *length) {
    size_t n = *length;
    while (n > 0 && is_blank(static_cast<uint8_t>(*text))) {
        ++text;
        --n;
    }
    while (n > 0 && is_blank(static_cast<uint8_t>(text[n - 1]))) text[--n] = '\0';
    *length = n;
    return text;
}

} // namespace

char *wsp_enc_prepare(char *value, bool lower) {
    if (value == nullptr) return nullptr;
    size_t n = std::strlen(value);
    char *text = trim_known(value, &n);
    if (lower) wsp_lower_run(text, n);
    return text;
}

char *wsp_enc_next_element(char **cursor, const char *delim) {
    if (delim == nullptr || delim[0] == '\0' || delim[1] != '\0') return nullptr;
    size_t n = 0;
    char *element = wsp_next_token_n(cursor, static_cast<uint8_t>(delim[0]), &n);
    if (element == nullptr) return nullptr;
    return trim_known(element, &n);
}

uint16_t wsp_enc_scratch_size(const char *value) {
    return static_cast<uint16_t>(std::strlen(value) + 1);
}

char *wsp_enc_open_value(char *value, const char *delim, wsp_first_part how, wsp_value_opening *opening) {
    if (value == nullptr) return nullptr;
    opening->scratch_size = wsp_enc_scratch_size(value);
    opening->rest = wsp_enc_prepare(value, how == wsp_first_part::element);
    if (how == wsp_first_part::element) return wsp_enc_next_element(&opening->rest, delim);
    char *first = wsp_strtoken(&opening->rest, delim);
    if (first != nullptr) wsp_str_lower(first);
    return first;
}

int wsp_append_uintvar(uint32_t v, wsp_buffer *out) {
    uint8_t octets[5];
    uint8_t *cursor = octets;
    uint8_t count = 0;
    if (wsp_enc_varint(v, &cursor, &count) != kWspOk) return kWspErrFail;
    return wsp_append_bytes(octets, count, out);
}

bool wsp_is_decimal_digits(const char *text) {
    if (text == nullptr || text[0] == '\0') return false;
    for (const char *p = text; *p != '\0'; ++p) {
        if (!wsp_ascii_is_digit(static_cast<uint8_t>(*p))) return false;
    }
    return true;
}

int wsp_append_untyped_value(const char *text, wsp_buffer *out) {
    int status;
    if (wsp_is_decimal_digits(text)) {
        status = wsp_append_integer(wsp_strtou32(text, nullptr, 10), out);
    } else if (text[0] == '"') {
        status = wsp_append_quoted_string(text, out);
    } else {
        status = wsp_tokentext_encode_buff(text, out);
    }
    return status == kWspOk ? kWspOk : kWspErrFail;
}

int wsp_append_code_or_token(const wsp_table &table, uint16_t rows, const char *element, wsp_buffer *out) {
    int row = wsp_find_name(table, rows, element, false);
    int status = row >= 0 ? wsp_append_integer(table.code(static_cast<uint16_t>(row)), out)
                          : wsp_tokentext_encode_buff(element, out);
    return status == kWspOk ? kWspOk : kWspErrFail;
}

int wsp_encode_code_or_token_list(uint8_t code, char *list, const wsp_table &table, uint16_t rows, wsp_buffer *out) {
    return wsp_encode_each_element(code, list, out, kWspErrFail, [&table, rows, out](char *element) {
        return wsp_append_code_or_token(table, rows, element, out);
    });
}

int wsp_append_param_list(char *list, const char *delim, bool lower, wsp_buffer *out, uint8_t version_index) {
    char *cursor = list;
    char *element;
    while ((element = wsp_enc_next_element(&cursor, delim)) != nullptr) {
        if (lower) wsp_str_lower(element);
        if (wsp_encode_param(element, out, version_index, nullptr) != kWspOk) return kWspErrFail;
    }
    return kWspOk;
}

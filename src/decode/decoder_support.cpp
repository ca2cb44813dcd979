// Shared steps of the single-value header decoders.
#include "decoder_support.h"

#include <cstring>

#include "line_index.h"
#include "primitives.h"
#include "tables.h"

const char *wsp_decoded_header_name(uint32_t code) {
    if (code >= WSP_HEADER_NAME_ROWS) return nullptr;
    return wsp_header_names.name(static_cast<uint16_t>(code));
}

const char *wsp_code_name(const wsp_table &table, uint16_t rows, uint32_t code) {
    int row = wsp_find_code(table, rows, code);
    return row < 0 ? nullptr : table.name(static_cast<uint16_t>(row));
}

int wsp_read_small_long_code(const uint8_t **cursor, uint16_t remaining, uint32_t *code) {
    if (remaining == 0) return kWspErrFail;
    const uint8_t *p = *cursor;
    uint32_t value = 0;
    int status = wsp_read_long_int(&p, &value, remaining);
    if (status != kWspOk) return status;
    // The low-octet test against the octets left is odd but kept: a code
    // such as 0x0C behind a value with only a few octets left is refused.
    if (value > 0xFF || (value & 0xFF) > remaining) return kWspErrFail;
    *code = value;
    *cursor = p;
    return kWspOk;
}

bool wsp_output_mentions(const wsp_buffer *out, const char *name) {
    if (out == nullptr || out->data == nullptr || name == nullptr) return false;
    const size_t text_len = strnlen(reinterpret_cast<const char *>(out->data), out->size);
    return wsp_text_find(out->data, text_len, reinterpret_cast<const uint8_t *>(name), std::strlen(name)) != nullptr;
}

int wsp_write_value_line(uint32_t code, const char *text, wsp_buffer *out, wsp_line_writer writer,
                         const uint8_t **cursor, const uint8_t *next, wsp_cursor_rule rule) {
    const char *name = wsp_decoded_header_name(code);
    if (name == nullptr) return kWspErrFail;
    int status = writer == wsp_line_writer::merging ? wsp_add_header_line(out, name, text)
                                                     : wsp_append_header_line(out, name, text);
    if (rule == wsp_cursor_rule::always || status == kWspOk) *cursor = next;
    return status;
}

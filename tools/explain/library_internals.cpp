#include "library_internals.h"

#include "decode/decode.h"
#include "primitives.h"
#include "tables.h"
#include "text_limits.h"

namespace wsptool::lib {

const uint16_t kNameArea = WSP_NAME_AREA;
const uint16_t kNameCapacity = WSP_NAME_CAPACITY;
const uint16_t kValueArea = WSP_TEXT_AREA;
const uint16_t kValueCapacity = WSP_TEXT_CAPACITY;

ValueClass value_class(uint8_t octet) { return static_cast<ValueClass>(wsp_class_of(octet)); }

bool is_text_class(ValueClass cls) { return wsp_is_text_class(cls); }

const char *header_name(uint8_t code) {
    return code < WSP_HEADER_NAME_ROWS ? wsp_header_names.name(code) : nullptr;
}

int highest_code(int version) {
    if (version < 1 || version > static_cast<int>(WSP_VERSION_ROWS)) return -1;
    // The table holds the first code past the version's range.
    return static_cast<int>(wsp_version_limits[version - 1].header_end) - 1;
}

HeaderDecoder header_decoder(uint8_t code) { return code <= kHighestHeaderCode ? wsp_header_decoders[code] : nullptr; }

bool decodes_long_integer(uint8_t code) {
    HeaderDecoder decoder = header_decoder(code);
    return decoder != nullptr && (decoder == wsp_dec_integer_value || decoder == wsp_dec_date_value);
}

int skip_value(const uint8_t **cursor, uint16_t remaining) { return wsp_skip_value(cursor, remaining); }

int value_size(const uint8_t *value, uint32_t *size, uint16_t remaining) {
    return wsp_value_size(value, size, remaining);
}

int read_token_text(const uint8_t **cursor, char *out, uint16_t remaining, uint16_t capacity) {
    return wsp_read_token_text(cursor, out, remaining, capacity);
}

int read_text_string(const uint8_t **cursor, char *out, uint16_t remaining, uint16_t capacity) {
    return wsp_read_text_string(cursor, out, remaining, capacity);
}

int read_uintvar(const uint8_t **cursor, uint32_t *value, uint16_t avail) {
    return wsp_dec_varint(cursor, value, avail);
}

void str_lower(char *text) { wsp_str_lower(text); }

int add_header_line(wsp_buffer *out, const char *name, const char *value) {
    return wsp_add_header_line(out, name, value);
}

int add_raw_header_line(wsp_buffer *out, const char *name, const uint8_t *value, uint16_t size) {
    return wsp_add_raw_header_line(out, name, value, size);
}

} // namespace wsptool::lib

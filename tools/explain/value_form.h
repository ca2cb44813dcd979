// Names the encoding of a value from its first octets, the way a protocol
// engineer reads it: "Short-integer", "Text-string", "Value-length + 5".
#ifndef WSPTOOL_EXPLAIN_VALUE_FORM_H
#define WSPTOOL_EXPLAIN_VALUE_FORM_H

#include <cstdint>
#include <string>

namespace wsptool::explain {

// How the reader of the value takes a first octet 0..30.
enum class ShortLengthAs {
    kValueLength, // the length of what follows (the general case)
    kLongInteger, // the octet count of a Long-integer (numbers, dates)
    kText,        // 0x00 is an empty text (application and code-page headers)
};

// `remaining`: the octets from the value's first octet to the block's end.
std::string value_form(const uint8_t *value, uint16_t remaining, ShortLengthAs short_length);

} // namespace wsptool::explain

#endif // WSPTOOL_EXPLAIN_VALUE_FORM_H

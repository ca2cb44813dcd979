#include "value_form.h"

#include "library_internals.h"

namespace wsptool::explain {

namespace {

std::string octets(uint32_t n) { return std::to_string(n) + (n == 1 ? " octet" : " octets"); }

} // namespace

std::string value_form(const uint8_t *value, uint16_t remaining, ShortLengthAs short_length) {
    if (remaining == 0) return "missing (the block ends)";
    const uint8_t first = value[0];
    switch (lib::value_class(first)) {
    case lib::kShortLength:
        if (first == 0 && short_length == ShortLengthAs::kText) return "Text-string (empty)";
        if (short_length == ShortLengthAs::kLongInteger) return "Long-integer (" + octets(first) + ")";
        return "Value-length + " + std::to_string(first);
    case lib::kLengthQuote: {
        const uint8_t *p = value + 1;
        uint32_t length = 0;
        if (remaining < 2 || lib::read_uintvar(&p, &length, static_cast<uint16_t>(remaining - 1)) != lib::kOk)
            return "Length-quote without a readable uintvar";
        return "Value-length (uintvar) + " + std::to_string(length);
    }
    case lib::kQuote: return "Quote + Text-string";
    case lib::kQuoted: return "Quoted-string";
    case lib::kText: return "Text-string";
    case lib::kShortInteger: break;
    }
    return "Short-integer " + std::to_string(first & 0x7F);
}

} // namespace wsptool::explain

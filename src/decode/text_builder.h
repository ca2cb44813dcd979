// A fixed 200-octet text on the stack in which a header decoder builds its
// value, bounded before every append so that nothing is written past the
// area.  Decoders test the built length against their own limits.
#ifndef WSP_DECODE_TEXT_BUILDER_H
#define WSP_DECODE_TEXT_BUILDER_H

#include <cstdint>
#include <cstring>

#include "decode.h"
#include "primitives.h"

struct wsp_text_builder {
    char text[WSP_TEXT_AREA] = {};
    uint16_t len = 0;

    // Appends s when the text then holds at most `limit` characters;
    // otherwise leaves the text unchanged and returns false.
    bool append(const char *s, uint16_t limit = WSP_TEXT_LIMIT) {
        size_t n = std::strlen(s);
        if (len + n > limit || len + n >= WSP_TEXT_AREA) return false;
        std::memcpy(text + len, s, n + 1);
        len = static_cast<uint16_t>(len + n);
        return true;
    }
    // Appends v in decimal under the same rule.
    bool append_uint(uint32_t v, uint16_t limit = WSP_TEXT_LIMIT) {
        char digits[12];
        return append(wsp_uint_to_text(v, digits + sizeof digits - 1), limit);
    }
    // Re-reads the length after a reader wrote into text directly.
    void sync() { len = static_cast<uint16_t>(strnlen(text, WSP_TEXT_AREA - 1)); }
};

#endif

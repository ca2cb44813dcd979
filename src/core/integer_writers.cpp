// Short-integer, Long-integer and Integer-value writers in buffer style, the
// integer-from-text writer, the bit counter and the 32-bit strtoul
// stand-in used wherever the library turns digits into numbers.
#include <cstdint>
#include <cstring>

#include "buffer.h"
#include "primitives.h"

namespace {

constexpr uint32_t kOverflow = 0xFFFFFFFFu;

// Value of one digit in bases up to 36, or 0xFF for a non-digit.
uint8_t digit_value(uint8_t c) {
    if (c >= '0' && c <= '9') return static_cast<uint8_t>(c - '0');
    if (c >= 'a' && c <= 'z') return static_cast<uint8_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'Z') return static_cast<uint8_t>(c - 'A' + 10);
    return 0xFF;
}

bool is_hex_digit(uint8_t c) { return digit_value(c) < 16; }

// White space as the C locale's isspace sees it.
bool is_c_space(uint8_t c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Integer-value of a number already parsed: Short-integer up to 127,
// Long-integer above.
int append_parsed(uint32_t v, wsp_buffer *buf) {
    return v > 127 ? wsp_append_long_int(v, buf) : wsp_append_short_int(v, buf);
}

// A hexadecimal number too large for 32 bits, written as a Long-integer of
// as many octets as its digits need.  d is the count of hexadecimal digits
// right after the prefix, kept in 8 bits; no upper limit of 30 octets is
// applied, so long numbers give long Long-integers on purpose.
int append_long_hex(const char *digits, wsp_buffer *buf) {
    uint8_t d = 0;
    for (const char *p = digits; is_hex_digit(static_cast<uint8_t>(*p)); ++p) d = static_cast<uint8_t>(d + 1);
    uint8_t n = static_cast<uint8_t>(d / 2 + (d & 1u));
    if (buf->size < static_cast<uint16_t>(buf->length + n + 1)) return kWspErrFail;
    uint32_t at = wsp_buffer_tail_index(buf);
    bool stored = wsp_buffer_store(buf, at, n);
    buf->length = static_cast<uint16_t>(buf->length + n + 1);
    uint32_t out = at + 1;
    uint8_t i = 0;
    if ((d & 1u) != 0) {
        // An odd count: the first digit alone makes the first octet.
        stored = stored && wsp_buffer_store(buf, out++, digit_value(static_cast<uint8_t>(digits[0])));
        i = 1;
    }
    for (; i < d && stored; i = static_cast<uint8_t>(i + 2)) {
        uint8_t hi = digit_value(static_cast<uint8_t>(digits[i]));
        uint8_t lo = digit_value(static_cast<uint8_t>(digits[i + 1]));
        stored = wsp_buffer_store(buf, out++, static_cast<uint8_t>((hi << 4) | lo));
    }
    return stored ? kWspOk : kWspErrFail;
}

} // namespace

uint8_t wsp_bit_count(uint32_t v) {
    uint8_t bits = 1;
    while (v > 1) {
        v >>= 1;
        bits = static_cast<uint8_t>(bits + 1);
    }
    return bits;
}

// A buffer is never filled to its last byte by a Short-integer: when the
// octet just written makes the buffer exactly full, the octet stays written
// and counted but -214 is returned.  Callers rely on this
// (AppendShortInt.LastOctetWrittenCountedButRefused).
int wsp_append_short_int(uint32_t v, wsp_buffer *buf) {
    if (buf == nullptr || buf->data == nullptr) return kWspErrFail;
    if (buf->length == buf->size) return kWspErrFail;
    uint8_t low = static_cast<uint8_t>(v & 0xFFu);
    if ((low & 0x80u) != 0) return kWspErrFail;
    // A length already past size leaves the octet outside the region: it is
    // not stored but still counted, and the call fails.
    bool stored = wsp_buffer_store(buf, wsp_buffer_tail_index(buf), static_cast<uint8_t>(low | 0x80u));
    buf->length = static_cast<uint16_t>(buf->length + 1);
    return stored && buf->length < buf->size ? kWspOk : kWspErrFail;
}

// The length octet is written and counted before the room test: on failure
// it stays in the buffer and in length.  Callers rely on that count
// (AppendLongInt.LengthOctetCountedBeforeRoomTest).
int wsp_append_long_int(uint32_t v, wsp_buffer *buf) {
    if (buf == nullptr || buf->data == nullptr) return kWspErrFail;
    uint8_t n = static_cast<uint8_t>((wsp_bit_count(v) + 7) / 8);
    if (n > 4) return kWspErrFail;
    uint32_t at = wsp_buffer_tail_index(buf);
    bool stored = wsp_buffer_store(buf, at, n);
    buf->length = static_cast<uint16_t>(buf->length + n + 1);
    if (buf->length > buf->size) return kWspErrFail;
    for (uint8_t i = 0; i < n && stored; ++i) {
        uint8_t shift = static_cast<uint8_t>(8 * (n - 1 - i));
        stored = wsp_buffer_store(buf, at + 1 + i, static_cast<uint8_t>(v >> shift));
    }
    return stored ? kWspOk : kWspErrFail;
}

int wsp_append_integer(uint32_t v, wsp_buffer *buf) {
    return v < 128 ? wsp_append_short_int(v, buf) : wsp_append_long_int(v, buf);
}

// Decimal text, or hexadecimal after "0x"/"0X".  Text that is not a number
// parses as 0 and is written as the Short-integer 0x80.  A NULL text is
// refused with -214.
int wsp_append_integer_text(const char *text, wsp_buffer *buf) {
    if (text == nullptr || buf == nullptr || buf->data == nullptr) return kWspErrFail;
    if (text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        uint32_t v = wsp_strtou32(text + 2, nullptr, 16);
        if (v != kOverflow) return append_parsed(v, buf);
        // Too large for 32 bits (or exactly 0xFFFFFFFF, which cannot be told
        // apart): the digits themselves become the octets.
        return append_long_hex(text + 2, buf);
    }
    uint32_t v = wsp_strtou32(text, nullptr, 10);
    if (v == kOverflow) return kWspErrFail;
    return append_parsed(v, buf);
}

// strtoul of a 32-bit unsigned long.  Any base 2..36 is accepted; base 16
// also takes an optional "0x"/"0X" in front of the digits (only when a
// hexadecimal digit follows it, so "0xg" reads as 0 ending at the "x").
// Other bases read as base 10.
uint32_t wsp_strtou32(const char *text, const char **end, int base) {
    if (end != nullptr) *end = text;
    if (text == nullptr) return 0;
    if (base < 2 || base > 36) base = 10;
    const char *p = text;
    while (is_c_space(static_cast<uint8_t>(*p))) ++p;
    bool negative = false;
    if (*p == '+' || *p == '-') {
        negative = (*p == '-');
        ++p;
    }
    if (base == 16 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X') && is_hex_digit(static_cast<uint8_t>(p[2]))) p += 2;
    if (base == 10) {
        // Nine decimal digits cannot pass 32 bits: a number that ends within
        // them is read without the overflow test.  A tenth digit sends the
        // whole number through the general loop below.
        uint32_t small = 0;
        const char *q = p;
        for (int digits = 0; digits < 9 && wsp_ascii_is_digit(static_cast<uint8_t>(*q)); ++digits, ++q)
            small = small * 10 + static_cast<uint32_t>(*q - '0');
        if (!wsp_ascii_is_digit(static_cast<uint8_t>(*q))) {
            if (q == p) return 0; // no digit: *end stays at text
            if (end != nullptr) *end = q;
            return negative ? static_cast<uint32_t>(0u - small) : small;
        }
    }
    uint64_t v = 0;
    bool overflow = false;
    bool any = false;
    for (;; ++p) {
        uint8_t dv = digit_value(static_cast<uint8_t>(*p));
        if (dv >= base) break;
        any = true;
        if (!overflow) {
            v = v * static_cast<uint64_t>(base) + dv;
            if (v > 0xFFFFFFFFull) overflow = true;
        }
    }
    if (!any) return 0; // *end stays at text
    if (end != nullptr) *end = p;
    if (overflow) return kOverflow; // whatever the sign
    uint32_t r = static_cast<uint32_t>(v);
    return negative ? static_cast<uint32_t>(0u - r) : r;
}

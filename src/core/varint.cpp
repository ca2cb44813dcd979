// uintvar and Short-integer in cursor style: the exported primitives that
// read and write single values at a byte pointer.
#include <cstdint>

#include "primitives.h"

namespace {

// The failure pattern of the exact-length uintvar reader: the 16-bit form of
// -214, returned as an unsigned value on purpose (callers compare 65322).
constexpr int kVarintLenFail = WSP_VARINTLEN_FAIL;

// The uintvar reading shared by both readers.  `want` is 0 for "any length"
// (the plain reader).  Returns the octet count on success, 0 on failure.
// Nothing is read when avail is 0, and no octet at an index >= avail is read.
uint16_t read_uintvar(const uint8_t *p, uint16_t want, uint16_t avail, uint32_t *value) {
    if (avail == 0) return 0; // a failure either way; do not touch the input
    uint8_t first = p[0];
    if (first == 0x80) return 0; // a leading continuation octet carrying no bits
    if (first < 0x80) {
        if (want != 0 && want != 1) return 0;
        *value = first;
        return 1;
    }
    uint32_t v = first & 0x7Fu;
    uint16_t k = 1;
    for (;;) {
        if (k > 5 || k >= avail) return 0;
        if (want != 0 && k >= want) return 0;
        uint8_t c = p[k];
        // Bits shifted out of a five-octet value are dropped without an
        // error: only the low 32 bits are kept.
        v = (v << 7) + (c & 0x7Fu);
        k = static_cast<uint16_t>(k + 1);
        if (c < 0x80) break;
    }
    if (k > 5 || k > avail) return 0;
    if (want != 0 && k != want) return 0;
    *value = v;
    return k;
}

} // namespace

extern "C" {

// No room check on the output: five octets always suffice for 32 bits.
// A NULL argument is refused with -214 rather than dereferenced.
WSP_API int wsp_enc_varint(uint32_t value, uint8_t **cursor, uint8_t *count) {
    if (cursor == nullptr || *cursor == nullptr || count == nullptr) return kWspErrFail;
    uint8_t n = static_cast<uint8_t>((wsp_bit_count(value) + 6) / 7);
    if (n > 5) return kWspErrFail;
    uint8_t *out = *cursor;
    for (uint8_t i = 0; i < n; ++i) {
        uint8_t shift = static_cast<uint8_t>(7 * (n - 1 - i));
        uint8_t group = static_cast<uint8_t>((value >> shift) & 0x7Fu);
        out[i] = (i + 1 < n) ? static_cast<uint8_t>(group | 0x80u) : group;
    }
    *count = n;
    *cursor = out + n;
    return kWspOk;
}

WSP_API int wsp_dec_varint(const uint8_t **cursor, uint32_t *value, uint16_t avail) {
    if (cursor == nullptr || *cursor == nullptr || value == nullptr) return kWspErrFail;
    uint32_t v = 0;
    uint16_t k = read_uintvar(*cursor, 0, avail, &v);
    if (k == 0) return kWspErrFail;
    *value = v;
    *cursor += k;
    return kWspOk;
}

// The value must occupy exactly `octets` octets.  Every failure reports
// 65322 instead of -214; callers test for that pattern.
WSP_API int wsp_dec_varintLen(const uint8_t **cursor, uint16_t octets, uint32_t *value, uint16_t avail) {
    if (cursor == nullptr || *cursor == nullptr || value == nullptr) return kVarintLenFail;
    if (octets == 0) return kVarintLenFail; // no uintvar is zero octets long
    uint32_t v = 0;
    uint16_t k = read_uintvar(*cursor, octets, avail, &v);
    if (k == 0) return kVarintLenFail;
    *value = v;
    *cursor += k;
    return kWspOk;
}

// Only the low 8 bits of value count: 300 is written as 0xAC.
WSP_API int wsp_short_int_encodeto(uint8_t **cursor, uint32_t value) {
    if (cursor == nullptr || *cursor == nullptr) return kWspErrFail;
    uint8_t low = static_cast<uint8_t>(value & 0xFFu);
    if ((low & 0x80u) != 0) return kWspErrFail;
    **cursor = static_cast<uint8_t>(low | 0x80u);
    *cursor += 1;
    return kWspOk;
}

WSP_API int wsp_shortint_direct_decode(const uint8_t **cursor, uint8_t *value) {
    if (cursor == nullptr || *cursor == nullptr || value == nullptr) return kWspErrFail;
    uint8_t octet = **cursor;
    if (octet < 0x80u) return kWspErrFail;
    *value = static_cast<uint8_t>(octet & 0x7Fu);
    *cursor += 1;
    return kWspOk;
}

} // extern "C"

// Stepping over one encoded value without decoding it, and measuring one.
//
// Both look only at octets before the hard end (value + remaining).  A
// value whose first octet lies at the hard end cannot be read at all and
// gives -214.  Lengths are added as 32-bit numbers, so a uintvar near
// 0xFFFFFFFF wraps the total, as a 32-bit pointer step over it would.
#include <cstdint>

#include "decode.h"
#include "primitives.h"

namespace {

// The longest text wsp_skip_value passes over: its NUL must be one of the
// first 197 octets.
constexpr uint16_t kSkipTextOctets = WSP_TEXT_LIMIT;

// Length-quote form: 31, a uintvar L, then L octets.  The uintvar is read
// only from the octets after the 31 that lie before the hard end.
int measure_quoted_length(const uint8_t *value, uint16_t remaining, uint32_t *total) {
    if (remaining < 2) return kWspErrFail;
    const uint8_t *q = value + 1;
    uint32_t length = 0;
    int status = wsp_dec_varint(&q, &length, static_cast<uint16_t>(remaining - 1));
    if (status != kWspOk) return status;
    *total = static_cast<uint32_t>(q - value) + length;
    return kWspOk;
}

// Index of the NUL ending the text at value, searched below `limit`, or -1.
int32_t find_nul(const uint8_t *value, uint16_t limit) {
    for (uint16_t i = 0; i < limit; ++i) {
        if (value[i] == 0) return i;
    }
    return -1;
}

} // namespace

// Moves *cursor past one value.  A length form that claims more octets than
// are left stops the cursor at the hard end: the block walk then ends there
// exactly as it would after a step past it, and the cursor never points
// beyond one past the input.  A text must end within its first 197 octets
// and before the hard end, else -214 with the cursor left.
int wsp_skip_value(const uint8_t **cursor, uint16_t remaining) {
    if (cursor == nullptr || *cursor == nullptr || remaining == 0) return kWspErrFail;
    const uint8_t *p = *cursor;
    uint8_t o = p[0];
    uint32_t step = 0;
    if (o < 31) {
        step = static_cast<uint32_t>(o) + 1;
    } else if (o == 31) {
        int status = measure_quoted_length(p, remaining, &step);
        if (status != kWspOk) return status;
    } else if (o >= 128) {
        step = 1;
    } else {
        uint16_t limit = remaining < kSkipTextOctets ? remaining : kSkipTextOctets;
        int32_t nul = find_nul(p, limit);
        if (nul < 0) return kWspErrFail;
        step = static_cast<uint32_t>(nul) + 1;
    }
    *cursor = p + (step < remaining ? step : remaining);
    return kWspOk;
}

// The total octets of the value at `value`, first octet included.  Length
// forms are not compared with remaining (the caller decides what a value
// reaching past the end means); a text's NUL must lie before the hard end,
// with no 197-octet bound.
int wsp_value_size(const uint8_t *value, uint32_t *size, uint16_t remaining) {
    if (value == nullptr || size == nullptr || remaining == 0) return kWspErrFail;
    uint8_t o = value[0];
    if (o < 31) {
        *size = static_cast<uint32_t>(o) + 1;
        return kWspOk;
    }
    if (o == 31) return measure_quoted_length(value, remaining, size);
    if (o >= 128) {
        *size = 1;
        return kWspOk;
    }
    int32_t nul = find_nul(value, remaining);
    if (nul < 0) return kWspErrFail;
    *size = static_cast<uint32_t>(nul) + 1;
    return kWspOk;
}

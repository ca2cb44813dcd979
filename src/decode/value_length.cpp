// The one reader of the Value-length forms used by every structured decoder.
#include "decode.h"
#include "primitives.h"

int wsp_read_value_length(const uint8_t **cursor, uint16_t remaining, uint32_t *length) {
    const uint8_t *p = *cursor;
    if (remaining == 0) return kWspErrFail;
    uint8_t first = p[0];
    if (first < 31) {
        if (first > remaining) return kWspErrFail;
        *length = first;
        *cursor = p + 1;
        return kWspOk;
    }
    if (first == 31) {
        const uint8_t *q = p + 1;
        uint32_t v = 0;
        if (wsp_dec_varint(&q, &v, static_cast<uint16_t>(remaining - 1)) != kWspOk) return kWspErrFail;
        *length = v;
        *cursor = q;
        return kWspOk;
    }
    return kWspErrFail;
}

// The header code octet every value encoder writes first.
#include "encode.h"
#include "primitives.h"

int wsp_write_code_octet(uint8_t code, wsp_buffer *out) {
    return wsp_append_short_int(code, out) == kWspOk ? kWspOk : kWspErrFail;
}

// Retry-After: an HTTP date (0x80 and a Date-value) or a number of seconds
// (0x81 and an Integer-value), inside a Value-length.
#include "date.h"
#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"

namespace {

constexpr uint8_t kAbsoluteTime = 0; // Short-integer 0x80
constexpr uint8_t kRelativeTime = 1; // Short-integer 0x81

// Every day name starts with a letter from "f" (fri) to "w" (wed); such a
// value is taken for a date, anything else for a number of seconds.
bool starts_like_a_day_name(const char *text) {
    uint8_t c = static_cast<uint8_t>(text[0]);
    return c >= 'f' && c <= 'w';
}

} // namespace

int wsp_encode_retry_after(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    uint16_t scratch_size = wsp_enc_scratch_size(value);
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    char *text = wsp_enc_prepare(value, true);

    wsp_scratch scratch(scratch_size);
    if (!scratch.ok()) return kWspErrFail;
    wsp_buffer *body = scratch.get();
    int status;
    if (starts_like_a_day_name(text)) {
        status = wsp_append_short_int(kAbsoluteTime, body);
        if (status == kWspOk) status = wsp_parse_http_date(text, body);
    } else {
        status = wsp_append_short_int(kRelativeTime, body);
        if (status == kWspOk) status = wsp_append_integer_text(text, body);
    }
    if (status != kWspOk) return kWspErrFail;
    return wsp_append_value_block(out, body) == kWspOk ? kWspOk : kWspErrFail;
}

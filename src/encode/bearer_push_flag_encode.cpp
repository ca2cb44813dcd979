// Bearer-Indication and Push-Flag: one decimal number per header.
#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"

namespace {

// Push-Flag carries three flag bits.
constexpr uint32_t kHighestPushFlag = 7;

} // namespace

int wsp_encode_bearer_push_flag(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, false);
    if (cursor == nullptr) return kWspErrFail;
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    char *element = wsp_enc_next_element(&cursor, ",");
    // A header without a number is refused rather than sent as 0.
    if (element == nullptr) return kWspErrFail;
    // Read the way strtoul reads it: text that is no number counts as 0,
    // trailing characters are ignored, a minus sign wraps.
    uint32_t number = wsp_strtou32(element, nullptr, 10);
    if (code == WSP_HDR_PUSH_FLAG && number > kHighestPushFlag) return kWspErrFail;
    if (wsp_append_integer(number, out) != kWspOk) return kWspErrFail;
    // One number per header.
    if (wsp_enc_next_element(&cursor, ",") != nullptr) return kWspErrFail;
    return kWspOk;
}

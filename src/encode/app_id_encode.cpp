// Push application identifiers: X-Wap-Application-Id (one per header) and
// Accept-Application (a list, one header per element).
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "tables.h"

namespace {

// The registered code of an application id as an Integer-value (some codes
// run past 127), or the id itself as Token-text.
int append_app_id(const char *element, wsp_buffer *out) {
    return wsp_append_code_or_token(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, element, out);
}

} // namespace

int wsp_encode_app_id(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, true);
    if (cursor == nullptr) return kWspErrFail;
    char *element = wsp_enc_next_element(&cursor, ",");
    // No id at all: nothing is written, not even the code octet, and the
    // call succeeds.  Kept on purpose; callers rely on an empty line
    // vanishing from the block (EncodeAppId.EmptyValueWritesNothingAtAll).
    if (element == nullptr) return kWspOk;
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    if (append_app_id(element, out) != kWspOk) return kWspErrFail;
    // Only one application id per header.
    if (wsp_enc_next_element(&cursor, ",") != nullptr) return kWspErrFail;
    return kWspOk;
}

int wsp_encode_accept_app(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, true);
    if (cursor == nullptr) return kWspErrFail;
    // An empty value has no element: nothing is written and the call
    // succeeds.
    char *element;
    while ((element = wsp_enc_next_element(&cursor, ",")) != nullptr) {
        if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
        if (std::strcmp(element, "*") == 0) {
            // Any application: 0x80, and the list ends here; whatever
            // follows the "*" is not looked at.
            return wsp_append_short_int(0, out) == kWspOk ? kWspOk : kWspErrFail;
        }
        if (append_app_id(element, out) != kWspOk) return kWspErrFail;
    }
    return kWspOk;
}

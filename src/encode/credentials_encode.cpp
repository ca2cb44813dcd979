// Authorization and Proxy-Authorization: the scheme, then either the Basic
// user id and password or the scheme's parameters, inside a Value-length.
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

namespace {

constexpr uint8_t kBasicScheme = 0; // written as the Short-integer 0x80

// "user:password" as two Text-strings, exactly as they stand in the text:
// nothing is base64-decoded here, the caller sends the credentials it wants
// to see on the air.  The user id runs up to the first colon and is empty
// when the credentials begin with one; no colon at all is refused.
int append_basic(char *credentials, wsp_buffer *body) {
    char *colon = std::strchr(credentials, ':');
    if (colon == nullptr) return kWspErrFail;
    *colon = '\0';
    if (wsp_append_short_int(kBasicScheme, body) != kWspOk) return kWspErrFail;
    if (wsp_append_text_string(credentials, body) != kWspOk) return kWspErrFail;
    if (wsp_append_text_string(colon + 1, body) != kWspOk) return kWspErrFail;
    return kWspOk;
}

// Any other scheme: its name as a token, then each comma-separated
// parameter, trimmed and lower-cased.
int append_other_scheme(const char *scheme, char *parameters, wsp_buffer *body, uint8_t version_index) {
    if (wsp_tokentext_encode_buff(scheme, body) != kWspOk) return kWspErrFail;
    return wsp_append_param_list(parameters, ",", true, body, version_index);
}

} // namespace

int wsp_encode_credentials(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    // The scheme ends at the first blank; the rest is taken as it stands.
    return wsp_encode_headed_value(
        code, value, " ", wsp_first_part::token_lowered, out,
        [version_index](char *scheme, char *rest, wsp_buffer *body) {
            if (wsp_find_name(wsp_auth_schemes, 1, scheme, false) >= 0) return append_basic(rest, body);
            return append_other_scheme(scheme, rest, body, version_index) == kWspOk ? kWspOk : kWspErrFail;
        });
}

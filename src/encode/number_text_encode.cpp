// Headers whose value is one number or one text: Age, Content-Length and
// Max-Forwards as integers; Content-Base, Content-Location, ETag, From,
// Host, Location, Referer, Server, User-Agent, X-Wap-Content-Uri,
// X-Wap-Initiator-Uri (and the entity-tag form of If-Range) as text.
// One header per line: a comma in the value is an ordinary character.
#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"

namespace {


} // namespace

int wsp_encode_number_or_text(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    char *text = wsp_enc_prepare(value, false);
    int status;
    if (code == WSP_HDR_AGE || code == WSP_HDR_CONTENT_LENGTH || code == WSP_HDR_MAX_FORWARDS) {
        status = wsp_append_integer_text(text, out);
    } else {
        status = wsp_append_text_string(text, out);
    }
    return status == kWspOk ? kWspOk : kWspErrFail;
}

// Content-Disposition (codes 0x2E and 0x45): the disposition as its
// well-known number or as a token, then its ";" parameters, inside a
// Value-length.
#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

int wsp_encode_disposition(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    // The value is lower-cased whole; the disposition is its first element,
    // and a value without one is refused before anything is written.
    return wsp_encode_headed_value(
        code, value, ";", wsp_first_part::element, out,
        [version_index](char *disposition, char *parameters, wsp_buffer *body) {
            if (wsp_append_code_or_token(wsp_dispositions, WSP_DISPOSITION_ROWS, disposition, body) != kWspOk)
                return kWspErrFail;
            // The parameters are already lower case.
            return wsp_append_param_list(parameters, ";", false, body, version_index);
        });
}

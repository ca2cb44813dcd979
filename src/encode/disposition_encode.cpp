// Content-Disposition (codes 0x2E and 0x45): the disposition as its
// well-known number or as a token, then its ";" parameters, inside a
// Value-length.
#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

int wsp_encode_disposition(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *cursor = wsp_enc_prepare(value, true);
    char *disposition = wsp_enc_next_element(&cursor, ";");
    // A value without a disposition is refused before anything is written.
    if (disposition == nullptr) return kWspErrFail;
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;

    return wsp_append_built_value(scratch_size, out, [disposition, cursor, version_index](wsp_buffer *body) {
        if (wsp_append_code_or_token(wsp_dispositions, WSP_DISPOSITION_ROWS, disposition, body) != kWspOk)
            return kWspErrFail;
        // The value is already lower case.
        return wsp_append_param_list(cursor, ";", false, body, version_index);
    });
}

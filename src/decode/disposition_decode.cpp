// Content-Disposition (0x2E, 0x45): inside a Value-length, a disposition
// (a well-known code or a token) and its parameters, each written as ";",
// name and, with a value, "=" and the value.  One line per header.
#include "decode.h"
#include "primitives.h"
#include "structured_value.h"
#include "tables.h"
#include "text_builder.h"

int wsp_dec_disposition(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    const char *name = wsp_decoded_header_name(code);
    if (name == nullptr) return kWspErrFail;
    wsp_value_reader v;
    bool done = false;
    if (wsp_open_structured(cursor, remaining, &v, &done) != kWspOk) return kWspErrFail;
    if (done) return kWspOk;

    wsp_text_builder b;
    switch (v.peek_class()) {
    case WSP_CLASS_TEXT:
        if (wsp_read_token_text(&v.p, b.text, v.bound(v.rest_of_length()), WSP_DEC_SCRATCH) != kWspOk)
            return kWspErrFail;
        b.sync();
        break;
    case WSP_CLASS_SHORT_INT: {
        uint8_t d = static_cast<uint8_t>(*v.p & 0x7F);
        if (d >= WSP_DISPOSITION_ROWS) return kWspErrFail;
        b.append(wsp_dispositions.name(d));
        v.p += 1;
        break;
    }
    default:
        return kWspErrFail;
    }

    if (!wsp_append_param_run(&v, &b, nullptr, wsp_decode_params)) return kWspErrFail;
    if (b.len >= WSP_DEC_SCRATCH) return kWspErrFail;

    int st = wsp_append_header_line(out, name, b.text);
    if (st == kWspOk) *cursor = v.p;
    return st;
}

// Content-Disposition (0x2E, 0x45): inside a Value-length, a disposition
// (a well-known code or a token) and its parameters, each written as ";",
// name and, with a value, "=" and the value.  One line per header.
#include "decode.h"
#include "primitives.h"
#include "structured_value.h"
#include "tables.h"
#include "text_builder.h"

int wsp_dec_disposition(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    wsp_value_reader v;
    int status = kWspOk;
    if (!wsp_open_structured(code, cursor, remaining, &v, &status)) return status;

    wsp_text_builder b;
    switch (v.peek_class()) {
    case WSP_CLASS_TEXT:
        if (wsp_read_token_text(&v.p, b.text, v.bound(v.rest_of_length()), WSP_TEXT_CAPACITY) != kWspOk)
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
    if (b.len >= WSP_TEXT_CAPACITY) return kWspErrFail;

    return wsp_close_structured(code, b, v, out, wsp_line_writer::plain, cursor, wsp_cursor_rule::on_ok);
}

// Content-ID, Pragma and X-Wap-Security: small values with one or two
// accepted forms each.
#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "switches.h"
#include "tables.h"
#include "text_builder.h"

namespace {

constexpr uint8_t kCloseSubordinate = 0; // the one X-Wap-Security code
constexpr uint8_t kNoCache = 0;          // the one Pragma code

} // namespace

int wsp_dec_content_id_switched(int text_allowed, uint32_t code, const uint8_t **cursor, wsp_buffer *out,
                                uint16_t remaining) {
    if (remaining == 0) return kWspErrArg;
    const uint8_t cls = wsp_class_of(**cursor);
    const bool quoted = cls == WSP_CLASS_QUOTED;
    if (!quoted && !(text_allowed == 1 && cls == WSP_CLASS_TEXT)) return kWspErrArg;

    const uint8_t *p = *cursor;
    // The quotation mark of a Quoted-string is passed over and not written.
    if (quoted) ++p;
    wsp_text_builder value;
    int status = wsp_read_text_value(&p, value.text, WSP_CLASS_TEXT, wsp_octets_left(*cursor, remaining, p),
                                     WSP_TEXT_CAPACITY);
    if (status != kWspOk) return status;
    value.sync();
    if (value.len > WSP_TEXT_LIMIT) return kWspErrFail;
    return wsp_write_value_line(code, value.text, out, wsp_line_writer::plain, cursor, p, wsp_cursor_rule::on_ok);
}

int wsp_dec_content_id(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    return wsp_dec_content_id_switched(device_content_id_text_allowed(), code, cursor, out, remaining);
}

int wsp_dec_pragma(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (remaining == 0) return kWspErrFail;
    const uint8_t *start = *cursor;
    const uint8_t cls = wsp_class_of(*start);

    if (cls == WSP_CLASS_SHORT_INT) {
        const uint8_t *p = start;
        uint8_t pragma = 0;
        if (wsp_shortint_direct_decode(&p, &pragma) != kWspOk || pragma != kNoCache) return kWspErrFail;
        // The cursor moves whatever the merging writer answers.
        return wsp_write_value_line(code, wsp_pragma_values.name(0), out, wsp_line_writer::merging, cursor, p,
                                    wsp_cursor_rule::always);
    }
    if (cls != WSP_CLASS_SHORT_LENGTH && cls != WSP_CLASS_LENGTH_QUOTE) return kWspErrFail;

    const uint8_t *p = start;
    uint32_t length = 0;
    if (wsp_read_value_length(&p, remaining, &length) != kWspOk) return kWspErrFail;
    // An empty pragma is passed over without a line.
    if (cls == WSP_CLASS_SHORT_LENGTH && length == 0) {
        *cursor = p;
        return kWspOk;
    }
    wsp_text_builder value;
    // A run that reaches past the end of the block would leave the cursor
    // before the end of its run after the one parameter: -214 either way.
    wsp_bounded_run run = wsp_bound_run(static_cast<uint16_t>(length), wsp_octets_left(start, remaining, p));
    int status = wsp_decode_single_param(&p, run.run, value.text, WSP_TEXT_CAPACITY);
    if (status != kWspOk) return status;
    if (run.cut) return kWspErrFail;
    return wsp_write_value_line(code, value.text, out, wsp_line_writer::merging, cursor, p, wsp_cursor_rule::always);
}

int wsp_dec_security(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (remaining == 0 || wsp_class_of(**cursor) != WSP_CLASS_SHORT_INT) return kWspErrFail;
    const uint8_t *p = *cursor;
    uint8_t security = 0;
    if (wsp_shortint_direct_decode(&p, &security) != kWspOk || security != kCloseSubordinate) return kWspErrFail;
    return wsp_write_value_line(code, "close-subordinate", out, wsp_line_writer::plain, cursor, p,
                                wsp_cursor_rule::on_ok);
}

// Cache-Control (0x08, 0x3D, 0x47): a bare directive (a well-known code or
// a token) or, inside a Value-length, a directive with its argument: a list
// of field names for no-cache and private, a number for the other
// well-known directives, a number, quoted string or token after a directive
// given as text.  Repeated Cache-Control headers share one line.
#include <cstdio>

#include "decode.h"
#include "primitives.h"
#include "structured_value.h"
#include "tables.h"
#include "text_builder.h"

namespace {

// A bare directive, written at once.  The cursor moves whatever the writer
// says; its status is passed on (a full output stops the block).
int decode_bare(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    const uint8_t *p = *cursor;
    wsp_text_builder b;
    if (wsp_class_of(*p) == WSP_CLASS_SHORT_INT) {
        uint8_t d = static_cast<uint8_t>(*p & 0x7F);
        // A bare s-maxage is refused unless the header is 0x3E; 0x3E is
        // content-range and never comes here, so in practice a bare code 11
        // is always refused.  The test is kept as it stands.
        if (d == WSP_CACHE_S_MAXAGE && code != WSP_HDR_CONTENT_RANGE_1_3) return kWspErrArg;
        if (d == WSP_CACHE_MAX_AGE || d == WSP_CACHE_MIN_FRESH) return kWspErrArg; // these need a value
        if (d >= WSP_CACHE_DIRECTIVE_ROWS) return kWspErrFail;
        b.append(wsp_cache_directives.name(d));
        p += 1;
    } else {
        // A token directive: its reader's status (-216 for a token that
        // fills the scratch) is handed back unchanged.
        int st = wsp_read_token_text(&p, b.text, remaining, WSP_TEXT_CAPACITY);
        if (st != kWspOk) return st;
        b.sync();
    }
    if (b.len >= WSP_TEXT_CAPACITY) return kWspErrFail;
    return wsp_write_value_line(code, b.text, out, wsp_line_writer::merging, cursor, p, wsp_cursor_rule::always);
}

// The argument after a directive given as text: a Long-integer or a
// Short-integer in signed decimal, a Quoted-string with its quotes, or a
// token.  `value` is a 200-octet area.
int decode_text_directive_argument(wsp_value_reader *v, char *value) {
    uint16_t in_value = v->bound(v->rest_of_length());
    switch (v->peek_class()) {
    case WSP_CLASS_SHORT_LENGTH: {
        uint32_t n = 0;
        // The Long-integer's length octet and its octets must all lie in
        // what is left of the value (and of the input).
        if (wsp_read_long_int(&v->p, &n, in_value) != kWspOk) return kWspErrFail;
        std::snprintf(value, WSP_TEXT_AREA, "%d", static_cast<int32_t>(n));
        return kWspOk;
    }
    case WSP_CLASS_SHORT_INT:
        std::snprintf(value, WSP_TEXT_AREA, "%d", *v->p & 0x7F);
        v->p += 1;
        return kWspOk;
    case WSP_CLASS_QUOTED:
        if (wsp_read_text_value(&v->p, value, WSP_CLASS_QUOTED, in_value, WSP_TEXT_CAPACITY) != kWspOk)
            return kWspErrFail;
        return kWspOk;
    case WSP_CLASS_QUOTE:
    case WSP_CLASS_TEXT:
        if (wsp_read_token_text(&v->p, value, in_value, WSP_TEXT_CAPACITY) != kWspOk) return kWspErrFail;
        return kWspOk;
    default: // a Length-quote, or no octet left
        return kWspErrFail;
    }
}

} // namespace

int wsp_dec_cache_control(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (wsp_decoded_header_name(code) == nullptr || remaining == 0) return kWspErrFail;

    uint8_t cls = wsp_class_of(**cursor);
    if (cls == WSP_CLASS_SHORT_INT || cls == WSP_CLASS_TEXT) return decode_bare(code, cursor, out, remaining);
    if (cls != WSP_CLASS_SHORT_LENGTH && cls != WSP_CLASS_LENGTH_QUOTE) return kWspErrFail;

    wsp_value_reader v;
    int status = kWspOk;
    if (!wsp_open_structured(code, cursor, remaining, &v, &status)) return status;

    wsp_text_builder b;
    bool well_known = false;
    uint8_t d = 0;
    switch (v.peek_class()) {
    case WSP_CLASS_SHORT_INT:
        d = static_cast<uint8_t>(*v.p & 0x7F);
        if (d >= WSP_CACHE_DIRECTIVE_ROWS) return kWspErrFail;
        b.append(wsp_cache_directives.name(d));
        well_known = true;
        v.p += 1;
        break;
    case WSP_CLASS_TEXT: {
        // No bound is given for the directive name; it is read up to the
        // end of the input, and its reader's status is handed back as it
        // stands.  A name that runs past the length fails the final count.
        int st = wsp_read_token_text(&v.p, b.text, v.left(), WSP_TEXT_CAPACITY);
        if (st != kWspOk) return st;
        b.sync();
        break;
    }
    default:
        return kWspErrFail;
    }

    if (well_known && (d == WSP_CACHE_NO_CACHE || d == WSP_CACHE_PRIVATE)) {
        // The rest of the length is a list of field names appended to the
        // directive ("no-cache= \"a,b\"").
        uint16_t run = 0;
        if (!v.rest_as_run(&run)) return kWspErrFail;
        if (wsp_decode_field_name_list(&v.p, b.text, run) != kWspOk) return kWspErrFail;
        b.sync();
    } else {
        if (v.length_used_up() || b.len >= WSP_TEXT_LIMIT) return kWspErrFail;
        b.append("=");
        char value[WSP_TEXT_AREA] = {};
        if (well_known) {
            uint8_t vc = v.peek_class();
            if (vc != WSP_CLASS_SHORT_LENGTH && vc != WSP_CLASS_SHORT_INT) return kWspErrFail;
            if (wsp_decode_integer_text(&v.p, value, v.bound(v.rest_of_length())) != kWspOk) return kWspErrFail;
        } else if (decode_text_directive_argument(&v, value) != kWspOk) {
            return kWspErrFail;
        }
        if (!b.append(value)) return kWspErrFail;
    }

    if (v.used() != v.length || b.len > WSP_TEXT_LIMIT) return kWspErrFail;
    return wsp_close_structured(code, b, v, out, wsp_line_writer::merging, cursor, wsp_cursor_rule::always);
}

// Set-Cookie (0x41): inside a Value-length, the cookie version, the cookie
// name and value, and optional parameters, written as
// "<name>=<value>;<version>[;<param>...]".  Set-Cookie values share one line.
#include <cstring>

#include "decode.h"
#include "primitives.h"
#include "structured_value.h"
#include "tables.h"
#include "text_builder.h"

namespace {

// "Version=<major>[.<minor>]" of a Short-integer version.  Major and minor
// are both formatted into the same scratch end, and the minor is taken
// through the pointer returned for the major (one digit, since the major is
// 0..7): a one-digit minor comes out right, a minor of 10 to 14 shows only
// its last digit ("1.0" for 0x1A).  Kept as it stands; clients have only
// ever seen one-digit minors here.
void version_text(uint8_t octet, char *text) {
    uint8_t v = static_cast<uint8_t>(octet & 0x7F);
    uint8_t minor = static_cast<uint8_t>(v & 0x0F);
    char digits[12];
    char *end = digits + sizeof digits - 1;
    wsp_text_builder b;
    b.append("Version=");
    char *major = wsp_uint_to_text(static_cast<uint32_t>(v >> 4), end);
    b.append(major);
    if (minor < 15) {
        b.append(".");
        wsp_uint_to_text(minor, end);
        b.append(major);
    }
    std::memcpy(text, b.text, b.len + 1u);
}

// The cookie name or value: classes 2, 3 or 4, a Text-string bounded by
// what is left of the length.
int read_cookie_text(wsp_value_reader *v, char *text) {
    if (!wsp_is_text_class(v->peek_class())) return kWspErrFail;
    if (wsp_read_text_string(&v->p, text, v->bound(v->rest_of_length()), WSP_TEXT_CAPACITY) != kWspOk)
        return kWspErrFail;
    return kWspOk;
}

} // namespace

int wsp_dec_set_cookie(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    wsp_value_reader v;
    int status = kWspOk;
    if (!wsp_open_structured(code, cursor, remaining, &v, &status)) return status;

    // The version: a Short-integer gives "Version=...", a text is taken as
    // it stands (no "Version=" in front).
    char version[WSP_TEXT_AREA] = {};
    uint8_t cls = v.peek_class();
    if (cls == WSP_CLASS_SHORT_INT) {
        version_text(*v.p, version);
        v.p += 1;
    } else if (wsp_is_text_class(cls)) {
        if (wsp_read_text_string(&v.p, version, v.bound(v.length), WSP_TEXT_CAPACITY) != kWspOk) return kWspErrFail;
    } else {
        return kWspErrFail;
    }

    // The cookie name and value are bounded by the length less the octets
    // used so far; neither may run over the value.
    char cookie_name[WSP_TEXT_AREA] = {};
    char cookie_value[WSP_TEXT_AREA] = {};
    if (read_cookie_text(&v, cookie_name) != kWspOk) return kWspErrFail;
    if (read_cookie_text(&v, cookie_value) != kWspOk) return kWspErrFail;

    wsp_text_builder b;
    if (!b.append(cookie_name) || !b.append("=") || !b.append(cookie_value) || !b.append(";") || !b.append(version))
        return kWspErrFail;

    if (!wsp_append_param_run(&v, &b, nullptr, wsp_decode_params)) return kWspErrFail;
    if (b.len >= WSP_TEXT_CAPACITY) return kWspErrFail;

    return wsp_close_structured(code, b, v, out, wsp_line_writer::merging, cursor, wsp_cursor_rule::on_ok);
}

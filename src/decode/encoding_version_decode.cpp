// Encoding-Version (0x43): a version as Short-integer ("1.3"), as text, or
// inside a Value-length after a code page.  One line per header.
#include "decode.h"
#include "primitives.h"
#include "structured_value.h"
#include "tables.h"
#include "text_builder.h"

namespace {

// Major (high three bits of the 7-bit value) and, unless the minor nibble
// is 15 ("no minor"), "." and the minor number.
void append_version(wsp_text_builder *b, uint8_t octet) {
    uint8_t v = static_cast<uint8_t>(octet & 0x7F);
    uint8_t minor = static_cast<uint8_t>(v & 0x0F);
    b->append_uint(static_cast<uint32_t>(v >> 4));
    if (minor < 15) {
        b->append(".");
        b->append_uint(minor);
    }
}

} // namespace

int wsp_dec_encoding_version(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (wsp_decoded_header_name(code) == nullptr || remaining == 0) return kWspErrFail;

    const uint8_t *p = *cursor;
    wsp_text_builder b;
    uint8_t cls = wsp_class_of(*p);
    if (cls == WSP_CLASS_SHORT_INT) {
        append_version(&b, *p);
        p += 1;
    } else if (wsp_is_text_class(cls)) {
        if (wsp_read_text_string(&p, b.text, remaining, WSP_TEXT_CAPACITY) != kWspOk) return kWspErrFail;
        b.sync();
    } else {
        // A code page, then the version, both Short-integers.  The code page
        // is read and dropped, and the text starts with a space in this form.
        // Only the two octets are passed: the length is not compared with
        // them.
        wsp_value_reader v;
        int status = kWspOk;
        if (!wsp_open_structured(code, cursor, remaining, &v, &status)) return status;
        if (v.peek_class() != WSP_CLASS_SHORT_INT) return kWspErrFail;
        v.p += 1;
        if (v.peek_class() != WSP_CLASS_SHORT_INT) return kWspErrFail;
        b.append(" ");
        append_version(&b, *v.p);
        v.p += 1;
        p = v.p;
    }
    if (b.len >= WSP_TEXT_CAPACITY) return kWspErrFail;

    return wsp_write_value_line(code, b.text, out, wsp_line_writer::plain, cursor, p, wsp_cursor_rule::on_ok);
}

// Warning (0x2C) and Profile-Warning (0x37, 0x44): a bare code, or inside a
// Value-length a code with its agent and text (Warning) or its target and
// date (Profile-Warning).  Warnings share one line; every Profile-Warning
// gets a line of its own.
#include <cstring>

#include "date.h"
#include "decode.h"
#include "primitives.h"
#include "structured_value.h"
#include "tables.h"
#include "text_builder.h"

namespace {

// The length form of both headers, opened as every structured value is;
// beyond that a Length-quote of 0 and a header of one octet are refused.
bool open_warning_value(uint32_t code, const uint8_t **cursor, uint16_t remaining, wsp_value_reader *v,
                        int *status) {
    if (!wsp_open_structured(code, cursor, remaining, v, status)) return false;
    if (v->length == 0 || remaining == 1) {
        *status = kWspErrFail;
        return false;
    }
    return true;
}

// One text field (agent, text, target) of classes 2, 3 or 4, read as a
// Text-string bounded by what is left of the length; appended after a
// single space.
int append_text_field(wsp_value_reader *v, wsp_text_builder *b) {
    if (!wsp_is_text_class(v->peek_class())) return kWspErrFail;
    char field[WSP_TEXT_AREA] = {};
    if (wsp_read_text_string(&v->p, field, v->bound(v->rest_of_length()), WSP_TEXT_CAPACITY) != kWspOk)
        return kWspErrFail;
    if (!b->append(" ") || !b->append(field)) return kWspErrFail;
    return kWspOk;
}

// The text of a profile-warning code ("100", "200", ...), or nullptr for a
// code without a row.
const char *profile_warning_text(uint8_t octet) {
    int row = wsp_find_code(wsp_status_codes, WSP_STATUS_CODE_ROWS, static_cast<uint32_t>(octet & 0x7F));
    return row < 0 ? nullptr : wsp_status_codes.name(static_cast<uint16_t>(row));
}

} // namespace

int wsp_dec_warning(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (wsp_decoded_header_name(code) == nullptr || remaining == 0) return kWspErrFail;

    wsp_text_builder b;
    if (wsp_class_of(**cursor) == WSP_CLASS_SHORT_INT) {
        // The warning code alone, as it stands: 0x8A is "10", no 100 added.
        b.append_uint(static_cast<uint32_t>(**cursor & 0x7F));
        return wsp_write_value_line(code, b.text, out, wsp_line_writer::merging, cursor, *cursor + 1,
                                    wsp_cursor_rule::always);
    }

    wsp_value_reader v;
    int status = kWspOk;
    if (!open_warning_value(code, cursor, remaining, &v, &status)) return status;

    // "<code> <agent> <text>".
    if (v.peek_class() != WSP_CLASS_SHORT_INT) return kWspErrFail;
    b.append_uint(static_cast<uint32_t>(*v.p & 0x7F));
    v.p += 1;
    if (append_text_field(&v, &b) != kWspOk) return kWspErrFail;
    if (append_text_field(&v, &b) != kWspOk) return kWspErrFail;
    if (v.used() != v.length) return kWspErrFail;

    // Merging writer; the cursor moves whatever it says.
    return wsp_close_structured(code, b, v, out, wsp_line_writer::merging, cursor, wsp_cursor_rule::always);
}

int wsp_dec_profile_warning(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (wsp_decoded_header_name(code) == nullptr || remaining == 0) return kWspErrFail;

    wsp_text_builder b;
    if (wsp_class_of(**cursor) == WSP_CLASS_SHORT_INT) {
        const char *text = profile_warning_text(**cursor);
        if (text == nullptr) return kWspErrFail;
        b.append(text);
        return wsp_write_value_line(code, b.text, out, wsp_line_writer::plain, cursor, *cursor + 1,
                                    wsp_cursor_rule::on_ok);
    }

    wsp_value_reader v;
    int status = kWspOk;
    if (!open_warning_value(code, cursor, remaining, &v, &status)) return status;

    // "<code>  <target> <date>": two spaces between code and target, on
    // purpose.
    if (v.peek_class() != WSP_CLASS_SHORT_INT) return kWspErrFail;
    const char *text = profile_warning_text(*v.p);
    if (text == nullptr) return kWspErrFail;
    v.p += 1;
    b.append(text);
    b.append(" ");
    if (append_text_field(&v, &b) != kWspOk) return kWspErrFail;
    if (!b.append(" ")) return kWspErrFail;

    // The warning date, a Long-integer of seconds read within the input;
    // the date reader's status is handed back as it stands.
    if (v.peek_class() != WSP_CLASS_SHORT_LENGTH) return kWspErrFail;
    char date[WSP_TEXT_CAPACITY] = {};
    int st = wsp_decode_date(&v.p, date, v.left());
    if (st != kWspOk) return st;
    if (!b.append(date)) return kWspErrFail;

    // The length is not compared with the octets read: the cursor stops
    // after the date.
    return wsp_close_structured(code, b, v, out, wsp_line_writer::plain, cursor, wsp_cursor_rule::always);
}

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

// The length form of both headers: the zero-length form is passed over
// (*empty), while a Length-quote of 0 and a header of one octet are refused.
int open_warning_value(const uint8_t *at, uint16_t remaining, wsp_value_reader *v, bool *empty) {
    if (wsp_open_length_form(at, remaining, v, empty) != kWspOk) return kWspErrFail;
    if (*empty) return kWspOk;
    if (v->length == 0 || remaining == 1) return kWspErrFail;
    return kWspOk;
}

// One text field (agent, text, target) of classes 2, 3 or 4, read as a
// Text-string bounded by what is left of the length; appended after a
// single space.
int append_text_field(wsp_value_reader *v, wsp_text_builder *b) {
    if (!wsp_is_text_class(v->peek_class())) return kWspErrFail;
    char field[WSP_DEC_VALUE_AREA] = {};
    if (wsp_read_text_string(&v->p, field, v->bound(v->rest_of_length()), WSP_DEC_SCRATCH) != kWspOk)
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
    const char *name = wsp_decoded_header_name(code);
    if (name == nullptr || remaining == 0) return kWspErrFail;

    wsp_text_builder b;
    if (wsp_class_of(**cursor) == WSP_CLASS_SHORT_INT) {
        // The warning code alone, as it stands: 0x8A is "10", no 100 added.
        b.append_uint(static_cast<uint32_t>(**cursor & 0x7F));
        *cursor += 1;
        return wsp_add_header_line(out, name, b.text);
    }

    wsp_value_reader v;
    bool empty = false;
    if (open_warning_value(*cursor, remaining, &v, &empty) != kWspOk) return kWspErrFail;
    if (empty) {
        *cursor = v.p;
        return kWspOk;
    }

    // "<code> <agent> <text>".
    if (v.peek_class() != WSP_CLASS_SHORT_INT) return kWspErrFail;
    b.append_uint(static_cast<uint32_t>(*v.p & 0x7F));
    v.p += 1;
    if (append_text_field(&v, &b) != kWspOk) return kWspErrFail;
    if (append_text_field(&v, &b) != kWspOk) return kWspErrFail;
    if (v.used() != v.length) return kWspErrFail;

    // Merging writer; the cursor moves whatever it says.
    *cursor = v.p;
    return wsp_add_header_line(out, name, b.text);
}

int wsp_dec_profile_warning(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    const char *name = wsp_decoded_header_name(code);
    if (name == nullptr || remaining == 0) return kWspErrFail;

    wsp_text_builder b;
    if (wsp_class_of(**cursor) == WSP_CLASS_SHORT_INT) {
        const char *text = profile_warning_text(**cursor);
        if (text == nullptr) return kWspErrFail;
        b.append(text);
        int st = wsp_append_header_line(out, name, b.text);
        if (st == kWspOk) *cursor += 1;
        return st;
    }

    wsp_value_reader v;
    bool empty = false;
    if (open_warning_value(*cursor, remaining, &v, &empty) != kWspOk) return kWspErrFail;
    if (empty) {
        *cursor = v.p;
        return kWspOk;
    }

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
    char date[WSP_DATE_TEXT_SIZE] = {};
    int st = wsp_decode_date(&v.p, date, v.left());
    if (st != kWspOk) return st;
    if (!b.append(date)) return kWspErrFail;

    // The length is not compared with the octets read: the cursor stops
    // after the date.
    *cursor = v.p;
    return wsp_append_header_line(out, name, b.text);
}

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

// Both headers: a bare code (a Short-integer) written at once, with the
// cursor moving as `bare_rule` says, or the Value-length form: the code as
// a Short-integer, then the fields `read_fields(&v, &b)` reads (its status
// other than WSP_OK is returned as it stands), the cursor then moving
// whatever the writer says.  `append_code(octet, &b)` writes the code's
// text; false refuses it (-214).
template <typename AppendCode, typename ReadFields>
int decode_warning_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining,
                         wsp_line_writer writer, wsp_cursor_rule bare_rule, AppendCode append_code,
                         ReadFields read_fields) {
    if (wsp_decoded_header_name(code) == nullptr || remaining == 0) return kWspErrFail;

    wsp_text_builder b;
    if (wsp_class_of(**cursor) == WSP_CLASS_SHORT_INT) {
        if (!append_code(**cursor, &b)) return kWspErrFail;
        return wsp_write_value_line(code, b.text, out, writer, cursor, *cursor + 1, bare_rule);
    }

    wsp_value_reader v;
    int status = kWspOk;
    if (!open_warning_value(code, cursor, remaining, &v, &status)) return status;
    if (v.peek_class() != WSP_CLASS_SHORT_INT || !append_code(*v.p, &b)) return kWspErrFail;
    v.p += 1;
    status = read_fields(&v, &b);
    if (status != kWspOk) return status;
    return wsp_close_structured(code, b, v, out, writer, cursor, wsp_cursor_rule::always);
}

} // namespace

int wsp_dec_warning(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    // The warning code as it stands: 0x8A is "10", no 100 added.
    auto append_code = [](uint8_t octet, wsp_text_builder *b) {
        b->append_uint(static_cast<uint32_t>(octet & 0x7F));
        return true;
    };
    // "<code> <agent> <text>", using the length exactly.
    auto read_fields = [](wsp_value_reader *v, wsp_text_builder *b) {
        if (append_text_field(v, b) != kWspOk || append_text_field(v, b) != kWspOk) return kWspErrFail;
        return v->used() == v->length ? kWspOk : kWspErrFail;
    };
    // Merging writer; a bare code moves the cursor whatever it says.
    return decode_warning_value(code, cursor, out, remaining, wsp_line_writer::merging, wsp_cursor_rule::always,
                                append_code, read_fields);
}

int wsp_dec_profile_warning(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    auto append_code = [](uint8_t octet, wsp_text_builder *b) {
        const char *text = profile_warning_text(octet);
        if (text == nullptr) return false;
        b->append(text);
        return true;
    };
    // "<code>  <target> <date>": two spaces between code and target, on
    // purpose.  The length is not compared with the octets read: the cursor
    // stops after the date.
    auto read_fields = [](wsp_value_reader *v, wsp_text_builder *b) {
        b->append(" ");
        if (append_text_field(v, b) != kWspOk) return kWspErrFail;
        if (!b->append(" ")) return kWspErrFail;
        // The warning date, a Long-integer of seconds read within the
        // input; the date reader's status is handed back as it stands.
        if (v->peek_class() != WSP_CLASS_SHORT_LENGTH) return kWspErrFail;
        char date[WSP_TEXT_CAPACITY] = {};
        int status = wsp_decode_date(&v->p, date, v->left());
        if (status != kWspOk) return status;
        return b->append(date) ? kWspOk : kWspErrFail;
    };
    // Plain writer; a bare code moves the cursor only when it is written.
    return decode_warning_value(code, cursor, out, remaining, wsp_line_writer::plain, wsp_cursor_rule::on_ok,
                                append_code, read_fields);
}

// Content-Range (0x10, 0x3E) and Range (0x23): byte positions carried as
// uintvars inside a Short-length.  Content-Range gets a line of its own per
// header; Range values share one line.
#include "decode.h"
#include "primitives.h"
#include "structured_value.h"
#include "tables.h"
#include "text_builder.h"

namespace {

constexpr uint32_t kContentRangeV4 = 0x3E;
constexpr uint8_t kUnknownLength = 0x80;
constexpr uint8_t kByteRange = 0;
constexpr uint8_t kSuffixRange = 1;

// Both headers take only a Short-length that does not exceed remaining.
bool open_short_length(uint32_t code, const uint8_t **cursor, uint16_t remaining, wsp_value_reader *v) {
    int status = kWspOk;
    return wsp_open_structured(code, cursor, remaining, v, &status, wsp_length_form::short_only);
}

// A uintvar position read within `bound` octets (never past the input).
int read_position(wsp_value_reader *v, uint16_t bound, uint32_t *value) {
    if (wsp_dec_varint(&v->p, value, v->bound(bound)) != kWspOk) return kWspErrFail;
    return kWspOk;
}

} // namespace

int wsp_dec_content_range(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    wsp_value_reader v;
    if (!open_short_length(code, cursor, remaining, &v)) return kWspErrFail;

    // "bytes <first>- /<entity length>": there is no last-byte position in
    // the text, deliberately.
    wsp_text_builder b;
    b.append("bytes ");
    uint32_t first = 0;
    if (read_position(&v, v.length, &first) != kWspOk) return kWspErrFail;
    if (v.used() >= v.length) return kWspErrFail; // the entity length must follow
    b.append_uint(first);
    b.append("- /");

    if (code == kContentRangeV4 && v.has_octet() && *v.p == kUnknownLength) {
        // The newer code may give the entity length as unknown.  Only this
        // octet is passed; the length is not compared with what was read.
        b.append("*");
        v.p += 1;
    } else {
        // The entity length is bounded by the whole length again, as the
        // first position was.
        uint32_t entity = 0;
        if (read_position(&v, v.length, &entity) != kWspOk) return kWspErrFail;
        if (v.used() != v.length) return kWspErrFail;
        if (!b.append_uint(entity, WSP_TEXT_CAPACITY)) return kWspErrFail;
    }

    return wsp_close_structured(code, b, v, out, wsp_line_writer::plain, cursor, wsp_cursor_rule::on_ok);
}

int wsp_dec_range(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    wsp_value_reader v;
    if (!open_short_length(code, cursor, remaining, &v)) return kWspErrFail;
    if (v.peek_class() != WSP_CLASS_SHORT_INT) return kWspErrFail;
    uint8_t form = static_cast<uint8_t>(*v.p & 0x7F);
    v.p += 1;

    // Only the positions are written, with no unit: "0-499", "500-", "-200".
    wsp_text_builder b;
    uint16_t after_form = static_cast<uint16_t>(v.length - 1);
    uint32_t value = 0;
    if (form == kByteRange) {
        if (read_position(&v, after_form, &value) != kWspOk) return kWspErrFail;
        b.append_uint(value);
        b.append("-");
        if (!v.length_used_up()) {
            if (read_position(&v, v.rest_of_length(), &value) != kWspOk) return kWspErrFail;
            if (!b.append_uint(value)) return kWspErrFail;
        }
    } else if (form == kSuffixRange) {
        if (read_position(&v, after_form, &value) != kWspOk) return kWspErrFail;
        b.append("-");
        if (!b.append_uint(value)) return kWspErrFail;
    } else {
        return kWspErrFail;
    }
    if (v.used() != v.length) return kWspErrFail;

    return wsp_close_structured(code, b, v, out, wsp_line_writer::merging, cursor, wsp_cursor_rule::always);
}

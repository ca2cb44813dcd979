// Content-type values to text: the constrained forms (a well-known code or
// a media text) and the general form (a Value-length, the media, then
// parameters joined by ";").
//
// The output is written from its first octet; the caller supplies at least
// 151 octets (the ";" of a parameter goes in before that parameter's room
// test), and wsp_bodybuf's 152 are plenty.
#include <cstring>

#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "tables.h"

namespace {

// Codes above 81 are refused in both forms.
constexpr uint8_t kHighestMediaCode = 81;
// Rows 64..69 carry codes instead of being indexed by them; the
// constrained form looks 64..81 up there.
constexpr uint8_t kFirstCodedRow = 64;
constexpr uint8_t kLastSearchedRow = 69;
// Every media text and the text as a whole stay below this many octets.
constexpr uint16_t kContentTypeCapacity = WSP_CONTENT_TYPE_CAPACITY;
// A general-form media text that, with its NUL, is longer than this costs
// the whole value (emptied, skipped, success).
constexpr size_t kLongestMediaWithNul = WSP_CONTENT_TYPE_CAPACITY - 1;

// Constrained well-known media: 0..63 index the table, 64..81 are looked up
// by code in rows 64..69; no such row leaves the output untouched and still
// succeeds.  0x7F ("application/x-agps") is refused by the bound of 81
// before any lookup, as are all other codes above it.
int decode_constrained_code(const uint8_t **cursor, char *out) {
    const uint8_t *p = *cursor;
    uint8_t v = p[0] & 0x7F;
    if (v > kHighestMediaCode) return kWspErrFail;
    if (v < kFirstCodedRow) {
        std::strcpy(out, wsp_content_types.name(v));
    } else {
        for (uint8_t row = kFirstCodedRow; row <= kLastSearchedRow; ++row) {
            if (wsp_content_types.code(row) == v) {
                std::strcpy(out, wsp_content_types.name(row));
                break;
            }
        }
    }
    *cursor = p + 1;
    return kWspOk;
}

// The media of the general form, read within `length` octets (which all lie
// before the hard end, `left` octets from media start).
int decode_general_media(const uint8_t **cursor, char *out, uint16_t length, uint16_t left) {
    const uint8_t *p = *cursor;
    switch (wsp_class_of(p[0])) {
    case WSP_CLASS_SHORT_INT: {
        // Here the code indexes the table directly, without the code search
        // of the constrained form: 0x42 gives row 66
        // ("application/vnd.syncml.notification"), not the row carrying
        // 0x42.  Both forms are kept as they are on purpose.
        uint8_t v = p[0] & 0x7F;
        if (v > kHighestMediaCode) return kWspErrFail;
        std::strcpy(out, wsp_content_types.name(v));
        *cursor = p + 1;
        return kWspOk;
    }
    case WSP_CLASS_TEXT:
        return wsp_read_text_value(cursor, out, WSP_CLASS_TEXT, length, kContentTypeCapacity);
    case WSP_CLASS_SHORT_LENGTH: {
        // A Long-integer code, the only form that reaches codes above 0xFF;
        // rows are searched from the last one up.  The reader is bounded by
        // the value length and by the octets left.
        uint32_t code = 0;
        if (wsp_read_long_int(&p, &code, wsp_long_int_in_field(length, left)) != kWspOk) return kWspErrFail;
        int row = wsp_find_code_down(wsp_content_types, WSP_CONTENT_TYPE_ROWS - 1, code);
        if (row < 0) return kWspErrFail;
        std::strcpy(out, wsp_content_types.name(static_cast<uint16_t>(row)));
        *cursor = p;
        return kWspOk;
    }
    default:
        return kWspErrFail;
    }
}

} // namespace

extern "C" WSP_API int wsp_decode_content(const uint8_t **cursor, char *out, uint16_t avail) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr || avail == 0) return kWspErrFail;
    const uint8_t *const start = *cursor;
    uint8_t cls = wsp_class_of(start[0]);

    if (cls == WSP_CLASS_SHORT_INT) return decode_constrained_code(cursor, out);
    if (cls == WSP_CLASS_TEXT) return wsp_read_text_value(cursor, out, WSP_CLASS_TEXT, avail, kContentTypeCapacity);
    if (cls == WSP_CLASS_QUOTE || cls == WSP_CLASS_QUOTED) return kWspErrFail;

    // General form: Value-length, media, parameters.
    const uint8_t *p = start;
    uint32_t length = 0;
    if (cls == WSP_CLASS_SHORT_LENGTH) {
        length = start[0];
        p = start + 1;
        if (length == 0) {
            out[0] = 0;
            *cursor = p;
            return kWspOk;
        }
    } else {
        if (avail < 2) return kWspErrFail;
        p = start + 1;
        if (wsp_dec_varint(&p, &length, static_cast<uint16_t>(avail - 1)) != kWspOk) return kWspErrFail;
    }
    // A value that claims more octets than the caller handed in cannot be
    // decoded without reading past them: refused.
    const uint16_t left = wsp_octets_left(start, avail, p);
    if (length > left) return kWspErrFail;
    // Every media form takes at least one octet.
    if (length == 0) return kWspErrFail;
    const uint16_t value_length = static_cast<uint16_t>(length);

    const uint8_t *const media_start = p;
    int status = decode_general_media(&p, out, value_length, left);
    if (status != kWspOk) return status;
    const uint16_t consumed = wsp_octets_used(media_start, p);
    if (value_length < consumed) return kWspErrFail;

    if (std::strlen(out) + 1 > kLongestMediaWithNul) {
        out[0] = 0;
        *cursor = media_start + value_length;
        return kWspOk;
    }
    status = wsp_decode_params(&p, static_cast<uint16_t>(value_length - consumed), out, kContentTypeCapacity);
    if (status == kWspErrFail) {
        // A broken parameter run costs the text, not the header.
        out[0] = 0;
        *cursor = media_start + value_length;
        return kWspOk;
    }
    // Success leaves p at the value's end; any other failure leaves it where
    // the parameters began (the parameter decoder moves it only when the
    // whole run succeeded).
    *cursor = p;
    return status;
}

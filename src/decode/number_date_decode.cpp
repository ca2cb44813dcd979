// Headers whose value is a number or a date: Age, Content-Length,
// Max-Forwards, the date headers, Retry-After, If-Range, Content-MD5,
// Bearer-Indication and Push-Flag.  All of them write one line per header
// (plain writer), so a full output drops the header and decoding goes on.
#include <cstdio>

#include "date.h"
#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "text_builder.h"

namespace {

constexpr uint16_t kMd5Octets = 16;
constexpr uint32_t kPushFlagLimit = 8; // push-flag values run 0..7

// Bearer-Indication and Push-Flag: an Integer-value written once only.
int integer_flag(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining, bool long_allowed,
                 bool is_push_flag) {
    if (remaining == 0) return kWspErrFail;
    const uint8_t cls = wsp_class_of(**cursor);
    if (!(cls == WSP_CLASS_SHORT_INT || (long_allowed && cls == WSP_CLASS_SHORT_LENGTH))) return kWspErrFail;

    const uint8_t *p = *cursor;
    wsp_text_builder value;
    if (wsp_decode_integer_text(&p, value.text, remaining) != kWspOk) return kWspErrFail;
    value.sync();
    // These two allow one character more than the other decoders.
    if (value.len > WSP_TEXT_CAPACITY) return kWspErrFail;

    // The bearer's number is parsed as well, and then not used.
    const uint32_t number = wsp_strtou32(value.text, nullptr, 10);
    if (is_push_flag && number >= kPushFlagLimit) return kWspErrFail;

    // Only the first Bearer-Indication or Push-Flag in the output is kept:
    // the name anywhere in the text already written refuses the header.
    if (wsp_output_mentions(out, wsp_decoded_header_name(code))) return kWspErrFail;
    return wsp_write_value_line(code, value.text, out, wsp_line_writer::plain, cursor, p, wsp_cursor_rule::on_ok);
}

} // namespace

int wsp_dec_date_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (remaining == 0 || wsp_class_of(**cursor) != WSP_CLASS_SHORT_LENGTH) return kWspErrFail;
    const uint8_t *p = *cursor;
    char text[WSP_TEXT_CAPACITY] = {};
    // wsp_decode_date reads the Long-integer with one octet less than it is
    // given, so the seconds never reach past the end of the block.
    if (wsp_decode_date(&p, text, remaining) != kWspOk) return kWspErrFail;
    return wsp_write_value_line(code, text, out, wsp_line_writer::plain, cursor, p, wsp_cursor_rule::on_ok);
}

int wsp_dec_integer_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (remaining == 0) return kWspErrFail;
    const uint8_t cls = wsp_class_of(**cursor);
    if (cls != WSP_CLASS_SHORT_INT && cls != WSP_CLASS_SHORT_LENGTH) return kWspErrFail;
    const uint8_t *p = *cursor;
    wsp_text_builder value;
    if (wsp_decode_integer_text(&p, value.text, remaining) != kWspOk) return kWspErrFail;
    value.sync();
    if (value.len > WSP_TEXT_LIMIT) return kWspErrFail;
    return wsp_write_value_line(code, value.text, out, wsp_line_writer::plain, cursor, p, wsp_cursor_rule::on_ok);
}

int wsp_dec_bearer(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    return integer_flag(code, cursor, out, remaining, true, false);
}

int wsp_dec_push_flag(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    return integer_flag(code, cursor, out, remaining, false, true);
}

int wsp_dec_retry_after(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (remaining == 0) return kWspErrFail;
    const uint8_t *start = *cursor;
    const uint8_t length = start[0];
    if (wsp_class_of(length) != WSP_CLASS_SHORT_LENGTH || length > remaining) return kWspErrFail;
    // The form selector after the length must lie inside the block.
    if (remaining < 2) return kWspErrFail;

    const uint8_t *p = start + 1;
    if (wsp_class_of(*p) != WSP_CLASS_SHORT_INT) return kWspErrFail;
    uint8_t form = 0;
    if (wsp_shortint_direct_decode(&p, &form) != kWspOk) return kWspErrFail;
    wsp_header_decoder inner;
    if (form == 0)
        inner = wsp_dec_date_value; // an absolute date
    else if (form == 1)
        inner = wsp_dec_integer_value; // seconds from now
    else
        return kWspErrFail;

    // The inner decoder sees the length minus the selector octet, never
    // more than the block still holds.
    uint16_t inner_remaining = static_cast<uint16_t>(length - 1);
    const uint16_t left = wsp_octets_left(start, remaining, p);
    if (inner_remaining > left) inner_remaining = left;
    if (inner(code, &p, out, inner_remaining) != kWspOk) return kWspErrFail;

    // A length that does not match what the value used is refused after
    // the line was written; the line stays, deliberately.
    if (wsp_octets_used(start + 1, p) != length) return kWspErrFail;
    *cursor = p;
    return kWspOk;
}

int wsp_dec_if_range(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (remaining == 0) return kWspErrFail;
    const uint8_t cls = wsp_class_of(**cursor);
    // The inner decoder works on the caller's cursor, so it is moved exactly
    // as the inner decoder moved it.
    if (cls == WSP_CLASS_SHORT_LENGTH) return wsp_dec_date_value(code, cursor, out, remaining);
    if (wsp_is_text_class(cls)) return wsp_dec_text_value(code, cursor, out, remaining);
    return kWspErrFail;
}

int wsp_dec_content_md5(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    if (remaining == 0) return kWspErrFail;
    const uint8_t *start = *cursor;
    if (start[0] != kMd5Octets || start[0] > remaining) return kWspErrFail;
    // The digest's last octet must lie inside the block too.
    if (remaining < kMd5Octets + 1) return kWspErrFail;

    // Every octet carries its own "0X" and loses its leading zero: 0x0A is
    // written "0XA".  Kept as it is; readers of this line rely on it
    // (DecodeContentMd5.EveryOctetHasItsOwnPrefixAndNoLeadingZero).
    wsp_text_builder value;
    for (uint16_t i = 1; i <= kMd5Octets; ++i) {
        char octet[8];
        std::snprintf(octet, sizeof octet, "0X%X", static_cast<unsigned>(start[i]));
        if (!value.append(octet, WSP_TEXT_LIMIT)) return kWspErrFail;
    }
    return wsp_write_value_line(code, value.text, out, wsp_line_writer::plain, cursor, start + 1 + kMd5Octets,
                                wsp_cursor_rule::on_ok);
}

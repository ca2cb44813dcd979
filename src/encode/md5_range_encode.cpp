// Content-MD5, Content-Range (codes 0x10 and 0x3E) and Range.
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"

namespace {

constexpr uint8_t kDigestLength = 16;
constexpr uint8_t kFirstBytePosRange = 0; // Short-integer 0x80
constexpr uint8_t kSuffixRange = 1;       // Short-integer 0x81
constexpr uint8_t kUnknownLength = 0;     // Short-integer 0x80, "*" on the newer Content-Range

// One digest group: "0x" or "0X" and one or two hexadecimal digits; one digit
// when the next group's "0x" follows right after it.  The digits are read the
// way strtoul reads them, so a sign makes the value huge and is refused by
// the 255 test, and a character that is no digit ends the number.
bool read_digest_group(const char **pos, uint8_t *octet) {
    const char *p = *pos;
    if (p[0] != '0' || (p[1] != 'x' && p[1] != 'X')) return false;
    p += 2;
    if (p[0] == '\0') return false; // the text ends inside a group
    bool one_digit = p[1] == '\0' || (p[1] == '0' && (p[2] == 'x' || p[2] == 'X'));
    char digits[3] = {p[0], one_digit ? '\0' : p[1], '\0'};
    uint32_t value = wsp_strtou32(digits, nullptr, 16);
    if (value > 255) return false;
    *octet = static_cast<uint8_t>(value);
    *pos = p + (one_digit ? 1 : 2);
    return true;
}

// A byte position read as strtoul reads it: an empty or non-numeric text is 0.
uint32_t byte_position(const char *text) { return wsp_strtou32(text, nullptr, 10); }

// One byte range of a Range value, into the scratch that goes behind its
// Value-length; -214 when it does not fit.
int build_range(char *range, wsp_buffer *body) {
    int status;
    if (range[0] == '-') {
        // "-500": the last 500 bytes.
        status = wsp_append_short_int(kSuffixRange, body);
        if (status == kWspOk) status = wsp_append_uintvar(byte_position(range + 1), body);
    } else {
        // "500-999", "500-" or "500": the last position is sent only when
        // there is one after the "-".
        char *dash = std::strchr(range, '-');
        if (dash != nullptr) *dash = '\0';
        status = wsp_append_short_int(kFirstBytePosRange, body);
        if (status == kWspOk) status = wsp_append_uintvar(byte_position(range), body);
        if (status == kWspOk && dash != nullptr && dash[1] != '\0')
            status = wsp_append_uintvar(byte_position(dash + 1), body);
    }
    return status == kWspOk ? kWspOk : kWspErrFail;
}

} // namespace

int wsp_encode_content_md5(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    const char *pos = wsp_enc_prepare(value, false);
    // Room for the length octet and the whole digest is tested before the
    // text is read, in full width so that a length near 0xFFFF cannot wrap
    // past the test.
    if (static_cast<uint32_t>(out->length) + 1 + kDigestLength > out->size) return kWspErrFail;
    uint8_t digest[1 + kDigestLength];
    digest[0] = kDigestLength;
    for (uint8_t i = 0; i < kDigestLength; ++i) {
        if (!read_digest_group(&pos, &digest[1 + i])) return kWspErrFail;
    }
    // Exactly sixteen groups: text after the last one is refused.
    if (*pos != '\0') return kWspErrFail;
    return wsp_append_bytes(digest, sizeof digest, out) == kWspOk ? kWspOk : kWspErrFail;
}

int wsp_encode_content_range(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    char *text = wsp_enc_prepare(value, true);
    // The unit and one space; a missing "-" or "/" is refused below.
    if (std::strncmp(text, "bytes ", 6) != 0) return kWspErrFail;
    char *first = text + 6;
    char *dash = std::strchr(first, '-');
    if (dash == nullptr) return kWspErrFail;
    *dash = '\0';
    // The last byte position between "-" and "/" is not sent.
    char *slash = std::strchr(dash + 1, '/');
    if (slash == nullptr) return kWspErrFail;
    const char *entity_length = slash + 1;

    // Two uintvars of at most five octets each: always a short length.  The
    // older code has no "unknown length": its "*" is read as a number, 0.
    uint8_t part[10] = {};
    wsp_buffer body = {};
    body.data = part;
    body.size = sizeof part;
    if (wsp_append_uintvar(byte_position(first), &body) != kWspOk) return kWspErrFail;
    int status = code == WSP_HDR_CONTENT_RANGE_1_3 && std::strcmp(entity_length, "*") == 0
                     ? wsp_append_short_int(kUnknownLength, &body)
                     : wsp_append_uintvar(byte_position(entity_length), &body);
    if (status != kWspOk || body.length >= 31) return kWspErrFail;
    return wsp_append_value_block(out, &body) == kWspOk ? kWspOk : kWspErrFail;
}

int wsp_encode_range(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    wsp_value_opening opening;
    // The unit is compared as it stands before the "=": "bytes =0-1" is refused.
    char *unit = wsp_enc_open_value(value, "=", wsp_first_part::token_lowered, &opening);
    if (unit == nullptr || std::strcmp(unit, "bytes") != 0) return kWspErrFail;

    // One header per range; a value without a range is refused.
    const uint16_t scratch_size = opening.scratch_size;
    return wsp_encode_each_element(code, opening.rest, out, kWspErrFail, [scratch_size, out](char *range) {
        return wsp_append_built_value(scratch_size, out, [range](wsp_buffer *body) { return build_range(range, body); });
    });
}

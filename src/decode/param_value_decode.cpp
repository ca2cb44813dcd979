// Typed parameter values (by well-known parameter code) and Integer-values
// turned into text.
//
// Every reader here is bounded by the hard end (cursor + remaining): a
// value that needs an octet at or past it fails with -214.  `out` is a
// value area of at least 200 octets (WSP_TEXT_AREA); the text readers
// are given a capacity of 198.
#include <cstdio>
#include <cstring>

#include "date.h"
#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "tables.h"

namespace {

// Content-type rows that carry codes above 63: rows 64..69 are searched by
// code for Short-integer values 64..127.
constexpr uint16_t kFirstCodedContentRow = 64;
constexpr uint16_t kLastShortCodedContentRow = 69;

constexpr uint8_t kHighestParamCode = 0x1D;
constexpr size_t kNumberText = 16;

// v in unsigned decimal, with its NUL.
void put_uint(char *out, uint32_t v) {
    char digits[kNumberText];
    char *const end = digits + sizeof digits - 1;
    const char *first = wsp_uint_to_text(v, end);
    std::memcpy(out, first, static_cast<size_t>(end - first) + 1);
}

void append_uint(char *out, uint32_t v) { put_uint(out + std::strlen(out), v); }

// The name of a content-type row for a Short-integer value 0..127: 0..63
// index the table directly, 64..127 are looked for by code in rows 64..69
// and give nullptr (nothing written) when no row carries them.
const char *short_media_name(uint8_t v) {
    if (v < kFirstCodedContentRow) return wsp_content_types.name(v);
    for (uint16_t row = kFirstCodedContentRow; row <= kLastShortCodedContentRow; ++row) {
        if (wsp_content_types.code(row) == v) return wsp_content_types.name(row);
    }
    return nullptr;
}

// A Text-string read within the octets left (the reader counts a leading
// Quote against them too).
int read_text_string_within(const uint8_t **p, char *out, uint16_t left) {
    return wsp_read_text_string(p, out, left, WSP_TEXT_CAPACITY);
}

// Texts of the name/filename/start/comment/domain/path family: each form
// is read by its own reader.  A Quote-led text (class 2) is a Text-string
// and loses its Quote; a Quoted-string (class 3) keeps both quotation
// marks; a plain text (class 4) is taken as it stands.
int read_param_text(const uint8_t **p, char *out, uint8_t cls, uint16_t left) {
    switch (cls) {
    case WSP_CLASS_QUOTE:
        return read_text_string_within(p, out, left);
    case WSP_CLASS_QUOTED:
    case WSP_CLASS_TEXT:
        return wsp_read_text_value(p, out, cls, left, WSP_TEXT_CAPACITY);
    default:
        return kWspErrFail;
    }
}

// Q-value: "0." and two digits for octets 1..100, three or more digits for
// a uintvar of at most two octets (101..).  A q-value of one is never
// produced.  An octet 0 is a No-value, not a q-value: refused with -214
// (the parameter decoders never hand one over).
int decode_qvalue(const uint8_t **cursor, char *out, uint16_t remaining) {
    const uint8_t *p = *cursor;
    uint8_t first = p[0];
    if (first == 0) return kWspErrFail;
    std::strcpy(out, "0.");
    if (first <= 100) {
        uint32_t v = static_cast<uint32_t>(first) - 1;
        if (v <= 9) std::strcat(out, "0");
        append_uint(out, v);
        *cursor = p + 1;
        return kWspOk;
    }
    const uint8_t *q = p;
    uint32_t value = 0;
    if (wsp_dec_varint(&q, &value, remaining) != kWspOk || q - p > 2) {
        out[0] = 0;
        return kWspErrFail;
    }
    // Values above 1099 are not refused: they print more than three digits.
    uint32_t v = value - 100;
    if (v <= 9) {
        std::strcat(out, "00");
    } else if (v <= 99) {
        std::strcat(out, "0");
    }
    append_uint(out, v);
    *cursor = q;
    return kWspOk;
}

// Short-integer or Long-integer number; any other class is refused.
int read_small_or_long(const uint8_t **cursor, uint16_t remaining, uint32_t *value) {
    const uint8_t *p = *cursor;
    uint8_t cls = wsp_class_of(p[0]);
    if (cls == WSP_CLASS_SHORT_INT) {
        *value = p[0] & 0x7Fu;
        *cursor = p + 1;
        return kWspOk;
    }
    if (cls == WSP_CLASS_SHORT_LENGTH) {
        if (wsp_read_long_int(&p, value, remaining) != kWspOk) return kWspErrFail;
        *cursor = p;
        return kWspOk;
    }
    return kWspErrFail;
}

int decode_charset(const uint8_t **cursor, char *out, uint16_t remaining) {
    uint32_t mib = 0;
    const uint8_t *p = *cursor;
    if (read_small_or_long(&p, remaining, &mib) != kWspOk) return kWspErrFail;
    int row = wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, mib);
    std::strcpy(out, row >= 0 ? wsp_charsets.name(static_cast<uint16_t>(row)) : "unknown-charset");
    *cursor = p;
    return kWspOk;
}

// Level: a Short-integer holds major (high three bits) and minor (low four
// bits); minor 15 means "major only".  Anything else is a Text-string.
int decode_level(const uint8_t **cursor, char *out, uint16_t remaining) {
    const uint8_t *p = *cursor;
    if (wsp_class_of(p[0]) == WSP_CLASS_SHORT_INT) {
        uint8_t v = p[0] & 0x7F;
        put_uint(out, v >> 4);
        if ((v & 0x0F) != 15) {
            std::strcat(out, ".");
            append_uint(out, v & 0x0Fu);
        }
        *cursor = p + 1;
        return kWspOk;
    }
    return read_text_string_within(cursor, out, remaining);
}

int decode_differences(const uint8_t **cursor, char *out, uint16_t remaining) {
    const uint8_t *p = *cursor;
    uint8_t cls = wsp_class_of(p[0]);
    if (cls == WSP_CLASS_SHORT_INT) {
        uint8_t code = p[0] & 0x7F;
        if (code >= WSP_HEADER_NAME_ROWS) return kWspErrFail;
        std::strcpy(out, wsp_header_names.name(code));
        *cursor = p + 1;
        return kWspOk;
    }
    if (cls == WSP_CLASS_TEXT) return wsp_read_token_text(cursor, out, remaining, WSP_TEXT_CAPACITY);
    return kWspErrFail;
}

// Type of a multipart/related body: a Short-integer names a content type
// (nothing written for an uncoded 64..127); every other form goes to the
// class-based text reader.
int decode_related_type(const uint8_t **cursor, char *out, uint16_t remaining) {
    const uint8_t *p = *cursor;
    uint8_t cls = wsp_class_of(p[0]);
    if (cls == WSP_CLASS_SHORT_INT) {
        const char *name = short_media_name(p[0] & 0x7F);
        if (name != nullptr) std::strcpy(out, name);
        *cursor = p + 1;
        return kWspOk;
    }
    return wsp_read_text_value(cursor, out, cls, remaining, WSP_TEXT_CAPACITY);
}

int decode_max_age(const uint8_t **cursor, char *out, uint16_t remaining) {
    uint8_t cls = wsp_class_of(**cursor);
    if (cls != WSP_CLASS_SHORT_INT && cls != WSP_CLASS_SHORT_LENGTH) return kWspErrFail;
    const uint8_t *p = *cursor;
    int status = wsp_decode_integer_text(&p, out, remaining);
    if (status != kWspOk) return status;
    if (std::strlen(out) > WSP_TEXT_LIMIT) return kWspErrFail;
    *cursor = p;
    return kWspOk;
}

} // namespace

int wsp_decode_integer_text(const uint8_t **cursor, char *out, uint16_t remaining) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr || remaining == 0) return kWspErrFail;
    const uint8_t *p = *cursor;
    uint8_t first = p[0];
    uint8_t cls = wsp_class_of(first);
    if (cls == WSP_CLASS_SHORT_INT) {
        put_uint(out, first & 0x7Fu);
        *cursor = p + 1;
        return kWspOk;
    }
    if (cls != WSP_CLASS_SHORT_LENGTH) return kWspErrFail;
    if (first <= 4) {
        uint32_t v = 0;
        if (wsp_read_long_int(&p, &v, remaining) != kWspOk) return kWspErrFail;
        put_uint(out, v);
        *cursor = p;
        return kWspOk;
    }
    // 5..30 octets: too long for a number, written as hexadecimal.  Each
    // octet is printed on its own with "%X", so an octet below 0x10 loses
    // its leading zero (01 0A FF gives 0X1AFF).  Kept on purpose: readers
    // of this text expect it.
    if (first > remaining - 1) return kWspErrFail;
    std::strcpy(out, "0X");
    size_t len = 2;
    for (uint8_t i = 1; i <= first; ++i) {
        len += static_cast<size_t>(std::snprintf(out + len, 3, "%X", static_cast<unsigned>(p[i])));
    }
    *cursor = p + first + 1;
    return kWspOk;
}

int wsp_decode_param_value(const uint8_t **cursor, char *out, uint8_t code, uint16_t remaining) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr) return kWspErrFail;
    out[0] = 0;
    // No name (0x04) or past the table: nothing is read.
    if (code == 0x04 || code > kHighestParamCode) return kWspOk;
    if (remaining == 0) return kWspErrFail;
    const uint8_t *p = *cursor;
    uint8_t cls = wsp_class_of(p[0]);
    switch (code) {
    case 0x00:
        return decode_qvalue(cursor, out, remaining);
    case 0x01:
        return decode_charset(cursor, out, remaining);
    case 0x02:
        return decode_level(cursor, out, remaining);
    case 0x03:
    case 0x16:
        return wsp_decode_integer_text(cursor, out, remaining);
    case 0x05:
    case 0x06:
    case 0x0A:
    case 0x0B:
    case 0x0C:
    case 0x0D:
    case 0x0F:
        return read_param_text(cursor, out, cls, remaining);
    case 0x07:
        return decode_differences(cursor, out, remaining);
    case 0x08:
    case 0x11:
        if (cls != WSP_CLASS_SHORT_INT) return kWspErrFail;
        put_uint(out, p[0] & 0x7Fu);
        *cursor = p + 1;
        return kWspOk;
    case 0x09:
        return decode_related_type(cursor, out, remaining);
    case 0x0E:
        return decode_max_age(cursor, out, remaining);
    case 0x10:
        // Secure: one octet, whatever it holds, and no text.
        *cursor = p + 1;
        return kWspOk;
    case 0x12:
    case 0x17:
    case 0x18:
    case 0x19:
    case 0x1A:
    case 0x1B:
    case 0x1C:
    case 0x1D:
        if (cls != WSP_CLASS_TEXT) return kWspErrFail;
        return wsp_read_token_text(cursor, out, remaining, WSP_TEXT_CAPACITY);
    case 0x13:
    case 0x14:
    case 0x15:
        return wsp_decode_date(cursor, out, remaining);
    default:
        return kWspOk;
    }
}

// Parameters after a media type or another header value: one parameter
// (name, then "=" and value when a value is present), runs of them joined
// by ";" or ",", the single-parameter and q-value forms, and quoted lists
// of header field names.
//
// Every read is bounded by the run or remaining count the caller hands
// over; nothing at or past it is read.  Output: `out` is a NUL-terminated
// text that is appended to.  The run decoders append their ";" or "," when
// the text is still below `capacity`, so `out` must hold capacity + 1
// octets; the header decoders pass a 200-octet value area with capacity
// 198, the content-type decoder 151 octets with capacity 150.
#include <cstdio>
#include <cstring>

#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "tables.h"

namespace {

constexpr uint8_t kHighestParamCode = 0x1D;

uint32_t text_len(const char *s) { return static_cast<uint32_t>(std::strlen(s)); }

// Appends "=" and the value when the result keeps `out` within capacity.
int append_value(char *out, const char *value, uint16_t capacity) {
    if (text_len(out) + text_len(value) + 2 > capacity) return kWspErrFail;
    std::strcat(out, "=");
    std::strcat(out, value);
    return kWspOk;
}

// An untyped value, by the class of its first octet.  A Long-integer is
// printed signed ("%d"): 04 FF FF FF FF gives -1 here, while the same
// octets as a typed "size" print 4294967295.  Both are kept on purpose.
int decode_untyped_value(const uint8_t **cursor, char *value, uint16_t left) {
    if (left == 0) return kWspErrFail;
    const uint8_t *p = *cursor;
    int status = kWspOk;
    switch (wsp_class_of(p[0])) {
    case WSP_CLASS_SHORT_LENGTH: {
        uint32_t v = 0;
        status = wsp_read_long_int(&p, &v, left);
        if (status != kWspOk) return status;
        std::snprintf(value, WSP_TEXT_CAPACITY, "%d", static_cast<int>(static_cast<int32_t>(v)));
        break;
    }
    case WSP_CLASS_SHORT_INT:
        std::snprintf(value, WSP_TEXT_CAPACITY, "%d", p[0] & 0x7F);
        p += 1;
        break;
    case WSP_CLASS_QUOTED:
        status = wsp_read_text_value(&p, value, WSP_CLASS_QUOTED, left, WSP_TEXT_CAPACITY);
        break;
    case WSP_CLASS_TEXT:
        status = wsp_read_token_text(&p, value, left, WSP_TEXT_CAPACITY);
        break;
    default:
        return kWspErrFail;
    }
    if (status != kWspOk) return status;
    *cursor = p;
    return kWspOk;
}

// The items of a run joined by ",": while octets of the run remain,
// `read_item(p, left)` reads one from *p into the text, a "," going in
// before every item but the first without a room test of its own (the item
// before it left the text within its limit).  The first status other than
// WSP_OK is returned as it stands; *p has moved past what was read.
template <typename ReadItem> int read_comma_joined(const uint8_t **p, uint16_t run, char *out, ReadItem read_item) {
    const uint8_t *const start = *p;
    for (bool first = true; wsp_octets_used(start, *p) < run; first = false) {
        if (!first) std::strcat(out, ",");
        int status = read_item(p, wsp_octets_left(start, run, *p));
        if (status != kWspOk) return status;
    }
    return kWspOk;
}

// One name of a Cache-Control field-name list, as Token-text or as a header
// code, appended while the text stays within 197 characters (-211 past it).
int append_field_name(const uint8_t **p, uint16_t left, char *out) {
    char token[WSP_TEXT_AREA] = {};
    const char *name = nullptr;
    uint8_t cls = wsp_class_of(**p);
    if (cls == WSP_CLASS_TEXT) {
        if (wsp_read_token_text(p, token, left, WSP_TEXT_CAPACITY) != kWspOk) return kWspErrFail;
        name = token;
    } else if (cls == WSP_CLASS_SHORT_INT) {
        uint8_t code = **p & 0x7F;
        if (code >= WSP_HEADER_NAME_ROWS) return kWspErrFail;
        name = wsp_header_names.name(code);
        *p += 1;
    } else {
        return kWspErrArg;
    }
    if (std::strlen(out) + std::strlen(name) > WSP_TEXT_LIMIT) return kWspErrArg;
    std::strcat(out, name);
    return kWspOk;
}

} // namespace

int wsp_decode_param(const uint8_t **cursor, uint16_t remaining, char *out, uint16_t capacity) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr || remaining == 0) return kWspErrFail;
    const uint8_t *const start = *cursor;
    const uint8_t *p = start;
    char name_area[WSP_TEXT_AREA] = {};
    const char *name = nullptr;
    bool typed = false;
    uint8_t code = 0;

    uint8_t cls = wsp_class_of(p[0]);
    if (cls == WSP_CLASS_SHORT_INT) {
        code = p[0] & 0x7F;
        if (code > kHighestParamCode || wsp_param_names.name(code) == nullptr) return kWspErrFail;
        name = wsp_param_names.name(code);
        typed = true;
        p += 1;
    } else if (cls == WSP_CLASS_TEXT) {
        int status = wsp_read_token_text(&p, name_area, remaining, WSP_TEXT_CAPACITY);
        if (status != kWspOk) return status;
        name = name_area;
    } else {
        return kWspErrFail;
    }
    if (text_len(out) + text_len(name) + 1 >= capacity) return kWspErrFail;
    std::strcat(out, name);

    uint16_t left = wsp_octets_left(start, remaining, p);
    // 0x00 is No-value for every parameter, typed or not.  A missing octet
    // (the run ended with the name) is not a No-value: the value read below
    // then fails.
    if (left != 0 && p[0] == 0) {
        *cursor = p + 1;
        return kWspOk;
    }

    char value[WSP_TEXT_AREA] = {};
    if (typed) {
        const uint8_t *q = p;
        if (wsp_decode_param_value(&q, value, code, left) == kWspOk) {
            int status = append_value(out, value, capacity);
            if (status == kWspOk) *cursor = q;
            return status;
        }
        // A typed value that does not parse as its type is read again, from
        // the same octet, as an untyped value.
        std::memset(value, 0, sizeof value);
    }
    int status = decode_untyped_value(&p, value, left);
    if (status != kWspOk) return status;
    status = append_value(out, value, capacity);
    if (status == kWspOk) *cursor = p;
    return status;
}

// ";" before each parameter, no space.  The ";" goes in without a room test
// of its own: the parameter's room test, or the length test after it,
// refuses a text that has grown past capacity.  A text already at capacity
// is refused before its ";" is written (the status is the -214 the length
// test would give).
int wsp_decode_params(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr) return kWspErrFail;
    const uint8_t *const start = *cursor;
    const uint8_t *p = start;
    while (wsp_octets_used(start, p) < run) {
        size_t len = std::strlen(out);
        if (len >= capacity) return kWspErrFail;
        out[len] = ';';
        out[len + 1] = 0;
        int status = wsp_decode_param(&p, wsp_octets_left(start, run, p), out, capacity);
        if (std::strlen(out) > capacity || status == kWspErrFail) return kWspErrFail;
        if (status != kWspOk) return status;
    }
    *cursor = p;
    return kWspOk;
}

int wsp_decode_param_list(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr) return kWspErrFail;
    const uint8_t *p = *cursor;
    // A "," follows only a parameter that fitted: the text is below capacity.
    int status = read_comma_joined(&p, run, out, [out, capacity](const uint8_t **q, uint16_t left) {
        return wsp_decode_param(q, left, out, capacity);
    });
    if (status != kWspOk) return status;
    if (std::strlen(out) > WSP_TEXT_LIMIT) return kWspErrFail;
    *cursor = p;
    return kWspOk;
}

int wsp_decode_single_param(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr) return kWspErrFail;
    const uint8_t *p = *cursor;
    if (run != 0) {
        int status = wsp_decode_param(&p, run, out, capacity);
        if (status != kWspOk) return status;
        if (wsp_octets_used(*cursor, p) < run) return kWspErrFail;
    }
    if (std::strlen(out) > WSP_TEXT_LIMIT) return kWspErrFail;
    *cursor = p;
    return kWspOk;
}

// ";q", then "=" and the q-value unless the octet is 0 (No-value, passed
// over).  Octets left in the run afterwards give -211.  "=value" is written
// only while the text stays within 197 characters; a longer one gives the
// -214 of the final length test without being written.
int wsp_decode_qvalue_param(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr) return kWspErrFail;
    const uint8_t *p = *cursor;
    bool too_long = false;
    if (run != 0) {
        if (std::strlen(out) + 2 >= capacity) return kWspErrFail;
        std::strcat(out, ";q");
        if (p[0] != 0) {
            char q[WSP_TEXT_AREA] = {};
            int status = wsp_decode_param_value(&p, q, 0x00, run);
            if (status != kWspOk) return status;
            if (std::strlen(out) + 1 + std::strlen(q) > WSP_TEXT_LIMIT) {
                too_long = true;
            } else {
                std::strcat(out, "=");
                std::strcat(out, q);
            }
        } else {
            p += 1;
        }
        if (wsp_octets_used(*cursor, p) < run) return kWspErrArg;
    }
    if (too_long || std::strlen(out) > WSP_TEXT_LIMIT) return kWspErrFail;
    *cursor = p;
    return kWspOk;
}

// = "name,name" for Cache-Control directives that carry field names.  Every
// piece is written only while the text stays within 197 characters (plus the
// "," before a name and the closing quotation mark, so `out` must hold 199
// octets); a piece that would pass that gives the -211 of the length test.
int wsp_decode_field_name_list(const uint8_t **cursor, char *out, uint16_t run) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr) return kWspErrFail;
    if (run == 0) return kWspErrArg;
    if (std::strlen(out) + 3 > WSP_TEXT_LIMIT) return kWspErrArg;
    std::strcat(out, "= \"");
    const uint8_t *p = *cursor;
    int status = read_comma_joined(&p, run, out,
                                   [out](const uint8_t **q, uint16_t left) { return append_field_name(q, left, out); });
    if (status != kWspOk) return status;
    std::strcat(out, "\"");
    *cursor = p;
    return kWspOk;
}

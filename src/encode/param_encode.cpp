// Parameters, text to binary: one "name" or "name=value" text as a typed
// parameter (well-known code and typed value) or an untyped one (Token-text
// name and a plain value), and the typed value encoders by parameter code.
// Shared by the content-type encoder, the Accept list encoders and the
// header value encoders that carry parameters.
#include <cstdint>
#include <cstring>

#include "date.h"
#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

namespace {


constexpr int kUntyped = -1; // no admitted code: the parameter goes out untyped
constexpr int kRefused = -2; // the media type does not allow the parameter

constexpr uint8_t kParamQ = 0x00;
constexpr uint8_t kParamCharset = 0x01;
constexpr uint8_t kParamLevel = 0x02;
constexpr uint8_t kParamTypeOld = 0x03;
constexpr uint8_t kParamUnnamed = 0x04;
constexpr uint8_t kParamDifferences = 0x07;
constexpr uint8_t kParamPadding = 0x08;
constexpr uint8_t kParamTypeRelated = 0x09;
constexpr uint8_t kParamStart = 0x0A;
constexpr uint8_t kParamStartInfo = 0x0B;
constexpr uint8_t kParamSecure = 0x10;
constexpr uint8_t kParamSec = 0x11;
constexpr uint8_t kParamMac = 0x12;
constexpr uint8_t kParamStartNew = 0x19;
constexpr uint8_t kParamStartInfoNew = 0x1A;
constexpr uint8_t kParamLast = 0x1D;

// Rows 0..63 of wsp_content_types are the candidates for "type" of a
// multipart/related value.
constexpr uint16_t kRelatedTypeRows = 64;

bool is_multipart_related(const char *media) {
    return media != nullptr && wsp_strcasecmp(media, "multipart/related") == 0;
}

bool is_connectivity_wbxml(const char *media) {
    return media != nullptr && wsp_strcasecmp(media, "application/vnd.wap.connectivity-wbxml") == 0;
}

// Downward search of the parameter names the version admits, with the
// media-type rules: "start" and "start-info" belong to multipart/related,
// "sec" and "mac" to connectivity-wbxml; without a media type none of them
// is allowed.  "type" (0x09) outside multipart/related is passed over so
// that the search goes on down to the older "type" (0x03).
int find_param_code(const char *name, uint8_t limit, const char *media) {
    uint16_t rows[WSP_PARAM_ROWS_PER_NAME];
    uint16_t count = wsp_find_name_rows(wsp_param_names, name, true, rows, WSP_PARAM_ROWS_PER_NAME);
    while (count > 0) {
        const int c = rows[--count];
        if (c >= limit) continue;
        switch (c) {
        case kParamTypeRelated:
            if (is_multipart_related(media)) return c;
            continue;
        case kParamStart:
        case kParamStartInfo:
        case kParamStartNew:
        case kParamStartInfoNew:
            return is_multipart_related(media) ? c : kRefused;
        case kParamSec:
        case kParamMac:
            return is_connectivity_wbxml(media) ? c : kRefused;
        default:
            return c;
        }
    }
    return kUntyped;
}

int append_octet(uint8_t octet, wsp_buffer *out) { return wsp_append_bytes(&octet, 1, out); }

// Untyped parameter: Token-text name, then the value as an integer when it
// is all digits, else as a Quoted-string when it starts with a quotation
// mark, else as Token-text (an empty value is an empty Token-text, a lone
// 00).
int write_untyped(const char *name, const char *value, wsp_buffer *out) {
    if (!wsp_ok(wsp_tokentext_encode_buff(name, out))) return kWspErrFail;
    return wsp_ok(wsp_append_untyped_value(value, out)) ? kWspOk : kWspErrFail;
}

// q from text.  The integer part must be 0 or 1.  A q of one goes out as a
// single 00 (the decoder shows it as a bare "q").  For 0.x the trailing
// zeros of the fraction are dropped and the code is f * 10 + 1 for one
// digit, f + 1 up to 99 and f + 100 above, written as a uintvar.  A
// three-digit fraction of 99 or less ("0.005") is coded as if it had two
// digits (6, read back as 0.05): kept that way on purpose, the codes are
// what peers have always received.  Malformed q-values clear the fallback
// flag: they are errors, not a reason to send the parameter untyped.
int write_qvalue(char *text, wsp_buffer *out, uint8_t *fallback) {
    if (out->length >= out->size) {
        *fallback = 0;
        return kWspErrFail;
    }
    char *pos = text;
    char *integer_part = wsp_strtoken(&pos, ".");
    if (integer_part == nullptr) return wsp_ok(append_octet(0x00, out)) ? kWspOk : kWspErrFail;

    // Both parts are read as decimal numbers, the way the rest of the
    // library reads numbers: "00.5" is 0.5, and a part that is no number
    // counts as 0 (so "x" is a q of 0, code 1).
    uint32_t integer = wsp_strtou32(integer_part, nullptr, 10);
    char *fraction = wsp_strtoken(&pos, ".");
    if (integer == 1) {
        if (fraction != nullptr && wsp_strtou32(fraction, nullptr, 10) != 0) {
            *fallback = 0;
            return kWspErrFail;
        }
        return wsp_ok(append_octet(0x00, out)) ? kWspOk : kWspErrFail;
    }
    if (integer != 0) {
        *fallback = 0;
        return kWspErrFail;
    }

    uint32_t q = 1;
    if (fraction != nullptr) {
        size_t digits = std::strlen(fraction);
        while (digits > 0 && fraction[digits - 1] == '0') fraction[--digits] = '\0';
        uint32_t f = wsp_strtou32(fraction, nullptr, 10);
        if (f <= 99) {
            q = digits == 1 ? f * 10 + 1 : f + 1;
        } else {
            q = f + 100;
        }
    }
    if (!wsp_ok(wsp_append_uintvar(q, out))) {
        // Only one octet of room was tested above; a longer code that does
        // not fit is refused like the missing room.
        *fallback = 0;
        return kWspErrFail;
    }
    return kWspOk;
}

// "padding" and "sec": decimal, or hexadecimal after 0x / 0X; the low 8
// bits as a Short-integer (values with bit 7 set are refused there).
int write_small_number(const char *value, wsp_buffer *out) {
    bool hex = value[0] == '0' && (value[1] == 'x' || value[1] == 'X');
    uint32_t v = wsp_strtou32(value, nullptr, hex ? 16 : 10);
    return wsp_append_short_int(v & 0xFFu, out);
}

// "secure" carries no value of its own: one 00.  The octet may not be the
// last one the output can take.
int write_secure(wsp_buffer *out) {
    if (out->length >= out->size) return kWspErrFail;
    if (!wsp_ok(append_octet(0x00, out))) return kWspErrFail;
    return out->length >= out->size ? kWspErrFail : kWspOk;
}

// A value named in a table ("differences", "type" of multipart/related):
// the row of the first of `rows` rows whose name matches it in any case, as
// a Short-integer, or the value itself as Token-text.  The writer's status.
int write_row_or_token(const wsp_table &table, uint16_t rows, const char *value, wsp_buffer *out) {
    int row = wsp_find_name(table, rows, value, true);
    return row >= 0 ? wsp_append_short_int(static_cast<uint32_t>(row), out) : wsp_tokentext_encode_buff(value, out);
}

// The newer "start" and "start-info" take <id> and send it as "id".
void angle_brackets_to_quotes(char *value) {
    size_t n = std::strlen(value);
    if (n > 0 && value[0] == '<' && value[n - 1] == '>') {
        value[0] = '"';
        value[n - 1] = '"';
    }
}

} // namespace

int wsp_encode_param_value(char *value, uint8_t code, wsp_buffer *out, uint8_t *fallback) {
    uint8_t unused_flag = 0;
    if (fallback == nullptr) fallback = &unused_flag;
    *fallback = 1;
    if (value == nullptr || out == nullptr) return kWspErrFail;
    if (code > kParamLast || code == kParamUnnamed) return kWspOk;

    int status = kWspErrFail;
    switch (code) {
    case kParamQ:
        return write_qvalue(value, out, fallback);
    case kParamCharset: {
        int row = wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, value, true);
        if (row < 0) return kWspErrFail;
        status = wsp_append_integer(wsp_charsets.code(static_cast<uint16_t>(row)), out);
        break;
    }
    case kParamLevel:
        status = wsp_append_version(value, out);
        break;
    case kParamTypeOld:
    case 0x0E: // max_age
    case 0x16: // size
        status = wsp_append_integer_text(value, out);
        break;
    case 0x05: // name
    case 0x06: // filename
    case kParamStart:
    case kParamStartInfo:
    case 0x0C: // comment
    case 0x0D: // domain
    case 0x0F: // path
        status = wsp_append_text_string(value, out);
        break;
    case kParamDifferences: // a header name
    case kParamTypeRelated: // a content type among the rows a related type may name
        status = code == kParamDifferences ? write_row_or_token(wsp_header_names, WSP_HEADER_NAME_ROWS, value, out)
                                           : write_row_or_token(wsp_content_types, kRelatedTypeRows, value, out);
        break;
    case kParamPadding:
    case kParamSec:
        status = write_small_number(value, out);
        break;
    case kParamSecure:
        status = write_secure(out);
        break;
    case 0x13: // creation-date
    case 0x14: // modification-date
    case 0x15: // read-date
        // The date parser wants lower-case text; the value is handed over as
        // the caller wrote it (the header encoders lower-case their values
        // first, a content-type text is taken as it stands).
        status = wsp_parse_http_date(value, out);
        break;
    case kParamStartNew:
    case kParamStartInfoNew:
        angle_brackets_to_quotes(value);
        [[fallthrough]];
    default: // mac, name, filename, comment, domain, path (0x12, 0x17..0x1D)
        status = static_cast<uint8_t>(value[0]) == '"' ? wsp_append_quoted_string(value, out)
                                                         : wsp_tokentext_encode_buff(value, out);
        break;
    }
    return wsp_ok(status) ? kWspOk : kWspErrFail;
}

int wsp_encode_param(char *text, wsp_buffer *out, uint8_t version_index, const char *media) {
    if (version_index > 3) return kWspErrVersion;
    if (text == nullptr || out == nullptr) return kWspErrFail;
    const uint8_t limit = wsp_version_limits[version_index].param_rows;
    // The typed value's scratch is sized on the whole parameter text, taken
    // before the text is cut.
    const uint16_t scratch_size = wsp_enc_scratch_size(text);

    char *pos = text;
    char *name = wsp_enc_next_element(&pos, "=");
    if (name == nullptr) return kWspErrFail;

    int code = find_param_code(name, limit, media);
    if (code == kRefused) return kWspErrFail;

    char *value = wsp_enc_next_element(&pos, "=");
    if (value == nullptr) {
        // No-value: the code or name, then 00.
        int status = code >= 0 ? wsp_append_integer(static_cast<uint32_t>(code), out)
                               : wsp_tokentext_encode_buff(name, out);
        if (!wsp_ok(status)) return kWspErrFail;
        return wsp_ok(append_octet(0x00, out)) ? kWspOk : kWspErrFail;
    }

    if (code >= 0) {
        wsp_scratch scratch(scratch_size);
        if (!scratch.ok()) return kWspErrFail;
        wsp_buffer *encoded = scratch.get();
        uint8_t fallback = 1;
        if (wsp_ok(wsp_encode_param_value(value, static_cast<uint8_t>(code), encoded, &fallback))) {
            // A typed value that encodes to nothing leaves the parameter out.
            if (encoded->length == 0) return kWspOk;
            if (!wsp_ok(wsp_append_integer(static_cast<uint32_t>(code), out))) return kWspErrFail;
            return wsp_ok(wsp_append_bytes(encoded->data, encoded->length, out)) ? kWspOk : kWspErrFail;
        }
        // A value its type rejects is not an error: the parameter goes out
        // untyped, unless the value encoder said otherwise.
        if (fallback == 0) return kWspErrFail;
    }
    return write_untyped(name, value, out);
}

// Expect, TE and Trailer: comma lists, one header per element.
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

namespace {

// Short-integer forms of the few well-known element values.
constexpr int kExpect100Continue = 0; // 0x80
constexpr uint32_t kQParameter = 0;   // 0x80, the q parameter's code
constexpr int kTeTrailers = 1;        // 0x81
constexpr uint8_t kQCode = 0x00;           // parameter code of "q"

constexpr uint8_t kNoValue = 0x00; // the No-value octet after a bare parameter

// A value that begins with a quotation mark is sent as a Quoted-string,
// anything else as Token-text.
int append_quoted_or_token(const char *text, wsp_buffer *buf) {
    int status = static_cast<uint8_t>(text[0]) == '"' ? wsp_append_quoted_string(text, buf) : wsp_tokentext_encode_buff(text, buf);
    return status == kWspOk ? kWspOk : kWspErrFail;
}

// "name=value[;param[=value]]..." of an Expect extension, case kept, into
// the scratch.  A parameter without a value is followed by a No-value
// octet; the expression itself must have a value.
int build_expect_extension(char *element, wsp_buffer *body) {
    char *cursor = element;
    char *name = wsp_strtoken(&cursor, "=");
    if (name == nullptr) return kWspErrFail;
    wsp_trim(&name);
    if (wsp_tokentext_encode_buff(name, body) != kWspOk) return kWspErrFail;
    char *expression_value = wsp_enc_next_element(&cursor, ";");
    if (expression_value == nullptr || expression_value[0] == '\0') return kWspErrFail;
    if (append_quoted_or_token(expression_value, body) != kWspOk) return kWspErrFail;

    char *parameter;
    while ((parameter = wsp_enc_next_element(&cursor, ";")) != nullptr) {
        char *rest = parameter;
        char *param_name = wsp_strtoken(&rest, "=");
        if (param_name == nullptr) return kWspErrFail;
        wsp_trim(&param_name);
        // A parameter needs a name ("; ;" in the middle of a list has none).
        if (param_name[0] == '\0') return kWspErrFail;
        if (wsp_tokentext_encode_buff(param_name, body) != kWspOk) return kWspErrFail;
        char *param_value = rest;
        wsp_trim(&param_value);
        int status = param_value[0] == '\0' ? wsp_append_bytes(&kNoValue, 1, body)
                                            : append_quoted_or_token(param_value, body);
        if (status != kWspOk) return kWspErrFail;
    }
    return kWspOk;
}

// One TE element other than "trailers": the coding and at most one q
// parameter, always inside a Value-length.
int build_te_coding(char *element, wsp_buffer *body) {
    char *cursor = element;
    char *coding = wsp_strtoken(&cursor, ";");
    // An element of delimiters only gives an empty coding, which is the
    // first (empty) row of the coding table and so goes out as 0x80.
    if (coding == nullptr) coding = element;
    wsp_trim(&coding);
    if (wsp_append_code_or_token(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, coding, body) != kWspOk)
        return kWspErrFail;

    char *parameter = wsp_enc_next_element(&cursor, ";");
    if (parameter == nullptr) return kWspOk;
    char *rest = parameter;
    char *param_name = wsp_strtoken(&rest, "=");
    if (param_name == nullptr) return kWspErrFail;
    wsp_trim(&param_name);
    if (std::strcmp(param_name, "q") != 0) return kWspErrFail;
    if (wsp_append_short_int(kQParameter, body) != kWspOk) return kWspErrFail;
    // "q" without "=" has an empty value, which the q-value writer sends as
    // a q of one.
    char *q_value = rest;
    wsp_trim(&q_value);
    uint8_t fallback = 1;
    if (wsp_encode_param_value(q_value, kQCode, body, &fallback) != kWspOk) return kWspErrFail;
    // A coding carries one q and nothing else; more is refused rather than
    // dropped.
    if (wsp_enc_next_element(&cursor, ";") != nullptr) return kWspErrFail;
    return kWspOk;
}

bool is_refused_trailer(const char *name) {
    return std::strcmp(name, "transfer-encoding") == 0 || std::strcmp(name, "content-length") == 0 ||
           std::strcmp(name, "trailer") == 0;
}

} // namespace

int wsp_encode_expect(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    const uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *cursor = wsp_enc_prepare(value, false);
    // Only the comparison ignores case; an extension keeps the case in
    // which it was written.  An empty value has no element: nothing is
    // written and the call succeeds.
    auto known = [](const char *element) { return wsp_strcasecmp(element, "100-continue") == 0 ? kExpect100Continue : -1; };
    return wsp_encode_known_or_built_list(code, cursor, scratch_size, out, known, build_expect_extension);
}

int wsp_encode_te(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    const uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *cursor = wsp_enc_prepare(value, true);
    // An empty TE is sent as the bare code octet.
    if (cursor[0] == '\0') return wsp_write_code_octet(code, out);
    // A coding goes out inside a Value-length even without a q parameter,
    // so "chunked" is B9 01 82.
    auto known = [](const char *element) { return std::strcmp(element, "trailers") == 0 ? kTeTrailers : -1; };
    return wsp_encode_known_or_built_list(code, cursor, scratch_size, out, known, build_te_coding);
}

int wsp_encode_trailer(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, true);
    if (cursor == nullptr) return kWspErrFail;
    // An empty value has no element: nothing is written and the call
    // succeeds.
    return wsp_encode_each_element(code, cursor, out, kWspOk, [out](char *element) {
        // The message framing headers may not be announced as trailers.
        if (is_refused_trailer(element)) return kWspErrFail;
        // Upward over all 72 names: a name given twice takes its lowest code.
        return wsp_append_code_or_token(wsp_header_names, WSP_HEADER_NAME_ROWS, element, out);
    });
}

// Content-ID (a message id in angle brackets) and X-Wap-Security (a single
// well-known value).
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"

namespace {

constexpr uint8_t kQuotationMark = '"';
// The one X-Wap-Security value, sent as the Short-integer 0.
constexpr uint32_t kCloseSubordinate = 0;

} // namespace

int wsp_encode_content_id(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    // The identifier is lower-cased along with everything else; kept on
    // purpose, callers rely on it (EncodeContentId.QuotedStringOfTheLowerCasedId).
    char *text = wsp_enc_prepare(value, true);
    if (text == nullptr) return kWspErrFail;
    size_t length = std::strlen(text);
    if (length < 2 || static_cast<uint8_t>(text[0]) != '<' ||
        static_cast<uint8_t>(text[length - 1]) != '>') return kWspErrFail;
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    // A Quoted-string with the brackets inside: the opening quotation
    // mark, "<...>" and the terminating NUL.
    if (wsp_append_bytes(&kQuotationMark, 1, out) != kWspOk) return kWspErrFail;
    return wsp_append_plain_text(text, out) == kWspOk ? kWspOk : kWspErrFail;
}

int wsp_encode_security(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, true);
    if (cursor == nullptr) return kWspErrFail;
    char *first = wsp_enc_next_element(&cursor, ";");
    if (first == nullptr || std::strcmp(first, "close-subordinate") != 0) return kWspErrFail;
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    return wsp_append_short_int(kCloseSubordinate, out) == kWspOk ? kWspOk : kWspErrFail;
}

// Vary and Warning: comma lists in which every element becomes a header of
// its own.
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

namespace {

// A warn code is given as its two-digit WSP short form ("10" for 110).
constexpr size_t kWarnCodeDigits = 2;
constexpr uint32_t kHighestWarnCode = 127;

// The value of one Warning element: the warn code alone, or the code, the
// agent and the text.  Words are cut at blanks; a quoted text stays one word.
int encode_one_warning(char *element, wsp_buffer *out, uint16_t scratch_size) {
    char *cursor = element;
    char *warn_code = wsp_strtoken(&cursor, " ");
    if (warn_code == nullptr || std::strlen(warn_code) != kWarnCodeDigits) return kWspErrFail;
    // Read the way strtoul reads it: two characters that are no number
    // count as 0, a minus sign wraps and is refused by the limit.
    uint32_t number = wsp_strtou32(warn_code, nullptr, 10);
    if (number > kHighestWarnCode) return kWspErrFail;

    char *agent = wsp_strtoken(&cursor, " ");
    if (agent == nullptr) {
        return wsp_append_short_int(number, out) == kWspOk ? kWspOk : kWspErrFail;
    }
    // An agent needs its text, and nothing may follow the text: a warning
    // is never sent with part of it dropped (a trailing warn-date has no
    // place in the binary form either).
    char *text = wsp_strtoken(&cursor, " ");
    if (text == nullptr || wsp_strtoken(&cursor, " ") != nullptr) return kWspErrFail;

    return wsp_append_built_value(scratch_size, out, [number, agent, text](wsp_buffer *body) {
        bool written = wsp_append_short_int(number, body) == kWspOk && wsp_append_text_string(agent, body) == kWspOk &&
                       wsp_append_text_string(text, body) == kWspOk;
        return written ? kWspOk : kWspErrFail;
    });
}

} // namespace

int wsp_encode_vary(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, true);
    if (cursor == nullptr) return kWspErrFail;
    if (std::strcmp(cursor, "*") == 0) {
        if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
        return wsp_tokentext_encode_buff("*", out) == kWspOk ? kWspOk : kWspErrFail;
    }
    // Upward over all 72 names: a name given twice takes its lowest code.
    return wsp_encode_code_or_token_list(code, cursor, wsp_header_names, WSP_HEADER_NAME_ROWS, out);
}

int wsp_encode_warning(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    const uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *cursor = wsp_enc_prepare(value, false);
    // An empty value has no element: nothing is written and the call
    // succeeds, the header simply drops out of the block.
    return wsp_encode_each_element(code, cursor, out, kWspOk, [out, scratch_size](char *element) {
        return encode_one_warning(element, out, scratch_size);
    });
}

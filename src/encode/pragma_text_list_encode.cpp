// Pragma, and the plain text lists If-Match, If-None-Match, Upgrade and Via:
// one header per comma element.
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

namespace {

bool is_entity_tag_list(uint8_t code) { return code == WSP_HDR_IF_MATCH || code == WSP_HDR_IF_NONE_MATCH; }

} // namespace

int wsp_encode_pragma(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *cursor = wsp_enc_prepare(value, true);
    auto known = [](const char *element) {
        int row = wsp_find_name(wsp_pragma_values, 1, element, false);
        return row < 0 ? -1 : static_cast<int>(wsp_pragma_values.code(static_cast<uint16_t>(row)));
    };
    // Any other pragma is sent as one parameter inside a Value-length.  A
    // parameter that does not encode (an unknown version included) is a
    // plain failure of the header.
    auto build = [version_index](char *element, wsp_buffer *body) {
        return wsp_encode_param(element, body, version_index, nullptr);
    };
    // An empty Pragma writes nothing and is not an error.
    return wsp_encode_known_or_built_list(code, cursor, scratch_size, out, known, build);
}

int wsp_encode_text_list(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    char *cursor = wsp_enc_prepare(value, false);
    if (cursor == nullptr) return kWspErrFail;
    auto encode_value = [out](char *element) { return wsp_append_text_string(element, out); };
    auto star_first = [code](const char *element) {
        return is_entity_tag_list(code) && std::strcmp(element, "*") == 0;
    };
    // If-Match stops right after a leading "*" and ignores whatever follows;
    // If-None-Match goes on and refuses any further element.
    const wsp_after_lone_first after =
        code == WSP_HDR_IF_MATCH ? wsp_after_lone_first::ignored : wsp_after_lone_first::refused;
    return wsp_encode_each_element(code, cursor, out, kWspErrFail, encode_value, star_first, after);
}

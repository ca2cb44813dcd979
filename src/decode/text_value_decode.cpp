// Headers whose value is one text (Content-Base, ETag, From, Host, Location,
// User-Agent, Via and the rest).  Such values may be long, so the text is
// read into a 1601-octet heap area instead of the usual 200-octet stack one.
#include <cstdlib>
#include <cstring>

#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"

namespace {

// If-Match and If-None-Match given as "*" each keep a line of their own.
bool is_lone_wildcard(const char *name, const char *text) {
    return (std::strcmp(name, "if-match") == 0 || std::strcmp(name, "if-none-match") == 0) &&
           std::strcmp(text, "*") == 0;
}

} // namespace

int wsp_dec_text_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    // An empty value has no first octet to classify: refused like any value
    // that is not text.
    if (remaining == 0) return kWspErrFail;
    if (!wsp_is_text_class(wsp_class_of(**cursor))) return kWspErrFail;
    const char *name = wsp_decoded_header_name(code);
    if (name == nullptr) return kWspErrFail;

    char *text = static_cast<char *>(std::calloc(WSP_LONG_TEXT_AREA, 1));
    if (text == nullptr) return kWspErrFail;

    const uint8_t *p = *cursor;
    int status;
    if (wsp_read_text_string(&p, text, remaining, WSP_LONG_TEXT_AREA) != kWspOk) {
        // Too long, cut short or holding a forbidden octet: all the same here.
        status = kWspErrFail;
    } else if (is_lone_wildcard(name, text)) {
        status = wsp_write_value_line(code, text, out, wsp_line_writer::plain, cursor, p, wsp_cursor_rule::on_ok);
    } else {
        // The merging writer's answer is not looked at: a value that does not
        // fit is lost without stopping the block, deliberately.
        (void)wsp_write_value_line(code, text, out, wsp_line_writer::merging, cursor, p, wsp_cursor_rule::always);
        status = kWspOk;
    }
    std::free(text);
    return status;
}

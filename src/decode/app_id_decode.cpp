// X-Wap-Application-Id and Accept-Application: a push application given as
// a registered code or as text.  The first is written once per output, the
// second merges repeats into one line.
#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "tables.h"
#include "text_builder.h"

namespace {

constexpr uint8_t kAnyApplication = 0x80; // Short-integer 0
constexpr uint8_t kComma = 0x2C;
constexpr uint16_t kAppIdTextLimit = WSP_TEXT_CAPACITY;

// A registered code (Long-integer for class 0, Short-integer for class 5)
// turned into its text.  A failed Long-integer read returns the reader's
// status; a code without a row (an empty text) or a text of more than 198
// characters gives -214.
int read_app_code(const uint8_t **p, uint8_t cls, uint16_t remaining, wsp_text_builder *value) {
    uint32_t app = 0;
    if (cls == WSP_CLASS_SHORT_LENGTH) {
        int status = wsp_read_long_int(p, &app, remaining);
        if (status != kWspOk) return status;
    } else {
        uint8_t short_code = 0;
        if (wsp_shortint_direct_decode(p, &short_code) != kWspOk) return kWspErrFail;
        app = short_code;
    }
    const char *name = wsp_code_name(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, app);
    if (name == nullptr || name[0] == '\0' || !value->append(name, kAppIdTextLimit)) return kWspErrFail;
    return kWspOk;
}

// A text application id.  The reader's status is not looked at: whatever
// it stored is used, and the cursor stays where the reader left it.
void read_app_text(const uint8_t **p, uint16_t remaining, wsp_text_builder *value) {
    (void)wsp_read_text_string(p, value->text, remaining, WSP_TEXT_CAPACITY);
    value->sync();
}

// An application id as a code (Short-integer, or Long-integer behind its
// length) or as text, by the class of its first octet; any other class
// gives -214.
int read_app_value(const uint8_t **p, uint8_t cls, uint16_t remaining, wsp_text_builder *value) {
    if (cls == WSP_CLASS_SHORT_LENGTH || cls == WSP_CLASS_SHORT_INT) return read_app_code(p, cls, remaining, value);
    if (!wsp_is_text_class(cls)) return kWspErrFail;
    read_app_text(p, remaining, value);
    return kWspOk;
}

} // namespace

int wsp_dec_app_id(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    auto read = [code, cursor, out, remaining](const uint8_t **p, wsp_text_builder *value) {
        int status = read_app_value(p, wsp_class_of(**p), remaining, value);
        if (status != kWspOk) return status;
        // A comma after the value (a list of ids) or an id already in the
        // output refuses the header: only one application-id line is
        // written.  The octet after the value counts only while it lies
        // inside the block.
        const bool comma_follows = wsp_octets_left(*cursor, remaining, *p) > 0 && **p == kComma;
        if (comma_follows || wsp_output_mentions(out, wsp_decoded_header_name(code))) return kWspErrFail;
        return kWspOk;
    };
    return wsp_decode_one_item(code, cursor, out, remaining, wsp_line_writer::plain, wsp_cursor_rule::on_ok, read);
}

int wsp_dec_accept_app(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    auto read = [remaining](const uint8_t **p, wsp_text_builder *value) {
        if (**p != kAnyApplication) return read_app_value(p, wsp_class_of(**p), remaining, value);
        ++*p;
        value->append("*");
        return kWspOk;
    };
    return wsp_decode_one_item(code, cursor, out, remaining, wsp_line_writer::merging, wsp_cursor_rule::on_ok, read);
}

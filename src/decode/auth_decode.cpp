// Authorization / Proxy-Authorization (credentials) and Proxy-Authenticate /
// WWW-Authenticate (challenges).  Both carry a Value-length, then either the
// basic scheme (a Short-integer 0) with its fields, or a scheme token with a
// parameter list.  Each header gets a line of its own.
#include <cstring>

#include "decode.h"
#include "primitives.h"
#include "structured_value.h"
#include "tables.h"
#include "text_builder.h"

namespace {

constexpr uint8_t kBasicScheme = 0;

// Reads one text field (user identity, password, realm): it must start a
// Quoted-string or a text (classes 3 and 4 only when `allow_quote` is
// false, classes 2, 3 and 4 otherwise) and is read as a Text-string into
// `field` (a 200-octet area).  Every failure is -214.
int read_text_field(wsp_value_reader *v, char *field, uint16_t bound, bool allow_quote) {
    uint8_t cls = v->peek_class();
    bool ok = cls == WSP_CLASS_QUOTED || cls == WSP_CLASS_TEXT || (allow_quote && cls == WSP_CLASS_QUOTE);
    if (!ok) return kWspErrFail;
    if (wsp_read_text_string(&v->p, field, v->bound(bound), WSP_TEXT_CAPACITY) != kWspOk) return kWspErrFail;
    return kWspOk;
}

// The scheme that opens credentials and challenges: the basic scheme, a
// Short-integer 0 (*basic set, "basic" written), or a scheme token bounded
// by the length.  Another code, another class or a failed read gives -214.
int read_scheme(wsp_value_reader *v, wsp_text_builder *b, bool *basic) {
    switch (v->peek_class()) {
    case WSP_CLASS_SHORT_INT:
        if ((*v->p & 0x7F) != kBasicScheme) return kWspErrFail;
        v->p += 1;
        b->append(wsp_auth_schemes.name(0));
        *basic = true;
        return kWspOk;
    case WSP_CLASS_TEXT:
        if (wsp_read_token_text(&v->p, b->text, v->bound(v->length), WSP_TEXT_CAPACITY) != kWspOk)
            return kWspErrFail;
        b->sync();
        return kWspOk;
    default:
        return kWspErrFail;
    }
}

// Credentials and challenges open alike: the structured opening, then the
// scheme; a failure returns what the decoder returns (see
// wsp_open_structured; -214 for a scheme that does not read).  The fields
// after the scheme are `decode_rest(&v, &b, basic)`'s to read and write.
template <typename DecodeRest>
int decode_with_scheme(uint32_t code, const uint8_t **cursor, uint16_t remaining, DecodeRest decode_rest) {
    wsp_value_reader v;
    wsp_text_builder b;
    bool basic = false;
    int status = kWspOk;
    if (!wsp_open_structured(code, cursor, remaining, &v, &status)) return status;
    if (read_scheme(&v, &b, &basic) != kWspOk) return kWspErrFail;
    return decode_rest(&v, &b, basic);
}

// The basic form of credentials: "basic <user> : <password>" after the
// scheme.  The length must be used exactly.
int basic_credentials(wsp_value_reader *v, wsp_text_builder *b, uint16_t remaining) {
    char field[WSP_TEXT_AREA] = {};
    if (v->length_used_up()) return kWspErrFail;
    if (read_text_field(v, field, v->rest_of_length(), false) != kWspOk) return kWspErrFail;
    if (!b->append(" ") || !b->append(field) || !b->append(" : ")) return kWspErrFail;
    if (v->length_used_up()) return kWspErrFail;
    // The password is bounded by the header's remaining count less the
    // octets used since the length, not by the length: a password that runs
    // over the length is read whole and then fails the final count.
    // (bound() still keeps the read inside the input.)
    uint16_t password_bound = static_cast<uint16_t>(remaining - v->used());
    std::memset(field, 0, sizeof field);
    if (read_text_field(v, field, password_bound, false) != kWspOk) return kWspErrFail;
    if (!b->append(field)) return kWspErrFail;
    if (v->used() != v->length) return kWspErrFail;
    return kWspOk;
}

// The realm of a challenge, quoted: " realm = \"<realm>\"" after the scheme
// (the caller writes the scheme and the first space).
int append_realm(wsp_value_reader *v, wsp_text_builder *b) {
    char realm[WSP_TEXT_AREA] = {};
    if (read_text_field(v, realm, v->rest_of_length(), true) != kWspOk) return kWspErrFail;
    // Each piece keeps the text below 198 characters.
    if (!b->append("realm = ") || !b->append("\"") || !b->append(realm) || !b->append("\"")) return kWspErrFail;
    return kWspOk;
}

// Challenges go through the merging writer only for a header named
// "WWW-Authenticate" spelt exactly so.  Names come from the lower-case
// header table, so the plain writer is always the one used; the comparison
// is kept as it stands.
wsp_line_writer challenge_writer(uint32_t code) {
    return std::strcmp(wsp_decoded_header_name(code), "WWW-Authenticate") == 0 ? wsp_line_writer::merging
                                                                                : wsp_line_writer::plain;
}

} // namespace

int wsp_dec_credentials(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    return decode_with_scheme(code, cursor, remaining, [=](wsp_value_reader *v, wsp_text_builder *b, bool basic) {
        // After a scheme token come (when the length goes on) its
        // parameters, joined by ",".
        bool read = basic ? basic_credentials(v, b, remaining) == kWspOk
                          : wsp_append_param_run(v, b, " ", wsp_decode_param_list);
        if (!read) return kWspErrFail;
        return wsp_close_structured(code, *b, *v, out, wsp_line_writer::plain, cursor, wsp_cursor_rule::on_ok);
    });
}

int wsp_dec_challenge(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    // "<scheme> realm = \"<realm>\"", then for a scheme token
    // ",<param>,<param>..." when the length goes on.
    return decode_with_scheme(code, cursor, remaining, [=](wsp_value_reader *v, wsp_text_builder *b, bool basic) {
        if (!b->append(" ") || append_realm(v, b) != kWspOk) return kWspErrFail;
        // The basic form moves the cursor only when the line is written.
        if (basic)
            return wsp_close_structured(code, *b, *v, out, challenge_writer(code), cursor, wsp_cursor_rule::on_ok);
        // A scheme token's cursor is moved before the line is written, so
        // it stays moved whatever the writer says.
        if (!wsp_append_param_run(v, b, ",", wsp_decode_param_list)) return kWspErrFail;
        return wsp_close_structured(code, *b, *v, out, challenge_writer(code), cursor, wsp_cursor_rule::always);
    });
}

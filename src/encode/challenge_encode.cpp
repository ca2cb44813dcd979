// Proxy-Authenticate and WWW-Authenticate: an authentication scheme, its
// quoted realm and further parameters, inside a Value-length.  The two
// headers differ on purpose: Proxy-Authenticate carries exactly one
// challenge and always sends its scheme as Token-text, WWW-Authenticate may
// carry several challenges and sends a bare "basic" challenge as 0x80.
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"

namespace {

constexpr char kRealm[] = "realm";
constexpr size_t kRealmLength = sizeof kRealm - 1;

// One challenge: "scheme realm=\"...\"[, param]...".  `basic_shortcut`
// allows the 0x80 form of a "basic" challenge that has no parameters.
int encode_one_challenge(uint8_t code, char *challenge, wsp_buffer *out, uint8_t version_index,
                         uint16_t scratch_size, bool basic_shortcut) {
    char *rest = challenge;
    char *scheme = wsp_strtoken(&rest, " ");
    if (scheme == nullptr) return kWspErrFail;
    wsp_trim(&scheme);
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;

    wsp_scratch scratch(scratch_size);
    if (!scratch.ok()) return kWspErrFail;
    wsp_buffer *value = scratch.get();

    // The scheme is compared as written: only a lower-case "basic" takes
    // the short form, and only when no comma (outside quotes) announces
    // further parameters.
    int status;
    if (basic_shortcut && std::strcmp(scheme, "basic") == 0 && wsp_find_unquoted(rest, ",") == nullptr) {
        status = wsp_append_short_int(0, value);
    } else {
        status = wsp_tokentext_encode_buff(scheme, value);
    }
    if (status != kWspOk) return kWspErrFail;

    // The first parameter must be the realm, its value in double quotes;
    // the quotes are not sent.
    char *realm = wsp_strtoken(&rest, ",");
    if (realm == nullptr) return kWspErrFail;
    char *realm_name = wsp_strtoken(&realm, "=");
    if (realm_name == nullptr) return kWspErrFail;
    wsp_trim(&realm_name);
    wsp_str_lower(realm_name);
    if (std::strcmp(realm_name, kRealm) != 0) return kWspErrFail;
    char *realm_value = realm;
    wsp_trim(&realm_value);
    size_t length = std::strlen(realm_value);
    if (length < 2 || static_cast<uint8_t>(realm_value[0]) != '"' ||
        static_cast<uint8_t>(realm_value[length - 1]) != '"') return kWspErrFail;
    realm_value[length - 1] = '\0';
    if (wsp_append_text_string(realm_value + 1, value) != kWspOk) return kWspErrFail;

    // Everything after the realm goes through the parameter encoder,
    // lower-cased, with the version's parameter codes.
    if (wsp_append_param_list(rest, ",", true, value, version_index) != kWspOk) return kWspErrFail;
    return wsp_append_value_block(out, value) == kWspOk ? kWspOk : kWspErrFail;
}

// Makes the challenges of a WWW-Authenticate value separable at ";": the
// first "realm" is left alone, and for every later one the nearest comma in
// front of it becomes ";".  The search for "realm" is case-sensitive and
// skips quoted text; the backward search for the comma is plain.  A later
// realm with no comma anywhere in front of it (a value such as
// "a realm=\"x\" b realm=\"y\"") cannot be split: -214, and the search
// never steps in front of the value.
int separate_challenges(char *text) {
    const char *found = wsp_find_unquoted(text, kRealm);
    if (found == nullptr) return kWspOk;
    while ((found = wsp_find_unquoted(found + kRealmLength, kRealm)) != nullptr) {
        char *comma = text + (found - text);
        while (comma > text && static_cast<uint8_t>(*comma) != ',') --comma;
        if (static_cast<uint8_t>(*comma) != ',') return kWspErrFail;
        *comma = ';';
    }
    return kWspOk;
}

} // namespace

int wsp_encode_challenge(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    const uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *text = wsp_enc_prepare(value, false);
    if (code != WSP_HDR_WWW_AUTHENTICATE) {
        // Proxy-Authenticate: the whole value is one challenge.
        return encode_one_challenge(code, text, out, version_index, scratch_size, false);
    }
    if (separate_challenges(text) != kWspOk) return kWspErrFail;
    uint16_t written = 0;
    char *challenge;
    while ((challenge = wsp_enc_next_element(&text, ";")) != nullptr) {
        if (encode_one_challenge(code, challenge, out, version_index, scratch_size, true) != kWspOk) {
            return kWspErrFail;
        }
        ++written;
    }
    // A value with no challenge in it is an argument error, not a failed
    // write.
    return written != 0 ? kWspOk : kWspErrArg;
}

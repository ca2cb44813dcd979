// Cookie: "$Version=v" followed by cookies "name=value", each optionally
// followed by its "$Path=path" attribute.
//
// Layout written: code octet, Value-length, the version (Version-value),
// then for every cookie a uintvar length and the cookie: name and value as
// Text-strings and, when it has one, its path as a Text-string.
//
// How the text is cut:
//  - ";" and "," (outside double quotes) separate items alike: the text is
//    cut at ";" first and every piece again at ",", so "a=b, $Path=/x; c=d"
//    and "a=b; $Path=/x, c=d" give the same cookies;
//  - an item whose name is "$path" (any case) is the path of the cookie
//    just before it; a "$path" with no cookie before it, or a second one for
//    the same cookie, is refused (-214);
//  - other "$" attributes ("$domain" and the like) have no place in this
//    encoding and are passed over;
//  - every other item is a new cookie; its name and value are trimmed, kept
//    in their case, and must not be empty (-214); its value is everything
//    after the first "=".
// A cookie is assembled in a fixed 198-byte area; one that does not fit
// there is refused (-214).
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "text_limits.h"

namespace {

constexpr uint16_t kCookieArea = WSP_TEXT_CAPACITY;

// Walks the items of a cookie list: pieces cut at ";", each cut again at
// ",".  Both cuts follow the tokenizer's rules (quoted sections stay whole,
// empty fields are skipped).
struct cookie_items {
    char *pieces;
    char *piece;
};

char *next_item(cookie_items *items) {
    for (;;) {
        if (items->piece != nullptr) {
            char *item = wsp_enc_next_element(&items->piece, ",");
            if (item != nullptr) return item;
            items->piece = nullptr;
        }
        items->piece = wsp_strtoken(&items->pieces, ";");
        if (items->piece == nullptr) return nullptr;
    }
}

// Splits "name=value" at its first "=" (outside quotes) into trimmed parts;
// value is empty when there is no "=".
void split_item(char *item, char **name, char **value) {
    char *rest = item;
    char *head = wsp_strtoken(&rest, "=");
    *name = head != nullptr ? head : item;
    wsp_trim(name);
    *value = rest;
    wsp_trim(value);
}

// One cookie under assembly in its fixed area.
struct cookie_area {
    uint8_t bytes[kCookieArea];
    wsp_buffer buf;
    bool has_path;
};

void start_cookie(cookie_area *cookie) {
    std::memset(cookie->bytes, 0, sizeof cookie->bytes);
    std::memset(&cookie->buf, 0, sizeof cookie->buf);
    cookie->buf.data = cookie->bytes;
    cookie->buf.size = kCookieArea;
    cookie->has_path = false;
}

// Moves a finished cookie into the value: its length as a uintvar, then
// its bytes.
int flush_cookie(const cookie_area *cookie, wsp_buffer *value) {
    if (wsp_append_uintvar(cookie->buf.length, value) != kWspOk) return kWspErrFail;
    return wsp_append_bytes(cookie->bytes, cookie->buf.length, value);
}

// The cookies after the version, into the value.
int append_cookies(cookie_items *items, wsp_buffer *value) {
    cookie_area cookie;
    start_cookie(&cookie);
    bool pending = false;
    char *item;
    while ((item = next_item(items)) != nullptr) {
        char *name;
        char *text;
        split_item(item, &name, &text);
        if (static_cast<uint8_t>(name[0]) == '$') {
            if (wsp_strcasecmp(name, "$path") != 0) continue;
            if (!pending || cookie.has_path || text[0] == '\0') return kWspErrFail;
            if (wsp_append_text_string(text, &cookie.buf) != kWspOk) return kWspErrFail;
            cookie.has_path = true;
            continue;
        }
        if (name[0] == '\0' || text[0] == '\0') return kWspErrFail;
        if (pending && flush_cookie(&cookie, value) != kWspOk) return kWspErrFail;
        start_cookie(&cookie);
        pending = true;
        if (wsp_append_text_string(name, &cookie.buf) != kWspOk ||
            wsp_append_text_string(text, &cookie.buf) != kWspOk) {
            return kWspErrFail;
        }
    }
    if (pending && flush_cookie(&cookie, value) != kWspOk) return kWspErrFail;
    return kWspOk;
}

} // namespace

int wsp_encode_cookie(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    const uint16_t scratch_size = wsp_enc_scratch_size(value);
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    char *text = wsp_enc_prepare(value, false);

    // "$version" must come first; only its name is lower-cased.
    char *rest = text;
    char *attribute = wsp_strtoken(&rest, "=");
    if (attribute == nullptr) return kWspErrFail;
    wsp_trim(&attribute);
    wsp_str_lower(attribute);
    if (std::strcmp(attribute, "$version") != 0) return kWspErrFail;

    // The version runs up to the first ";" or ","; an empty one is refused
    // (the tokenizer would otherwise skip ahead and take the next cookie
    // for the version).
    char *start = rest;
    wsp_trim(&start);
    const uint8_t first = static_cast<uint8_t>(start[0]);
    if (first == '\0' || first == ';' || first == ',') return kWspErrFail;
    cookie_items items = {start, nullptr};
    char *version = next_item(&items);
    if (version == nullptr) return kWspErrFail;

    wsp_scratch scratch(scratch_size);
    if (!scratch.ok()) return kWspErrFail;
    if (wsp_append_version(version, scratch.get()) != kWspOk) return kWspErrFail;
    if (append_cookies(&items, scratch.get()) != kWspOk) return kWspErrFail;
    return wsp_append_value_block(out, scratch.get()) == kWspOk ? kWspOk : kWspErrFail;
}

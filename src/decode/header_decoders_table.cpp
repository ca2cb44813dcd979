// The value decoder of every well-known header code, indexed by the code.
// An empty entry makes the block decoder skip the header: Content-Type
// (never written out of a header block), Profile, Profile-Diff, Expect, TE,
// the second Accept-Charset and Accept-Encoding codes, and Cookie.
#include <cstdint>

#include "decode.h"

constexpr wsp_header_decoder wsp_header_decoders[WSP_HEADER_NAME_ROWS] = {
    wsp_dec_accept,           // 0x00 accept
    wsp_dec_accept,           // 0x01 accept-charset
    wsp_dec_listed_value,     // 0x02 accept-encoding
    wsp_dec_accept,           // 0x03 accept-language
    wsp_dec_listed_value,     // 0x04 accept-ranges
    wsp_dec_integer_value,    // 0x05 age
    wsp_dec_allow,            // 0x06 allow
    wsp_dec_credentials,      // 0x07 authorization
    wsp_dec_cache_control,    // 0x08 cache-control
    wsp_dec_listed_value,     // 0x09 connection
    wsp_dec_text_value,       // 0x0A content-base
    wsp_dec_listed_value,     // 0x0B content-encoding
    wsp_dec_listed_value,     // 0x0C content-language
    wsp_dec_integer_value,    // 0x0D content-length
    wsp_dec_text_value,       // 0x0E content-location
    wsp_dec_content_md5,      // 0x0F content-md5
    wsp_dec_content_range,    // 0x10 content-range
    nullptr,                  // 0x11 content-type
    wsp_dec_date_value,       // 0x12 date
    wsp_dec_text_value,       // 0x13 etag
    wsp_dec_date_value,       // 0x14 expires
    wsp_dec_text_value,       // 0x15 from
    wsp_dec_text_value,       // 0x16 host
    wsp_dec_date_value,       // 0x17 if-modified-since
    wsp_dec_text_value,       // 0x18 if-match
    wsp_dec_text_value,       // 0x19 if-none-match
    wsp_dec_if_range,         // 0x1A if-range
    wsp_dec_date_value,       // 0x1B if-unmodified-since
    wsp_dec_text_value,       // 0x1C location
    wsp_dec_date_value,       // 0x1D last-modified
    wsp_dec_integer_value,    // 0x1E max-forwards
    wsp_dec_pragma,           // 0x1F pragma
    wsp_dec_challenge,        // 0x20 proxy-authenticate
    wsp_dec_credentials,      // 0x21 proxy-authorization
    wsp_dec_listed_value,     // 0x22 public
    wsp_dec_range,            // 0x23 range
    wsp_dec_text_value,       // 0x24 referer
    wsp_dec_retry_after,      // 0x25 retry-after
    wsp_dec_text_value,       // 0x26 server
    wsp_dec_listed_value,     // 0x27 transfer-encoding
    wsp_dec_text_value,       // 0x28 upgrade
    wsp_dec_text_value,       // 0x29 user-agent
    wsp_dec_vary,             // 0x2A vary
    wsp_dec_text_value,       // 0x2B via
    wsp_dec_warning,          // 0x2C warning
    wsp_dec_challenge,        // 0x2D www-authenticate
    wsp_dec_disposition,      // 0x2E content-disposition
    wsp_dec_app_id,           // 0x2F x-wap-application-id
    wsp_dec_text_value,       // 0x30 x-wap-content-uri
    wsp_dec_text_value,       // 0x31 x-wap-initiator-uri
    wsp_dec_accept_app,       // 0x32 accept-application
    wsp_dec_bearer,           // 0x33 bearer-indication
    wsp_dec_push_flag,        // 0x34 push-flag
    nullptr,                  // 0x35 profile
    nullptr,                  // 0x36 profile_diff
    wsp_dec_profile_warning,  // 0x37 profile-warning
    nullptr,                  // 0x38 expect
    nullptr,                  // 0x39 te
    wsp_dec_trailer,          // 0x3A trailer
    nullptr,                  // 0x3B accept-charset
    nullptr,                  // 0x3C accept-encoding
    wsp_dec_cache_control,    // 0x3D cache-control
    wsp_dec_content_range,    // 0x3E content-range
    wsp_dec_date_value,       // 0x3F x-wap-tod
    wsp_dec_content_id,       // 0x40 content-id
    wsp_dec_set_cookie,       // 0x41 set-cookie
    nullptr,                  // 0x42 cookie
    wsp_dec_encoding_version, // 0x43 encoding-version
    wsp_dec_profile_warning,  // 0x44 profile-warning
    wsp_dec_disposition,      // 0x45 content-disposition
    wsp_dec_security,         // 0x46 x-wap-security
    wsp_dec_cache_control,    // 0x47 cache-control
};

namespace {

// The codes whose headers are skipped.  (Whether an entry holding a function
// is non-null cannot be asked at compile time in sanitizer builds, so the
// other 64 are checked by the table's unit test.)
constexpr uint32_t kEmptyCodes[] = {
    WSP_HDR_CONTENT_TYPE, WSP_HDR_PROFILE,     WSP_HDR_PROFILE_DIFF, WSP_HDR_EXPECT, WSP_HDR_TE,
    WSP_HDR_ACCEPT_CHARSET_1_3, WSP_HDR_ACCEPT_ENCODING_1_3, WSP_HDR_COOKIE,
};

constexpr bool empty_codes_are_empty() {
    for (uint32_t code : kEmptyCodes)
        if (wsp_header_decoders[code] != nullptr) return false;
    return true;
}

} // namespace

// One entry per header code, eight of them empty; the last entry is set, so
// the initializer did not come up short.
static_assert(sizeof kEmptyCodes / sizeof kEmptyCodes[0] == 8);
static_assert(empty_codes_are_empty());
static_assert(wsp_header_decoders[0x00] == wsp_dec_accept);
static_assert(wsp_header_decoders[0x1A] == wsp_dec_if_range);
static_assert(wsp_header_decoders[0x2F] == wsp_dec_app_id);
static_assert(wsp_header_decoders[0x3A] == wsp_dec_trailer);
static_assert(wsp_header_decoders[0x46] == wsp_dec_security);
static_assert(wsp_header_decoders[WSP_HDR_CACHE_CONTROL_1_4] == wsp_dec_cache_control);

// The dispatch table of the header block encoder: one entry per well-known
// header code 0x00..0x47.  An empty entry is never called: the block encoder
// handles Accept (0x00) itself and refuses Content-Type (0x11); the profile
// headers and Set-Cookie have no value encoder at all.
#include "date.h"
#include "encode.h"

constexpr wsp_header_encoder wsp_header_encoders[WSP_HEADER_NAME_ROWS] = {
    nullptr,                     // 0x00 accept (the block encoder calls the Accept encoder)
    wsp_encode_qlist_entry,      // 0x01 accept-charset
    wsp_encode_accept_encoding,  // 0x02 accept-encoding
    wsp_encode_qlist_entry,      // 0x03 accept-language
    wsp_encode_token_list,       // 0x04 accept-ranges
    wsp_encode_number_or_text,   // 0x05 age
    wsp_encode_allow,            // 0x06 allow
    wsp_encode_credentials,      // 0x07 authorization
    wsp_encode_cache_control,    // 0x08 cache-control
    wsp_encode_token_list,       // 0x09 connection
    wsp_encode_number_or_text,   // 0x0A content-base
    wsp_encode_token_list,       // 0x0B content-encoding
    wsp_encode_token_list,       // 0x0C content-language
    wsp_encode_number_or_text,   // 0x0D content-length
    wsp_encode_number_or_text,   // 0x0E content-location
    wsp_encode_content_md5,      // 0x0F content-md5
    wsp_encode_content_range,    // 0x10 content-range
    nullptr,                     // 0x11 content-type (never part of a header block)
    wsp_encode_date_header,      // 0x12 date
    wsp_encode_number_or_text,   // 0x13 etag
    wsp_encode_date_header,      // 0x14 expires
    wsp_encode_number_or_text,   // 0x15 from
    wsp_encode_number_or_text,   // 0x16 host
    wsp_encode_date_header,      // 0x17 if-modified-since
    wsp_encode_text_list,        // 0x18 if-match
    wsp_encode_text_list,        // 0x19 if-none-match
    wsp_encode_if_range,         // 0x1A if-range
    wsp_encode_date_header,      // 0x1B if-unmodified-since
    wsp_encode_number_or_text,   // 0x1C location
    wsp_encode_date_header,      // 0x1D last-modified
    wsp_encode_number_or_text,   // 0x1E max-forwards
    wsp_encode_pragma,           // 0x1F pragma
    wsp_encode_challenge,        // 0x20 proxy-authenticate
    wsp_encode_credentials,      // 0x21 proxy-authorization
    wsp_encode_token_list,       // 0x22 public
    wsp_encode_range,            // 0x23 range
    wsp_encode_number_or_text,   // 0x24 referer
    wsp_encode_retry_after,      // 0x25 retry-after
    wsp_encode_number_or_text,   // 0x26 server
    wsp_encode_token_list,       // 0x27 transfer-encoding
    wsp_encode_text_list,        // 0x28 upgrade
    wsp_encode_number_or_text,   // 0x29 user-agent
    wsp_encode_vary,             // 0x2A vary
    wsp_encode_text_list,        // 0x2B via
    wsp_encode_warning,          // 0x2C warning
    wsp_encode_challenge,        // 0x2D www-authenticate
    wsp_encode_disposition,      // 0x2E content-disposition
    wsp_encode_app_id,           // 0x2F x-wap-application-id
    wsp_encode_number_or_text,   // 0x30 x-wap-content-uri
    wsp_encode_number_or_text,   // 0x31 x-wap-initiator-uri
    wsp_encode_accept_app,       // 0x32 accept-application
    wsp_encode_bearer_push_flag, // 0x33 bearer-indication
    wsp_encode_bearer_push_flag, // 0x34 push-flag
    nullptr,                     // 0x35 profile
    nullptr,                     // 0x36 profile_diff
    nullptr,                     // 0x37 profile-warning
    wsp_encode_expect,           // 0x38 expect
    wsp_encode_te,               // 0x39 te
    wsp_encode_trailer,          // 0x3A trailer
    wsp_encode_qlist_entry,      // 0x3B accept-charset
    // The newer Accept-Encoding code goes through the q-list encoder (with
    // its "*" and q support), not through the older code's token encoder.
    wsp_encode_qlist_entry,      // 0x3C accept-encoding
    wsp_encode_cache_control,    // 0x3D cache-control
    wsp_encode_content_range,    // 0x3E content-range
    wsp_encode_date_header,      // 0x3F x-wap-tod
    wsp_encode_content_id,       // 0x40 content-id
    nullptr,                     // 0x41 set-cookie
    wsp_encode_cookie,           // 0x42 cookie
    wsp_encode_encoding_version, // 0x43 encoding-version
    nullptr,                     // 0x44 profile-warning
    wsp_encode_disposition,      // 0x45 content-disposition
    wsp_encode_security,         // 0x46 x-wap-security
    wsp_encode_cache_control,    // 0x47 cache-control
};

// Anchors: one wrong line above shifts every later code, so a few codes
// across the table are pinned here.
static_assert(wsp_header_encoders[0x00] == nullptr);
static_assert(wsp_header_encoders[0x01] == wsp_encode_qlist_entry);
static_assert(wsp_header_encoders[0x05] == wsp_encode_number_or_text);
static_assert(wsp_header_encoders[0x0F] == wsp_encode_content_md5);
static_assert(wsp_header_encoders[0x11] == nullptr);
static_assert(wsp_header_encoders[0x12] == wsp_encode_date_header);
static_assert(wsp_header_encoders[0x1A] == wsp_encode_if_range);
static_assert(wsp_header_encoders[0x1F] == wsp_encode_pragma);
static_assert(wsp_header_encoders[0x23] == wsp_encode_range);
static_assert(wsp_header_encoders[0x2D] == wsp_encode_challenge);
static_assert(wsp_header_encoders[0x2E] == wsp_encode_disposition);
static_assert(wsp_header_encoders[0x34] == wsp_encode_bearer_push_flag);
static_assert(wsp_header_encoders[0x35] == nullptr && wsp_header_encoders[0x36] == nullptr &&
              wsp_header_encoders[0x37] == nullptr);
static_assert(wsp_header_encoders[0x38] == wsp_encode_expect);
static_assert(wsp_header_encoders[0x3C] == wsp_encode_qlist_entry);
static_assert(wsp_header_encoders[0x3F] == wsp_encode_date_header);
static_assert(wsp_header_encoders[0x41] == nullptr && wsp_header_encoders[0x44] == nullptr);
static_assert(wsp_header_encoders[0x42] == wsp_encode_cookie);
static_assert(wsp_header_encoders[0x43] == wsp_encode_encoding_version);
static_assert(wsp_header_encoders[0x46] == wsp_encode_security);
static_assert(wsp_header_encoders[0x47] == wsp_encode_cache_control);

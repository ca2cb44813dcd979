// Header field names and well-known parameter names.
#include "table_checks.h"
#include "tables.h"

// Index = header code.  Several names occur twice: the newer encoding
// versions gave "accept-charset", "accept-encoding", "cache-control",
// "content-range", "profile-warning" and "content-disposition" a second,
// higher code.  The encoder scans downward from the version's limit, so the
// highest code the version admits wins; the decoder indexes directly.
// "profile_diff" keeps its underscore on purpose.
constexpr const char *const kHeaderNames[WSP_HEADER_NAME_ROWS] = {
    "accept",              // 0x00
    "accept-charset",      // 0x01
    "accept-encoding",     // 0x02
    "accept-language",     // 0x03
    "accept-ranges",       // 0x04
    "age",                 // 0x05
    "allow",               // 0x06
    "authorization",       // 0x07
    "cache-control",       // 0x08
    "connection",          // 0x09
    "content-base",        // 0x0A
    "content-encoding",    // 0x0B
    "content-language",    // 0x0C
    "content-length",      // 0x0D
    "content-location",    // 0x0E
    "content-md5",         // 0x0F
    "content-range",       // 0x10
    "content-type",        // 0x11
    "date",                // 0x12
    "etag",                // 0x13
    "expires",             // 0x14
    "from",                // 0x15
    "host",                // 0x16
    "if-modified-since",   // 0x17
    "if-match",            // 0x18
    "if-none-match",       // 0x19
    "if-range",            // 0x1A
    "if-unmodified-since", // 0x1B
    "location",            // 0x1C
    "last-modified",       // 0x1D
    "max-forwards",        // 0x1E
    "pragma",              // 0x1F
    "proxy-authenticate",  // 0x20
    "proxy-authorization", // 0x21
    "public",              // 0x22
    "range",               // 0x23
    "referer",             // 0x24
    "retry-after",         // 0x25
    "server",              // 0x26
    "transfer-encoding",   // 0x27
    "upgrade",             // 0x28
    "user-agent",          // 0x29
    "vary",                // 0x2A
    "via",                 // 0x2B
    "warning",             // 0x2C
    "www-authenticate",    // 0x2D
    "content-disposition", // 0x2E
    "x-wap-application-id",// 0x2F
    "x-wap-content-uri",   // 0x30
    "x-wap-initiator-uri", // 0x31
    "accept-application",  // 0x32
    "bearer-indication",   // 0x33
    "push-flag",           // 0x34
    "profile",             // 0x35
    "profile_diff",        // 0x36
    "profile-warning",     // 0x37
    "expect",              // 0x38
    "te",                  // 0x39
    "trailer",             // 0x3A
    "accept-charset",      // 0x3B
    "accept-encoding",     // 0x3C
    "cache-control",       // 0x3D
    "content-range",       // 0x3E
    "x-wap-tod",           // 0x3F
    "content-id",          // 0x40
    "set-cookie",          // 0x41
    "cookie",              // 0x42
    "encoding-version",    // 0x43
    "profile-warning",     // 0x44
    "content-disposition", // 0x45
    "x-wap-security",      // 0x46
    "cache-control",       // 0x47
};

// Index = well-known parameter code.  Code 0x04 has no name on purpose
// (a decoder that meets it fails).  The old codes 0x0B and 0x0E keep their
// underscores ("start_info", "max_age") while the newer 0x1A is spelled
// "start-info": both spellings are kept as they are.
constexpr const char *const kParamNames[WSP_PARAM_NAME_ROWS] = {
    "q",                 // 0x00
    "charset",           // 0x01
    "level",             // 0x02
    "type",              // 0x03
    nullptr,             // 0x04
    "name",              // 0x05
    "filename",          // 0x06
    "differences",       // 0x07
    "padding",           // 0x08
    "type",              // 0x09
    "start",             // 0x0A
    "start_info",        // 0x0B
    "comment",           // 0x0C
    "domain",            // 0x0D
    "max_age",           // 0x0E
    "path",              // 0x0F
    "secure",            // 0x10
    "sec",               // 0x11
    "mac",               // 0x12
    "creation-date",     // 0x13
    "modification-date",   // 0x14
    "read-date",         // 0x15
    "size",              // 0x16
    "name",              // 0x17
    "filename",          // 0x18
    "start",             // 0x19
    "start-info",        // 0x1A
    "comment",           // 0x1B
    "domain",            // 0x1C
    "path",              // 0x1D
};

static_assert(wsp_all_names_set(kHeaderNames, WSP_HEADER_NAME_ROWS));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_ACCEPT], "accept"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_CACHE_CONTROL], "cache-control"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_CONTENT_DISPOSITION], "content-disposition"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_PROFILE_DIFF], "profile_diff"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_ACCEPT_CHARSET_1_3], "accept-charset"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_CONTENT_DISPOSITION_1_4], "content-disposition"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_CACHE_CONTROL_1_4], "cache-control"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_CONTENT_TYPE], "content-type"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_X_WAP_APPLICATION_ID], "x-wap-application-id"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_ACCEPT_ENCODING_1_3], "accept-encoding"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_CACHE_CONTROL_1_3], "cache-control"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_CONTENT_RANGE_1_3], "content-range"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_COOKIE], "cookie"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_ENCODING_VERSION], "encoding-version"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_PROFILE_WARNING_1_4], "profile-warning"));
static_assert(wsp_same_text(kHeaderNames[WSP_HDR_X_WAP_SECURITY], "x-wap-security"));
static_assert(wsp_same_text(kParamNames[0x04], nullptr));
static_assert(wsp_same_text(kParamNames[0x0B], "start_info"));
static_assert(wsp_same_text(kParamNames[0x0E], "max_age"));
static_assert(wsp_same_text(kParamNames[0x1A], "start-info"));
static_assert(wsp_same_text(kParamNames[0x1D], "path"));

constexpr auto kHeaderRows = wsp_list_rows(kHeaderNames);
constexpr auto kParamRows = wsp_list_rows(kParamNames);
WSP_DEFINE_TABLE(wsp_header_names, kHeaderRows);
WSP_DEFINE_TABLE(wsp_param_names, kParamRows);
static_assert(wsp_most_rows_per_name(kParamRows, true) == WSP_PARAM_ROWS_PER_NAME);

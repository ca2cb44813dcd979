// The small value tables: push application ids, status codes, codings,
// the single-value tables, cache directives, dispositions, methods, range
// units and content codings.
#include "table_checks.h"
#include "tables.h"

// Code 0x06 has no row; the vendor ids carry 16-bit codes.
constexpr wsp_code_entry wsp_push_app_ids[WSP_PUSH_APP_ID_ROWS] = {
    {"x-wap-application:*", 0x00},
    {"x-wap-application:push.sia", 0x01},
    {"x-wap-application:wml.ua", 0x02},
    {"x-wap-application:wta.ua", 0x03},
    {"x-wap-application:mms.ua", 0x04},
    {"x-wap-application:push.syncml", 0x05},
    {"x-wap-application:syncml.dm", 0x07},
    {"x-wap-application:drm.ua", 0x08},
    {"x-wap-application:emn.ua", 0x09},
    {"x-oma-application:ulp.ua", 0x10},
    {"x-vantrell:location.ua", 0x8005},
    {"x-oma-vantrell:screen3.ua", 0x901E},
    {"x-microsoft:drm.meter", 0x9034},
    {"x-microsoft:drm.license", 0x9035},
};

// Only these seven statuses are known.
constexpr wsp_code_entry wsp_status_codes[WSP_STATUS_CODE_ROWS] = {
    {"100", 0x10}, {"101", 0x11}, {"102", 0x12}, {"200", 0x20},
    {"201", 0x21}, {"202", 0x22}, {"203", 0x23},
};

// Index = code.  The two leading empty names are real rows: an empty token
// matches index 0, and callers rely on that.
constexpr const char *const wsp_transfer_codings[WSP_TRANSFER_CODING_ROWS] = {
    "", "", "chunked", "identity", "gzip", "compress", "deflate",
};

constexpr const char *const wsp_expect_values[1] = {"100-continue"};
constexpr const char *const wsp_auth_schemes[1] = {"basic"};
constexpr wsp_code_entry wsp_te_values[1] = {{"chunked", 0}};
constexpr wsp_code_entry wsp_pragma_values[1] = {{"no-cache", 0}};
constexpr wsp_code_entry wsp_connection_values[1] = {{"close", 0}};

// Index = directive code.
constexpr const char *const wsp_cache_directives[WSP_CACHE_DIRECTIVE_ROWS] = {
    "no-cache",         // 0
    "no-store",         // 1
    "max-age",          // 2
    "max-stale",        // 3
    "min-fresh",        // 4
    "only-if-cached",   // 5
    "public",           // 6
    "private",          // 7
    "no-transform",     // 8
    "must-revalidate",  // 9
    "proxy-revalidate", // 10
    "s-maxage",         // 11
};

// Index = disposition code.
constexpr const char *const wsp_dispositions[WSP_DISPOSITION_ROWS] = {
    "form-data", "attachment", "inline",
};

// The only upper-case names of all the tables.
constexpr wsp_code_entry wsp_methods[WSP_METHOD_ROWS] = {
    {"GET", 0x40}, {"OPTIONS", 0x41}, {"HEAD", 0x42}, {"DELETE", 0x43},
    {"TRACE", 0x44}, {"POST", 0x60}, {"PUT", 0x61},
};

constexpr wsp_code_entry wsp_range_units[WSP_RANGE_UNIT_ROWS] = {
    {"none", 0}, {"bytes", 1},
};

constexpr wsp_code_entry wsp_content_codings[WSP_CONTENT_CODING_ROWS] = {
    {"gzip", 0}, {"compress", 1}, {"deflate", 2},
};

static_assert(wsp_all_rows_named(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS));
static_assert(wsp_row_is(wsp_push_app_ids[0], "x-wap-application:*", 0x00));
static_assert(wsp_row_is(wsp_push_app_ids[6], "x-wap-application:syncml.dm", 0x07));
static_assert(wsp_row_is(wsp_push_app_ids[13], "x-microsoft:drm.license", 0x9035));
static_assert(wsp_row_is(wsp_status_codes[0], "100", 0x10));
static_assert(wsp_row_is(wsp_status_codes[6], "203", 0x23));
static_assert(wsp_same_text(wsp_transfer_codings[0], ""));
static_assert(wsp_same_text(wsp_transfer_codings[1], ""));
static_assert(wsp_same_text(wsp_transfer_codings[6], "deflate"));
static_assert(wsp_all_names_set(wsp_cache_directives, WSP_CACHE_DIRECTIVE_ROWS));
static_assert(wsp_same_text(wsp_cache_directives[11], "s-maxage"));
static_assert(wsp_same_text(wsp_dispositions[2], "inline"));
static_assert(wsp_row_is(wsp_methods[0], "GET", 0x40));
static_assert(wsp_row_is(wsp_methods[6], "PUT", 0x61));
static_assert(wsp_row_is(wsp_range_units[1], "bytes", 1));
static_assert(wsp_row_is(wsp_content_codings[2], "deflate", 2));

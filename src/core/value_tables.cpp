// The small value tables: push application ids, status codes, codings,
// the single-value tables, cache directives, dispositions, methods, range
// units and content codings.
#include "table_checks.h"
#include "tables.h"

// Code 0x06 has no row; the vendor ids carry 16-bit codes.
constexpr wsp_row_text kPushAppIds[WSP_PUSH_APP_ID_ROWS] = {
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
constexpr wsp_row_text kStatusCodes[WSP_STATUS_CODE_ROWS] = {
    {"100", 0x10}, {"101", 0x11}, {"102", 0x12}, {"200", 0x20},
    {"201", 0x21}, {"202", 0x22}, {"203", 0x23},
};

// Index = code.  The two leading empty names are real rows: an empty token
// matches index 0, and callers rely on that (TableRules.TransferCodingEmptyTokenIsIndexZero,
// EncodeTe.EmptyCodingIsTheFirstRow).
constexpr const char *const kTransferCodings[WSP_TRANSFER_CODING_ROWS] = {
    "", "", "chunked", "identity", "gzip", "compress", "deflate",
};

constexpr const char *const kExpectValues[1] = {"100-continue"};
constexpr const char *const kAuthSchemes[1] = {"basic"};
constexpr wsp_row_text kTeValues[1] = {{"chunked", 0}};
constexpr wsp_row_text kPragmaValues[1] = {{"no-cache", 0}};
constexpr wsp_row_text kConnectionValues[1] = {{"close", 0}};

// Index = directive code.
constexpr const char *const kCacheDirectives[WSP_CACHE_DIRECTIVE_ROWS] = {
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
constexpr const char *const kDispositions[WSP_DISPOSITION_ROWS] = {
    "form-data", "attachment", "inline",
};

// The only upper-case names of all the tables.
constexpr wsp_row_text kMethods[WSP_METHOD_ROWS] = {
    {"GET", 0x40}, {"OPTIONS", 0x41}, {"HEAD", 0x42}, {"DELETE", 0x43},
    {"TRACE", 0x44}, {"POST", 0x60}, {"PUT", 0x61},
};

constexpr wsp_row_text kRangeUnits[WSP_RANGE_UNIT_ROWS] = {
    {"none", 0}, {"bytes", 1},
};

constexpr wsp_row_text kContentCodings[WSP_CONTENT_CODING_ROWS] = {
    {"gzip", 0}, {"compress", 1}, {"deflate", 2},
};

static_assert(wsp_all_rows_named(kPushAppIds, WSP_PUSH_APP_ID_ROWS));
static_assert(wsp_row_is(kPushAppIds[0], "x-wap-application:*", 0x00));
static_assert(wsp_row_is(kPushAppIds[6], "x-wap-application:syncml.dm", 0x07));
static_assert(wsp_row_is(kPushAppIds[13], "x-microsoft:drm.license", 0x9035));
static_assert(wsp_row_is(kStatusCodes[0], "100", 0x10));
static_assert(wsp_row_is(kStatusCodes[6], "203", 0x23));
static_assert(wsp_same_text(kTransferCodings[0], ""));
static_assert(wsp_same_text(kTransferCodings[1], ""));
static_assert(wsp_same_text(kTransferCodings[6], "deflate"));
static_assert(wsp_all_names_set(kCacheDirectives, WSP_CACHE_DIRECTIVE_ROWS));
// The directive codes the codecs name stand at their rows.
static_assert(wsp_same_text(kCacheDirectives[WSP_CACHE_NO_CACHE], "no-cache") &&
              wsp_same_text(kCacheDirectives[WSP_CACHE_MAX_AGE], "max-age") &&
              wsp_same_text(kCacheDirectives[WSP_CACHE_MIN_FRESH], "min-fresh") &&
              wsp_same_text(kCacheDirectives[WSP_CACHE_PRIVATE], "private") &&
              wsp_same_text(kCacheDirectives[WSP_CACHE_PROXY_REVALIDATE], "proxy-revalidate") &&
              wsp_same_text(kCacheDirectives[WSP_CACHE_S_MAXAGE], "s-maxage"));
static_assert(wsp_same_text(kDispositions[2], "inline"));
static_assert(wsp_row_is(kMethods[0], "GET", 0x40));
static_assert(wsp_row_is(kMethods[6], "PUT", 0x61));
static_assert(wsp_row_is(kRangeUnits[1], "bytes", 1));
static_assert(wsp_row_is(kContentCodings[2], "deflate", 2));

constexpr auto kTransferCodingsRows = wsp_list_rows(kTransferCodings);
WSP_DEFINE_TABLE(wsp_transfer_codings, kTransferCodingsRows);
constexpr auto kExpectValuesRows = wsp_list_rows(kExpectValues);
WSP_DEFINE_TABLE(wsp_expect_values, kExpectValuesRows);
constexpr auto kAuthSchemesRows = wsp_list_rows(kAuthSchemes);
WSP_DEFINE_TABLE(wsp_auth_schemes, kAuthSchemesRows);
constexpr auto kCacheDirectivesRows = wsp_list_rows(kCacheDirectives);
WSP_DEFINE_TABLE(wsp_cache_directives, kCacheDirectivesRows);
constexpr auto kDispositionsRows = wsp_list_rows(kDispositions);
WSP_DEFINE_TABLE(wsp_dispositions, kDispositionsRows);
constexpr auto kPushAppIdsRows = wsp_code_rows(kPushAppIds);
WSP_DEFINE_TABLE(wsp_push_app_ids, kPushAppIdsRows);
constexpr auto kStatusCodesRows = wsp_code_rows(kStatusCodes);
WSP_DEFINE_TABLE(wsp_status_codes, kStatusCodesRows);
constexpr auto kTeValuesRows = wsp_code_rows(kTeValues);
WSP_DEFINE_TABLE(wsp_te_values, kTeValuesRows);
constexpr auto kPragmaValuesRows = wsp_code_rows(kPragmaValues);
WSP_DEFINE_TABLE(wsp_pragma_values, kPragmaValuesRows);
constexpr auto kConnectionValuesRows = wsp_code_rows(kConnectionValues);
WSP_DEFINE_TABLE(wsp_connection_values, kConnectionValuesRows);
constexpr auto kMethodsRows = wsp_code_rows(kMethods);
WSP_DEFINE_TABLE(wsp_methods, kMethodsRows);
constexpr auto kRangeUnitsRows = wsp_code_rows(kRangeUnits);
WSP_DEFINE_TABLE(wsp_range_units, kRangeUnitsRows);
constexpr auto kContentCodingsRows = wsp_code_rows(kContentCodings);
WSP_DEFINE_TABLE(wsp_content_codings, kContentCodingsRows);

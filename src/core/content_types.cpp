// Media types and their well-known content-type codes.
#include "table_checks.h"
#include "tables.h"

// Row index equals code for rows 0..63; the last 18 rows carry the codes
// written next to them.  Codes 0x40, 0x41, 0x45..0x49 and 0x4C..0x7E have no
// row.  Row 0x38 is spelled "hashed-certifiate", one "c" short: both
// directions match on exactly this text, so it stays as it is.
constexpr wsp_row_text kContentTypes[WSP_CONTENT_TYPE_ROWS] = {
    {"*/*", 0x00},
    {"text/*", 0x01},
    {"text/html", 0x02},
    {"text/plain", 0x03},
    {"text/x-hdml", 0x04},
    {"text/x-ttml", 0x05},
    {"text/x-vcalendar", 0x06},
    {"text/x-vcard", 0x07},
    {"text/vnd.wap.wml", 0x08},
    {"text/vnd.wap.wmlscript", 0x09},
    {"application/vnd.wap.catc", 0x0A},
    {"multipart/*", 0x0B},
    {"multipart/mixed", 0x0C},
    {"multipart/form-data", 0x0D},
    {"multipart/byteranges", 0x0E},
    {"multipart/alternative", 0x0F},
    {"application/*", 0x10},
    {"application/java-vm", 0x11},
    {"application/x-www-form-urlencoded", 0x12},
    {"application/x-hdmlc", 0x13},
    {"application/vnd.wap.wmlc", 0x14},
    {"application/vnd.wap.wmlscriptc", 0x15},
    {"application/vnd.wap.wsic", 0x16},
    {"application/vnd.wap.uaprof", 0x17},
    {"application/vnd.wap.wtls-ca-certificate", 0x18},
    {"application/vnd.wap.wtls-user-certificate", 0x19},
    {"application/x-x509-ca-cert", 0x1A},
    {"application/x-x509-user-cert", 0x1B},
    {"image/*", 0x1C},
    {"image/gif", 0x1D},
    {"image/jpeg", 0x1E},
    {"image/tiff", 0x1F},
    {"image/png", 0x20},
    {"image/vnd.wap.wbmp", 0x21},
    {"application/vnd.wap.multipart.*", 0x22},
    {"application/vnd.wap.multipart.mixed", 0x23},
    {"application/vnd.wap.multipart.form-data", 0x24},
    {"application/vnd.wap.multipart.byteranges", 0x25},
    {"application/vnd.wap.multipart.alternative", 0x26},
    {"application/xml", 0x27},
    {"text/xml", 0x28},
    {"application/vnd.wap.wbxml", 0x29},
    {"application/x-x968-cross-cert", 0x2A},
    {"application/x-x968-ca-cert", 0x2B},
    {"application/x-x968-user-cert", 0x2C},
    {"text/vnd.wap.si", 0x2D},
    {"application/vnd.wap.sic", 0x2E},
    {"text/vnd.wap.sl", 0x2F},
    {"application/vnd.wap.slc", 0x30},
    {"text/vnd.wap.co", 0x31},
    {"application/vnd.wap.coc", 0x32},
    {"application/vnd.wap.multipart.related", 0x33},
    {"application/vnd.wap.sia", 0x34},
    {"text/vnd.wap.connectivity-xml", 0x35},
    {"application/vnd.wap.connectivity-wbxml", 0x36},
    {"application/pkcs7-mime", 0x37},
    {"application/vnd.wap.hashed-certifiate", 0x38},
    {"application/vnd.wap.signed-certificate", 0x39},
    {"application/vnd.wap.cert-response", 0x3A},
    {"application/xhtml+xml", 0x3B},
    {"application/wml+xml", 0x3C},
    {"text/css", 0x3D},
    {"application/vnd.wap.mms-message", 0x3E},
    {"application/vnd.wap.rollover-certificate", 0x3F},
    {"application/vnd.syncml.dm+wbxml", 0x42},
    {"application/vnd.syncml.dm+xml", 0x43},
    {"application/vnd.syncml.notification", 0x44},
    {"application/vnd.oma.drm.rights+xml", 0x4A},
    {"application/vnd.oma.drm.rights+wbxml", 0x4B},
    {"application/x-agps", 0x7F},
    {"application/vnd.uplanet.cacheop-wbxml", 0x201},
    {"application/vnd.uplanet.signal", 0x202},
    {"application/vnd.uplanet.alert-wbxml", 0x203},
    {"application/vnd.uplanet.list-wbxml", 0x204},
    {"application/vnd.uplanet.listcmd-wbxml", 0x205},
    {"application/vnd.uplanet.channel-wbxml", 0x206},
    {"application/vnd.uplanet.provisioning-status-uri", 0x207},
    {"x-wap.multipart/vnd.uplanet.header-set", 0x208},
    {"application/vnd.uplanet.bearer-choice-wbxml", 0x209},
    {"application/vnd.phonecom.mmc-wbxml", 0x20A},
    {"application/vnd.nokia.syncset+wbxml", 0x20B},
    {"application/vnd.omaloc-supl-init", 0x312},
};

static_assert(wsp_all_rows_named(kContentTypes, WSP_CONTENT_TYPE_ROWS));
static_assert(wsp_codes_run(kContentTypes, 0, 64, 0x00));
static_assert(wsp_codes_run(kContentTypes, 64, 3, 0x42));
static_assert(wsp_codes_run(kContentTypes, 67, 2, 0x4A));
static_assert(wsp_codes_run(kContentTypes, 70, 11, 0x201));
static_assert(wsp_row_is(kContentTypes[0], "*/*", 0x00));
static_assert(wsp_row_is(kContentTypes[0x2D], "text/vnd.wap.si", 0x2D));
static_assert(wsp_row_is(kContentTypes[0x34], "application/vnd.wap.sia", 0x34));
static_assert(wsp_row_is(kContentTypes[0x38], "application/vnd.wap.hashed-certifiate", 0x38));
static_assert(wsp_row_is(kContentTypes[63], "application/vnd.wap.rollover-certificate", 0x3F));
static_assert(wsp_row_is(kContentTypes[64], "application/vnd.syncml.dm+wbxml", 0x42));
static_assert(wsp_row_is(kContentTypes[69], "application/x-agps", 0x7F));
static_assert(wsp_row_is(kContentTypes[81], "application/vnd.omaloc-supl-init", 0x312));

constexpr auto kContentTypeRows = wsp_code_rows(kContentTypes);
WSP_DEFINE_TABLE(wsp_content_types, kContentTypeRows);

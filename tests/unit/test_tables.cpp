// The assigned-number tables: row counts, first and last rows, duplicate
// rows, odd spellings kept on purpose, and codes that have no row.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tables.h"

namespace {

std::string name_of(const char *p) { return p == nullptr ? std::string("<null>") : std::string(p); }

// Number of rows carrying this low-16-bit code.
int rows_with_code(const wsp_code_entry *t, uint16_t rows, uint32_t code) {
    int n = 0;
    for (uint16_t i = 0; i < rows; ++i)
        if (static_cast<uint16_t>(t[i].code) == static_cast<uint16_t>(code)) ++n;
    return n;
}

int rows_with_name(const wsp_code_entry *t, uint16_t rows, const char *name) {
    int n = 0;
    for (uint16_t i = 0; i < rows; ++i)
        if (t[i].name != nullptr && std::strcmp(t[i].name, name) == 0) ++n;
    return n;
}

int list_rows_with_name(const char *const *l, uint16_t rows, const char *name) {
    int n = 0;
    for (uint16_t i = 0; i < rows; ++i)
        if (l[i] != nullptr && std::strcmp(l[i], name) == 0) ++n;
    return n;
}

} // namespace

// ---- row counts ----

TEST(Tables, RowCounts) {
    EXPECT_EQ(WSP_HEADER_NAME_ROWS, 72);
    EXPECT_EQ(WSP_PARAM_NAME_ROWS, 30);
    EXPECT_EQ(WSP_VERSION_ROWS, 4);
    EXPECT_EQ(WSP_PUSH_APP_ID_ROWS, 14);
    EXPECT_EQ(WSP_STATUS_CODE_ROWS, 7);
    EXPECT_EQ(WSP_TRANSFER_CODING_ROWS, 7);
    EXPECT_EQ(WSP_CACHE_DIRECTIVE_ROWS, 12);
    EXPECT_EQ(WSP_DISPOSITION_ROWS, 3);
    EXPECT_EQ(WSP_METHOD_ROWS, 7);
    EXPECT_EQ(WSP_RANGE_UNIT_ROWS, 2);
    EXPECT_EQ(WSP_CONTENT_CODING_ROWS, 3);
    EXPECT_EQ(WSP_CONTENT_TYPE_ROWS, 82);
    EXPECT_EQ(WSP_LANGUAGE_ROWS, 139);
    EXPECT_EQ(WSP_LANGUAGE_NAME_ROWS, 143);
    EXPECT_EQ(WSP_LANGUAGE_RUN_ROWS, 282);
    EXPECT_EQ(WSP_CHARSET_ROWS, 244);
}

// A table whose last row is named is filled to its declared row count.
TEST(Tables, EveryRowOfTheCodeTablesIsNamed) {
    struct T {
        const wsp_code_entry *t;
        uint16_t rows;
    };
    const T all[] = {
        {wsp_content_type_versions, WSP_VERSION_ROWS}, {wsp_header_versions, WSP_VERSION_ROWS},
        {wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS},      {wsp_status_codes, WSP_STATUS_CODE_ROWS},
        {wsp_te_values, 1},                            {wsp_pragma_values, 1},
        {wsp_connection_values, 1},                    {wsp_methods, WSP_METHOD_ROWS},
        {wsp_range_units, WSP_RANGE_UNIT_ROWS},        {wsp_content_codings, WSP_CONTENT_CODING_ROWS},
        {wsp_content_types, WSP_CONTENT_TYPE_ROWS},    {wsp_charsets, WSP_CHARSET_ROWS},
        {wsp_language_run, WSP_LANGUAGE_RUN_ROWS},
    };
    for (const T &x : all)
        for (uint16_t i = 0; i < x.rows; ++i) {
            ASSERT_NE(x.t[i].name, nullptr) << "row " << i;
            EXPECT_GT(std::strlen(x.t[i].name), 0u) << "row " << i;
        }
}

// ---- header names ----

TEST(Tables, HeaderNamesFirstLastAndAnchors) {
    EXPECT_EQ(name_of(wsp_header_names[0x00]), "accept");
    EXPECT_EQ(name_of(wsp_header_names[0x11]), "content-type");
    EXPECT_EQ(name_of(wsp_header_names[0x12]), "date");
    EXPECT_EQ(name_of(wsp_header_names[0x1A]), "if-range");
    EXPECT_EQ(name_of(wsp_header_names[0x2E]), "content-disposition");
    EXPECT_EQ(name_of(wsp_header_names[0x2F]), "x-wap-application-id");
    EXPECT_EQ(name_of(wsp_header_names[0x37]), "profile-warning");
    EXPECT_EQ(name_of(wsp_header_names[0x3F]), "x-wap-tod");
    EXPECT_EQ(name_of(wsp_header_names[0x43]), "encoding-version");
    EXPECT_EQ(name_of(wsp_header_names[0x46]), "x-wap-security");
    EXPECT_EQ(name_of(wsp_header_names[0x47]), "cache-control");
    for (int i = 0; i < WSP_HEADER_NAME_ROWS; ++i) EXPECT_NE(wsp_header_names[i], nullptr) << i;
}

TEST(Tables, HeaderNameUnderscoreSpellingKept) {
    EXPECT_EQ(name_of(wsp_header_names[0x36]), "profile_diff");
    EXPECT_EQ(list_rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "profile-diff"), 0);
}

TEST(Tables, HeaderNamesDuplicatedAtTheirNewerCodes) {
    EXPECT_EQ(name_of(wsp_header_names[0x01]), "accept-charset");
    EXPECT_EQ(name_of(wsp_header_names[0x3B]), "accept-charset");
    EXPECT_EQ(name_of(wsp_header_names[0x02]), "accept-encoding");
    EXPECT_EQ(name_of(wsp_header_names[0x3C]), "accept-encoding");
    EXPECT_EQ(name_of(wsp_header_names[0x08]), "cache-control");
    EXPECT_EQ(name_of(wsp_header_names[0x3D]), "cache-control");
    EXPECT_EQ(name_of(wsp_header_names[0x10]), "content-range");
    EXPECT_EQ(name_of(wsp_header_names[0x3E]), "content-range");
    EXPECT_EQ(name_of(wsp_header_names[0x44]), "profile-warning");
    EXPECT_EQ(name_of(wsp_header_names[0x45]), "content-disposition");
    EXPECT_EQ(list_rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "cache-control"), 3);
    EXPECT_EQ(list_rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "accept-charset"), 2);
    EXPECT_EQ(list_rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "content-disposition"), 2);
    EXPECT_EQ(list_rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "profile-warning"), 2);
    EXPECT_EQ(list_rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "accept"), 1);
}

// ---- parameter names ----

TEST(Tables, ParamNamesFirstLastAndNullAt04) {
    EXPECT_EQ(name_of(wsp_param_names[0x00]), "q");
    EXPECT_EQ(name_of(wsp_param_names[0x03]), "type");
    EXPECT_EQ(wsp_param_names[0x04], nullptr);
    EXPECT_EQ(name_of(wsp_param_names[0x05]), "name");
    EXPECT_EQ(name_of(wsp_param_names[0x07]), "differences");
    EXPECT_EQ(name_of(wsp_param_names[0x09]), "type");
    EXPECT_EQ(name_of(wsp_param_names[0x11]), "sec");
    EXPECT_EQ(name_of(wsp_param_names[0x12]), "mac");
    EXPECT_EQ(name_of(wsp_param_names[0x16]), "size");
    EXPECT_EQ(name_of(wsp_param_names[0x1D]), "path");
    for (int i = 0; i < WSP_PARAM_NAME_ROWS; ++i)
        if (i != 4) EXPECT_NE(wsp_param_names[i], nullptr) << i;
}

TEST(Tables, ParamNamesKeepOldUnderscoresAndNewHyphen) {
    EXPECT_EQ(name_of(wsp_param_names[0x0B]), "start_info");
    EXPECT_EQ(name_of(wsp_param_names[0x0E]), "max_age");
    EXPECT_EQ(name_of(wsp_param_names[0x1A]), "start-info");
}

TEST(Tables, ParamNamesDuplicated) {
    EXPECT_EQ(name_of(wsp_param_names[0x17]), "name");
    EXPECT_EQ(name_of(wsp_param_names[0x18]), "filename");
    EXPECT_EQ(name_of(wsp_param_names[0x19]), "start");
    EXPECT_EQ(name_of(wsp_param_names[0x1B]), "comment");
    EXPECT_EQ(name_of(wsp_param_names[0x1C]), "domain");
    EXPECT_EQ(list_rows_with_name(wsp_param_names, WSP_PARAM_NAME_ROWS, "type"), 2);
    EXPECT_EQ(list_rows_with_name(wsp_param_names, WSP_PARAM_NAME_ROWS, "path"), 2);
}

// ---- version limits ----

TEST(Tables, ContentTypeVersionLimitsAreRowCounts) {
    const char *v[] = {"1.1", "1.2", "1.3", "1.4"};
    const uint32_t n[] = {46, 53, 55, 82};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(name_of(wsp_content_type_versions[i].name), v[i]);
        EXPECT_EQ(wsp_content_type_versions[i].code, n[i]);
    }
    // The last admitted row under each version.
    EXPECT_EQ(wsp_content_types[46 - 1].code, 0x2Du);
    EXPECT_EQ(wsp_content_types[53 - 1].code, 0x34u);
    EXPECT_EQ(wsp_content_types[55 - 1].code, 0x36u);
    EXPECT_EQ(wsp_content_types[82 - 1].code, 0x312u);
}

TEST(Tables, HeaderVersionLimits) {
    const char *v[] = {"1.1", "1.2", "1.3", "1.4"};
    const uint32_t n[] = {0x2F, 0x38, 0x44, 0x48};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(name_of(wsp_header_versions[i].name), v[i]);
        EXPECT_EQ(wsp_header_versions[i].code, n[i]);
    }
}

// ---- push application ids ----

TEST(Tables, PushAppIds) {
    EXPECT_EQ(name_of(wsp_push_app_ids[0].name), "x-wap-application:*");
    EXPECT_EQ(wsp_push_app_ids[0].code, 0x00u);
    EXPECT_EQ(name_of(wsp_push_app_ids[5].name), "x-wap-application:push.syncml");
    EXPECT_EQ(wsp_push_app_ids[5].code, 0x05u);
    EXPECT_EQ(name_of(wsp_push_app_ids[6].name), "x-wap-application:syncml.dm");
    EXPECT_EQ(wsp_push_app_ids[6].code, 0x07u);
    EXPECT_EQ(name_of(wsp_push_app_ids[9].name), "x-oma-application:ulp.ua");
    EXPECT_EQ(wsp_push_app_ids[9].code, 0x10u);
    EXPECT_EQ(name_of(wsp_push_app_ids[10].name), "x-vantrell:location.ua");
    EXPECT_EQ(wsp_push_app_ids[10].code, 0x8005u);
    EXPECT_EQ(name_of(wsp_push_app_ids[11].name), "x-oma-vantrell:screen3.ua");
    EXPECT_EQ(wsp_push_app_ids[11].code, 0x901Eu);
    EXPECT_EQ(name_of(wsp_push_app_ids[12].name), "x-microsoft:drm.meter");
    EXPECT_EQ(wsp_push_app_ids[12].code, 0x9034u);
    EXPECT_EQ(name_of(wsp_push_app_ids[13].name), "x-microsoft:drm.license");
    EXPECT_EQ(wsp_push_app_ids[13].code, 0x9035u);
}

TEST(Tables, PushAppIdCode06HasNoRow) {
    EXPECT_EQ(rows_with_code(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, 0x06), 0);
    EXPECT_EQ(rows_with_code(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, 0x0A), 0);
}

// ---- small value tables ----

TEST(Tables, StatusCodes) {
    const char *t[] = {"100", "101", "102", "200", "201", "202", "203"};
    const uint32_t c[] = {0x10, 0x11, 0x12, 0x20, 0x21, 0x22, 0x23};
    for (int i = 0; i < WSP_STATUS_CODE_ROWS; ++i) {
        EXPECT_EQ(name_of(wsp_status_codes[i].name), t[i]);
        EXPECT_EQ(wsp_status_codes[i].code, c[i]);
    }
    EXPECT_EQ(rows_with_name(wsp_status_codes, WSP_STATUS_CODE_ROWS, "404"), 0);
    EXPECT_EQ(rows_with_code(wsp_status_codes, WSP_STATUS_CODE_ROWS, 0x13), 0);
}

TEST(Tables, TransferCodingsStartWithTwoEmptyRows) {
    const char *t[] = {"", "", "chunked", "identity", "gzip", "compress", "deflate"};
    for (int i = 0; i < WSP_TRANSFER_CODING_ROWS; ++i) {
        ASSERT_NE(wsp_transfer_codings[i], nullptr) << i;
        EXPECT_EQ(name_of(wsp_transfer_codings[i]), t[i]);
    }
}

TEST(Tables, SingleValueTables) {
    EXPECT_EQ(name_of(wsp_expect_values[0]), "100-continue");
    EXPECT_EQ(name_of(wsp_auth_schemes[0]), "basic");
    EXPECT_EQ(name_of(wsp_te_values[0].name), "chunked");
    EXPECT_EQ(wsp_te_values[0].code, 0u);
    EXPECT_EQ(name_of(wsp_pragma_values[0].name), "no-cache");
    EXPECT_EQ(wsp_pragma_values[0].code, 0u);
    EXPECT_EQ(name_of(wsp_connection_values[0].name), "close");
    EXPECT_EQ(wsp_connection_values[0].code, 0u);
}

TEST(Tables, CacheDirectives) {
    const char *t[] = {"no-cache", "no-store",     "max-age",         "max-stale",        "min-fresh", "only-if-cached",
                       "public",   "private",      "no-transform",    "must-revalidate",  "proxy-revalidate", "s-maxage"};
    for (int i = 0; i < WSP_CACHE_DIRECTIVE_ROWS; ++i) EXPECT_EQ(name_of(wsp_cache_directives[i]), t[i]) << i;
}

TEST(Tables, Dispositions) {
    EXPECT_EQ(name_of(wsp_dispositions[0]), "form-data");
    EXPECT_EQ(name_of(wsp_dispositions[1]), "attachment");
    EXPECT_EQ(name_of(wsp_dispositions[2]), "inline");
}

TEST(Tables, MethodsAreUpperCase) {
    const char *t[] = {"GET", "OPTIONS", "HEAD", "DELETE", "TRACE", "POST", "PUT"};
    const uint32_t c[] = {0x40, 0x41, 0x42, 0x43, 0x44, 0x60, 0x61};
    for (int i = 0; i < WSP_METHOD_ROWS; ++i) {
        EXPECT_EQ(name_of(wsp_methods[i].name), t[i]);
        EXPECT_EQ(wsp_methods[i].code, c[i]);
    }
    EXPECT_EQ(rows_with_name(wsp_methods, WSP_METHOD_ROWS, "get"), 0);
}

TEST(Tables, RangeUnitsAndContentCodings) {
    EXPECT_EQ(name_of(wsp_range_units[0].name), "none");
    EXPECT_EQ(wsp_range_units[0].code, 0u);
    EXPECT_EQ(name_of(wsp_range_units[1].name), "bytes");
    EXPECT_EQ(wsp_range_units[1].code, 1u);
    EXPECT_EQ(name_of(wsp_content_codings[0].name), "gzip");
    EXPECT_EQ(wsp_content_codings[0].code, 0u);
    EXPECT_EQ(name_of(wsp_content_codings[1].name), "compress");
    EXPECT_EQ(wsp_content_codings[1].code, 1u);
    EXPECT_EQ(name_of(wsp_content_codings[2].name), "deflate");
    EXPECT_EQ(wsp_content_codings[2].code, 2u);
}

// ---- content types ----

TEST(Tables, ContentTypeRowIndexIsCodeUpTo63) {
    for (uint32_t i = 0; i < 64; ++i) EXPECT_EQ(wsp_content_types[i].code, i) << i;
}

TEST(Tables, ContentTypeAnchors) {
    EXPECT_EQ(name_of(wsp_content_types[0x00].name), "*/*");
    EXPECT_EQ(name_of(wsp_content_types[0x02].name), "text/html");
    EXPECT_EQ(name_of(wsp_content_types[0x08].name), "text/vnd.wap.wml");
    EXPECT_EQ(name_of(wsp_content_types[0x2D].name), "text/vnd.wap.si");
    EXPECT_EQ(name_of(wsp_content_types[0x2E].name), "application/vnd.wap.sic");
    EXPECT_EQ(name_of(wsp_content_types[0x34].name), "application/vnd.wap.sia");
    EXPECT_EQ(name_of(wsp_content_types[0x35].name), "text/vnd.wap.connectivity-xml");
    EXPECT_EQ(name_of(wsp_content_types[0x36].name), "application/vnd.wap.connectivity-wbxml");
    EXPECT_EQ(name_of(wsp_content_types[0x3E].name), "application/vnd.wap.mms-message");
    EXPECT_EQ(name_of(wsp_content_types[0x3F].name), "application/vnd.wap.rollover-certificate");
}

TEST(Tables, ContentTypeHashedCertificateMisspellingKept) {
    EXPECT_EQ(name_of(wsp_content_types[0x38].name), "application/vnd.wap.hashed-certifiate");
    EXPECT_EQ(rows_with_name(wsp_content_types, WSP_CONTENT_TYPE_ROWS, "application/vnd.wap.hashed-certificate"), 0);
}

TEST(Tables, ContentTypeLastEighteenRows) {
    const uint32_t codes[] = {0x42,  0x43,  0x44,  0x4A,  0x4B,  0x7F,  0x201, 0x202, 0x203,
                              0x204, 0x205, 0x206, 0x207, 0x208, 0x209, 0x20A, 0x20B, 0x312};
    for (int i = 0; i < 18; ++i) EXPECT_EQ(wsp_content_types[64 + i].code, codes[i]) << 64 + i;
    EXPECT_EQ(name_of(wsp_content_types[64].name), "application/vnd.syncml.dm+wbxml");
    EXPECT_EQ(name_of(wsp_content_types[66].name), "application/vnd.syncml.notification");
    EXPECT_EQ(name_of(wsp_content_types[67].name), "application/vnd.oma.drm.rights+xml");
    EXPECT_EQ(name_of(wsp_content_types[68].name), "application/vnd.oma.drm.rights+wbxml");
    EXPECT_EQ(name_of(wsp_content_types[69].name), "application/x-agps");
    EXPECT_EQ(name_of(wsp_content_types[70].name), "application/vnd.uplanet.cacheop-wbxml");
    EXPECT_EQ(name_of(wsp_content_types[77].name), "x-wap.multipart/vnd.uplanet.header-set");
    EXPECT_EQ(name_of(wsp_content_types[80].name), "application/vnd.nokia.syncset+wbxml");
    EXPECT_EQ(name_of(wsp_content_types[81].name), "application/vnd.omaloc-supl-init");
}

TEST(Tables, ContentTypeCodesWithoutRows) {
    for (uint32_t c : {0x40u, 0x41u}) EXPECT_EQ(rows_with_code(wsp_content_types, WSP_CONTENT_TYPE_ROWS, c), 0) << c;
    for (uint32_t c = 0x45; c <= 0x49; ++c) EXPECT_EQ(rows_with_code(wsp_content_types, WSP_CONTENT_TYPE_ROWS, c), 0) << c;
    for (uint32_t c = 0x4C; c <= 0x7E; ++c) EXPECT_EQ(rows_with_code(wsp_content_types, WSP_CONTENT_TYPE_ROWS, c), 0) << c;
    EXPECT_EQ(rows_with_code(wsp_content_types, WSP_CONTENT_TYPE_ROWS, 0x80), 0);
    EXPECT_EQ(rows_with_code(wsp_content_types, WSP_CONTENT_TYPE_ROWS, 0x200), 0);
    EXPECT_EQ(rows_with_code(wsp_content_types, WSP_CONTENT_TYPE_ROWS, 0x20C), 0);
}

TEST(Tables, ContentTypeNamesAreUnique) {
    for (int i = 0; i < WSP_CONTENT_TYPE_ROWS; ++i)
        EXPECT_EQ(rows_with_name(wsp_content_types, WSP_CONTENT_TYPE_ROWS, wsp_content_types[i].name), 1) << i;
}

// ---- languages ----

TEST(Tables, LanguageCodesSkip0x80) {
    for (int i = 0; i < 127; ++i) EXPECT_EQ(wsp_languages[i].code, static_cast<uint32_t>(i + 1)) << i;
    for (int i = 127; i < WSP_LANGUAGE_ROWS; ++i) EXPECT_EQ(wsp_languages[i].code, static_cast<uint32_t>(i + 2)) << i;
    EXPECT_EQ(rows_with_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x80), 0);
    EXPECT_EQ(rows_with_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x8D), 0);
    EXPECT_EQ(rows_with_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x00), 0);
}

TEST(Tables, LanguageTwoLetterAnchors) {
    EXPECT_EQ(name_of(wsp_languages[0].name), "aa");
    EXPECT_EQ(name_of(wsp_languages[24].name), "en");
    EXPECT_EQ(wsp_languages[24].code, 0x19u);
    EXPECT_EQ(name_of(wsp_languages[32].name), "ur");
    EXPECT_EQ(wsp_languages[32].code, 0x21u);
    EXPECT_EQ(name_of(wsp_languages[33].name), "fr");
    EXPECT_EQ(wsp_languages[33].code, 0x22u);
    EXPECT_EQ(name_of(wsp_languages[87].name), "po");
    EXPECT_EQ(wsp_languages[87].code, 0x58u);
    EXPECT_EQ(name_of(wsp_languages[79].name), "uk");
    EXPECT_EQ(name_of(wsp_languages[91].name), "zu");
    EXPECT_EQ(name_of(wsp_languages[126].name), "ug");
    EXPECT_EQ(wsp_languages[126].code, 0x7Fu);
    EXPECT_EQ(name_of(wsp_languages[127].name), "na");
    EXPECT_EQ(wsp_languages[127].code, 0x81u);
    EXPECT_EQ(name_of(wsp_languages[138].name), "rm");
    EXPECT_EQ(wsp_languages[138].code, 0x8Cu);
    EXPECT_EQ(rows_with_name(wsp_languages, WSP_LANGUAGE_ROWS, "pl"), 0);
}

TEST(Tables, LanguageRunIsContiguous) {
    EXPECT_EQ(wsp_languages, wsp_language_run);
    EXPECT_EQ(wsp_language_names, wsp_language_run + 139);
    EXPECT_EQ(name_of(wsp_language_run[138].name), "rm");
    EXPECT_EQ(name_of(wsp_language_run[139].name), "afar");
    EXPECT_EQ(name_of(wsp_language_run[281].name), "rhaeto-romance");
}

TEST(Tables, LanguageNameAnchors) {
    EXPECT_EQ(name_of(wsp_language_names[0].name), "afar");
    EXPECT_EQ(wsp_language_names[0].code, 0x01u);
    EXPECT_EQ(name_of(wsp_language_names[25].name), "english");
    EXPECT_EQ(wsp_language_names[25].code, 0x19u);
    EXPECT_EQ(name_of(wsp_language_names[90].name), "polish");
    EXPECT_EQ(wsp_language_names[90].code, 0x58u);
    EXPECT_EQ(name_of(wsp_language_names[130].name), "uighur");
    EXPECT_EQ(wsp_language_names[130].code, 0x7Fu);
    EXPECT_EQ(name_of(wsp_language_names[131].name), "nauru");
    EXPECT_EQ(wsp_language_names[131].code, 0x81u);
    EXPECT_EQ(name_of(wsp_language_names[142].name), "rhaeto-romance");
    EXPECT_EQ(wsp_language_names[142].code, 0x8Cu);
}

TEST(Tables, LanguageNameSynonymPairsShareACode) {
    struct P {
        int row;
        const char *first;
        const char *second;
        uint32_t code;
    };
    const P pairs[] = {{13, "bengali", "bangla", 0x0E},
                       {69, "latvian", "lettish", 0x45},
                       {86, "afan", "oromo", 0x55},
                       {91, "pashto", "pushto", 0x59}};
    for (const P &p : pairs) {
        EXPECT_EQ(name_of(wsp_language_names[p.row].name), p.first);
        EXPECT_EQ(name_of(wsp_language_names[p.row + 1].name), p.second);
        EXPECT_EQ(wsp_language_names[p.row].code, p.code);
        EXPECT_EQ(wsp_language_names[p.row + 1].code, p.code);
        EXPECT_EQ(rows_with_code(wsp_language_names, WSP_LANGUAGE_NAME_ROWS, p.code), 2);
    }
}

// Apart from the four pairs, every name row has its own code, the code of
// the two-letter row of the same language.
TEST(Tables, LanguageNamesFollowTheTwoLetterRows) {
    int k = 0;
    for (int i = 0; i < WSP_LANGUAGE_NAME_ROWS; ++i) {
        const char *n = wsp_language_names[i].name;
        bool second = !std::strcmp(n, "bangla") || !std::strcmp(n, "lettish") || !std::strcmp(n, "oromo") ||
                      !std::strcmp(n, "pushto");
        if (second) --k;
        ASSERT_LT(k, WSP_LANGUAGE_ROWS);
        EXPECT_EQ(wsp_language_names[i].code, wsp_languages[k].code) << n;
        ++k;
    }
    EXPECT_EQ(k, WSP_LANGUAGE_ROWS);
}

TEST(Tables, LanguageNameOddSpellingsKept) {
    EXPECT_EQ(name_of(wsp_language_names[37].name), "scots gealic");
    EXPECT_EQ(wsp_language_names[37].code, 0x25u);
    EXPECT_EQ(name_of(wsp_language_names[93].name), "portugese");
    EXPECT_EQ(wsp_language_names[93].code, 0x5Au);
    EXPECT_EQ(name_of(wsp_language_names[115].name), "sewdish");
    EXPECT_EQ(wsp_language_names[115].code, 0x70u);
    EXPECT_EQ(name_of(wsp_language_names[139].name), "inuktitu");
    EXPECT_EQ(wsp_language_names[139].code, 0x89u);
    for (const char *fixed : {"scots gaelic", "portuguese", "swedish", "inuktitut"})
        EXPECT_EQ(rows_with_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, fixed), 0) << fixed;
}

// ---- charsets ----

TEST(Tables, CharsetMibEnumBlocks) {
    struct B {
        int first, last;
        uint32_t base;
    };
    const B blocks[] = {{0, 103, 3}, {104, 109, 109}, {110, 130, 1000}, {131, 234, 2000}, {235, 236, 2250}, {237, 243, 2253}};
    for (const B &b : blocks)
        for (int i = b.first; i <= b.last; ++i)
            EXPECT_EQ(wsp_charsets[i].code, b.base + static_cast<uint32_t>(i - b.first)) << i;
}

TEST(Tables, CharsetAnchors) {
    EXPECT_EQ(name_of(wsp_charsets[0].name), "us-ascii");
    EXPECT_EQ(wsp_charsets[0].code, 3u);
    EXPECT_EQ(name_of(wsp_charsets[103].name), "utf-8");
    EXPECT_EQ(wsp_charsets[103].code, 106u);
    EXPECT_EQ(name_of(wsp_charsets[104].name), "iso-8859-13");
    EXPECT_EQ(name_of(wsp_charsets[109].name), "gb18030");
    EXPECT_EQ(wsp_charsets[109].code, 114u);
    EXPECT_EQ(name_of(wsp_charsets[110].name), "iso-10646-ucs-2");
    EXPECT_EQ(wsp_charsets[110].code, 1000u);
    EXPECT_EQ(name_of(wsp_charsets[130].name), "bocu-1");
    EXPECT_EQ(wsp_charsets[130].code, 1020u);
    EXPECT_EQ(name_of(wsp_charsets[131].name), "iso-8859-1-windows-3.0-latin-1");
    EXPECT_EQ(name_of(wsp_charsets[157].name), "big5");
    EXPECT_EQ(wsp_charsets[157].code, 2026u);
    EXPECT_EQ(name_of(wsp_charsets[156].name), "gb2312");
    EXPECT_EQ(name_of(wsp_charsets[234].name), "ptcp154");
    EXPECT_EQ(wsp_charsets[234].code, 2103u);
    EXPECT_EQ(name_of(wsp_charsets[235].name), "windows-1250");
    EXPECT_EQ(name_of(wsp_charsets[236].name), "windows-1251");
    EXPECT_EQ(name_of(wsp_charsets[237].name), "windows-1253");
    EXPECT_EQ(wsp_charsets[237].code, 2253u);
    EXPECT_EQ(name_of(wsp_charsets[243].name), "tis-620");
    EXPECT_EQ(wsp_charsets[243].code, 2259u);
}

TEST(Tables, CharsetIso88591AppearsTwice) {
    EXPECT_EQ(name_of(wsp_charsets[1].name), "iso-8859-1");
    EXPECT_EQ(wsp_charsets[1].code, 4u);
    EXPECT_EQ(name_of(wsp_charsets[114].name), "iso-8859-1");
    EXPECT_EQ(wsp_charsets[114].code, 1004u);
    EXPECT_EQ(rows_with_name(wsp_charsets, WSP_CHARSET_ROWS, "iso-8859-1"), 2);
}

TEST(Tables, CharsetCodesWithoutRows) {
    for (uint32_t c : {0u, 1u, 2u, 107u, 108u, 115u, 999u, 1021u, 1999u, 2104u, 2249u, 2252u, 2260u})
        EXPECT_EQ(rows_with_code(wsp_charsets, WSP_CHARSET_ROWS, c), 0) << c;
}

TEST(Tables, AllNamesLowerCaseExceptMethods) {
    auto lower = [](const char *s) {
        for (; *s; ++s)
            if (static_cast<uint8_t>(*s) >= 'A' && static_cast<uint8_t>(*s) <= 'Z') return false;
        return true;
    };
    for (int i = 0; i < WSP_CONTENT_TYPE_ROWS; ++i) EXPECT_TRUE(lower(wsp_content_types[i].name)) << i;
    for (int i = 0; i < WSP_CHARSET_ROWS; ++i) EXPECT_TRUE(lower(wsp_charsets[i].name)) << i;
    for (int i = 0; i < WSP_LANGUAGE_RUN_ROWS; ++i) EXPECT_TRUE(lower(wsp_language_run[i].name)) << i;
    for (int i = 0; i < WSP_HEADER_NAME_ROWS; ++i) EXPECT_TRUE(lower(wsp_header_names[i])) << i;
    for (int i = 0; i < WSP_PUSH_APP_ID_ROWS; ++i) EXPECT_TRUE(lower(wsp_push_app_ids[i].name)) << i;
}

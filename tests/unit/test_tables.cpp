// The assigned-number tables: row counts, first and last rows, duplicate
// rows, odd spellings kept on purpose, and codes that have no row.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tables.h"

namespace {

std::string name_of(const char *p) { return p == nullptr ? std::string("<null>") : std::string(p); }

// Number of rows carrying this low-16-bit code.
// The two-letter rows and the name rows of the language run.
struct language_part {
    uint16_t first;
    uint16_t rows;
    const char *name(uint16_t i) const { return wsp_language_run.name(static_cast<uint16_t>(first + i)); }
    uint16_t code(uint16_t i) const { return wsp_language_run.code(static_cast<uint16_t>(first + i)); }
};
constexpr language_part kLanguages{0, WSP_LANGUAGE_ROWS};
constexpr language_part kLanguageNames{WSP_LANGUAGE_ROWS, WSP_LANGUAGE_NAME_ROWS};

template <typename Table>
int rows_with_code(const Table &t, uint16_t rows, uint32_t code) {
    int n = 0;
    for (uint16_t i = 0; i < rows; ++i)
        if (t.code(i) == static_cast<uint16_t>(code)) ++n;
    return n;
}

template <typename Table>
int rows_with_name(const Table &t, uint16_t rows, const char *name) {
    int n = 0;
    for (uint16_t i = 0; i < rows; ++i)
        if (t.name(i) != nullptr && std::strcmp(t.name(i), name) == 0) ++n;
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
        const wsp_table &t;
        uint16_t rows;
    };
    const T all[] = {
        {wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS},      {wsp_status_codes, WSP_STATUS_CODE_ROWS},
        {wsp_te_values, 1},                            {wsp_pragma_values, 1},
        {wsp_connection_values, 1},                    {wsp_methods, WSP_METHOD_ROWS},
        {wsp_range_units, WSP_RANGE_UNIT_ROWS},        {wsp_content_codings, WSP_CONTENT_CODING_ROWS},
        {wsp_content_types, WSP_CONTENT_TYPE_ROWS},    {wsp_charsets, WSP_CHARSET_ROWS},
        {wsp_language_run, WSP_LANGUAGE_RUN_ROWS},
    };
    for (const T &x : all)
        for (uint16_t i = 0; i < x.rows; ++i) {
            ASSERT_NE(x.t.name(i), nullptr) << "row " << i;
            EXPECT_GT(std::strlen(x.t.name(i)), 0u) << "row " << i;
            EXPECT_EQ(x.t.name_length(i), std::strlen(x.t.name(i))) << "row " << i;
        }
}

// ---- header names ----

TEST(Tables, HeaderNamesFirstLastAndAnchors) {
    EXPECT_EQ(name_of(wsp_header_names.name(0x00)), "accept");
    EXPECT_EQ(name_of(wsp_header_names.name(0x11)), "content-type");
    EXPECT_EQ(name_of(wsp_header_names.name(0x12)), "date");
    EXPECT_EQ(name_of(wsp_header_names.name(0x1A)), "if-range");
    EXPECT_EQ(name_of(wsp_header_names.name(0x2E)), "content-disposition");
    EXPECT_EQ(name_of(wsp_header_names.name(0x2F)), "x-wap-application-id");
    EXPECT_EQ(name_of(wsp_header_names.name(0x37)), "profile-warning");
    EXPECT_EQ(name_of(wsp_header_names.name(0x3F)), "x-wap-tod");
    EXPECT_EQ(name_of(wsp_header_names.name(0x43)), "encoding-version");
    EXPECT_EQ(name_of(wsp_header_names.name(0x46)), "x-wap-security");
    EXPECT_EQ(name_of(wsp_header_names.name(0x47)), "cache-control");
    for (int i = 0; i < WSP_HEADER_NAME_ROWS; ++i) EXPECT_NE(wsp_header_names.name(i), nullptr) << i;
}

TEST(Tables, HeaderNameUnderscoreSpellingKept) {
    EXPECT_EQ(name_of(wsp_header_names.name(0x36)), "profile_diff");
    EXPECT_EQ(rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "profile-diff"), 0);
}

TEST(Tables, HeaderNamesDuplicatedAtTheirNewerCodes) {
    EXPECT_EQ(name_of(wsp_header_names.name(0x01)), "accept-charset");
    EXPECT_EQ(name_of(wsp_header_names.name(0x3B)), "accept-charset");
    EXPECT_EQ(name_of(wsp_header_names.name(0x02)), "accept-encoding");
    EXPECT_EQ(name_of(wsp_header_names.name(0x3C)), "accept-encoding");
    EXPECT_EQ(name_of(wsp_header_names.name(0x08)), "cache-control");
    EXPECT_EQ(name_of(wsp_header_names.name(0x3D)), "cache-control");
    EXPECT_EQ(name_of(wsp_header_names.name(0x10)), "content-range");
    EXPECT_EQ(name_of(wsp_header_names.name(0x3E)), "content-range");
    EXPECT_EQ(name_of(wsp_header_names.name(0x44)), "profile-warning");
    EXPECT_EQ(name_of(wsp_header_names.name(0x45)), "content-disposition");
    EXPECT_EQ(rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "cache-control"), 3);
    EXPECT_EQ(rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "accept-charset"), 2);
    EXPECT_EQ(rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "content-disposition"), 2);
    EXPECT_EQ(rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "profile-warning"), 2);
    EXPECT_EQ(rows_with_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "accept"), 1);
}

// ---- parameter names ----

TEST(Tables, ParamNamesFirstLastAndNullAt04) {
    EXPECT_EQ(name_of(wsp_param_names.name(0x00)), "q");
    EXPECT_EQ(name_of(wsp_param_names.name(0x03)), "type");
    EXPECT_EQ(wsp_param_names.name(0x04), nullptr);
    EXPECT_EQ(name_of(wsp_param_names.name(0x05)), "name");
    EXPECT_EQ(name_of(wsp_param_names.name(0x07)), "differences");
    EXPECT_EQ(name_of(wsp_param_names.name(0x09)), "type");
    EXPECT_EQ(name_of(wsp_param_names.name(0x11)), "sec");
    EXPECT_EQ(name_of(wsp_param_names.name(0x12)), "mac");
    EXPECT_EQ(name_of(wsp_param_names.name(0x16)), "size");
    EXPECT_EQ(name_of(wsp_param_names.name(0x1D)), "path");
    for (int i = 0; i < WSP_PARAM_NAME_ROWS; ++i)
        if (i != 4) EXPECT_NE(wsp_param_names.name(i), nullptr) << i;
}

TEST(Tables, ParamNamesKeepOldUnderscoresAndNewHyphen) {
    EXPECT_EQ(name_of(wsp_param_names.name(0x0B)), "start_info");
    EXPECT_EQ(name_of(wsp_param_names.name(0x0E)), "max_age");
    EXPECT_EQ(name_of(wsp_param_names.name(0x1A)), "start-info");
}

TEST(Tables, ParamNamesDuplicated) {
    EXPECT_EQ(name_of(wsp_param_names.name(0x17)), "name");
    EXPECT_EQ(name_of(wsp_param_names.name(0x18)), "filename");
    EXPECT_EQ(name_of(wsp_param_names.name(0x19)), "start");
    EXPECT_EQ(name_of(wsp_param_names.name(0x1B)), "comment");
    EXPECT_EQ(name_of(wsp_param_names.name(0x1C)), "domain");
    EXPECT_EQ(rows_with_name(wsp_param_names, WSP_PARAM_NAME_ROWS, "type"), 2);
    EXPECT_EQ(rows_with_name(wsp_param_names, WSP_PARAM_NAME_ROWS, "path"), 2);
}

// ---- version limits ----

TEST(Tables, ContentTypeVersionLimitsAreRowCounts) {
    const char *v[] = {"1.1", "1.2", "1.3", "1.4"};
    const uint32_t n[] = {46, 53, 55, 82};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(name_of(wsp_version_limits[i].text), v[i]);
        EXPECT_EQ(wsp_version_limits[i].content_type_rows, n[i]);
    }
    // The last admitted row under each version.
    EXPECT_EQ(wsp_content_types.code(46 - 1), 0x2Du);
    EXPECT_EQ(wsp_content_types.code(53 - 1), 0x34u);
    EXPECT_EQ(wsp_content_types.code(55 - 1), 0x36u);
    EXPECT_EQ(wsp_content_types.code(82 - 1), 0x312u);
}

TEST(Tables, HeaderVersionLimits) {
    const char *v[] = {"1.1", "1.2", "1.3", "1.4"};
    const uint32_t n[] = {0x2F, 0x38, 0x44, 0x48};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(name_of(wsp_version_limits[i].text), v[i]);
        EXPECT_EQ(wsp_version_limits[i].header_end, n[i]);
    }
}

// ---- push application ids ----

TEST(Tables, PushAppIds) {
    EXPECT_EQ(name_of(wsp_push_app_ids.name(0)), "x-wap-application:*");
    EXPECT_EQ(wsp_push_app_ids.code(0), 0x00u);
    EXPECT_EQ(name_of(wsp_push_app_ids.name(5)), "x-wap-application:push.syncml");
    EXPECT_EQ(wsp_push_app_ids.code(5), 0x05u);
    EXPECT_EQ(name_of(wsp_push_app_ids.name(6)), "x-wap-application:syncml.dm");
    EXPECT_EQ(wsp_push_app_ids.code(6), 0x07u);
    EXPECT_EQ(name_of(wsp_push_app_ids.name(9)), "x-oma-application:ulp.ua");
    EXPECT_EQ(wsp_push_app_ids.code(9), 0x10u);
    EXPECT_EQ(name_of(wsp_push_app_ids.name(10)), "x-vantrell:location.ua");
    EXPECT_EQ(wsp_push_app_ids.code(10), 0x8005u);
    EXPECT_EQ(name_of(wsp_push_app_ids.name(11)), "x-oma-vantrell:screen3.ua");
    EXPECT_EQ(wsp_push_app_ids.code(11), 0x901Eu);
    EXPECT_EQ(name_of(wsp_push_app_ids.name(12)), "x-microsoft:drm.meter");
    EXPECT_EQ(wsp_push_app_ids.code(12), 0x9034u);
    EXPECT_EQ(name_of(wsp_push_app_ids.name(13)), "x-microsoft:drm.license");
    EXPECT_EQ(wsp_push_app_ids.code(13), 0x9035u);
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
        EXPECT_EQ(name_of(wsp_status_codes.name(i)), t[i]);
        EXPECT_EQ(wsp_status_codes.code(i), c[i]);
    }
    EXPECT_EQ(rows_with_name(wsp_status_codes, WSP_STATUS_CODE_ROWS, "404"), 0);
    EXPECT_EQ(rows_with_code(wsp_status_codes, WSP_STATUS_CODE_ROWS, 0x13), 0);
}

TEST(Tables, TransferCodingsStartWithTwoEmptyRows) {
    const char *t[] = {"", "", "chunked", "identity", "gzip", "compress", "deflate"};
    for (int i = 0; i < WSP_TRANSFER_CODING_ROWS; ++i) {
        ASSERT_NE(wsp_transfer_codings.name(i), nullptr) << i;
        EXPECT_EQ(name_of(wsp_transfer_codings.name(i)), t[i]);
    }
}

TEST(Tables, SingleValueTables) {
    EXPECT_EQ(name_of(wsp_expect_values.name(0)), "100-continue");
    EXPECT_EQ(name_of(wsp_auth_schemes.name(0)), "basic");
    EXPECT_EQ(name_of(wsp_te_values.name(0)), "chunked");
    EXPECT_EQ(wsp_te_values.code(0), 0u);
    EXPECT_EQ(name_of(wsp_pragma_values.name(0)), "no-cache");
    EXPECT_EQ(wsp_pragma_values.code(0), 0u);
    EXPECT_EQ(name_of(wsp_connection_values.name(0)), "close");
    EXPECT_EQ(wsp_connection_values.code(0), 0u);
}

TEST(Tables, CacheDirectives) {
    const char *t[] = {"no-cache", "no-store",     "max-age",         "max-stale",        "min-fresh", "only-if-cached",
                       "public",   "private",      "no-transform",    "must-revalidate",  "proxy-revalidate", "s-maxage"};
    for (int i = 0; i < WSP_CACHE_DIRECTIVE_ROWS; ++i) EXPECT_EQ(name_of(wsp_cache_directives.name(i)), t[i]) << i;
}

TEST(Tables, Dispositions) {
    EXPECT_EQ(name_of(wsp_dispositions.name(0)), "form-data");
    EXPECT_EQ(name_of(wsp_dispositions.name(1)), "attachment");
    EXPECT_EQ(name_of(wsp_dispositions.name(2)), "inline");
}

TEST(Tables, MethodsAreUpperCase) {
    const char *t[] = {"GET", "OPTIONS", "HEAD", "DELETE", "TRACE", "POST", "PUT"};
    const uint32_t c[] = {0x40, 0x41, 0x42, 0x43, 0x44, 0x60, 0x61};
    for (int i = 0; i < WSP_METHOD_ROWS; ++i) {
        EXPECT_EQ(name_of(wsp_methods.name(i)), t[i]);
        EXPECT_EQ(wsp_methods.code(i), c[i]);
    }
    EXPECT_EQ(rows_with_name(wsp_methods, WSP_METHOD_ROWS, "get"), 0);
}

TEST(Tables, RangeUnitsAndContentCodings) {
    EXPECT_EQ(name_of(wsp_range_units.name(0)), "none");
    EXPECT_EQ(wsp_range_units.code(0), 0u);
    EXPECT_EQ(name_of(wsp_range_units.name(1)), "bytes");
    EXPECT_EQ(wsp_range_units.code(1), 1u);
    EXPECT_EQ(name_of(wsp_content_codings.name(0)), "gzip");
    EXPECT_EQ(wsp_content_codings.code(0), 0u);
    EXPECT_EQ(name_of(wsp_content_codings.name(1)), "compress");
    EXPECT_EQ(wsp_content_codings.code(1), 1u);
    EXPECT_EQ(name_of(wsp_content_codings.name(2)), "deflate");
    EXPECT_EQ(wsp_content_codings.code(2), 2u);
}

// ---- content types ----

TEST(Tables, ContentTypeRowIndexIsCodeUpTo63) {
    for (uint32_t i = 0; i < 64; ++i) EXPECT_EQ(wsp_content_types.code(i), i) << i;
}

TEST(Tables, ContentTypeAnchors) {
    EXPECT_EQ(name_of(wsp_content_types.name(0x00)), "*/*");
    EXPECT_EQ(name_of(wsp_content_types.name(0x02)), "text/html");
    EXPECT_EQ(name_of(wsp_content_types.name(0x08)), "text/vnd.wap.wml");
    EXPECT_EQ(name_of(wsp_content_types.name(0x2D)), "text/vnd.wap.si");
    EXPECT_EQ(name_of(wsp_content_types.name(0x2E)), "application/vnd.wap.sic");
    EXPECT_EQ(name_of(wsp_content_types.name(0x34)), "application/vnd.wap.sia");
    EXPECT_EQ(name_of(wsp_content_types.name(0x35)), "text/vnd.wap.connectivity-xml");
    EXPECT_EQ(name_of(wsp_content_types.name(0x36)), "application/vnd.wap.connectivity-wbxml");
    EXPECT_EQ(name_of(wsp_content_types.name(0x3E)), "application/vnd.wap.mms-message");
    EXPECT_EQ(name_of(wsp_content_types.name(0x3F)), "application/vnd.wap.rollover-certificate");
}

TEST(Tables, ContentTypeHashedCertificateMisspellingKept) {
    EXPECT_EQ(name_of(wsp_content_types.name(0x38)), "application/vnd.wap.hashed-certifiate");
    EXPECT_EQ(rows_with_name(wsp_content_types, WSP_CONTENT_TYPE_ROWS, "application/vnd.wap.hashed-certificate"), 0);
}

TEST(Tables, ContentTypeLastEighteenRows) {
    const uint32_t codes[] = {0x42,  0x43,  0x44,  0x4A,  0x4B,  0x7F,  0x201, 0x202, 0x203,
                              0x204, 0x205, 0x206, 0x207, 0x208, 0x209, 0x20A, 0x20B, 0x312};
    for (int i = 0; i < 18; ++i) EXPECT_EQ(wsp_content_types.code(64 + i), codes[i]) << 64 + i;
    EXPECT_EQ(name_of(wsp_content_types.name(64)), "application/vnd.syncml.dm+wbxml");
    EXPECT_EQ(name_of(wsp_content_types.name(66)), "application/vnd.syncml.notification");
    EXPECT_EQ(name_of(wsp_content_types.name(67)), "application/vnd.oma.drm.rights+xml");
    EXPECT_EQ(name_of(wsp_content_types.name(68)), "application/vnd.oma.drm.rights+wbxml");
    EXPECT_EQ(name_of(wsp_content_types.name(69)), "application/x-agps");
    EXPECT_EQ(name_of(wsp_content_types.name(70)), "application/vnd.uplanet.cacheop-wbxml");
    EXPECT_EQ(name_of(wsp_content_types.name(77)), "x-wap.multipart/vnd.uplanet.header-set");
    EXPECT_EQ(name_of(wsp_content_types.name(80)), "application/vnd.nokia.syncset+wbxml");
    EXPECT_EQ(name_of(wsp_content_types.name(81)), "application/vnd.omaloc-supl-init");
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
        EXPECT_EQ(rows_with_name(wsp_content_types, WSP_CONTENT_TYPE_ROWS, wsp_content_types.name(i)), 1) << i;
}

// ---- languages ----

TEST(Tables, LanguageCodesSkip0x80) {
    for (int i = 0; i < 127; ++i) EXPECT_EQ(kLanguages.code(i), static_cast<uint32_t>(i + 1)) << i;
    for (int i = 127; i < WSP_LANGUAGE_ROWS; ++i) EXPECT_EQ(kLanguages.code(i), static_cast<uint32_t>(i + 2)) << i;
    EXPECT_EQ(rows_with_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x80), 0);
    EXPECT_EQ(rows_with_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x8D), 0);
    EXPECT_EQ(rows_with_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x00), 0);
}

TEST(Tables, LanguageTwoLetterAnchors) {
    EXPECT_EQ(name_of(kLanguages.name(0)), "aa");
    EXPECT_EQ(name_of(kLanguages.name(24)), "en");
    EXPECT_EQ(kLanguages.code(24), 0x19u);
    EXPECT_EQ(name_of(kLanguages.name(32)), "ur");
    EXPECT_EQ(kLanguages.code(32), 0x21u);
    EXPECT_EQ(name_of(kLanguages.name(33)), "fr");
    EXPECT_EQ(kLanguages.code(33), 0x22u);
    EXPECT_EQ(name_of(kLanguages.name(87)), "po");
    EXPECT_EQ(kLanguages.code(87), 0x58u);
    EXPECT_EQ(name_of(kLanguages.name(79)), "uk");
    EXPECT_EQ(name_of(kLanguages.name(91)), "zu");
    EXPECT_EQ(name_of(kLanguages.name(126)), "ug");
    EXPECT_EQ(kLanguages.code(126), 0x7Fu);
    EXPECT_EQ(name_of(kLanguages.name(127)), "na");
    EXPECT_EQ(kLanguages.code(127), 0x81u);
    EXPECT_EQ(name_of(kLanguages.name(138)), "rm");
    EXPECT_EQ(kLanguages.code(138), 0x8Cu);
    EXPECT_EQ(rows_with_name(kLanguages, WSP_LANGUAGE_ROWS, "pl"), 0);
}

TEST(Tables, LanguageRunIsContiguous) {
    EXPECT_EQ(name_of(wsp_language_run.name(138)), "rm");
    EXPECT_EQ(name_of(wsp_language_run.name(139)), "afar");
    EXPECT_EQ(name_of(wsp_language_run.name(281)), "rhaeto-romance");
}

TEST(Tables, LanguageNameAnchors) {
    EXPECT_EQ(name_of(kLanguageNames.name(0)), "afar");
    EXPECT_EQ(kLanguageNames.code(0), 0x01u);
    EXPECT_EQ(name_of(kLanguageNames.name(25)), "english");
    EXPECT_EQ(kLanguageNames.code(25), 0x19u);
    EXPECT_EQ(name_of(kLanguageNames.name(90)), "polish");
    EXPECT_EQ(kLanguageNames.code(90), 0x58u);
    EXPECT_EQ(name_of(kLanguageNames.name(130)), "uighur");
    EXPECT_EQ(kLanguageNames.code(130), 0x7Fu);
    EXPECT_EQ(name_of(kLanguageNames.name(131)), "nauru");
    EXPECT_EQ(kLanguageNames.code(131), 0x81u);
    EXPECT_EQ(name_of(kLanguageNames.name(142)), "rhaeto-romance");
    EXPECT_EQ(kLanguageNames.code(142), 0x8Cu);
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
        EXPECT_EQ(name_of(kLanguageNames.name(p.row)), p.first);
        EXPECT_EQ(name_of(kLanguageNames.name(p.row + 1)), p.second);
        EXPECT_EQ(kLanguageNames.code(p.row), p.code);
        EXPECT_EQ(kLanguageNames.code(p.row + 1), p.code);
        EXPECT_EQ(rows_with_code(kLanguageNames, WSP_LANGUAGE_NAME_ROWS, p.code), 2);
    }
}

// Apart from the four pairs, every name row has its own code, the code of
// the two-letter row of the same language.
TEST(Tables, LanguageNamesFollowTheTwoLetterRows) {
    int k = 0;
    for (int i = 0; i < WSP_LANGUAGE_NAME_ROWS; ++i) {
        const char *n = kLanguageNames.name(i);
        bool second = !std::strcmp(n, "bangla") || !std::strcmp(n, "lettish") || !std::strcmp(n, "oromo") ||
                      !std::strcmp(n, "pushto");
        if (second) --k;
        ASSERT_LT(k, WSP_LANGUAGE_ROWS);
        EXPECT_EQ(kLanguageNames.code(i), kLanguages.code(k)) << n;
        ++k;
    }
    EXPECT_EQ(k, WSP_LANGUAGE_ROWS);
}

TEST(Tables, LanguageNameOddSpellingsKept) {
    EXPECT_EQ(name_of(kLanguageNames.name(37)), "scots gealic");
    EXPECT_EQ(kLanguageNames.code(37), 0x25u);
    EXPECT_EQ(name_of(kLanguageNames.name(93)), "portugese");
    EXPECT_EQ(kLanguageNames.code(93), 0x5Au);
    EXPECT_EQ(name_of(kLanguageNames.name(115)), "sewdish");
    EXPECT_EQ(kLanguageNames.code(115), 0x70u);
    EXPECT_EQ(name_of(kLanguageNames.name(139)), "inuktitu");
    EXPECT_EQ(kLanguageNames.code(139), 0x89u);
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
            EXPECT_EQ(wsp_charsets.code(i), b.base + static_cast<uint32_t>(i - b.first)) << i;
}

TEST(Tables, CharsetAnchors) {
    EXPECT_EQ(name_of(wsp_charsets.name(0)), "us-ascii");
    EXPECT_EQ(wsp_charsets.code(0), 3u);
    EXPECT_EQ(name_of(wsp_charsets.name(103)), "utf-8");
    EXPECT_EQ(wsp_charsets.code(103), 106u);
    EXPECT_EQ(name_of(wsp_charsets.name(104)), "iso-8859-13");
    EXPECT_EQ(name_of(wsp_charsets.name(109)), "gb18030");
    EXPECT_EQ(wsp_charsets.code(109), 114u);
    EXPECT_EQ(name_of(wsp_charsets.name(110)), "iso-10646-ucs-2");
    EXPECT_EQ(wsp_charsets.code(110), 1000u);
    EXPECT_EQ(name_of(wsp_charsets.name(130)), "bocu-1");
    EXPECT_EQ(wsp_charsets.code(130), 1020u);
    EXPECT_EQ(name_of(wsp_charsets.name(131)), "iso-8859-1-windows-3.0-latin-1");
    EXPECT_EQ(name_of(wsp_charsets.name(157)), "big5");
    EXPECT_EQ(wsp_charsets.code(157), 2026u);
    EXPECT_EQ(name_of(wsp_charsets.name(156)), "gb2312");
    EXPECT_EQ(name_of(wsp_charsets.name(234)), "ptcp154");
    EXPECT_EQ(wsp_charsets.code(234), 2103u);
    EXPECT_EQ(name_of(wsp_charsets.name(235)), "windows-1250");
    EXPECT_EQ(name_of(wsp_charsets.name(236)), "windows-1251");
    EXPECT_EQ(name_of(wsp_charsets.name(237)), "windows-1253");
    EXPECT_EQ(wsp_charsets.code(237), 2253u);
    EXPECT_EQ(name_of(wsp_charsets.name(243)), "tis-620");
    EXPECT_EQ(wsp_charsets.code(243), 2259u);
}

TEST(Tables, CharsetIso88591AppearsTwice) {
    EXPECT_EQ(name_of(wsp_charsets.name(1)), "iso-8859-1");
    EXPECT_EQ(wsp_charsets.code(1), 4u);
    EXPECT_EQ(name_of(wsp_charsets.name(114)), "iso-8859-1");
    EXPECT_EQ(wsp_charsets.code(114), 1004u);
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
    for (int i = 0; i < WSP_CONTENT_TYPE_ROWS; ++i) EXPECT_TRUE(lower(wsp_content_types.name(i))) << i;
    for (int i = 0; i < WSP_CHARSET_ROWS; ++i) EXPECT_TRUE(lower(wsp_charsets.name(i))) << i;
    for (int i = 0; i < WSP_LANGUAGE_RUN_ROWS; ++i) EXPECT_TRUE(lower(wsp_language_run.name(i))) << i;
    for (int i = 0; i < WSP_HEADER_NAME_ROWS; ++i) EXPECT_TRUE(lower(wsp_header_names.name(i))) << i;
    for (int i = 0; i < WSP_PUSH_APP_ID_ROWS; ++i) EXPECT_TRUE(lower(wsp_push_app_ids.name(i))) << i;
}

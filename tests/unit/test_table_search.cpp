// The searches over the constant tables, on a small table of our own built
// the way the real ones are, and what the codecs' search rules give on the
// real rows.
#include <gtest/gtest.h>

#include "table_index.h"
#include "tables.h"

namespace {

// Duplicate names and codes, an absent name, an empty name, and two
// spellings of one name that differ only in case.
constexpr wsp_row_text kRowText[] = {
    {"alpha", 0x10},  // 0
    {"Beta", 0x11},   // 1
    {nullptr, 0x12},  // 2
    {"alpha", 0x13},  // 3
    {"", 0x14},       // 4
    {"gamma", 0x10},  // 5: the code of row 0 again
    {"beta", 0x11},   // 6
};
constexpr uint16_t kRowCount = 7;
constexpr auto kRowArray = wsp_code_rows(kRowText);
constexpr auto kRowStore = wsp_build_store<wsp_pool_bytes(kRowArray)>(kRowArray);
constexpr wsp_table kRows = wsp_table_of(kRowStore);

constexpr const char *kListText[] = {"one", nullptr, "Two", "one", "", "two"};
constexpr uint16_t kListCount = 6;
constexpr auto kListArray = wsp_list_rows(kListText);
constexpr auto kListStore = wsp_build_store<wsp_pool_bytes(kListArray)>(kListArray);
constexpr wsp_table kList = wsp_table_of(kListStore);

static_assert(wsp_index_agrees_with_scan(kRows, kRowArray));
static_assert(wsp_index_agrees_with_scan(kList, kListArray));

} // namespace

// ---- by code, upward ----

TEST(FindCode, FirstEqualCodeWinsUpward) {
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x11), 1);
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x14), 4);
}

TEST(FindCode, StartsAtTheFirstRowGiven) {
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x10), 0);
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x10, 1), 5);
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x10010, 1), 5);
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x10, 6), -1);
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x10, kRowCount), -1);
}

TEST(FindCode, RowCountAboveTheTableIsClamped) {
    EXPECT_EQ(wsp_find_code(kRows, 0xFFFF, 0x11), 1);
    EXPECT_EQ(wsp_find_code(kRows, 0xFFFF, 0x99), -1);
    EXPECT_EQ(wsp_find_code_down(kRows, 1000, 0x11), 6);
}

TEST(FindCode, ComparesLow16BitsOfTheKey) {
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x70011), 1);
    EXPECT_EQ(wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 0x10000 + 106), 103);
}

TEST(FindCode, MissAndBoundByRowCount) {
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x15), -1);
    EXPECT_EQ(wsp_find_code(kRows, 4, 0x14), -1); // row 4 lies past the bound
    EXPECT_EQ(wsp_find_code(kRows, 0, 0x10), -1);
}

// ---- by code, downward ----

TEST(FindCodeDown, FirstEqualCodeFromTheTopWins) {
    EXPECT_EQ(wsp_find_code_down(kRows, 6, 0x11), 6);
    EXPECT_EQ(wsp_find_code_down(kRows, 5, 0x11), 1);
    EXPECT_EQ(wsp_find_code_down(kRows, 6, 0x10), 5);
    EXPECT_EQ(wsp_find_code_down(kRows, 4, 0x10), 0);
}

TEST(FindCodeDown, MissAndStartRow) {
    EXPECT_EQ(wsp_find_code_down(kRows, 6, 0x99), -1);
    EXPECT_EQ(wsp_find_code_down(kRows, 0, 0x10), 0);
    EXPECT_EQ(wsp_find_code_down(kRows, 0, 0x11), -1);
    EXPECT_EQ(wsp_find_code_down(kRows, -1, 0x10), -1);
}

// ---- by name in a code table ----

TEST(FindName, ExactFirstMatchUpward) {
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "alpha", false), 0);
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "beta", false), 6);
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "Beta", false), 1);
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "ALPHA", false), -1);
}

TEST(FindName, IgnoreCaseFirstMatchUpward) {
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "beta", true), 1);
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "ALPHA", true), 0);
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "GaMmA", true), 5);
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "delta", true), -1);
}

TEST(FindName, NullRowNeverMatchesAndEmptyNameMatchesEmptyRow) {
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "", false), 4);
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, "", true), 4);
    EXPECT_EQ(wsp_find_name(kRows, 4, "", false), -1); // row 2 is null
    EXPECT_EQ(wsp_find_name(kRows, kRowCount, nullptr, false), -1);
}

TEST(FindName, BoundByRowCount) {
    EXPECT_EQ(wsp_find_name(kRows, 6, "beta", false), -1);
    EXPECT_EQ(wsp_find_name(kRows, 0, "alpha", false), -1);
}

TEST(FindNameDown, FirstMatchFromTheTopWins) {
    EXPECT_EQ(wsp_find_name_down(kRows, 6, "alpha", false), 3);
    EXPECT_EQ(wsp_find_name_down(kRows, 2, "alpha", false), 0);
    EXPECT_EQ(wsp_find_name_down(kRows, 6, "beta", true), 6);
    EXPECT_EQ(wsp_find_name_down(kRows, 5, "beta", true), 1);
    EXPECT_EQ(wsp_find_name_down(kRows, 5, "beta", false), -1);
}

TEST(FindNameDown, MissNullAndStartRow) {
    EXPECT_EQ(wsp_find_name_down(kRows, 6, "delta", true), -1);
    EXPECT_EQ(wsp_find_name_down(kRows, 3, "", false), -1);
    EXPECT_EQ(wsp_find_name_down(kRows, -1, "alpha", false), -1);
    EXPECT_EQ(wsp_find_name_down(kRows, 6, nullptr, true), -1);
}

// ---- by name in a name list (index = code) ----

TEST(FindNameInList, UpwardExactAndIgnoreCase) {
    EXPECT_EQ(wsp_find_name(kList, kListCount, "one", false), 0);
    EXPECT_EQ(wsp_find_name(kList, kListCount, "two", false), 5);
    EXPECT_EQ(wsp_find_name(kList, kListCount, "two", true), 2);
    EXPECT_EQ(wsp_find_name(kList, kListCount, "ONE", false), -1);
    EXPECT_EQ(wsp_find_name(kList, kListCount, "ONE", true), 0);
    EXPECT_EQ(wsp_find_name(kList, kListCount, "", false), 4);
    EXPECT_EQ(wsp_find_name(kList, kListCount, nullptr, false), -1);
    EXPECT_EQ(wsp_find_name(kList, 5, "two", false), -1);
}

TEST(FindNameInList, DownwardExactAndIgnoreCase) {
    EXPECT_EQ(wsp_find_name_down(kList, 5, "one", false), 3);
    EXPECT_EQ(wsp_find_name_down(kList, 2, "one", false), 0);
    EXPECT_EQ(wsp_find_name_down(kList, 5, "TWO", true), 5);
    EXPECT_EQ(wsp_find_name_down(kList, 4, "TWO", true), 2);
    EXPECT_EQ(wsp_find_name_down(kList, 1, "two", true), -1);
    EXPECT_EQ(wsp_find_name_down(kList, -1, "one", false), -1);
}

TEST(FindNameInList, NullEntryNeverMatches) {
    // Parameter code 0x04 has no name: no token finds it.
    EXPECT_EQ(wsp_find_name(wsp_param_names, WSP_PARAM_NAME_ROWS, "", false), -1);
    EXPECT_EQ(wsp_find_name_down(kList, 1, "", true), -1);
    EXPECT_EQ(wsp_find_name_down(kList, 1, nullptr, true), -1);
}

// ---- the codecs' search rules on the real tables ----

TEST(TableRules, HeaderNameDownwardFromVersionLimit) {
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x47, "cache-control", false), 0x47);
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x2E, "cache-control", false), 0x08);
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x47, "accept-charset", false), 0x3B);
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x2E, "accept-charset", false), 0x01);
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x47, "content-disposition", false), 0x45);
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x2E, "content-disposition", false), 0x2E);
    // "1.3" stops at 0x43: 0x45 is out of reach.
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x43, "content-disposition", false), 0x2E);
    // "1.2" stops at 0x37: the second Cache-Control (0x3D) is out of reach.
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x37, "cache-control", false), 0x08);
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x2E, "x-wap-tod", false), -1);
    EXPECT_EQ(wsp_find_name_down(wsp_header_names, 0x47, "Cache-Control", false), -1);
}

TEST(TableRules, HeaderVersionLimitMinusOneIsTheStartRow) {
    const char *v[] = {"1.1", "1.2", "1.3", "1.4"};
    const int top[] = {0x2E, 0x37, 0x43, 0x47};
    for (int i = 0; i < 4; ++i) {
        int row = wsp_version_index(v[i]);
        ASSERT_EQ(row, i);
        EXPECT_EQ(wsp_version_limits[row].header_end - 1, top[i]);
    }
}

TEST(TableRules, VersionTextIsMatchedExactly) {
    EXPECT_EQ(wsp_version_index("1.5"), -1);
    EXPECT_EQ(wsp_version_index("1.0"), -1);
    EXPECT_EQ(wsp_version_index("1.1 "), -1);
    EXPECT_EQ(wsp_version_index("1.10"), -1);
    EXPECT_EQ(wsp_version_index("1."), -1);
    EXPECT_EQ(wsp_version_index(""), -1);
    EXPECT_EQ(wsp_version_index(nullptr), -1);
}

TEST(TableRules, ParameterCodesPerVersion) {
    const uint8_t rows[] = {9, 12, 17, 30};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(wsp_version_limits[i].param_rows, rows[i]) << i;
}

TEST(TableRules, HeaderNameUpwardLowestCodeWins) {
    EXPECT_EQ(wsp_find_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "CACHE-CONTROL", true), 0x08);
    EXPECT_EQ(wsp_find_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "Profile-Warning", true), 0x37);
    EXPECT_EQ(wsp_find_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "x-unknown", true), -1);
}

TEST(TableRules, LanguageRunFindsTwoLetterAndNameRows) {
    int en = wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "en", false);
    int english = wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "english", false);
    ASSERT_EQ(en, 24);
    ASSERT_EQ(english, 139 + 25);
    EXPECT_EQ(wsp_language_run.code(en), 0x19u);
    EXPECT_EQ(wsp_language_run.code(english), 0x19u);
    EXPECT_EQ(wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "English", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "pl", false), -1);
    EXPECT_EQ(wsp_language_run.code(wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "po", false)), 0x58u);
    EXPECT_EQ(wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "swedish", false), -1);
    EXPECT_EQ(wsp_language_run.code(wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "sewdish", false)), 0x70u);
    EXPECT_EQ(wsp_find_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x80), -1);
    EXPECT_EQ(wsp_find_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x8C), 138);
}

TEST(TableRules, LanguageSynonymByCodeGivesTheFirstName) {
    EXPECT_EQ(wsp_find_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x0E, WSP_LANGUAGE_ROWS), 139 + 13);
    EXPECT_STREQ(wsp_language_run.name(139 + 13), "bengali");
    EXPECT_STREQ(wsp_language_run.name(wsp_find_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x59, WSP_LANGUAGE_ROWS)),
                 "pashto");
}

TEST(TableRules, CharsetByNameAndByMibEnum) {
    int row = wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, "ISO-8859-1", true);
    ASSERT_EQ(row, 1);
    EXPECT_EQ(wsp_charsets.code(row), 4u);
    EXPECT_EQ(wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, "ISO-8859-1", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, "iso-8859-1", false), 1);
    row = wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 1004);
    ASSERT_EQ(row, 114);
    EXPECT_STREQ(wsp_charsets.name(row), "iso-8859-1");
    EXPECT_EQ(wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 2252), -1);
    EXPECT_EQ(wsp_charsets.code(wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 106)), 106u);
    EXPECT_STREQ(wsp_charsets.name(wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 106)), "utf-8");
}

TEST(TableRules, ContentTypeByNameWithinVersionLimit) {
    // wsp_encode_content scans rows (limit - 1) down to 0, ignoring case.
    EXPECT_EQ(wsp_find_name_down(wsp_content_types, 53 - 1, "application/vnd.wap.sia", true), 0x34);
    EXPECT_EQ(wsp_find_name_down(wsp_content_types, 46 - 1, "application/vnd.wap.sia", true), -1);
    EXPECT_EQ(wsp_find_name_down(wsp_content_types, 82 - 1, "Application/Vnd.Wap.Hashed-Certifiate", true), 0x38);
    EXPECT_EQ(wsp_find_name_down(wsp_content_types, 82 - 1, "application/vnd.wap.hashed-certificate", true), -1);
    EXPECT_EQ(wsp_find_name_down(wsp_content_types, 82 - 1, "application/vnd.omaloc-supl-init", true), 81);
    EXPECT_EQ(wsp_find_name_down(wsp_content_types, 55 - 1, "application/vnd.omaloc-supl-init", true), -1);
}

TEST(TableRules, ContentTypeByLongCodeDownward) {
    EXPECT_EQ(wsp_find_code_down(wsp_content_types, 81, 0x312), 81);
    EXPECT_EQ(wsp_find_code_down(wsp_content_types, 81, 0x201), 70);
    EXPECT_EQ(wsp_find_code_down(wsp_content_types, 81, 0x7F), 69);
    EXPECT_EQ(wsp_find_code_down(wsp_content_types, 81, 0x38), 0x38);
    EXPECT_EQ(wsp_find_code_down(wsp_content_types, 81, 0x45), -1);
    EXPECT_EQ(wsp_find_code_down(wsp_content_types, 81, 0x200), -1);
}

TEST(TableRules, ContentTypeConstrainedCodesScanRows64To69) {
    EXPECT_EQ(wsp_find_code(wsp_content_types, 70, 0x44, 64), 66);
    EXPECT_EQ(wsp_find_code(wsp_content_types, 70, 0x7F, 64), 69);
    EXPECT_EQ(wsp_find_code(wsp_content_types, 70, 0x40, 64), -1);
    EXPECT_EQ(wsp_find_code(wsp_content_types, 70, 0x201, 64), -1);
}

TEST(TableRules, ContentTypeAcceptScanIsExactUpward) {
    EXPECT_EQ(wsp_find_name(wsp_content_types, 46, "text/html", false), 2);
    EXPECT_EQ(wsp_find_name(wsp_content_types, 46, "Text/HTML", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_content_types, 46, "text/vnd.wap.sl", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_content_types, 53, "text/vnd.wap.sl", false), 0x2F);
}

TEST(TableRules, ParamTypeScanRows0To63IgnoringCase) {
    EXPECT_EQ(wsp_find_name(wsp_content_types, 64, "TEXT/CSS", true), 0x3D);
    EXPECT_EQ(wsp_find_name(wsp_content_types, 64, "application/x-agps", true), -1);
}

TEST(TableRules, TransferCodingEmptyTokenIsIndexZero) {
    EXPECT_EQ(wsp_find_name(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, "", false), 0);
    EXPECT_EQ(wsp_find_name(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, "chunked", false), 2);
    EXPECT_EQ(wsp_find_name(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, "deflate", false), 6);
    EXPECT_EQ(wsp_find_name(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, "Chunked", false), -1);
}

TEST(TableRules, ContentCodingsAndSmallTables) {
    EXPECT_EQ(wsp_find_name(wsp_content_codings, WSP_CONTENT_CODING_ROWS, "compress", false), 1);
    EXPECT_EQ(wsp_find_name(wsp_content_codings, WSP_CONTENT_CODING_ROWS, "GZIP", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_methods, WSP_METHOD_ROWS, "POST", false), 5);
    EXPECT_EQ(wsp_find_code(wsp_methods, WSP_METHOD_ROWS, 0x61), 6);
    EXPECT_EQ(wsp_find_code(wsp_status_codes, WSP_STATUS_CODE_ROWS, 0x23), 6);
    EXPECT_EQ(wsp_find_code(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, 0x06), -1);
    EXPECT_EQ(wsp_find_code(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, 0x9035), 13);
    EXPECT_EQ(wsp_find_name(wsp_cache_directives, WSP_CACHE_DIRECTIVE_ROWS, "s-maxage", false), 11);
    EXPECT_EQ(wsp_find_name(wsp_dispositions, WSP_DISPOSITION_ROWS, "inline", false), 2);
}

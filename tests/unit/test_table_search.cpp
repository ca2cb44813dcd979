// The six search helpers over the constant tables, and what the codecs'
// search rules give on the real rows.
#include <gtest/gtest.h>

#include "tables.h"

namespace {

// A small table of our own to pin the shapes down: duplicate names and
// codes, a null name, an empty name, codes that differ only above bit 15.
const wsp_code_entry kRows[] = {
    {"alpha", 0x10},    // 0
    {"Beta", 0x11},     // 1
    {nullptr, 0x12},    // 2
    {"alpha", 0x13},    // 3
    {"", 0x14},         // 4
    {"gamma", 0x10010}, // 5: low 16 bits 0x0010, like row 0
    {"beta", 0x11},     // 6
};
constexpr uint16_t kRowCount = 7;

const char *const kList[] = {"one", nullptr, "Two", "one", "", "two"};
constexpr uint16_t kListCount = 6;

} // namespace

// ---- by code, upward ----

TEST(FindCode, FirstEqualCodeWinsUpward) {
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x11), 1);
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x14), 4);
}

TEST(FindCode, ComparesLow16BitsOfTheRow) {
    // Row 5 carries 0x10010: only its low 16 bits (0x0010) count.
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x10), 0);
    EXPECT_EQ(wsp_find_code(kRows + 1, kRowCount - 1, 0x10), 4); // row 5
    EXPECT_EQ(wsp_find_code(kRows + 1, kRowCount - 1, 0x10010), 4);
}

TEST(FindCode, ComparesLow16BitsOfTheKey) {
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x70011), 1);
    EXPECT_EQ(wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 0x10000 + 106), 103);
}

TEST(FindCode, MissAndBoundByRowCount) {
    EXPECT_EQ(wsp_find_code(kRows, kRowCount, 0x15), -1);
    EXPECT_EQ(wsp_find_code(kRows, 4, 0x14), -1); // row 4 lies past the bound
    EXPECT_EQ(wsp_find_code(kRows, 0, 0x10), -1);
    EXPECT_EQ(wsp_find_code(nullptr, 5, 0x10), -1);
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
    EXPECT_EQ(wsp_find_code_down(nullptr, 3, 0x10), -1);
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
    EXPECT_EQ(wsp_find_name(nullptr, 3, "alpha", false), -1);
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
    EXPECT_EQ(wsp_find_name_down(nullptr, 6, "alpha", true), -1);
}

// ---- by name in a name list ----

TEST(FindListName, UpwardExactAndIgnoreCase) {
    EXPECT_EQ(wsp_find_list_name(kList, kListCount, "one", false), 0);
    EXPECT_EQ(wsp_find_list_name(kList, kListCount, "two", false), 5);
    EXPECT_EQ(wsp_find_list_name(kList, kListCount, "two", true), 2);
    EXPECT_EQ(wsp_find_list_name(kList, kListCount, "ONE", false), -1);
    EXPECT_EQ(wsp_find_list_name(kList, kListCount, "ONE", true), 0);
    EXPECT_EQ(wsp_find_list_name(kList, kListCount, "", false), 4);
    EXPECT_EQ(wsp_find_list_name(kList, kListCount, nullptr, false), -1);
    EXPECT_EQ(wsp_find_list_name(kList, 5, "two", false), -1);
    EXPECT_EQ(wsp_find_list_name(nullptr, 5, "one", false), -1);
}

TEST(FindListName, DownwardExactAndIgnoreCase) {
    EXPECT_EQ(wsp_find_list_name_down(kList, 5, "one", false), 3);
    EXPECT_EQ(wsp_find_list_name_down(kList, 2, "one", false), 0);
    EXPECT_EQ(wsp_find_list_name_down(kList, 5, "TWO", true), 5);
    EXPECT_EQ(wsp_find_list_name_down(kList, 4, "TWO", true), 2);
    EXPECT_EQ(wsp_find_list_name_down(kList, 1, "two", true), -1);
    EXPECT_EQ(wsp_find_list_name_down(kList, -1, "one", false), -1);
    EXPECT_EQ(wsp_find_list_name_down(nullptr, 3, "one", false), -1);
}

TEST(FindListName, NullEntryNeverMatches) {
    // Parameter code 0x04 has no name: no token finds it.
    EXPECT_EQ(wsp_find_list_name(wsp_param_names, WSP_PARAM_NAME_ROWS, "", false), -1);
    EXPECT_EQ(wsp_find_list_name_down(kList, 1, "", true), -1);
    EXPECT_EQ(wsp_find_list_name_down(kList, 1, nullptr, true), -1);
}

// ---- the codecs' search rules on the real tables ----

TEST(TableRules, HeaderNameDownwardFromVersionLimit) {
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x47, "cache-control", false), 0x47);
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x2E, "cache-control", false), 0x08);
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x47, "accept-charset", false), 0x3B);
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x2E, "accept-charset", false), 0x01);
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x47, "content-disposition", false), 0x45);
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x2E, "content-disposition", false), 0x2E);
    // "1.3" stops at 0x43: 0x45 is out of reach.
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x43, "content-disposition", false), 0x2E);
    // "1.2" stops at 0x37: the second Cache-Control (0x3D) is out of reach.
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x37, "cache-control", false), 0x08);
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x2E, "x-wap-tod", false), -1);
    EXPECT_EQ(wsp_find_list_name_down(wsp_header_names, 0x47, "Cache-Control", false), -1);
}

TEST(TableRules, HeaderVersionLimitMinusOneIsTheStartRow) {
    const char *v[] = {"1.1", "1.2", "1.3", "1.4"};
    const int top[] = {0x2E, 0x37, 0x43, 0x47};
    for (int i = 0; i < 4; ++i) {
        int row = wsp_find_name(wsp_header_versions, WSP_VERSION_ROWS, v[i], false);
        ASSERT_EQ(row, i);
        EXPECT_EQ(static_cast<int>(wsp_header_versions[row].code) - 1, top[i]);
    }
    EXPECT_EQ(wsp_find_name(wsp_header_versions, WSP_VERSION_ROWS, "1.5", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_content_type_versions, WSP_VERSION_ROWS, "1.0", false), -1);
}

TEST(TableRules, HeaderNameUpwardLowestCodeWins) {
    EXPECT_EQ(wsp_find_list_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "CACHE-CONTROL", true), 0x08);
    EXPECT_EQ(wsp_find_list_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "Profile-Warning", true), 0x37);
    EXPECT_EQ(wsp_find_list_name(wsp_header_names, WSP_HEADER_NAME_ROWS, "x-unknown", true), -1);
}

TEST(TableRules, LanguageRunFindsTwoLetterAndNameRows) {
    int en = wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "en", false);
    int english = wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "english", false);
    ASSERT_EQ(en, 24);
    ASSERT_EQ(english, 139 + 25);
    EXPECT_EQ(wsp_language_run[en].code, 0x19u);
    EXPECT_EQ(wsp_language_run[english].code, 0x19u);
    EXPECT_EQ(wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "English", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "pl", false), -1);
    EXPECT_EQ(wsp_language_run[wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "po", false)].code, 0x58u);
    EXPECT_EQ(wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "swedish", false), -1);
    EXPECT_EQ(wsp_language_run[wsp_find_name(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, "sewdish", false)].code, 0x70u);
    EXPECT_EQ(wsp_find_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x80), -1);
    EXPECT_EQ(wsp_find_code(wsp_language_run, WSP_LANGUAGE_RUN_ROWS, 0x8C), 138);
}

TEST(TableRules, LanguageSynonymByCodeGivesTheFirstName) {
    EXPECT_EQ(wsp_find_code(wsp_language_names, WSP_LANGUAGE_NAME_ROWS, 0x0E), 13);
    EXPECT_STREQ(wsp_language_names[13].name, "bengali");
    EXPECT_STREQ(wsp_language_names[wsp_find_code(wsp_language_names, WSP_LANGUAGE_NAME_ROWS, 0x59)].name, "pashto");
}

TEST(TableRules, CharsetByNameAndByMibEnum) {
    int row = wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, "ISO-8859-1", true);
    ASSERT_EQ(row, 1);
    EXPECT_EQ(wsp_charsets[row].code, 4u);
    EXPECT_EQ(wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, "ISO-8859-1", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, "iso-8859-1", false), 1);
    row = wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 1004);
    ASSERT_EQ(row, 114);
    EXPECT_STREQ(wsp_charsets[row].name, "iso-8859-1");
    EXPECT_EQ(wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 2252), -1);
    EXPECT_EQ(wsp_charsets[wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 106)].code, 106u);
    EXPECT_STREQ(wsp_charsets[wsp_find_code(wsp_charsets, WSP_CHARSET_ROWS, 106)].name, "utf-8");
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
    EXPECT_EQ(64 + wsp_find_code(wsp_content_types + 64, 6, 0x44), 66);
    EXPECT_EQ(64 + wsp_find_code(wsp_content_types + 64, 6, 0x7F), 69);
    EXPECT_EQ(wsp_find_code(wsp_content_types + 64, 6, 0x40), -1);
    EXPECT_EQ(wsp_find_code(wsp_content_types + 64, 6, 0x201), -1);
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
    EXPECT_EQ(wsp_find_list_name(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, "", false), 0);
    EXPECT_EQ(wsp_find_list_name(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, "chunked", false), 2);
    EXPECT_EQ(wsp_find_list_name(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, "deflate", false), 6);
    EXPECT_EQ(wsp_find_list_name(wsp_transfer_codings, WSP_TRANSFER_CODING_ROWS, "Chunked", false), -1);
}

TEST(TableRules, ContentCodingsAndSmallTables) {
    EXPECT_EQ(wsp_find_name(wsp_content_codings, WSP_CONTENT_CODING_ROWS, "compress", false), 1);
    EXPECT_EQ(wsp_find_name(wsp_content_codings, WSP_CONTENT_CODING_ROWS, "GZIP", false), -1);
    EXPECT_EQ(wsp_find_name(wsp_methods, WSP_METHOD_ROWS, "POST", false), 5);
    EXPECT_EQ(wsp_find_code(wsp_methods, WSP_METHOD_ROWS, 0x61), 6);
    EXPECT_EQ(wsp_find_code(wsp_status_codes, WSP_STATUS_CODE_ROWS, 0x23), 6);
    EXPECT_EQ(wsp_find_code(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, 0x06), -1);
    EXPECT_EQ(wsp_find_code(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, 0x9035), 13);
    EXPECT_EQ(wsp_find_list_name(wsp_cache_directives, WSP_CACHE_DIRECTIVE_ROWS, "s-maxage", false), 11);
    EXPECT_EQ(wsp_find_list_name(wsp_dispositions, WSP_DISPOSITION_ROWS, "inline", false), 2);
}

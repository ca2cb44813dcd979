// The indexed searches against a plain scan: for every table, every name of
// every table (as written, upper-cased, mixed-cased, cut short, lengthened,
// altered), the empty text and a few texts no table holds, under every limit
// that can change the answer and both case rules, the index gives the row
// the scan gives.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "tables.h"

namespace {

struct named_table {
    const char *label;
    const wsp_table &table;
};

const named_table kTables[] = {
    {"header names", wsp_header_names},
    {"param names", wsp_param_names},
    {"transfer codings", wsp_transfer_codings},
    {"expect values", wsp_expect_values},
    {"auth schemes", wsp_auth_schemes},
    {"cache directives", wsp_cache_directives},
    {"dispositions", wsp_dispositions},
    {"push app ids", wsp_push_app_ids},
    {"status codes", wsp_status_codes},
    {"te values", wsp_te_values},
    {"pragma values", wsp_pragma_values},
    {"connection values", wsp_connection_values},
    {"methods", wsp_methods},
    {"range units", wsp_range_units},
    {"content codings", wsp_content_codings},
    {"content types", wsp_content_types},
    {"charsets", wsp_charsets},
    {"language run", wsp_language_run},
};

// ---- the reference: a scan over the stored names ----

uint8_t fold(char c) {
    uint8_t o = static_cast<uint8_t>(c);
    return (o >= 'A' && o <= 'Z') ? static_cast<uint8_t>(o + 32) : o;
}

bool same_name(const char *row, const std::string &text, bool ignore_case) {
    if (row == nullptr) return false;
    if (std::strlen(row) != text.size()) return false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (ignore_case ? fold(row[i]) != fold(text[i]) : row[i] != text[i]) return false;
    }
    return true;
}

int scan_up(const wsp_table &t, uint16_t rows, const std::string &text, bool ignore_case) {
    for (uint16_t i = 0; i < rows && i < t.rows; ++i)
        if (same_name(t.name(i), text, ignore_case)) return i;
    return -1;
}

int scan_down(const wsp_table &t, int from, const std::string &text, bool ignore_case) {
    for (int i = from < t.rows ? from : t.rows - 1; i >= 0; --i)
        if (same_name(t.name(static_cast<uint16_t>(i)), text, ignore_case)) return i;
    return -1;
}

std::vector<uint16_t> scan_all(const wsp_table &t, const std::string &text, bool ignore_case) {
    std::vector<uint16_t> rows;
    for (uint16_t i = 0; i < t.rows; ++i)
        if (same_name(t.name(i), text, ignore_case)) rows.push_back(i);
    return rows;
}

// ---- the texts tried ----

std::string upper(std::string s) {
    for (char &c : s)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return s;
}

std::string lower(std::string s) {
    for (char &c : s) c = static_cast<char>(fold(c));
    return s;
}

std::string mixed(std::string s) {
    for (size_t i = 0; i < s.size(); i += 2)
        if (s[i] >= 'a' && s[i] <= 'z') s[i] = static_cast<char>(s[i] - 32);
    return s;
}

// Every name of every table with its variants, plus texts no table holds.
std::vector<std::string> candidate_texts() {
    std::vector<std::string> texts = {
        "", " ", "x", "zz-unknown", "accept ", " accept", "accept\t", "text/html;", "iso-8859-1\n",
        "\xC3\xA9", "caf\xC3\xA9", "\x80", "\xFF", "ISO-8859-1", "Get", "get", "1.1", "*",
        std::string(300, 'a'), std::string(70000, 'b'),
    };
    for (const named_table &n : kTables) {
        for (uint16_t r = 0; r < n.table.rows; ++r) {
            const char *name = n.table.name(r);
            if (name == nullptr) continue;
            std::string s(name);
            texts.push_back(s);
            texts.push_back(upper(s));
            texts.push_back(lower(s));
            texts.push_back(mixed(s));
            texts.push_back(s + "x");
            texts.push_back(s + "-");
            if (!s.empty()) {
                texts.push_back(s.substr(0, s.size() - 1));
                texts.push_back(s.substr(1));
                std::string altered = s;
                altered[altered.size() / 2] = static_cast<char>(altered[altered.size() / 2] ^ 0x01);
                texts.push_back(altered);
            }
        }
    }
    std::sort(texts.begin(), texts.end());
    texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
    return texts;
}

const std::vector<std::string> &texts() {
    static const std::vector<std::string> all = candidate_texts();
    return all;
}

// The row limits worth trying for one text: the ends, and each side of
// every row that holds the text in any case (the answer can change nowhere
// else).  Small tables try them all.
constexpr uint16_t kEveryLimitRows = 16;
std::vector<int> limits_for(const wsp_table &t, const std::string &text) {
    std::vector<int> limits;
    if (t.rows <= kEveryLimitRows) {
        for (int l = 0; l <= t.rows; ++l) limits.push_back(l);
        return limits;
    }
    limits = {0, 1, t.rows - 1, t.rows};
    for (uint16_t r : scan_all(t, text, true)) {
        limits.push_back(r);
        limits.push_back(r + 1);
    }
    return limits;
}

} // namespace

TEST(TableIndex, FirstRowFromTheTopMatchesTheScan) {
    for (const named_table &n : kTables) {
        for (const std::string &text : texts()) {
            for (bool ignore_case : {false, true}) {
                for (int limit : limits_for(n.table, text)) {
                    const uint16_t rows = static_cast<uint16_t>(limit);
                    ASSERT_EQ(wsp_find_name(n.table, rows, text.c_str(), ignore_case),
                              scan_up(n.table, rows, text, ignore_case))
                        << n.label << " '" << text.substr(0, 40) << "' rows " << rows << " case " << ignore_case;
                }
            }
        }
    }
}

TEST(TableIndex, HighestRowNotAboveTheStartMatchesTheScan) {
    for (const named_table &n : kTables) {
        for (const std::string &text : texts()) {
            for (bool ignore_case : {false, true}) {
                for (int limit : limits_for(n.table, text)) {
                    const int from = limit - 1;
                    ASSERT_EQ(wsp_find_name_down(n.table, from, text.c_str(), ignore_case),
                              scan_down(n.table, from, text, ignore_case))
                        << n.label << " '" << text.substr(0, 40) << "' from " << from << " case " << ignore_case;
                }
            }
        }
    }
}

TEST(TableIndex, EveryRowOfANameInRowOrder) {
    uint16_t rows[WSP_LANGUAGE_RUN_ROWS];
    for (const named_table &n : kTables) {
        for (const std::string &text : texts()) {
            for (bool ignore_case : {false, true}) {
                uint16_t count = wsp_find_name_rows(n.table, text.c_str(), ignore_case, rows, WSP_LANGUAGE_RUN_ROWS);
                std::vector<uint16_t> found(rows, rows + count);
                ASSERT_EQ(found, scan_all(n.table, text, ignore_case)) << n.label << " '" << text.substr(0, 40) << "'";
            }
        }
    }
}

TEST(TableIndex, RowsOfANameStopAtTheCapacity) {
    uint16_t rows[3] = {0xEEEE, 0xEEEE, 0xEEEE};
    EXPECT_EQ(wsp_find_name_rows(wsp_header_names, "cache-control", false, rows, 2), 2);
    EXPECT_EQ(rows[0], WSP_HDR_CACHE_CONTROL);
    EXPECT_EQ(rows[1], WSP_HDR_CACHE_CONTROL_1_3);
    EXPECT_EQ(rows[2], 0xEEEE);
    EXPECT_EQ(wsp_find_name_rows(wsp_header_names, "cache-control", false, rows, 0), 0);
    EXPECT_EQ(wsp_find_name_rows(wsp_header_names, nullptr, false, rows, 3), 0);
    EXPECT_EQ(wsp_find_name_rows(wsp_header_names, "cache-control", false, nullptr, 3), 0);
}

// A counted text need not end where the name does: the characters after it
// are not looked at.
TEST(TableIndex, CountedTextMatchesTheScanOfItsPrefix) {
    for (const named_table &n : kTables) {
        for (const std::string &text : texts()) {
            if (text.size() > 0xFFFF) continue;
            const std::string padded = text + "#tail";
            for (bool ignore_case : {false, true}) {
                ASSERT_EQ(wsp_find_name_n(n.table, n.table.rows, padded.c_str(), static_cast<uint16_t>(text.size()),
                                          ignore_case),
                          scan_up(n.table, n.table.rows, text, ignore_case))
                    << n.label << " '" << text.substr(0, 40) << "'";
            }
        }
    }
    EXPECT_EQ(wsp_find_name_n(wsp_header_names, WSP_HEADER_NAME_ROWS, nullptr, 0, false), -1);
}

TEST(TableIndex, NullTextNeverMatches) {
    for (const named_table &n : kTables) {
        EXPECT_EQ(wsp_find_name(n.table, n.table.rows, nullptr, true), -1) << n.label;
        EXPECT_EQ(wsp_find_name_down(n.table, n.table.rows - 1, nullptr, false), -1) << n.label;
    }
}

// The header encoder's search: the lower-cased name, downward from each
// version's highest code.
TEST(TableIndex, HeaderNamesUnderEveryVersion) {
    for (const wsp_version_limit &v : wsp_version_limits) {
        for (const std::string &text : texts()) {
            const int from = v.header_end - 1;
            ASSERT_EQ(wsp_find_name_down(wsp_header_names, from, text.c_str(), false),
                      scan_down(wsp_header_names, from, text, false))
                << v.text << " '" << text.substr(0, 40) << "'";
        }
    }
}

// The content-type encoder's, the Accept encoder's and the "type"
// parameter's searches within each version's rows.
TEST(TableIndex, ContentTypesUnderEveryVersion) {
    for (const wsp_version_limit &v : wsp_version_limits) {
        for (const std::string &text : texts()) {
            const uint16_t rows = v.content_type_rows;
            ASSERT_EQ(wsp_find_name_down(wsp_content_types, rows - 1, text.c_str(), true),
                      scan_down(wsp_content_types, rows - 1, text, true))
                << v.text << " '" << text.substr(0, 40) << "'";
            ASSERT_EQ(wsp_find_name(wsp_content_types, rows, text.c_str(), false),
                      scan_up(wsp_content_types, rows, text, false))
                << v.text << " '" << text.substr(0, 40) << "'";
        }
    }
}

// The parameter encoder's: every row of a name below each version's limit.
TEST(TableIndex, ParamNamesUnderEveryVersion) {
    uint16_t rows[WSP_PARAM_NAME_ROWS];
    for (const wsp_version_limit &v : wsp_version_limits) {
        for (const std::string &text : texts()) {
            uint16_t count = wsp_find_name_rows(wsp_param_names, text.c_str(), true, rows, WSP_PARAM_NAME_ROWS);
            std::vector<uint16_t> admitted;
            for (uint16_t i = 0; i < count; ++i)
                if (rows[i] < v.param_rows) admitted.push_back(rows[i]);
            std::vector<uint16_t> expected;
            for (uint16_t r : scan_all(wsp_param_names, text, true))
                if (r < v.param_rows) expected.push_back(r);
            ASSERT_EQ(admitted, expected) << v.text << " '" << text.substr(0, 40) << "'";
        }
    }
}

// The texts are read as octets: a byte above 0x7F is never folded, whatever
// the host's char signedness.
TEST(TableIndex, HighOctetsAreNotFolded) {
    std::string almost = "iso-8859-1";
    almost[0] = static_cast<char>('I' | 0x80);
    EXPECT_EQ(wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, almost.c_str(), true), -1);
    almost[0] = static_cast<char>('i' | 0x80);
    EXPECT_EQ(wsp_find_name(wsp_charsets, WSP_CHARSET_ROWS, almost.c_str(), true), -1);
}

TEST(TableIndex, LoweredHeaderNameMatchesTheScanOfItsLowerCase) {
    // The header encoder's lookup lower-cases the name in place while it
    // hashes it, then searches downward over the exact rows.
    for (const std::string &text : texts()) {
        for (int limit : limits_for(wsp_header_names, text)) {
            const int from = limit - 1;
            std::vector<char> copy(text.begin(), text.end());
            copy.push_back('\0');
            ASSERT_EQ(wsp_lower_find_name_down(wsp_header_names, from, copy.data()),
                      scan_down(wsp_header_names, from, lower(text), false))
                << "'" << text.substr(0, 40) << "' from " << from;
            ASSERT_EQ(std::string(copy.data(), text.size()), lower(text));
        }
    }
    EXPECT_EQ(wsp_lower_find_name_down(wsp_header_names, 0x47, nullptr), -1);
}

TEST(TableIndex, RowsFlagALaterRowOfTheSameName) {
    // A probe stops after a row without the flag: no later row can match.
    EXPECT_TRUE(wsp_header_names.repeated(WSP_HDR_CACHE_CONTROL));
    EXPECT_TRUE(wsp_header_names.repeated(WSP_HDR_CACHE_CONTROL_1_3));
    EXPECT_FALSE(wsp_header_names.repeated(WSP_HDR_CACHE_CONTROL_1_4));
    EXPECT_FALSE(wsp_header_names.repeated(WSP_HDR_AGE));
    EXPECT_TRUE(wsp_charsets.repeated(1));    // "iso-8859-1", again at row 114
    EXPECT_FALSE(wsp_charsets.repeated(114));
    EXPECT_TRUE(wsp_param_names.repeated(0x03)); // "type", again at 0x09
    EXPECT_FALSE(wsp_param_names.repeated(0x09));
}

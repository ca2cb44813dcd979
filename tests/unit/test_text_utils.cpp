// Octet and character classes, the quote-aware tokenizer, unquoted search,
// number formatting, lower-casing, trimming and case-insensitive compare.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "primitives.h"
#include "wsp_test_support.h"

using namespace wsp_test;

// ---- wsp_value_class --------------------------------------------------------------

TEST(ValueClass, Boundaries) {
    const struct {
        int octet;
        uint8_t cls;
    } cases[] = {{0, 0},   {30, 0},  {31, 1},  {32, 4},  {33, 4},  {34, 3},
                 {35, 4},  {126, 4}, {127, 2}, {128, 5}, {200, 5}, {255, 5}};
    for (const auto &c : cases) {
        uint8_t octet = static_cast<uint8_t>(c.octet);
        uint8_t cls = 0xAA;
        wsp_value_class(&octet, &cls);
        EXPECT_EQ(cls, c.cls) << c.octet;
    }
}

TEST(ValueClass, AgreesWithInlineClassifier) {
    for (int o = 0; o < 256; ++o) {
        uint8_t octet = static_cast<uint8_t>(o);
        uint8_t cls = 0xAA;
        wsp_value_class(&octet, &cls);
        EXPECT_EQ(cls, wsp_class_of(octet)) << o;
    }
}

// ---- character classes -----------------------------------------------------------

TEST(TokenChar, SeparatorsAndRanges) {
    const std::string separators = "()<>@,;:\\\"/[]?={} \t";
    for (int c = 0; c < 256; ++c) {
        bool expected = c >= 32 && c <= 126 && separators.find(static_cast<char>(c)) == std::string::npos;
        EXPECT_EQ(wsp_is_token_char(static_cast<uint8_t>(c)), expected) << c;
    }
    EXPECT_TRUE(wsp_is_token_char('a'));
    EXPECT_TRUE(wsp_is_token_char('-'));
    EXPECT_TRUE(wsp_is_token_char('~'));
    EXPECT_FALSE(wsp_is_token_char('/'));
    EXPECT_FALSE(wsp_is_token_char(0x80));
}

TEST(TextChar, AllowedAndForbidden) {
    for (int c = 0; c < 256; ++c) {
        bool expected = c == 9 || c == 10 || c == 13 || (c >= 32 && c <= 126) || c >= 128;
        EXPECT_EQ(wsp_is_text_char(static_cast<uint8_t>(c)), expected) << c;
    }
}

// ---- wsp_strtoken ------------------------------------------------------------------

namespace {

// Every token of text cut at delim, in order.
std::vector<std::string> tokens(const std::string &text, const char *delim) {
    TextCopy copy(text);
    char *pos = copy.get();
    std::vector<std::string> out;
    for (int guard = 0; guard < 100; ++guard) {
        char *t = wsp_strtoken(&pos, delim);
        if (t == nullptr) return out;
        out.emplace_back(t);
    }
    ADD_FAILURE() << "tokenizer did not end";
    return out;
}

using Tokens = std::vector<std::string>;

} // namespace

TEST(StrToken, QuotedSectionKeepsItsDelimiter) {
    EXPECT_EQ(tokens("a,\"b,c\",d", ","), (Tokens{"a", "\"b,c\"", "d"}));
}

TEST(StrToken, LeadingDelimitersSkipped) {
    EXPECT_EQ(tokens(",,x", ","), (Tokens{"x"}));
    EXPECT_EQ(tokens(",,a,b", ","), (Tokens{"a", "b"}));
}

TEST(StrToken, EmptyFieldsSkipped) { EXPECT_EQ(tokens("a,,b,", ","), (Tokens{"a", "b"})); }

TEST(StrToken, OnlyDelimitersGiveOneEmptyToken) {
    EXPECT_EQ(tokens(",,", ","), (Tokens{""}));
    EXPECT_EQ(tokens(",", ","), (Tokens{""}));
}

TEST(StrToken, EmptyTokenPointsAtTerminator) {
    TextCopy copy(",,");
    char *start = copy.get();
    char *pos = start;
    char *t = wsp_strtoken(&pos, ",");
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t, start + 2);
    EXPECT_EQ(pos, start + 2);
    EXPECT_EQ(wsp_strtoken(&pos, ","), nullptr);
}

TEST(StrToken, CutsInPlaceAndMovesCursor) {
    TextCopy copy("ab:cd");
    char *start = copy.get();
    char *pos = start;
    char *t = wsp_strtoken(&pos, ":");
    EXPECT_EQ(t, start);
    EXPECT_EQ(std::memcmp(start, "ab\0cd", 6), 0);
    EXPECT_EQ(pos, start + 3);
    t = wsp_strtoken(&pos, ":");
    EXPECT_EQ(t, start + 3);
    EXPECT_EQ(pos, start + 5); // the terminating NUL
    EXPECT_EQ(wsp_strtoken(&pos, ":"), nullptr);
    EXPECT_EQ(pos, start + 5);
}

TEST(StrToken, SingleTokenWithoutDelimiter) { EXPECT_EQ(tokens("abc", ","), (Tokens{"abc"})); }

TEST(StrToken, DelimiterRightAfterClosingMark) {
    EXPECT_EQ(tokens("\"a,b\",c", ","), (Tokens{"\"a,b\"", "c"}));
}

TEST(StrToken, CharacterAfterClosingMarkNeverOpensSection) {
    // The mark right after a closing mark is passed over as an ordinary
    // character: the comma at index 4 splits.
    EXPECT_EQ(tokens("\"a\"\",b\",c", ","), (Tokens{"\"a\"\"", "b\"", "c"}));
}

TEST(StrToken, UnbalancedMarkIsOrdinary) {
    EXPECT_EQ(tokens("a\"b,c", ","), (Tokens{"a\"b", "c"}));
    EXPECT_EQ(tokens("ab\"", ","), (Tokens{"ab\""}));
    EXPECT_EQ(tokens("\"a,b", ","), (Tokens{"\"a", "b"}));
}

TEST(StrToken, TwoQuotedSections) {
    EXPECT_EQ(tokens("\"a;b\" x \"c;d\";e", ";"), (Tokens{"\"a;b\" x \"c;d\"", "e"}));
}

TEST(StrToken, NewlinesAndColons) {
    EXPECT_EQ(tokens("accept:text/plain\nx-a:\"q:r\"\n", "\n"), (Tokens{"accept:text/plain", "x-a:\"q:r\""}));
    EXPECT_EQ(tokens("x-a:\"q:r\":s", ":"), (Tokens{"x-a", "\"q:r\"", "s"}));
}

TEST(StrToken, RefusedArguments) {
    TextCopy copy("a,b");
    char *pos = copy.get();
    char *null_pos = nullptr;
    EXPECT_EQ(wsp_strtoken(&pos, ",;"), nullptr);
    EXPECT_EQ(wsp_strtoken(nullptr, ","), nullptr);
    EXPECT_EQ(wsp_strtoken(&null_pos, ","), nullptr);
    EXPECT_EQ(wsp_strtoken(&pos, nullptr), nullptr);
    EXPECT_EQ(wsp_strtoken(&pos, ""), nullptr);
    EXPECT_EQ(pos, copy.get());
    EXPECT_STREQ(copy.get(), "a,b");
    TextCopy empty("");
    char *epos = empty.get();
    EXPECT_EQ(wsp_strtoken(&epos, ","), nullptr);
    EXPECT_EQ(epos, empty.get());
}

TEST(StrToken, HighOctetDelimiter) {
    std::string text = "a\xB7" "b";
    EXPECT_EQ(tokens(text, "\xB7"), (Tokens{"a", "b"}));
}

TEST(StrToken, TextLongerThan16BitsIsOneToken) {
    std::string text(70000, 'k');
    Tokens got = tokens(text + ",z", ",");
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(got[0].size(), 70000u);
    EXPECT_EQ(got[1], "z");
}

// ---- wsp_strtoken against the character-at-a-time tokenizer ------------------------

namespace {

// The tokenizer as it was before it skipped runs of ordinary characters in
// one call: one character per step.  Kept here only as the reference the
// faster one must match exactly.
char *reference_strtoken(char **pos, const char *delim) {
    if (delim == nullptr || delim[0] == '\0' || delim[1] != '\0') return nullptr;
    if (pos == nullptr || *pos == nullptr || (*pos)[0] == '\0') return nullptr;
    const uint8_t d = static_cast<uint8_t>(delim[0]);
    char *s = *pos;
    size_t i = 0;
    bool unbalanced = false;
    for (;;) {
        uint8_t tested = static_cast<uint8_t>(s[i]);
        if (tested == '"' && !unbalanced) {
            const char *close = std::strchr(s + i + 1, '"');
            if (close == nullptr) {
                unbalanced = true;
            } else {
                i = static_cast<size_t>(close - s) + 1;
                tested = static_cast<uint8_t>(s[i]);
            }
        }
        if (tested == d) {
            if (i > 0) {
                s[i] = '\0';
                *pos = s + i + 1;
                return s;
            }
            ++s;
            continue;
        }
        if (tested == 0) {
            *pos = s + i;
            return s;
        }
        ++i;
    }
}

// A small deterministic generator (xorshift32): the same texts on every run.
struct TextDice {
    uint32_t state;
    uint32_t next() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return state;
    }
};

// Cuts the same text with both tokenizers, token by token, and compares
// the returned offsets, the cursor offsets and the whole text after each
// step.
void expect_same_cuts(const std::string &text, const char *delim, const char *label) {
    std::vector<char> mine(text.begin(), text.end());
    mine.push_back('\0');
    std::vector<char> theirs = mine;
    char *pos_mine = mine.data();
    char *pos_theirs = theirs.data();
    for (size_t step = 0; step <= text.size() + 2; ++step) {
        char *t_mine = wsp_strtoken(&pos_mine, delim);
        char *t_theirs = reference_strtoken(&pos_theirs, delim);
        ASSERT_EQ(t_mine == nullptr, t_theirs == nullptr) << label << " step " << step;
        ASSERT_EQ(pos_mine - mine.data(), pos_theirs - theirs.data()) << label << " step " << step;
        ASSERT_EQ(mine, theirs) << label << " step " << step;
        if (t_mine == nullptr) return;
        ASSERT_EQ(t_mine - mine.data(), t_theirs - theirs.data()) << label << " step " << step;
    }
    FAIL() << label << ": more tokens than characters";
}

} // namespace

TEST(StrToken, SameCutsAsOneCharacterAtATime) {
    // Alphabets heavy in the delimiter, quotation marks and the other
    // delimiters' characters, so that quotes pair, stay unbalanced, sit
    // next to delimiters and follow closing marks.
    const char *delims[] = {",", ";", "\n", ":", "=", " ", ".", "\"", "\xe9"};
    const char alphabet[] = {',', ';', '\n', ':', '=', ' ', '.', '"', '"', '"', 'a', 'b', '\r', '\xe9', '\x7f'};
    TextDice dice{0x2545F491u};
    for (const char *delim : delims) {
        for (int round = 0; round < 3000; ++round) {
            size_t length = dice.next() % 65; // 0..64
            std::string text;
            for (size_t k = 0; k < length; ++k) {
                uint32_t roll = dice.next() % 4;
                // One character in four is the delimiter itself.
                text += roll == 0 ? delim[0] : alphabet[dice.next() % sizeof alphabet];
            }
            expect_same_cuts(text, delim, text.c_str());
            if (HasFatalFailure()) return;
        }
    }
    // Refused arguments agree too.
    expect_same_cuts("", ",", "empty");
    expect_same_cuts("a,b", ",;", "two-character delimiter");
    expect_same_cuts("a,b", "", "empty delimiter");
}

// ---- wsp_next_token_n ------------------------------------------------------------

TEST(NextToken, GivesTheLengthOnTheDirectCutAndTheQuoteWalk) {
    TextCopy copy(",,ab,\"c,d\"e,f");
    char *pos = copy.get();
    size_t n = 99;
    char *t = wsp_next_token_n(&pos, ',', &n); // no mark before the delimiter
    EXPECT_STREQ(t, "ab");
    EXPECT_EQ(n, 2u);
    t = wsp_next_token_n(&pos, ',', &n); // a mark before the delimiter: the walk
    EXPECT_STREQ(t, "\"c,d\"e");
    EXPECT_EQ(n, 6u);
    t = wsp_next_token_n(&pos, ',', &n); // no delimiter left
    EXPECT_STREQ(t, "f");
    EXPECT_EQ(n, 1u);
    EXPECT_EQ(*pos, '\0');
    EXPECT_EQ(wsp_next_token_n(&pos, ',', &n), nullptr);
}

TEST(NextToken, MarkAfterTheDelimiterKeepsTheDirectCut) {
    TextCopy copy("ab;\"c");
    char *pos = copy.get();
    size_t n = 0;
    EXPECT_STREQ(wsp_next_token_n(&pos, ';', &n), "ab");
    EXPECT_EQ(n, 2u);
    EXPECT_STREQ(wsp_next_token_n(&pos, ';', &n), "\"c"); // unbalanced: an ordinary character
    EXPECT_EQ(n, 2u);
}

// ---- wsp_find_unquoted ------------------------------------------------------------

TEST(FindUnquoted, FindsFirstOccurrence) {
    const char *hay = "a;b;c";
    EXPECT_EQ(wsp_find_unquoted(hay, ";"), hay + 1);
    const char *hay2 = "abcabd";
    EXPECT_EQ(wsp_find_unquoted(hay2, "abd"), hay2 + 3);
}

TEST(FindUnquoted, SkipsQuotedSections) {
    const char *hay = "\"x;y\";z";
    EXPECT_EQ(wsp_find_unquoted(hay, ";"), hay + 5);
    const char *hay2 = "\"a\"\"b;\";c";
    EXPECT_EQ(wsp_find_unquoted(hay2, ";"), hay2 + 7);
}

TEST(FindUnquoted, UnclosedQuoteGivesNull) { EXPECT_EQ(wsp_find_unquoted("a\"b;c", ";"), nullptr); }

TEST(FindUnquoted, NotFoundGivesNull) {
    EXPECT_EQ(wsp_find_unquoted("abc", ";"), nullptr);
    EXPECT_EQ(wsp_find_unquoted("\"a;b\"", ";"), nullptr);
}

TEST(FindUnquoted, CaseSensitive) {
    EXPECT_EQ(wsp_find_unquoted("ABC", "b"), nullptr);
}

TEST(FindUnquoted, TooFewCharactersLeftGivesNull) {
    EXPECT_EQ(wsp_find_unquoted("xxab", "abc"), nullptr);
}

TEST(FindUnquoted, EmptyOrNullNeedleGivesHay) {
    const char *hay = "abc";
    EXPECT_EQ(wsp_find_unquoted(hay, ""), hay);
    EXPECT_EQ(wsp_find_unquoted(hay, nullptr), hay);
    EXPECT_EQ(wsp_find_unquoted(nullptr, nullptr), nullptr);
}

TEST(FindUnquoted, EmptyOrNullHayGivesNull) {
    EXPECT_EQ(wsp_find_unquoted("", "a"), nullptr);
    EXPECT_EQ(wsp_find_unquoted(nullptr, "a"), nullptr);
}

TEST(FindUnquoted, NeedleStartingWithMark) {
    const char *hay = "x\"y";
    EXPECT_EQ(wsp_find_unquoted(hay, "\"y"), hay + 1);
}

TEST(FindUnquoted, MismatchAtCandidateContinues) {
    const char *hay = "q=1;q=2";
    EXPECT_EQ(wsp_find_unquoted(hay, "q=2"), hay + 4);
}

// ---- wsp_uint_to_text ------------------------------------------------------------

TEST(UintToText, WritesDigitsBeforeEnd) {
    char area[12];
    std::memset(area, 'Z', sizeof area);
    char *end = area + 11;
    char *p = wsp_uint_to_text(4294967295u, end);
    EXPECT_EQ(p, area + 1);
    EXPECT_STREQ(p, "4294967295");
    EXPECT_EQ(area[0], 'Z');
}

TEST(UintToText, ZeroAndSmall) {
    char area[4];
    char *p = wsp_uint_to_text(0, area + 3);
    EXPECT_EQ(p, area + 2);
    EXPECT_STREQ(p, "0");
    EXPECT_STREQ(wsp_uint_to_text(10, area + 3), "10");
    EXPECT_STREQ(wsp_uint_to_text(999, area + 3), "999");
}

// ---- wsp_str_lower -----------------------------------------------------------------

TEST(StrLower, AsciiLettersOnly) {
    TextCopy t("AbC-Z@[`{\xC9\xE9");
    wsp_str_lower(t.get());
    EXPECT_STREQ(t.get(), "abc-z@[`{\xC9\xE9");
}

TEST(StrLower, EmptyAndNull) {
    TextCopy t("");
    wsp_str_lower(t.get());
    EXPECT_STREQ(t.get(), "");
    wsp_str_lower(nullptr);
}

// ---- wsp_lower_run ---------------------------------------------------------------

TEST(LowerRun, EveryOctetAtEveryPlaceOfAWord) {
    // A machine word goes at a time (eight octets or four): every octet
    // value at every position of a run that starts at each alignment, with
    // the octets around it untouched.
    constexpr size_t kRun = 17;
    for (size_t start = 0; start < 8; ++start) {
        for (unsigned v = 0; v < 256; ++v) {
            for (size_t at = 0; at < kRun; ++at) {
                char area[32];
                std::memset(area, 'Q', sizeof area);
                std::memset(area + start, 'K', kRun);
                area[start + at] = static_cast<char>(v);
                wsp_lower_run(area + start, kRun);
                const uint8_t expected = (v >= 'A' && v <= 'Z') ? static_cast<uint8_t>(v + 32) : static_cast<uint8_t>(v);
                ASSERT_EQ(static_cast<uint8_t>(area[start + at]), expected) << v << " at " << at << " from " << start;
                for (size_t i = 0; i < sizeof area; ++i) {
                    if (i == start + at) continue;
                    const char around = (i >= start && i < start + kRun) ? 'k' : 'Q';
                    ASSERT_EQ(area[i], around) << v << " at " << at << " from " << start << ", octet " << i;
                }
            }
        }
    }
}

// ---- wsp_trim ------------------------------------------------------------------------

TEST(Trim, BothEndsAnyMix) {
    TextCopy t(" \t\r\n a b \r\n\t ");
    char *pos = t.get();
    wsp_trim(&pos);
    EXPECT_EQ(pos, t.get() + 5);
    EXPECT_STREQ(pos, "a b");
    EXPECT_EQ(t.get()[8], '\0');
}

TEST(Trim, OnlyBlanks) {
    TextCopy t(" \t ");
    char *pos = t.get();
    wsp_trim(&pos);
    EXPECT_EQ(pos, t.get() + 3);
    EXPECT_STREQ(pos, "");
}

TEST(Trim, NothingToTrim) {
    TextCopy t("abc");
    char *pos = t.get();
    wsp_trim(&pos);
    EXPECT_EQ(pos, t.get());
    EXPECT_STREQ(pos, "abc");
}

TEST(Trim, OtherWhiteSpaceKept) {
    TextCopy t("\va\f");
    char *pos = t.get();
    wsp_trim(&pos);
    EXPECT_STREQ(pos, "\va\f");
}

TEST(Trim, EmptyAndNull) {
    TextCopy t("");
    char *pos = t.get();
    wsp_trim(&pos);
    EXPECT_EQ(pos, t.get());
    wsp_trim(nullptr);
    char *null_pos = nullptr;
    wsp_trim(&null_pos);
    EXPECT_EQ(null_pos, nullptr);
}

// ---- wsp_strcasecmp -----------------------------------------------------------------

TEST(StrCaseCmp, EqualIgnoringAsciiCase) {
    EXPECT_EQ(wsp_strcasecmp("Content-Type", "content-TYPE"), 0);
    EXPECT_EQ(wsp_strcasecmp("", ""), 0);
}

TEST(StrCaseCmp, Ordering) {
    EXPECT_LT(wsp_strcasecmp("abc", "ABD"), 0);
    EXPECT_GT(wsp_strcasecmp("abd", "ABC"), 0);
    EXPECT_LT(wsp_strcasecmp("ab", "abc"), 0);
    EXPECT_GT(wsp_strcasecmp("abc", "AB"), 0);
}

TEST(StrCaseCmp, HighOctetsCompareUnsignedAndUnfolded) {
    EXPECT_GT(wsp_strcasecmp("\xE9", "a"), 0);
    EXPECT_NE(wsp_strcasecmp("\xC9", "\xE9"), 0);
}

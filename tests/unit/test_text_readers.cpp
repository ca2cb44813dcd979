// Long-integer, Token-text, Text-string and text-value readers.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "primitives.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

// An output array pre-filled with 'Z' so that untouched positions show.
struct Out {
    char text[16];
    Out() { std::memset(text, 'Z', sizeof text); }
    std::string upto(size_t n) const { return std::string(text, n); }
};

} // namespace

// ---- wsp_read_long_int --------------------------------------------------------

TEST(ReadLongInt, BigEndianValue) {
    InBytes in(bytes({0x02, 0x12, 0x34, 0x99}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_read_long_int(&cursor, &v, 4), WSP_OK);
    EXPECT_EQ(v, 0x1234u);
    EXPECT_EQ(cursor, in.data() + 3);
}

TEST(ReadLongInt, FourOctets) {
    InBytes in(bytes({0x04, 0xDE, 0xAD, 0xBE, 0xEF}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_read_long_int(&cursor, &v, 5), WSP_OK);
    EXPECT_EQ(v, 0xDEADBEEFu);
    EXPECT_EQ(cursor, in.data() + 5);
}

TEST(ReadLongInt, ZeroOctetsIsZero) {
    InBytes in(bytes({0x00}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_read_long_int(&cursor, &v, 1), WSP_OK);
    EXPECT_EQ(v, 0u);
    EXPECT_EQ(cursor, in.data() + 1);
}

TEST(ReadLongInt, MoreThanFourOctetsRefused) {
    InBytes in(bytes({0x05, 1, 2, 3, 4, 5}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_read_long_int(&cursor, &v, 10), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(ReadLongInt, CountComparedWithTheOctetsAfterTheLengthOctet) {
    // n equal to the octets that follow the length octet passes, and the
    // n + 1 octets read are exactly the remaining ones.
    InBytes in(bytes({0x02, 0x12, 0x34}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_read_long_int(&cursor, &v, 3), WSP_OK);
    EXPECT_EQ(v, 0x1234u);
    EXPECT_EQ(cursor, in.data() + 3);
}

TEST(ReadLongInt, CountAboveTheOctetsAfterTheLengthOctetRefused) {
    InBytes in(bytes({0x02, 0x12, 0x34}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_read_long_int(&cursor, &v, 2), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(ReadLongInt, NoOctetRemainingRefusedBeforeReading) {
    // The length octet itself lies past the input: nothing is read.
    InBytes in(bytes({0x00}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_read_long_int(&cursor, &v, 0), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(ReadLongInt, NullArgumentsRefused) {
    uint8_t in[2] = {1, 2};
    const uint8_t *cursor = in;
    const uint8_t *null_cursor = nullptr;
    uint32_t v = 0;
    EXPECT_EQ(wsp_read_long_int(nullptr, &v, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_read_long_int(&null_cursor, &v, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_read_long_int(&cursor, nullptr, 1), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in);
}

// ---- wsp_read_token_text --------------------------------------------------------

TEST(ReadTokenText, ReadsUpToNul) {
    InBytes in(bytes({'a', 'b', 'c', 0, 'x'}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 5, 10), WSP_OK);
    EXPECT_STREQ(out.text, "abc");
    EXPECT_EQ(cursor, in.data() + 4);
}

TEST(ReadTokenText, EmptyText) {
    InBytes in(bytes({0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 1, 10), WSP_OK);
    EXPECT_STREQ(out.text, "");
    EXPECT_EQ(cursor, in.data() + 1);
}

TEST(ReadTokenText, NulAsLastAvailableOctet) {
    InBytes in(bytes({'a', 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 3, 10), WSP_OK);
    EXPECT_STREQ(out.text, "ab");
    EXPECT_EQ(cursor, in.data() + 3);
}

TEST(ReadTokenText, RunsPastEndOfInput) {
    // No NUL inside the input: the octet after it is never read.
    InBytes in(bytes({'a', 'b', 'c'}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 3, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(4), std::string("abc\0", 4));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTokenText, NulJustPastBoundIsNotRead) {
    // The NUL lies at index `remaining`: outside the input handed in, so it
    // is not looked at and the text counts as running past the end.
    InBytes in(bytes({'a', 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 2, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(3), std::string("ab\0", 3));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTokenText, RemainingZeroReadsNothing) {
    InBytes in(bytes({'a'}));
    const uint8_t *end = in.data() + 1;
    const uint8_t *cursor = end;
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 0, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.text[0], '\0');
    EXPECT_EQ(cursor, end);
}

TEST(ReadTokenText, TruncatedAtEveryLength) {
    const Bytes full = bytes({'t', 'o', 'k', 0});
    for (size_t n = 0; n < full.size(); ++n) {
        InBytes in(Bytes(full.begin(), full.begin() + n));
        const uint8_t *cursor = in.data();
        Out out;
        EXPECT_EQ(wsp_read_token_text(&cursor, out.text, static_cast<uint16_t>(n), 10), WSP_ERR_FAIL) << n;
        EXPECT_EQ(std::string(out.text), std::string("tok", n)) << n;
        EXPECT_EQ(cursor, in.data()) << n;
    }
}

TEST(ReadTokenText, CapacityFilledBeforeNul) {
    InBytes in(bytes({'a', 'b', 'c', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 4, 3), WSP_ERR_TRUNCATED);
    EXPECT_EQ(out.upto(4), "abcZ"); // left unterminated
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTokenText, CapacityExactlyHoldsTextAndNul) {
    InBytes in(bytes({'a', 'b', 'c', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 4, 4), WSP_OK);
    EXPECT_STREQ(out.text, "abc");
    EXPECT_EQ(cursor, in.data() + 4);
}

TEST(ReadTokenText, CapacityTestComesBeforeEndOfInput) {
    InBytes in(bytes({'a', 'b'}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 2, 2), WSP_ERR_TRUNCATED);
    EXPECT_EQ(out.upto(3), "abZ");
}

TEST(ReadTokenText, CapacityZero) {
    InBytes in(bytes({0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 1, 0), WSP_ERR_TRUNCATED);
    EXPECT_EQ(out.text[0], 'Z');
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTokenText, SeparatorRefused) {
    InBytes in(bytes({'a', '/', 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 4, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(2), std::string("a\0", 2));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTokenText, ControlAndHighOctetsRefused) {
    const int bad[] = {0x01, 0x09, 0x20, 0x7F, 0x80, 0xFF};
    for (int c : bad) {
        InBytes in(bytes({'x', c, 0}));
        const uint8_t *cursor = in.data();
        Out out;
        EXPECT_EQ(wsp_read_token_text(&cursor, out.text, 3, 10), WSP_ERR_FAIL) << c;
        EXPECT_EQ(out.upto(2), std::string("x\0", 2)) << c;
        EXPECT_EQ(cursor, in.data());
    }
}

TEST(ReadTokenText, NullArgumentsRefused) {
    uint8_t in[1] = {0};
    const uint8_t *cursor = in;
    char out[4];
    EXPECT_EQ(wsp_read_token_text(nullptr, out, 1, 4), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_read_token_text(&cursor, nullptr, 1, 4), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in);
}

// ---- wsp_read_text_string ---------------------------------------------------------

TEST(ReadTextString, ReadsUpToNul) {
    InBytes in(bytes({'a', ' ', 'b', '/', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 5, 10), WSP_OK);
    EXPECT_STREQ(out.text, "a b/");
    EXPECT_EQ(cursor, in.data() + 5);
}

TEST(ReadTextString, KeepsLeadingQuotationMark) {
    InBytes in(bytes({'"', 'a', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 3, 10), WSP_OK);
    EXPECT_STREQ(out.text, "\"a");
}

TEST(ReadTextString, HighFirstOctetRefused) {
    InBytes in(bytes({0x80, 'a', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 3, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(2), std::string("\0Z", 2));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextString, HighFirstOctetWithNoCapacityStoresNothing) {
    InBytes in(bytes({0xE9, 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 2, 0), WSP_ERR_FAIL);
    EXPECT_EQ(out.text[0], 'Z');
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextString, HighOctetsAllowedAfterFirst) {
    InBytes in(bytes({'a', 0xE9, 0xFF, 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 4, 10), WSP_OK);
    EXPECT_EQ(out.upto(4), std::string("a\xE9\xFF\0", 4));
    EXPECT_EQ(cursor, in.data() + 4);
}

TEST(ReadTextString, QuoteSkippedAndNotCountedAgainstCapacity) {
    // Quote, 0xE9, 'b', NUL: remaining 4 covers all four octets, capacity 3
    // the three after the Quote; the cursor moves past all four.
    InBytes in(bytes({0x7F, 0xE9, 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 4, 3), WSP_OK);
    EXPECT_EQ(out.upto(3), std::string("\xE9" "b\0", 3));
    EXPECT_EQ(cursor, in.data() + 4);
}

TEST(ReadTextString, QuoteCountedAgainstTheOctetsLeft) {
    // Three octets left: the Quote and two more; the NUL would be the
    // fourth, past the input, and is never examined.
    InBytes in(bytes({0x7F, 0xE9, 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 3, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(3), std::string("\xE9" "b\0", 3));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextString, QuoteSkippedCapacityCountedAfterIt) {
    InBytes in(bytes({0x7F, 'a', 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 4, 2), WSP_ERR_TRUNCATED);
    EXPECT_EQ(out.upto(3), "abZ");
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextString, TabCrLfAllowed) {
    InBytes in(bytes({'a', '\t', '\r', '\n', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 5, 10), WSP_OK);
    EXPECT_STREQ(out.text, "a\t\r\n");
}

TEST(ReadTextString, ForbiddenOctetsRefused) {
    const int bad[] = {0x01, 0x08, 0x0B, 0x0C, 0x0E, 0x1F, 0x7F};
    for (int c : bad) {
        InBytes in(bytes({'x', c, 0}));
        const uint8_t *cursor = in.data();
        Out out;
        EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 3, 10), WSP_ERR_FAIL) << c;
        EXPECT_EQ(out.upto(2), std::string("x\0", 2)) << c;
        EXPECT_EQ(cursor, in.data());
    }
}

TEST(ReadTextString, RunsPastEndOfInput) {
    InBytes in(bytes({'a', 'b'}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 2, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(3), std::string("ab\0", 3));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextString, RemainingZeroReadsNothing) {
    InBytes in(bytes({0x80}));
    const uint8_t *end = in.data() + 1;
    const uint8_t *cursor = end;
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 0, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.text[0], '\0');
    cursor = end;
    Out none;
    EXPECT_EQ(wsp_read_text_string(&cursor, none.text, 0, 0), WSP_ERR_TRUNCATED);
    EXPECT_EQ(none.text[0], 'Z');
    EXPECT_EQ(cursor, end);
}

TEST(ReadTextString, CapacityFilled) {
    InBytes in(bytes({'a', 'b', 'c', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_string(&cursor, out.text, 4, 3), WSP_ERR_TRUNCATED);
    EXPECT_EQ(out.upto(4), "abcZ");
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextString, TruncatedAtEveryLength) {
    const Bytes full = bytes({0x7F, 0xC3, 'x', 0});
    for (size_t n = 1; n < full.size(); ++n) {
        InBytes in(Bytes(full.begin(), full.begin() + n));
        const uint8_t *cursor = in.data();
        Out out;
        // The Quote counts against the octets left like any other octet.
        EXPECT_EQ(wsp_read_text_string(&cursor, out.text, static_cast<uint16_t>(n), 10), WSP_ERR_FAIL) << n;
        EXPECT_EQ(cursor, in.data()) << n;
    }
}

// ---- wsp_read_text_value -------------------------------------------------------------

TEST(ReadTextValue, QuotedStringGetsItsClosingMarkBack) {
    InBytes in(bytes({'"', 'a', 'b', 'c', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, 5, 10), WSP_OK);
    EXPECT_STREQ(out.text, "\"abc\"");
    EXPECT_EQ(cursor, in.data() + 5);
}

TEST(ReadTextValue, PlainText) {
    InBytes in(bytes({'a', 'b', 'c', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_TEXT, 4, 10), WSP_OK);
    EXPECT_STREQ(out.text, "abc");
    EXPECT_EQ(cursor, in.data() + 4);
}

TEST(ReadTextValue, QuotedEmpty) {
    InBytes in(bytes({'"', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, 2, 10), WSP_OK);
    EXPECT_STREQ(out.text, "\"\"");
    EXPECT_EQ(cursor, in.data() + 2);
}

TEST(ReadTextValue, QuotedLeadingOctetIsNotExamined) {
    // Whatever stands at the cursor is passed over for class 3.
    InBytes in(bytes({0x01, 'a', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, 3, 10), WSP_OK);
    EXPECT_STREQ(out.text, "\"a\"");
}

TEST(ReadTextValue, OutputFullNothingTerminated) {
    InBytes in(bytes({'a', 'b', 'c', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_TEXT, 4, 3), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(4), "abcZ");
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextValue, PlainNulAtLastOutputPosition) {
    InBytes in(bytes({'a', 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_TEXT, 3, 3), WSP_OK);
    EXPECT_EQ(out.upto(4), std::string("ab\0Z", 4));
}

TEST(ReadTextValue, QuotedClosingNulPastOutputIsNotStored) {
    // The NUL after the added closing mark would land at out[outsize]: it
    // is left out, status and text before it are as usual.
    InBytes in(bytes({'"', 'a', 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, 4, 4), WSP_OK);
    EXPECT_EQ(out.upto(5), "\"ab\"Z");
    EXPECT_EQ(cursor, in.data() + 4);
}

TEST(ReadTextValue, QuotedClosingNulFitsWithOneMore) {
    InBytes in(bytes({'"', 'a', 'b', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, 4, 5), WSP_OK);
    EXPECT_EQ(out.upto(5), std::string("\"ab\"\0", 5));
}

TEST(ReadTextValue, QuotedWithNoOutputStoresNothing) {
    InBytes in(bytes({'"', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, 2, 0), WSP_ERR_FAIL);
    EXPECT_EQ(out.text[0], 'Z');
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextValue, QuotedOutputOfOneHoldsOnlyTheMark) {
    InBytes in(bytes({'"', 'a', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, 3, 1), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(2), "\"Z");
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextValue, LimitReachedBeforeNul) {
    InBytes in(bytes({'a', 'b', 'c'}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_TEXT, 3, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(4), std::string("abc\0", 4));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextValue, QuotedLimitCountsTheSkippedMark) {
    // Index i runs over the input from the cursor, mark included.
    InBytes in(bytes({'"', 'a', 'b'}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, 3, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(4), std::string("\"ab\0", 4));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextValue, ForbiddenOctetRefused) {
    InBytes in(bytes({'a', 0x7F, 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_TEXT, 3, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.upto(2), std::string("a\0", 2));
    EXPECT_EQ(cursor, in.data());
}

TEST(ReadTextValue, HighOctetsAllowedAnywhereForNonQuoted) {
    InBytes in(bytes({0xE9, 0xFF, 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_TEXT, 3, 10), WSP_OK);
    EXPECT_EQ(out.upto(3), std::string("\xE9\xFF\0", 3));
}

TEST(ReadTextValue, QuoteClassIsReadAsPlainText) {
    // Only class 3 is special: for class 2 the Quote octet itself is read
    // and, not being a text character, refused.
    InBytes in(bytes({0x7F, 'a', 0}));
    const uint8_t *cursor = in.data();
    Out out;
    EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTE, 3, 10), WSP_ERR_FAIL);
    EXPECT_EQ(out.text[0], '\0');
}

TEST(ReadTextValue, TruncatedAtEveryLength) {
    const Bytes full = bytes({'"', 'v', 'w', 0});
    for (size_t n = 0; n < full.size(); ++n) {
        InBytes in(Bytes(full.begin(), full.begin() + n));
        const uint8_t *cursor = in.data();
        Out out;
        EXPECT_EQ(wsp_read_text_value(&cursor, out.text, WSP_CLASS_QUOTED, static_cast<uint16_t>(n), 10),
                  WSP_ERR_FAIL)
            << n;
        EXPECT_EQ(cursor, in.data()) << n;
    }
}

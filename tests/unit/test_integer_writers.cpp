// Short-integer, Long-integer, Integer-value and integer-from-text writers,
// the bit counter and the 32-bit strtoul stand-in.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "primitives.h"
#include "wsp_test_support.h"

using namespace wsp_test;

// ---- wsp_bit_count ------------------------------------------------------------

TEST(BitCount, ZeroCountsAsOneBit) { EXPECT_EQ(wsp_bit_count(0), 1); }

TEST(BitCount, PositionOfHighestBitPlusOne) {
    EXPECT_EQ(wsp_bit_count(1), 1);
    EXPECT_EQ(wsp_bit_count(2), 2);
    EXPECT_EQ(wsp_bit_count(3), 2);
    EXPECT_EQ(wsp_bit_count(127), 7);
    EXPECT_EQ(wsp_bit_count(128), 8);
    EXPECT_EQ(wsp_bit_count(0xFFFF), 16);
    EXPECT_EQ(wsp_bit_count(0x10000), 17);
    EXPECT_EQ(wsp_bit_count(0x80000000u), 32);
    EXPECT_EQ(wsp_bit_count(0xFFFFFFFFu), 32);
}

// ---- wsp_append_short_int -------------------------------------------------------

TEST(AppendShortInt, WritesWithRoomToSpare) {
    OutBuffer b(3);
    EXPECT_EQ(wsp_append_short_int(5, b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "85");
    EXPECT_EQ(b->length, 1);
}

TEST(AppendShortInt, LastOctetWrittenCountedButRefused) {
    OutBuffer b(1);
    EXPECT_EQ(wsp_append_short_int(5, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 1);
    EXPECT_EQ(b.written_hex(), "85");
}

TEST(AppendShortInt, LastOctetAfterEarlierContent) {
    OutBuffer b(3);
    b->length = 2;
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_short_int(0x11, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 3);
    EXPECT_EQ(b.region_hex(), "EE EE 91");
}

TEST(AppendShortInt, FullBufferRefusedUntouched) {
    OutBuffer b(2);
    b->length = 2;
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_short_int(5, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 2);
    EXPECT_EQ(b.region_hex(), "EE EE");
}

TEST(AppendShortInt, HighBitRefusedNothingWritten) {
    OutBuffer b(4);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_short_int(128, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_short_int(0x1FF, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "EE EE EE EE");
}

TEST(AppendShortInt, OnlyLowEightBitsCount) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_short_int(300, b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "AC");
}

TEST(AppendShortInt, WritesAfterOffset) {
    OutBuffer b(4, 2);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_short_int(1, b.get()), WSP_OK);
    EXPECT_EQ(b.region_hex(), "EE EE 81 EE EE EE");
    EXPECT_EQ(b->length, 1);
}

TEST(AppendShortInt, LengthPastSizeCountedNotStored) {
    // length already beyond size: nothing can be stored inside the block,
    // the octet is still counted and the result is the no-room status.
    OutBuffer b(2);
    b->length = 3;
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_short_int(1, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 4);
    EXPECT_EQ(b.region_hex(), "EE EE");
}

TEST(AppendShortInt, LengthWrapsAt16Bits) {
    OutBuffer b(10);
    b->length = 0xFFFF;
    b.fill(0xEE);
    // 0xFFFF + 1 wraps to 0, below size, but the octet lies far past the
    // block: nothing is stored, it is counted, and the call fails.
    EXPECT_EQ(wsp_append_short_int(1, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "EE EE EE EE EE EE EE EE EE EE");
}

TEST(AppendShortInt, NullBufferRefused) {
    EXPECT_EQ(wsp_append_short_int(1, nullptr), WSP_ERR_FAIL);
    wsp_buffer none{};
    none.size = 4;
    EXPECT_EQ(wsp_append_short_int(1, &none), WSP_ERR_FAIL);
    EXPECT_EQ(none.length, 0);
}

// ---- wsp_append_long_int ----------------------------------------------------------

TEST(AppendLongInt, ZeroIsOneOctet) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_long_int(0, b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "01 00");
}

TEST(AppendLongInt, OctetCountsByMagnitude) {
    OutBuffer b(32);
    EXPECT_EQ(wsp_append_long_int(200, b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_long_int(0x1234, b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_long_int(0x10000, b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_long_int(0xFFFFFFFFu, b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "01 C8 02 12 34 03 01 00 00 04 FF FF FF FF");
    EXPECT_EQ(b->length, 14);
}

TEST(AppendLongInt, ExactlyFullSucceeds) {
    OutBuffer b(3);
    EXPECT_EQ(wsp_append_long_int(0x1234, b.get()), WSP_OK);
    EXPECT_EQ(b->length, 3);
    EXPECT_EQ(b.written_hex(), "02 12 34");
}

TEST(AppendLongInt, LengthOctetCountedBeforeRoomTest) {
    OutBuffer b(2);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_long_int(0x1234, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 3);
    EXPECT_EQ(b.region_hex(), "02 EE");
}

TEST(AppendLongInt, NoRoomAtAllStillCountsLength) {
    OutBuffer b(2);
    b->length = 2;
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_long_int(200, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 4);
    EXPECT_EQ(b.region_hex(), "EE EE");
}

TEST(AppendLongInt, LengthWrapStaysInsideBlock) {
    OutBuffer b(8);
    b->length = 0xFFFE;
    b.fill(0xEE);
    // 0xFFFE + 3 wraps to 1, below size, but the octets would lie past the
    // block: nothing is stored, the count stands, and the call fails.
    EXPECT_EQ(wsp_append_long_int(0x1234, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 1);
    EXPECT_EQ(b.region_hex(), "EE EE EE EE EE EE EE EE");
}

// ---- wsp_append_integer -------------------------------------------------------------

TEST(AppendInteger, ShortBelow128LongFrom128) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer(127, b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_integer(128, b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "FF 01 80");
}

TEST(AppendInteger, ShortIntegerLastOctetRuleApplies) {
    OutBuffer b(1);
    EXPECT_EQ(wsp_append_integer(3, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b.written_hex(), "83");
}

// ---- wsp_append_integer_text ------------------------------------------------------------

TEST(AppendIntegerText, DecimalSmallIsShortInteger) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_integer_text("5", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "85");
}

TEST(AppendIntegerText, DecimalLargeIsLongInteger) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_integer_text("200", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "01 C8");
}

TEST(AppendIntegerText, Decimal127And128) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("127", b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_integer_text("128", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "FF 01 80");
}

TEST(AppendIntegerText, NotANumberIsZero) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("abc", b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_integer_text("", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "80 80");
}

TEST(AppendIntegerText, DecimalMaximumRefused) {
    OutBuffer b(8);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_integer_text("4294967295", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_integer_text("4294967296", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_integer_text("-1", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "EE EE EE EE EE EE EE EE");
}

TEST(AppendIntegerText, DecimalLargestBelowMaximum) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("4294967294", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "04 FF FF FF FE");
}

TEST(AppendIntegerText, NegativeWrapsModulo32Bits) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("-2", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "04 FF FF FF FE");
}

TEST(AppendIntegerText, HexadecimalSmallAndLarge) {
    OutBuffer b(16);
    EXPECT_EQ(wsp_append_integer_text("0x1F", b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_integer_text("0X7f", b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_integer_text("0x80", b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_integer_text("0xabcd", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "9F FF 01 80 02 AB CD");
}

TEST(AppendIntegerText, HexadecimalWithoutDigitsIsZero) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_integer_text("0xg", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "80");
}

TEST(AppendIntegerText, HexadecimalOverflowEvenDigits) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("0x1FFFFFFFFF", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "05 1F FF FF FF FF");
    EXPECT_EQ(b->length, 6);
}

TEST(AppendIntegerText, HexadecimalOverflowOddDigits) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("0x1FFFFFFFF", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "05 01 FF FF FF FF");
}

TEST(AppendIntegerText, HexadecimalLowerCaseOverflow) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("0xabcdef012345", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "06 AB CD EF 01 23 45");
}

TEST(AppendIntegerText, HexadecimalAllOnesTakesTheDigitPath) {
    // 0xFFFFFFFF cannot be told from an overflow: its digits are written.
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("0xFFFFFFFF", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "04 FF FF FF FF");
}

TEST(AppendIntegerText, HexadecimalOverflowHasNoThirtyOctetLimit) {
    std::string text = "0x";
    for (int i = 0; i < 32; ++i) text += "A5";
    OutBuffer b(40);
    EXPECT_EQ(wsp_append_integer_text(text.c_str(), b.get()), WSP_OK);
    EXPECT_EQ(b->length, 33);
    EXPECT_EQ(b->data[0], 32);
    for (int i = 1; i <= 32; ++i) EXPECT_EQ(b->data[i], 0xA5) << i;
}

TEST(AppendIntegerText, HexadecimalDigitCountKeptInEightBits) {
    // 258 digits count as 2: only the first two become an octet.
    std::string text = "0x12";
    text.append(256, '0');
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text(text.c_str(), b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "01 12");
}

TEST(AppendIntegerText, HexadecimalDigitCountStopsAtNonDigit) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_integer_text("0x1FFFFFFFFF;q", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "05 1F FF FF FF FF");
}

TEST(AppendIntegerText, HexadecimalOverflowExactRoom) {
    OutBuffer b(6);
    EXPECT_EQ(wsp_append_integer_text("0x1FFFFFFFFF", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 6);
    EXPECT_EQ(b.written_hex(), "05 1F FF FF FF FF");
}

TEST(AppendIntegerText, HexadecimalOverflowNoRoomWritesNothing) {
    OutBuffer b(6);
    b->length = 1;
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_integer_text("0x1FFFFFFFFF", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 1);
    EXPECT_EQ(b.region_hex(), "EE EE EE EE EE EE");
}

TEST(AppendIntegerText, LongIntegerRoomFailureKeepsLengthOctet) {
    OutBuffer b(2);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_integer_text("0x1234", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 3);
    EXPECT_EQ(b.region_hex(), "02 EE");
}

TEST(AppendIntegerText, NullArgumentsRefused) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_integer_text(nullptr, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_integer_text("1", nullptr), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

// ---- wsp_strtou32 ------------------------------------------------------------------------

TEST(StrToU32, DecimalWithEnd) {
    const char *text = "123abc";
    const char *end = nullptr;
    EXPECT_EQ(wsp_strtou32(text, &end, 10), 123u);
    EXPECT_EQ(end, text + 3);
}

TEST(StrToU32, LeadingWhiteSpaceAndPlus) {
    const char *text = " \t\n\v\f\r+42x";
    const char *end = nullptr;
    EXPECT_EQ(wsp_strtou32(text, &end, 10), 42u);
    EXPECT_EQ(end, text + 9);
}

TEST(StrToU32, MinusNegatesModulo32Bits) {
    EXPECT_EQ(wsp_strtou32("-1", nullptr, 10), 0xFFFFFFFFu);
    EXPECT_EQ(wsp_strtou32("-5", nullptr, 10), 0xFFFFFFFBu);
    EXPECT_EQ(wsp_strtou32("-0", nullptr, 10), 0u);
    EXPECT_EQ(wsp_strtou32("-4294967295", nullptr, 10), 1u);
}

TEST(StrToU32, NineDigitsAndTenEitherSideOfTheShortRead) {
    // Up to nine decimal digits are read without the overflow test; a tenth
    // takes the general loop.  Both give strtoul's value and end.
    const char *end = nullptr;
    const char nine[] = "999999999x";
    EXPECT_EQ(wsp_strtou32(nine, &end, 10), 999999999u);
    EXPECT_EQ(end, nine + 9);
    const char ten[] = "1234567890;";
    EXPECT_EQ(wsp_strtou32(ten, &end, 10), 1234567890u);
    EXPECT_EQ(end, ten + 10);
    EXPECT_EQ(wsp_strtou32("4294967295", nullptr, 10), 0xFFFFFFFFu);
    EXPECT_EQ(wsp_strtou32("4294967296", nullptr, 10), 0xFFFFFFFFu);
    const char zeros[] = "0000000000012";
    EXPECT_EQ(wsp_strtou32(zeros, &end, 10), 12u);
    EXPECT_EQ(end, zeros + 13);
    EXPECT_EQ(wsp_strtou32("-123456789", nullptr, 10), 0u - 123456789u);
}

TEST(StrToU32, OverflowSaturatesWhateverTheSign) {
    const char *text = "4294967296z";
    const char *end = nullptr;
    EXPECT_EQ(wsp_strtou32(text, &end, 10), 0xFFFFFFFFu);
    EXPECT_EQ(end, text + 10);
    EXPECT_EQ(wsp_strtou32("99999999999999999999999", nullptr, 10), 0xFFFFFFFFu);
    EXPECT_EQ(wsp_strtou32("-4294967296", nullptr, 10), 0xFFFFFFFFu);
    EXPECT_EQ(wsp_strtou32("4294967295", nullptr, 10), 0xFFFFFFFFu);
}

TEST(StrToU32, NoDigitsLeavesEndAtText) {
    const char *texts[] = {"", "abc", "   ", "-", "+ 1", " -x"};
    for (const char *text : texts) {
        const char *end = nullptr;
        EXPECT_EQ(wsp_strtou32(text, &end, 10), 0u) << text;
        EXPECT_EQ(end, text) << text;
    }
}

TEST(StrToU32, HexadecimalWithAndWithoutPrefix) {
    const char *end = nullptr;
    const char *a = "ff";
    EXPECT_EQ(wsp_strtou32(a, &end, 16), 255u);
    EXPECT_EQ(end, a + 2);
    const char *b = "0xFFg";
    EXPECT_EQ(wsp_strtou32(b, &end, 16), 255u);
    EXPECT_EQ(end, b + 4);
    EXPECT_EQ(wsp_strtou32("0X1a", nullptr, 16), 26u);
    EXPECT_EQ(wsp_strtou32(" -0x10", nullptr, 16), 0xFFFFFFF0u);
}

TEST(StrToU32, HexadecimalPrefixWithoutDigitReadsZero) {
    const char *text = "0xg";
    const char *end = nullptr;
    EXPECT_EQ(wsp_strtou32(text, &end, 16), 0u);
    EXPECT_EQ(end, text + 1);
}

TEST(StrToU32, HexadecimalOverflow) {
    EXPECT_EQ(wsp_strtou32("FFFFFFFF", nullptr, 16), 0xFFFFFFFFu);
    EXPECT_EQ(wsp_strtou32("100000000", nullptr, 16), 0xFFFFFFFFu);
    EXPECT_EQ(wsp_strtou32("FFFFFFFE", nullptr, 16), 0xFFFFFFFEu);
}

TEST(StrToU32, PrefixIsNotDecimal) {
    const char *text = "0x10";
    const char *end = nullptr;
    EXPECT_EQ(wsp_strtou32(text, &end, 10), 0u);
    EXPECT_EQ(end, text + 1);
}

TEST(StrToU32, HighOctetsAreNotDigitsOrSpace) {
    const char text[] = {static_cast<char>(0xB2), '1', '\0'};
    const char *end = nullptr;
    EXPECT_EQ(wsp_strtou32(text, &end, 10), 0u);
    EXPECT_EQ(end, text);
    const char spaced[] = {static_cast<char>(0xA0), '7', '\0'};
    EXPECT_EQ(wsp_strtou32(spaced, nullptr, 10), 0u);
}

TEST(StrToU32, LettersAreNotDecimalDigits) {
    EXPECT_EQ(wsp_strtou32("12a3", nullptr, 10), 12u);
    EXPECT_EQ(wsp_strtou32("9:30", nullptr, 10), 9u);
}

TEST(StrToU32, NullTextReadsZero) {
    const char *end = reinterpret_cast<const char *>(1);
    EXPECT_EQ(wsp_strtou32(nullptr, &end, 10), 0u);
    EXPECT_EQ(end, nullptr);
}

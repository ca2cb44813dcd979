// Token-text, Text-string, plain text, Quoted-string, raw octets,
// Value-length blocks and Version-values in buffer style.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "primitives.h"
#include "wsp_test_support.h"

using namespace wsp_test;

// ---- wsp_tokentext_encode_buff ---------------------------------------------------------

TEST(TokenTextEncode, WritesTextAndNul) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_tokentext_encode_buff("abc", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "61 62 63 00");
    EXPECT_EQ(b->length, 4);
}

TEST(TokenTextEncode, EmptyTextWritesOnlyNul) {
    OutBuffer b(1);
    EXPECT_EQ(wsp_tokentext_encode_buff("", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "00");
}

TEST(TokenTextEncode, ExactlyFull) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_tokentext_encode_buff("abc", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 4);
}

TEST(TokenTextEncode, OneShortWritesNothing) {
    OutBuffer b(3);
    b.fill(0xEE);
    EXPECT_EQ(wsp_tokentext_encode_buff("abc", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "EE EE EE");
}

TEST(TokenTextEncode, SeparatorFailsAfterPartialCopy) {
    OutBuffer b(16);
    b.fill(0xEE);
    EXPECT_EQ(wsp_tokentext_encode_buff("text/plain", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(hex(b->data, 5), "74 65 78 74 EE");
}

TEST(TokenTextEncode, EverySeparatorAndControlRefused) {
    const char *separators = "()<>@,;:\\\"/[]?={} \t";
    for (const char *p = separators; *p; ++p) {
        char text[3] = {'a', *p, '\0'};
        OutBuffer b(8);
        EXPECT_EQ(wsp_tokentext_encode_buff(text, b.get()), WSP_ERR_FAIL) << static_cast<int>(*p);
        EXPECT_EQ(b->length, 0);
    }
    const char bad[] = {0x01, 0x1F, 0x7F, static_cast<char>(0x80), static_cast<char>(0xE9)};
    for (char c : bad) {
        char text[2] = {c, '\0'};
        OutBuffer b(8);
        EXPECT_EQ(wsp_tokentext_encode_buff(text, b.get()), WSP_ERR_FAIL) << static_cast<int>(c);
    }
}

TEST(TokenTextEncode, AppendsAfterOffsetAndLength) {
    OutBuffer b(8, 1);
    b->length = 2;
    b.fill(0xEE);
    EXPECT_EQ(wsp_tokentext_encode_buff("x-y", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 6);
    EXPECT_EQ(b.region_hex(), "EE EE EE 78 2D 79 00 EE EE");
}

TEST(TokenTextEncode, OffsetTakesNoPartInTheRoomTest) {
    // size limits length: a text filling all of size lands whole after offset.
    OutBuffer b(4, 2);
    b.fill(0xEE);
    EXPECT_EQ(wsp_tokentext_encode_buff("abc", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 4);
    EXPECT_EQ(b.region_hex(), "EE EE 61 62 63 00");
}

TEST(TokenTextEncode, NullArgumentsRefused) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_tokentext_encode_buff(nullptr, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_tokentext_encode_buff("a", nullptr), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

// ---- wsp_append_text_string ----------------------------------------------------------

TEST(AppendTextString, PlainText) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_text_string("a b/c", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "61 20 62 2F 63 00");
}

TEST(AppendTextString, EmptyText) {
    OutBuffer b(2);
    EXPECT_EQ(wsp_append_text_string("", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "00");
}

TEST(AppendTextString, HighFirstOctetGetsQuote) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_text_string("\xE9t", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "7F E9 74 00");
    EXPECT_EQ(b->length, 4);
}

TEST(AppendTextString, QuoteWrittenBeforeRoomTest) {
    OutBuffer b(3);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_text_string("\xE9t", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "7F E9 EE");
}

TEST(AppendTextString, QuoteBeforeRoomTestStaysInsideBlock) {
    OutBuffer b(1);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_text_string("\xE9t", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "7F");
}

TEST(AppendTextString, ExactlyFullAndOneShort) {
    OutBuffer full(4);
    EXPECT_EQ(wsp_append_text_string("abc", full.get()), WSP_OK);
    EXPECT_EQ(full->length, 4);
    OutBuffer shorter(3);
    shorter.fill(0xEE);
    EXPECT_EQ(wsp_append_text_string("abc", shorter.get()), WSP_ERR_FAIL);
    EXPECT_EQ(shorter->length, 0);
    EXPECT_EQ(shorter.region_hex(), "EE EE EE");
}

TEST(AppendTextString, HighOctetsLaterNeedNoQuote) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_text_string("a\xE9", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "61 E9 00");
}

TEST(AppendTextString, ForbiddenCharacterFailsAfterPartialCopy) {
    OutBuffer b(8);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_text_string("ab\x7F" "c", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(hex(b->data, 3), "61 62 EE");
}

TEST(AppendTextString, TabCrLfAllowed) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_text_string("\t\r\n", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "09 0D 0A 00");
}

TEST(AppendTextString, QuotedHighTextWithForbiddenLater) {
    OutBuffer b(8);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_text_string("\xE9\x01", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(hex(b->data, 3), "7F E9 EE");
}

TEST(TextStringAppend, RegionExactlyHoldingTheTextIsCopiedWhole) {
    // Text and NUL end exactly at offset + size.
    OutBuffer b(4, 3);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_text_string("abc", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 4);
    EXPECT_EQ(b.region_hex(), "EE EE EE 61 62 63 00");
}

TEST(TextStringAppend, WrappedRoomTestStoresNothingPastTheRegion) {
    // length + 4 wraps to 2, so the 16-bit room test passes, but the tail
    // lies past the region: not one octet is stored and length stays.
    OutBuffer b(4);
    b.fill(0xEE);
    b->length = 0xFFFE;
    EXPECT_EQ(wsp_append_text_string("abc", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0xFFFE);
    EXPECT_EQ(b.region_hex(), "EE EE EE EE");
}

// ---- wsp_append_plain_text ------------------------------------------------------

TEST(AppendPlainText, HighFirstOctetCopiedAsItIs) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_plain_text("\xE9t", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "E9 74 00");
    EXPECT_EQ(b->length, 3);
}

TEST(AppendPlainText, RoomTestFirst) {
    OutBuffer b(2);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_plain_text("\xE9t", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "EE EE");
}

TEST(AppendPlainText, ForbiddenCharacterRefused) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_plain_text("a\x0B", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

TEST(AppendPlainText, EmptyAndExactlyFull) {
    OutBuffer b(3);
    EXPECT_EQ(wsp_append_plain_text("", b.get()), WSP_OK);
    EXPECT_EQ(wsp_append_plain_text("z", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "00 7A 00");
    EXPECT_EQ(wsp_append_plain_text("", b.get()), WSP_ERR_FAIL);
}

// ---- wsp_append_quoted_string ----------------------------------------------------

TEST(AppendQuotedString, ClosingMarkBecomesTerminator) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_quoted_string("\"abc\"", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "22 61 62 63 00");
    EXPECT_EQ(b->length, 5);
}

TEST(AppendQuotedString, ExactlyFull) {
    OutBuffer b(5);
    EXPECT_EQ(wsp_append_quoted_string("\"abc\"", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 5);
}

TEST(AppendQuotedString, OneShortWritesNothing) {
    OutBuffer b(4);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("\"abc\"", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "EE EE EE EE");
}

TEST(AppendQuotedString, EmptyQuotedText) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_quoted_string("\"\"", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "22 00");
}

TEST(AppendQuotedString, MustStartWithQuotationMark) {
    OutBuffer b(8);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("abc\"", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_quoted_string("", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b->data[0], 0xEE);
}

TEST(AppendQuotedString, WithoutClosingMarkNulLandsPastCount) {
    OutBuffer b(5);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("\"abc", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 4);
    EXPECT_EQ(b.region_hex(), "22 61 62 63 00");
}

TEST(AppendQuotedString, WithoutClosingMarkNulOutsideSizeNotStored) {
    // Room for the four counted octets only: the NUL that would follow them
    // is left out; status and length are unchanged.
    OutBuffer b(4);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("\"abc", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 4);
    EXPECT_EQ(b.region_hex(), "22 61 62 63");
}

TEST(AppendQuotedString, LoneQuotationMark) {
    OutBuffer b(2);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("\"", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 1);
    EXPECT_EQ(b.region_hex(), "22 00");
    OutBuffer tight(1);
    tight.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("\"", tight.get()), WSP_OK);
    EXPECT_EQ(tight->length, 1);
    EXPECT_EQ(tight.region_hex(), "22");
}

TEST(AppendQuotedString, InnerQuotationMarkRefused) {
    OutBuffer b(8);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("\"a\"b\"", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(hex(b->data, 3), "22 61 EE");
}

TEST(AppendQuotedString, ForbiddenCharacterRefused) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_quoted_string("\"a\x01\"", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

TEST(AppendQuotedString, AppendsAfterExistingContent) {
    OutBuffer b(8);
    b->length = 2;
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("\"x\"", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 5);
    EXPECT_EQ(b.region_hex(), "EE EE 22 78 00 EE EE EE");
}

// ---- wsp_append_bytes -----------------------------------------------------------------

TEST(AppendBytes, CopiesAfterRoomTest) {
    OutBuffer b(4);
    const uint8_t src[] = {1, 2, 3};
    EXPECT_EQ(wsp_append_bytes(src, 3, b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "01 02 03");
    EXPECT_EQ(wsp_append_bytes(src, 1, b.get()), WSP_OK); // exactly full
    EXPECT_EQ(b->length, 4);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_bytes(src, 1, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 4);
    EXPECT_EQ(b.region_hex(), "EE EE EE EE");
}

TEST(AppendBytes, OneShortWritesNothing) {
    OutBuffer b(2);
    b.fill(0xEE);
    const uint8_t src[] = {1, 2, 3};
    EXPECT_EQ(wsp_append_bytes(src, 3, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.region_hex(), "EE EE");
}

TEST(AppendBytes, ZeroOctets) {
    OutBuffer b(1);
    b->length = 1;
    EXPECT_EQ(wsp_append_bytes(nullptr, 0, b.get()), WSP_OK);
    EXPECT_EQ(b->length, 1);
}

TEST(AppendBytes, NullSourceWithOctetsRefused) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_bytes(nullptr, 2, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

// ---- wsp_append_value_block --------------------------------------------------------

namespace {

// A source buffer holding n octets 0, 1, 2, ... after `offset`.
struct Source {
    OutBuffer buf;
    Source(uint16_t n, uint16_t offset = 0) : buf(static_cast<uint16_t>(n + offset), offset) {
        std::memset(buf->data, 0xAA, buf->size ? buf->size : 1);
        for (uint16_t i = 0; i < n; ++i) buf->data[offset + i] = static_cast<uint8_t>(i);
        buf->length = n;
    }
};

} // namespace

TEST(AppendValueBlock, ShortLength) {
    Source src(3);
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "03 00 01 02");
}

TEST(AppendValueBlock, EmptySource) {
    Source src(0);
    OutBuffer b(2);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "00");
}

TEST(AppendValueBlock, SourceOffsetHonoured) {
    Source src(2, 3);
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "02 00 01");
}

TEST(AppendValueBlock, ThirtyIsStillShortLength) {
    Source src(30);
    OutBuffer b(31);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_OK);
    EXPECT_EQ(b->length, 31);
    EXPECT_EQ(b->data[0], 30);
    EXPECT_EQ(b->data[30], 29);
}

TEST(AppendValueBlock, ThirtyOneUsesLengthQuote) {
    Source src(31);
    OutBuffer b(33);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_OK);
    EXPECT_EQ(b->length, 33);
    EXPECT_EQ(hex(b->data, 3), "1F 1F 00");
    EXPECT_EQ(b->data[32], 30);
}

TEST(AppendValueBlock, LongLengthAsUintvar) {
    Source src(200);
    OutBuffer b(203);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_OK);
    EXPECT_EQ(b->length, 203);
    EXPECT_EQ(hex(b->data, 4), "1F 81 48 00");
    EXPECT_EQ(b->data[202], 199);
}

TEST(AppendValueBlock, NoRoomForBytesKeepsLengthOctet) {
    Source src(3);
    OutBuffer b(3);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 1);
    EXPECT_EQ(b.region_hex(), "03 EE EE");
}

TEST(AppendValueBlock, NoRoomForBytesKeepsLengthQuoteAndUintvar) {
    Source src(200);
    OutBuffer b(202);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 3);
    EXPECT_EQ(hex(b->data, 4), "1F 81 48 EE");
}

TEST(AppendValueBlock, UintvarPastSizeCountedNotStored) {
    Source src(200);
    OutBuffer b(2);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 3);
    EXPECT_EQ(b.region_hex(), "1F 81");
}

TEST(AppendValueBlock, NoRoomAtAll) {
    Source src(2);
    OutBuffer b(0);
    EXPECT_EQ(wsp_append_value_block(b.get(), src.buf.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 1);
}

TEST(AppendValueBlock, NullArgumentsRefused) {
    Source src(2);
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_value_block(nullptr, src.buf.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_value_block(b.get(), nullptr), WSP_ERR_FAIL);
    wsp_buffer empty_data{};
    empty_data.length = 2;
    EXPECT_EQ(wsp_append_value_block(b.get(), &empty_data), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

// ---- wsp_append_version -------------------------------------------------------------

namespace {

std::string version(const char *text, int *status = nullptr) {
    OutBuffer b(16);
    int s = wsp_append_version(text, b.get());
    if (status) *status = s;
    return b.written_hex();
}

} // namespace

TEST(AppendVersion, MinorZeroIsWrittenAsFifteen) {
    int status = 0;
    EXPECT_EQ(version("1.0", &status), "9F");
    EXPECT_EQ(status, WSP_OK);
}

TEST(AppendVersion, MajorAndMinor) {
    EXPECT_EQ(version("1.2"), "92");
    EXPECT_EQ(version("1.9"), "99");
    EXPECT_EQ(version("0.5"), "85");
    EXPECT_EQ(version("7.3"), "F3");
}

TEST(AppendVersion, MajorOnly) {
    EXPECT_EQ(version("1"), "9F");
    EXPECT_EQ(version("7"), "FF");
    EXPECT_EQ(version("1."), "9F");
}

TEST(AppendVersion, MajorAboveSevenIsText) {
    EXPECT_EQ(version("9.1"), "39 2E 31 00");
    EXPECT_EQ(version("8"), "38 00");
}

TEST(AppendVersion, TwoDigitPartsAreText) {
    EXPECT_EQ(version("1.10"), "31 2E 31 30 00");
    EXPECT_EQ(version("12"), "31 32 00");
    EXPECT_EQ(version("01.1"), "30 31 2E 31 00");
}

TEST(AppendVersion, NonDigitPartsAreText) {
    EXPECT_EQ(version("a.1"), "61 2E 31 00");
    EXPECT_EQ(version("1.a"), "31 2E 61 00");
    EXPECT_EQ(version("1.."), "31 2E 2E 00");
}

TEST(AppendVersion, ThirdPartIsNotLookedAt) {
    EXPECT_EQ(version("1.2.3"), "92");
    EXPECT_EQ(version("1.2.x"), "92");
}

TEST(AppendVersion, EmptyTextIsEmptyTextString) {
    int status = 0;
    EXPECT_EQ(version("", &status), "00");
    EXPECT_EQ(status, WSP_OK);
}

TEST(AppendVersion, TextIsNotModified) {
    char text[] = "1.2";
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_version(text, b.get()), WSP_OK);
    EXPECT_STREQ(text, "1.2");
}

TEST(AppendVersion, NumericOctetFillsBufferExactly) {
    // No last-octet rule here: the buffer may become exactly full.
    OutBuffer b(1);
    EXPECT_EQ(wsp_append_version("1.1", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 1);
    EXPECT_EQ(b.written_hex(), "91");
}

TEST(AppendVersion, NumericOctetIntoFullBufferRefused) {
    OutBuffer b(2);
    b->length = 2;
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_version("1.1", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 2);
    EXPECT_EQ(b.region_hex(), "EE EE");
}

TEST(AppendVersion, TextFormWithoutRoomFails) {
    OutBuffer b(4);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_version("1.10", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

TEST(AppendVersion, TextFormWithForbiddenCharacterFails) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_version("1\x01", b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

TEST(AppendVersion, HighFirstOctetTextGetsQuote) {
    OutBuffer b(8);
    EXPECT_EQ(wsp_append_version("\xE9", b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "7F E9 00");
}

TEST(AppendVersion, LongTextUsesHeapCopy) {
    std::string numeric = "3.4." + std::string(200, 'x');
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_version(numeric.c_str(), b.get()), WSP_OK);
    EXPECT_EQ(b.written_hex(), "B4");

    std::string text(100, 'v');
    OutBuffer t(128);
    EXPECT_EQ(wsp_append_version(text.c_str(), t.get()), WSP_OK);
    EXPECT_EQ(t->length, 101);
    EXPECT_EQ(t->data[99], 'v');
    EXPECT_EQ(t->data[100], 0);
}

TEST(AppendVersion, NullArgumentsRefused) {
    OutBuffer b(4);
    EXPECT_EQ(wsp_append_version(nullptr, b.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_version("1", nullptr), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

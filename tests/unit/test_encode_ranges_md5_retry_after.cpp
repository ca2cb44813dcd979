// Header value encoders: Content-MD5, Content-Range (both codes), Range and
// Retry-After.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

using Encoded = EncodeResult;

Encoded run(wsp_header_encoder encoder, uint8_t code, const std::string &value, uint16_t size = 64) {
    return encode_value(encoder, code, value, size);
}

std::string repeat(const std::string &s, int n) {
    std::string out;
    for (int i = 0; i < n; ++i) out += s;
    return out;
}

const char kDigestText[] = "0x010x230x450x670x890xab0xcd0xef0XFE0XDC0XBA0X980x760x540x320x10";
const char kDigestHex[] = "8F 10 01 23 45 67 89 AB CD EF FE DC BA 98 76 54 32 10";

} // namespace

// ---- Content-MD5 ----

TEST(ContentMd5, SixteenTwoDigitGroups) {
    Encoded e = run(wsp_encode_content_md5, 0x0F, std::string(" ") + kDigestText + "\r\n");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, kDigestHex);
}

TEST(ContentMd5, OneDigitGroupWhenTheNextGroupFollowsAtOnce) {
    Encoded e = run(wsp_encode_content_md5, 0x0F, repeat("0x1", 16));
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "8F 10 " + repeat("01 ", 15) + "01");
}

TEST(ContentMd5, MixedGroupWidths) {
    Encoded e = run(wsp_encode_content_md5, 0x0F, "0xA0X0b" + repeat("0xff", 14));
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "8F 10 0A 0B " + repeat("FF ", 13) + "FF");
}

TEST(ContentMd5, FifteenGroupsFail) {
    Encoded e = run(wsp_encode_content_md5, 0x0F, repeat("0x12", 15));
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "8F");
}

TEST(ContentMd5, SeventeenGroupsFail) {
    EXPECT_EQ(run(wsp_encode_content_md5, 0x0F, repeat("0x12", 17)).status, WSP_ERR_FAIL);
}

TEST(ContentMd5, TrailingTextFails) {
    EXPECT_EQ(run(wsp_encode_content_md5, 0x0F, repeat("0x12", 16) + "z").status, WSP_ERR_FAIL);
}

TEST(ContentMd5, GroupWithoutPrefixFails) {
    EXPECT_EQ(run(wsp_encode_content_md5, 0x0F, "12" + repeat("0x12", 15)).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_content_md5, 0x0F, repeat("0x12", 8) + " " + repeat("0x12", 8)).status,
              WSP_ERR_FAIL);
}

TEST(ContentMd5, GroupWithoutDigitsFails) {
    EXPECT_EQ(run(wsp_encode_content_md5, 0x0F, repeat("0x12", 15) + "0x").status, WSP_ERR_FAIL);
}

TEST(ContentMd5, NegativeGroupIsAboveTheOctetRange) {
    EXPECT_EQ(run(wsp_encode_content_md5, 0x0F, repeat("0x12", 15) + "0x-1").status, WSP_ERR_FAIL);
}

TEST(ContentMd5, NonHexadecimalGroupReadsAsStrtoulReadsIt) {
    Encoded e = run(wsp_encode_content_md5, 0x0F, "0xzz0x3g" + repeat("0x12", 14));
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "8F 10 00 03 " + repeat("12 ", 13) + "12");
}

TEST(ContentMd5, EmptyValueFails) {
    Encoded e = run(wsp_encode_content_md5, 0x0F, "");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
}

TEST(ContentMd5, OutputExactlyFull) {
    Encoded e = run(wsp_encode_content_md5, 0x0F, kDigestText, 18);
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.length, 18);
    EXPECT_EQ(e.hex, kDigestHex);
}

TEST(ContentMd5, OutputOneByteShortFailsBeforeTheDigest) {
    Encoded e = run(wsp_encode_content_md5, 0x0F, kDigestText, 17);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "8F");
}

TEST(ContentMd5, RoomTestDoesNotWrapNearTheSixteenBitLimit) {
    TextCopy text(kDigestText);
    OutBuffer out(65535);
    out->length = 65530;
    EXPECT_EQ(wsp_encode_content_md5(0x0F, text.get(), out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 65531); // the code octet only
}

TEST(ContentMd5, NullValueFails) {
    OutBuffer out(32);
    EXPECT_EQ(wsp_encode_content_md5(0x0F, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- Content-Range ----

TEST(ContentRange, FirstPositionAndEntityLength) {
    Encoded e = run(wsp_encode_content_range, 0x10, " Bytes 0-499/1234 ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "90 03 00 89 52");
}

TEST(ContentRange, NewerCodeWritesUnknownLengthForStar) {
    Encoded e = run(wsp_encode_content_range, 0x3E, "bytes 500-999/*");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "BE 03 83 74 80");
}

TEST(ContentRange, OlderCodeReadsStarAsANumber) {
    Encoded e = run(wsp_encode_content_range, 0x10, "bytes 500-999/*");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "90 03 83 74 00");
}

TEST(ContentRange, LargestPositions) {
    Encoded e = run(wsp_encode_content_range, 0x3E, "bytes 4294967295-0/4294967295");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "BE 0A 8F FF FF FF 7F 8F FF FF FF 7F");
}

TEST(ContentRange, UnitMustBeBytesAndABlank) {
    Encoded e = run(wsp_encode_content_range, 0x10, "bytes=0-1/2");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "90");
    EXPECT_EQ(run(wsp_encode_content_range, 0x10, "bytes").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_content_range, 0x10, "items 0-1/2").status, WSP_ERR_FAIL);
}

TEST(ContentRange, MissingDashOrSlashFails) {
    EXPECT_EQ(run(wsp_encode_content_range, 0x10, "bytes 5/10").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_content_range, 0x10, "bytes 0-5").status, WSP_ERR_FAIL);
}

TEST(ContentRange, OutputBounds) {
    Encoded full = run(wsp_encode_content_range, 0x10, "bytes 0-1/2", 4);
    EXPECT_EQ(full.status, WSP_OK);
    EXPECT_EQ(full.hex, "90 02 00 02");
    EXPECT_EQ(run(wsp_encode_content_range, 0x10, "bytes 0-1/2", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_content_range, 0x10, "bytes 0-1/2", 1).status, WSP_ERR_FAIL);
}

TEST(ContentRange, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_content_range(0x10, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- Range ----

TEST(Range, FirstAndLastPosition) {
    Encoded e = run(wsp_encode_range, 0x23, " bytes=0-499 ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A3 04 80 00 83 73");
}

TEST(Range, OpenEndedRangeHasNoLastPosition) {
    EXPECT_EQ(run(wsp_encode_range, 0x23, "bytes=500-").hex, "A3 03 80 83 74");
    EXPECT_EQ(run(wsp_encode_range, 0x23, "bytes=500").hex, "A3 03 80 83 74");
}

TEST(Range, SuffixRange) {
    Encoded e = run(wsp_encode_range, 0x23, "bytes=-500");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A3 03 81 83 74");
}

TEST(Range, EachRangeIsItsOwnHeader) {
    Encoded e = run(wsp_encode_range, 0x23, "Bytes=0-1, -5 ,9-");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A3 03 80 00 01 A3 02 81 05 A3 02 80 09");
}

TEST(Range, UnitOtherThanBytesFailsWithoutWriting) {
    Encoded e = run(wsp_encode_range, 0x23, "items=0-1");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
    // The unit is compared as it stands before the "=".
    EXPECT_EQ(run(wsp_encode_range, 0x23, "bytes =0-1").status, WSP_ERR_FAIL);
}

TEST(Range, NoRangeFails) {
    EXPECT_EQ(run(wsp_encode_range, 0x23, "bytes").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_range, 0x23, "bytes=").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_range, 0x23, "").status, WSP_ERR_FAIL);
}

TEST(Range, OutputBounds) {
    Encoded full = run(wsp_encode_range, 0x23, "bytes=0-1", 5);
    EXPECT_EQ(full.status, WSP_OK);
    EXPECT_EQ(full.hex, "A3 03 80 00 01");
    Encoded short_by_one = run(wsp_encode_range, 0x23, "bytes=0-1", 4);
    EXPECT_EQ(short_by_one.status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_range, 0x23, "bytes=0-1, 2-3", 9).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_range, 0x23, "bytes=0-1, 2-3", 10).status, WSP_OK);
}

TEST(Range, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_range(0x23, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- Retry-After ----

TEST(RetryAfter, SecondsAreARelativeTime) {
    Encoded e = run(wsp_encode_retry_after, 0x25, "120");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A5 02 81 F8");
}

TEST(RetryAfter, LargerAndHexadecimalSeconds) {
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, "300").hex, "A5 04 81 02 01 2C");
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, "0x1F").hex, "A5 02 81 9F");
}

TEST(RetryAfter, DateIsAnAbsoluteTime) {
    Encoded e = run(wsp_encode_retry_after, 0x25, " Fri, 31 Dec 1999 23:59:59 GMT");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A5 06 80 04 38 6D 43 7F");
}

TEST(RetryAfter, BadDateFails) {
    Encoded e = run(wsp_encode_retry_after, 0x25, "Monday 10");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "A5");
}

TEST(RetryAfter, TextOutsideTheDayLettersIsANumber) {
    // "a" comes before "f" and "x" after "w": both are read as numbers, 0.
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, "abc").hex, "A5 02 81 80");
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, "xyz").hex, "A5 02 81 80");
}

TEST(RetryAfter, ScratchIsSizedOnTheValueText) {
    // The Short-integer writer never fills its buffer: a one-character value
    // leaves its two-octet scratch full, the same value with the blank the
    // block encoder hands over does not.
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, "5").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, " 5").hex, "A5 02 81 85");
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, "").status, WSP_ERR_FAIL);
}

TEST(RetryAfter, OutputBounds) {
    Encoded full = run(wsp_encode_retry_after, 0x25, "120", 4);
    EXPECT_EQ(full.status, WSP_OK);
    EXPECT_EQ(full.hex, "A5 02 81 F8");
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, "120", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_retry_after, 0x25, "120", 1).status, WSP_ERR_FAIL);
}

TEST(RetryAfter, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_retry_after(0x25, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

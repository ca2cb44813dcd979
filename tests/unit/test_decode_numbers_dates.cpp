// Number and date header values: Age / Content-Length / Max-Forwards, the
// date headers, Retry-After, If-Range, Content-MD5, Bearer-Indication and
// Push-Flag.  All of them write one line per header.
#include <gtest/gtest.h>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

constexpr uint32_t kAge = 0x05;
constexpr uint32_t kContentLength = 0x0D;
constexpr uint32_t kContentMd5 = 0x0F;
constexpr uint32_t kDate = 0x12;
constexpr uint32_t kExpires = 0x14;
constexpr uint32_t kIfRange = 0x1A;
constexpr uint32_t kMaxForwards = 0x1E;
constexpr uint32_t kRetryAfter = 0x25;
constexpr uint32_t kBearer = 0x33;
constexpr uint32_t kPushFlag = 0x34;
constexpr uint32_t kXWapTod = 0x3F;

// 784111777 seconds: Sun, 06 Nov 1994 08:49:37 GMT.
const Bytes kNov1994 = {0x04, 0x2E, 0xBC, 0x98, 0xA1};
const char *const kNov1994Text = "Sun, 06 Nov 1994 08:49:37 GMT";

DecodeRun integer(uint32_t code, const Bytes &v, OutBuffer &out) {
    return decode_value(wsp_dec_integer_value, code, v, out);
}
DecodeRun date(uint32_t code, const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_date_value, code, v, out); }
DecodeRun retry_after(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_retry_after, kRetryAfter, v, out); }
DecodeRun if_range(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_if_range, kIfRange, v, out); }
DecodeRun md5(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_content_md5, kContentMd5, v, out); }
DecodeRun bearer(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_bearer, kBearer, v, out); }
DecodeRun push_flag(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_push_flag, kPushFlag, v, out); }

} // namespace

// ---- wsp_dec_integer_value ----

TEST(DecodeIntegerValue, ShortInteger) {
    OutBuffer out(256);
    DecodeRun r = integer(kAge, bytes({0x85}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "age:5\n");
}

TEST(DecodeIntegerValue, LongIntegers) {
    OutBuffer out(256);
    DecodeRun r = integer(kContentLength, bytes({0x02, 0x01, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 3u);
    EXPECT_EQ(integer(kMaxForwards, bytes({0x04, 0xFF, 0xFF, 0xFF, 0xFF}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "content-length:256\nmax-forwards:4294967295\n");
}

TEST(DecodeIntegerValue, LongerIntegersAreHexWithoutLeadingZeros) {
    OutBuffer out(256);
    DecodeRun r = integer(kContentLength, bytes({0x05, 0x01, 0x0A, 0xFF, 0x00, 0x10}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 6u);
    EXPECT_EQ(out.text(), "content-length:0X1AFF010\n");
}

TEST(DecodeIntegerValue, RepeatsGetOneLineEach) {
    OutBuffer out(256);
    EXPECT_EQ(integer(kAge, bytes({0x85}), out).status, WSP_OK);
    EXPECT_EQ(integer(kAge, bytes({0x86}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "age:5\nage:6\n");
}

TEST(DecodeIntegerValue, OtherClassesAndEmptyValuesAreRefused) {
    OutBuffer out(256);
    EXPECT_EQ(integer(kAge, cstr("5"), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(integer(kAge, bytes({0x1F, 0x01, 0x05}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(integer(kAge, bytes({0x22, '5', 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(integer(kAge, Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeIntegerValue, TruncatedLongIntegerIsRefusedAtEveryLength) {
    Bytes full = bytes({0x04, 0x01, 0x02, 0x03, 0x04});
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = integer(kContentLength, Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

TEST(DecodeIntegerValue, FullOutputIsRefusedWith214AndKeepsTheCursor) {
    OutBuffer out(5);
    DecodeRun r = integer(kAge, bytes({0x85}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    OutBuffer exact(6);
    EXPECT_EQ(integer(kAge, bytes({0x85}), exact).status, WSP_OK);
    EXPECT_EQ(exact.text(), "age:5\n");
}

// ---- wsp_dec_date_value ----

TEST(DecodeDateValue, DateValueBecomesHttpDate) {
    OutBuffer out(256);
    DecodeRun r = date(kDate, kNov1994, out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 5u);
    EXPECT_EQ(out.text(), std::string("date:") + kNov1994Text + "\n");
}

TEST(DecodeDateValue, ZeroIsTheEpoch) {
    OutBuffer out(256);
    DecodeRun r = date(kExpires, bytes({0x01, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "expires:Thu, 01 Jan 1970 00:00:00 GMT\n");
}

TEST(DecodeDateValue, RepeatsGetOneLineEach) {
    OutBuffer out(256);
    EXPECT_EQ(date(kXWapTod, bytes({0x01, 0x00}), out).status, WSP_OK);
    EXPECT_EQ(date(kXWapTod, kNov1994, out).status, WSP_OK);
    EXPECT_EQ(out.text(), std::string("x-wap-tod:Thu, 01 Jan 1970 00:00:00 GMT\nx-wap-tod:") + kNov1994Text + "\n");
}

TEST(DecodeDateValue, OnlyLongIntegersAreAccepted) {
    OutBuffer out(256);
    EXPECT_EQ(date(kDate, bytes({0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(date(kDate, cstr("Sun"), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(date(kDate, bytes({0x1F, 0x01, 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(date(kDate, Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeDateValue, LongIntegerOfFiveOctetsIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(date(kDate, bytes({0x05, 0x00, 0x2E, 0xBC, 0x98, 0xA1}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeDateValue, TruncatedDateIsRefusedAtEveryLength) {
    for (size_t n = 1; n < kNov1994.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = date(kDate, Bytes(kNov1994.begin(), kNov1994.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

TEST(DecodeDateValue, FullOutputIsRefusedWith214AndKeepsTheCursor) {
    // "date:" + 29 characters + "\n" is 35 octets.
    OutBuffer out(34);
    DecodeRun r = date(kDate, kNov1994, out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    OutBuffer exact(35);
    EXPECT_EQ(date(kDate, kNov1994, exact).status, WSP_OK);
    EXPECT_EQ(exact->length, 35);
}

// ---- wsp_dec_retry_after ----

TEST(DecodeRetryAfter, AbsoluteDate) {
    OutBuffer out(256);
    DecodeRun r = retry_after(bytes({0x03, 0x80, 0x01, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out.text(), "retry-after:Thu, 01 Jan 1970 00:00:00 GMT\n");
}

TEST(DecodeRetryAfter, RelativeSeconds) {
    OutBuffer out(256);
    DecodeRun r = retry_after(bytes({0x02, 0x81, 0x85}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 3u);
    DecodeRun l = retry_after(bytes({0x04, 0x81, 0x02, 0x01, 0x00}), out);
    EXPECT_EQ(l.status, WSP_OK);
    EXPECT_EQ(l.moved, 5u);
    EXPECT_EQ(out.text(), "retry-after:5\nretry-after:256\n");
}

TEST(DecodeRetryAfter, LengthLongerThanTheValueKeepsTheLineAndFails) {
    OutBuffer out(256);
    DecodeRun r = retry_after(bytes({0x03, 0x81, 0x85, 0x00}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "retry-after:5\n");
}

TEST(DecodeRetryAfter, LengthZeroKeepsTheLineAndFails) {
    OutBuffer out(256);
    DecodeRun r = retry_after(bytes({0x00, 0x81, 0x85}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "retry-after:5\n");
}

TEST(DecodeRetryAfter, UnknownFormIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(retry_after(bytes({0x02, 0x82, 0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(retry_after(bytes({0x02, 0x01, 0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(retry_after(bytes({0x02, 'a', 0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeRetryAfter, FirstOctetMustBeAShortLengthWithinTheValue) {
    OutBuffer out(256);
    EXPECT_EQ(retry_after(bytes({0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(retry_after(bytes({0x1F, 0x02, 0x81, 0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(retry_after(bytes({0x04, 0x81, 0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(retry_after(Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(retry_after(bytes({0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeRetryAfter, InnerValueNeedingAnOctetPastTheEndIsRefused) {
    // The length (3) equals what is left after it, but the Long-integer
    // inside needs one octet more.
    OutBuffer out(256);
    DecodeRun r = retry_after(bytes({0x03, 0x81, 0x02, 0x01}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeRetryAfter, TruncatedAtEveryLength) {
    Bytes full = bytes({0x04, 0x81, 0x02, 0x01, 0x00});
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = retry_after(Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

TEST(DecodeRetryAfter, FullOutputIsRefusedWith214) {
    OutBuffer out(13);
    DecodeRun r = retry_after(bytes({0x02, 0x81, 0x85}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    OutBuffer exact(14);
    EXPECT_EQ(retry_after(bytes({0x02, 0x81, 0x85}), exact).status, WSP_OK);
    EXPECT_EQ(exact.text(), "retry-after:5\n");
}

// ---- wsp_dec_if_range ----

TEST(DecodeIfRange, DateForm) {
    OutBuffer out(256);
    DecodeRun r = if_range(kNov1994, out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 5u);
    EXPECT_EQ(out.text(), std::string("if-range:") + kNov1994Text + "\n");
}

TEST(DecodeIfRange, TextFormMergesLikeATextValue) {
    OutBuffer out(256);
    DecodeRun r = if_range(cstr("\"etag\""), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 7u);
    EXPECT_EQ(if_range(bytes({0x22, 'x', 0x00}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "if-range:\"etag\",\"x\n");
}

TEST(DecodeIfRange, TextFormIntoAFullOutputSucceedsAndMovesTheCursor) {
    OutBuffer out(8);
    DecodeRun r = if_range(cstr("abc"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeIfRange, DateFormIntoAFullOutputKeepsTheCursor) {
    OutBuffer out(8);
    DecodeRun r = if_range(kNov1994, out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeIfRange, OtherClassesAreRefused) {
    OutBuffer out(256);
    EXPECT_EQ(if_range(bytes({0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(if_range(bytes({0x1F, 0x01, 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(if_range(Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(if_range(bytes({'a', 'b'}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- wsp_dec_content_md5 ----

TEST(DecodeContentMd5, EveryOctetHasItsOwnPrefixAndNoLeadingZero) {
    Bytes v = {0x10};
    for (int i = 0; i < 16; ++i) v.push_back(static_cast<uint8_t>(i));
    OutBuffer out(256);
    DecodeRun r = md5(v, out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 17u);
    const std::string value = "0X00X10X20X30X40X50X60X70X80X90XA0XB0XC0XD0XE0XF";
    EXPECT_EQ(value.size(), 48u);
    EXPECT_EQ(out.text(), "content-md5:" + value + "\n");
}

TEST(DecodeContentMd5, TwoDigitOctetsGiveTheLongestText) {
    Bytes v = {0x10};
    for (int i = 0; i < 16; ++i) v.push_back(static_cast<uint8_t>(0xF0 + i));
    OutBuffer out(256);
    EXPECT_EQ(md5(v, out).status, WSP_OK);
    EXPECT_EQ(out.text(), "content-md5:0XF00XF10XF20XF30XF40XF50XF60XF70XF80XF90XFA0XFB0XFC0XFD0XFE0XFF\n");
    EXPECT_EQ(out->length, 12 + 64 + 1);
}

TEST(DecodeContentMd5, LengthMustBeExactly16) {
    OutBuffer out(256);
    Bytes fifteen(16, 0x41);
    fifteen[0] = 0x0F;
    EXPECT_EQ(md5(fifteen, out).status, WSP_ERR_FAIL);
    Bytes seventeen(18, 0x41);
    seventeen[0] = 0x11;
    EXPECT_EQ(md5(seventeen, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(md5(bytes({0x90}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(md5(Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeContentMd5, TruncatedDigestIsRefusedAtEveryLength) {
    Bytes full(17, 0xAB);
    full[0] = 0x10;
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = md5(Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

TEST(DecodeContentMd5, RepeatsGetOneLineEachAndAFullOutputIsRefused) {
    Bytes v(17, 0x11);
    v[0] = 0x10;
    OutBuffer out(2 * 77);
    EXPECT_EQ(md5(v, out).status, WSP_OK);
    EXPECT_EQ(md5(v, out).status, WSP_OK);
    EXPECT_EQ(out->length, 2 * 77);
    DecodeRun r = md5(v, out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

// ---- wsp_dec_bearer and wsp_dec_push_flag ----

TEST(DecodeBearer, ShortAndLongIntegers) {
    OutBuffer out(256);
    DecodeRun r = bearer(bytes({0x85}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "bearer-indication:5\n");

    OutBuffer out2(256);
    DecodeRun l = bearer(bytes({0x02, 0x01, 0x00}), out2);
    EXPECT_EQ(l.status, WSP_OK);
    EXPECT_EQ(l.moved, 3u);
    EXPECT_EQ(out2.text(), "bearer-indication:256\n");
}

TEST(DecodeBearer, OnlyTheFirstOccurrenceIsWritten) {
    OutBuffer out(256);
    ASSERT_EQ(bearer(bytes({0x85}), out).status, WSP_OK);
    DecodeRun r = bearer(bytes({0x86}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "bearer-indication:5\n");
}

TEST(DecodeBearer, TheNameAnywhereInTheOutputRefusesIt) {
    OutBuffer out(256);
    ASSERT_EQ(wsp_append_header_line(out.get(), "x-note", "no-bearer-indication-here"), WSP_OK);
    DecodeRun r = bearer(bytes({0x85}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(out.text(), "x-note:no-bearer-indication-here\n");
}

TEST(DecodeBearer, OtherClassesAreRefused) {
    OutBuffer out(256);
    EXPECT_EQ(bearer(cstr("5"), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(bearer(bytes({0x1F, 0x01, 0x05}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(bearer(Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(bearer(bytes({0x02, 0x01}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeBearer, FullOutputIsRefusedWith214) {
    OutBuffer out(19);
    DecodeRun r = bearer(bytes({0x85}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    OutBuffer exact(20);
    EXPECT_EQ(bearer(bytes({0x85}), exact).status, WSP_OK);
    EXPECT_EQ(exact.text(), "bearer-indication:5\n");
}

TEST(DecodePushFlag, ValuesBelowEightAreWritten) {
    OutBuffer out(256);
    DecodeRun r = push_flag(bytes({0x87}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "push-flag:7\n");
}

TEST(DecodePushFlag, EightAndAboveAreRefused) {
    OutBuffer out(256);
    EXPECT_EQ(push_flag(bytes({0x88}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(push_flag(bytes({0xFF}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePushFlag, OnlyShortIntegersAreAccepted) {
    OutBuffer out(256);
    EXPECT_EQ(push_flag(bytes({0x01, 0x01}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(push_flag(cstr("1"), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(push_flag(Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePushFlag, OnlyTheFirstOccurrenceIsWritten) {
    OutBuffer out(256);
    ASSERT_EQ(push_flag(bytes({0x80}), out).status, WSP_OK);
    DecodeRun r = push_flag(bytes({0x81}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "push-flag:0\n");
}

// X-Wap-Application-Id (written once per output) and Accept-Application
// (repeats merged into one line).
#include <gtest/gtest.h>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

constexpr uint32_t kAppId = 0x2F;
constexpr uint32_t kAcceptApp = 0x32;

DecodeRun app_id(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_app_id, kAppId, v, out); }
DecodeRun accept_app(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_accept_app, kAcceptApp, v, out); }

} // namespace

// ---- wsp_dec_app_id ----

TEST(DecodeAppId, ShortCode) {
    OutBuffer out(256);
    DecodeRun r = app_id(bytes({0x84}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "x-wap-application-id:x-wap-application:mms.ua\n");
}

TEST(DecodeAppId, ShortCodeZeroIsTheWildcardRow) {
    OutBuffer out(256);
    EXPECT_EQ(app_id(bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "x-wap-application-id:x-wap-application:*\n");
}

TEST(DecodeAppId, CodeWithoutRowIsRefused) {
    OutBuffer out(256);
    DecodeRun r = app_id(bytes({0x86}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(app_id(bytes({0x02, 0x80, 0x06}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAppId, LongCodes) {
    OutBuffer out(256);
    DecodeRun r = app_id(bytes({0x02, 0x80, 0x05}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 3u);
    EXPECT_EQ(out.text(), "x-wap-application-id:x-vantrell:location.ua\n");

    OutBuffer out2(256);
    EXPECT_EQ(app_id(bytes({0x02, 0x90, 0x35}), out2).status, WSP_OK);
    EXPECT_EQ(out2.text(), "x-wap-application-id:x-microsoft:drm.license\n");
}

TEST(DecodeAppId, LongCodeZeroLengthIsCodeZero) {
    OutBuffer out(256);
    DecodeRun r = app_id(bytes({0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "x-wap-application-id:x-wap-application:*\n");
}

TEST(DecodeAppId, BrokenLongCodeReturnsTheReadersStatus) {
    OutBuffer out(256);
    EXPECT_EQ(app_id(bytes({0x05, 0, 0, 0, 0, 4}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(app_id(bytes({0x02, 0x80}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(app_id(bytes({0x01}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAppId, Text) {
    OutBuffer out(256);
    DecodeRun r = app_id(cstr("x-wap-application:push.sia"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 27u);
    EXPECT_EQ(out.text(), "x-wap-application-id:x-wap-application:push.sia\n");
}

TEST(DecodeAppId, QuotedAndQuoteTexts) {
    OutBuffer out(256);
    EXPECT_EQ(app_id(bytes({0x22, 'a', 0x00}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "x-wap-application-id:\"a\n");
    OutBuffer out2(256);
    DecodeRun r = app_id(bytes({0x7F, 0xC1, 0x00}), out2);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 3u);
    EXPECT_EQ(out2.text(), "x-wap-application-id:\xC1\n");
}

TEST(DecodeAppId, UnterminatedTextIsWrittenAsReadAndTheCursorStays) {
    // The reader's failure is not looked at: the octets it stored make the
    // value and the cursor is where the reader left it.
    OutBuffer out(256);
    DecodeRun r = app_id(bytes({'a', 'b', 'c'}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "x-wap-application-id:abc\n");
}

TEST(DecodeAppId, TextStopsAtAForbiddenOctet) {
    OutBuffer out(256);
    DecodeRun r = app_id(bytes({'a', 'b', 0x01, 'c', 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "x-wap-application-id:ab\n");
}

TEST(DecodeAppId, OverLongTextIsCutAt198Characters) {
    OutBuffer out(512);
    DecodeRun r = app_id(cstr(repeated(250, 'x')), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "x-wap-application-id:" + repeated(198, 'x') + "\n");
}

TEST(DecodeAppId, CommaAfterTheValueRefusesIt) {
    OutBuffer out(256);
    DecodeRun r = app_id(bytes({0x84, 0x2C, 0x82}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    Bytes text = cat({cstr("a"), bytes({0x2C})});
    EXPECT_EQ(app_id(text, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAppId, CommaPastTheEndDoesNotCount) {
    OutBuffer out(256);
    DecodeRun r = decode_value_within(wsp_dec_app_id, kAppId, bytes({0x84, 0x2C}), 1, out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "x-wap-application-id:x-wap-application:mms.ua\n");
}

TEST(DecodeAppId, OnlyOneLineIsEverWritten) {
    OutBuffer out(256);
    ASSERT_EQ(app_id(bytes({0x84}), out).status, WSP_OK);
    DecodeRun r = app_id(bytes({0x82}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "x-wap-application-id:x-wap-application:mms.ua\n");
}

TEST(DecodeAppId, OtherClassesAreRefused) {
    OutBuffer out(256);
    EXPECT_EQ(app_id(bytes({0x1F, 0x01, 0x84}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(app_id(Bytes{}, out).status, WSP_ERR_ARG);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAppId, FullOutputIsRefusedWith214) {
    // "x-wap-application-id:x-wap-application:*\n" is 41 octets.
    OutBuffer out(40);
    DecodeRun r = app_id(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    OutBuffer exact(41);
    EXPECT_EQ(app_id(bytes({0x80}), exact).status, WSP_OK);
    EXPECT_EQ(exact->length, 41);
}

// ---- wsp_dec_accept_app ----

TEST(DecodeAcceptApp, ShortZeroIsAnyApplication) {
    OutBuffer out(256);
    DecodeRun r = accept_app(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "accept-application:*\n");
}

TEST(DecodeAcceptApp, CodesAndTextsMergeIntoOneLine) {
    OutBuffer out(256);
    EXPECT_EQ(accept_app(bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(accept_app(bytes({0x82}), out).status, WSP_OK);
    EXPECT_EQ(accept_app(bytes({0x02, 0x90, 0x34}), out).status, WSP_OK);
    EXPECT_EQ(accept_app(cstr("x-foo"), out).status, WSP_OK);
    EXPECT_EQ(out.text(),
              "accept-application:*,x-wap-application:wml.ua,x-microsoft:drm.meter,x-foo\n");
}

TEST(DecodeAcceptApp, LongCodeZeroIsTheWildcardRowNotTheStar) {
    OutBuffer out(256);
    DecodeRun r = accept_app(bytes({0x01, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "accept-application:x-wap-application:*\n");
}

TEST(DecodeAcceptApp, CodeWithoutRowIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept_app(bytes({0x86}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(accept_app(bytes({0x02, 0x12, 0x34}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAcceptApp, BrokenLongCodeReturnsTheReadersStatus) {
    OutBuffer out(256);
    EXPECT_EQ(accept_app(bytes({0x05, 0, 0, 0, 0, 1}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(accept_app(bytes({0x02, 0x90}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAcceptApp, UnterminatedTextIsWrittenAsReadAndTheCursorStays) {
    OutBuffer out(256);
    DecodeRun r = accept_app(bytes({'x', 'y'}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out.text(), "accept-application:xy\n");
}

TEST(DecodeAcceptApp, EmptyQuotedTextIsWritten) {
    OutBuffer out(256);
    DecodeRun r = accept_app(bytes({0x7F, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "accept-application:\n");
}

TEST(DecodeAcceptApp, OtherClassesAreRefused) {
    OutBuffer out(256);
    EXPECT_EQ(accept_app(bytes({0x1F, 0x01, 0x80}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(accept_app(Bytes{}, out).status, WSP_ERR_ARG);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAcceptApp, FullOutputPassesOnTruncatedAndKeepsTheCursor) {
    OutBuffer out(20);
    DecodeRun r = accept_app(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    OutBuffer exact(21);
    EXPECT_EQ(accept_app(bytes({0x80}), exact).status, WSP_OK);
    EXPECT_EQ(exact.text(), "accept-application:*\n");
}

// Text header values: the classes accepted, the 1600-character area,
// merging of repeats, the If-Match / If-None-Match "*" lines and a full
// output that loses the header without an error.
#include <gtest/gtest.h>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

constexpr uint32_t kContentBase = 0x0A;
constexpr uint32_t kEtag = 0x13;
constexpr uint32_t kIfMatch = 0x18;
constexpr uint32_t kIfNoneMatch = 0x19;
constexpr uint32_t kUserAgent = 0x29;

DecodeRun text_header(uint32_t code, const Bytes &value, OutBuffer &out) {
    return decode_value(wsp_dec_text_value, code, value, out);
}

} // namespace

TEST(DecodeTextValue, PlainTextIsWrittenAndTheCursorMovesPastItsTerminator) {
    OutBuffer out(256);
    DecodeRun r = text_header(kContentBase, cstr("http://a/"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 10u);
    EXPECT_EQ(out.text(), "content-base:http://a/\n");
    EXPECT_EQ(out->length, 23);
}

TEST(DecodeTextValue, QuotedStringKeepsItsQuotationMark) {
    OutBuffer out(256);
    DecodeRun r = text_header(kEtag, bytes({0x22, 'a', 'b', 'c', 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 5u);
    EXPECT_EQ(out.text(), "etag:\"abc\n");
}

TEST(DecodeTextValue, QuoteOctetIsDroppedAndAHighFirstCharacterKept) {
    OutBuffer out(256);
    DecodeRun r = text_header(kUserAgent, bytes({0x7F, 0xE9, 'x', 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out.text(), "user-agent:\xE9x\n");
}

TEST(DecodeTextValue, TextMayHoldHighOctetsTabsAndQuotationMarks) {
    OutBuffer out(256);
    DecodeRun r = text_header(kUserAgent, bytes({'a', 0x09, 0xFF, '"', 'b', 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(out.text(), "user-agent:a\t\xFF\"b\n");
}

TEST(DecodeTextValue, NonTextClassesAreRefused) {
    OutBuffer out(256);
    for (int first : {0x00, 0x05, 0x1E, 0x1F, 0x80, 0xFF}) {
        DecodeRun r = text_header(kContentBase, bytes({first, 'a', 0x00}), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << first;
        EXPECT_EQ(r.moved, 0u) << first;
    }
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTextValue, EmptyValueIsRefused) {
    OutBuffer out(256);
    DecodeRun r = text_header(kContentBase, Bytes{}, out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeTextValue, ForbiddenOctetIsRefused) {
    OutBuffer out(256);
    DecodeRun r = text_header(kContentBase, bytes({'a', 0x7F, 'b', 0x00}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTextValue, TextWithoutTerminatorIsRefusedAtEveryLength) {
    Bytes full = cstr("http://a/");
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = text_header(kContentBase, Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

TEST(DecodeTextValue, QuoteOctetAloneOrWithUnterminatedTextIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(text_header(kUserAgent, bytes({0x7F}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(text_header(kUserAgent, bytes({0x7F, 0xE9}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTextValue, TextWithinASmallerRemainingIsRefused) {
    // The terminator lies one octet past the remaining count.
    OutBuffer out(256);
    DecodeRun r = decode_value_within(wsp_dec_text_value, kContentBase, cstr("abc"), 3, out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeTextValue, TextOf1600CharactersFitsAnd1601IsRefused) {
    OutBuffer out(2048);
    DecodeRun ok = text_header(kUserAgent, cstr(repeated(1600, 'u')), out);
    EXPECT_EQ(ok.status, WSP_OK);
    EXPECT_EQ(ok.moved, 1601u);
    EXPECT_EQ(out.text(), "user-agent:" + repeated(1600, 'u') + "\n");

    OutBuffer out2(2048);
    DecodeRun bad = text_header(kUserAgent, cstr(repeated(1601, 'u')), out2);
    EXPECT_EQ(bad.status, WSP_ERR_FAIL);
    EXPECT_EQ(bad.moved, 0u);
    EXPECT_EQ(out2->length, 0);
}

TEST(DecodeTextValue, RepeatsShareOneLine) {
    OutBuffer out(256);
    EXPECT_EQ(text_header(kUserAgent, cstr("a"), out).status, WSP_OK);
    EXPECT_EQ(text_header(kUserAgent, cstr("b"), out).status, WSP_OK);
    EXPECT_EQ(text_header(kUserAgent, cstr("c"), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "user-agent:a,b,c\n");
}

TEST(DecodeTextValue, FullOutputLosesTheHeaderSilently) {
    // "user-agent:abc\n" is 15 octets: one short.
    OutBuffer out(14);
    DecodeRun r = text_header(kUserAgent, cstr("abc"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTextValue, ExactlyFullOutputTakesTheLine) {
    OutBuffer out(15);
    DecodeRun r = text_header(kUserAgent, cstr("abc"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(out->length, 15);
    EXPECT_EQ(out.text(), "user-agent:abc\n");
}

TEST(DecodeTextValue, FullOutputWhileMergingLosesTheValueSilently) {
    OutBuffer out(20);
    ASSERT_EQ(text_header(kUserAgent, cstr("abc"), out).status, WSP_OK);
    DecodeRun r = text_header(kUserAgent, cstr("defgh"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 6u);
    EXPECT_EQ(out->length, 15);
}

TEST(DecodeTextValue, IfMatchWildcardTwiceGivesTwoLines) {
    OutBuffer out(256);
    EXPECT_EQ(text_header(kIfMatch, cstr("*"), out).status, WSP_OK);
    DecodeRun r = text_header(kIfMatch, cstr("*"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "if-match:*\nif-match:*\n");
}

TEST(DecodeTextValue, IfMatchOtherTextsShareOneLine) {
    OutBuffer out(256);
    EXPECT_EQ(text_header(kIfMatch, cstr("\"x\""), out).status, WSP_OK);
    EXPECT_EQ(text_header(kIfMatch, cstr("\"y\""), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "if-match:\"x\",\"y\"\n");
}

TEST(DecodeTextValue, IfNoneMatchWildcardIsAPlainLineAndALaterTextMergesIntoIt) {
    OutBuffer out(256);
    EXPECT_EQ(text_header(kIfNoneMatch, cstr("*"), out).status, WSP_OK);
    EXPECT_EQ(text_header(kIfNoneMatch, cstr("*"), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "if-none-match:*\nif-none-match:*\n");
    EXPECT_EQ(text_header(kIfNoneMatch, cstr("abc"), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "if-none-match:*,abc\nif-none-match:*\n");
}

TEST(DecodeTextValue, WildcardOnlyCountsAsTheWholeText) {
    OutBuffer out(256);
    EXPECT_EQ(text_header(kIfMatch, cstr("**"), out).status, WSP_OK);
    EXPECT_EQ(text_header(kIfMatch, cstr("*a"), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "if-match:**,*a\n");
}

TEST(DecodeTextValue, WildcardOfOtherHeadersMerges) {
    OutBuffer out(256);
    EXPECT_EQ(text_header(kEtag, cstr("*"), out).status, WSP_OK);
    EXPECT_EQ(text_header(kEtag, cstr("*"), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "etag:*,*\n");
}

TEST(DecodeTextValue, WildcardIntoAFullOutputIsRefusedAndKeepsTheCursor) {
    // "if-match:*\n" is 11 octets; the plain writer answers -214.
    OutBuffer out(10);
    DecodeRun r = text_header(kIfMatch, cstr("*"), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTextValue, WildcardFillsAnExactlySizedOutput) {
    OutBuffer out(11);
    DecodeRun r = text_header(kIfMatch, cstr("*"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "if-match:*\n");
}

TEST(DecodeTextValue, EveryTextHeaderWritesUnderItsOwnName) {
    struct Case {
        uint32_t code;
        const char *name;
    };
    const Case cases[] = {{0x0A, "content-base"}, {0x0E, "content-location"}, {0x13, "etag"},
                          {0x15, "from"},         {0x16, "host"},             {0x18, "if-match"},
                          {0x19, "if-none-match"}, {0x1C, "location"},        {0x24, "referer"},
                          {0x26, "server"},       {0x28, "upgrade"},          {0x29, "user-agent"},
                          {0x2B, "via"},          {0x30, "x-wap-content-uri"}, {0x31, "x-wap-initiator-uri"}};
    for (const Case &c : cases) {
        OutBuffer out(256);
        DecodeRun r = text_header(c.code, cstr("v"), out);
        EXPECT_EQ(r.status, WSP_OK) << c.name;
        EXPECT_EQ(out.text(), std::string(c.name) + ":v\n");
    }
}

TEST(DecodeTextValue, CodePastTheNameTableIsRefused) {
    OutBuffer out(256);
    DecodeRun r = text_header(0x48, cstr("v"), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

// Listed header values (codings, range units, Connection, Content-Language,
// Public, Transfer-Encoding), Allow, Vary and Trailer.
#include <gtest/gtest.h>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

constexpr uint32_t kAcceptEncoding = 0x02;
constexpr uint32_t kAcceptRanges = 0x04;
constexpr uint32_t kAllow = 0x06;
constexpr uint32_t kConnection = 0x09;
constexpr uint32_t kContentEncoding = 0x0B;
constexpr uint32_t kContentLanguage = 0x0C;
constexpr uint32_t kPublic = 0x22;
constexpr uint32_t kTransferEncoding = 0x27;
constexpr uint32_t kVary = 0x2A;
constexpr uint32_t kTrailer = 0x3A;

DecodeRun listed(uint32_t code, const Bytes &value, OutBuffer &out) {
    return decode_value(wsp_dec_listed_value, code, value, out);
}
DecodeRun allow(const Bytes &value, OutBuffer &out) { return decode_value(wsp_dec_allow, kAllow, value, out); }
DecodeRun vary(const Bytes &value, OutBuffer &out) { return decode_value(wsp_dec_vary, kVary, value, out); }
DecodeRun trailer(const Bytes &value, OutBuffer &out) { return decode_value(wsp_dec_trailer, kTrailer, value, out); }

} // namespace

// ---- wsp_dec_listed_value ----

TEST(DecodeListedValue, AcceptRangesNone) {
    OutBuffer out(256);
    DecodeRun r = listed(kAcceptRanges, bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "accept-ranges:none\n");
}

TEST(DecodeListedValue, SecondAcceptRangesAfterNoneIsRefusedByTheMergingWriter) {
    OutBuffer out(256);
    ASSERT_EQ(listed(kAcceptRanges, bytes({0x80}), out).status, WSP_OK);
    DecodeRun r = listed(kAcceptRanges, bytes({0x81}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 19);
}

TEST(DecodeListedValue, NoneAfterBytesIsRefusedToo) {
    OutBuffer out(256);
    ASSERT_EQ(listed(kAcceptRanges, bytes({0x81}), out).status, WSP_OK);
    DecodeRun r = listed(kAcceptRanges, bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeListedValue, TwoByteRangesShareOneLine) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kAcceptRanges, bytes({0x81}), out).status, WSP_OK);
    EXPECT_EQ(listed(kAcceptRanges, cstr("bytes"), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-ranges:bytes,bytes\n");
}

TEST(DecodeListedValue, RangeUnitWithoutRowIsRefused) {
    OutBuffer out(256);
    DecodeRun r = listed(kAcceptRanges, bytes({0x82}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeListedValue, ContentCodings) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kAcceptEncoding, bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(listed(kAcceptEncoding, bytes({0x82}), out).status, WSP_OK);
    EXPECT_EQ(listed(kContentEncoding, bytes({0x81}), out).status, WSP_OK);
    EXPECT_EQ(listed(kAcceptEncoding, bytes({0x83}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out.text(), "accept-encoding:gzip,deflate\ncontent-encoding:compress\n");
}

TEST(DecodeListedValue, LaterAcceptEncodingCodeKeepsItsTable) {
    OutBuffer out(256);
    EXPECT_EQ(listed(0x3C, bytes({0x82}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-encoding:deflate\n");
}

TEST(DecodeListedValue, ConnectionCloseAndNothingElse) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kConnection, bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(listed(kConnection, bytes({0x81}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out.text(), "connection:close\n");
}

TEST(DecodeListedValue, PublicMethods) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kPublic, bytes({0xC0}), out).status, WSP_OK);
    EXPECT_EQ(listed(kPublic, bytes({0xE1}), out).status, WSP_OK);
    EXPECT_EQ(listed(kPublic, bytes({0xC5}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out.text(), "public:GET,PUT\n");
}

TEST(DecodeListedValue, TransferEncodingChunked) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kTransferEncoding, bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(listed(kTransferEncoding, bytes({0x81}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out.text(), "transfer-encoding:chunked\n");
}

TEST(DecodeListedValue, TokenIsWrittenAsItStands) {
    OutBuffer out(256);
    DecodeRun r = listed(kContentEncoding, cstr("x-zip"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 6u);
    EXPECT_EQ(out.text(), "content-encoding:x-zip\n");
}

TEST(DecodeListedValue, TokenWithSeparatorIsRefused) {
    OutBuffer out(256);
    DecodeRun r = listed(kContentEncoding, cstr("a/b"), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeListedValue, OverLongTokenPassesOnTruncated) {
    OutBuffer out(512);
    DecodeRun r = listed(kContentEncoding, cstr(repeated(198, 'z')), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeListedValue, TokenOf197CharactersFits) {
    OutBuffer out(512);
    DecodeRun r = listed(kContentEncoding, cstr(repeated(197, 'z')), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 198u);
    EXPECT_EQ(out.text(), "content-encoding:" + repeated(197, 'z') + "\n");
}

TEST(DecodeListedValue, UnterminatedTokenIsRefusedAtEveryLength) {
    Bytes full = cstr("x-zip");
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = listed(kContentEncoding, Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
    }
}

TEST(DecodeListedValue, ContentLanguageShortCodeGivesTheTwoLetterCode) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kContentLanguage, bytes({0x99}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "content-language:en\n");
}

// A Long-integer code is refused when its low octet exceeds the octets left
// in the block, so these values carry the rest of a block behind them.
Bytes with_block_after(Bytes value, size_t block) {
    value.resize(block, 0x00);
    return value;
}

TEST(DecodeListedValue, ContentLanguageLongCode) {
    OutBuffer out(256);
    DecodeRun r = listed(kContentLanguage, with_block_after(bytes({0x01, 0x81}), 129), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "content-language:na\n");
}

TEST(DecodeListedValue, ContentLanguageLongCodeInNeitherTableWritesUnknownLanguage) {
    OutBuffer out(256);
    DecodeRun r = listed(kContentLanguage, with_block_after(bytes({0x01, 0x80}), 128), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "content-language:unknown-language\n");
}

TEST(DecodeListedValue, ContentLanguageShortCodeWithoutRowWritesUnknownLanguage) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kContentLanguage, bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "content-language:unknown-language\n");
}

TEST(DecodeListedValue, ContentLanguageLongCodeAbove255IsRefused) {
    OutBuffer out(256);
    DecodeRun r = listed(kContentLanguage, with_block_after(bytes({0x02, 0x00, 0x19}), 30), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 3u);
    EXPECT_EQ(out.text(), "content-language:en\n");
    DecodeRun big = listed(kContentLanguage, with_block_after(bytes({0x02, 0x01, 0x19}), 300), out);
    EXPECT_EQ(big.status, WSP_ERR_FAIL);
    EXPECT_EQ(big.moved, 0u);
}

TEST(DecodeListedValue, ContentLanguageLongCodeOneAboveRemainingIsRefused) {
    OutBuffer out(256);
    DecodeRun r = listed(kContentLanguage, with_block_after(bytes({0x01, 0x81}), 128), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeListedValue, ContentLanguageLongCodeAboveRemainingIsRefused) {
    // Code 3 with two octets in the value: the low octet exceeds what is left.
    OutBuffer out(256);
    DecodeRun r = listed(kContentLanguage, bytes({0x01, 0x03}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    DecodeRun at = listed(kContentLanguage, bytes({0x01, 0x02}), out);
    EXPECT_EQ(at.status, WSP_OK);
    EXPECT_EQ(out.text(), "content-language:ab\n");
}

TEST(DecodeListedValue, ContentLanguageLongCodeCutByTheEndIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kContentLanguage, bytes({0x01}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(listed(kContentLanguage, bytes({0x02, 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(listed(kContentLanguage, bytes({0x05, 0, 0, 0, 0, 0x19}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeListedValue, LongCodeIsOnlyForContentLanguage) {
    OutBuffer out(256);
    DecodeRun r = listed(kContentEncoding, bytes({0x01, 0x00}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeListedValue, QuoteClassesAreRefusedWith211) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kContentEncoding, bytes({0x1F, 0x01, 0x00}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(listed(kContentEncoding, bytes({0x7F, 'a', 0x00}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(listed(kContentEncoding, bytes({0x22, 'a', 0x00}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeListedValue, EmptyValueGives211) {
    OutBuffer out(256);
    EXPECT_EQ(listed(kAcceptRanges, Bytes{}, out).status, WSP_ERR_ARG);
}

TEST(DecodeListedValue, CodeWithoutListIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(listed(0x05, bytes({0x80}), out).status, WSP_ERR_FAIL);
}

TEST(DecodeListedValue, FullOutputPassesOnTruncatedAndKeepsTheCursor) {
    // "connection:close\n" is 17 octets.
    OutBuffer out(16);
    DecodeRun r = listed(kConnection, bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    OutBuffer exact(17);
    EXPECT_EQ(listed(kConnection, bytes({0x80}), exact).status, WSP_OK);
    EXPECT_EQ(exact.text(), "connection:close\n");
}

// ---- wsp_dec_allow ----

TEST(DecodeAllow, MethodCodesAndMerging) {
    OutBuffer out(256);
    DecodeRun r = allow(bytes({0xC0}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(allow(bytes({0xC2}), out).status, WSP_OK);
    EXPECT_EQ(allow(bytes({0xE0}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "allow:GET,HEAD,POST\n");
}

TEST(DecodeAllow, UnnamedMethodCodeIsWrittenAsItsNumber) {
    OutBuffer out(256);
    EXPECT_EQ(allow(bytes({0xC5}), out).status, WSP_OK);
    EXPECT_EQ(allow(bytes({0xFF}), out).status, WSP_OK);
    EXPECT_EQ(allow(bytes({0xE2}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "allow:69,127,98\n");
}

TEST(DecodeAllow, CodeBelowTheMethodRangeIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(allow(bytes({0xBF}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(allow(bytes({0x80}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAllow, OnlyShortIntegersAreAccepted) {
    OutBuffer out(256);
    DecodeRun r = allow(cstr("GET"), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(allow(bytes({0x01, 0x40}), out).status, WSP_ERR_FAIL);
}

TEST(DecodeAllow, EmptyValueGives211) {
    OutBuffer out(256);
    EXPECT_EQ(allow(Bytes{}, out).status, WSP_ERR_ARG);
}

TEST(DecodeAllow, FullOutputPassesOnTruncatedAndKeepsTheCursor) {
    OutBuffer out(12);
    ASSERT_EQ(allow(bytes({0xC0}), out).status, WSP_OK);
    DecodeRun r = allow(bytes({0xC2}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 10);
}

// ---- wsp_dec_vary ----

TEST(DecodeVary, HeaderCodesBecomeNames) {
    OutBuffer out(256);
    DecodeRun r = vary(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(vary(bytes({0xC7}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "vary:accept,cache-control\n");
}

TEST(DecodeVary, CodeAbove71IsRefused) {
    OutBuffer out(256);
    DecodeRun r = vary(bytes({0xC8}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeVary, TokenIsWrittenAsItStands) {
    OutBuffer out(256);
    DecodeRun r = vary(cstr("x-foo"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 6u);
    EXPECT_EQ(out.text(), "vary:x-foo\n");
}

TEST(DecodeVary, TokenFailuresArePassedOn) {
    OutBuffer out(512);
    EXPECT_EQ(vary(cstr(repeated(198, 'v')), out).status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(vary(cstr("a b"), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(vary(bytes({'a', 'b'}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeVary, OtherClassesGive211) {
    OutBuffer out(256);
    EXPECT_EQ(vary(bytes({0x01, 0x80}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(vary(bytes({0x1F, 0x01, 0x80}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(vary(bytes({0x22, 'a', 0x00}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(vary(Bytes{}, out).status, WSP_ERR_ARG);
}

TEST(DecodeVary, FullOutputPassesOnTruncatedAndStillMovesTheCursor) {
    OutBuffer out(11);
    DecodeRun r = vary(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out->length, 0);
}

// ---- wsp_dec_trailer ----

TEST(DecodeTrailer, ShortCodeBecomesAName) {
    OutBuffer out(256);
    DecodeRun r = trailer(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(trailer(bytes({0xC7}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "trailer:accept,cache-control\n");
}

TEST(DecodeTrailer, RefusedNamesAsCodes) {
    OutBuffer out(256);
    EXPECT_EQ(trailer(bytes({0x8D}), out).status, WSP_ERR_FAIL); // content-length
    EXPECT_EQ(trailer(bytes({0xA7}), out).status, WSP_ERR_FAIL); // transfer-encoding
    EXPECT_EQ(trailer(bytes({0xBA}), out).status, WSP_ERR_FAIL); // trailer
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTrailer, RefusedNamesAsTextPass) {
    OutBuffer out(256);
    DecodeRun r = trailer(cstr("content-length"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 15u);
    EXPECT_EQ(out.text(), "trailer:content-length\n");
}

TEST(DecodeTrailer, CodeOnePastTheNameTableIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(trailer(bytes({0xC8}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(trailer(bytes({0xC9}), out).status, WSP_ERR_FAIL);
    // The same code as a Long-integer, with enough octets after it.
    Bytes v = bytes({0x01, 0x48});
    v.resize(80, 0x00);
    EXPECT_EQ(trailer(v, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTrailer, LongCode) {
    OutBuffer out(256);
    DecodeRun r = trailer(bytes({0x01, 0x02, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "trailer:accept-encoding\n");
}

TEST(DecodeTrailer, LongCodeAbove255OrAboveRemainingIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(trailer(bytes({0x02, 0x01, 0x00, 0x00}), out).status, WSP_ERR_FAIL);
    // Code 5 with two octets in the value.
    DecodeRun r = trailer(bytes({0x01, 0x05}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTrailer, BrokenLongCodeReturnsTheReadersStatus) {
    OutBuffer out(256);
    EXPECT_EQ(trailer(bytes({0x05, 0, 0, 0, 0, 1}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(trailer(bytes({0x01}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTrailer, TokenFailuresArePassedOn) {
    OutBuffer out(512);
    EXPECT_EQ(trailer(cstr(repeated(198, 't')), out).status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(trailer(cstr("a:b"), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeTrailer, OtherClassesGive211) {
    OutBuffer out(256);
    EXPECT_EQ(trailer(bytes({0x1F, 0x01, 0x80}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(trailer(bytes({0x7F, 'a', 0x00}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(trailer(bytes({0x22, 'a', 0x00}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(trailer(Bytes{}, out).status, WSP_ERR_ARG);
}

TEST(DecodeTrailer, FullOutputPassesOnTruncatedAndKeepsTheCursor) {
    OutBuffer out(14);
    DecodeRun r = trailer(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0u);
}

// Accept, Accept-Charset and Accept-Language value decoding: bare codes and
// tokens, the general form with a length and parameters, merging of repeats
// and a full output.
#include <gtest/gtest.h>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

constexpr uint32_t kAccept = 0x00;
constexpr uint32_t kAcceptCharset = 0x01;
constexpr uint32_t kAcceptLanguage = 0x03;

DecodeRun accept(uint32_t code, const Bytes &value, OutBuffer &out) {
    return decode_value(wsp_dec_accept, code, value, out);
}

} // namespace

// ---- bare Short-integer codes ----

TEST(DecodeAccept, BareMediaCodeWritesItsName) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x83}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "accept:text/plain\n");
    EXPECT_EQ(out->length, 18);
}

TEST(DecodeAccept, BareMediaCodeIsSearchedByCodeNotRow) {
    OutBuffer out(256);
    // 0x42 is the code of row 64.
    DecodeRun r = accept(kAccept, bytes({0xC2}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(out.text(), "accept:application/vnd.syncml.dm+wbxml\n");
}

TEST(DecodeAccept, BareMediaCodeWithoutRowIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0xC0}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
    EXPECT_EQ(out.text(), "");
}

TEST(DecodeAccept, BareCharsetCodeWritesItsName) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0xEA}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "accept-charset:utf-8\n");
}

TEST(DecodeAccept, BareCharsetCodeWithoutRowWritesUnknownCharset) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "accept-charset:unknown-charset\n");
}

TEST(DecodeAccept, BareLanguageCodeWritesTheFullNameNotTheTwoLetterCode) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptLanguage, bytes({0x99}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-language:english\n");
}

TEST(DecodeAccept, BareLanguageSynonymGivesTheFirstName) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAcceptLanguage, bytes({0x8E}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-language:bengali\n");
}

TEST(DecodeAccept, BareLanguageLastCodes) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAcceptLanguage, bytes({0xFF}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-language:uighur\n");
}

TEST(DecodeAccept, BareLanguageCodeWithoutRowWritesUnknownLanguage) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptLanguage, bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "accept-language:unknown-language\n");
}

// ---- bare tokens ----

TEST(DecodeAccept, BareTokenIsWrittenAsItStands) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, cstr("text/html"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 10u);
    EXPECT_EQ(out.text(), "accept:text/html\n");
}

TEST(DecodeAccept, BareTokenForCharsetAndLanguage) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAcceptCharset, cstr("koi8-r"), out).status, WSP_OK);
    EXPECT_EQ(accept(kAcceptLanguage, cstr("en"), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-charset:koi8-r\naccept-language:en\n");
}

TEST(DecodeAccept, BareTokenWithForbiddenOctetIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({'a', 0x01, 'b', 0x00}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, BareTokenWithoutTerminatorIsRefusedAtEveryLength) {
    Bytes full = cstr("text/html");
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = accept(kAccept, Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

TEST(DecodeAccept, BareTokenOf197CharactersFitsAnd198IsRefused) {
    OutBuffer out(512);
    DecodeRun ok = accept(kAccept, cstr(repeated(197, 'a')), out);
    EXPECT_EQ(ok.status, WSP_OK);
    EXPECT_EQ(ok.moved, 198u);
    EXPECT_EQ(out.text(), "accept:" + repeated(197, 'a') + "\n");

    OutBuffer out2(512);
    DecodeRun bad = accept(kAccept, cstr(repeated(198, 'a')), out2);
    EXPECT_EQ(bad.status, WSP_ERR_FAIL);
    EXPECT_EQ(bad.moved, 0u);
    EXPECT_EQ(out2->length, 0);
}

// ---- merging and a full output ----

TEST(DecodeAccept, RepeatsShareOneLine) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAccept, bytes({0x83}), out).status, WSP_OK);
    EXPECT_EQ(accept(kAccept, cstr("text/html"), out).status, WSP_OK);
    EXPECT_EQ(accept(kAccept, bytes({0x03, 0x82, 0x80, 0x33}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "accept:text/plain,text/html,text/html;q=0.50\n");
}

TEST(DecodeAccept, BareFormPassesOnTheMergingWritersFullStatusAndStillMovesTheCursor) {
    // "accept:text/plain\n" is 18 octets: one short.
    OutBuffer out(17);
    DecodeRun r = accept(kAccept, bytes({0x83}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, BareFormFillsAnExactlySizedOutput) {
    OutBuffer out(18);
    DecodeRun r = accept(kAccept, bytes({0x83}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(out->length, 18);
    EXPECT_EQ(out.text(), "accept:text/plain\n");
}

TEST(DecodeAccept, BareFormMergeIntoAFullOutputMovesTheCursor) {
    OutBuffer out(24);
    ASSERT_EQ(accept(kAccept, bytes({0x83}), out).status, WSP_OK);
    DecodeRun r = accept(kAccept, bytes({0x82}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out->length, 18);
}

TEST(DecodeAccept, EmptyValueIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, Bytes{}, out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeAccept, QuotedFirstOctetIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAccept, bytes({0x22, 'a', 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(accept(kAccept, bytes({0x7F, 'a', 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, CodeWithoutAcceptTableIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(0x02, bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeAccept, LaterCharsetAndEncodingCodesUseTheirTables) {
    OutBuffer out(256);
    EXPECT_EQ(accept(0x3B, bytes({0xEA}), out).status, WSP_OK);
    EXPECT_EQ(accept(0x3B, bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(accept(0x3C, bytes({0x81}), out).status, WSP_OK);
    EXPECT_EQ(accept(0x3C, bytes({0x83}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out.text(), "accept-charset:utf-8,unknown-charset\naccept-encoding:compress\n");
}

// ---- general form ----

TEST(DecodeAccept, GeneralFormMediaCodeWithQValue) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x03, 0x83, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out.text(), "accept:text/plain;q=0.50\n");
}

TEST(DecodeAccept, GeneralFormMediaTextWithParameters) {
    OutBuffer out(256);
    Bytes v = cat({bytes({0x0E}), cstr("text/html"), bytes({0x81, 0xEA, 0x80, 0x33})});
    DecodeRun r = accept(kAccept, v, out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 15u);
    EXPECT_EQ(out.text(), "accept:text/html;charset=utf-8;q=0.50\n");
}

TEST(DecodeAccept, GeneralFormWithLengthQuote) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x1F, 0x03, 0x83, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 5u);
    EXPECT_EQ(out.text(), "accept:text/plain;q=0.50\n");
}

TEST(DecodeAccept, GeneralFormWithBrokenLengthQuoteIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x1F, 0x80, 0x03, 0x83}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeAccept, GeneralFormOfLengthZeroWritesNothingAndMovesPastTheLength) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x00, 0x83}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralFormWithoutParametersIsRefusedOnPurpose) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x01, 0x83}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    Bytes text = cat({bytes({0x0A}), cstr("text/html")});
    EXPECT_EQ(accept(kAccept, text, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralFormLengthAboveRemainingIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x05, 0x83, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeAccept, GeneralFormParametersRunningPastTheEndAreRefused) {
    // The length (4) equals the octets left including itself: the last
    // parameter octet would lie past the end.
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x04, 0x83, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralFormLengthQuoteClaimingMoreThanTheBlockIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x1F, 0x7F, 0x83, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeAccept, GeneralFormWithNothingAfterTheLengthQuoteIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x1F, 0x05}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeAccept, GeneralFormMediaCodeWithoutRowIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x03, 0xC0, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralFormBrokenParameterIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x03, 0x83, 0x84, 0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralFormAcceptReadsNothingForAQuotedField) {
    // Nothing is read for the quoted octet: the whole length is parameters,
    // and a quotation mark cannot start one.
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x03, 0x22, 'a', 0x00}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralFormAcceptTakesAShortLengthFieldAsParameters) {
    // A Short-length field octet is not a media for Accept: the run is all
    // parameters, and 0x02 cannot start one.
    OutBuffer out(256);
    Bytes v = bytes({0x03, 0x02, 0x80, 0x33});
    DecodeRun r = accept(kAccept, v, out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralFormPassesOnTheFullStatusAndKeepsTheCursor) {
    OutBuffer out(20);
    DecodeRun r = accept(kAccept, bytes({0x03, 0x83, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralFormTruncatedAtEveryLengthNeverSucceeds) {
    Bytes full = cat({bytes({0x0E}), cstr("text/html"), bytes({0x81, 0xEA, 0x80, 0x33})});
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = accept(kAccept, Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

// ---- general form: charset ----

TEST(DecodeAccept, GeneralCharsetShortCodeWithQValue) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x02, 0xEA, 0x33}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 3u);
    EXPECT_EQ(out.text(), "accept-charset:utf-8;q=0.50\n");
}

TEST(DecodeAccept, GeneralCharsetZeroQValueKeepsTheBareQ) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x02, 0xEA, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 3u);
    EXPECT_EQ(out.text(), "accept-charset:utf-8;q\n");
}

TEST(DecodeAccept, GeneralCharsetShortCodeWithoutRowIsRefusedNotUnknown) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x02, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralCharsetLongCodeAlone) {
    // MIBenum 1004 is found at its own row and named iso-8859-1.
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x03, 0x02, 0x03, 0xEC}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out.text(), "accept-charset:iso-8859-1\n");
}

TEST(DecodeAccept, GeneralCharsetLongCodeWithQValue) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x04, 0x02, 0x03, 0xEC, 0x33}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 5u);
    EXPECT_EQ(out.text(), "accept-charset:iso-8859-1;q=0.50\n");
}

TEST(DecodeAccept, GeneralCharsetLongCodeWithoutRowIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x03, 0x02, 0x08, 0xCC}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralCharsetLongCodeLongerThanTheLengthIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x02, 0x02, 0x03, 0xEC}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralCharsetLongCodeOfFiveOctetsIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x06, 0x05, 0x00, 0x00, 0x00, 0x00, 0x6A}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralCharsetLongCodeCutByTheEndIsRefused) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x03, 0x02, 0x03}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeAccept, GeneralCharsetTextWithQValue) {
    OutBuffer out(256);
    Bytes v = cat({bytes({0x07}), cstr("utf-8"), bytes({0x33})});
    DecodeRun r = accept(kAcceptCharset, v, out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 8u);
    EXPECT_EQ(out.text(), "accept-charset:utf-8;q=0.50\n");
}

TEST(DecodeAccept, GeneralCharsetRefusesQuoteClasses) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAcceptCharset, bytes({0x03, 0x1F, 0x01, 0x6A}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(accept(kAcceptCharset, bytes({0x03, 0x7F, 'a', 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(accept(kAcceptCharset, bytes({0x03, 0x22, 'a', 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralCharsetOctetsLeftAfterTheQValueGive211) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptCharset, bytes({0x03, 0xEA, 0x33, 0x33}), out);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralCharsetQValueRunPastTheEnd) {
    // The q-value ends inside the block but its run claims one more octet:
    // octets of the run are left over (-211).
    OutBuffer out(256);
    DecodeRun cut = accept(kAcceptCharset, bytes({0x03, 0xEA, 0x33}), out);
    EXPECT_EQ(cut.status, WSP_ERR_ARG);
    EXPECT_EQ(cut.moved, 0u);
    // No octet of the run lies inside the block: the q-value would be read
    // past the end (-214).
    DecodeRun none = accept(kAcceptCharset, bytes({0x02, 0xEA}), out);
    EXPECT_EQ(none.status, WSP_ERR_FAIL);
    EXPECT_EQ(none.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralCharsetLineMergesWithBareOne) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAcceptCharset, bytes({0xEA}), out).status, WSP_OK);
    EXPECT_EQ(accept(kAcceptCharset, bytes({0x02, 0x84, 0x33}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-charset:utf-8,iso-8859-1;q=0.50\n");
}

// ---- general form: language ----

TEST(DecodeAccept, GeneralLanguageShortCodeWithQValue) {
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptLanguage, bytes({0x02, 0x99, 0x33}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-language:english;q=0.50\n");
}

TEST(DecodeAccept, GeneralLanguageLongCodeAloneAndWithQValue) {
    OutBuffer out(256);
    DecodeRun alone = accept(kAcceptLanguage, bytes({0x02, 0x01, 0x81}), out);
    EXPECT_EQ(alone.status, WSP_OK);
    EXPECT_EQ(alone.moved, 3u);
    DecodeRun with_q = accept(kAcceptLanguage, bytes({0x03, 0x01, 0x8C, 0x33}), out);
    EXPECT_EQ(with_q.status, WSP_OK);
    EXPECT_EQ(with_q.moved, 4u);
    // A Long-integer code takes the first row carrying it: the two-letter one.
    EXPECT_EQ(out.text(), "accept-language:na,rm;q=0.50\n");
}

TEST(DecodeAccept, GeneralLanguageCodeWithoutRowIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAcceptLanguage, bytes({0x02, 0x80, 0x33}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(accept(kAcceptLanguage, bytes({0x02, 0x01, 0x80}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralLanguageTextWithQValue) {
    OutBuffer out(256);
    Bytes v = cat({bytes({0x04}), cstr("en"), bytes({0x33})});
    EXPECT_EQ(accept(kAcceptLanguage, v, out).status, WSP_OK);
    EXPECT_EQ(out.text(), "accept-language:en;q=0.50\n");
}

TEST(DecodeAccept, GeneralLanguageRefusesLengthQuoteField) {
    OutBuffer out(256);
    EXPECT_EQ(accept(kAcceptLanguage, bytes({0x02, 0x1F, 0x01}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeAccept, GeneralLanguageQuotedFieldIsReadAsTheQValue) {
    // Nothing is read for a quoted field: the whole length is the q-value
    // run, and 0x22 (34) is the q-value 0.33.
    OutBuffer out(256);
    DecodeRun r = accept(kAcceptLanguage, bytes({0x01, 0x22}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "accept-language:;q=0.33\n");
}

TEST(DecodeAccept, GeneralLongCodeAloneIntoAFullOutputKeepsTheCursor) {
    // "accept-charset:iso-8859-1\n" is 26 octets.
    OutBuffer out(25);
    DecodeRun r = accept(kAcceptCharset, bytes({0x03, 0x02, 0x03, 0xEC}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);

    OutBuffer exact(26);
    EXPECT_EQ(accept(kAcceptCharset, bytes({0x03, 0x02, 0x03, 0xEC}), exact).status, WSP_OK);
    EXPECT_EQ(exact.text(), "accept-charset:iso-8859-1\n");
}

TEST(DecodeAccept, LengthQuoteValueIsKeptToSixteenBits) {
    // 0x84 0x80 0x03 is 65539, which a 16-bit length holds as 3.
    OutBuffer out(256);
    DecodeRun r = accept(kAccept, bytes({0x1F, 0x84, 0x80, 0x03, 0x83, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 7u);
    EXPECT_EQ(out.text(), "accept:text/plain;q=0.50\n");
}

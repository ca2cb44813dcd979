// Content-ID (with and without plain text allowed), Pragma and
// X-Wap-Security.
#include <gtest/gtest.h>

#include "decode/decode.h"
#include "decode/decoder_support.h"
#include "unit_support.h"
#include "switches.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

constexpr uint32_t kPragma = 0x1F;
constexpr uint32_t kContentId = 0x40;
constexpr uint32_t kSecurity = 0x46;

DecodeRun content_id(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_content_id, kContentId, v, out); }
DecodeRun pragma(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_pragma, kPragma, v, out); }
DecodeRun security(const Bytes &v, OutBuffer &out) { return decode_value(wsp_dec_security, kSecurity, v, out); }

// Content-ID with the text switch off.
int quoted_only_content_id(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    return wsp_dec_content_id_switched(0, code, cursor, out, remaining);
}

} // namespace

// ---- wsp_dec_content_id ----

TEST(DecodeContentId, TheBuildAllowsPlainText) { EXPECT_EQ(device_content_id_text_allowed(), 1); }

TEST(DecodeContentId, QuotedStringLosesItsQuotationMark) {
    OutBuffer out(256);
    DecodeRun r = content_id(bytes({0x22, 'a', 'b', 'c', 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 5u);
    EXPECT_EQ(out.text(), "content-id:abc\n");
}

TEST(DecodeContentId, PlainTextIsKeptAsItStands) {
    OutBuffer out(256);
    DecodeRun r = content_id(cstr("<part1@x>"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 10u);
    EXPECT_EQ(out.text(), "content-id:<part1@x>\n");
}

TEST(DecodeContentId, QuotationMarkInsideTheTextIsKept) {
    OutBuffer out(256);
    EXPECT_EQ(content_id(bytes({0x22, 'a', '"', 0x00}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "content-id:a\"\n");
}

TEST(DecodeContentId, WithTextSwitchOffOnlyTheQuotedFormIsAccepted) {
    OutBuffer out(256);
    DecodeRun text = decode_value(quoted_only_content_id, kContentId, cstr("abc"), out);
    EXPECT_EQ(text.status, WSP_ERR_ARG);
    EXPECT_EQ(text.moved, 0u);
    EXPECT_EQ(out->length, 0);
    DecodeRun quoted = decode_value(quoted_only_content_id, kContentId, bytes({0x22, 'a', 0x00}), out);
    EXPECT_EQ(quoted.status, WSP_OK);
    EXPECT_EQ(quoted.moved, 3u);
    EXPECT_EQ(out.text(), "content-id:a\n");
}

TEST(DecodeContentId, OtherClassesGive211) {
    OutBuffer out(256);
    EXPECT_EQ(content_id(bytes({0x80}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(content_id(bytes({0x03, 'a', 'b', 0x00}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(content_id(bytes({0x1F, 0x01, 'a'}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(content_id(bytes({0x7F, 'a', 0x00}), out).status, WSP_ERR_ARG);
    EXPECT_EQ(content_id(Bytes{}, out).status, WSP_ERR_ARG);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeContentId, UnterminatedTextIsRefusedAtEveryLength) {
    Bytes full = bytes({0x22, 'a', 'b', 'c', 0x00});
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = content_id(Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

TEST(DecodeContentId, ForbiddenOctetIsRefused) {
    OutBuffer out(256);
    DecodeRun r = content_id(bytes({'a', 0x02, 0x00}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
}

TEST(DecodeContentId, TextOf197CharactersFitsAnd198IsRefused) {
    OutBuffer out(512);
    DecodeRun ok = content_id(cstr(repeated(197, 'c')), out);
    EXPECT_EQ(ok.status, WSP_OK);
    EXPECT_EQ(ok.moved, 198u);
    EXPECT_EQ(out.text(), "content-id:" + repeated(197, 'c') + "\n");

    OutBuffer out2(512);
    EXPECT_EQ(content_id(cstr(repeated(198, 'c')), out2).status, WSP_ERR_FAIL);
    // The quotation mark does not count against the limit.
    DecodeRun quoted = content_id(cat({bytes({0x22}), cstr(repeated(197, 'c'))}), out2);
    EXPECT_EQ(quoted.status, WSP_OK);
    EXPECT_EQ(quoted.moved, 199u);
}

TEST(DecodeContentId, RepeatsGetOneLineEachAndAFullOutputIsRefused) {
    OutBuffer out(26);
    EXPECT_EQ(content_id(cstr("a"), out).status, WSP_OK);
    EXPECT_EQ(content_id(cstr("b"), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "content-id:a\ncontent-id:b\n");
    DecodeRun r = content_id(cstr("c"), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 26);
}

// ---- wsp_dec_pragma ----

TEST(DecodePragma, NoCache) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "pragma:no-cache\n");
}

TEST(DecodePragma, OtherCodesAreRefused) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x81}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePragma, RepeatsShareOneLine) {
    OutBuffer out(256);
    EXPECT_EQ(pragma(bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(pragma(bytes({0x03, 'x', 0x00, 0x85}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "pragma:no-cache,x=5\n");
}

TEST(DecodePragma, FullOutputPassesOnTruncatedAndStillMovesTheCursor) {
    OutBuffer out(15);
    DecodeRun r = pragma(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out->length, 0);

    OutBuffer exact(16);
    EXPECT_EQ(pragma(bytes({0x80}), exact).status, WSP_OK);
    EXPECT_EQ(exact.text(), "pragma:no-cache\n");
}

TEST(DecodePragma, UntypedParameter) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x03, 'x', 0x00, 0x85}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out.text(), "pragma:x=5\n");
}

TEST(DecodePragma, TypedParameter) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x02, 0x80, 0x33}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 3u);
    EXPECT_EQ(out.text(), "pragma:q=0.50\n");
}

TEST(DecodePragma, ParameterWithoutValue) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x03, 'x', 0x00, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out.text(), "pragma:x\n");
}

TEST(DecodePragma, LengthQuoteForm) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x1F, 0x03, 'x', 0x00, 0x85}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 5u);
    EXPECT_EQ(out.text(), "pragma:x=5\n");
}

TEST(DecodePragma, LengthQuoteOfZeroWritesAnEmptyValue) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x1F, 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 2u);
    EXPECT_EQ(out.text(), "pragma:\n");
}

TEST(DecodePragma, LengthZeroIsPassedOverWithoutALine) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x00, 0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePragma, LengthAboveRemainingIsRefused) {
    OutBuffer out(256);
    EXPECT_EQ(pragma(bytes({0x05, 'x', 0x00, 0x85}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(pragma(bytes({0x1F, 0x80, 0x01, 'x'}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePragma, RunReachingPastTheEndIsRefused) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x03, 'x', 0x00}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    DecodeRun q = pragma(bytes({0x1F, 0x10, 'x', 0x00, 0x85}), out);
    EXPECT_EQ(q.status, WSP_ERR_FAIL);
    EXPECT_EQ(q.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePragma, MoreThanOneParameterIsRefused) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x06, 'x', 0x00, 0x85, 'y', 0x00, 0x00}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePragma, BrokenParameterIsRefused) {
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x02, 0x84, 0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePragma, TruncatedParameterIsRefusedAtEveryLength) {
    Bytes full = bytes({0x03, 'x', 0x00, 0x85});
    for (size_t n = 1; n < full.size(); ++n) {
        OutBuffer out(256);
        DecodeRun r = pragma(Bytes(full.begin(), full.begin() + static_cast<long>(n)), out);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0u) << n;
        EXPECT_EQ(out->length, 0) << n;
    }
}

TEST(DecodePragma, OtherClassesAreRefused) {
    OutBuffer out(256);
    EXPECT_EQ(pragma(cstr("no-cache"), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(pragma(bytes({0x22, 'a', 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(pragma(bytes({0x7F, 'a', 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(pragma(Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodePragma, ParameterFormIntoAFullOutputPassesOnTruncatedAndMovesTheCursor) {
    OutBuffer out(10);
    DecodeRun r = pragma(bytes({0x03, 'x', 0x00, 0x85}), out);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out->length, 0);
}

// ---- wsp_dec_security ----

TEST(DecodeSecurity, CodeZeroIsCloseSubordinate) {
    OutBuffer out(256);
    DecodeRun r = security(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1u);
    EXPECT_EQ(out.text(), "x-wap-security:close-subordinate\n");
}

TEST(DecodeSecurity, CodeOneIsDropped) {
    OutBuffer out(256);
    DecodeRun r = security(bytes({0x81}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeSecurity, OtherClassesAndEmptyValuesAreRefused) {
    OutBuffer out(256);
    EXPECT_EQ(security(cstr("close-subordinate"), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(security(bytes({0x01, 0x00}), out).status, WSP_ERR_FAIL);
    EXPECT_EQ(security(Bytes{}, out).status, WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeSecurity, RepeatsGetOneLineEachAndAFullOutputIsRefused) {
    OutBuffer out(66);
    EXPECT_EQ(security(bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(security(bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(out.text(), "x-wap-security:close-subordinate\nx-wap-security:close-subordinate\n");
    DecodeRun r = security(bytes({0x80}), out);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0u);
    EXPECT_EQ(out->length, 66);
}

TEST(DecodePragma, LengthQuoteValueIsKeptToSixteenBits) {
    // 0x84 0x80 0x00 is 65536, which a 16-bit length holds as 0: an empty
    // parameter run and an empty value.
    OutBuffer out(256);
    DecodeRun r = pragma(bytes({0x1F, 0x84, 0x80, 0x00, 'x', 0x00}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 4u);
    EXPECT_EQ(out.text(), "pragma:\n");
}

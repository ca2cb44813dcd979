// Typed parameter values (wsp_decode_param_value) and Integer-value text
// (wsp_decode_integer_text).
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace param_decode;

namespace {

Result param_value(uint8_t code, const Bytes &in, int remaining = -1, const std::string &before = "junk") {
    InBytes copy(in);
    const uint8_t *p = copy.data();
    Area out(before);
    uint16_t rem = remaining < 0 ? copy.size() : static_cast<uint16_t>(remaining);
    int status = wsp_decode_param_value(&p, out.text, code, rem);
    return {status, out.text, p - copy.data()};
}

Result integer_text(const Bytes &in, int remaining = -1) {
    InBytes copy(in);
    const uint8_t *p = copy.data();
    Area out;
    uint16_t rem = remaining < 0 ? copy.size() : static_cast<uint16_t>(remaining);
    int status = wsp_decode_integer_text(&p, out.text, rem);
    return {status, out.text, p - copy.data()};
}

} // namespace

// ---- wsp_decode_param_value: general ----------------------------------------

TEST(ParamValue, OutputClearedAndNothingReadForCodesWithoutName) {
    Result r = param_value(0x04, bytes({0x85}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 0);
    r = param_value(0x1E, bytes({0x85}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 0);
    r = param_value(0x7F, {}, 0);
    EXPECT_EQ(r.status, WSP_OK);
}

TEST(ParamValue, NothingLeftFails) {
    Result r = param_value(0x01, bytes({0xEA}), 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 0);
}

// ---- q-values ---------------------------------------------------------------

TEST(ParamValue, QValueOneOctet) {
    EXPECT_EQ(param_value(0x00, bytes({1})).text, "0.00");
    EXPECT_EQ(param_value(0x00, bytes({10})).text, "0.09");
    EXPECT_EQ(param_value(0x00, bytes({11})).text, "0.10");
    EXPECT_EQ(param_value(0x00, bytes({51})).text, "0.50");
    Result r = param_value(0x00, bytes({100, 0x55}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "0.99");
    EXPECT_EQ(r.moved, 1);
}

TEST(ParamValue, QValueThreeDigits) {
    EXPECT_EQ(param_value(0x00, bytes({101})).text, "0.001");
    EXPECT_EQ(param_value(0x00, bytes({110})).text, "0.010");
    Result r = param_value(0x00, bytes({0x83, 0x31, 0x55}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "0.333");
    EXPECT_EQ(r.moved, 2);
    EXPECT_EQ(param_value(0x00, bytes({0x88, 0x4B})).text, "0.999");
}

TEST(ParamValue, QValueAbove1099PrintsMoreDigits) {
    EXPECT_EQ(param_value(0x00, bytes({0x88, 0x4C})).text, "0.1000");
    EXPECT_EQ(param_value(0x00, bytes({0xFF, 0x7F})).text, "0.16283");
}

TEST(ParamValue, QValueFailures) {
    for (const Bytes &in : {bytes({0x80, 0x01}), bytes({0x81, 0x80, 0x00}), bytes({0x00})}) {
        Result r = param_value(0x00, in);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
        EXPECT_EQ(r.text, "");
        EXPECT_EQ(r.moved, 0);
    }
    Result r = param_value(0x00, bytes({0x83, 0x31}), 1); // uintvar cut by the end
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- charset ------------------------------------------------------------------

TEST(ParamValue, CharsetShortInteger) {
    Result r = param_value(0x01, bytes({0xEA}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "utf-8");
    EXPECT_EQ(r.moved, 1);
    EXPECT_EQ(param_value(0x01, bytes({0x83})).text, "us-ascii");
}

TEST(ParamValue, CharsetLongInteger) {
    Result r = param_value(0x01, bytes({0x02, 0x03, 0xEC}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "iso-8859-1");
    EXPECT_EQ(r.moved, 3);
}

TEST(ParamValue, CharsetWithoutRowIsUnknown) {
    EXPECT_EQ(param_value(0x01, bytes({0x80})).text, "unknown-charset");
    EXPECT_EQ(param_value(0x01, bytes({0x02, 0x08, 0xCC})).text, "unknown-charset");
}

TEST(ParamValue, CharsetOtherFormsFail) {
    EXPECT_EQ(param_value(0x01, cstr("utf-8")).status, WSP_ERR_FAIL);
    // Long-integer whose octets run past the end.
    Result r = param_value(0x01, bytes({0x02, 0x03}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- level ----------------------------------------------------------------------

TEST(ParamValue, LevelShortInteger) {
    EXPECT_EQ(param_value(0x02, bytes({0x9F})).text, "1");
    EXPECT_EQ(param_value(0x02, bytes({0x91})).text, "1.1");
    EXPECT_EQ(param_value(0x02, bytes({0x90})).text, "1.0");
    EXPECT_EQ(param_value(0x02, bytes({0x80})).text, "0.0");
    EXPECT_EQ(param_value(0x02, bytes({0xFF})).text, "7");
    EXPECT_EQ(param_value(0x02, bytes({0xAE})).text, "2.14");
}

TEST(ParamValue, LevelTextString) {
    Result r = param_value(0x02, cstr("3.2"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "3.2");
    EXPECT_EQ(r.moved, 4);
    r = param_value(0x02, bytes({0x7F, 0xE9, 0}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "\xE9");
    EXPECT_EQ(r.moved, 3);
    EXPECT_EQ(param_value(0x02, bytes({0x05, 0})).status, WSP_ERR_FAIL);
}

TEST(ParamValue, LevelQuotedTextEndingAtHardEndFails) {
    // Quote, 'a', and the NUL would be past the end.
    Result r = param_value(0x02, bytes({0x7F, 'a'}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- type / size -------------------------------------------------------------------

TEST(ParamValue, TypeAndSizeAreIntegerText) {
    EXPECT_EQ(param_value(0x03, bytes({0x85})).text, "5");
    EXPECT_EQ(param_value(0x03, bytes({0x02, 0x01, 0x00})).text, "256");
    Result r = param_value(0x16, bytes({0x04, 0xFF, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "4294967295");
    EXPECT_EQ(r.moved, 5);
    EXPECT_EQ(param_value(0x16, cstr("12")).status, WSP_ERR_FAIL);
}

// ---- name-like texts ------------------------------------------------------------------

TEST(ParamValue, NameTextForms) {
    for (uint8_t code : {0x05, 0x06, 0x0A, 0x0B, 0x0C, 0x0D, 0x0F}) {
        Result r = param_value(code, cstr("a b"));
        EXPECT_EQ(r.status, WSP_OK) << int(code);
        EXPECT_EQ(r.text, "a b");
        EXPECT_EQ(r.moved, 4);
    }
}

TEST(ParamValue, NameQuotedStringKeepsBothMarks) {
    Result r = param_value(0x05, cstr("\"abc"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "\"abc\"");
    EXPECT_EQ(r.moved, 5);
}

TEST(ParamValue, NameQuoteLedTextDropsQuote) {
    Result r = param_value(0x06, bytes({0x7F, 0xE9, 'a', 0}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "\xE9" "a");
    EXPECT_EQ(r.moved, 4);
}

TEST(ParamValue, NameOtherClassesFail) {
    EXPECT_EQ(param_value(0x05, bytes({0x85})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param_value(0x05, bytes({0x01, 0x41})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param_value(0x05, bytes({0x1F, 0x01})).status, WSP_ERR_FAIL);
}

TEST(ParamValue, NameTextWithoutNulFails) {
    Result r = param_value(0x05, bytes({'a', 'b'}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- differences -------------------------------------------------------------------

TEST(ParamValue, DifferencesFieldCode) {
    EXPECT_EQ(param_value(0x07, bytes({0x91})).text, "content-type");
    EXPECT_EQ(param_value(0x07, bytes({0xC7})).text, "cache-control");
    Result r = param_value(0x07, bytes({0xC8}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(ParamValue, DifferencesTokenText) {
    Result r = param_value(0x07, cstr("x-foo"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-foo");
    EXPECT_EQ(r.moved, 6);
    EXPECT_EQ(param_value(0x07, cstr("\"x")).status, WSP_ERR_FAIL);
    EXPECT_EQ(param_value(0x07, cstr("a/b")).status, WSP_ERR_FAIL);
}

// ---- padding / sec ----------------------------------------------------------------

TEST(ParamValue, PaddingAndSecAreShortIntegersOnly) {
    for (uint8_t code : {0x08, 0x11}) {
        Result r = param_value(code, bytes({0x85}));
        EXPECT_EQ(r.status, WSP_OK);
        EXPECT_EQ(r.text, "5");
        EXPECT_EQ(r.moved, 1);
        EXPECT_EQ(param_value(code, bytes({0x01, 0x05})).status, WSP_ERR_FAIL);
        EXPECT_EQ(param_value(code, cstr("5")).status, WSP_ERR_FAIL);
    }
}

// ---- multipart type (0x09) -----------------------------------------------------------

TEST(ParamValue, RelatedTypeShortInteger) {
    EXPECT_EQ(param_value(0x09, bytes({0x83})).text, "text/plain");
    EXPECT_EQ(param_value(0x09, bytes({0xC2})).text, "application/vnd.syncml.dm+wbxml");
    EXPECT_EQ(param_value(0x09, bytes({0xCB})).text, "application/vnd.oma.drm.rights+wbxml");
    EXPECT_EQ(param_value(0x09, bytes({0xFF})).text, "application/x-agps");
}

TEST(ParamValue, RelatedTypeUncodedShortIntegerWritesNothing) {
    Result r = param_value(0x09, bytes({0xC0}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
    EXPECT_EQ(param_value(0x09, bytes({0xFE})).text, "");
}

TEST(ParamValue, RelatedTypeText) {
    Result r = param_value(0x09, cstr("text/x"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/x");
    EXPECT_EQ(r.moved, 7);
    r = param_value(0x09, cstr("\"a"));
    EXPECT_EQ(r.text, "\"a\"");
    // The class-based reader takes a Quote octet as a character, and refuses it.
    EXPECT_EQ(param_value(0x09, bytes({0x7F, 'a', 0})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param_value(0x09, bytes({0x05, 0})).status, WSP_ERR_FAIL);
}

// ---- max_age, secure -------------------------------------------------------------------

TEST(ParamValue, MaxAge) {
    EXPECT_EQ(param_value(0x0E, bytes({0x85})).text, "5");
    EXPECT_EQ(param_value(0x0E, bytes({0x01, 0x10})).text, "16");
    Result r = param_value(0x0E, bytes({0x05, 1, 2, 3, 4, 5}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "0X12345");
    EXPECT_EQ(r.moved, 6);
    EXPECT_EQ(param_value(0x0E, cstr("5")).status, WSP_ERR_FAIL);
    EXPECT_EQ(param_value(0x0E, bytes({0x1F, 0x01, 0x05})).status, WSP_ERR_FAIL);
}

TEST(ParamValue, SecureSkipsOneOctet) {
    for (uint8_t o : {0x00, 0x41, 0x85, 0xFF}) {
        Result r = param_value(0x10, bytes({o, 0x33}));
        EXPECT_EQ(r.status, WSP_OK);
        EXPECT_EQ(r.text, "");
        EXPECT_EQ(r.moved, 1);
    }
}

// ---- token-only texts ------------------------------------------------------------------

TEST(ParamValue, TokenOnlyCodes) {
    for (uint8_t code : {0x12, 0x17, 0x18, 0x19, 0x1A, 0x1B, 0x1C, 0x1D}) {
        Result r = param_value(code, cstr("abc"));
        EXPECT_EQ(r.status, WSP_OK) << int(code);
        EXPECT_EQ(r.text, "abc");
        EXPECT_EQ(r.moved, 4);
        EXPECT_EQ(param_value(code, cstr("a b")).status, WSP_ERR_FAIL);
        EXPECT_EQ(param_value(code, cstr("\"x")).status, WSP_ERR_FAIL);
        EXPECT_EQ(param_value(code, bytes({0x85})).status, WSP_ERR_FAIL);
    }
}

TEST(ParamValue, TokenLongerThanScratchIsTruncatedStatus) {
    Bytes in = cstr(std::string(198, 'a'));
    EXPECT_EQ(param_value(0x17, in).status, WSP_ERR_TRUNCATED);
    Bytes ok = cstr(std::string(197, 'a'));
    Result r = param_value(0x17, ok);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text.size(), 197u);
}

// ---- dates ------------------------------------------------------------------------------

TEST(ParamValue, Dates) {
    for (uint8_t code : {0x13, 0x14, 0x15}) {
        Result r = param_value(code, bytes({0x04, 0x2E, 0xBC, 0x98, 0xA1}));
        EXPECT_EQ(r.status, WSP_OK);
        EXPECT_EQ(r.text, "Sun, 06 Nov 1994 08:49:37 GMT");
        EXPECT_EQ(r.moved, 5);
    }
    Result r = param_value(0x13, bytes({0x04, 0x2E, 0xBC, 0x98}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(param_value(0x13, bytes({0x85})).status, WSP_ERR_FAIL);
}

// ---- wsp_decode_integer_text ----------------------------------------------------------------

TEST(IntegerText, ShortInteger) {
    Result r = integer_text(bytes({0xFF, 0x00}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "127");
    EXPECT_EQ(r.moved, 1);
}

TEST(IntegerText, LongIntegerUnsigned) {
    Result r = integer_text(bytes({0x00}));
    EXPECT_EQ(r.text, "0");
    EXPECT_EQ(r.moved, 1);
    EXPECT_EQ(integer_text(bytes({0x01, 0xFF})).text, "255");
    r = integer_text(bytes({0x04, 0xFF, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "4294967295");
    EXPECT_EQ(r.moved, 5);
}

TEST(IntegerText, LongIntegerBoundedByRemaining) {
    Result r = integer_text(bytes({0x04, 1, 2, 3, 4}), 4);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(integer_text(bytes({0x04, 1, 2, 3, 4}), 5).status, WSP_OK);
}

TEST(IntegerText, HexFormLosesLeadingZeroOfEachOctet) {
    Result r = integer_text(bytes({0x05, 0x01, 0x0A, 0xFF, 0x00, 0x10}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "0X1AFF010");
    EXPECT_EQ(r.moved, 6);
}

TEST(IntegerText, HexFormLengthMustFitRemaining) {
    Bytes in = bytes({0x05, 1, 2, 3, 4, 5});
    Result r = integer_text(in, 5);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(integer_text(in, 6).status, WSP_OK);
}

TEST(IntegerText, HexFormOf30Octets) {
    Bytes in(31, 0xAB);
    in[0] = 30;
    Result r = integer_text(in);
    EXPECT_EQ(r.status, WSP_OK);
    std::string expect = "0X";
    for (int i = 0; i < 30; ++i) expect += "AB";
    EXPECT_EQ(r.text, expect);
    EXPECT_EQ(r.moved, 31);
}

TEST(IntegerText, OtherClassesFail) {
    for (const Bytes &in : {bytes({0x1F, 0x01, 0x05}), cstr("12"), bytes({0x7F, 0x31, 0}), cstr("\"1")}) {
        Result r = integer_text(in);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
        EXPECT_EQ(r.moved, 0);
    }
    EXPECT_EQ(integer_text(bytes({0x85}), 0).status, WSP_ERR_FAIL);
}

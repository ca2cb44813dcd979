// Parameters, typed parameter values, Integer-value text, parameter runs and
// lists, q-values and field-name lists.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "decode/decode.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

struct Result {
    int status;
    std::string text;
    long moved;
};

// A 200-octet zeroed value area preset with `before`.
struct Area {
    char text[WSP_DEC_VALUE_AREA] = {};
    explicit Area(const std::string &before = "") { std::memcpy(text, before.c_str(), before.size() + 1); }
};

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

using RunFn = int (*)(const uint8_t **, uint16_t, char *, uint16_t);

Result run_fn(RunFn fn, const Bytes &in, const std::string &before = "", uint16_t capacity = WSP_DEC_SCRATCH,
              int run = -1) {
    InBytes copy(in);
    const uint8_t *p = copy.data();
    Area out(before);
    uint16_t r = run < 0 ? copy.size() : static_cast<uint16_t>(run);
    int status = fn(&p, r, out.text, capacity);
    return {status, out.text, p - copy.data()};
}

Result param(const Bytes &in, const std::string &before = "", uint16_t capacity = WSP_DEC_SCRATCH, int run = -1) {
    return run_fn(wsp_decode_param, in, before, capacity, run);
}

Result field_names(const Bytes &in, const std::string &before = "", int run = -1) {
    InBytes copy(in);
    const uint8_t *p = copy.data();
    Area out(before);
    uint16_t r = run < 0 ? copy.size() : static_cast<uint16_t>(run);
    int status = wsp_decode_field_name_list(&p, out.text, r);
    return {status, out.text, p - copy.data()};
}

Bytes str0(const std::string &s) {
    Bytes b(s.begin(), s.end());
    b.push_back(0);
    return b;
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
    EXPECT_EQ(param_value(0x01, str0("utf-8")).status, WSP_ERR_FAIL);
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
    Result r = param_value(0x02, str0("3.2"));
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
    EXPECT_EQ(param_value(0x16, str0("12")).status, WSP_ERR_FAIL);
}

// ---- name-like texts ------------------------------------------------------------------

TEST(ParamValue, NameTextForms) {
    for (uint8_t code : {0x05, 0x06, 0x0A, 0x0B, 0x0C, 0x0D, 0x0F}) {
        Result r = param_value(code, str0("a b"));
        EXPECT_EQ(r.status, WSP_OK) << int(code);
        EXPECT_EQ(r.text, "a b");
        EXPECT_EQ(r.moved, 4);
    }
}

TEST(ParamValue, NameQuotedStringKeepsBothMarks) {
    Result r = param_value(0x05, str0("\"abc"));
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
    Result r = param_value(0x07, str0("x-foo"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-foo");
    EXPECT_EQ(r.moved, 6);
    EXPECT_EQ(param_value(0x07, str0("\"x")).status, WSP_ERR_FAIL);
    EXPECT_EQ(param_value(0x07, str0("a/b")).status, WSP_ERR_FAIL);
}

// ---- padding / sec ----------------------------------------------------------------

TEST(ParamValue, PaddingAndSecAreShortIntegersOnly) {
    for (uint8_t code : {0x08, 0x11}) {
        Result r = param_value(code, bytes({0x85}));
        EXPECT_EQ(r.status, WSP_OK);
        EXPECT_EQ(r.text, "5");
        EXPECT_EQ(r.moved, 1);
        EXPECT_EQ(param_value(code, bytes({0x01, 0x05})).status, WSP_ERR_FAIL);
        EXPECT_EQ(param_value(code, str0("5")).status, WSP_ERR_FAIL);
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
    Result r = param_value(0x09, str0("text/x"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/x");
    EXPECT_EQ(r.moved, 7);
    r = param_value(0x09, str0("\"a"));
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
    EXPECT_EQ(param_value(0x0E, str0("5")).status, WSP_ERR_FAIL);
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
        Result r = param_value(code, str0("abc"));
        EXPECT_EQ(r.status, WSP_OK) << int(code);
        EXPECT_EQ(r.text, "abc");
        EXPECT_EQ(r.moved, 4);
        EXPECT_EQ(param_value(code, str0("a b")).status, WSP_ERR_FAIL);
        EXPECT_EQ(param_value(code, str0("\"x")).status, WSP_ERR_FAIL);
        EXPECT_EQ(param_value(code, bytes({0x85})).status, WSP_ERR_FAIL);
    }
}

TEST(ParamValue, TokenLongerThanScratchIsTruncatedStatus) {
    Bytes in = str0(std::string(198, 'a'));
    EXPECT_EQ(param_value(0x17, in).status, WSP_ERR_TRUNCATED);
    Bytes ok = str0(std::string(197, 'a'));
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
    for (const Bytes &in : {bytes({0x1F, 0x01, 0x05}), str0("12"), bytes({0x7F, 0x31, 0}), str0("\"1")}) {
        Result r = integer_text(in);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
        EXPECT_EQ(r.moved, 0);
    }
    EXPECT_EQ(integer_text(bytes({0x85}), 0).status, WSP_ERR_FAIL);
}

// ---- wsp_decode_param -------------------------------------------------------------------------

TEST(Param, TypedWithValue) {
    Result r = param(bytes({0x81, 0xEA, 0x99}), "", WSP_DEC_SCRATCH, 2);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset=utf-8");
    EXPECT_EQ(r.moved, 2);
}

TEST(Param, AppendsToExistingText) {
    Result r = param(bytes({0x81, 0xEA}), "text/plain;");
    EXPECT_EQ(r.text, "text/plain;charset=utf-8");
}

TEST(Param, NoValueOctetForTypedAndUntyped) {
    Result r = param(bytes({0x81, 0x00}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset");
    EXPECT_EQ(r.moved, 2);
    r = param(cat({str0("x"), bytes({0x00})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x");
    EXPECT_EQ(r.moved, 3);
}

TEST(Param, UntypedShortInteger) {
    Result r = param(cat({str0("x"), bytes({0x85})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x=5");
    EXPECT_EQ(r.moved, 3);
    EXPECT_EQ(param(cat({str0("x"), bytes({0xFF})})).text, "x=127");
}

TEST(Param, UntypedLongIntegerIsSigned) {
    Result r = param(cat({str0("x"), bytes({0x04, 0xFF, 0xFF, 0xFF, 0xFF})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x=-1");
    EXPECT_EQ(r.moved, 7);
}

TEST(Param, TypedSizeIsUnsigned) {
    Result r = param(bytes({0x96, 0x04, 0xFF, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "size=4294967295");
}

TEST(Param, UntypedQuotedString) {
    Result r = param(cat({str0("x"), str0("\"a b")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x=\"a b\"");
    EXPECT_EQ(r.moved, 7);
}

TEST(Param, UntypedTokenText) {
    Result r = param(cat({str0("x"), str0("abc")}));
    EXPECT_EQ(r.text, "x=abc");
    EXPECT_EQ(r.moved, 6);
}

TEST(Param, UntypedRefusedClasses) {
    for (const Bytes &value : {bytes({0x1F, 0x01, 0x05}), bytes({0x7F, 'a', 0})}) {
        Result r = param(cat({str0("x"), value}));
        EXPECT_EQ(r.status, WSP_ERR_FAIL);
        EXPECT_EQ(r.moved, 0);
        EXPECT_EQ(r.text, "x"); // partial text stays
    }
}

TEST(Param, UntypedTokenRefusesNonTokenText) {
    Result r = param(cat({str0("x"), str0("a b")}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(Param, TypedValueFallsBackToUntyped) {
    // A charset given as text is not a charset: read again as a token.
    Result r = param(cat({bytes({0x81}), str0("abc")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset=abc");
    EXPECT_EQ(r.moved, 5);
    // A level given as a Long-integer becomes a signed number.
    r = param(bytes({0x82, 0x01, 0x05}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "level=5");
    EXPECT_EQ(r.moved, 3);
}

TEST(Param, TypedEmptyValueStillGetsEquals) {
    Result r = param(bytes({0x90, 0x85}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "secure=");
    EXPECT_EQ(r.moved, 2);
}

TEST(Param, NameClassesRefused) {
    for (uint8_t o : {0x01, 0x1F, 0x22, 0x7F}) {
        Result r = param(bytes({o, 0x41, 0}));
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << int(o);
        EXPECT_EQ(r.text, "");
        EXPECT_EQ(r.moved, 0);
    }
}

TEST(Param, CodesWithoutNameRefused) {
    EXPECT_EQ(param(bytes({0x84, 0x85})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param(bytes({0x9E, 0x85})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param(bytes({0xFF, 0x85})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param(bytes({0x9D, 0x00})).text, "path");
}

TEST(Param, NameRoomTest) {
    // "charset" is 7: 0 + 7 + 1 must be below the capacity.
    Result r = param(bytes({0x81, 0x00}), "", 8);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "");
    r = param(bytes({0x81, 0x00}), "", 9);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset");
}

TEST(Param, ValueRoomTest) {
    // 7 + 5 + 2 = 14 must not exceed the capacity.
    Result r = param(bytes({0x81, 0xEA}), "", 14);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset=utf-8");
    r = param(bytes({0x81, 0xEA}), "", 13);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "charset");
    EXPECT_EQ(r.moved, 0);
}

TEST(Param, UntypedValueRoomTest) {
    Result r = param(cat({str0("x"), bytes({0x85})}), "", 4);
    EXPECT_EQ(r.status, WSP_OK);
    r = param(cat({str0("x"), bytes({0x85})}), "", 3);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "x");
}

TEST(Param, MissingValueOctetFails) {
    Result r = param(str0("x"));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    r = param(bytes({0x81}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(Param, LongTokenNameIsTruncatedStatus) {
    Result r = param(cat({str0(std::string(198, 'n')), bytes({0x00})}));
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0);
}

TEST(Param, NothingToReadFails) {
    Result r = param(bytes({0x81, 0xEA}), "", WSP_DEC_SCRATCH, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
}

TEST(Param, ValueBoundedByRemaining) {
    // The Long-integer's last octet lies past the run.
    Result r = param(cat({str0("x"), bytes({0x02, 0x01, 0x02})}), "", WSP_DEC_SCRATCH, 4);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- wsp_decode_params --------------------------------------------------------------------------

TEST(Params, CharsetAndLevel) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0xEA, 0x82, 0x90}), "text/plain", 150);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/plain;charset=utf-8;level=1.0");
    EXPECT_EQ(r.moved, 4);
}

TEST(Params, EmptyRunAppendsNothing) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0xEA}), "a", 150, 0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a");
    EXPECT_EQ(r.moved, 0);
}

TEST(Params, FailureLeavesCursor) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0xEA, 0x84, 0x00}), "t", 150);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(r.text, "t;charset=utf-8;");
}

TEST(Params, TruncatedStatusPassedOn) {
    Result r = run_fn(wsp_decode_params, cat({str0(std::string(200, 'n')), bytes({0x00})}), "t", 150);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0);
}

TEST(Params, TextAtCapacityIsRefused) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0x00}), "abcd", 4);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "abcd");
}

TEST(Params, RunEndingInsideParameterFails) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0xEA}), "t", 150, 1);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- wsp_decode_param_list -----------------------------------------------------------------------

TEST(ParamList, JoinsWithComma) {
    Result r = run_fn(wsp_decode_param_list, cat({str0("a"), bytes({0x85}), str0("b"), bytes({0x00}), bytes({0x81, 0xEA})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a=5,b,charset=utf-8");
    EXPECT_EQ(r.moved, 8);
}

TEST(ParamList, EmptyRun) {
    Result r = run_fn(wsp_decode_param_list, bytes({0x85}), "x", WSP_DEC_SCRATCH, 0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x");
    EXPECT_EQ(r.moved, 0);
}

TEST(ParamList, FailureStatusPassedOn) {
    Result r = run_fn(wsp_decode_param_list, cat({str0("a"), bytes({0x85, 0x84, 0x00})}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    r = run_fn(wsp_decode_param_list, cat({str0(std::string(199, 'n')), bytes({0x00})}));
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
}

TEST(ParamList, LengthLimitBoundary) {
    std::string before(191, 'p');
    // 191 + "abcdef" = 197: passes the parameter's own room test (capacity
    // 200) and the list's 197 limit.
    Result ok = run_fn(wsp_decode_param_list, cat({str0("abcdef"), bytes({0x00})}), before, 200);
    EXPECT_EQ(ok.status, WSP_OK);
    EXPECT_EQ(ok.text.size(), 197u);
    Result too_long = run_fn(wsp_decode_param_list, cat({str0("abcdefg"), bytes({0x00})}), before, 200);
    EXPECT_EQ(too_long.status, WSP_ERR_FAIL);
    EXPECT_EQ(too_long.moved, 0);
}

// ---- wsp_decode_single_param -----------------------------------------------------------------------

TEST(SingleParam, ExactlyOneParameter) {
    Result r = run_fn(wsp_decode_single_param, cat({str0("a"), bytes({0x85})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a=5");
    EXPECT_EQ(r.moved, 3);
}

TEST(SingleParam, EmptyRunSucceeds) {
    Result r = run_fn(wsp_decode_single_param, bytes({0x85}), "x", WSP_DEC_SCRATCH, 0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x");
    EXPECT_EQ(r.moved, 0);
}

TEST(SingleParam, OctetsLeftOverFail) {
    Result r = run_fn(wsp_decode_single_param, cat({str0("a"), bytes({0x85, 0x85})}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(SingleParam, FailureReturned) {
    Result r = run_fn(wsp_decode_single_param, bytes({0x84, 0x00}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
}

TEST(SingleParam, TextOver197Fails) {
    Result r = run_fn(wsp_decode_single_param, bytes({0x85}), std::string(198, 'p'), WSP_DEC_SCRATCH, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    r = run_fn(wsp_decode_single_param, bytes({0x85}), std::string(197, 'p'), WSP_DEC_SCRATCH, 0);
    EXPECT_EQ(r.status, WSP_OK);
}

// ---- wsp_decode_qvalue_param -----------------------------------------------------------------------

TEST(QValueParam, EmptyRunAppendsNothing) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x33}), "text/*", WSP_DEC_SCRATCH, 0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/*");
    EXPECT_EQ(r.moved, 0);
}

TEST(QValueParam, QValue) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x33}), "text/*");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/*;q=0.50");
    EXPECT_EQ(r.moved, 1);
    r = run_fn(wsp_decode_qvalue_param, bytes({0x83, 0x31}), "a");
    EXPECT_EQ(r.text, "a;q=0.333");
    EXPECT_EQ(r.moved, 2);
}

TEST(QValueParam, ZeroOctetLeavesQAlone) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x00}), "a");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a;q");
    EXPECT_EQ(r.moved, 1);
}

TEST(QValueParam, LeftoverOctetsAreArgumentError) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x33, 0x01}), "a");
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.moved, 0);
    r = run_fn(wsp_decode_qvalue_param, bytes({0x00, 0x01}), "a");
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.moved, 0);
}

TEST(QValueParam, BadQValueFails) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x80, 0x01}), "a");
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(QValueParam, CapacityTest) {
    // "abc" + ";q" = 5 must be below the capacity.
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x00}), "abc", 5);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    r = run_fn(wsp_decode_qvalue_param, bytes({0x00}), "abc", 6);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "abc;q");
}

TEST(QValueParam, TextOver197Fails) {
    Result ok = run_fn(wsp_decode_qvalue_param, bytes({0x33}), std::string(190, 'p'), 198);
    EXPECT_EQ(ok.status, WSP_OK);
    EXPECT_EQ(ok.text.size(), 197u);
    Result too_long = run_fn(wsp_decode_qvalue_param, bytes({0x33}), std::string(191, 'p'), 198);
    EXPECT_EQ(too_long.status, WSP_ERR_FAIL);
    EXPECT_EQ(too_long.moved, 0);
    // Left-over octets are reported before the length.
    Result leftover = run_fn(wsp_decode_qvalue_param, bytes({0x33, 0x01}), std::string(191, 'p'), 198);
    EXPECT_EQ(leftover.status, WSP_ERR_ARG);
}

// ---- wsp_decode_field_name_list -------------------------------------------------------------------

TEST(FieldNameList, EmptyRunIsArgumentError) {
    Result r = field_names(bytes({0x91}), "no-cache", 0);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.text, "no-cache");
}

TEST(FieldNameList, CodesAndTokens) {
    Result r = field_names(cat({bytes({0x91}), str0("x-foo"), bytes({0xC7})}), "no-cache");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "no-cache= \"content-type,x-foo,cache-control\"");
    EXPECT_EQ(r.moved, 8);
}

TEST(FieldNameList, BadClassIsArgumentError) {
    Result r = field_names(bytes({0x05, 0x01}), "p");
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(field_names(str0("\"x"), "p").status, WSP_ERR_ARG);
}

TEST(FieldNameList, UnknownCodeOrBadTokenFails) {
    EXPECT_EQ(field_names(bytes({0xC8}), "p").status, WSP_ERR_FAIL);
    EXPECT_EQ(field_names(str0("a b"), "p").status, WSP_ERR_FAIL);
    Result r = field_names(bytes({'a', 'b'}), "p"); // no NUL before the run's end
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(FieldNameList, OpeningPastLimitIsArgumentError) {
    Result r = field_names(bytes({0x91}), std::string(195, 'p'));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.text.size(), 195u);
    r = field_names(bytes({0x85}), std::string(194, 'p')); // 197 + "age": too long
    EXPECT_EQ(r.status, WSP_ERR_ARG);
}

TEST(FieldNameList, NameUpTo197AndClosingQuote) {
    // 180 + 3 + 14 ("content-length") = 197, then the closing mark: 198.
    Result r = field_names(bytes({0x8D}), std::string(180, 'p'));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, std::string(180, 'p') + "= \"content-length\"");
    Result too_long = field_names(bytes({0x8D}), std::string(181, 'p'));
    EXPECT_EQ(too_long.status, WSP_ERR_ARG);
    EXPECT_EQ(too_long.moved, 0);
}

TEST(Params, RunCutAtEveryLength) {
    // Cuts between parameters succeed with the parameters so far; cuts inside
    // one fail without moving the cursor.
    Bytes full = cat({bytes({0x81, 0xEA}), str0("x"), bytes({0x02, 0x01, 0x02}), bytes({0x93, 0x01, 0x05})});
    for (size_t n = 0; n <= full.size(); ++n) {
        Result r = run_fn(wsp_decode_params, Bytes(full.begin(), full.begin() + static_cast<long>(n)), "t", 198);
        if (n == 0) {
            EXPECT_EQ(r.status, WSP_OK);
            EXPECT_EQ(r.text, "t");
        } else if (n == 2) {
            EXPECT_EQ(r.status, WSP_OK);
            EXPECT_EQ(r.text, "t;charset=utf-8");
        } else if (n == 7) {
            EXPECT_EQ(r.status, WSP_OK);
            EXPECT_EQ(r.text, "t;charset=utf-8;x=258");
        } else if (n == full.size()) {
            EXPECT_EQ(r.status, WSP_OK);
            EXPECT_EQ(r.text, "t;charset=utf-8;x=258;creation-date=Thu, 01 Jan 1970 00:00:05 GMT");
            EXPECT_EQ(r.moved, static_cast<long>(full.size()));
        } else {
            EXPECT_NE(r.status, WSP_OK) << n;
            EXPECT_EQ(r.moved, 0) << n;
        }
    }
}

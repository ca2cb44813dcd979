// wsp_encode_param and wsp_encode_param_value.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "encode/encode.h"
#include "wsp_test_support.h"

using wsp_test::hex;
using wsp_test::OutBuffer;
using wsp_test::TextCopy;

namespace {

struct Encoded {
    int status;
    std::string out;
    uint16_t length;
};

Encoded param(const std::string &text, uint8_t version_index, const char *media = nullptr, uint16_t size = 100) {
    TextCopy copy(text);
    OutBuffer out(size);
    int status = wsp_encode_param(copy.get(), out.get(), version_index, media);
    return {status, out.written_hex(), out->length};
}

struct Value {
    int status;
    std::string out;
    uint8_t fallback;
    uint16_t length;
};

Value value(const std::string &text, uint8_t code, uint16_t size = 100) {
    TextCopy copy(text);
    OutBuffer out(size);
    uint8_t fallback = 0x55;
    int status = wsp_encode_param_value(copy.get(), code, out.get(), &fallback);
    return {status, out.written_hex(), fallback, out->length};
}

std::string th(const std::string &s) { return hex(reinterpret_cast<const uint8_t *>(s.data()), s.size()); }
// Text bytes with their NUL.
std::string tz(const std::string &s) { return th(s + '\0'); }

const char *kRelated = "multipart/related";
const char *kConnectivity = "application/vnd.wap.connectivity-wbxml";

} // namespace

// ---- wsp_encode_param: version limits ----------------------------------------

TEST(EncodeParam, VersionIndexAboveThreeIsRefused) {
    Encoded e = param("q=0.5", 4);
    EXPECT_EQ(e.status, WSP_ERR_VERSION);
    EXPECT_EQ(e.length, 0);
}

TEST(EncodeParam, VersionOnePointOneAdmitsCodesUpToPadding) {
    EXPECT_EQ(param("padding=5", 0).out, "88 85");
    // "start" (0x0A) is above the limit of 9: untyped, whatever the media.
    EXPECT_EQ(param("start=x", 0, kRelated).out, tz("start") + " " + tz("x"));
}

TEST(EncodeParam, VersionOnePointTwoAdmitsCodesUpToStartInfo) {
    EXPECT_EQ(param("start=x", 1, kRelated).out, "8A " + tz("x"));
    EXPECT_EQ(param("start_info=x", 1, kRelated).out, "8B " + tz("x"));
    EXPECT_EQ(param("comment=x", 1).out, tz("comment") + " " + tz("x"));
}

TEST(EncodeParam, VersionOnePointThreeAdmitsCodesUpToSecure) {
    EXPECT_EQ(param("comment=a b", 2).out, "8C " + tz("a b"));
    EXPECT_EQ(param("secure", 2).out, "90 00");
    EXPECT_EQ(param("sec=1", 2, kConnectivity).out, tz("sec") + " 81");
    EXPECT_EQ(param("sec=1", 1, kConnectivity).out, tz("sec") + " 81");
}

TEST(EncodeParam, VersionOnePointFourAdmitsAllThirtyCodes) {
    EXPECT_EQ(param("sec=1", 3, kConnectivity).out, "91 81");
    EXPECT_EQ(param("path=x", 3).out, "9D " + tz("x"));
    EXPECT_EQ(param("path=x", 2).out, "8F " + tz("x"));
}

TEST(EncodeParam, DuplicatedNamesTakeTheHighestAdmittedCode) {
    EXPECT_EQ(param("name=x", 3).out, "97 " + tz("x"));
    EXPECT_EQ(param("name=x", 2).out, "85 " + tz("x"));
    EXPECT_EQ(param("start=<a>", 3, kRelated).out, "99 22 " + tz("a"));
    EXPECT_EQ(param("start-info=<a>", 3, kRelated).out, "9A 22 " + tz("a"));
    EXPECT_EQ(param("start_info=x", 3, kRelated).out, "8B " + tz("x"));
}

TEST(EncodeParam, NamesMatchWithoutRegardToCase) {
    EXPECT_EQ(param("CharSet=UTF-8", 0).out, "81 EA");
    EXPECT_EQ(param("Sec=1", 3, "Application/Vnd.Wap.Connectivity-WBXML").out, "91 81");
    EXPECT_EQ(param("START=x", 3, "Multipart/Related").out, "99 " + tz("x"));
}

// ---- media-type rules -----------------------------------------------------------

TEST(EncodeParam, TypeIsTheRelatedCodeOnlyForMultipartRelated) {
    EXPECT_EQ(param("type=application/xml", 3, kRelated).out, "89 A7");
    EXPECT_EQ(param("type=5", 3, kRelated).out, "89 " + tz("5"));
    EXPECT_EQ(param("type=5", 3, "text/html").out, "83 85");
    EXPECT_EQ(param("type=5", 3).out, "83 85");
}

TEST(EncodeParam, StartNeedsMultipartRelated) {
    EXPECT_EQ(param("start=x", 3, "text/html").status, WSP_ERR_FAIL);
    EXPECT_EQ(param("start-info=x", 3, "text/html").status, WSP_ERR_FAIL);
    EXPECT_EQ(param("start=x", 1, "text/html").status, WSP_ERR_FAIL);
    EXPECT_EQ(param("start_info=x", 1, "text/html").status, WSP_ERR_FAIL);
    Encoded e = param("start=x", 3);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
}

TEST(EncodeParam, SecAndMacNeedConnectivityWbxml) {
    EXPECT_EQ(param("sec=1", 3, "text/html").status, WSP_ERR_FAIL);
    EXPECT_EQ(param("mac=x", 3, "text/html").status, WSP_ERR_FAIL);
    EXPECT_EQ(param("mac=x", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(param("sec=1", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(param("mac=x", 3, kConnectivity).out, "92 " + tz("x"));
}

TEST(EncodeParam, RefusedParameterWithoutValueIsRefusedToo) {
    EXPECT_EQ(param("start", 3).status, WSP_ERR_FAIL);
}

// ---- no value -------------------------------------------------------------------

TEST(EncodeParam, TypedParameterWithoutValue) {
    Encoded e = param("q", 0);
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "80 00");
    EXPECT_EQ(param("level", 0).out, "82 00");
}

TEST(EncodeParam, UntypedParameterWithoutValue) {
    EXPECT_EQ(param("foo", 0).out, tz("foo") + " 00");
    EXPECT_EQ(param("foo=", 0).out, tz("foo") + " 00");
}

TEST(EncodeParam, NoValueNeedsRoomForItsZero) {
    Encoded e = param("foo", 0, nullptr, 4);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.out, tz("foo"));
    EXPECT_EQ(param("foo", 0, nullptr, 5).status, WSP_OK);
}

TEST(EncodeParam, TypedCodeFillingTheOutputFails) {
    // The Short-integer writer refuses to fill the output's last byte.
    Encoded e = param("q", 0, nullptr, 1);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(param("q", 0, nullptr, 3).status, WSP_OK);
}

TEST(EncodeParam, EmptyTextHasNoName) {
    EXPECT_EQ(param("", 0).status, WSP_ERR_FAIL);
    EXPECT_EQ(wsp_encode_param(nullptr, nullptr, 0, nullptr), WSP_ERR_FAIL);
}

TEST(EncodeParam, OnlyEqualsSignsGiveAnEmptyUntypedName) {
    // The tokenizer yields one empty token for a text of delimiters only.
    Encoded e = param("=", 0);
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "00 00");
}

// ---- untyped values -----------------------------------------------------------------

TEST(EncodeParam, UntypedTokenValue) {
    EXPECT_EQ(param("foo=bar", 3).out, tz("foo") + " " + tz("bar"));
}

TEST(EncodeParam, UntypedNumbers) {
    EXPECT_EQ(param("foo=12", 3).out, tz("foo") + " 8C");
    EXPECT_EQ(param("foo=127", 3).out, tz("foo") + " FF");
    EXPECT_EQ(param("foo=128", 3).out, tz("foo") + " 01 80");
    EXPECT_EQ(param("foo=300", 3).out, tz("foo") + " 02 01 2C");
    // Too large a number saturates, as on the target.
    EXPECT_EQ(param("foo=99999999999", 3).out, tz("foo") + " 04 FF FF FF FF");
}

TEST(EncodeParam, UntypedValueWithDotIsToken) {
    EXPECT_EQ(param("foo=1.5", 3).out, tz("foo") + " " + tz("1.5"));
}

TEST(EncodeParam, UntypedQuotedValue) {
    EXPECT_EQ(param("foo=\"a b\"", 3).out, tz("foo") + " 22 " + tz("a b"));
}

TEST(EncodeParam, UntypedEmptyValueIsAnEmptyToken) {
    EXPECT_EQ(param("foo= ", 3).out, tz("foo") + " 00");
}

TEST(EncodeParam, NameAndValueAreTrimmed) {
    EXPECT_EQ(param(" foo \t= bar ", 3).out, tz("foo") + " " + tz("bar"));
    EXPECT_EQ(param("charset = utf-8", 3).out, "81 EA");
}

TEST(EncodeParam, ValueEndsAtTheNextEqualsSign) {
    EXPECT_EQ(param("foo=a=b", 3).out, tz("foo") + " " + tz("a"));
}

TEST(EncodeParam, UntypedNameOrValueWithSeparatorFails) {
    EXPECT_EQ(param("a b=1", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(param("foo=a/b", 3).status, WSP_ERR_FAIL);
}

TEST(EncodeParam, UntypedNeedsRoom) {
    EXPECT_EQ(param("foo=bar", 3, nullptr, 7).status, WSP_ERR_FAIL);
    Encoded exact = param("foo=bar", 3, nullptr, 8);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.length, 8);
}

// ---- typed values through wsp_encode_param ---------------------------------------------

TEST(EncodeParam, CharsetByNameWithoutRegardToCase) {
    EXPECT_EQ(param("charset=ISO-8859-1", 0).out, "81 84");
    EXPECT_EQ(param("charset=iso-8859-1", 0).out, "81 84");
    EXPECT_EQ(param("charset=big5", 0).out, "81 02 07 EA");
}

TEST(EncodeParam, UnknownCharsetFallsBackToUntyped) {
    EXPECT_EQ(param("charset=foo", 0).out, tz("charset") + " " + tz("foo"));
}

TEST(EncodeParam, MalformedQIsAFailureNotAFallback) {
    EXPECT_EQ(param("q=2.0", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(param("q=1.5", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(param("q=0.5", 3).out, "80 33");
}

TEST(EncodeParam, SmallNumberAboveOneHundredTwentySevenFallsBack) {
    EXPECT_EQ(param("padding=200", 0).out, tz("padding") + " 01 C8");
    EXPECT_EQ(param("padding=0x10", 0).out, "88 90");
    EXPECT_EQ(param("padding=0X7f", 0).out, "88 FF");
}

TEST(EncodeParam, TypedValueNeedsRoomForCodeAndValue) {
    // 81 EA: the code must not fill the output, and the value needs its room.
    EXPECT_EQ(param("charset=utf-8", 0, nullptr, 1).status, WSP_ERR_FAIL);
    EXPECT_EQ(param("charset=utf-8", 0, nullptr, 1).length, 1);
    Encoded exact = param("charset=utf-8", 0, nullptr, 2);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.out, "81 EA");
    Encoded no_value_room = param("name=abc", 3, nullptr, 4);
    EXPECT_EQ(no_value_room.status, WSP_ERR_FAIL);
    EXPECT_EQ(no_value_room.out, "97");
}

TEST(EncodeParam, DateParameters) {
    // 784111777 = 0x2EBC98A1.
    EXPECT_EQ(param("creation-date=sun, 06 nov 1994 08:49:37 gmt", 3).out, "93 04 2E BC 98 A1");
    EXPECT_EQ(param("modification-date=sunday, 06-nov-94 08:49:37 gmt", 3).status, WSP_OK);
    EXPECT_EQ(param("read-date=sun nov 6 08:49:37 1994", 3).out, "95 04 2E BC 98 A1");
}

TEST(EncodeParam, DateThatDoesNotParseFallsBackToUntyped) {
    EXPECT_EQ(param("read-date=yesterday", 3).out, tz("read-date") + " " + tz("yesterday"));
}

TEST(EncodeParam, DateParametersAreUntypedBeforeOnePointFour) {
    EXPECT_EQ(param("read-date=x", 2).out, tz("read-date") + " " + tz("x"));
}

// ---- wsp_encode_param_value -----------------------------------------------------------

TEST(EncodeParamValue, FallbackFlagIsSetOnEntry) {
    Value v = value("utf-8", 0x01);
    EXPECT_EQ(v.status, WSP_OK);
    EXPECT_EQ(v.fallback, 1);
    EXPECT_EQ(v.out, "EA");
}

TEST(EncodeParamValue, NullValueFailsWithFallbackSet) {
    OutBuffer out(10);
    uint8_t fallback = 0;
    EXPECT_EQ(wsp_encode_param_value(nullptr, 0x01, out.get(), &fallback), WSP_ERR_FAIL);
    EXPECT_EQ(fallback, 1);
    EXPECT_EQ(out->length, 0);
}

TEST(EncodeParamValue, NullFallbackPointerIsTolerated) {
    TextCopy text("utf-8");
    OutBuffer out(10);
    EXPECT_EQ(wsp_encode_param_value(text.get(), 0x01, out.get(), nullptr), WSP_OK);
    EXPECT_EQ(out.written_hex(), "EA");
}

TEST(EncodeParamValue, UnnamedAndUnknownCodesWriteNothing) {
    for (uint8_t code : {uint8_t{0x04}, uint8_t{0x1E}, uint8_t{0x7F}, uint8_t{0xFF}}) {
        Value v = value("anything", code);
        EXPECT_EQ(v.status, WSP_OK) << int(code);
        EXPECT_EQ(v.length, 0) << int(code);
        EXPECT_EQ(v.fallback, 1) << int(code);
    }
}

TEST(EncodeParamValue, QValues) {
    EXPECT_EQ(value("0.5", 0).out, "33");
    EXPECT_EQ(value("0.50", 0).out, "33");
    EXPECT_EQ(value("0.25", 0).out, "1A");
    EXPECT_EQ(value("0.05", 0).out, "06");
    EXPECT_EQ(value("0.1", 0).out, "0B");
    EXPECT_EQ(value("0.01", 0).out, "02");
    EXPECT_EQ(value("0.99", 0).out, "64");
    EXPECT_EQ(value("0.125", 0).out, "81 61");
    EXPECT_EQ(value("0.333", 0).out, "83 31");
    EXPECT_EQ(value("0.999", 0).out, "88 4B");
    EXPECT_EQ(value("0.001", 0).out, "02");
}

TEST(EncodeParamValue, QThreeDigitFractionOfNinetyNineOrLessIsCodedAsTwoDigits) {
    // 0.005 is sent as 6 (read back as 0.05): kept on purpose.
    Value v = value("0.005", 0);
    EXPECT_EQ(v.status, WSP_OK);
    EXPECT_EQ(v.out, "06");
    EXPECT_EQ(value("0.099", 0).out, "64");
}

TEST(EncodeParamValue, QFourDigitsAreNotRangeChecked) {
    // 1234 + 100 = 1334 = 0x536.
    EXPECT_EQ(value("0.1234", 0).out, "8A 36");
}

TEST(EncodeParamValue, QZeroWithoutFraction) {
    EXPECT_EQ(value("0", 0).out, "01");
    EXPECT_EQ(value("0.", 0).out, "01");
    EXPECT_EQ(value("0.0", 0).out, "01");
    EXPECT_EQ(value("0.000", 0).out, "01");
}

TEST(EncodeParamValue, QPartsAreReadAsNumbers) {
    EXPECT_EQ(value("00.5", 0).out, "33");
    EXPECT_EQ(value("01", 0).out, "00");
    EXPECT_EQ(value("x", 0).out, "01");
    EXPECT_EQ(value("1.x", 0).out, "00");
}

TEST(EncodeParamValue, QOneIsASingleZero) {
    EXPECT_EQ(value("1", 0).out, "00");
    EXPECT_EQ(value("1.0", 0).out, "00");
    EXPECT_EQ(value("1.000", 0).out, "00");
}

TEST(EncodeParamValue, QEmptyIsASingleZero) {
    Value v = value("", 0);
    EXPECT_EQ(v.status, WSP_OK);
    EXPECT_EQ(v.out, "00");
}

TEST(EncodeParamValue, QMalformedClearsTheFallbackFlag) {
    for (const char *bad : {"2.0", "2", "1.5", "1.001", "10"}) {
        Value v = value(bad, 0);
        EXPECT_EQ(v.status, WSP_ERR_FAIL) << bad;
        EXPECT_EQ(v.fallback, 0) << bad;
        EXPECT_EQ(v.length, 0) << bad;
    }
}

TEST(EncodeParamValue, QNeedsRoomForOneOctetFirst) {
    Value v = value("0.5", 0, 0);
    EXPECT_EQ(v.status, WSP_ERR_FAIL);
    EXPECT_EQ(v.fallback, 0);
    Value exact = value("0.5", 0, 1);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.out, "33");
}

TEST(EncodeParamValue, QTwoOctetCodeWithRoomForOneIsRefused) {
    Value v = value("0.333", 0, 1);
    EXPECT_EQ(v.status, WSP_ERR_FAIL);
    EXPECT_EQ(v.fallback, 0);
    EXPECT_EQ(v.length, 0);
    EXPECT_EQ(value("0.333", 0, 2).out, "83 31");
}

TEST(EncodeParamValue, CharsetMissIsAFallback) {
    Value v = value("foo", 0x01);
    EXPECT_EQ(v.status, WSP_ERR_FAIL);
    EXPECT_EQ(v.fallback, 1);
    EXPECT_EQ(v.length, 0);
}

TEST(EncodeParamValue, CharsetKeepsTheFirstRowOfADuplicatedName) {
    EXPECT_EQ(value("ISO-8859-1", 0x01).out, "84");
    EXPECT_EQ(value("utf-16", 0x01).out, "02 03 F7");
}

TEST(EncodeParamValue, LevelIsAVersionValue) {
    EXPECT_EQ(value("1.0", 0x02).out, "9F");
    EXPECT_EQ(value("1.2", 0x02).out, "92");
    EXPECT_EQ(value("1", 0x02).out, "9F");
    EXPECT_EQ(value("9.1", 0x02).out, tz("9.1"));
}

TEST(EncodeParamValue, IntegerCodes) {
    EXPECT_EQ(value("5", 0x03).out, "85");
    EXPECT_EQ(value("300", 0x0E).out, "02 01 2C");
    EXPECT_EQ(value("0x1FF", 0x16).out, "02 01 FF");
    // Not a number: 0, the Short-integer 0x80.
    EXPECT_EQ(value("abc", 0x03).out, "80");
}

TEST(EncodeParamValue, TextStringCodes) {
    for (uint8_t code : {uint8_t{0x05}, uint8_t{0x06}, uint8_t{0x0A}, uint8_t{0x0B}, uint8_t{0x0C}, uint8_t{0x0D},
                         uint8_t{0x0F}}) {
        EXPECT_EQ(value("a b", code).out, tz("a b")) << int(code);
    }
    EXPECT_EQ(value("\xE9t\xE9", 0x05).out, "7F E9 74 E9 00");
}

TEST(EncodeParamValue, DifferencesIsAHeaderCodeOrToken) {
    EXPECT_EQ(value("Accept-Language", 0x07).out, "83");
    EXPECT_EQ(value("cache-control", 0x07).out, "88");
    EXPECT_EQ(value("x-foo", 0x07).out, tz("x-foo"));
    Value bad = value("a b", 0x07);
    EXPECT_EQ(bad.status, WSP_ERR_FAIL);
    EXPECT_EQ(bad.fallback, 1);
}

TEST(EncodeParamValue, PaddingAndSecTakeTheLowEightBits) {
    EXPECT_EQ(value("5", 0x08).out, "85");
    EXPECT_EQ(value("0x7F", 0x11).out, "FF");
    EXPECT_EQ(value("0X10", 0x11).out, "90");
    EXPECT_EQ(value("260", 0x08).out, "84");
    Value high = value("200", 0x08);
    EXPECT_EQ(high.status, WSP_ERR_FAIL);
    EXPECT_EQ(high.fallback, 1);
}

TEST(EncodeParamValue, RelatedTypeSearchesTheFirstSixtyFourRows) {
    EXPECT_EQ(value("Application/XML", 0x09).out, "A7");
    EXPECT_EQ(value("application/vnd.wap.rollover-certificate", 0x09).out, "BF");
    // Row 64 is past the search; its name is no Token-text (the slash).
    Value past = value("application/vnd.syncml.dm+wbxml", 0x09);
    EXPECT_EQ(past.status, WSP_ERR_FAIL);
    EXPECT_EQ(past.fallback, 1);
    EXPECT_EQ(value("x-type", 0x09).out, tz("x-type"));
    Value bad = value("text/html; x", 0x09);
    EXPECT_EQ(bad.status, WSP_ERR_FAIL);
}

TEST(EncodeParamValue, SecureIsOneZero) {
    Value v = value("whatever", 0x10, 2);
    EXPECT_EQ(v.status, WSP_OK);
    EXPECT_EQ(v.out, "00");
}

TEST(EncodeParamValue, SecureMayNotFillTheOutput) {
    Value exact = value("", 0x10, 1);
    EXPECT_EQ(exact.status, WSP_ERR_FAIL);
    EXPECT_EQ(exact.out, "00"); // written and counted
    Value full = value("", 0x10, 0);
    EXPECT_EQ(full.status, WSP_ERR_FAIL);
    EXPECT_EQ(full.length, 0);
}

TEST(EncodeParamValue, DateCodes) {
    EXPECT_EQ(value("sun, 06 nov 1994 08:49:37 gmt", 0x13).out, "04 2E BC 98 A1");
    EXPECT_EQ(value("sun, 06 nov 1994 08:49:37 gmt", 0x14).out, "04 2E BC 98 A1");
    EXPECT_EQ(value("sun nov 6 08:49:37 1994", 0x15).out, "04 2E BC 98 A1");
    Value bad = value("sun, 06 nov 1994 08:49:37 utc", 0x13);
    EXPECT_EQ(bad.status, WSP_ERR_FAIL);
    EXPECT_EQ(bad.fallback, 1);
}

TEST(EncodeParamValue, NewStartTurnsAngleBracketsIntoQuotes) {
    EXPECT_EQ(value("<part1>", 0x19).out, "22 " + tz("part1"));
    EXPECT_EQ(value("<part1>", 0x1A).out, "22 " + tz("part1"));
    EXPECT_EQ(value("<>", 0x19).out, "22 00");
    // Only a value enclosed on both sides is changed.
    EXPECT_EQ(value("<x", 0x19).status, WSP_ERR_FAIL);
    EXPECT_EQ(value("x>", 0x19).status, WSP_ERR_FAIL);
    EXPECT_EQ(value("<part1>", 0x1B).status, WSP_ERR_FAIL);
}

TEST(EncodeParamValue, QuotedOrTokenCodes) {
    for (uint8_t code : {uint8_t{0x12}, uint8_t{0x17}, uint8_t{0x18}, uint8_t{0x19}, uint8_t{0x1A}, uint8_t{0x1B},
                         uint8_t{0x1C}, uint8_t{0x1D}}) {
        EXPECT_EQ(value("abc", code).out, tz("abc")) << int(code);
        EXPECT_EQ(value("\"a b\"", code).out, "22 " + tz("a b")) << int(code);
    }
    Value bad = value("a b", 0x17);
    EXPECT_EQ(bad.status, WSP_ERR_FAIL);
    EXPECT_EQ(bad.fallback, 1);
}

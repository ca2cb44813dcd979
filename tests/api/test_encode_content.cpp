// wsp_encode_content: media types within each version's rows, the general
// form, and every parameter rule (typed, untyped, refused, q-values).
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "api_support.h"
#include "tarnwspencdec.h"

using namespace api_encode;
using wsp_test::hex;
using wsp_test::OutBuffer;

namespace {

// ===================================================================
// wsp_encode_content: media types
// ===================================================================

TEST(ApiEncodeContent, KnownMediaIsAShortInteger) {
    EXPECT_EQ(content("text/plain", "1.1"), "OK 83");
    EXPECT_EQ(content("*/*", "1.1"), "OK 80");
    EXPECT_EQ(content("application/x-agps", "1.4"), "OK FF");
    EXPECT_EQ(content("application/vnd.syncml.dm+wbxml", "1.4"), "OK C2");
}

TEST(ApiEncodeContent, MediaIsMatchedCaseInsensitively) {
    EXPECT_EQ(content("APPLICATION/VND.WAP.MMS-MESSAGE", "1.4"), "OK BE");
    EXPECT_EQ(content("  Text/Html  ", "1.1"), "OK 82");
}

TEST(ApiEncodeContent, CharsetParameterExample) {
    EXPECT_EQ(content("Text/Plain; charset=UTF-8", "1.3"), "OK 03 83 81 EA");
}

TEST(ApiEncodeContent, VersionLimitsTheKnownMediaTypes) {
    EXPECT_EQ(content("application/vnd.wap.sia", "1.1"), "OK " + tz("application/vnd.wap.sia"));
    EXPECT_EQ(content("application/vnd.wap.sia", "1.2"), "OK B4");
    EXPECT_EQ(content("text/vnd.wap.si", "1.1"), "OK AD");
    EXPECT_EQ(content("application/vnd.wap.sic", "1.1"), "OK " + tz("application/vnd.wap.sic"));
    EXPECT_EQ(content("application/vnd.wap.sic", "1.2"), "OK AE");
    EXPECT_EQ(content("text/vnd.wap.connectivity-xml", "1.2"), "OK " + tz("text/vnd.wap.connectivity-xml"));
    EXPECT_EQ(content("text/vnd.wap.connectivity-xml", "1.3"), "OK B5");
    EXPECT_EQ(content("application/pkcs7-mime", "1.3"), "OK " + tz("application/pkcs7-mime"));
    EXPECT_EQ(content("application/pkcs7-mime", "1.4"), "OK B7");
    EXPECT_EQ(content("application/vnd.wap.mms-message", "1.3"), "OK " + tz("application/vnd.wap.mms-message"));
    EXPECT_EQ(content("application/vnd.wap.mms-message", "1.4"), "OK BE");
}

TEST(ApiEncodeContent, HashedCertificateKeepsItsOwnSpelling) {
    EXPECT_EQ(content("application/vnd.wap.hashed-certifiate", "1.4"), "OK B8");
    EXPECT_EQ(content("application/vnd.wap.hashed-certificate", "1.4"),
              "OK " + tz("application/vnd.wap.hashed-certificate"));
}

TEST(ApiEncodeContent, CodeAbove127WithoutParametersKeepsItsScratchFault) {
    // Length octet 3, then positions 3 and 4 of the Long-integer scratch and
    // the (zeroed) octet past it, not the code.
    EXPECT_EQ(content("application/vnd.omaloc-supl-init", "1.4"), "OK 03 00 00 00");
    EXPECT_EQ(content("application/vnd.uplanet.cacheop-wbxml", "1.4"), "OK 03 00 00 00");
    EXPECT_EQ(content("application/vnd.nokia.syncset+wbxml", "1.4"), "OK 03 00 00 00");
}

TEST(ApiEncodeContent, CodeAbove127WithParametersIsALongInteger) {
    EXPECT_EQ(content("application/vnd.uplanet.cacheop-wbxml; charset=utf-8", "1.4"), "OK 05 02 02 01 81 EA");
}

TEST(ApiEncodeContent, NullOrEmptyTextWritesNoValueOctet) {
    EXPECT_EQ(content(nullptr, "1.4"), "OK 00");
    EXPECT_EQ(content("", "1.1"), "OK 00");
    EXPECT_EQ(content(nullptr, "1.4", 1), "OK 00");
    EXPECT_EQ(content(nullptr, "1.4", 0), "-214 len=0");
}

TEST(ApiEncodeContent, UnknownVersionIsRefused) {
    EXPECT_EQ(content("text/plain", "1.5"), "-217 len=0");
    EXPECT_EQ(content(nullptr, "1.5"), "-217 len=0");
    EXPECT_EQ(content("text/plain", "1.4 "), "-217 len=0");
}

TEST(ApiEncodeContent, UnknownMediaIsExtensionMediaWithoutQuote) {
    EXPECT_EQ(content("application/x-foo", "1.4"), "OK " + tz("application/x-foo"));
    EXPECT_EQ(content("\xE9/x", "1.4"), "OK E9 2F 78 00");
}

TEST(ApiEncodeContent, ExtensionMediaRoomIsTestedFirst) {
    EXPECT_EQ(content("application/x-foo", "1.4", 18), "OK " + tz("application/x-foo"));
    EXPECT_EQ(content("application/x-foo", "1.4", 17), "-214 len=0");
}

TEST(ApiEncodeContent, ExtensionMediaWithControlCharacterFails) {
    EXPECT_EQ(content("text/\x01", "1.4"), "-214 len=0");
}

TEST(ApiEncodeContent, LongCodeRoomIsTestedFirst) {
    EXPECT_EQ(content("application/vnd.omaloc-supl-init", "1.4", 4), "OK 03 00 00 00");
    EXPECT_EQ(content("application/vnd.omaloc-supl-init", "1.4", 3), "-214 len=0");
}

TEST(ApiEncodeContent, UnknownMediaWithParameters) {
    EXPECT_EQ(content("application/x-unknown; charset=utf-8", "1.4"),
              "OK 18 " + tz("application/x-unknown") + " 81 EA");
}

TEST(ApiEncodeContent, TextIsNotModified) {
    char text[] = "Text/Plain; Charset=UTF-8";
    EXPECT_EQ(content(text, "1.4"), "OK 03 83 81 EA");
    EXPECT_STREQ(text, "Text/Plain; Charset=UTF-8");
    // A literal in read-only memory works as well.
    EXPECT_EQ(content("TEXT/HTML; q=0.5", "1.4"), "OK 03 82 80 33");
}

TEST(ApiEncodeContent, ShortIntegerMediaNeverFillsTheLastByte) {
    EXPECT_EQ(content("text/plain", "1.4", 2), "OK 83");
    EXPECT_EQ(content("text/plain", "1.4", 1), "-214 len=1 83");
}

TEST(ApiEncodeContent, GeneralFormLengthOctetStaysWhenTheBodyDoesNotFit) {
    EXPECT_EQ(content("text/html; type=5", "1.4", 4), "OK 03 82 83 85");
    EXPECT_EQ(content("text/html; type=5", "1.4", 3), "-214 len=1 03");
}

TEST(ApiEncodeContent, GeneralFormAbove30UsesLengthQuote) {
    std::string value(30, 'a');
    std::string text = "text/plain; name=" + value;
    EXPECT_EQ(content(text.c_str(), "1.1"), "OK 1F 21 83 85 " + tz(value));
}

TEST(ApiEncodeContent, ParameterisedValueMustFitIn150Octets) {
    // Media, parameter code, 147 characters and the NUL: exactly 150.
    std::string v147(147, 'n');
    std::string fits = "text/plain; name=" + v147;
    EXPECT_EQ(content(fits.c_str(), "1.1"), "OK 1F 81 16 83 85 " + tz(v147));
    std::string over = "text/plain; name=" + v147 + "n";
    EXPECT_EQ(content(over.c_str(), "1.1"), "-214 len=0");
}

// ===================================================================
// wsp_encode_content: parameters
// ===================================================================

TEST(ApiEncodeContent, MultipartRelatedTypeAndStart) {
    EXPECT_EQ(content("multipart/related; type=application/xml; start=<part1>", "1.4"),
              "OK 1C " + tz("multipart/related") + " 89 A7 99 22 70 61 72 74 31 00");
}

TEST(ApiEncodeContent, TypeOutsideMultipartRelatedIsCode3) {
    EXPECT_EQ(content("text/html; type=5", "1.4"), "OK 03 82 83 85");
}

TEST(ApiEncodeContent, StartOutsideMultipartRelatedIsRefused) {
    EXPECT_EQ(content("text/html; start=x", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/html; start=x", "1.2"), "-214 len=0");
    EXPECT_EQ(content("text/html; start-info=x", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/html; start_info=x", "1.4"), "-214 len=0");
}

TEST(ApiEncodeContent, StartBeyondTheVersionIsUntyped) {
    EXPECT_EQ(content("text/html; start=x", "1.1"), "OK 09 82 " + tz("start") + " " + tz("x"));
}

TEST(ApiEncodeContent, StartInfoOfMultipartRelated) {
    // 1.2: "start_info" is code 0x0B, a Text-string.
    EXPECT_EQ(content("multipart/related; start_info=<a>", "1.2"), "OK 17 " + tz("multipart/related") + " 8B " + tz("<a>"));
    // 1.4: "start-info" is code 0x1A; angle brackets become quotation marks.
    EXPECT_EQ(content("multipart/related; start-info=<a>", "1.4"),
              "OK 16 " + tz("multipart/related") + " 9A 22 61 00");
}

TEST(ApiEncodeContent, QValues) {
    const char *cases[][2] = {
        {"0.5", "03 82 80 33"},    {"0.50", "03 82 80 33"},   {"1", "03 82 80 00"},       {"1.0", "03 82 80 00"},
        {"0.005", "03 82 80 06"},  {"0.05", "03 82 80 06"},   {"0.25", "03 82 80 1A"},    {"0.1", "03 82 80 0B"},
        {"0.100", "03 82 80 0B"},  {"0.01", "03 82 80 02"},   {"0.001", "03 82 80 02"},   {"0", "03 82 80 01"},
        {"0.125", "04 82 80 81 61"}, {"0.333", "04 82 80 83 31"}, {"0.999", "04 82 80 88 4B"},
        {"0.120", "03 82 80 0D"},  {"0.0", "03 82 80 01"},
        // Codes are not range-checked: four digits give 9999 + 100.
        {"0.9999", "04 82 80 CE 73"},
    };
    for (auto &c : cases) {
        std::string text = std::string("text/html; q=") + c[0];
        EXPECT_EQ(content(text.c_str(), "1.4"), std::string("OK ") + c[1]) << c[0];
    }
}

TEST(ApiEncodeContent, MalformedQValuesAreRefused) {
    EXPECT_EQ(content("text/html; q=2.0", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/html; q=1.5", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/html; q=3", "1.1"), "-214 len=0");
}

TEST(ApiEncodeContent, CharsetByNameInAnyCase) {
    EXPECT_EQ(content("text/plain; charset=ISO-8859-1", "1.4"), "OK 03 83 81 84");
    EXPECT_EQ(content("text/plain; CHARSET=iso-8859-1", "1.1"), "OK 03 83 81 84");
    EXPECT_EQ(content("text/plain; charset=utf-16", "1.4"), "OK 05 83 81 02 03 F7");
}

TEST(ApiEncodeContent, UnknownCharsetFallsBackToUntypedParameter) {
    EXPECT_EQ(content("text/plain; charset=foo", "1.4"), "OK 0D 83 " + tz("charset") + " " + tz("foo"));
    EXPECT_EQ(content("text/plain; charset=windows-1252", "1.4"),
              "OK 16 83 " + tz("charset") + " " + tz("windows-1252"));
}

TEST(ApiEncodeContent, ParameterWithoutValue) {
    EXPECT_EQ(content("text/plain; charset", "1.4"), "OK 03 83 81 00");
    EXPECT_EQ(content("text/plain; foo", "1.4"), "OK 06 83 " + tz("foo") + " 00");
}

TEST(ApiEncodeContent, UntypedParameterValues) {
    EXPECT_EQ(content("text/plain; foo=bar", "1.4"), "OK 09 83 " + tz("foo") + " " + tz("bar"));
    EXPECT_EQ(content("text/plain; foo=12", "1.4"), "OK 06 83 " + tz("foo") + " 8C");
    EXPECT_EQ(content("text/plain; foo=300", "1.4"), "OK 08 83 " + tz("foo") + " 02 01 2C");
    EXPECT_EQ(content("text/plain; foo=1.5", "1.4"), "OK 09 83 " + tz("foo") + " " + tz("1.5"));
    EXPECT_EQ(content("text/plain; foo=\"a b\"", "1.4"), "OK 0A 83 " + tz("foo") + " 22 61 20 62 00");
}

TEST(ApiEncodeContent, UnclosedQuotedValueLosesItsNul) {
    // Without its closing quotation mark the Quoted-string's NUL is not
    // counted, so only the quotation mark and the characters are copied.
    EXPECT_EQ(content("text/plain; name=\"abc", "1.4"), "OK 06 83 97 22 61 62 63");
    // Up to 1.2 "name" is a Text-string and keeps the quotation mark.
    EXPECT_EQ(content("text/plain; name=\"abc", "1.1"), "OK 07 83 85 22 61 62 63 00");
}

TEST(ApiEncodeContent, LeadingSemicolonIsSkippedByTheTokenizer) {
    EXPECT_EQ(content(";charset=utf-8", "1.4"), "OK " + tz("charset=utf-8"));
    EXPECT_EQ(content("text/plain ; charset=utf-8;", "1.4"), "OK 03 83 81 EA");
}

TEST(ApiEncodeContent, RelatedTypeOutsideTheTableNeedsQuotes) {
    // Neither the typed Token-text nor the untyped one takes a slash.
    EXPECT_EQ(content("multipart/related; type=application/x-foo", "1.4"), "-214 len=0");
    // Quoted, it goes out untyped as a Quoted-string.
    EXPECT_EQ(content("multipart/related; type=\"application/x-foo\"", "1.4"),
              "OK 1F 2A " + tz("multipart/related") + " " + tz("type") + " 22 " + tz("application/x-foo"));
}

TEST(ApiEncodeContent, UntypedTokenValueWithSeparatorFails) {
    EXPECT_EQ(content("text/plain; foo=a/b", "1.4"), "-214 len=0");
}

TEST(ApiEncodeContent, LevelIsAVersionValue) {
    EXPECT_EQ(content("text/html; level=1.2", "1.1"), "OK 03 82 82 92");
    EXPECT_EQ(content("text/html; level=1", "1.1"), "OK 03 82 82 9F");
    EXPECT_EQ(content("text/html; level=1.10", "1.1"), "OK 07 82 82 " + tz("1.10"));
}

TEST(ApiEncodeContent, NameIsTextStringUntil12AndTokenOrQuotedFrom14) {
    EXPECT_EQ(content("text/plain; name=a b", "1.1"), "OK 06 83 85 61 20 62 00");
    EXPECT_EQ(content("text/plain; name=\"a b\"", "1.4"), "OK 07 83 97 22 61 20 62 00");
    EXPECT_EQ(content("image/jpeg; name=pic.jpg", "1.4"), "OK 0A 9E 97 " + tz("pic.jpg"));
    EXPECT_EQ(content("image/jpeg; filename=pic.jpg", "1.4"), "OK 0A 9E 98 " + tz("pic.jpg"));
    EXPECT_EQ(content("image/jpeg; filename=pic.jpg", "1.2"), "OK 0A 9E 86 " + tz("pic.jpg"));
}

TEST(ApiEncodeContent, CommentDomainPathByVersion) {
    EXPECT_EQ(content("text/plain; comment=hello", "1.2"), "OK 0F 83 " + tz("comment") + " " + tz("hello"));
    EXPECT_EQ(content("text/plain; comment=hello", "1.3"), "OK 08 83 8C " + tz("hello"));
    EXPECT_EQ(content("text/plain; comment=hello", "1.4"), "OK 08 83 9B " + tz("hello"));
    EXPECT_EQ(content("text/plain; domain=example.com", "1.4"), "OK 0E 83 9C " + tz("example.com"));
    EXPECT_EQ(content("text/plain; path=/a", "1.3"), "OK 05 83 8F " + tz("/a"));
}

TEST(ApiEncodeContent, HyphenAndUnderscoreSpellingsOfParameterNames) {
    // "max_age" and "start_info" are spelled with underscores, the newer
    // "start-info" with a hyphen: the other spellings are unknown names.
    EXPECT_EQ(content("text/plain; max-age=5", "1.4"), "OK 0A 83 " + tz("max-age") + " 85");
    EXPECT_EQ(content("multipart/related; start-info=x", "1.2"),
              "OK 1F 1F " + tz("multipart/related") + " " + tz("start-info") + " " + tz("x"));
}

TEST(ApiEncodeContent, RelatedTypeSearchesTheFirst64RowsInAnyCase) {
    EXPECT_EQ(content("multipart/related; type=Application/XML", "1.4"), "OK 14 " + tz("multipart/related") + " 89 A7");
    // Row 64 (code 0x42) is past the rows searched, and a slash is no token
    // character.
    EXPECT_EQ(content("multipart/related; type=application/vnd.syncml.dm+wbxml", "1.4"), "-214 len=0");
}

TEST(ApiEncodeContent, IntegerParameters) {
    EXPECT_EQ(content("text/plain; size=1024", "1.4"), "OK 05 83 96 02 04 00");
    EXPECT_EQ(content("text/plain; max_age=0x20", "1.3"), "OK 03 83 8E A0");
    EXPECT_EQ(content("text/plain; max_age=0x20", "1.2"), "OK 0E 83 " + tz("max_age") + " " + tz("0x20"));
}

TEST(ApiEncodeContent, DifferencesNamesAHeader) {
    EXPECT_EQ(content("text/plain; differences=Content-Length", "1.1"), "OK 03 83 87 8D");
    EXPECT_EQ(content("text/plain; differences=cache-control", "1.4"), "OK 03 83 87 88");
    EXPECT_EQ(content("text/plain; differences=x-foo", "1.1"), "OK 08 83 87 " + tz("x-foo"));
}

TEST(ApiEncodeContent, PaddingIsTheLowEightBitsAsShortInteger) {
    EXPECT_EQ(content("text/plain; padding=5", "1.1"), "OK 03 83 88 85");
    EXPECT_EQ(content("text/plain; padding=0x10", "1.1"), "OK 03 83 88 90");
    EXPECT_EQ(content("text/plain; padding=300", "1.1"), "OK 03 83 88 AC");
    // 200 has bit 7 set: the typed form fails and the parameter goes out
    // untyped, the number as a Long-integer.
    EXPECT_EQ(content("text/plain; padding=200", "1.1"), "OK 0B 83 " + tz("padding") + " 01 C8");
}

TEST(ApiEncodeContent, SecureIsAnEmptyValue) {
    EXPECT_EQ(content("text/plain; secure", "1.3"), "OK 03 83 90 00");
    EXPECT_EQ(content("text/plain; secure=x", "1.3"), "OK 03 83 90 00");
    EXPECT_EQ(content("text/plain; secure", "1.2"), "OK 09 83 " + tz("secure") + " 00");
}

TEST(ApiEncodeContent, SecAndMacOnlyForConnectivityWbxml) {
    std::string mac = "8C3F1A2B4D5E6F708192A3B4C5D6E7F801234567";
    std::string text = "application/vnd.wap.connectivity-wbxml; SEC=0; MAC=" + mac;
    EXPECT_EQ(content(text.c_str(), "1.4"), "OK 1F 2D B6 91 80 92 " + tz(mac));
    EXPECT_EQ(content("application/vnd.wap.connectivity-wbxml; sec=1; mac=A1B2", "1.4"),
              "OK 09 B6 91 81 92 " + tz("A1B2"));
    EXPECT_EQ(content("text/plain; sec=1", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/plain; mac=abc", "1.4"), "-214 len=0");
}

TEST(ApiEncodeContent, SecAndMacBefore14AreUntyped) {
    EXPECT_EQ(content("application/vnd.wap.connectivity-wbxml; sec=0; mac=abc", "1.3"),
              "OK 0E B6 " + tz("sec") + " 80 " + tz("mac") + " " + tz("abc"));
}

TEST(ApiEncodeContent, DateParameters) {
    EXPECT_EQ(content("text/plain; creation-date=sun, 06 nov 1994 08:49:37 gmt", "1.4"),
              "OK 07 83 93 04 2E BC 98 A1");
    EXPECT_EQ(content("text/plain; modification-date=fri, 31 dec 1999 23:59:59 gmt", "1.4"),
              "OK 07 83 94 04 38 6D 43 7F");
    EXPECT_EQ(content("text/plain; read-date=thu, 01 jan 1970 00:00:00 gmt", "1.4"), "OK 04 83 95 01 00");
    // Before 1.4 the name is unknown and the date is no Token-text.
    EXPECT_EQ(content("text/plain; read-date=thu, 01 jan 1970 00:00:00 gmt", "1.3"), "-214 len=0");
}

} // namespace

// The well-known header values from Age to Warning (numbers and texts,
// token lists, Allow, Cache-Control, Pragma, text lists, credentials,
// Content-Disposition, Content-MD5, ranges, Retry-After, Vary, Warning),
// driven through wsp_enc_hdr only: one page-1 record per case, the value as
// it follows the colon (leading blank included).
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
// A: text or integer
// ===================================================================

TEST(ApiEncodeValues, AgeIsAnIntegerAfterTrimming) {
    EXPECT_EQ(enc("Age:   300"), "OK 85 02 01 2C");
    EXPECT_EQ(enc("Age: 30"), "OK 85 9E");
}

TEST(ApiEncodeValues, ContentLengthAndMaxForwards) {
    EXPECT_EQ(enc("Content-Length: 1024"), "OK 8D 02 04 00");
    EXPECT_EQ(enc("Content-Length: 0"), "OK 8D 80");
    EXPECT_EQ(enc("Content-Length: 127"), "OK 8D FF");
    EXPECT_EQ(enc("Content-Length: 128"), "OK 8D 01 80");
    EXPECT_EQ(enc("Max-Forwards: 10"), "OK 9E 8A");
}

TEST(ApiEncodeValues, IntegerFromHexadecimalText) {
    EXPECT_EQ(enc("Content-Length: 0x10"), "OK 8D 90");
    EXPECT_EQ(enc("Content-Length: 0XFF"), "OK 8D 01 FF");
}

TEST(ApiEncodeValues, OverflowingHexadecimalBecomesLongInteger) {
    EXPECT_EQ(enc("Content-Length: 0x1FFFFFFFFF"), "OK 8D 05 1F FF FF FF FF");
    // Nine digits: the odd first digit makes an octet of its own.
    EXPECT_EQ(enc("Content-Length: 0x123456789"), "OK 8D 05 01 23 45 67 89");
    // All bits set is taken for an overflow as well.
    EXPECT_EQ(enc("Content-Length: 0xFFFFFFFF"), "OK 8D 04 FF FF FF FF");
}

TEST(ApiEncodeValues, DecimalOverflowFails) {
    EXPECT_EQ(enc("Content-Length: 4294967295"), kFail);
    EXPECT_EQ(enc("Content-Length: 99999999999"), kFail);
}

TEST(ApiEncodeValues, NonNumericIntegerIsZero) {
    EXPECT_EQ(enc("Content-Length: abc"), "OK 8D 80");
}

TEST(ApiEncodeValues, TextHeadersAreTrimmedTextStrings) {
    EXPECT_EQ(enc("ETag: \"abc\""), "OK 93 " + tz("\"abc\""));
    EXPECT_EQ(enc("Host:   www.example.com  "), "OK 96 " + tz("www.example.com"));
    EXPECT_EQ(enc("Location: http://a/b?c=d"), "OK 9C " + tz("http://a/b?c=d"));
    EXPECT_EQ(enc("From: user@example.com"), "OK 95 " + tz("user@example.com"));
    EXPECT_EQ(enc("Server: Apache/1.3"), "OK A6 " + tz("Apache/1.3"));
    EXPECT_EQ(enc("Content-Base: http://a/"), "OK 8A " + tz("http://a/"));
    EXPECT_EQ(enc("Content-Location: /x"), "OK 8E " + tz("/x"));
    EXPECT_EQ(enc("Referer: http://a/"), "OK A4 " + tz("http://a/"));
    EXPECT_EQ(enc("X-Wap-Content-URI: http://a/c"), "OK B0 " + tz("http://a/c"));
    EXPECT_EQ(enc("X-Wap-Initiator-URI: http://a/i"), "OK B1 " + tz("http://a/i"));
}

TEST(ApiEncodeValues, TextHeaderCommasAreNotSpecial) {
    EXPECT_EQ(enc("User-Agent: a, b"), "OK A9 " + tz("a, b"));
}

TEST(ApiEncodeValues, TextHeaderWithHighFirstOctetIsQuoted) {
    EXPECT_EQ(enc("Server: \xC4pfel"), "OK A6 7F C4 70 66 65 6C 00");
}

TEST(ApiEncodeValues, TextHeaderWithControlCharacterFails) {
    EXPECT_EQ(enc("Server: a\x02z"), kFail);
}

TEST(ApiEncodeValues, EmptyIntegerOrTextValue) {
    // An empty number is read as 0; an empty text is a lone NUL.
    EXPECT_EQ(enc("Age:"), "OK 85 80");
    EXPECT_EQ(enc("Content-Length:  "), "OK 8D 80");
    EXPECT_EQ(enc("Host:"), "OK 96 00");
}

TEST(ApiEncodeValues, TextHeaderRoom) {
    EXPECT_EQ(enc("host: a", "1.4", 3), "OK 96 61 00");
    EXPECT_EQ(enc("host: a", "1.4", 2), kFail);
}

// ===================================================================
// B: Accept-Encoding before 1.3
// ===================================================================

TEST(ApiEncodeValues, AcceptEncodingOneHeaderPerCoding) {
    EXPECT_EQ(enc("Accept-Encoding: gzip, compress, deflate", "1.2"), "OK 82 80 82 81 82 82");
    EXPECT_EQ(enc("Accept-Encoding: GZIP", "1.1"), "OK 82 80");
    EXPECT_EQ(enc("Accept-Encoding: x-gzip", "1.2"), "OK 82 " + tz("x-gzip"));
}

TEST(ApiEncodeValues, AcceptEncodingQualityIsNotSupported) {
    EXPECT_EQ(enc("Accept-Encoding: gzip;q=0.5", "1.2"), kFail);
}

TEST(ApiEncodeValues, AcceptEncodingEmptyFails) {
    EXPECT_EQ(enc("Accept-Encoding:", "1.2"), kFail);
}

// ===================================================================
// C: token lists with a table
// ===================================================================

TEST(ApiEncodeValues, AcceptRangesNoneFirstMustStandAlone) {
    EXPECT_EQ(enc("Accept-Ranges: none, bytes"), kFail);
    EXPECT_EQ(enc("Accept-Ranges: bytes, none"), "OK 84 81 84 80");
    EXPECT_EQ(enc("Accept-Ranges: none"), "OK 84 80");
    EXPECT_EQ(enc("Accept-Ranges: Bytes"), "OK 84 81");
}

TEST(ApiEncodeValues, TokenListNeedsAnElement) {
    EXPECT_EQ(enc("Accept-Ranges:"), kFail);
    EXPECT_EQ(enc("Content-Encoding:  "), kFail);
}

TEST(ApiEncodeValues, ConnectionAndTransferEncoding) {
    EXPECT_EQ(enc("Connection: close"), "OK 89 80");
    EXPECT_EQ(enc("Connection: Keep-Alive"), "OK 89 " + tz("keep-alive"));
    EXPECT_EQ(enc("Transfer-Encoding: Chunked"), "OK A7 80");
    EXPECT_EQ(enc("Transfer-Encoding: gzip"), "OK A7 " + tz("gzip"));
}

TEST(ApiEncodeValues, ContentEncoding) {
    EXPECT_EQ(enc("Content-Encoding: gzip, compress"), "OK 8B 80 8B 81");
    EXPECT_EQ(enc("Content-Encoding: Deflate"), "OK 8B 82");
}

TEST(ApiEncodeValues, ContentLanguageByCodeOrName) {
    EXPECT_EQ(enc("Content-Language: en"), "OK 8C 99");
    EXPECT_EQ(enc("Content-Language: en, fr"), "OK 8C 99 8C A2");
    EXPECT_EQ(enc("Content-Language: German"), "OK 8C 96");
    EXPECT_EQ(enc("Content-Language: xx"), "OK 8C " + tz("xx"));
}

TEST(ApiEncodeValues, ContentLanguageAbove127IsALongInteger) {
    EXPECT_EQ(enc("Content-Language: la"), "OK 8C 01 8B");
    EXPECT_EQ(enc("Content-Language: rhaeto-romance"), "OK 8C 01 8C");
}

TEST(ApiEncodeValues, ContentLanguageNameSpellings) {
    EXPECT_EQ(enc("Content-Language: Sewdish"), "OK 8C F0");
    EXPECT_EQ(enc("Content-Language: inuktitu"), "OK 8C 01 89");
}

TEST(ApiEncodeValues, PublicMethodsAreCaseSensitive) {
    EXPECT_EQ(enc("Public: GET, POST"), "OK A2 C0 A2 E0");
    EXPECT_EQ(enc("Public: OPTIONS"), "OK A2 C1");
    EXPECT_EQ(enc("Public: get"), "OK A2 " + tz("get"));
}

TEST(ApiEncodeValues, TokenListRoomCheckAfterCodeOctet) {
    EXPECT_EQ(enc("Connection: close", "1.4", 3), "OK 89 80");
    EXPECT_EQ(enc("Connection: close", "1.4", 2), kFail);
    EXPECT_EQ(enc("Connection: close", "1.4", 1), kFail);
}

// ===================================================================
// D: Allow
// ===================================================================

TEST(ApiEncodeValues, AllowMethodsAndNumbers) {
    EXPECT_EQ(enc("Allow: GET, 0x41"), "OK 86 C0 86 C1");
    EXPECT_EQ(enc("Allow: POST, PUT"), "OK 86 E0 86 E1");
    EXPECT_EQ(enc("Allow: 100"), "OK 86 E4");
    EXPECT_EQ(enc("Allow: 64, 127"), "OK 86 C0 86 FF");
    EXPECT_EQ(enc("Allow: 0X60"), "OK 86 E0");
}

TEST(ApiEncodeValues, AllowRefusesUnknownMethods) {
    EXPECT_EQ(enc("Allow: get"), kFail);
    EXPECT_EQ(enc("Allow: 63"), kFail);
    EXPECT_EQ(enc("Allow: 128"), kFail);
    EXPECT_EQ(enc("Allow: 0x80"), kFail);
    EXPECT_EQ(enc("Allow:"), kFail);
}

// ===================================================================
// E: Cache-Control
// ===================================================================

TEST(ApiEncodeValues, CacheControlExample) {
    EXPECT_EQ(enc("Cache-Control: no-cache, max-age=60"), "OK C7 80 C7 02 82 BC");
}

TEST(ApiEncodeValues, CacheControlDirectivesWithoutArgument) {
    EXPECT_EQ(enc("Cache-Control: no-cache, no-store, must-revalidate"), "OK C7 80 C7 81 C7 89");
    EXPECT_EQ(enc("Cache-Control: max-stale"), "OK C7 83");
    EXPECT_EQ(enc("Cache-Control: only-if-cached"), "OK C7 85");
    EXPECT_EQ(enc("Cache-Control: public"), "OK C7 86");
    EXPECT_EQ(enc("Cache-Control: private"), "OK C7 87");
    EXPECT_EQ(enc("Cache-Control: no-transform"), "OK C7 88");
    EXPECT_EQ(enc("Cache-Control: proxy-revalidate"), "OK C7 8A");
    EXPECT_EQ(enc("Cache-Control: No-Cache"), "OK C7 80");
}

TEST(ApiEncodeValues, CacheControlMaxAgeAndMinFreshNeedAnArgument) {
    EXPECT_EQ(enc("Cache-Control: max-age"), kFail);
    EXPECT_EQ(enc("Cache-Control: min-fresh"), kFail);
    EXPECT_EQ(enc("Cache-Control: min-fresh=5"), "OK C7 02 84 85");
}

TEST(ApiEncodeValues, CacheControlDirectivesThatTakeNoArgument) {
    for (const char *d : {"no-store", "only-if-cached", "public", "no-transform", "must-revalidate",
                          "proxy-revalidate"}) {
        EXPECT_EQ(enc(std::string("Cache-Control: ") + d + "=1"), kFail) << d;
    }
}

TEST(ApiEncodeValues, CacheControlIntegerArguments) {
    EXPECT_EQ(enc("Cache-Control: max-stale=10"), "OK C7 02 83 8A");
    EXPECT_EQ(enc("Cache-Control: max-age=0x10"), "OK C7 02 82 90");
    EXPECT_EQ(enc("Cache-Control: max-age=3600"), "OK C7 04 82 02 0E 10");
}

TEST(ApiEncodeValues, CacheControlSMaxAgeOnlyUnder14) {
    EXPECT_EQ(enc("Cache-Control: s-maxage=30", "1.4"), "OK C7 02 8B 9E");
    EXPECT_EQ(enc("Cache-Control: s-maxage=30", "1.3"), "OK BD 0A " + tz("s-maxage") + " 9E");
    EXPECT_EQ(enc("Cache-Control: s-maxage=30", "1.2"), "OK 88 0A " + tz("s-maxage") + " 9E");
    EXPECT_EQ(enc("Cache-Control: s-maxage", "1.4"), "OK C7 8B");
    EXPECT_EQ(enc("Cache-Control: s-maxage", "1.3"), "OK BD " + tz("s-maxage"));
}

TEST(ApiEncodeValues, CacheControlFieldNameLists) {
    EXPECT_EQ(enc("Cache-Control: private=\"set-cookie, content-length\""), "OK C7 03 87 C1 8D");
    EXPECT_EQ(enc("Cache-Control: no-cache=\"x-foo\""), "OK C7 07 80 " + tz("x-foo"));
    EXPECT_EQ(enc("Cache-Control: no-cache=\"Cache-Control\""), "OK C7 02 80 88");
}

TEST(ApiEncodeValues, CacheControlFieldNameListMustBeQuotedAndNonEmpty) {
    EXPECT_EQ(enc("Cache-Control: private=set-cookie"), kFail);
    EXPECT_EQ(enc("Cache-Control: no-cache=\"\""), kFail);
}

TEST(ApiEncodeValues, CacheControlUnknownDirectives) {
    EXPECT_EQ(enc("Cache-Control: foo"), "OK C7 " + tz("foo"));
    EXPECT_EQ(enc("Cache-Control: foo=bar"), "OK C7 08 " + tz("foo") + " " + tz("bar"));
    EXPECT_EQ(enc("Cache-Control: foo=1.5"), "OK C7 08 " + tz("foo") + " " + tz("1.5"));
    EXPECT_EQ(enc("Cache-Control: foo=\"a.b\""), "OK C7 09 " + tz("foo") + " 22 61 2E 62 00");
    EXPECT_EQ(enc("Cache-Control: foo=300"), "OK C7 07 " + tz("foo") + " 02 01 2C");
    EXPECT_EQ(enc("Cache-Control: foo=12"), "OK C7 05 " + tz("foo") + " 8C");
}

TEST(ApiEncodeValues, CacheControlUnclosedQuoteKeepsItsNulOutOfTheCount) {
    // The Quoted-string writer counts L octets for a text of L characters;
    // without a closing quotation mark its NUL falls past them.
    EXPECT_EQ(enc("Cache-Control: foo=\"a.b"), "OK C7 08 " + tz("foo") + " 22 61 2E 62");
}

TEST(ApiEncodeValues, CacheControlWithoutDirectiveFails) {
    EXPECT_EQ(enc("Cache-Control:"), kFail);
    EXPECT_EQ(enc("Cache-Control:   "), kFail);
}

// ===================================================================
// F: Pragma
// ===================================================================

TEST(ApiEncodeValues, PragmaNoCache) {
    EXPECT_EQ(enc("Pragma: no-cache"), "OK 9F 80");
    EXPECT_EQ(enc("Pragma: No-Cache"), "OK 9F 80");
}

TEST(ApiEncodeValues, PragmaOtherElementsAreParameters) {
    EXPECT_EQ(enc("Pragma: foo=bar"), "OK 9F 08 " + tz("foo") + " " + tz("bar"));
    EXPECT_EQ(enc("Pragma: no-cache, foo"), "OK 9F 80 9F 05 " + tz("foo") + " 00");
    EXPECT_EQ(enc("Pragma: q=0.5"), "OK 9F 02 80 33");
    EXPECT_EQ(enc("Pragma: start=x"), kFail);
}

// ===================================================================
// G: text lists
// ===================================================================

TEST(ApiEncodeValues, IfMatchOneHeaderPerEntityTag) {
    EXPECT_EQ(enc("If-Match: \"abc\", \"def\""), "OK 98 " + tz("\"abc\"") + " 98 " + tz("\"def\""));
    EXPECT_EQ(enc("If-Match: *"), "OK 98 2A 00");
}

TEST(ApiEncodeValues, IfMatchStarNotFirstIsAnOrdinaryTag) {
    EXPECT_EQ(enc("If-Match: \"a\", *"), "OK 98 " + tz("\"a\"") + " 98 2A 00");
}

TEST(ApiEncodeValues, IfNoneMatchLeadingStarMustStandAlone) {
    EXPECT_EQ(enc("If-None-Match: *"), "OK 99 2A 00");
    EXPECT_EQ(enc("If-None-Match: *, \"a\""), kFail);
    EXPECT_EQ(enc("If-None-Match: \"a\", *"), "OK 99 " + tz("\"a\"") + " 99 2A 00");
}

TEST(ApiEncodeValues, UpgradeAndViaKeepTheirCase) {
    EXPECT_EQ(enc("Upgrade: HTTP/2.0, SHTTP/1.3"), "OK A8 " + tz("HTTP/2.0") + " A8 " + tz("SHTTP/1.3"));
    EXPECT_EQ(enc("Via: 1.0 fred, 1.1 nowhere.com (Apache/1.1)"),
              "OK AB " + tz("1.0 fred") + " AB " + tz("1.1 nowhere.com (Apache/1.1)"));
}

TEST(ApiEncodeValues, TextListNeedsAnElement) {
    EXPECT_EQ(enc("Via:"), kFail);
    EXPECT_EQ(enc("If-Match:"), kFail);
}

// ===================================================================
// H: Authorization, Proxy-Authorization
// ===================================================================

TEST(ApiEncodeValues, BasicCredentialsAreSentAsWritten) {
    EXPECT_EQ(enc("Authorization: Basic user:pass"), "OK 87 0B 80 " + tz("user") + " " + tz("pass"));
    EXPECT_EQ(enc("Authorization: BASIC Aladdin:open sesame"),
              "OK 87 15 80 " + tz("Aladdin") + " " + tz("open sesame"));
    EXPECT_EQ(enc("Proxy-Authorization: basic :pass"), "OK A1 07 80 00 " + tz("pass"));
}

TEST(ApiEncodeValues, BasicCredentialsNeedAColon) {
    EXPECT_EQ(enc("Authorization: Basic dXNlcjpwYXNz"), kFail);
}

TEST(ApiEncodeValues, BasicSchemeWithoutCredentialsFails) {
    EXPECT_EQ(enc("Authorization: Basic"), kFail);
}

TEST(ApiEncodeValues, OtherSchemeWithParameters) {
    EXPECT_EQ(enc("Authorization: Digest username=\"Mufasa\", realm=\"test\""),
              "OK 87 1F 24 " + tz("digest") + " " + tz("username") + " 22 6D 75 66 61 73 61 00 " + tz("realm") +
                  " 22 74 65 73 74 00");
}

// ===================================================================
// I: Content-Disposition
// ===================================================================

TEST(ApiEncodeValues, ContentDispositionWithFilename) {
    EXPECT_EQ(enc("Content-Disposition: attachment; filename=foo.txt", "1.4"), "OK C5 0A 81 98 " + tz("foo.txt"));
    EXPECT_EQ(enc("Content-Disposition: attachment; filename=foo.txt", "1.1"), "OK AE 0A 81 86 " + tz("foo.txt"));
    EXPECT_EQ(enc("Content-Disposition: Attachment; Filename=Foo.TXT", "1.4"), "OK C5 0A 81 98 " + tz("foo.txt"));
}

TEST(ApiEncodeValues, ContentDispositionFormData) {
    EXPECT_EQ(enc("Content-Disposition: form-data; name=\"field1\"", "1.1"),
              "OK AE 0B 80 85 " + tz("\"field1\""));
    EXPECT_EQ(enc("Content-Disposition: form-data; name=\"field1\"", "1.4"),
              "OK C5 0A 80 97 22 66 69 65 6C 64 31 00");
}

TEST(ApiEncodeValues, ContentDispositionTypedParameters) {
    EXPECT_EQ(enc("Content-Disposition: attachment; size=1234"), "OK C5 05 81 96 02 04 D2");
    // The value is lower-cased first, so the date parses.
    EXPECT_EQ(enc("Content-Disposition: attachment; creation-date=Sun, 06 Nov 1994 08:49:37 GMT"),
              "OK C5 07 81 93 04 2E BC 98 A1");
}

TEST(ApiEncodeValues, ContentDispositionValues) {
    EXPECT_EQ(enc("Content-Disposition: inline"), "OK C5 01 82");
    EXPECT_EQ(enc("Content-Disposition: x-foo"), "OK C5 06 " + tz("x-foo"));
    EXPECT_EQ(enc("Content-Disposition: attachment; start=x"), kFail);
}

// ===================================================================
// J: Content-MD5
// ===================================================================

TEST(ApiEncodeValues, ContentMd5SixteenGroups) {
    EXPECT_EQ(enc("Content-MD5: 0xd40x1d0x8c0xd90x8f0x000xb20x040xe90x800x090x980xec0xf80x420x7e"),
              "OK 8F 10 D4 1D 8C D9 8F 00 B2 04 E9 80 09 98 EC F8 42 7E");
}

TEST(ApiEncodeValues, ContentMd5OneDigitGroups) {
    EXPECT_EQ(enc("Content-MD5: 0x10x20X30xab0x40x50x60x70x80x90xa0xb0xc0xd0xe0xf0"),
              "OK 8F 10 01 02 03 AB 04 05 06 07 08 09 0A 0B 0C 0D 0E F0");
}

TEST(ApiEncodeValues, ContentMd5Failures) {
    // Fifteen groups.
    EXPECT_EQ(enc("Content-MD5: 0xd40x1d0x8c0xd90x8f0x000xb20x040xe90x800x090x980xec0xf80x42"), kFail);
    // Plain hexadecimal without the group prefixes.
    EXPECT_EQ(enc("Content-MD5: d41d8cd98f00b204e9800998ecf8427e"), kFail);
}

TEST(ApiEncodeValues, ContentMd5NeedsRoomForSeventeenOctets) {
    const std::string line = "Content-MD5: 0x10x20x30x40x50x60x70x80x90xa0xb0xc0xd0xe0xf0x10";
    EXPECT_EQ(enc(line, "1.4", 18), "OK 8F 10 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10");
    EXPECT_EQ(enc(line, "1.4", 17), kFail);
}

// ===================================================================
// K: Content-Range, L: Range
// ===================================================================

TEST(ApiEncodeValues, ContentRange) {
    EXPECT_EQ(enc("Content-Range: bytes 0-499/1234", "1.2"), "OK 90 03 00 89 52");
    EXPECT_EQ(enc("Content-Range: bytes 500-999/1234", "1.2"), "OK 90 04 83 74 89 52");
    EXPECT_EQ(enc("Content-Range: Bytes 0-1/2", "1.2"), "OK 90 02 00 02");
    EXPECT_EQ(enc("Content-Range: bytes 0-499/1234", "1.3"), "OK BE 03 00 89 52");
}

TEST(ApiEncodeValues, ContentRangeUnknownLengthFrom13) {
    EXPECT_EQ(enc("Content-Range: bytes 0-499/*", "1.3"), "OK BE 02 00 80");
}

TEST(ApiEncodeValues, ContentRangeNeedsBytesAndBlank) {
    EXPECT_EQ(enc("Content-Range: items 0-1/2"), kFail);
    EXPECT_EQ(enc("Content-Range: bytes0-1/2"), kFail);
}

TEST(ApiEncodeValues, RangeForms) {
    EXPECT_EQ(enc("Range: bytes=0-499"), "OK A3 04 80 00 83 73");
    EXPECT_EQ(enc("Range: bytes=500-"), "OK A3 03 80 83 74");
    EXPECT_EQ(enc("Range: bytes=-500"), "OK A3 03 81 83 74");
    EXPECT_EQ(enc("Range: bytes=0-0,-1"), "OK A3 03 80 00 00 A3 02 81 01");
    EXPECT_EQ(enc("Range: Bytes=0-1"), "OK A3 03 80 00 01");
}

TEST(ApiEncodeValues, RangeFailures) {
    EXPECT_EQ(enc("Range: items=0-1"), kFail);
    EXPECT_EQ(enc("Range: bytes="), kFail);
}

// ===================================================================
// M: Retry-After, N: Vary, O: Warning
// ===================================================================

TEST(ApiEncodeValues, RetryAfterSeconds) {
    EXPECT_EQ(enc("Retry-After: 120"), "OK A5 02 81 F8");
    EXPECT_EQ(enc("Retry-After: 3600"), "OK A5 04 81 02 0E 10");
}

TEST(ApiEncodeValues, RetryAfterDate) {
    EXPECT_EQ(enc("Retry-After: Fri, 31 Dec 1999 23:59:59 GMT"), "OK A5 06 80 04 38 6D 43 7F");
    EXPECT_EQ(enc("Retry-After: sun, 06 nov 1994 08:49:37 gmt"), "OK A5 06 80 04 2E BC 98 A1");
}

TEST(ApiEncodeValues, RetryAfterScratchIsSizedOnTheValueText) {
    // The value is built in a scratch of the value text's length plus one,
    // and a Short-integer never fills a buffer to its last octet: without
    // the blank after the colon a one-digit value has no room.
    EXPECT_EQ(enc("Retry-After: 5"), "OK A5 02 81 85");
    EXPECT_EQ(enc("Retry-After:5"), kFail);
    EXPECT_EQ(enc("Retry-After:"), kFail);
}

TEST(ApiEncodeValues, RetryAfterBadDateFails) {
    EXPECT_EQ(enc("Retry-After: fri, 31 foo 1999 23:59:59 gmt"), kFail);
}

TEST(ApiEncodeValues, VaryStarAndNames) {
    EXPECT_EQ(enc("Vary: *"), "OK AA 2A 00");
    EXPECT_EQ(enc("Vary: Accept-Encoding, User-Agent"), "OK AA 82 AA A9");
    EXPECT_EQ(enc("Vary: cache-control"), "OK AA 88");
    EXPECT_EQ(enc("Vary: x-foo"), "OK AA " + tz("x-foo"));
    EXPECT_EQ(enc("Vary:"), kFail);
}

TEST(ApiEncodeValues, WarningCodeOnly) {
    EXPECT_EQ(enc("Warning: 10"), "OK AC 8A");
    EXPECT_EQ(enc("Warning: 10, 20"), "OK AC 8A AC 94");
}

TEST(ApiEncodeValues, WarningWithAgentAndText) {
    EXPECT_EQ(enc("Warning: 10 agent \"text\""), "OK AC 0E 8A " + tz("agent") + " " + tz("\"text\""));
    EXPECT_EQ(enc("Warning: 99 proxy.example.com \"Miscellaneous warning\""),
              "OK AC 1F 2B E3 " + tz("proxy.example.com") + " " + tz("\"Miscellaneous warning\""));
}

TEST(ApiEncodeValues, WarningCodeMustBeTwoCharacters) {
    EXPECT_EQ(enc("Warning: 110"), kFail);
    EXPECT_EQ(enc("Warning: 1"), kFail);
}

} // namespace

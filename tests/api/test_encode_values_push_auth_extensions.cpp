// The well-known header values from X-Wap-Application-Id to X-Wap-Security
// (push applications, Bearer-Indication, Push-Flag, challenges, Expect, TE,
// Trailer, Content-ID, Encoding-Version, X-Wap-Security), driven through
// wsp_enc_hdr only.
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
// P: X-Wap-Application-Id, Q: Accept-Application, R: Bearer/Push-Flag
// ===================================================================

TEST(ApiEncodeValues, ApplicationIdKnownCodes) {
    EXPECT_EQ(enc("X-Wap-Application-Id: x-wap-application:mms.ua"), "OK AF 84");
    EXPECT_EQ(enc("X-Wap-Application-Id: X-WAP-Application:MMS.UA"), "OK AF 84");
    EXPECT_EQ(enc("X-Wap-Application-Id: x-wap-application:push.sia"), "OK AF 81");
    EXPECT_EQ(enc("X-Wap-Application-Id: x-vantrell:location.ua"), "OK AF 02 80 05");
    EXPECT_EQ(enc("X-Wap-Application-Id: x-microsoft:drm.license"), "OK AF 02 90 35");
}

TEST(ApiEncodeValues, ApplicationIdAnyApplication) {
    EXPECT_EQ(enc("X-Wap-Application-Id: x-wap-application:*"), "OK AF 80");
}

TEST(ApiEncodeValues, ApplicationIdUnknownIsTokenText) {
    EXPECT_EQ(enc("X-Wap-Application-Id: x-foo.ua"), "OK AF " + tz("x-foo.ua"));
    // A colon is a separator: not a Token-text.
    EXPECT_EQ(enc("X-Wap-Application-Id: x-foo:bar"), kFail);
}

TEST(ApiEncodeValues, ApplicationIdEmptyWritesNothing) {
    EXPECT_EQ(enc("X-Wap-Application-Id:"), "OK");
    EXPECT_EQ(enc("age: 1\nX-Wap-Application-Id:  \nage: 2"), "OK 85 81 85 82");
}

TEST(ApiEncodeValues, ApplicationIdTakesOneElement) {
    EXPECT_EQ(enc("X-Wap-Application-Id: x-wap-application:mms.ua, x-wap-application:wml.ua"), kFail);
}

TEST(ApiEncodeValues, AcceptApplication) {
    EXPECT_EQ(enc("Accept-Application: x-wap-application:wml.ua, *"), "OK B2 82 B2 80");
    EXPECT_EQ(enc("Accept-Application: *, x-wap-application:wml.ua"), "OK B2 80");
    EXPECT_EQ(enc("Accept-Application: x-wap-application:syncml.dm"), "OK B2 87");
    EXPECT_EQ(enc("Accept-Application: x-oma-application:ulp.ua"), "OK B2 90");
    EXPECT_EQ(enc("Accept-Application: x-oma-vantrell:screen3.ua"), "OK B2 02 90 1E");
    EXPECT_EQ(enc("Accept-Application: foo.ua"), "OK B2 " + tz("foo.ua"));
}

TEST(ApiEncodeValues, BearerIndicationAndPushFlag) {
    EXPECT_EQ(enc("Bearer-Indication: 3"), "OK B3 83");
    EXPECT_EQ(enc("Bearer-Indication: 300"), "OK B3 02 01 2C");
    EXPECT_EQ(enc("Push-Flag: 7"), "OK B4 87");
    EXPECT_EQ(enc("Push-Flag: 0"), "OK B4 80");
}

TEST(ApiEncodeValues, BearerIndicationAndPushFlagFailures) {
    EXPECT_EQ(enc("Push-Flag: 8"), kFail);
    EXPECT_EQ(enc("Push-Flag: 1, 2"), kFail);
    EXPECT_EQ(enc("Bearer-Indication: 1, 2"), kFail);
}

// ===================================================================
// S: Proxy-Authenticate, WWW-Authenticate
// ===================================================================

TEST(ApiEncodeValues, ProxyAuthenticateKeepsTheSchemeAsToken) {
    EXPECT_EQ(enc("Proxy-Authenticate: Basic realm=\"WallyWorld\""),
              "OK A0 11 " + tz("Basic") + " " + tz("WallyWorld"));
    EXPECT_EQ(enc("Proxy-Authenticate: basic REALM=\"x\""), "OK A0 08 " + tz("basic") + " " + tz("x"));
}

TEST(ApiEncodeValues, ProxyAuthenticateFurtherParameters) {
    EXPECT_EQ(enc("Proxy-Authenticate: Digest realm=\"testrealm@host.com\", qop=\"auth\""),
              "OK A0 1F 24 " + tz("Digest") + " " + tz("testrealm@host.com") + " " + tz("qop") +
                  " 22 61 75 74 68 00");
}

TEST(ApiEncodeValues, ProxyAuthenticateNeedsAQuotedRealm) {
    EXPECT_EQ(enc("Proxy-Authenticate: Basic realm=WallyWorld"), kFail);
    EXPECT_EQ(enc("Proxy-Authenticate: Basic"), kFail);
    EXPECT_EQ(enc("Proxy-Authenticate: Basic foo=\"x\""), kFail);
}

TEST(ApiEncodeValues, WwwAuthenticateBasicShortForm) {
    EXPECT_EQ(enc("WWW-Authenticate: basic realm=\"x\""), "OK AD 03 80 78 00");
    // Only the lower-case scheme takes the short form.
    EXPECT_EQ(enc("WWW-Authenticate: Basic realm=\"x\""), "OK AD 08 " + tz("Basic") + " " + tz("x"));
}

TEST(ApiEncodeValues, WwwAuthenticateSeveralChallenges) {
    EXPECT_EQ(enc("WWW-Authenticate: basic realm=\"a\", digest realm=\"b\""),
              "OK AD 03 80 61 00 AD 09 " + tz("digest") + " " + tz("b"));
}

TEST(ApiEncodeValues, WwwAuthenticateBasicWithParametersKeepsToken) {
    EXPECT_EQ(enc("WWW-Authenticate: basic realm=\"a\", charset=\"UTF-8\""),
              "OK AD 17 " + tz("basic") + " " + tz("a") + " " + tz("charset") + " 22 75 74 66 2D 38 00");
}

TEST(ApiEncodeValues, WwwAuthenticateLaterRealmWithoutCommaFails) {
    EXPECT_EQ(enc("WWW-Authenticate: basic realm=\"a\" digest realm=\"b\""), kFail);
}

TEST(ApiEncodeValues, WwwAuthenticateEmptyFails) {
    EXPECT_EQ(enc("WWW-Authenticate:"), kFail);
}

// ===================================================================
// T: Expect, U: TE, V: Trailer
// ===================================================================

TEST(ApiEncodeValues, Expect100Continue) {
    EXPECT_EQ(enc("Expect: 100-continue"), "OK B8 80");
    EXPECT_EQ(enc("Expect: 100-Continue"), "OK B8 80");
}

TEST(ApiEncodeValues, ExpectExtensionsKeepTheirCase) {
    EXPECT_EQ(enc("Expect: foo=bar"), "OK B8 08 " + tz("foo") + " " + tz("bar"));
    EXPECT_EQ(enc("Expect: Foo=\"Bar\";p;q=\"v\""),
              "OK B8 11 " + tz("Foo") + " 22 42 61 72 00 " + tz("p") + " 00 " + tz("q") + " 22 76 00");
}

TEST(ApiEncodeValues, TeCodings) {
    EXPECT_EQ(enc("TE: trailers"), "OK B9 81");
    EXPECT_EQ(enc("TE: chunked"), "OK B9 01 82");
    EXPECT_EQ(enc("TE: identity"), "OK B9 01 83");
    EXPECT_EQ(enc("TE: deflate, trailers"), "OK B9 01 86 B9 81");
    EXPECT_EQ(enc("TE: foo"), "OK B9 04 " + tz("foo"));
}

TEST(ApiEncodeValues, TeQParameter) {
    EXPECT_EQ(enc("TE: gzip;q=0.5"), "OK B9 03 84 80 33");
    EXPECT_EQ(enc("TE: Chunked;Q=1"), "OK B9 03 82 80 00");
    EXPECT_EQ(enc("TE: gzip;x=1"), kFail);
}

TEST(ApiEncodeValues, TeMalformedQFails) {
    EXPECT_EQ(enc("TE: gzip;q=2"), kFail);
}

TEST(ApiEncodeValues, TeEmptyValueIsTheBareCode) {
    EXPECT_EQ(enc("TE:"), "OK B9");
    EXPECT_EQ(enc("TE:   "), "OK B9");
}

TEST(ApiEncodeValues, TeEmptyCodingIsTheFirstTableRow) {
    EXPECT_EQ(enc("TE: gzip, ;"), "OK B9 01 84 B9 01 80");
}

TEST(ApiEncodeValues, TrailerNames) {
    EXPECT_EQ(enc("Trailer: content-md5, x-foo"), "OK BA 8F BA " + tz("x-foo"));
    EXPECT_EQ(enc("Trailer: Expires"), "OK BA 94");
    EXPECT_EQ(enc("Trailer: cache-control"), "OK BA 88");
}

TEST(ApiEncodeValues, TrailerRefusesFramingHeaders) {
    EXPECT_EQ(enc("Trailer: transfer-encoding"), kFail);
    EXPECT_EQ(enc("Trailer: Content-Length"), kFail);
    EXPECT_EQ(enc("Trailer: x-foo, trailer"), kFail);
}

// ===================================================================
// W: Content-ID, Y: Encoding-Version, Z: X-Wap-Security
// ===================================================================

TEST(ApiEncodeValues, ContentIdIsLowerCasedQuotedString) {
    EXPECT_EQ(enc("Content-ID: <Abc.1>"), "OK C0 22 3C 61 62 63 2E 31 3E 00");
}

TEST(ApiEncodeValues, ContentIdNeedsAngleBrackets) {
    EXPECT_EQ(enc("Content-ID: abc"), kFail);
    EXPECT_EQ(enc("Content-ID: <abc"), kFail);
    EXPECT_EQ(enc("Content-ID: abc>"), kFail);
}

TEST(ApiEncodeValues, EncodingVersionShortForms) {
    EXPECT_EQ(enc("Encoding-Version: 1.0"), "OK C3 9F");
    EXPECT_EQ(enc("Encoding-Version: 1.3"), "OK C3 93");
    EXPECT_EQ(enc("Encoding-Version: 1"), "OK C3 9F");
    EXPECT_EQ(enc("Encoding-Version: 2.0"), "OK C3 AF");
    EXPECT_EQ(enc("Encoding-Version: 7.9"), "OK C3 F9");
}

TEST(ApiEncodeValues, EncodingVersionTextForms) {
    EXPECT_EQ(enc("Encoding-Version: 1.15"), "OK C3 " + tz("1.15"));
    EXPECT_EQ(enc("Encoding-Version: 1.14"), "OK C3 " + tz("1.14"));
    EXPECT_EQ(enc("Encoding-Version: 8.0"), "OK C3 " + tz("8.0"));
}

TEST(ApiEncodeValues, EncodingVersionEmptyIsAnEmptyText) {
    // No numeric form: the (empty) value goes out as a Text-string.
    EXPECT_EQ(enc("Encoding-Version:"), "OK C3 00");
    EXPECT_EQ(enc("Encoding-Version:   "), "OK C3 00");
}

TEST(ApiEncodeValues, EncodingVersionOctetMayFillTheOutput) {
    // The numeric Version-value octet is written without a room test.
    EXPECT_EQ(enc("Encoding-Version: 1.3", "1.4", 2), "OK C3 93");
    EXPECT_EQ(enc("Encoding-Version: 1.3", "1.4", 1), kFail);
}

TEST(ApiEncodeValues, EncodingVersionWithCodePage) {
    EXPECT_EQ(enc("Encoding-Version: 16 1.2"), "OK C3 02 90 92");
    EXPECT_EQ(enc("Encoding-Version: 16 1.15"), "OK C3 06 90 " + tz("1.15"));
}

TEST(ApiEncodeValues, XWapSecurity) {
    EXPECT_EQ(enc("X-Wap-Security: close-subordinate"), "OK C6 80");
    EXPECT_EQ(enc("X-Wap-Security: Close-Subordinate; x"), "OK C6 80");
    EXPECT_EQ(enc("X-Wap-Security: open"), kFail);
}

} // namespace

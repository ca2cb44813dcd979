// The structured header values (a Value-length around several fields),
// each decoded through the exported wsp_dec_hdr under encoding version 4.
// Dropped() puts Content-Length 5 behind a refused value and expects that
// line alone.
#include <gtest/gtest.h>

#include <string>

#include "api_support.h"

using namespace wsp_test;
using namespace api_decode;

namespace {
const Bytes kSun1994 = bytes({0x04, 0x2E, 0xBC, 0x98, 0xA1}); // 784111777
const std::string kSun1994Text = "Sun, 06 Nov 1994 08:49:37 GMT";
} // namespace

// ---------------------------------------------------------------------------
// Cache-Control

TEST(ApiCacheControl, BareDirectives) {
    EXPECT_TRUE(Lines(bytes({0x88, 0x80}), "cache-control:no-cache\n"));
    EXPECT_TRUE(Lines(bytes({0x88, 0x81, 0x88, 0x86, 0x88, 0x89}), "cache-control:no-store,public,must-revalidate\n"));
    EXPECT_TRUE(Lines(bytes({0x88, 0x83}), "cache-control:max-stale\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x88}), cstr("no-transform")}), "cache-control:no-transform\n"));
}

TEST(ApiCacheControl, BareDirectivesThatNeedAValueAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0x88, 0x82}))); // max-age
    EXPECT_TRUE(Dropped(bytes({0x88, 0x84}))); // min-fresh
    EXPECT_TRUE(Dropped(bytes({0x88, 0x8B}))); // s-maxage
    EXPECT_TRUE(Dropped(bytes({0x88, 0x8C})));
}

TEST(ApiCacheControl, AllThreeCodesShareTheLine) {
    EXPECT_TRUE(Lines(bytes({0x88, 0x80, 0xBD, 0x81, 0xC7, 0x87}), "cache-control:no-cache,no-store,private\n"));
}

TEST(ApiCacheControl, WellKnownDirectiveWithSeconds) {
    EXPECT_TRUE(Lines(bytes({0x88, 0x02, 0x82, 0x9E}), "cache-control:max-age=30\n"));
    EXPECT_TRUE(Lines(bytes({0x88, 0x03, 0x82, 0x01, 0x3C}), "cache-control:max-age=60\n"));
    EXPECT_TRUE(Lines(bytes({0x88, 0x04, 0x84, 0x02, 0x0E, 0x10}), "cache-control:min-fresh=3600\n"));
    EXPECT_TRUE(Lines(bytes({0x88, 0x02, 0x8B, 0x9E}), "cache-control:s-maxage=30\n"));
    EXPECT_TRUE(Lines(bytes({0x88, 0x1F, 0x02, 0x82, 0x9E}), "cache-control:max-age=30\n"));
}

TEST(ApiCacheControl, NoCacheAndPrivateWithFieldNames) {
    EXPECT_TRUE(Lines(bytes({0x88, 0x03, 0x80, 0x8D, 0x93}), "cache-control:no-cache= \"content-length,etag\"\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x88, 0x05, 0x87}), cstr("x-a")}), "cache-control:private= \"x-a\"\n"));
}

TEST(ApiCacheControl, FieldNameListFailuresAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0x88, 0x01, 0x80})));             // empty list
    EXPECT_TRUE(Dropped(bytes({0x88, 0x02, 0x80, 0x01})));       // a length where a name must be
    EXPECT_TRUE(Dropped(bytes({0x88, 0x03, 0x87, 0x22, 0x00}))); // quoted
}

TEST(ApiCacheControl, ExtensionDirectiveValues) {
    EXPECT_TRUE(Lines(cat({bytes({0x88, 0x05}), cstr("ext"), bytes({0x85})}), "cache-control:ext=5\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x88, 0x07}), cstr("ext"), cstr("\"v")}), "cache-control:ext=\"v\"\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x88, 0x08}), cstr("ext"), cstr("tok")}), "cache-control:ext=tok\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x88, 0x07}), cstr("ext"), bytes({0x02, 0x01, 0x00})}), "cache-control:ext=256\n"));
}

TEST(ApiCacheControl, ExtensionDirectiveLongIntegerIsSigned) {
    EXPECT_TRUE(Lines(cat({bytes({0x88, 0x09}), cstr("ext"), bytes({0x04, 0xFF, 0xFF, 0xFF, 0xFF})}),
                      "cache-control:ext=-1\n"));
}

TEST(ApiCacheControl, LengthFormRefusals) {
    EXPECT_TRUE(Dropped(bytes({0x88, 0x01, 0x82})));                    // value missing
    EXPECT_TRUE(Dropped(cat({bytes({0x88, 0x04, 0x82}), cstr("30")})));     // not a number
    EXPECT_TRUE(Dropped(bytes({0x88, 0x03, 0x82, 0x9E, 0x9E})));        // octets left over
    EXPECT_TRUE(Dropped(bytes({0x88, 0x02, 0x8C, 0x9E})));              // directive 12
    EXPECT_TRUE(Dropped(cat({bytes({0x88, 0x06}), cstr("ext"), bytes({0x1F, 0x00})})));
    EXPECT_TRUE(Dropped(bytes({0x88, 0x02, 0x22, 0x00})));
}

TEST(ApiCacheControl, LengthZeroWritesNothing) {
    EXPECT_TRUE(Lines(cat({bytes({0x88, 0x00}), kTail}), kTailLine));
}

TEST(ApiCacheControl, OverlongBareTokenStopsTheBlock) {
    Decoded d = decode(cat({bytes({0x88}), cstr(std::string(198, 'd').c_str()), kTail}));
    EXPECT_EQ(d.status, WSP_ERR_TRUNCATED);
    EXPECT_TRUE(d.released);
}

// ---------------------------------------------------------------------------
// Authorization, Proxy-Authorization

TEST(ApiCredentials, Basic) {
    EXPECT_TRUE(Lines(cat({bytes({0x87, 0x0B, 0x80}), cstr("user"), cstr("pass")}), "authorization:basic user : pass\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xA1, 0x0B, 0x80}), cstr("user"), cstr("pass")}),
                      "proxy-authorization:basic user : pass\n"));
}

TEST(ApiCredentials, SchemeTokenWithParameters) {
    EXPECT_TRUE(Lines(cat({bytes({0x87, 0x07}), cstr("digest")}), "authorization:digest\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x87, 0x17}), cstr("digest"), cstr("realm"), cstr("x"), cstr("nonce"), cstr("y")}),
                      "authorization:digest realm=x,nonce=y\n"));
}

TEST(ApiCredentials, RepeatedHeadersGetOneLineEach) {
    Bytes one = cat({bytes({0x87, 0x07}), cstr("digest")});
    EXPECT_TRUE(Lines(cat({one, one}), "authorization:digest\nauthorization:digest\n"));
}

TEST(ApiCredentials, Refusals) {
    EXPECT_TRUE(Dropped(cat({bytes({0x87, 0x0B, 0x81}), cstr("user"), cstr("pass")}))); // scheme 1
    EXPECT_TRUE(Dropped(cat({bytes({0x87, 0x06, 0x80}), cstr("user")})));           // no password
    EXPECT_TRUE(Dropped(cat({bytes({0x87, 0x07, 0x80}), cstr("user"), bytes({0x85})})));
    EXPECT_TRUE(Dropped(cat({bytes({0x87, 0x0C, 0x80}), cstr("user"), cstr("pass"), bytes({0x00})})));
    EXPECT_TRUE(Dropped(bytes({0x87, 0x03, 0x80, 0x00, 0x00}))); // an empty text is not class 3 or 4
    EXPECT_TRUE(Dropped(cat({bytes({0x87}), cstr("basic")})));
    EXPECT_TRUE(Dropped(bytes({0x87, 0x02, 0x22, 0x00})));
}

// ---------------------------------------------------------------------------
// Content-Range, Range

TEST(ApiContentRange, FirstPositionAndEntityLength) {
    EXPECT_TRUE(Lines(bytes({0x90, 0x03, 0x00, 0x81, 0x10}), "content-range:bytes 0- /144\n"));
    EXPECT_TRUE(Lines(bytes({0x90, 0x04, 0x83, 0x74, 0x87, 0x68}), "content-range:bytes 500- /1000\n"));
    EXPECT_TRUE(Lines(bytes({0xBE, 0x03, 0x00, 0x81, 0x10}), "content-range:bytes 0- /144\n"));
    EXPECT_TRUE(Lines(bytes({0x90, 0x02, 0x00, 0x01, 0x90, 0x02, 0x02, 0x03}),
                      "content-range:bytes 0- /1\ncontent-range:bytes 2- /3\n"));
}

TEST(ApiContentRange, UnknownEntityLengthOnlyUnderTheNewCode) {
    EXPECT_TRUE(Lines(bytes({0xBE, 0x02, 0x00, 0x80}), "content-range:bytes 0- /*\n"));
    EXPECT_TRUE(Dropped(bytes({0x90, 0x02, 0x00, 0x80})));
}

TEST(ApiContentRange, Refusals) {
    EXPECT_TRUE(Dropped(bytes({0x90, 0x01, 0x00})));             // first position fills the length
    EXPECT_TRUE(Dropped(bytes({0x90, 0x04, 0x00, 0x81, 0x10, 0x00})));
    EXPECT_TRUE(Dropped(bytes({0x90, 0x85})));
    EXPECT_TRUE(Dropped(bytes({0x90, 0x1F, 0x03, 0x00, 0x81, 0x10})));
}

TEST(ApiRange, ByteAndSuffixRanges) {
    EXPECT_TRUE(Lines(bytes({0xA3, 0x02, 0x81, 0x05}), "range:-5\n"));
    EXPECT_TRUE(Lines(bytes({0xA3, 0x04, 0x80, 0x00, 0x83, 0x73}), "range:0-499\n"));
    EXPECT_TRUE(Lines(bytes({0xA3, 0x03, 0x80, 0x83, 0x74}), "range:500-\n"));
    EXPECT_TRUE(Lines(bytes({0xA3, 0x04, 0x80, 0x00, 0x83, 0x73, 0xA3, 0x03, 0x81, 0x81, 0x48}),
                      "range:0-499,-200\n"));
}

TEST(ApiRange, Refusals) {
    EXPECT_TRUE(Dropped(bytes({0xA3, 0x02, 0x82, 0x05})));        // form 2
    EXPECT_TRUE(Dropped(bytes({0xA3, 0x03, 0x81, 0x05, 0x00})));  // length not used up
    EXPECT_TRUE(Dropped(bytes({0xA3, 0x02, 0x01, 0x05})));        // form not a Short-integer
    EXPECT_TRUE(Dropped(bytes({0xA3, 0x81})));
}

// ---------------------------------------------------------------------------
// Content-Disposition

TEST(ApiDisposition, WellKnownAndTokenDispositions) {
    EXPECT_TRUE(Lines(bytes({0xC5, 0x01, 0x81}), "content-disposition:attachment\n"));
    EXPECT_TRUE(Lines(bytes({0xAE, 0x01, 0x80}), "content-disposition:form-data\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC5, 0x08}), cstr("private")}), "content-disposition:private\n"));
}

TEST(ApiDisposition, Parameters) {
    EXPECT_TRUE(Lines(cat({bytes({0xC5, 0x08, 0x81, 0x98}), cstr("a.jpg")}), "content-disposition:attachment;filename=a.jpg\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xAE, 0x0D}), cstr("form-data"), bytes({0x85}), cstr("x")}),
                      "content-disposition:form-data;name=x\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC5, 0x0A, 0x82, 0x86}), cstr("b.txt"), bytes({0x96, 0x81})}),
                      "content-disposition:inline;filename=b.txt;size=1\n"));
}

TEST(ApiDisposition, RepeatedHeadersGetOneLineEach) {
    EXPECT_TRUE(Lines(bytes({0xC5, 0x01, 0x81, 0xC5, 0x01, 0x82}),
                      "content-disposition:attachment\ncontent-disposition:inline\n"));
}

TEST(ApiDisposition, Refusals) {
    EXPECT_TRUE(Dropped(bytes({0xC5, 0x01, 0x83})));
    EXPECT_TRUE(Dropped(bytes({0xC5, 0x03, 0x22, 'a', 0x00})));
    EXPECT_TRUE(Dropped(bytes({0xC5, 0x03, 0x81, 0x84, 0x80})));
    EXPECT_TRUE(Dropped(bytes({0xC5, 0x81})));
}

// ---------------------------------------------------------------------------
// Encoding-Version

TEST(ApiEncodingVersion, ShortIntegerAndText) {
    EXPECT_TRUE(Lines(bytes({0xC3, 0x93}), "encoding-version:1.3\n"));
    EXPECT_TRUE(Lines(bytes({0xC3, 0x9F}), "encoding-version:1\n"));
    EXPECT_TRUE(Lines(bytes({0xC3, 0xAC}), "encoding-version:2.12\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC3}), cstr("1.5")}), "encoding-version:1.5\n"));
}

TEST(ApiEncodingVersion, CodePageFormStartsWithASpace) {
    EXPECT_TRUE(Lines(bytes({0xC3, 0x02, 0x81, 0x93}), "encoding-version: 1.3\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC3, 0x00}), kTail}), kTailLine));
    EXPECT_TRUE(Dropped(cat({bytes({0xC3, 0x05, 0x81}), cstr("1.3")})));
    EXPECT_TRUE(Dropped(bytes({0xC3, 0x02, 0x01, 0x93})));
}

// ---------------------------------------------------------------------------
// Warning, Profile-Warning

TEST(ApiWarning, CodeAloneAndFullForm) {
    EXPECT_TRUE(Lines(bytes({0xAC, 0x8A}), "warning:10\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xAC, 0x0C, 0x8A}), cstr("agent"), cstr("text")}), "warning:10 agent text\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xAC, 0x8A, 0xAC, 0x0B, 0x8E}), cstr("gw"), cstr("Stale!")}),
                      "warning:10,14 gw Stale!\n"));
}

TEST(ApiWarning, Refusals) {
    EXPECT_TRUE(Dropped(cat({bytes({0xAC, 0x0C, 0x0A}), cstr("agent"), cstr("text")})));
    EXPECT_TRUE(Dropped(cat({bytes({0xAC, 0x07, 0x8A}), cstr("agent")})));
    EXPECT_TRUE(Dropped(cat({bytes({0xAC, 0x0D, 0x8A}), cstr("agent"), cstr("text"), bytes({0x00})})));
    EXPECT_TRUE(Dropped(cat({bytes({0xAC}), cstr("10")})));
    EXPECT_TRUE(Dropped(bytes({0xAC, 0x1F, 0x00})));                     // a uintvar length of 0
    EXPECT_TRUE(Lines(cat({bytes({0xAC, 0x00}), kTail}), kTailLine));      // a short length of 0
}

TEST(ApiProfileWarning, CodeAlone) {
    EXPECT_TRUE(Lines(bytes({0xB7, 0x90}), "profile-warning:100\n"));
    EXPECT_TRUE(Lines(bytes({0xC4, 0x91}), "profile-warning:101\n"));
    EXPECT_TRUE(Lines(bytes({0xC4, 0xA3}), "profile-warning:203\n"));
    EXPECT_TRUE(Lines(bytes({0xC4, 0xA0, 0xC4, 0xA1}), "profile-warning:200\nprofile-warning:201\n"));
    EXPECT_TRUE(Dropped(bytes({0xC4, 0x81})));
    EXPECT_TRUE(Dropped(bytes({0xC4, 0xA4})));
}

TEST(ApiProfileWarning, TargetAndDate) {
    EXPECT_TRUE(Lines(cat({bytes({0xC4, 0x0D, 0x90}), cstr("target"), kSun1994}),
                      "profile-warning:100  target " + kSun1994Text + "\n"));
}

TEST(ApiProfileWarning, Refusals) {
    EXPECT_TRUE(Dropped(cat({bytes({0xC4, 0x08, 0x90}), cstr("target")})));
    EXPECT_TRUE(Dropped(cat({bytes({0xC4, 0x0D, 0x81}), cstr("target"), kSun1994})));
    EXPECT_TRUE(Dropped(cat({bytes({0xC4, 0x0A, 0x90}), cstr("target"), bytes({0x85, 0x00})})));
    EXPECT_TRUE(Dropped(bytes({0xC4, 0x1F, 0x00})));
    EXPECT_TRUE(Lines(cat({bytes({0xC4, 0x00}), kTail}), kTailLine));
}

// ---------------------------------------------------------------------------
// Set-Cookie

TEST(ApiSetCookie, VersionNameValue) {
    EXPECT_TRUE(Lines(cat({bytes({0xC1, 0x09, 0x90}), cstr("sid"), cstr("abc")}), "set-cookie:sid=abc;Version=1.0\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC1, 0x09, 0x9F}), cstr("sid"), cstr("abc")}), "set-cookie:sid=abc;Version=1\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC1, 0x0A}), cstr("1"), cstr("sid"), cstr("abc")}), "set-cookie:sid=abc;1\n"));
}

TEST(ApiSetCookie, TwoDigitMinorKeepsItsLastDigit) {
    EXPECT_TRUE(Lines(cat({bytes({0xC1, 0x09, 0x9C}), cstr("sid"), cstr("abc")}), "set-cookie:sid=abc;Version=1.2\n"));
}

TEST(ApiSetCookie, ParametersAndMerging) {
    EXPECT_TRUE(Lines(cat({bytes({0xC1, 0x0C, 0x90}), cstr("sid"), cstr("abc"), bytes({0x8F}), cstr("/")}),
                      "set-cookie:sid=abc;Version=1.0;path=/\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC1, 0x0D, 0x90}), cstr("sid"), cstr("abc"), bytes({0x9C}), cstr(".a")}),
                      "set-cookie:sid=abc;Version=1.0;domain=.a\n"));
    // the newer path code takes a Token-text only, and "/" is no token
    EXPECT_TRUE(Dropped(cat({bytes({0xC1, 0x0C, 0x90}), cstr("sid"), cstr("abc"), bytes({0x9D}), cstr("/")})));
    EXPECT_TRUE(Lines(cat({bytes({0xC1, 0x05, 0x9F}), cstr("a"), cstr("1"), bytes({0xC1, 0x05, 0x9F}), cstr("b"), cstr("2")}),
                      "set-cookie:a=1;Version=1,b=2;Version=1\n"));
}

TEST(ApiSetCookie, Refusals) {
    EXPECT_TRUE(Dropped(cat({bytes({0xC1, 0x0A, 0x01, 0x10}), cstr("sid"), cstr("abc")})));
    EXPECT_TRUE(Dropped(cat({bytes({0xC1, 0x06, 0x90}), cstr("sid"), bytes({0x85})})));
    EXPECT_TRUE(Dropped(cat({bytes({0xC1}), cstr("sid=abc")})));
}

// ---------------------------------------------------------------------------
// WWW-Authenticate, Proxy-Authenticate

TEST(ApiChallenge, BasicRealm) {
    EXPECT_TRUE(Lines(cat({bytes({0xAD, 0x05, 0x80}), cstr("wap")}), "www-authenticate:basic realm = \"wap\"\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xA0, 0x05, 0x80}), cstr("wap")}), "proxy-authenticate:basic realm = \"wap\"\n"));
}

TEST(ApiChallenge, SchemeTokenWithParameters) {
    EXPECT_TRUE(Lines(cat({bytes({0xAD, 0x0B}), cstr("digest"), cstr("wap")}), "www-authenticate:digest realm = \"wap\"\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xAD, 0x13}), cstr("digest"), cstr("wap"), cstr("nonce"), cstr("x")}),
                      "www-authenticate:digest realm = \"wap\",nonce=x\n"));
}

TEST(ApiChallenge, RepeatedHeadersGetOneLineEach) {
    Bytes one = cat({bytes({0xAD, 0x05, 0x80}), cstr("wap")});
    EXPECT_TRUE(Lines(cat({one, one}), "www-authenticate:basic realm = \"wap\"\nwww-authenticate:basic realm = \"wap\"\n"));
}

TEST(ApiChallenge, Refusals) {
    EXPECT_TRUE(Dropped(cat({bytes({0xAD, 0x05, 0x81}), cstr("wap")})));
    EXPECT_TRUE(Dropped(bytes({0xAD, 0x02, 0x80, 0x85})));
    EXPECT_TRUE(Dropped(bytes({0xAD, 0x03, 0x22, 'a', 0x00})));
    EXPECT_TRUE(Dropped(cat({bytes({0xAD}), cstr("basic")})));
}

// The Accept encoder and the common encoder of Accept-Charset,
// Accept-Language and Accept-Encoding, driven through wsp_enc_hdr.
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
// Accept (header code 0x00)
// ===================================================================

TEST(ApiEncodeAccept, BrowserListWithQValues) {
    EXPECT_EQ(enc("Accept: text/html, application/xhtml+xml;q=0.9, */*;q=0.8"),
              "OK 80 82 80 03 BB 80 5B 80 03 80 80 51");
}

TEST(ApiEncodeAccept, MediaBeyondTheVersionIsText) {
    EXPECT_EQ(enc("Accept: application/xhtml+xml;q=0.9", "1.1"), "OK 80 18 " + tz("application/xhtml+xml") + " 80 5B");
    EXPECT_EQ(enc("Accept: application/vnd.wap.sic", "1.1"), "OK 80 " + tz("application/vnd.wap.sic"));
    EXPECT_EQ(enc("Accept: application/vnd.wap.sic", "1.2"), "OK 80 AE");
}

TEST(ApiEncodeAccept, ValueIsLowerCasedBeforeTheExactSearch) {
    EXPECT_EQ(enc("Accept: TEXT/HTML, Image/GIF"), "OK 80 82 80 9D");
}

TEST(ApiEncodeAccept, UnknownMediaWithoutParametersIsPlainText) {
    EXPECT_EQ(enc("Accept: x-foo/bar"), "OK 80 " + tz("x-foo/bar"));
    EXPECT_EQ(enc("Accept: \xE9/x"), "OK 80 E9 2F 78 00");
}

TEST(ApiEncodeAccept, UnknownMediaWithParametersIsTextString) {
    EXPECT_EQ(enc("Accept: x/y;q=0.5"), "OK 80 06 78 2F 79 00 80 33");
    EXPECT_EQ(enc("Accept: \xE9/x;q=0.5"), "OK 80 07 7F E9 2F 78 00 80 33");
}

TEST(ApiEncodeAccept, CodeAbove127IsCopiedFromTheScratchStart) {
    EXPECT_EQ(enc("Accept: application/vnd.uplanet.signal"), "OK 80 03 02 02 02");
    EXPECT_EQ(enc("Accept: application/vnd.omaloc-supl-init"), "OK 80 03 02 03 12");
    EXPECT_EQ(enc("Accept: application/vnd.uplanet.signal;q=0.5"), "OK 80 05 02 02 02 80 33");
    EXPECT_EQ(enc("Accept: application/vnd.uplanet.signal", "1.3"), "OK 80 " + tz("application/vnd.uplanet.signal"));
}

TEST(ApiEncodeAccept, EmptyValueWritesNothing) {
    EXPECT_EQ(enc("Accept:"), "OK");
    EXPECT_EQ(enc("Accept:   "), "OK");
}

TEST(ApiEncodeAccept, TypeParameterWithoutMediaRestrictionIsCode3) {
    EXPECT_EQ(enc("Accept: text/html;type=5"), "OK 80 03 82 83 85");
}

TEST(ApiEncodeAccept, StartParameterIsRefused) {
    EXPECT_EQ(enc("Accept: multipart/related;start=x"), "-214 freed");
}

TEST(ApiEncodeAccept, FullOutputAfterTheHeaderCodeFails) {
    EXPECT_EQ(enc("Accept: */*", "1.4", 3), "OK 80 80");
    EXPECT_EQ(enc("Accept: */*", "1.4", 2), "-214 freed");
    EXPECT_EQ(enc("Accept: */*", "1.4", 1), "-214 freed");
}

// ===================================================================
// Accept-Charset, Accept-Language, Accept-Encoding (list encoder)
// ===================================================================

TEST(ApiEncodeQList, AcceptEncodingExample) {
    EXPECT_EQ(enc("accept-encoding: gzip, *;q=0.5", "1.3"), "OK BC 80 BC 02 83 33");
}

TEST(ApiEncodeQList, AcceptEncodingItems) {
    EXPECT_EQ(enc("accept-encoding: *", "1.4"), "OK BC 83");
    EXPECT_EQ(enc("accept-encoding: deflate, br", "1.4"), "OK BC 82 BC " + tz("br"));
    EXPECT_EQ(enc("accept-encoding: identity;q=0", "1.4"), "OK BC 0A " + tz("identity") + " 01");
    EXPECT_EQ(enc("accept-encoding: gzip;q", "1.4"), "OK BC 02 80 00");
}

TEST(ApiEncodeQList, AcceptCharsetList) {
    EXPECT_EQ(enc("Accept-Charset: utf-8, iso-8859-1;q=0.5", "1.2"), "OK 81 EA 81 02 84 33");
    EXPECT_EQ(enc("Accept-Charset: ISO-8859-1", "1.1"), "OK 81 84");
}

TEST(ApiEncodeQList, StarIsAnyCharsetOnlyForTheNewerCode) {
    EXPECT_EQ(enc("accept-charset: *", "1.3"), "OK BB 80");
    EXPECT_EQ(enc("accept-charset: *", "1.2"), "OK 81 2A 00");
}

TEST(ApiEncodeQList, CharsetAbove127) {
    EXPECT_EQ(enc("accept-charset: utf-16", "1.2"), "OK 81 03 02 03 F7");
    EXPECT_EQ(enc("accept-charset: utf-16;q=0.5", "1.2"), "OK 81 04 02 03 F7 33");
}

TEST(ApiEncodeQList, EmptyValues) {
    EXPECT_EQ(enc("accept-charset:", "1.2"), "-214 freed");
    EXPECT_EQ(enc("accept-charset:", "1.3"), "OK");
    EXPECT_EQ(enc("accept-encoding:  ", "1.3"), "OK");
    EXPECT_EQ(enc("accept-language:", "1.4"), "-214 freed");
}

TEST(ApiEncodeQList, OnlyTheQParameterIsAllowed) {
    EXPECT_EQ(enc("accept-charset: utf-8;level=1", "1.4"), "-214 freed");
    EXPECT_EQ(enc("accept-encoding: gzip;charset=x", "1.4"), "-214 freed");
    EXPECT_EQ(enc("accept-encoding: gzip;foo=1", "1.4"), "-214 freed");
}

TEST(ApiEncodeQList, SecondParameterOnlyForTheNewerCodes) {
    EXPECT_EQ(enc("accept-charset: utf-8;q=0.5;q=0.3", "1.2"), "-214 freed");
    EXPECT_EQ(enc("accept-language: en;q=0.5;q=0.3", "1.4"), "-214 freed");
    EXPECT_EQ(enc("accept-charset: utf-8;q=0.5;q=0.3", "1.3"), "OK BB 03 EA 33 1F");
    EXPECT_EQ(enc("accept-encoding: gzip;q=0.5;q=0.3", "1.4"), "OK BC 03 80 33 1F");
}

TEST(ApiEncodeQList, MalformedQValueFails) {
    EXPECT_EQ(enc("accept-encoding: gzip;q=2", "1.4"), "-214 freed");
}

TEST(ApiEncodeQList, AcceptLanguageByCodeOrName) {
    EXPECT_EQ(enc("Accept-Language: en", "1.1"), "OK 83 99");
    EXPECT_EQ(enc("Accept-Language: English", "1.1"), "OK 83 99");
    EXPECT_EQ(enc("Accept-Language: en;q=0.8", "1.1"), "OK 83 02 99 51");
    EXPECT_EQ(enc("Accept-Language: po", "1.1"), "OK 83 D8");
    EXPECT_EQ(enc("Accept-Language: pl", "1.1"), "OK 83 " + tz("pl"));
    EXPECT_EQ(enc("Accept-Language: de-DE", "1.1"), "OK 83 " + tz("de-de"));
    EXPECT_EQ(enc("Accept-Language: Scots Gealic", "1.1"), "OK 83 A5");
}

TEST(ApiEncodeQList, UnknownItemWithHighFirstOctet) {
    // Bare: plain text; with a parameter: a Text-string with its Quote.
    EXPECT_EQ(enc("Accept-Language: \xE9", "1.4"), "OK 83 E9 00");
    EXPECT_EQ(enc("Accept-Language: \xE9;q=0.5", "1.4"), "OK 83 04 7F E9 00 33");
}

TEST(ApiEncodeQList, LanguageNamesKeepTheTablesOwnSpelling) {
    EXPECT_EQ(enc("Accept-Language: Portugese", "1.4"), "OK 83 DA");
    EXPECT_EQ(enc("Accept-Language: Portuguese", "1.4"), "OK 83 " + tz("portuguese"));
    EXPECT_EQ(enc("Accept-Language: sewdish", "1.4"), "OK 83 F0");
    EXPECT_EQ(enc("Accept-Language: swedish", "1.4"), "OK 83 " + tz("swedish"));
    EXPECT_EQ(enc("Accept-Language: inuktitu", "1.4"), "OK 83 02 01 89");
}

TEST(ApiEncodeQList, AcceptLanguageAbove127) {
    EXPECT_EQ(enc("Accept-Language: la", "1.4"), "OK 83 02 01 8B");
    EXPECT_EQ(enc("Accept-Language: latin", "1.4"), "OK 83 02 01 8B");
    EXPECT_EQ(enc("Accept-Language: la;q=0.5", "1.4"), "OK 83 03 01 8B 33");
}

} // namespace

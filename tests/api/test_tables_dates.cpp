// The assigned-number tables and the date conversions as the codecs show
// them through the public header: which rows each version admits, how
// codes are searched, the spellings kept, and the date forms read and
// written.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "api_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace api_core;

// ===========================================================================
// Assigned-number tables through the codecs

TEST(ApiTables, HashedCertificateKeepsItsOwnSpelling) {
    Content c = decode_ct(bytes({0xB8}));
    EXPECT_EQ(WSP_OK, c.status);
    EXPECT_EQ("application/vnd.wap.hashed-certifiate", c.text);
    EXPECT_EQ(1, c.consumed);
    EXPECT_EQ("B8", encoded_ct_hex("application/vnd.wap.hashed-certifiate", "1.4"));
    EXPECT_EQ(hex(cstr("application/vnd.wap.hashed-certificate")),
              encoded_ct_hex("application/vnd.wap.hashed-certificate", "1.4"));
    // Row 0x38 lies past the 55 rows of 1.3.
    EXPECT_EQ(hex(cstr("application/vnd.wap.hashed-certifiate")),
              encoded_ct_hex("application/vnd.wap.hashed-certifiate", "1.3"));
}

TEST(ApiTables, ContentTypeRowsAdmittedPerVersion) {
    EXPECT_EQ(hex(cstr("application/vnd.wap.sia")), encoded_ct_hex("application/vnd.wap.sia", "1.1"));
    EXPECT_EQ("B4", encoded_ct_hex("application/vnd.wap.sia", "1.2"));
    EXPECT_EQ(hex(cstr("application/vnd.wap.sic")), encoded_ct_hex("application/vnd.wap.sic", "1.1"));
    EXPECT_EQ("AE", encoded_ct_hex("application/vnd.wap.sic", "1.2"));
    EXPECT_EQ("AD", encoded_ct_hex("text/vnd.wap.si", "1.1"));
    EXPECT_EQ(hex(cstr("text/vnd.wap.connectivity-xml")), encoded_ct_hex("text/vnd.wap.connectivity-xml", "1.2"));
    EXPECT_EQ("B5", encoded_ct_hex("text/vnd.wap.connectivity-xml", "1.3"));
    EXPECT_EQ(hex(cstr("application/vnd.wap.mms-message")), encoded_ct_hex("application/vnd.wap.mms-message", "1.3"));
    EXPECT_EQ("BE", encoded_ct_hex("application/vnd.wap.mms-message", "1.4"));
    EXPECT_EQ("80", encoded_ct_hex("*/*", "1.1"));
    EXPECT_EQ("82", encoded_ct_hex("TEXT/HTML", "1.1"));
    EXPECT_EQ("C4", encoded_ct_hex("application/vnd.syncml.notification", "1.4"));
    EXPECT_EQ(hex(cstr("application/vnd.syncml.notification")),
              encoded_ct_hex("application/vnd.syncml.notification", "1.3"));
}

TEST(ApiTables, UnknownVersionIsRefusedByTheContentTypeEncoder) {
    OutBuffer out(8);
    EXPECT_EQ(WSP_ERR_VERSION, low16(wsp_encode_content("text/plain", out.get(), "1.5")));
    EXPECT_EQ(0, out->length);
    EXPECT_EQ("00", encoded_ct_hex(nullptr, "1.1"));
}

TEST(ApiTables, ConstrainedCodesAbove63AreFoundByCode) {
    EXPECT_EQ("application/vnd.syncml.dm+wbxml", decode_ct(bytes({0xC2})).text);
    EXPECT_EQ("application/vnd.syncml.dm+xml", decode_ct(bytes({0xC3})).text);
    EXPECT_EQ("application/vnd.syncml.notification", decode_ct(bytes({0xC4})).text);
    EXPECT_EQ("application/vnd.oma.drm.rights+xml", decode_ct(bytes({0xCA})).text);
    EXPECT_EQ("application/vnd.oma.drm.rights+wbxml", decode_ct(bytes({0xCB})).text);
    EXPECT_EQ("application/vnd.wap.rollover-certificate", decode_ct(bytes({0xBF})).text);
}

TEST(ApiTables, ConstrainedCodesWithoutRowLeaveTheOutputUntouched) {
    const int codes[] = {0xC0, 0xC1, 0xC5, 0xC9, 0xCC, 0xD1};
    for (int code : codes) {
        Content c = decode_ct(bytes({code}), 1, "untouched");
        EXPECT_EQ(WSP_OK, c.status) << code;
        EXPECT_EQ("untouched", c.text) << code;
        EXPECT_EQ(1, c.consumed) << code;
    }
}

TEST(ApiTables, ConstrainedCodesAbove81AreRefused) {
    Content agps = decode_ct(bytes({0xFF}));
    EXPECT_EQ(WSP_ERR_FAIL, agps.status);
    EXPECT_EQ(0, agps.consumed);
    EXPECT_EQ(WSP_ERR_FAIL, decode_ct(bytes({0xD2})).status);
    // The encoder still sends application/x-agps as its code 0x7F.
    EXPECT_EQ("FF", encoded_ct_hex("application/x-agps", "1.4"));
}

TEST(ApiTables, GeneralFormShortCodeIsARowIndex) {
    EXPECT_EQ("application/vnd.syncml.notification", decode_ct(bytes({0x01, 0xC2})).text);
    EXPECT_EQ("application/x-agps", decode_ct(bytes({0x01, 0xC5})).text);
    EXPECT_EQ("application/vnd.omaloc-supl-init", decode_ct(bytes({0x01, 0xD1})).text);
    EXPECT_EQ(WSP_ERR_FAIL, decode_ct(bytes({0x01, 0xD2})).status);
}

TEST(ApiTables, GeneralFormLongCodeIsSearchedByCode) {
    Content supl = decode_ct(bytes({0x03, 0x02, 0x03, 0x12}));
    EXPECT_EQ(WSP_OK, supl.status);
    EXPECT_EQ("application/vnd.omaloc-supl-init", supl.text);
    EXPECT_EQ(4, supl.consumed);
    EXPECT_EQ("application/vnd.uplanet.cacheop-wbxml", decode_ct(bytes({0x03, 0x02, 0x02, 0x01})).text);
    EXPECT_EQ("application/vnd.nokia.syncset+wbxml", decode_ct(bytes({0x03, 0x02, 0x02, 0x0B})).text);
    EXPECT_EQ("application/x-agps", decode_ct(bytes({0x02, 0x01, 0x7F})).text);
    EXPECT_EQ("text/plain", decode_ct(bytes({0x02, 0x01, 0x03})).text);
    EXPECT_EQ(WSP_ERR_FAIL, decode_ct(bytes({0x03, 0x02, 0x02, 0x0C})).status);
    EXPECT_EQ(WSP_ERR_FAIL, decode_ct(bytes({0x02, 0x01, 0x40})).status);
}

TEST(ApiTables, LongMediaCodesFromTheContentTypeEncoder) {
    // Without parameters the octet after the length is not the code: the
    // copy starts past the Long-integer, deliberately.
    ContentOut plain = encode_ct("application/vnd.uplanet.signal", "1.4");
    EXPECT_EQ(WSP_OK, low16(plain.status));
    ASSERT_EQ(4u, plain.bytes.size());
    EXPECT_EQ("03 00 00", hex(plain.bytes.data(), 3));
    ContentOut supl = encode_ct("application/vnd.omaloc-supl-init", "1.4");
    ASSERT_EQ(4u, supl.bytes.size());
    EXPECT_EQ("03 00 00", hex(supl.bytes.data(), 3));
    // With parameters the Long-integer is in place.
    EXPECT_EQ("05 02 02 02 81 EA", encoded_ct_hex("application/vnd.uplanet.signal; charset=utf-8", "1.4"));
    EXPECT_EQ("application/vnd.uplanet.signal;charset=utf-8",
              decode_ct(bytes({0x05, 0x02, 0x02, 0x02, 0x81, 0xEA})).text);
}

TEST(ApiTables, CharsetNamesAndMibEnums) {
    EXPECT_EQ("03 83 81 84", encoded_ct_hex("text/plain; charset=ISO-8859-1", "1.1"));
    EXPECT_EQ("03 83 81 84", encoded_ct_hex("text/plain; charset=iso-8859-1", "1.1"));
    EXPECT_EQ("03 83 81 EA", encoded_ct_hex("Text/Plain; charset=UTF-8", "1.3"));
    EXPECT_EQ("05 83 81 02 07 EA", encoded_ct_hex("text/plain; charset=Big5", "1.1"));
    EXPECT_EQ("text/plain;charset=utf-8", decode_ct(bytes({0x03, 0x83, 0x81, 0xEA})).text);
    EXPECT_EQ("text/plain;charset=us-ascii", decode_ct(bytes({0x03, 0x83, 0x81, 0x83})).text);
    EXPECT_EQ("text/plain;charset=iso-8859-1",
              decode_ct(bytes({0x05, 0x83, 0x81, 0x02, 0x03, 0xEC})).text);
    EXPECT_EQ("text/plain;charset=big5", decode_ct(bytes({0x05, 0x83, 0x81, 0x02, 0x07, 0xEA})).text);
    EXPECT_EQ("text/plain;charset=windows-1253", decode_ct(bytes({0x05, 0x83, 0x81, 0x02, 0x08, 0xCD})).text);
}

TEST(ApiTables, CharsetsWithoutRow) {
    EXPECT_EQ("text/plain;charset=unknown-charset",
              decode_ct(bytes({0x05, 0x83, 0x81, 0x02, 0x08, 0xCC})).text);
    EXPECT_EQ("text/plain;charset=unknown-charset", decode_ct(bytes({0x03, 0x83, 0x81, 0x80})).text);
    // An unknown charset name goes out as an untyped parameter.
    EXPECT_EQ(hex(cat({bytes({0x16, 0x83}), cstr("charset"), cstr("windows-1252")})),
              encoded_ct_hex("text/plain; charset=windows-1252", "1.1"));
}

TEST(ApiTables, LanguageCodesAndNames) {
    EXPECT_EQ("83 99", encoded_hex("accept-language: en", "1.1"));
    EXPECT_EQ("83 99", encoded_hex("accept-language: english", "1.1"));
    EXPECT_EQ("83 A2", encoded_hex("accept-language: fr", "1.2"));
    EXPECT_EQ("83 A1", encoded_hex("accept-language: ur", "1.2"));
    EXPECT_EQ("83 D8", encoded_hex("accept-language: po", "1.1"));
    EXPECT_EQ("83 D8", encoded_hex("accept-language: polish", "1.1"));
    EXPECT_EQ(hex(cat({bytes({0x83}), cstr("pl")})), encoded_hex("accept-language: pl", "1.1"));
    EXPECT_EQ("83 02 01 8C", encoded_hex("accept-language: rm", "1.4"));
    EXPECT_EQ("8C D8", encoded_hex("content-language: po", "1.1"));
    EXPECT_EQ("8C D8", encoded_hex("content-language: polish", "1.1"));
    EXPECT_EQ("8C 01 8C", encoded_hex("content-language: rhaeto-romance", "1.1"));
}

TEST(ApiTables, LanguageNamesKeepTheTablesSpellings) {
    EXPECT_EQ("83 F0", encoded_hex("accept-language: sewdish", "1.1"));
    EXPECT_EQ(hex(cat({bytes({0x83}), cstr("swedish")})), encoded_hex("accept-language: swedish", "1.1"));
    EXPECT_EQ("83 DA", encoded_hex("accept-language: portugese", "1.1"));
    EXPECT_EQ("accept-language:sewdish\n", decoded_text(bytes({0x83, 0xF0})));
    EXPECT_EQ("accept-language:portugese\n", decoded_text(bytes({0x83, 0xDA})));
    EXPECT_EQ("accept-language:scots gealic\n", decoded_text(bytes({0x83, 0xA5})));
}

TEST(ApiTables, AcceptLanguageShowsNamesContentLanguageShowsCodes) {
    EXPECT_EQ("accept-language:english\n", decoded_text(bytes({0x83, 0x99})));
    EXPECT_EQ("accept-language:polish\n", decoded_text(bytes({0x83, 0xD8})));
    EXPECT_EQ("accept-language:bengali\n", decoded_text(bytes({0x83, 0x8E})));
    EXPECT_EQ("accept-language:afan\n", decoded_text(bytes({0x83, 0xD5})));
    EXPECT_EQ("accept-language:uighur\n", decoded_text(bytes({0x83, 0xFF})));
    EXPECT_EQ("accept-language:unknown-language\n", decoded_text(bytes({0x83, 0x80})));
    EXPECT_EQ("content-language:po\n", decoded_text(bytes({0x8C, 0xD8})));
    EXPECT_EQ("content-language:en\n", decoded_text(bytes({0x8C, 0x99})));
}

TEST(ApiTables, LanguageCode0x80HasNoRow) {
    // Content-Language as a Long-integer: 0x80 has no row, 0x81 is "na".
    // A long application header behind it keeps the remaining count above
    // the code.
    std::string filler(130, 'z');
    Bytes tail = cat({cstr("x"), cstr(filler.c_str())});
    EXPECT_EQ("content-language:unknown-language\nx:" + filler + "\n",
              decoded_text(cat({bytes({0x8C, 0x01, 0x80}), tail})));
    EXPECT_EQ("content-language:na\nx:" + filler + "\n", decoded_text(cat({bytes({0x8C, 0x01, 0x81}), tail})));
}

TEST(ApiTables, HeaderNamesOfTextHeaders) {
    const int codes[] = {0x8A, 0x8E, 0x93, 0x95, 0x96, 0x9C, 0xA4, 0xA6, 0xA9, 0xB0, 0xB1};
    const char *names[] = {"content-base", "content-location", "etag",    "from",
                           "host",         "location",         "referer", "server",
                           "user-agent",   "x-wap-content-uri", "x-wap-initiator-uri"};
    Bytes block;
    std::string expect;
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i) {
        block = cat({block, bytes({codes[i]}), cstr("v")});
        expect += std::string(names[i]) + ":v\n";
    }
    EXPECT_EQ(expect, decoded_text(block, 4));
    // The same names find their codes when encoding.
    std::string lines;
    Bytes encoded;
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i) {
        lines += std::string(names[i]) + ": v\n";
        encoded = cat({encoded, bytes({codes[i]}), cstr("v")});
    }
    EXPECT_EQ(hex(encoded), encoded_hex(lines, "1.4"));
}

TEST(ApiTables, DuplicatedHeaderNamesTakeTheHighestCodeTheVersionAdmits) {
    EXPECT_EQ("C7 80", encoded_hex("cache-control: no-cache", "1.4"));
    EXPECT_EQ("BD 80", encoded_hex("cache-control: no-cache", "1.3"));
    EXPECT_EQ("88 80", encoded_hex("cache-control: no-cache", "1.2"));
    EXPECT_EQ("88 80", encoded_hex("Cache-Control: no-cache", "1.1"));
    EXPECT_EQ("81 EA", encoded_hex("accept-charset: utf-8", "1.2"));
    EXPECT_EQ("BB EA", encoded_hex("accept-charset: utf-8", "1.3"));
    EXPECT_EQ("BB EA", encoded_hex("ACCEPT-CHARSET: utf-8", "1.4"));
    EXPECT_EQ("AE 01 81", encoded_hex("content-disposition: attachment", "1.3"));
    EXPECT_EQ("C5 01 81", encoded_hex("content-disposition: attachment", "1.4"));
    EXPECT_EQ("90 03 00 87 68", encoded_hex("content-range: bytes 0-99/1000", "1.2"));
    EXPECT_EQ("BE 03 00 87 68", encoded_hex("content-range: bytes 0-99/1000", "1.3"));
}

TEST(ApiTables, NamesAboveTheVersionLimitAreApplicationHeaders) {
    EXPECT_EQ(hex(cat({cstr("x-wap-application-id"), cstr(" x-wap-application:mms.ua")})),
              encoded_hex("x-wap-application-id: x-wap-application:mms.ua", "1.1"));
    EXPECT_EQ("AF 84", encoded_hex("x-wap-application-id: x-wap-application:mms.ua", "1.2"));
    EXPECT_EQ(hex(cat({cstr("encoding-version"), cstr(" 1.0")})), encoded_hex("encoding-version: 1.0", "1.2"));
    EXPECT_EQ(hex(cat({cstr("age"), cstr(" 5")})), encoded_hex("age: 5", "2.0"));
}

TEST(ApiTables, HeaderCodesAboveTheDecodersVersionAreSkipped) {
    Bytes block = cat({bytes({0xB0}), cstr("http://a/"), bytes({0xAF, 0x84})});
    EXPECT_EQ("", decoded_text(block, 1));
    EXPECT_EQ("x-wap-content-uri:http://a/\nx-wap-application-id:x-wap-application:mms.ua\n",
              decoded_text(block, 2));
    // Codes past the table and the content type are never written.
    EXPECT_EQ("age:5\n", decoded_text(bytes({0xC8, 0x85, 0x91, 0x83, 0x85, 0x85}), 4));
}

TEST(ApiTables, PushApplicationIds) {
    EXPECT_EQ("x-wap-application-id:x-wap-application:*\n", decoded_text(bytes({0xAF, 0x80})));
    EXPECT_EQ("x-wap-application-id:x-wap-application:push.sia\n", decoded_text(bytes({0xAF, 0x81})));
    EXPECT_EQ("x-wap-application-id:x-wap-application:syncml.dm\n", decoded_text(bytes({0xAF, 0x87})));
    EXPECT_EQ("x-wap-application-id:x-wap-application:emn.ua\n", decoded_text(bytes({0xAF, 0x89})));
    EXPECT_EQ("x-wap-application-id:x-oma-application:ulp.ua\n", decoded_text(bytes({0xAF, 0x90})));
    EXPECT_EQ("x-wap-application-id:x-vantrell:location.ua\n", decoded_text(bytes({0xAF, 0x02, 0x80, 0x05})));
    EXPECT_EQ("x-wap-application-id:x-oma-vantrell:screen3.ua\n", decoded_text(bytes({0xAF, 0x02, 0x90, 0x1E})));
    EXPECT_EQ("x-wap-application-id:x-microsoft:drm.license\n", decoded_text(bytes({0xAF, 0x02, 0x90, 0x35})));
    // Code 6 has no row: the header is dropped.
    EXPECT_EQ("", decoded_text(bytes({0xAF, 0x86})));
    EXPECT_EQ("AF 81", encoded_hex("x-wap-application-id: x-wap-application:push.sia", "1.2"));
    EXPECT_EQ("AF 02 90 34", encoded_hex("x-wap-application-id: x-microsoft:drm.meter", "1.4"));
}

TEST(ApiTables, Methods) {
    EXPECT_EQ("allow:GET\n", decoded_text(bytes({0x86, 0xC0})));
    EXPECT_EQ("allow:POST\n", decoded_text(bytes({0x86, 0xE0})));
    EXPECT_EQ("allow:69\n", decoded_text(bytes({0x86, 0xC5})));
    EXPECT_EQ("public:TRACE\n", decoded_text(bytes({0xA2, 0xC4})));
    EXPECT_EQ("86 C0 86 C1", encoded_hex("allow: GET, 0x41", "1.1"));
    EXPECT_EQ("86 E1", encoded_hex("allow: PUT", "1.1"));
    EXPECT_EQ("A2 C0 A2 E0", encoded_hex("public: GET, POST", "1.1"));
}

TEST(ApiTables, CodingsAndRangeUnits) {
    EXPECT_EQ("82 80", encoded_hex("accept-encoding: gzip", "1.1"));
    EXPECT_EQ("8B 82", encoded_hex("content-encoding: deflate", "1.1"));
    EXPECT_EQ("content-encoding:compress\n", decoded_text(bytes({0x8B, 0x81})));
    EXPECT_EQ("accept-ranges:none\n", decoded_text(bytes({0x84, 0x80})));
    EXPECT_EQ("accept-ranges:bytes\n", decoded_text(bytes({0x84, 0x81})));
    EXPECT_EQ("B9 01 82", encoded_hex("te: chunked", "1.3"));
    EXPECT_EQ("B9 01 84", encoded_hex("te: gzip", "1.3"));
    EXPECT_EQ("A7 80", encoded_hex("transfer-encoding: chunked", "1.1"));
    EXPECT_EQ("transfer-encoding:chunked\n", decoded_text(bytes({0xA7, 0x80})));
}

TEST(ApiTables, ParameterNamesKeepTheirSpellings) {
    EXPECT_EQ("application/vnd.wap.multipart.related;start_info=abc",
              decode_ct(cat({bytes({0x06, 0xB3, 0x8B}), cstr("abc")})).text);
    EXPECT_EQ("application/vnd.wap.multipart.related;start-info=abc",
              decode_ct(cat({bytes({0x06, 0xB3, 0x9A}), cstr("abc")})).text);
    EXPECT_EQ("text/plain;max_age=5", decode_ct(bytes({0x03, 0x83, 0x8E, 0x85})).text);
    EXPECT_EQ("text/plain;differences=user-agent", decode_ct(bytes({0x03, 0x83, 0x87, 0xA9})).text);
}

TEST(ApiTables, ParameterCodesWithoutNameEmptyTheContentType) {
    Content c4 = decode_ct(bytes({0x03, 0x83, 0x84, 0x80}));
    EXPECT_EQ(WSP_OK, c4.status);
    EXPECT_EQ("", c4.text);
    EXPECT_EQ(4, c4.consumed);
    Content c1e = decode_ct(bytes({0x03, 0x83, 0x9E, 0x80}));
    EXPECT_EQ(WSP_OK, c1e.status);
    EXPECT_EQ("", c1e.text);
    EXPECT_EQ(4, c1e.consumed);
}

TEST(ApiTables, AnEmptyCodingTokenIsTheFirstCodingRow) {
    EXPECT_EQ("B9 01 80", encoded_hex("te: ;", "1.3"));
}

TEST(ApiTables, ListEncodersFollowTheSameRows) {
    EXPECT_EQ(hex(cat({bytes({0x80}), cstr("application/vnd.wap.sia")})),
              encoded_hex("accept: application/vnd.wap.sia", "1.1"));
    EXPECT_EQ("80 B4", encoded_hex("accept: application/vnd.wap.sia", "1.2"));
    EXPECT_EQ("81 84", encoded_hex("accept-charset: ISO-8859-1", "1.1"));
    EXPECT_EQ("81 03 02 03 E8", encoded_hex("accept-charset: iso-10646-ucs-2", "1.1"));
    EXPECT_EQ("BC 80", encoded_hex("accept-encoding: gzip", "1.3"));
    EXPECT_EQ("82 80", encoded_hex("accept-encoding: gzip", "1.2"));
}

// ===========================================================================
// Dates

TEST(ApiDates, DateValueToText) {
    EXPECT_EQ("date:Sun, 06 Nov 1994 08:49:37 GMT\n", decoded_text(bytes({0x92, 0x04, 0x2E, 0xBC, 0x98, 0xA1})));
    EXPECT_EQ("date:Sat, 01 Jan 2000 00:00:00 GMT\n", decoded_text(bytes({0x92, 0x04, 0x38, 0x6D, 0x43, 0x80})));
    EXPECT_EQ("date:Tue, 19 Jan 2038 03:14:07 GMT\n", decoded_text(bytes({0x92, 0x04, 0x7F, 0xFF, 0xFF, 0xFF})));
    EXPECT_EQ("date:Thu, 15 Mar 2012 10:30:00 GMT\n", decoded_text(bytes({0x92, 0x04, 0x4F, 0x61, 0xC4, 0xA8})));
}

TEST(ApiDates, ZeroAndShortLongIntegers) {
    EXPECT_EQ("date:Thu, 01 Jan 1970 00:00:00 GMT\n", decoded_text(bytes({0x92, 0x00})));
    EXPECT_EQ("date:Thu, 01 Jan 1970 00:00:00 GMT\n", decoded_text(bytes({0x92, 0x01, 0x00})));
    EXPECT_EQ("date:Thu, 01 Jan 1970 00:01:00 GMT\n", decoded_text(bytes({0x92, 0x01, 0x3C})));
}

TEST(ApiDates, EveryDateHeader) {
    const Bytes v = bytes({0x04, 0x2E, 0xBC, 0x98, 0xA1});
    const std::string t = ":Sun, 06 Nov 1994 08:49:37 GMT\n";
    EXPECT_EQ("expires" + t, decoded_text(cat({bytes({0x94}), v})));
    EXPECT_EQ("if-modified-since" + t, decoded_text(cat({bytes({0x97}), v})));
    EXPECT_EQ("if-unmodified-since" + t, decoded_text(cat({bytes({0x9B}), v})));
    EXPECT_EQ("last-modified" + t, decoded_text(cat({bytes({0x9D}), v})));
    EXPECT_EQ("if-range" + t, decoded_text(cat({bytes({0x9A}), v})));
    EXPECT_EQ("x-wap-tod" + t, decoded_text(cat({bytes({0xBF}), v}), 3));
    EXPECT_EQ("", decoded_text(cat({bytes({0xBF}), v}), 2));
    EXPECT_EQ("retry-after" + t, decoded_text(cat({bytes({0xA5, 0x06, 0x80}), v})));
}

TEST(ApiDates, ValuesThatAreNotDateValuesAreDropped) {
    EXPECT_EQ("age:1\n", decoded_text(bytes({0x92, 0x85, 0x85, 0x81})));
    EXPECT_EQ("age:1\n", decoded_text(bytes({0x92, 0x05, 0x01, 0x02, 0x03, 0x04, 0x05, 0x85, 0x81})));
}

TEST(ApiDates, Rfc1123FormEncodes) {
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun, 06 Nov 1994 08:49:37 GMT", "1.1"));
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("Date: SUN, 06 NOV 1994 08:49:37 GMT", "1.1"));
    EXPECT_EQ("92 01 00", encoded_hex("date: Thu, 01 Jan 1970 00:00:00 GMT", "1.1"));
    EXPECT_EQ("94 04 38 6D 43 80", encoded_hex("expires: Sat, 01 Jan 2000 00:00:00 GMT", "1.1"));
    EXPECT_EQ("9D 04 38 6D 43 80", encoded_hex("last-modified: Sat, 01 Jan 2000 00:00:00 GMT", "1.1"));
    EXPECT_EQ("97 04 38 6D 43 80", encoded_hex("if-modified-since: Sat, 01 Jan 2000 00:00:00 GMT", "1.1"));
    EXPECT_EQ("9B 04 38 6D 43 80", encoded_hex("if-unmodified-since: Sat, 01 Jan 2000 00:00:00 GMT", "1.1"));
    EXPECT_EQ("BF 04 38 6D 43 80", encoded_hex("x-wap-tod: Sat, 01 Jan 2000 00:00:00 GMT", "1.3"));
}

TEST(ApiDates, Rfc1123WithoutGmtIsAccepted) {
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun, 06 Nov 1994 08:49:37", "1.1"));
}

TEST(ApiDates, Rfc1123MissingSecondsAreZero) {
    EXPECT_EQ("92 04 2E BC 98 7C", encoded_hex("date: Sun, 06 Nov 1994 08:49 GMT", "1.1"));
}

TEST(ApiDates, WeekdayNameDoesNotChangeTheValue) {
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Wed, 06 Nov 1994 08:49:37 GMT", "1.1"));
}

TEST(ApiDates, Rfc1123YearRange) {
    EXPECT_EQ(WSP_OK, low16(encode_lines("date: Tue, 31 Dec 2069 23:59:59 GMT", "1.1").status));
    Encoded late = encode_lines("date: Sun, 06 Nov 2070 08:49:37 GMT", "1.1");
    EXPECT_EQ(WSP_ERR_FAIL, low16(late.status));
    EXPECT_TRUE(late.data_released);
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Wed, 31 Dec 1969 23:59:59 GMT", "1.1").status));
}

TEST(ApiDates, Rfc1123ExtraOrWrongWordsAreRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT now", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 UTC", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Foo 1994 08:49:37 GMT", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Fun, 06 Nov 1994 08:49:37 GMT", "1.1").status));
}

TEST(ApiDates, FourTimePartsAreRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37:00 GMT", "1.1").status));
}

TEST(ApiDates, FullDayNameWithoutCommaIsRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sunday 06 Nov 1994 08:49:37 GMT", "1.1").status));
}

TEST(ApiDates, Rfc850Form) {
    // A four-digit year is taken as written; a two-digit one is accepted too
    // and is not widened.
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sunday, 06-Nov-1994 08:49:37 GMT", "1.1"));
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sunday, 06-Nov-1994 08:49:37", "1.1"));
    Encoded two = encode_lines("date: Sunday, 06-Nov-94 08:49:37 GMT", "1.1");
    EXPECT_EQ(WSP_OK, low16(two.status));
    ASSERT_GE(two.bytes.size(), 3u);
    EXPECT_EQ(0x92, two.bytes[0]);
    EXPECT_LE(two.bytes[1], 4);
    EXPECT_EQ(two.bytes.size(), 2u + two.bytes[1]);
    EXPECT_NE("92 04 2E BC 98 A1", hex(two.bytes));
}

TEST(ApiDates, Rfc850ExtraPartsAreRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sunday, 06-Nov-1994-x 08:49:37 GMT", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sunday, 06-Nov-1994 08:49:37 GMT x", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sunday, 06-Nox-1994 08:49:37 GMT", "1.1").status));
}

TEST(ApiDates, AsctimeForm) {
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun Nov  6 08:49:37 1994", "1.1"));
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun Nov 06 08:49:37 1994", "1.1"));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun Nov 6 08:49:37 1994 GMT", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun Nov 6 08:49:37 2070", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun Nox 6 08:49:37 1994", "1.1").status));
}

TEST(ApiDates, DateRoundTrip) {
    Encoded e = encode_lines("date: Thu, 15 Mar 2012 10:30:00 GMT", "1.4");
    ASSERT_EQ(WSP_OK, low16(e.status));
    EXPECT_EQ("92 04 4F 61 C4 A8", hex(e.bytes));
    EXPECT_EQ("date:Thu, 15 Mar 2012 10:30:00 GMT\n", decoded_text(e.bytes));
}

TEST(ApiDates, IfRangeDateOrLowerCasedText) {
    EXPECT_EQ("9A 04 2E BC 98 A1", encoded_hex("if-range:Sun, 06 Nov 1994 08:49:37 GMT", "1.1"));
    EXPECT_EQ("9A 22 78 79 7A 22 00", encoded_hex("if-range: \"XYZ\"", "1.1"));
    EXPECT_EQ(hex(cat({bytes({0x9A}), cstr("\"sunny\"")})), encoded_hex("if-range:\"Sunny\"", "1.1"));
    // The first three characters decide: a leading blank is not a day name.
    EXPECT_EQ(hex(cat({bytes({0x9A}), cstr("sun, 06 nov 1994 08:49:37 gmt")})),
              encoded_hex("if-range: Sun, 06 Nov 1994 08:49:37 GMT", "1.1"));
}

TEST(ApiDates, DateCodeOctetMayNotFillTheBlock) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT", "1.1", 1).status));
    Encoded exact = encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT", "1.1", 6);
    EXPECT_EQ(WSP_OK, low16(exact.status));
    EXPECT_EQ("92 04 2E BC 98 A1", hex(exact.bytes));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT", "1.1", 5).status));
}

TEST(ApiDates, ThreeOctetDateValue) {
    EXPECT_EQ("date:Thu, 01 Jan 1970 18:12:16 GMT\n", decoded_text(bytes({0x92, 0x03, 0x01, 0x00, 0x00})));
    EXPECT_EQ("92 03 01 00 00", encoded_hex("date: Thu, 01 Jan 1970 18:12:16 GMT", "1.1"));
}

TEST(ApiDates, TrailingBlanks) {
    // One trailing blank ends with the last token; two leave one empty token
    // behind it, which is one token too many.
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun, 06 Nov 1994 08:49:37 GMT ", "1.1"));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT  ", "1.1").status));
}

TEST(ApiDates, TimePartsAreKeptAsEightBits) {
    // 300 seconds keep their low 8 bits, 44.
    EXPECT_EQ("92 04 2E BC 98 A8", encoded_hex("date: Sun, 06 Nov 1994 08:49:300 GMT", "1.1"));
}

TEST(ApiDates, OutOfRangeFieldsAreNormalisedByTheCalendar) {
    // 25:49:37 on the 6th is 01:49:37 on the 7th.
    EXPECT_EQ("92 04 2E BD 87 B1", encoded_hex("date: Sun, 06 Nov 1994 25:49:37 GMT", "1.1"));
}

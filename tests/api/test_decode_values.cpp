// The single-value headers (codes, numbers, dates and texts), each decoded
// through the exported wsp_dec_hdr under encoding version 4.  A refused
// value costs its own header only: Dropped() puts Content-Length 5 behind
// it and expects that line alone.
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
// Accept, Accept-Charset, Accept-Language

TEST(ApiAccept, ShortIntegerMediaTypes) {
    EXPECT_TRUE(Lines(bytes({0x80, 0x83}), "accept:text/plain\n"));
    EXPECT_TRUE(Lines(bytes({0x80, 0xB8}), "accept:application/vnd.wap.hashed-certifiate\n"));
    // searched by code, so the codes above 0x3F are found too
    EXPECT_TRUE(Lines(bytes({0x80, 0xC2}), "accept:application/vnd.syncml.dm+wbxml\n"));
    EXPECT_TRUE(Lines(bytes({0x80, 0xFF}), "accept:application/x-agps\n"));
}

TEST(ApiAccept, ShortIntegerWithoutRowIsDropped) {
    EXPECT_TRUE(Dropped(bytes({0x80, 0xC0})));
    EXPECT_TRUE(Dropped(bytes({0x80, 0xD2})));
}

TEST(ApiAccept, TokenTextAndMerging) {
    EXPECT_TRUE(Lines(cat({bytes({0x80}), cstr("text/html")}), "accept:text/html\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x80, 0x83, 0x80}), cstr("text/html"), bytes({0x80, 0x94})}),
                      "accept:text/plain,text/html,application/vnd.wap.wmlc\n"));
}

TEST(ApiAccept, LengthFormCarriesParameters) {
    EXPECT_TRUE(Lines(bytes({0x80, 0x03, 0x83, 0x80, 0x33}), "accept:text/plain;q=0.50\n"));
    EXPECT_TRUE(Lines(bytes({0x80, 0x05, 0x83, 0x81, 0xEA, 0x80, 0x64}), "accept:text/plain;charset=utf-8;q=0.99\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x80, 0x0C}), cstr("text/html"), bytes({0x80, 0x33})}), "accept:text/html;q=0.50\n"));
}

TEST(ApiAccept, LengthFormWithoutParametersIsDropped) {
    EXPECT_TRUE(Dropped(bytes({0x80, 0x01, 0x83})));
    EXPECT_TRUE(Dropped(cat({bytes({0x80, 0x0A}), cstr("text/html")})));
}

TEST(ApiAccept, LengthFormFailuresAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0x80, 0x03, 0xC0, 0x80, 0x33}))); // no row for 0x40
    EXPECT_TRUE(Dropped(bytes({0x80, 0x03, 0x83, 0x84, 0x80}))); // parameter code 0x04
    EXPECT_TRUE(Dropped(bytes({0x80, 0x03, 0x22, 0x80, 0x33}))); // no media: the run starts with a quote
}

TEST(ApiAccept, LengthZeroWritesNothing) {
    EXPECT_TRUE(Lines(cat({bytes({0x80, 0x00}), kTail}), kTailLine));
    EXPECT_TRUE(Lines(cat({bytes({0x81, 0x00}), kTail}), kTailLine));
    EXPECT_TRUE(Lines(cat({bytes({0x83, 0x00}), kTail}), kTailLine));
}

TEST(ApiAccept, LineThatDoesNotFitStopsTheBlock) {
    // "accept:text/plain\n" is 18 octets
    Decoded d = decode(cat({bytes({0x80, 0x83}), kTail}), 4, 17);
    EXPECT_EQ(d.status, WSP_ERR_TRUNCATED);
    EXPECT_TRUE(d.released);
    d = decode(cat({bytes({0x80, 0x83}), kTail}), 4, 18);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.counted, "accept:text/plain\n");
}

TEST(ApiAcceptCharset, ShortForms) {
    EXPECT_TRUE(Lines(bytes({0x81, 0xEA}), "accept-charset:utf-8\n"));
    EXPECT_TRUE(Lines(bytes({0x81, 0x84}), "accept-charset:iso-8859-1\n"));
    EXPECT_TRUE(Lines(bytes({0x81, 0x80}), "accept-charset:unknown-charset\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x81}), cstr("utf-8")}), "accept-charset:utf-8\n"));
    EXPECT_TRUE(Lines(bytes({0x81, 0xEA, 0x81, 0x84}), "accept-charset:utf-8,iso-8859-1\n"));
}

TEST(ApiAcceptCharset, LengthFormWithQValue) {
    EXPECT_TRUE(Lines(bytes({0x81, 0x02, 0xEA, 0x33}), "accept-charset:utf-8;q=0.50\n"));
    EXPECT_TRUE(Lines(bytes({0x81, 0x02, 0xEA, 0x00}), "accept-charset:utf-8;q\n"));
    EXPECT_TRUE(Lines(bytes({0x81, 0x03, 0xEA, 0x83, 0x31}), "accept-charset:utf-8;q=0.333\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x81, 0x07}), cstr("utf-8"), bytes({0x33})}), "accept-charset:utf-8;q=0.50\n"));
}

TEST(ApiAcceptCharset, LengthFormLongIntegerCharset) {
    EXPECT_TRUE(Lines(bytes({0x81, 0x03, 0x02, 0x03, 0xE8}), "accept-charset:iso-10646-ucs-2\n"));
    EXPECT_TRUE(Lines(bytes({0x81, 0x03, 0x02, 0x03, 0xEC}), "accept-charset:iso-8859-1\n"));
    EXPECT_TRUE(Lines(bytes({0x81, 0x04, 0x02, 0x03, 0xE8, 0x64}), "accept-charset:iso-10646-ucs-2;q=0.99\n"));
    EXPECT_TRUE(Dropped(bytes({0x81, 0x03, 0x02, 0x08, 0xCC}))); // 2252 has no row
}

TEST(ApiAcceptCharset, LengthFormRefusals) {
    EXPECT_TRUE(Dropped(bytes({0x81, 0x01, 0xEA})));             // no q-value: the short form carries it
    EXPECT_TRUE(Dropped(bytes({0x81, 0x02, 0x80, 0x33})));       // no "unknown-charset" here
    EXPECT_TRUE(Dropped(bytes({0x81, 0x04, 0x22, 'a', 0x00, 0x33})));
    EXPECT_TRUE(Dropped(bytes({0x81, 0x04, 0x7F, 'a', 0x00, 0x33})));
    EXPECT_TRUE(Dropped(bytes({0x81, 0x03, 0x1F, 0x01, 0xEA})));
    EXPECT_TRUE(Dropped(bytes({0x81, 0x03, 0xEA, 0x33, 0x33}))); // octets left after the q-value
}

TEST(ApiAcceptLanguage, ShortFormsGiveTheFullName) {
    EXPECT_TRUE(Lines(bytes({0x83, 0x99}), "accept-language:english\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0xD8}), "accept-language:polish\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x8E}), "accept-language:bengali\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0xC5}), "accept-language:latvian\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0xD5}), "accept-language:afan\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x80}), "accept-language:unknown-language\n"));
}

TEST(ApiAcceptLanguage, TableSpellingsAreKept) {
    EXPECT_TRUE(Lines(bytes({0x83, 0xDA}), "accept-language:portugese\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0xF0}), "accept-language:sewdish\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0xA5}), "accept-language:scots gealic\n"));
}

TEST(ApiAcceptLanguage, TextAndLengthForms) {
    EXPECT_TRUE(Lines(cat({bytes({0x83}), cstr("en")}), "accept-language:en\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x02, 0x99, 0x33}), "accept-language:english;q=0.50\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x83, 0x04}), cstr("en"), bytes({0x33})}), "accept-language:en;q=0.50\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x99, 0x83, 0x02, 0xA2, 0x33}), "accept-language:english,french;q=0.50\n"));
}

TEST(ApiAcceptLanguage, LongIntegerCodeTakesTheFirstRowCarryingIt) {
    // Only the Short-integer forms pass over the two-letter rows.
    EXPECT_TRUE(Lines(bytes({0x83, 0x02, 0x01, 0x81}), "accept-language:na\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x02, 0x01, 0x89}), "accept-language:iu\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x03, 0x01, 0x8C, 0x64}), "accept-language:rm;q=0.99\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x02, 0x01, 0x19}), "accept-language:en\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x02, 0x99, 0x64}), "accept-language:english;q=0.99\n"));
}

TEST(ApiAcceptLanguage, QuotedFieldIsReadAsTheQValue) {
    // Nothing is read for a field of class 2 or 3: the whole length is the
    // q-value run (0x22 is 34, 0x7F the uintvar 127).
    EXPECT_TRUE(Lines(bytes({0x83, 0x01, 0x22}), "accept-language:;q=0.33\n"));
    EXPECT_TRUE(Lines(bytes({0x83, 0x01, 0x7F}), "accept-language:;q=0.027\n"));
}

TEST(ApiAcceptLanguage, LengthFormRefusals) {
    EXPECT_TRUE(Dropped(bytes({0x83, 0x01, 0x99})));
    EXPECT_TRUE(Dropped(bytes({0x83, 0x02, 0x80, 0x33}))); // no "unknown-language" here
    EXPECT_TRUE(Dropped(bytes({0x83, 0x03, 0x1F, 0x01, 0x99})));
}

// ---------------------------------------------------------------------------
// Listed values

TEST(ApiListed, ContentCodings) {
    EXPECT_TRUE(Lines(bytes({0x82, 0x80}), "accept-encoding:gzip\n"));
    EXPECT_TRUE(Lines(bytes({0x82, 0x81}), "accept-encoding:compress\n"));
    EXPECT_TRUE(Lines(bytes({0x8B, 0x82}), "content-encoding:deflate\n"));
    EXPECT_TRUE(Lines(bytes({0x8B, 0x80, 0x8B, 0x82}), "content-encoding:gzip,deflate\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x82}), cstr("br")}), "accept-encoding:br\n"));
    EXPECT_TRUE(Dropped(bytes({0x82, 0x83})));
}

TEST(ApiListed, RangeUnitsConnectionMethodsTransferCodings) {
    EXPECT_TRUE(Lines(bytes({0x84, 0x80}), "accept-ranges:none\n"));
    EXPECT_TRUE(Lines(bytes({0x84, 0x81}), "accept-ranges:bytes\n"));
    EXPECT_TRUE(Dropped(bytes({0x84, 0x82})));
    EXPECT_TRUE(Lines(bytes({0x89, 0x80}), "connection:close\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x89}), cstr("Keep-Alive")}), "connection:Keep-Alive\n"));
    EXPECT_TRUE(Dropped(bytes({0x89, 0x81})));
    EXPECT_TRUE(Lines(bytes({0xA2, 0xC0, 0xA2, 0xC1, 0xA2, 0xE1}), "public:GET,OPTIONS,PUT\n"));
    EXPECT_TRUE(Dropped(bytes({0xA2, 0xC5})));
    EXPECT_TRUE(Lines(bytes({0xA7, 0x80}), "transfer-encoding:chunked\n"));
    EXPECT_TRUE(Dropped(bytes({0xA7, 0x81})));
}

TEST(ApiListed, ContentLanguageGivesTheTwoLetterCode) {
    EXPECT_TRUE(Lines(bytes({0x8C, 0x99}), "content-language:en\n"));
    EXPECT_TRUE(Lines(bytes({0x8C, 0xD8}), "content-language:po\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x8C}), cstr("de-CH")}), "content-language:de-CH\n"));
}

TEST(ApiListed, ContentLanguageLongIntegers) {
    EXPECT_TRUE(Lines(bytes({0x8C, 0x01, 0x00}), "content-language:unknown-language\n"));
    EXPECT_TRUE(Dropped(bytes({0x8C, 0x02, 0x01, 0x00}))); // above 255
    // A code is refused while it is larger than the octets left in the block.
    EXPECT_TRUE(Dropped(bytes({0x8C, 0x01, 0x81})));
    std::string pad(125, 'p');
    Bytes b = cat({bytes({0x8C, 0x01, 0x81}), cstr("x-pad"), cstr(pad.c_str())}); // 135 octets from the value on
    EXPECT_TRUE(Lines(b, "content-language:na\nx-pad:" + pad + "\n"));
    Bytes c = cat({bytes({0x8C, 0x01, 0x80}), cstr("x-pad"), cstr(pad.c_str())});
    EXPECT_TRUE(Lines(c, "content-language:unknown-language\nx-pad:" + pad + "\n"));
}

TEST(ApiListed, OtherFormsAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0x82, 0x01, 0x80})));      // Long-integer only for content-language
    EXPECT_TRUE(Dropped(bytes({0x82, 0x22, 'x', 0x00}))); // quoted
    EXPECT_TRUE(Dropped(bytes({0x84, 0x1F, 0x01, 0x80})));
}

TEST(ApiListed, TokenOf197CharactersIsWrittenOf198StopsTheBlock) {
    std::string t(197, 't');
    EXPECT_TRUE(Lines(cat({bytes({0x82}), cstr(t.c_str())}), "accept-encoding:" + t + "\n"));
    t += 't';
    Decoded d = decode(cat({bytes({0x82}), cstr(t.c_str()), kTail}));
    EXPECT_EQ(d.status, WSP_ERR_TRUNCATED);
    EXPECT_TRUE(d.released);
}

// ---------------------------------------------------------------------------
// Allow, numbers, dates

TEST(ApiAllow, MethodsAndNumbers) {
    EXPECT_TRUE(Lines(bytes({0x86, 0xC0}), "allow:GET\n"));
    EXPECT_TRUE(Lines(bytes({0x86, 0xC0, 0x86, 0xE0, 0x86, 0xC4}), "allow:GET,POST,TRACE\n"));
    EXPECT_TRUE(Lines(bytes({0x86, 0xC5}), "allow:69\n"));
    EXPECT_TRUE(Lines(bytes({0x86, 0xFF}), "allow:127\n"));
    EXPECT_TRUE(Dropped(bytes({0x86, 0xBF})));
    EXPECT_TRUE(Dropped(cat({bytes({0x86}), cstr("GET")})));
}

TEST(ApiDate, AllDateHeaders) {
    const int codes[] = {0x12, 0x14, 0x17, 0x1B, 0x1D, 0x3F};
    const char *names[] = {"date", "expires", "if-modified-since", "if-unmodified-since", "last-modified", "x-wap-tod"};
    for (int i = 0; i < 6; ++i) {
        SCOPED_TRACE(names[i]);
        EXPECT_TRUE(Lines(cat({bytes({0x80 | codes[i]}), kSun1994}), std::string(names[i]) + ":" + kSun1994Text + "\n"));
    }
}

TEST(ApiDate, OtherInstants) {
    EXPECT_TRUE(Lines(bytes({0x92, 0x01, 0x00}), "date:Thu, 01 Jan 1970 00:00:00 GMT\n"));
    EXPECT_TRUE(Lines(bytes({0x92, 0x00}), "date:Thu, 01 Jan 1970 00:00:00 GMT\n"));
    EXPECT_TRUE(Lines(bytes({0x94, 0x04, 0x4B, 0x3D, 0x3B, 0x00}), "expires:Fri, 01 Jan 2010 00:00:00 GMT\n"));
    EXPECT_TRUE(Lines(bytes({0x9D, 0x04, 0x5F, 0x5E, 0x10, 0x00}), "last-modified:Sun, 13 Sep 2020 12:26:40 GMT\n"));
    EXPECT_TRUE(Lines(bytes({0x92, 0x03, 0x01, 0x51, 0x80}), "date:Fri, 02 Jan 1970 00:00:00 GMT\n"));
    EXPECT_TRUE(Lines(bytes({0x92, 0x04, 0x80, 0x00, 0x00, 0x00}), "date:Tue, 19 Jan 2038 03:14:08 GMT\n"));
    EXPECT_TRUE(Lines(bytes({0x92, 0x04, 0xFF, 0xFF, 0xFF, 0xFF}), "date:Sun, 07 Feb 2106 06:28:15 GMT\n"));
}

TEST(ApiDate, RepeatedDatesGetOneLineEach) {
    EXPECT_TRUE(Lines(cat({bytes({0x92}), kSun1994, bytes({0x92, 0x01, 0x00})}),
                      "date:" + kSun1994Text + "\ndate:Thu, 01 Jan 1970 00:00:00 GMT\n"));
}

TEST(ApiDate, OtherFormsAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0x92, 0x85})));
    EXPECT_TRUE(Dropped(bytes({0x92, 0x05, 0x00, 0x2E, 0xBC, 0x98, 0xA1})));
    EXPECT_TRUE(Dropped(cat({bytes({0x92}), cstr("Sun, 06 Nov 1994 08:49:37 GMT")})));
}

TEST(ApiInteger, ShortLongAndHex) {
    EXPECT_TRUE(Lines(bytes({0x85, 0x80}), "age:0\n"));
    EXPECT_TRUE(Lines(bytes({0x85, 0x00}), "age:0\n")); // a Long-integer of no octets
    EXPECT_TRUE(Lines(bytes({0x85, 0x81}), "age:1\n"));
    EXPECT_TRUE(Lines(bytes({0x8D, 0x02, 0x05, 0xDC}), "content-length:1500\n"));
    EXPECT_TRUE(Lines(bytes({0x8D, 0x04, 0xFF, 0xFF, 0xFF, 0xFF}), "content-length:4294967295\n"));
    EXPECT_TRUE(Lines(bytes({0x9E, 0x8A}), "max-forwards:10\n"));
    EXPECT_TRUE(Lines(bytes({0x8D, 0x05, 0x01, 0x0A, 0xFF, 0x00, 0x0B}), "content-length:0X1AFF0B\n"));
}

TEST(ApiInteger, OtherFormsAreDropped) {
    EXPECT_TRUE(Dropped(cat({bytes({0x8D}), cstr("12")})));
    EXPECT_TRUE(Dropped(bytes({0x8D, 0x1F, 0x01, 0x05})));
}

// ---------------------------------------------------------------------------
// Vary, Content-ID, Bearer-Indication, Push-Flag

TEST(ApiVary, CodesAndTokens) {
    EXPECT_TRUE(Lines(bytes({0xAA, 0x8D}), "vary:content-length\n"));
    EXPECT_TRUE(Lines(bytes({0xAA, 0xC7}), "vary:cache-control\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xAA, 0x80, 0xAA}), cstr("x-custom")}), "vary:accept,x-custom\n"));
    EXPECT_TRUE(Dropped(bytes({0xAA, 0xC8})));
    EXPECT_TRUE(Dropped(bytes({0xAA, 0x01, 0x8D})));
}

TEST(ApiContentId, QuotedAndPlainForms) {
    EXPECT_TRUE(Lines(cat({bytes({0xC0}), cstr("\"<part1@example.com>")}), "content-id:<part1@example.com>\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC0}), cstr("<abc>")}), "content-id:<abc>\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xC0}), cstr("<a>"), bytes({0xC0}), cstr("<b>")}), "content-id:<a>\ncontent-id:<b>\n"));
    EXPECT_TRUE(Dropped(bytes({0xC0, 0x85})));
    EXPECT_TRUE(Dropped(bytes({0xC0, 0x01, 0x41})));
}

TEST(ApiBearer, OnlyTheFirstOccurrenceIsWritten) {
    EXPECT_TRUE(Lines(bytes({0xB3, 0x85}), "bearer-indication:5\n"));
    EXPECT_TRUE(Lines(bytes({0xB3, 0x01, 0x0A}), "bearer-indication:10\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xB3, 0x85, 0xB3, 0x86}), kTail}), "bearer-indication:5\n" + kTailLine));
}

TEST(ApiPushFlag, ValuesBelowEight) {
    EXPECT_TRUE(Lines(bytes({0xB4, 0x81}), "push-flag:1\n"));
    EXPECT_TRUE(Lines(bytes({0xB4, 0x87}), "push-flag:7\n"));
    EXPECT_TRUE(Dropped(bytes({0xB4, 0x88})));
    EXPECT_TRUE(Dropped(bytes({0xB4, 0x01, 0x01})));
    EXPECT_TRUE(Lines(cat({bytes({0xB4, 0x81, 0xB4, 0x82}), kTail}), "push-flag:1\n" + kTailLine));
}

TEST(ApiPushFlag, NameAnywhereInTheOutputRefusesIt) {
    EXPECT_TRUE(Lines(cat({cstr("x-push-flag"), cstr("a"), bytes({0xB4, 0x81}), kTail}), "x-push-flag:a\n" + kTailLine));
}

// ---------------------------------------------------------------------------
// X-Wap-Application-Id, Accept-Application, Trailer

TEST(ApiAppId, KnownApplications) {
    EXPECT_TRUE(Lines(bytes({0xAF, 0x80}), "x-wap-application-id:x-wap-application:*\n"));
    EXPECT_TRUE(Lines(bytes({0xAF, 0x84}), "x-wap-application-id:x-wap-application:mms.ua\n"));
    EXPECT_TRUE(Lines(bytes({0xAF, 0x90}), "x-wap-application-id:x-oma-application:ulp.ua\n"));
    EXPECT_TRUE(Lines(bytes({0xAF, 0x02, 0x80, 0x05}), "x-wap-application-id:x-vantrell:location.ua\n"));
    EXPECT_TRUE(Lines(bytes({0xAF, 0x02, 0x90, 0x1E}), "x-wap-application-id:x-oma-vantrell:screen3.ua\n"));
    EXPECT_TRUE(Lines(bytes({0xAF, 0x02, 0x90, 0x35}), "x-wap-application-id:x-microsoft:drm.license\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xAF}), cstr("x-wap-application:push.sia")}),
                      "x-wap-application-id:x-wap-application:push.sia\n"));
}

TEST(ApiAppId, UnknownCodesAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0xAF, 0x86})));
    EXPECT_TRUE(Dropped(bytes({0xAF, 0x02, 0x80, 0x06})));
    EXPECT_TRUE(Dropped(bytes({0xAF, 0x1F, 0x01, 0x84})));
}

TEST(ApiAppId, OnlyOneLineIsEverWritten) {
    EXPECT_TRUE(Lines(cat({bytes({0xAF, 0x84, 0xAF, 0x82}), kTail}),
                      "x-wap-application-id:x-wap-application:mms.ua\n" + kTailLine));
}

TEST(ApiAppId, ACommaAfterTheValueRefusesIt) {
    // The comma then starts an application header with an empty name.
    EXPECT_TRUE(Lines(bytes({0xAF, 0x84, 0x2C, 0x00}), ":,\n"));
}

TEST(ApiAppId, TextReadFailureStillWritesWhatWasRead) {
    // The line holds what the reader stored; decoding then resumes at the
    // text itself, which cannot be read as a header.
    Decoded d = decode(bytes({0xAF, 'a', 'b', 'c'}));
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
    EXPECT_EQ(d.text, "x-wap-application-id:abc\n");
}

TEST(ApiAcceptApp, ValuesShareOneLine) {
    EXPECT_TRUE(Lines(bytes({0xB2, 0x80}), "accept-application:*\n"));
    EXPECT_TRUE(Lines(bytes({0xB2, 0x80, 0xB2, 0x84}), "accept-application:*,x-wap-application:mms.ua\n"));
    EXPECT_TRUE(Lines(bytes({0xB2, 0x02, 0x80, 0x05}), "accept-application:x-vantrell:location.ua\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xB2}), cstr("x-foo.ua")}), "accept-application:x-foo.ua\n"));
    EXPECT_TRUE(Dropped(bytes({0xB2, 0x86})));
    EXPECT_TRUE(Dropped(bytes({0xB2, 0x1F, 0x01, 0x80})));
}

TEST(ApiTrailer, FieldNames) {
    EXPECT_TRUE(Lines(bytes({0xBA, 0x80, 0xBA, 0x93}), "trailer:accept,etag\n"));
    EXPECT_TRUE(Lines(bytes({0xBA, 0xC7}), "trailer:cache-control\n"));
    EXPECT_TRUE(Lines(bytes({0xBA, 0x01, 0x02}), "trailer:accept-encoding\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xBA}), cstr("content-length")}), "trailer:content-length\n"));
}

TEST(ApiTrailer, RefusedCodes) {
    EXPECT_TRUE(Dropped(bytes({0xBA, 0x8D})));
    EXPECT_TRUE(Dropped(bytes({0xBA, 0xA7})));
    EXPECT_TRUE(Dropped(bytes({0xBA, 0xBA})));
    EXPECT_TRUE(Dropped(bytes({0xBA, 0xC9})));
    EXPECT_TRUE(Dropped(bytes({0xBA, 0x02, 0x01, 0x00})));
    EXPECT_TRUE(Dropped(bytes({0xBA, 0x01, 0x13}))); // larger than the octets left
    EXPECT_TRUE(Dropped(bytes({0xBA, 0x22, 'a', 0x00})));
}

// ---------------------------------------------------------------------------
// Retry-After, If-Range, Content-MD5, Pragma, X-Wap-Security

TEST(ApiRetryAfter, RelativeAndAbsolute) {
    EXPECT_TRUE(Lines(bytes({0xA5, 0x02, 0x81, 0x9E}), "retry-after:30\n"));
    EXPECT_TRUE(Lines(bytes({0xA5, 0x03, 0x81, 0x01, 0x78}), "retry-after:120\n"));
    EXPECT_TRUE(Lines(cat({bytes({0xA5, 0x06, 0x80}), kSun1994}), "retry-after:" + kSun1994Text + "\n"));
    EXPECT_TRUE(Lines(bytes({0xA5, 0x02, 0x81, 0x9E, 0xA5, 0x02, 0x81, 0x9F}), "retry-after:30\nretry-after:31\n"));
}

TEST(ApiRetryAfter, OverlongValueLengthKeepsTheWrittenLine) {
    EXPECT_TRUE(Lines(cat({bytes({0xA5, 0x03, 0x81, 0x9E, 0x00}), kTail}), "retry-after:30\n" + kTailLine));
}

TEST(ApiRetryAfter, OtherFormsAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0xA5, 0x02, 0x82, 0x9E})));
    EXPECT_TRUE(Dropped(bytes({0xA5, 0x81})));
    EXPECT_TRUE(Dropped(bytes({0xA5, 0x02, 0x01, 0x9E})));
}

TEST(ApiIfRange, DateOrEntityTag) {
    EXPECT_TRUE(Lines(cat({bytes({0x9A}), kSun1994}), "if-range:" + kSun1994Text + "\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x9A}), cstr("\"xyz\"")}), "if-range:\"xyz\"\n"));
    EXPECT_TRUE(Dropped(bytes({0x9A, 0x85})));
}

TEST(ApiContentMd5, EveryOctetCarriesItsOwnPrefix) {
    Bytes b = bytes({0x8F, 0x10});
    for (int i = 0; i < 16; ++i) b.push_back(static_cast<uint8_t>(i));
    std::string v = "0X00X10X20X30X40X50X60X70X80X90XA0XB0XC0XD0XE0XF";
    ASSERT_EQ(v.size(), 48u);
    EXPECT_TRUE(Lines(b, "content-md5:" + v + "\n"));
    Bytes c = bytes({0x8F, 0x10});
    std::string w;
    for (int i = 0; i < 16; ++i) {
        c.push_back(static_cast<uint8_t>(0xF0 + i));
        w += "0XF";
        w += "0123456789ABCDEF"[i];
    }
    EXPECT_TRUE(Lines(c, "content-md5:" + w + "\n"));
}

TEST(ApiContentMd5, OtherLengthsAreDropped) {
    Bytes b = bytes({0x8F, 0x0F});
    for (int i = 0; i < 15; ++i) b.push_back(0x41);
    EXPECT_TRUE(Dropped(b));
    EXPECT_TRUE(Dropped(bytes({0x8F, 0x85})));
}

TEST(ApiPragma, NoCacheAndOneParameter) {
    EXPECT_TRUE(Lines(bytes({0x9F, 0x80}), "pragma:no-cache\n"));
    EXPECT_TRUE(Lines(bytes({0x9F, 0x03, 'x', 0x00, 0x85}), "pragma:x=5\n"));
    EXPECT_TRUE(Lines(bytes({0x9F, 0x03, 'x', 0x00, 0x00}), "pragma:x\n"));
    EXPECT_TRUE(Lines(bytes({0x9F, 0x1F, 0x03, 'x', 0x00, 0x85}), "pragma:x=5\n"));
    EXPECT_TRUE(Lines(bytes({0x9F, 0x80, 0x9F, 0x03, 'x', 0x00, 0x85}), "pragma:no-cache,x=5\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x9F, 0x00}), kTail}), kTailLine));
    // a uintvar length of 0 is an empty run: the one parameter is empty
    EXPECT_TRUE(Lines(cat({bytes({0x9F, 0x1F, 0x00}), kTail}), "pragma:\n" + kTailLine));
}

TEST(ApiPragma, OtherFormsAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0x9F, 0x81})));
    EXPECT_TRUE(Dropped(bytes({0x9F, 0x06, 'x', 0x00, 0x85, 'y', 0x00, 0x86})));
    EXPECT_TRUE(Dropped(cat({bytes({0x9F}), cstr("no-cache")})));
}

TEST(ApiSecurity, CloseSubordinateOnly) {
    EXPECT_TRUE(Lines(bytes({0xC6, 0x80}), "x-wap-security:close-subordinate\n"));
    EXPECT_TRUE(Dropped(bytes({0xC6, 0x81})));
    EXPECT_TRUE(Dropped(bytes({0xC6, 0x01, 0x80})));
}

// ---------------------------------------------------------------------------
// Text values

TEST(ApiText, AllFifteenTextHeaders) {
    const int codes[] = {0x0A, 0x0E, 0x13, 0x15, 0x16, 0x18, 0x19, 0x1C, 0x24, 0x26, 0x28, 0x29, 0x2B, 0x30, 0x31};
    const char *names[] = {"content-base", "content-location", "etag",     "from",       "host",
                           "if-match",     "if-none-match",    "location", "referer",    "server",
                           "upgrade",      "user-agent",       "via",      "x-wap-content-uri",
                           "x-wap-initiator-uri"};
    for (int i = 0; i < 15; ++i) {
        SCOPED_TRACE(names[i]);
        EXPECT_TRUE(Lines(cat({bytes({0x80 | codes[i]}), cstr("a b")}), std::string(names[i]) + ":a b\n"));
    }
}

TEST(ApiText, QuoteAndQuotedForms) {
    EXPECT_TRUE(Lines(bytes({0x8E, 0x7F, 0xC3, 0xA9, 0x00}), "content-location:\xC3\xA9\n"));
    EXPECT_TRUE(Lines(bytes({0x93, 0x22, 'a', 'b', 0x00}), "etag:\"ab\n"));
}

TEST(ApiText, StarIfMatchGetsItsOwnLine) {
    EXPECT_TRUE(Lines(bytes({0x98, '*', 0x00, 0x98, '*', 0x00}), "if-match:*\nif-match:*\n"));
    EXPECT_TRUE(Lines(bytes({0x99, '*', 0x00, 0x99, '*', 0x00}), "if-none-match:*\nif-none-match:*\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x98}), cstr("\"a\""), bytes({0x98}), cstr("\"b\"")}), "if-match:\"a\",\"b\"\n"));
    EXPECT_TRUE(Lines(cat({bytes({0x96}), cstr("a"), bytes({0x96}), cstr("b")}), "host:a,b\n"));
}

TEST(ApiText, TextsUpTo1600Characters) {
    std::string ua(1600, 'u');
    Decoded d = decode(cat({bytes({0xA9}), cstr(ua.c_str()), kTail}), 4, 2048);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "user-agent:" + ua + "\n" + kTailLine);
    ua += 'u';
    d = decode(cat({bytes({0xA9}), cstr(ua.c_str()), kTail}), 4, 2048);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, kTailLine);
}

TEST(ApiText, HeaderThatDoesNotFitIsLostSilently) {
    std::string ua(40, 'u');
    Decoded d = decode(cat({bytes({0xA9}), cstr(ua.c_str()), bytes({0x85, 0x81})}), 4, 24);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_FALSE(d.released);
    EXPECT_EQ(d.text, "age:1\n");
    EXPECT_EQ(d.length, 6);
}

TEST(ApiText, OtherFormsAreDropped) {
    EXPECT_TRUE(Dropped(bytes({0x8E, 0x85})));
    EXPECT_TRUE(Dropped(bytes({0x8E, 0x01, 0x41})));
    EXPECT_TRUE(Dropped(bytes({0xA9, 'a', 0x01, 'b', 0x00})));
}

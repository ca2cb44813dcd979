// wsp_encode_accept, wsp_encode_accept_qlist and the table-shaped wrapper
// wsp_encode_qlist_entry.
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

Encoded accept(const std::string &text, uint8_t version_index = 3, uint16_t size = 200) {
    TextCopy copy(text);
    OutBuffer out(size);
    int status = wsp_encode_accept(0x00, copy.get(), out.get(), version_index);
    return {status, out.written_hex(), out->length};
}

Encoded qlist(uint16_t code, const std::string &text, uint16_t size = 200) {
    TextCopy copy(text);
    OutBuffer out(size);
    int status = wsp_encode_accept_qlist(code, copy.get(), out.get());
    return {status, out.written_hex(), out->length};
}

std::string th(const std::string &s) { return hex(reinterpret_cast<const uint8_t *>(s.data()), s.size()); }
std::string tz(const std::string &s) { return th(s + '\0'); }

} // namespace

// ---- Accept ------------------------------------------------------------------------

TEST(EncodeAccept, AnyMedia) {
    Encoded e = accept("*/*");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "80 80");
}

TEST(EncodeAccept, EveryElementIsAHeaderOfItsOwn) {
    Encoded e = accept(" text/html , text/plain ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "80 82 80 83");
}

TEST(EncodeAccept, ValueIsLowerCased) {
    EXPECT_EQ(accept("TEXT/HTML").out, "80 82");
}

TEST(EncodeAccept, EmptyValueWritesNothing) {
    for (const char *empty : {"", "   ", "\t\r\n"}) {
        Encoded e = accept(empty);
        EXPECT_EQ(e.status, WSP_OK);
        EXPECT_EQ(e.length, 0);
    }
}

TEST(EncodeAccept, EmptyFieldsAreSkipped) {
    EXPECT_EQ(accept(",text/html,,text/plain,").out, "80 82 80 83");
}

TEST(EncodeAccept, OnlyCommasGiveOneEmptyMedia) {
    EXPECT_EQ(accept(",").out, "80 00");
}

TEST(EncodeAccept, VersionIndexAboveThreeIsRefused) {
    Encoded e = accept("*/*", 4);
    EXPECT_EQ(e.status, WSP_ERR_VERSION);
    EXPECT_EQ(e.length, 0);
}

TEST(EncodeAccept, VersionLimitsTheKnownRows) {
    EXPECT_EQ(accept("text/vnd.wap.si", 0).out, "80 AD");
    EXPECT_EQ(accept("application/vnd.wap.sic", 0).out, "80 " + tz("application/vnd.wap.sic"));
    EXPECT_EQ(accept("application/vnd.wap.sic", 1).out, "80 AE");
    EXPECT_EQ(accept("text/vnd.wap.connectivity-xml", 1).out, "80 " + tz("text/vnd.wap.connectivity-xml"));
    EXPECT_EQ(accept("text/vnd.wap.connectivity-xml", 2).out, "80 B5");
    EXPECT_EQ(accept("application/pkcs7-mime", 2).out, "80 " + tz("application/pkcs7-mime"));
    EXPECT_EQ(accept("application/pkcs7-mime", 3).out, "80 B7");
}

TEST(EncodeAccept, LongCodesUseTheListForm) {
    EXPECT_EQ(accept("application/vnd.omaloc-supl-init").out, "80 03 02 03 12");
    EXPECT_EQ(accept("application/vnd.uplanet.cacheop-wbxml").out, "80 03 02 02 01");
}

TEST(EncodeAccept, UnknownMediaWithoutParametersIsPlainText) {
    EXPECT_EQ(accept("x/y").out, "80 " + tz("x/y"));
    EXPECT_EQ(accept("\xE9").out, "80 E9 00");
}

TEST(EncodeAccept, KnownMediaWithParameters) {
    EXPECT_EQ(accept("text/html;level=1").out, "80 03 82 82 9F");
    EXPECT_EQ(accept("text/html; q=0.5").out, "80 03 82 80 33");
    EXPECT_EQ(accept("text/html; q=0.5; charset=utf-8").out, "80 05 82 80 33 81 EA");
}

TEST(EncodeAccept, UnknownMediaWithParametersIsATextString) {
    EXPECT_EQ(accept("x/y;q=0.5").out, "80 06 " + tz("x/y") + " 80 33");
    // The Text-string writer puts the 127 quote before a first octet of 128+.
    // (The second element only gives the scratch its room.)
    EXPECT_EQ(accept("\xE9;q, */*").out, "80 05 7F E9 00 80 00 80 80");
}

TEST(EncodeAccept, LongCodeWithParametersIsALongInteger) {
    EXPECT_EQ(accept("application/vnd.omaloc-supl-init;q=0.5").out, "80 05 02 03 12 80 33");
}

TEST(EncodeAccept, ParametersHaveNoMediaType) {
    // "type" is the old code 0x03; "start" is refused without a media type.
    EXPECT_EQ(accept("multipart/related;type=5").out, "80 " + std::string("14 ") + tz("multipart/related") + " 83 85");
    EXPECT_EQ(accept("*/*;start=x").status, WSP_ERR_FAIL);
}

TEST(EncodeAccept, ParametersFollowTheVersion) {
    // "comment" is code 0x0C from 1.3 on, untyped before.
    EXPECT_EQ(accept("*/*;comment=x", 1).out, "80 0B 80 " + tz("comment") + " " + tz("x"));
    EXPECT_EQ(accept("*/*;comment=x", 2).out, "80 04 80 8C " + tz("x"));
}

TEST(EncodeAccept, MalformedQFails) {
    Encoded e = accept("text/html, text/plain;q=2");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.out, "80 82 80"); // what was written stays
}

TEST(EncodeAccept, CodeOctetFillingTheOutputFails) {
    Encoded e = accept("*/*", 3, 1);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.out, "80");
    EXPECT_EQ(accept("*/*", 3, 2).status, WSP_ERR_FAIL); // the media octet is the last
    Encoded exact = accept("*/*", 3, 3);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.out, "80 80");
}

TEST(EncodeAccept, MediaCodeFillingTheOutputFails) {
    // The media's Short-integer may not take the last byte either.
    Encoded e = accept("*/*, */*", 3, 4);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 4);
}

TEST(EncodeAccept, GeneralFormNeedsRoom) {
    Encoded e = accept("text/html;q=0.5", 3, 4);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 2); // code and length octet are counted
    EXPECT_EQ(accept("text/html;q=0.5", 3, 5).status, WSP_OK);
}

TEST(EncodeAccept, ScratchIsSizedOnTheWholeValue) {
    // "a;x": 5 octets ("a", NUL, "x", NUL, 00) need more than the element's
    // own length; the whole value gives the room.
    Encoded e = accept("a;x, text/html");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "80 05 " + tz("a") + " " + tz("x") + " 00 80 82");
    EXPECT_EQ(accept("a;x").status, WSP_ERR_FAIL);
}

TEST(EncodeAccept, NullArgumentsAreRefused) {
    OutBuffer out(4);
    EXPECT_EQ(wsp_encode_accept(0, nullptr, out.get(), 3), WSP_ERR_FAIL);
    TextCopy text("*/*");
    EXPECT_EQ(wsp_encode_accept(0, text.get(), nullptr, 3), WSP_ERR_FAIL);
}

// ---- Accept-Charset, Accept-Language, Accept-Encoding --------------------------------

TEST(EncodeQList, UnsupportedCodeIsRefused) {
    for (uint16_t code : {uint16_t{0x00}, uint16_t{0x02}, uint16_t{0x04}, uint16_t{0x3D}, uint16_t{0x101}}) {
        Encoded e = qlist(code, "gzip");
        EXPECT_EQ(e.status, WSP_ERR_FAIL) << code;
        EXPECT_EQ(e.length, 0) << code;
    }
}

TEST(EncodeQList, AcceptEncodingExample) {
    Encoded e = qlist(0x3C, "gzip, *;q=0.5");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "BC 80 BC 02 83 33");
}

TEST(EncodeQList, AcceptEncodingCodings) {
    EXPECT_EQ(qlist(0x3C, "compress, DEFLATE").out, "BC 81 BC 82");
    EXPECT_EQ(qlist(0x3C, "identity").out, "BC " + tz("identity"));
    EXPECT_EQ(qlist(0x3C, "*").out, "BC 83");
}

TEST(EncodeQList, AcceptCharsetByName) {
    EXPECT_EQ(qlist(0x01, "utf-8").out, "81 EA");
    EXPECT_EQ(qlist(0x01, "ISO-8859-1").out, "81 84");
    EXPECT_EQ(qlist(0x3B, "us-ascii").out, "BB 83");
}

TEST(EncodeQList, CharsetAboveOneHundredTwentySevenUsesTheListForm) {
    EXPECT_EQ(qlist(0x01, "big5").out, "81 03 02 07 EA");
}

TEST(EncodeQList, StarIsAnyCharsetOnlyForTheNewCode) {
    EXPECT_EQ(qlist(0x3B, "*").out, "BB 80");
    EXPECT_EQ(qlist(0x01, "*").out, "81 2A 00");
}

TEST(EncodeQList, AcceptLanguageSearchesCodesThenNames) {
    EXPECT_EQ(qlist(0x03, "en").out, "83 99");
    EXPECT_EQ(qlist(0x03, "English").out, "83 99");
    EXPECT_EQ(qlist(0x03, "po").out, "83 D8");
    EXPECT_EQ(qlist(0x03, "pl").out, "83 " + tz("pl"));
    EXPECT_EQ(qlist(0x03, "nauru").out, "83 02 01 81");
    EXPECT_EQ(qlist(0x03, "rm").out, "83 02 01 8C");
}

TEST(EncodeQList, EmptyValue) {
    EXPECT_EQ(qlist(0x01, "").status, WSP_ERR_ARG);
    EXPECT_EQ(qlist(0x03, "  ").status, WSP_ERR_ARG);
    Encoded charset = qlist(0x3B, "");
    EXPECT_EQ(charset.status, WSP_OK);
    EXPECT_EQ(charset.length, 0);
    Encoded encoding = qlist(0x3C, " ");
    EXPECT_EQ(encoding.status, WSP_OK);
    EXPECT_EQ(encoding.length, 0);
}

TEST(EncodeQList, QParameter) {
    EXPECT_EQ(qlist(0x01, "utf-8;q=0.5").out, "81 02 EA 33");
    EXPECT_EQ(qlist(0x01, "utf-8; Q = 0.333").out, "81 03 EA 83 31");
    EXPECT_EQ(qlist(0x01, "utf-8;q").out, "81 02 EA 00");
    EXPECT_EQ(qlist(0x01, "utf-8;q=1").out, "81 02 EA 00");
    EXPECT_EQ(qlist(0x03, "en;q=0.7, fr").out, "83 02 99 47 83 A2");
}

TEST(EncodeQList, UnknownItemWithQIsATextString) {
    EXPECT_EQ(qlist(0x01, "x-foo;q=0.5").out, "81 07 " + tz("x-foo") + " 33");
    EXPECT_EQ(qlist(0x03, "\xE9;q").out, "83 04 7F E9 00 00");
}

TEST(EncodeQList, UnknownItemWithoutParametersIsPlainText) {
    EXPECT_EQ(qlist(0x03, "x-klingon").out, "83 " + tz("x-klingon"));
    EXPECT_EQ(qlist(0x03, "\xE9").out, "83 E9 00");
}

TEST(EncodeQList, ParameterOtherThanQFails) {
    EXPECT_EQ(qlist(0x01, "utf-8;level=1").status, WSP_ERR_FAIL);
    EXPECT_EQ(qlist(0x3C, "gzip;foo").status, WSP_ERR_FAIL);
    EXPECT_EQ(qlist(0x3B, "utf-8; ;q").status, WSP_ERR_FAIL);
}

TEST(EncodeQList, MalformedQFails) {
    EXPECT_EQ(qlist(0x01, "utf-8;q=2").status, WSP_ERR_FAIL);
    EXPECT_EQ(qlist(0x3C, "gzip;q=1.5").status, WSP_ERR_FAIL);
}

TEST(EncodeQList, SecondParameterFailsForTheOldCodesOnly) {
    EXPECT_EQ(qlist(0x01, "utf-8;q=0.5;q=0.3").status, WSP_ERR_FAIL);
    EXPECT_EQ(qlist(0x03, "en;q;q").status, WSP_ERR_FAIL);
    EXPECT_EQ(qlist(0x3B, "utf-8;q=0.5;q=0.3").out, "BB 03 EA 33 1F");
    EXPECT_EQ(qlist(0x3C, "gzip;q;q=0.5").out, "BC 03 80 00 33");
}

TEST(EncodeQList, CodeOctetFillingTheOutputFails) {
    Encoded e = qlist(0x01, "utf-8", 1);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.out, "81");
    EXPECT_EQ(qlist(0x01, "utf-8", 2).status, WSP_ERR_FAIL); // the item's octet is the last
    EXPECT_EQ(qlist(0x01, "utf-8", 3).out, "81 EA");
}

TEST(EncodeQList, LongItemTestsRoomFirst) {
    Encoded e = qlist(0x01, "big5", 4);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 1);
    EXPECT_EQ(qlist(0x01, "big5", 5).status, WSP_OK);
}

TEST(EncodeQList, NullArgumentsAreRefused) {
    OutBuffer out(4);
    EXPECT_EQ(wsp_encode_accept_qlist(0x01, nullptr, out.get()), WSP_ERR_FAIL);
    TextCopy text("utf-8");
    EXPECT_EQ(wsp_encode_accept_qlist(0x01, text.get(), nullptr), WSP_ERR_FAIL);
}

TEST(EncodeQListEntry, ForwardsToTheListEncoder) {
    TextCopy text("gzip, *;q=0.5");
    OutBuffer out(20);
    EXPECT_EQ(wsp_encode_qlist_entry(0x3C, text.get(), out.get(), 0), WSP_OK);
    EXPECT_EQ(out.written_hex(), "BC 80 BC 02 83 33");
    TextCopy empty("");
    OutBuffer none(4);
    EXPECT_EQ(wsp_encode_qlist_entry(0x01, empty.get(), none.get(), 3), WSP_ERR_ARG);
    TextCopy bad("x");
    EXPECT_EQ(wsp_encode_qlist_entry(0x02, bad.get(), none.get(), 3), WSP_ERR_FAIL);
}

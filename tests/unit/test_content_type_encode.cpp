// wsp_encode_content, wsp_write_media_code and wsp_write_general_form.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "encode/encode.h"
#include "encode/scratch.h"
#include "wsp_test_support.h"

using wsp_test::bytes;
using wsp_test::hex;
using wsp_test::OutBuffer;

namespace {

struct Encoded {
    int status;
    std::string out;
    uint16_t length;
};

Encoded encode(const char *text, const char *version, uint16_t size = 200) {
    OutBuffer out(size);
    int status = wsp_encode_content(text, out.get(), version);
    return {status, out.written_hex(), out->length};
}

std::string text_hex(const std::string &s) { return hex(reinterpret_cast<const uint8_t *>(s.data()), s.size()); }

} // namespace

// ---- versions ---------------------------------------------------------------

TEST(EncodeContent, UnknownVersionIsRefusedBeforeAnythingIsWritten) {
    Encoded e = encode("text/plain", "1.5");
    EXPECT_EQ(e.status, WSP_ERR_VERSION);
    EXPECT_EQ(e.length, 0);
    EXPECT_EQ(encode("text/plain", "1.4 ").status, WSP_ERR_VERSION);
    EXPECT_EQ(encode("text/plain", "").status, WSP_ERR_VERSION);
    EXPECT_EQ(encode(nullptr, "1.0").status, WSP_ERR_VERSION);
}

TEST(EncodeContent, NullVersionIsAnUnknownVersion) {
    EXPECT_EQ(encode("text/plain", nullptr).status, WSP_ERR_VERSION);
}

TEST(EncodeContent, NullOutputIsRefused) {
    EXPECT_EQ(wsp_encode_content("text/plain", nullptr, "1.1"), WSP_ERR_FAIL);
    wsp_buffer no_data{};
    no_data.size = 10;
    EXPECT_EQ(wsp_encode_content("text/plain", &no_data, "1.1"), WSP_ERR_FAIL);
}

// ---- empty values -----------------------------------------------------------

TEST(EncodeContent, NullTextWritesASingleZero) {
    Encoded e = encode(nullptr, "1.1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "00");
}

TEST(EncodeContent, EmptyTextWritesASingleZero) {
    Encoded e = encode("", "1.3");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "00");
}

TEST(EncodeContent, EmptyValueNeedsRoomForItsOctet) {
    OutBuffer out(2);
    out->length = 2;
    EXPECT_EQ(wsp_encode_content(nullptr, out.get(), "1.1"), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 2);
    OutBuffer exact(1);
    EXPECT_EQ(wsp_encode_content("", exact.get(), "1.1"), WSP_OK);
    EXPECT_EQ(exact.written_hex(), "00");
}

TEST(EncodeContent, OnlySemicolonsGiveAnEmptyExtensionMedia) {
    Encoded e = encode(";", "1.4");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "00");
}

// ---- well-known media without parameters -------------------------------------

TEST(EncodeContent, KnownMediaIsAShortInteger) {
    Encoded e = encode("text/plain", "1.1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "83");
    EXPECT_EQ(encode("*/*", "1.1").out, "80");
}

TEST(EncodeContent, MediaNamesMatchWithoutRegardToCaseAndAreTrimmed) {
    EXPECT_EQ(encode("TEXT/HTML", "1.1").out, "82");
    EXPECT_EQ(encode("  Text/Html \t", "1.1").out, "82");
}

TEST(EncodeContent, TrailingSemicolonIsNoParameter) {
    Encoded e = encode("text/plain;", "1.1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "83");
}

TEST(EncodeContent, VersionLimitsDecideWhichRowsAreCodes) {
    // 1.1: 46 rows (0x00..0x2D), 1.2: 53, 1.3: 55, 1.4: all 82.
    EXPECT_EQ(encode("text/vnd.wap.si", "1.1").out, "AD");
    EXPECT_EQ(encode("application/vnd.wap.sic", "1.1").out, text_hex(std::string("application/vnd.wap.sic") + '\0'));
    EXPECT_EQ(encode("application/vnd.wap.sic", "1.2").out, "AE");
    EXPECT_EQ(encode("application/vnd.wap.sia", "1.1").out, text_hex(std::string("application/vnd.wap.sia") + '\0'));
    EXPECT_EQ(encode("application/vnd.wap.sia", "1.2").out, "B4");
    EXPECT_EQ(encode("text/vnd.wap.connectivity-xml", "1.2").out,
              text_hex(std::string("text/vnd.wap.connectivity-xml") + '\0'));
    EXPECT_EQ(encode("text/vnd.wap.connectivity-xml", "1.3").out, "B5");
    EXPECT_EQ(encode("application/vnd.wap.connectivity-wbxml", "1.3").out, "B6");
    EXPECT_EQ(encode("application/pkcs7-mime", "1.3").out, text_hex(std::string("application/pkcs7-mime") + '\0'));
    EXPECT_EQ(encode("application/pkcs7-mime", "1.4").out, "B7");
    EXPECT_EQ(encode("application/x-agps", "1.4").out, "FF");
    EXPECT_EQ(encode("application/vnd.syncml.dm+wbxml", "1.4").out, "C2");
}

TEST(EncodeContent, HashedCertificateRowKeepsItsSpelling) {
    EXPECT_EQ(encode("application/vnd.wap.hashed-certifiate", "1.4").out, "B8");
    std::string restored = "application/vnd.wap.hashed-certificate";
    EXPECT_EQ(encode(restored.c_str(), "1.4").out, text_hex(restored + '\0'));
}

TEST(EncodeContent, ShortIntegerThatFillsTheOutputIsRefused) {
    Encoded e = encode("text/plain", "1.1", 1);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.out, "83"); // written and counted, then refused
    EXPECT_EQ(e.length, 1);
    Encoded room = encode("text/plain", "1.1", 2);
    EXPECT_EQ(room.status, WSP_OK);
    EXPECT_EQ(room.out, "83");
}

// ---- codes above 127 without parameters --------------------------------------

TEST(EncodeContent, LongCodeCopiesFromPositionNOfTheScratch) {
    // Deliberate: 03, then the two zero octets after the Long-integer, then
    // the zeroed octet past the 5-byte area.
    Encoded e = encode("application/vnd.omaloc-supl-init", "1.4");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "03 00 00 00");
    EXPECT_EQ(encode("application/vnd.uplanet.cacheop-wbxml", "1.4").out, "03 00 00 00");
    EXPECT_EQ(encode("application/vnd.nokia.syncset+wbxml", "1.4").out, "03 00 00 00");
}

TEST(EncodeContent, LongCodeRowsAreTextBeforeVersionOnePointFour) {
    std::string media = "application/vnd.omaloc-supl-init";
    EXPECT_EQ(encode(media.c_str(), "1.3").out, text_hex(media + '\0'));
}

TEST(EncodeContent, LongCodeTestsRoomForAllOctetsFirst) {
    Encoded e = encode("application/vnd.omaloc-supl-init", "1.4", 3);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
    Encoded exact = encode("application/vnd.omaloc-supl-init", "1.4", 4);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.out, "03 00 00 00");
}

// ---- Extension-media ----------------------------------------------------------

TEST(EncodeContent, UnknownMediaIsPlainTextWithoutQuote) {
    Encoded e = encode("application/x-foo", "1.4");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, text_hex(std::string("application/x-foo") + '\0'));
    // A first octet of 128 or above gets no 127 quote.
    EXPECT_EQ(encode("\xE9x", "1.4").out, "E9 78 00");
}

TEST(EncodeContent, UnknownMediaWithForbiddenOctetFails) {
    EXPECT_EQ(encode("a\x01" "b", "1.4").status, WSP_ERR_FAIL);
}

TEST(EncodeContent, UnknownMediaNeedsRoomForTextAndNul) {
    EXPECT_EQ(encode("abc", "1.1", 3).status, WSP_ERR_FAIL);
    Encoded exact = encode("abc", "1.1", 4);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.out, "61 62 63 00");
}

TEST(EncodeContent, LongTextIsCopiedToTheHeapAndLeftUnchanged) {
    std::string media(300, 'a');
    std::string text = media + "; charset=utf-8";
    // The caller's text is const and stays as it was.
    std::string before = text;
    OutBuffer out(400);
    EXPECT_EQ(wsp_encode_content(media.c_str(), out.get(), "1.4"), WSP_OK);
    EXPECT_EQ(out.written_hex(), text_hex(media + '\0'));
    OutBuffer with_params(400);
    // 301 + 2 octets do not fit the 150-byte value scratch.
    EXPECT_EQ(wsp_encode_content(text.c_str(), with_params.get(), "1.4"), WSP_ERR_FAIL);
    EXPECT_EQ(text, before);
}

TEST(EncodeContent, CallersTextIsNotModified) {
    const std::string original = "Text/Plain; Charset=UTF-8; q=0.5";
    std::string text = original;
    OutBuffer out(50);
    EXPECT_EQ(wsp_encode_content(text.c_str(), out.get(), "1.4"), WSP_OK);
    EXPECT_EQ(text, original);
}

// ---- with parameters ------------------------------------------------------------

TEST(EncodeContent, CharsetParameterInGeneralForm) {
    Encoded e = encode("Text/Plain; charset=UTF-8", "1.3");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "03 83 81 EA");
}

TEST(EncodeContent, SeveralParametersAreTrimmedAndKeptInOrder) {
    Encoded e = encode("text/plain ;  charset = utf-8 ;level=1.2 ", "1.1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "05 83 81 EA 82 92");
}

TEST(EncodeContent, UnknownCharsetGoesOutUntyped) {
    Encoded e = encode("text/plain; charset=foo", "1.1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "0D 83 " + text_hex(std::string("charset") + '\0') + " 66 6F 6F 00");
}

TEST(EncodeContent, MultipartRelatedTypeAndStart) {
    Encoded e = encode("multipart/related; type=application/xml; start=<part1>", "1.4");
    EXPECT_EQ(e.status, WSP_OK);
    // multipart/related has no row: Extension-media text.  "type" is 0x09
    // with 0xA7, "start" 0x19 with the brackets turned into quotes.
    std::string expected = "1C " + text_hex(std::string("multipart/related") + '\0') + " 89 A7 99 22 " +
                           text_hex(std::string("part1") + '\0');
    EXPECT_EQ(e.out, expected);
}

TEST(EncodeContent, TypeOutsideMultipartRelatedIsTheOldCode) {
    Encoded e = encode("text/html; type=5", "1.4");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "03 82 83 85");
}

TEST(EncodeContent, StartOutsideMultipartRelatedFails) {
    EXPECT_EQ(encode("text/html; start=x", "1.4").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("text/html; start-info=x", "1.4").status, WSP_ERR_FAIL);
}

TEST(EncodeContent, StartIsUntypedWhereTheVersionDoesNotAdmitItsCode) {
    // 1.1 admits parameter codes 0x00..0x08 only.
    Encoded e = encode("text/html; start=x", "1.1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "09 82 " + text_hex(std::string("start") + '\0') + " 78 00");
}

TEST(EncodeContent, KnownLongCodeWithParametersIsALongInteger) {
    Encoded e = encode("application/vnd.omaloc-supl-init; x=1", "1.4");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "06 02 03 12 78 00 81");
}

TEST(EncodeContent, UnknownMediaWithParametersIsPlainText) {
    Encoded e = encode("\xE9; q", "1.4");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "04 E9 00 80 00");
}

TEST(EncodeContent, EmptyParameterFails) {
    EXPECT_EQ(encode("text/plain; ", "1.4").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("text/plain;;", "1.4").status, WSP_ERR_FAIL);
}

TEST(EncodeContent, QuotedSemicolonStaysInTheParameter) {
    Encoded e = encode("text/plain; name=\"a;b\"", "1.1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "08 83 85 22 61 3B 62 22 00");
}

TEST(EncodeContent, ParameterFailureIsMinus214) {
    EXPECT_EQ(encode("text/plain; q=2.0", "1.4").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("text/plain; a b=1", "1.4").status, WSP_ERR_FAIL);
}

TEST(EncodeContent, GeneralFormNeedsRoomForLengthAndValue) {
    Encoded exact = encode("text/plain; charset=utf-8", "1.1", 4);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.out, "03 83 81 EA");
    // The length octet is written and counted before the room test.
    OutBuffer out(3);
    EXPECT_EQ(wsp_encode_content("text/plain; charset=utf-8", out.get(), "1.1"), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 1);
    EXPECT_EQ(hex(out->data, 1), "03");
}

TEST(EncodeContent, WholeValueMustFitOneHundredFiftyOctets) {
    // media (1) + name code (1) + Text-string (147 + NUL) = 150 octets.
    std::string name(147, 'n');
    Encoded fits = encode(("text/plain; name=" + name).c_str(), "1.1");
    EXPECT_EQ(fits.status, WSP_OK);
    EXPECT_EQ(fits.out, "1F 81 16 83 85 " + text_hex(name + '\0'));
    Encoded over = encode(("text/plain; name=" + name + "n").c_str(), "1.1");
    EXPECT_EQ(over.status, WSP_ERR_FAIL);
    EXPECT_EQ(over.length, 0);
}

TEST(EncodeContent, LongValueLengthUsesLengthQuote) {
    std::string name(40, 'n');
    Encoded e = encode(("text/plain; name=" + name).c_str(), "1.1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "1F 2B 83 85 " + text_hex(name + '\0'));
}

// ---- wsp_write_media_code (the list encoders' form) -------------------------------

TEST(WriteMediaCode, ShortCodes) {
    OutBuffer out(4);
    EXPECT_EQ(wsp_write_media_code(0x03, out.get()), WSP_OK);
    EXPECT_EQ(wsp_write_media_code(0x7F, out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "83 FF");
}

TEST(WriteMediaCode, LongCodesCopyTheLongIntegerFromItsStart) {
    OutBuffer out(20);
    EXPECT_EQ(wsp_write_media_code(0x201, out.get()), WSP_OK);
    EXPECT_EQ(wsp_write_media_code(0x312, out.get()), WSP_OK);
    EXPECT_EQ(wsp_write_media_code(0x81, out.get()), WSP_OK);
    EXPECT_EQ(wsp_write_media_code(0x12345678, out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "03 02 02 01 03 02 03 12 02 01 81 05 04 12 34 56 78");
}

TEST(WriteMediaCode, RoomForAllOctetsIsTestedFirst) {
    OutBuffer out(3);
    EXPECT_EQ(wsp_write_media_code(0x312, out.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
    OutBuffer exact(4);
    EXPECT_EQ(wsp_write_media_code(0x312, exact.get()), WSP_OK);
    EXPECT_EQ(exact.written_hex(), "03 02 03 12");
}

TEST(WriteMediaCode, ShortCodeFillingTheOutputIsRefused) {
    OutBuffer out(1);
    EXPECT_EQ(wsp_write_media_code(0x03, out.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 1);
    EXPECT_EQ(wsp_write_media_code(0x03, nullptr), WSP_ERR_FAIL);
}

// ---- wsp_write_general_form -----------------------------------------------------

TEST(WriteGeneralForm, ShortLength) {
    wsp_scratch scratch(10);
    wsp_buffer *s = scratch.get();
    s->data[0] = 0x83;
    s->data[1] = 0x81;
    s->data[2] = 0xEA;
    s->length = 3;
    OutBuffer out(4);
    EXPECT_EQ(wsp_write_general_form(out.get(), s), WSP_OK);
    EXPECT_EQ(out.written_hex(), "03 83 81 EA");
}

TEST(WriteGeneralForm, ThirtyOctetsStillShortLength) {
    wsp_scratch scratch(40);
    scratch.get()->length = 30;
    OutBuffer out(31);
    EXPECT_EQ(wsp_write_general_form(out.get(), scratch.get()), WSP_OK);
    EXPECT_EQ(out->length, 31);
    EXPECT_EQ(out->data[0], 30);
}

TEST(WriteGeneralForm, ThirtyOneOctetsUseLengthQuote) {
    wsp_scratch scratch(40);
    scratch.get()->length = 31;
    scratch.get()->data[30] = 0xAB;
    OutBuffer out(33);
    EXPECT_EQ(wsp_write_general_form(out.get(), scratch.get()), WSP_OK);
    EXPECT_EQ(out->length, 33);
    EXPECT_EQ(hex(out->data, 2), "1F 1F");
    EXPECT_EQ(out->data[32], 0xAB);
}

TEST(WriteGeneralForm, LengthOctetsStayCountedWhenTheValueDoesNotFit) {
    wsp_scratch scratch(10);
    scratch.get()->length = 3;
    OutBuffer out(3);
    EXPECT_EQ(wsp_write_general_form(out.get(), scratch.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 1);
    EXPECT_EQ(out->data[0], 3);
}

TEST(WriteGeneralForm, EmptyScratchWritesOnlyTheLength) {
    wsp_scratch scratch(4);
    OutBuffer out(2);
    EXPECT_EQ(wsp_write_general_form(out.get(), scratch.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "00");
}

TEST(WriteGeneralForm, NullArgumentsAreRefused) {
    wsp_scratch scratch(4);
    OutBuffer out(2);
    EXPECT_EQ(wsp_write_general_form(nullptr, scratch.get()), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_write_general_form(out.get(), nullptr), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// Header value encoders: numbers and texts (Age, Content-Length, Server...),
// Accept-Encoding on its older code, the table-driven token lists and Allow.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

using Encoded = EncodeResult;

Encoded run(wsp_header_encoder encoder, uint8_t code, const std::string &value, uint16_t size = 64,
            uint8_t version = 3) {
    return encode_value(encoder, code, value, size, version);
}

std::string text_header(uint8_t code_octet, const char *text) {
    return hex(cat({bytes({code_octet}), text_bytes(text), bytes({0})}));
}

} // namespace

// ---- number or text ----

TEST(NumberOrText, AgeIsTrimmedAndWrittenAsLongInteger) {
    Encoded e = run(wsp_encode_number_or_text, 0x05, "   300");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "85 02 01 2C");
}

TEST(NumberOrText, SmallAgeIsAShortInteger) {
    Encoded e = run(wsp_encode_number_or_text, 0x05, "30");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "85 9E");
}

TEST(NumberOrText, ContentLengthTakesHexadecimal) {
    Encoded e = run(wsp_encode_number_or_text, 0x0D, " 0x1F ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "8D 9F");
}

TEST(NumberOrText, MaxForwardsIsAnInteger) {
    Encoded e = run(wsp_encode_number_or_text, 0x1E, "10");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "9E 8A");
}

TEST(NumberOrText, LongHexadecimalNumberBecomesALongInteger) {
    Encoded e = run(wsp_encode_number_or_text, 0x0D, "0x1FFFFFFFFF");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "8D 05 1F FF FF FF FF");
}

TEST(NumberOrText, NonNumericIntegerHeaderIsZero) {
    Encoded e = run(wsp_encode_number_or_text, 0x05, "abc");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "85 80");
}

TEST(NumberOrText, DecimalOverflowFails) {
    Encoded e = run(wsp_encode_number_or_text, 0x05, "99999999999");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
}

TEST(NumberOrText, TextHeaderKeepsCommasAndIsTrimmed) {
    Encoded e = run(wsp_encode_number_or_text, 0x0E, " \thttp://a/b, c \r\n");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, text_header(0x8E, "http://a/b, c"));
}

TEST(NumberOrText, TextHeaderKeepsItsCase) {
    Encoded e = run(wsp_encode_number_or_text, 0x29, "Mozilla/5.0 (X)");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, text_header(0xA9, "Mozilla/5.0 (X)"));
}

TEST(NumberOrText, TextWithHighFirstOctetGetsTheQuote) {
    Encoded e = run(wsp_encode_number_or_text, 0x26, "\xE9t\xE9");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A6 7F E9 74 E9 00");
}

TEST(NumberOrText, EmptyTextIsAnEmptyTextString) {
    Encoded e = run(wsp_encode_number_or_text, 0x16, "  ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "96 00");
}

TEST(NumberOrText, ControlCharacterInTextFails) {
    Encoded e = run(wsp_encode_number_or_text, 0x15, "a\x01" "b");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 1);
}

TEST(NumberOrText, EveryTextCodeWritesItsOwnCodeOctet) {
    const uint8_t codes[] = {0x0A, 0x0E, 0x13, 0x15, 0x16, 0x1C, 0x24, 0x26, 0x29, 0x30, 0x31};
    for (uint8_t code : codes) {
        Encoded e = run(wsp_encode_number_or_text, code, "x");
        EXPECT_EQ(e.status, WSP_OK) << int(code);
        EXPECT_EQ(e.hex, text_header(static_cast<uint8_t>(code | 0x80), "x")) << int(code);
    }
}

TEST(NumberOrText, TextExactlyFillingTheOutputSucceeds) {
    Encoded e = run(wsp_encode_number_or_text, 0x26, "ab", 4);
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A6 61 62 00");
}

TEST(NumberOrText, TextOneByteShortFails) {
    Encoded e = run(wsp_encode_number_or_text, 0x26, "ab", 3);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "A6");
}

TEST(NumberOrText, ShortIntegerMayNotFillTheOutput) {
    // The Short-integer writer never fills a buffer to its last byte.
    EXPECT_EQ(run(wsp_encode_number_or_text, 0x05, "5", 2).status, WSP_ERR_FAIL);
    Encoded e = run(wsp_encode_number_or_text, 0x05, "5", 3);
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "85 85");
}

TEST(NumberOrText, CodeOctetFillingTheOutputFails) {
    Encoded e = run(wsp_encode_number_or_text, 0x26, "ab", 1);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_number_or_text, 0x26, "ab", 0).length, 0);
}

TEST(NumberOrText, NullValueFailsWithoutWriting) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_number_or_text(0x05, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(NumberOrText, WritesAfterOffsetAndExistingLength) {
    TextCopy text("7");
    OutBuffer out(8, 2);
    out->length = 1;
    EXPECT_EQ(wsp_encode_number_or_text(0x05, text.get(), out.get(), 3), WSP_OK);
    EXPECT_EQ(out->length, 3);
    EXPECT_EQ(out.written_hex(), "00 85 87");
}

// ---- Accept-Encoding (older code) ----

TEST(AcceptEncoding, KnownCodingsAreShortIntegersOneHeaderEach) {
    Encoded e = run(wsp_encode_accept_encoding, 0x02, "gzip, compress,deflate");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "82 80 82 81 82 82");
}

TEST(AcceptEncoding, ValueIsLowerCasedAndUnknownCodingIsAToken) {
    Encoded e = run(wsp_encode_accept_encoding, 0x02, " GZip , X-Foo ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "82 80 " + hex(cat({bytes({0x82}), text_bytes("x-foo"), bytes({0})})));
}

TEST(AcceptEncoding, QualityValueFailsInTheTokenWriter) {
    Encoded e = run(wsp_encode_accept_encoding, 0x02, "gzip;q=0.5");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 1);
}

TEST(AcceptEncoding, EmptyValueFails) {
    EXPECT_EQ(run(wsp_encode_accept_encoding, 0x02, "").status, WSP_ERR_FAIL);
    Encoded e = run(wsp_encode_accept_encoding, 0x02, " \t ");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
}

TEST(AcceptEncoding, CommaOnlyIsOneEmptyToken) {
    Encoded e = run(wsp_encode_accept_encoding, 0x02, ",");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "82 00");
}

TEST(AcceptEncoding, EmptyFieldsAreSkipped) {
    Encoded e = run(wsp_encode_accept_encoding, 0x02, ",,gzip,,deflate");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "82 80 82 82");
}

TEST(AcceptEncoding, OutputBounds) {
    EXPECT_EQ(run(wsp_encode_accept_encoding, 0x02, "gzip", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_accept_encoding, 0x02, "gzip", 3).status, WSP_OK);
    Encoded e = run(wsp_encode_accept_encoding, 0x02, "gzip, deflate", 3);
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "82 80 82");
}

TEST(AcceptEncoding, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_accept_encoding(0x02, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- token lists ----

TEST(TokenList, AcceptRangesUnits) {
    EXPECT_EQ(run(wsp_encode_token_list, 0x04, "bytes").hex, "84 81");
    EXPECT_EQ(run(wsp_encode_token_list, 0x04, "None").hex, "84 80");
    Encoded e = run(wsp_encode_token_list, 0x04, "x-unit");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, text_header(0x84, "x-unit"));
}

TEST(TokenList, AcceptRangesNoneAfterAnotherUnitIsAccepted) {
    Encoded e = run(wsp_encode_token_list, 0x04, "bytes, none");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "84 81 84 80");
}

TEST(TokenList, AcceptRangesNoneFirstMustStandAlone) {
    Encoded e = run(wsp_encode_token_list, 0x04, "none, bytes");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "84 80");
    EXPECT_EQ(run(wsp_encode_token_list, 0x04, "NONE,x").status, WSP_ERR_FAIL);
}

TEST(TokenList, ConnectionClose) {
    EXPECT_EQ(run(wsp_encode_token_list, 0x09, "Close").hex, "89 80");
    Encoded e = run(wsp_encode_token_list, 0x09, "close, Keep-Alive");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "89 80 " + text_header(0x89, "keep-alive"));
}

TEST(TokenList, ContentEncoding) {
    Encoded e = run(wsp_encode_token_list, 0x0B, "GZIP, deflate, compress");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "8B 80 8B 82 8B 81");
}

TEST(TokenList, ContentLanguageSearchesCodesThenNames) {
    EXPECT_EQ(run(wsp_encode_token_list, 0x0C, "en").hex, "8C 99");
    EXPECT_EQ(run(wsp_encode_token_list, 0x0C, "English").hex, "8C 99");
    Encoded e = run(wsp_encode_token_list, 0x0C, "x-klingon");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, text_header(0x8C, "x-klingon"));
}

TEST(TokenList, ContentLanguageCodeAbove127IsALongInteger) {
    Encoded e = run(wsp_encode_token_list, 0x0C, "na, nauru, fo");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "8C 01 81 8C 01 81 8C 01 82");
}

TEST(TokenList, PublicMethodsAreMatchedAsWritten) {
    Encoded e = run(wsp_encode_token_list, 0x22, "GET, POST,PUT");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A2 C0 A2 E0 A2 E1");
    Encoded lower = run(wsp_encode_token_list, 0x22, "Get");
    EXPECT_EQ(lower.status, WSP_OK);
    EXPECT_EQ(lower.hex, text_header(0xA2, "Get"));
}

TEST(TokenList, TransferEncodingChunked) {
    EXPECT_EQ(run(wsp_encode_token_list, 0x27, "Chunked").hex, "A7 80");
    EXPECT_EQ(run(wsp_encode_token_list, 0x27, "gzip").hex, text_header(0xA7, "gzip"));
}

TEST(TokenList, OtherCodeIsRefusedWithoutWriting) {
    Encoded e = run(wsp_encode_token_list, 0x05, "bytes");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
    EXPECT_EQ(run(wsp_encode_token_list, 0x02, "gzip").status, WSP_ERR_FAIL);
}

TEST(TokenList, EmptyValueFails) {
    Encoded e = run(wsp_encode_token_list, 0x09, "   ");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
}

TEST(TokenList, ElementThatIsNoTokenFails) {
    EXPECT_EQ(run(wsp_encode_token_list, 0x0B, "x y").status, WSP_ERR_FAIL);
}

TEST(TokenList, OutputBounds) {
    EXPECT_EQ(run(wsp_encode_token_list, 0x09, "close", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_token_list, 0x09, "close", 3).status, WSP_OK);
    // Token text may fill the buffer exactly.
    Encoded e = run(wsp_encode_token_list, 0x09, "ab", 4);
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "89 61 62 00");
    EXPECT_EQ(run(wsp_encode_token_list, 0x09, "ab", 3).status, WSP_ERR_FAIL);
}

TEST(TokenList, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_token_list(0x09, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- Allow ----

TEST(Allow, MethodNameAndHexadecimalNumber) {
    Encoded e = run(wsp_encode_allow, 0x06, "GET, 0x41");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "86 C0 86 C1");
}

TEST(Allow, LowerCaseMethodFails) {
    Encoded e = run(wsp_encode_allow, 0x06, "get");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "86");
}

TEST(Allow, EveryMethodRow) {
    Encoded e = run(wsp_encode_allow, 0x06, "GET,OPTIONS,HEAD,DELETE,TRACE,POST,PUT");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "86 C0 86 C1 86 C2 86 C3 86 C4 86 E0 86 E1");
}

TEST(Allow, NumbersFrom64To127) {
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "64").hex, "86 C0");
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "127").hex, "86 FF");
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "0X7f").hex, "86 FF");
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "0x40").hex, "86 C0");
}

TEST(Allow, NumbersOutsideTheMethodRangeFail) {
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "63").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "128").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "0x3F").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "-1").status, WSP_ERR_FAIL);
}

TEST(Allow, LaterBadElementFailsAfterEarlierHeaders) {
    Encoded e = run(wsp_encode_allow, 0x06, "GET, BREW");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "86 C0 86");
}

TEST(Allow, EmptyValueFails) {
    Encoded e = run(wsp_encode_allow, 0x06, "");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
}

TEST(Allow, OutputBounds) {
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "GET", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "GET", 3).hex, "86 C0");
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "GET,PUT", 4).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_allow, 0x06, "GET,PUT", 5).status, WSP_OK);
}

TEST(Allow, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_allow(0x06, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

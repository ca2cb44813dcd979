// The Integer, Version, Quoted-string and Text-string writers and the
// Value-length forms, as the header and content-type encoders show them
// through the public header.
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
// Integer, Version, Quoted-string and Text-string writers as the encoders
// show them

TEST(ApiIntegerText, DecimalShortAndLongForms) {
    EXPECT_EQ("85 85", encoded_hex("age: 5", "1.1"));
    EXPECT_EQ("85 80", encoded_hex("age: 0", "1.1"));
    EXPECT_EQ("85 FF", encoded_hex("age: 127", "1.1"));
    EXPECT_EQ("85 01 80", encoded_hex("age: 128", "1.1"));
    EXPECT_EQ("85 01 C8", encoded_hex("age: 200", "1.1"));
    EXPECT_EQ("85 02 01 2C", encoded_hex("age:    300", "1.1"));
    EXPECT_EQ("85 03 01 00 00", encoded_hex("age: 65536", "1.1"));
    EXPECT_EQ("85 04 01 00 00 00", encoded_hex("age: 16777216", "1.1"));
    EXPECT_EQ("85 04 FF FF FF FE", encoded_hex("age: 4294967294", "1.1"));
    EXPECT_EQ("8D 02 04 00", encoded_hex("content-length: 1024", "1.1"));
    EXPECT_EQ("9E 8A", encoded_hex("max-forwards: 10", "1.1"));
}

TEST(ApiIntegerText, DecimalOverflowFails) {
    Encoded e = encode_lines("age: 4294967295", "1.1");
    EXPECT_EQ(WSP_ERR_FAIL, low16(e.status));
    EXPECT_TRUE(e.data_released);
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("age: 99999999999", "1.1").status));
}

TEST(ApiIntegerText, TextThatIsNotANumberIsZero) {
    EXPECT_EQ("85 80", encoded_hex("age: abc", "1.1"));
}

TEST(ApiIntegerText, HexadecimalForms) {
    EXPECT_EQ("85 90", encoded_hex("age: 0X10", "1.1"));
    EXPECT_EQ("85 FF", encoded_hex("age: 0x7F", "1.1"));
    EXPECT_EQ("85 02 01 23", encoded_hex("age: 0x123", "1.1"));
    EXPECT_EQ("85 81", encoded_hex("age: 0x0000000001", "1.1"));
}

TEST(ApiIntegerText, HexadecimalOverflowBecomesALongIntegerOfTheDigits) {
    // Ten digits: five octets, the digits taken in pairs.
    EXPECT_EQ("85 05 1F FF FF FF FF", encoded_hex("age: 0x1FFFFFFFFF", "1.1"));
    // Nine digits: the first digit alone makes the first octet.
    EXPECT_EQ("85 05 01 23 45 67 89", encoded_hex("age: 0x123456789", "1.1"));
    // All bits set reads as the overflow value and takes the digit path.
    EXPECT_EQ("85 04 FF FF FF FF", encoded_hex("age: 0xFFFFFFFF", "1.1"));
    // No upper limit of 30 octets on the length.
    std::string digits(64, 'a');
    Bytes expect = bytes({0x85, 32});
    for (int i = 0; i < 32; ++i) expect.push_back(0xAA);
    EXPECT_EQ(hex(expect), encoded_hex("age: 0x" + digits, "1.1"));
}

TEST(ApiIntegerText, HexadecimalOverflowNeedsRoomForLengthAndDigits) {
    Encoded exact = encode_lines("age: 0x1FFFFFFFFF", "1.1", 7);
    EXPECT_EQ(WSP_OK, low16(exact.status));
    EXPECT_EQ("85 05 1F FF FF FF FF", hex(exact.bytes));
    Encoded shortb = encode_lines("age: 0x1FFFFFFFFF", "1.1", 6);
    EXPECT_EQ(WSP_ERR_FAIL, low16(shortb.status));
    EXPECT_TRUE(shortb.data_released);
}

TEST(ApiLongInt, MayFillTheBlockToItsLastByte) {
    Encoded exact = encode_lines("age: 300", "1.1", 4);
    EXPECT_EQ(WSP_OK, low16(exact.status));
    EXPECT_EQ("85 02 01 2C", hex(exact.bytes));
    EXPECT_EQ(4, exact.holder_length);
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("age: 300", "1.1", 3).status));
}

TEST(ApiVersionValue, NumericForms) {
    EXPECT_EQ("03 83 82 9F", encoded_ct_hex("text/plain; level=1.0", "1.1"));
    EXPECT_EQ("03 83 82 92", encoded_ct_hex("text/plain; level=1.2", "1.1"));
    EXPECT_EQ("03 83 82 9F", encoded_ct_hex("text/plain; level=1", "1.1"));
    EXPECT_EQ("03 83 82 F9", encoded_ct_hex("text/plain; level=7.9", "1.1"));
    EXPECT_EQ("03 83 82 8F", encoded_ct_hex("text/plain; level=0", "1.1"));
}

TEST(ApiVersionValue, OtherFormsAreTheWholeTextAsTextString) {
    EXPECT_EQ("06 83 82 39 2E 31 00", encoded_ct_hex("text/plain; level=9.1", "1.1"));
    EXPECT_EQ("07 83 82 31 2E 31 30 00", encoded_ct_hex("text/plain; level=1.10", "1.1"));
    EXPECT_EQ("07 83 82 31 2E 31 35 00", encoded_ct_hex("text/plain; level=1.15", "1.1"));
    EXPECT_EQ("04 83 82 38 00", encoded_ct_hex("text/plain; level=8", "1.1"));
    EXPECT_EQ("05 83 82 31 30 00", encoded_ct_hex("text/plain; level=10", "1.1"));
    // A minor part must be a single digit too.
    EXPECT_EQ("07 83 82 37 2E 31 34 00", encoded_ct_hex("text/plain; level=7.14", "1.1"));
}

TEST(ApiVersionValue, DecodedBack) {
    EXPECT_EQ("text/plain;level=1", decode_ct(bytes({0x03, 0x83, 0x82, 0x9F})).text);
    EXPECT_EQ("text/plain;level=1.1", decode_ct(bytes({0x03, 0x83, 0x82, 0x91})).text);
    EXPECT_EQ("text/plain;level=7.14", decode_ct(bytes({0x03, 0x83, 0x82, 0xFE})).text);
}

TEST(ApiQuotedString, ClosingQuoteBecomesTheTerminator) {
    EXPECT_EQ("0A 83 66 6F 6F 00 22 62 61 72 00", encoded_ct_hex("text/plain; foo=\"bar\"", "1.1"));
}

TEST(ApiQuotedString, WithoutClosingQuoteTheNulIsNotCounted) {
    // Four octets counted for the four characters; the NUL after them falls
    // outside the counted run, so the value that is copied on has none.
    EXPECT_EQ("09 83 66 6F 6F 00 22 62 61 72", encoded_ct_hex("text/plain; foo=\"bar", "1.1"));
}

TEST(ApiQuotedString, AQuoteBeforeTheEndIsRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_ct("text/plain; foo=\"a\"b\"", "1.1").status));
}

TEST(ApiTextString, QuoteOctetBeforeAHighFirstCharacter) {
    EXPECT_EQ(hex(cat({cstr("x-foo"), bytes({0x7F, 0xE9, 0x74, 0xE9, 0x00})})),
              encoded_hex("x-foo:\xE9t\xE9", "1.1"));
    EXPECT_EQ(hex(cat({cstr("x-foo"), cstr(" bar")})), encoded_hex("X-Foo: bar", "1.1"));
}

TEST(ApiTextString, ControlCharactersAreRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("x-foo:a\x01" "b", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("x-foo:a\x7F" "b", "1.1").status));
    // Tab is a text character.
    EXPECT_EQ(hex(cat({cstr("x-foo"), cstr("a\tb")})), encoded_hex("x-foo:a\tb", "1.1"));
}

TEST(ApiPlainText, ExtensionMediaHasNoQuoteOctet) {
    EXPECT_EQ("E9 2F 78 00", encoded_ct_hex("\xE9/x", "1.4"));
}

TEST(ApiTextReaders, QuoteOctetIsDroppedWhenReading) {
    EXPECT_EQ("x:\xE9t\n", decoded_text(cat({cstr("x"), bytes({0x7F, 0xE9, 0x74, 0x00})})));
}

TEST(ApiTextReaders, QuotedParameterValueGetsItsClosingMarkBack) {
    Content c = decode_ct(bytes({0x08, 0x83, 0x78, 0x00, 0x22, 0x61, 0x62, 0x63, 0x00}));
    EXPECT_EQ(WSP_OK, c.status);
    EXPECT_EQ("text/plain;x=\"abc\"", c.text);
    EXPECT_EQ(9, c.consumed);
}

TEST(ApiTextReaders, TokenLongerThanItsScratchIsTruncationStatus) {
    // An untyped parameter name of 250 characters fills the 198-octet area
    // before its NUL: -216 comes back from the content-type decoder as it is.
    Bytes value = cat({bytes({0x1F, 0x81, 0x7D, 0x83}), Bytes(250, 'a'), bytes({0x00, 0x00})});
    Content c = decode_ct(value);
    EXPECT_EQ(WSP_ERR_TRUNCATED, c.status);
}

TEST(ApiTextString, MayFillTheBlockToItsLastByte) {
    Encoded exact = encode_lines("x:ab", "1.1", 5);
    EXPECT_EQ(WSP_OK, low16(exact.status));
    EXPECT_EQ("78 00 61 62 00", hex(exact.bytes));
    Encoded shortb = encode_lines("x:ab", "1.1", 4);
    EXPECT_EQ(WSP_ERR_FAIL, low16(shortb.status));
    EXPECT_TRUE(shortb.data_released);
}

TEST(ApiValueLength, AboveThirtyOctetsUsesTheLengthQuote) {
    const std::string name(40, 'n');
    EXPECT_EQ(hex(cat({bytes({0xAE, 0x1F, 0x2B, 0x81, 0x86}), cstr(name.c_str())})),
              encoded_hex("content-disposition: attachment; filename=" + name, "1.1"));
    EXPECT_EQ(hex(cat({bytes({0x1F, 0x2B, 0x83, 0x85}), cstr(name.c_str())})),
              encoded_ct_hex(("text/plain; name=" + name).c_str(), "1.1"));
    // Thirty octets still take the short form.
    const std::string n27(27, 'n');
    EXPECT_EQ(hex(cat({bytes({0x1E, 0x83, 0x85}), cstr(n27.c_str())})),
              encoded_ct_hex(("text/plain; name=" + n27).c_str(), "1.1"));
    const std::string n28(28, 'n');
    EXPECT_EQ(hex(cat({bytes({0x1F, 0x1F, 0x83, 0x85}), cstr(n28.c_str())})),
              encoded_ct_hex(("text/plain; name=" + n28).c_str(), "1.1"));
}

// Value encoders of Content-ID, Encoding-Version and X-Wap-Security, called
// directly with writable text and an exactly sized output buffer.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

constexpr uint8_t kContentId = 0x40;
constexpr uint8_t kEncodingVersion = 0x43;
constexpr uint8_t kSecurity = 0x46;

using Result = EncodeResult;

Result encode(wsp_header_encoder fn, uint8_t code, const std::string &value, uint16_t size = 512,
              uint8_t version = 3) {
    return encode_value(fn, code, value, size, version);
}

// ---- Content-ID ----

TEST(EncodeContentId, QuotedStringOfTheLowerCasedId) {
    Result r = encode(wsp_encode_content_id, kContentId, "<Abc.1>");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C0 22 3C 61 62 63 2E 31 3E 00");
}

TEST(EncodeContentId, BlanksAreTrimmed) {
    Result r = encode(wsp_encode_content_id, kContentId, " \t<Part@Host.COM>\r\n");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, hex(cat({bytes({0xC0, 0x22}), cstr("<part@host.com>")})));
}

TEST(EncodeContentId, EmptyBrackets) {
    Result r = encode(wsp_encode_content_id, kContentId, "<>");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C0 22 3C 3E 00");
}

TEST(EncodeContentId, BracketsAreRequiredAndNothingIsWritten) {
    for (const char *bad : {"abc", "<abc", "abc>", "<", ">", "", "  ", "\"<abc>\""}) {
        Result r = encode(wsp_encode_content_id, kContentId, bad);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << bad;
        EXPECT_EQ(r.hex, "") << bad;
    }
}

TEST(EncodeContentId, ControlCharacterFails) {
    EXPECT_EQ(encode(wsp_encode_content_id, kContentId, "<a\x01z>").status, WSP_ERR_FAIL);
}

TEST(EncodeContentId, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_content_id(kContentId, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeContentId, OutputBoundaries) {
    // C0 22 3C 61 3E 00: six octets.
    Result r = encode(wsp_encode_content_id, kContentId, "<a>", 6);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C0 22 3C 61 3E 00");
    EXPECT_EQ(encode(wsp_encode_content_id, kContentId, "<a>", 5).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_content_id, kContentId, "<a>", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_content_id, kContentId, "<a>", 1).status, WSP_ERR_FAIL);
}

// ---- Encoding-Version ----

TEST(EncodeEncodingVersion, OneOctetForms) {
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "1.3").hex, "C3 93");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "0.1").hex, "C3 81");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, " 7.9 ").hex, "C3 F9");
}

TEST(EncodeEncodingVersion, MinorZeroAndMissingMinorAreFifteen) {
    Result r = encode(wsp_encode_encoding_version, kEncodingVersion, "1.0");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C3 9F");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "1").hex, "C3 9F");
}

TEST(EncodeEncodingVersion, OtherFormsAreText) {
    Result r = encode(wsp_encode_encoding_version, kEncodingVersion, "1.15");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C3 31 2E 31 35 00");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "8.0").hex, "C3 38 2E 30 00");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "10.1").hex, "C3 31 30 2E 31 00");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "7.14").hex, "C3 37 2E 31 34 00");
    // Lower-cased first.
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "V1.2").hex, "C3 76 31 2E 32 00");
}

TEST(EncodeEncodingVersion, CodePageAndVersionInsideAValueLength) {
    Result r = encode(wsp_encode_encoding_version, kEncodingVersion, "1 1.3");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C3 02 81 93");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, " 17   2.0 ").hex, "C3 02 91 AF");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "16 1.15").hex, "C3 06 90 31 2E 31 35 00");
}

TEST(EncodeEncodingVersion, CodePageAbove127Fails) {
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "200 1.0").status, WSP_ERR_FAIL);
}

TEST(EncodeEncodingVersion, EmptyValueIsAnEmptyTextString) {
    Result r = encode(wsp_encode_encoding_version, kEncodingVersion, " ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C3 00");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "").hex, "C3 00");
    // Code octet and NUL: the NUL may not be left without room.
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "", 2).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "", 1).status, WSP_ERR_FAIL);
}

TEST(EncodeEncodingVersion, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_encoding_version(kEncodingVersion, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeEncodingVersion, OutputBoundaries) {
    // The one-octet version may take the last octet of the output.
    Result r = encode(wsp_encode_encoding_version, kEncodingVersion, "1.3", 2);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C3 93");
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "1.3", 1).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "1 1.3", 4).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "1 1.3", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "8.0", 5).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_encoding_version, kEncodingVersion, "8.0", 4).status, WSP_ERR_FAIL);
}

// ---- X-Wap-Security ----

TEST(EncodeSecurity, CloseSubordinate) {
    Result r = encode(wsp_encode_security, kSecurity, "close-subordinate");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C6 80");
}

TEST(EncodeSecurity, FirstElementDecidesInAnyCase) {
    Result r = encode(wsp_encode_security, kSecurity, "  Close-Subordinate ; whatever");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C6 80");
}

TEST(EncodeSecurity, OtherValuesFailBeforeWriting) {
    for (const char *bad : {"open", "", "  ", "close-subordinate-x", "x; close-subordinate"}) {
        Result r = encode(wsp_encode_security, kSecurity, bad);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << bad;
        EXPECT_EQ(r.hex, "") << bad;
    }
}

TEST(EncodeSecurity, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_security(kSecurity, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeSecurity, OutputBoundaries) {
    EXPECT_EQ(encode(wsp_encode_security, kSecurity, "close-subordinate", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_security, kSecurity, "close-subordinate", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_security, kSecurity, "close-subordinate", 1).status, WSP_ERR_FAIL);
}

} // namespace

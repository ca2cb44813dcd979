// Value encoders of Expect, TE and Trailer, called directly with writable
// text and an exactly sized output buffer.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

constexpr uint8_t kExpect = 0x38;
constexpr uint8_t kTe = 0x39;
constexpr uint8_t kTrailer = 0x3A;

using Result = EncodeResult;

Result encode(wsp_header_encoder fn, uint8_t code, const std::string &value, uint16_t size = 512,
              uint8_t version = 3) {
    return encode_value(fn, code, value, size, version);
}

std::string header(uint8_t code, const Bytes &body) {
    return hex(cat({bytes({code | 0x80, static_cast<int>(body.size())}), body}));
}

// ---- Expect ----

TEST(EncodeExpect, ContinueIsWellKnownInAnyCase) {
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, " 100-continue ").hex, "B8 80");
    Result r = encode(wsp_encode_expect, kExpect, "100-Continue, 100-CONTINUE");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B8 80 B8 80");
}

TEST(EncodeExpect, ExtensionKeepsItsCase) {
    Result r = encode(wsp_encode_expect, kExpect, "Foo=Bar");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B8 08 46 6F 6F 00 42 61 72 00");
}

TEST(EncodeExpect, QuotedValueAndParameters) {
    Result r = encode(wsp_encode_expect, kExpect, "foo=\"a b\";p=q; r ;s=\"t\"");
    EXPECT_EQ(r.status, WSP_OK);
    Bytes body = cat({cstr("foo"), bytes({0x22}), cstr("a b"), cstr("p"), cstr("q"), cstr("r"), bytes({0}), cstr("s"),
                      bytes({0x22}), cstr("t")});
    EXPECT_EQ(r.hex, header(kExpect, body));
}

TEST(EncodeExpect, ParameterWithEmptyValueGetsNoValue) {
    Result r = encode(wsp_encode_expect, kExpect, "a=b;c=");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kExpect, cat({cstr("a"), cstr("b"), cstr("c"), bytes({0})})));
}

TEST(EncodeExpect, MixedList) {
    Result r = encode(wsp_encode_expect, kExpect, "100-continue, x=y");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B8 80 " + header(kExpect, cat({cstr("x"), cstr("y")})));
}

TEST(EncodeExpect, ExpressionWithoutValueFails) {
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "foo").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "foo=").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "foo= ;p").status, WSP_ERR_FAIL);
}

TEST(EncodeExpect, EmptyParameterFails) {
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "a=b; ;c").status, WSP_ERR_FAIL);
}

TEST(EncodeExpect, ValueThatIsNoTokenFails) {
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "foo=b/r").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "f o=bar").status, WSP_ERR_FAIL);
}

TEST(EncodeExpect, EmptyValueWritesNothing) {
    Result r = encode(wsp_encode_expect, kExpect, "  ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "");
}

TEST(EncodeExpect, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_expect(kExpect, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeExpect, OutputBoundaries) {
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "100-continue", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "100-continue", 2).status, WSP_ERR_FAIL);
    // B8 04 61 00 62 00: six octets.
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "a=b", 6).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_expect, kExpect, "a=b", 5).status, WSP_ERR_FAIL);
}

// ---- TE ----

TEST(EncodeTe, TrailersIsAShortInteger) {
    Result r = encode(wsp_encode_te, kTe, " Trailers ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B9 81");
}

TEST(EncodeTe, CodingWithoutParameterStillHasAValueLength) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, "chunked").hex, "B9 01 82");
    EXPECT_EQ(encode(wsp_encode_te, kTe, "Identity").hex, "B9 01 83");
    EXPECT_EQ(encode(wsp_encode_te, kTe, "gzip").hex, "B9 01 84");
    EXPECT_EQ(encode(wsp_encode_te, kTe, "compress").hex, "B9 01 85");
    EXPECT_EQ(encode(wsp_encode_te, kTe, "deflate").hex, "B9 01 86");
}

TEST(EncodeTe, CodingWithQ) {
    Result r = encode(wsp_encode_te, kTe, "gzip;q=0.5");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B9 03 84 80 33");
    EXPECT_EQ(encode(wsp_encode_te, kTe, "deflate ; Q = 1").hex, "B9 03 86 80 00");
    EXPECT_EQ(encode(wsp_encode_te, kTe, "gzip;q=0.125").hex, "B9 04 84 80 81 61");
}

TEST(EncodeTe, QWithoutValueIsAQOfOne) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, "gzip;q").hex, "B9 03 84 80 00");
}

TEST(EncodeTe, UnknownCodingIsTokenText) {
    Result r = encode(wsp_encode_te, kTe, "X-Custom;q=0.5");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kTe, cat({cstr("x-custom"), bytes({0x80, 0x33})})));
}

TEST(EncodeTe, EachElementIsAHeaderOfItsOwn) {
    Result r = encode(wsp_encode_te, kTe, "trailers, chunked, gzip;q=0.5");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B9 81 B9 01 82 B9 03 84 80 33");
}

TEST(EncodeTe, EmptyValueIsTheCodeOctetAlone) {
    Result r = encode(wsp_encode_te, kTe, " \t ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B9");
    EXPECT_EQ(encode(wsp_encode_te, kTe, "", 2).hex, "B9");
}

TEST(EncodeTe, EmptyValueIntoAOneOctetOutputFails) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, "", 1).status, WSP_ERR_FAIL);
}

TEST(EncodeTe, EmptyCodingIsTheFirstRow) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, ";").hex, "B9 01 80");
    EXPECT_EQ(encode(wsp_encode_te, kTe, ",").hex, "B9 01 80");
}

TEST(EncodeTe, ParameterOtherThanQFails) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, "gzip;level=1").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_te, kTe, "gzip;qq=1").status, WSP_ERR_FAIL);
}

TEST(EncodeTe, BadQValueFails) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, "gzip;q=2.0").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_te, kTe, "gzip;q=1.5").status, WSP_ERR_FAIL);
}

TEST(EncodeTe, SecondParameterFails) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, "gzip;q=0.5;q=0.2").status, WSP_ERR_FAIL);
}

TEST(EncodeTe, CodingThatIsNoTokenFails) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, "a/b").status, WSP_ERR_FAIL);
}

TEST(EncodeTe, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_te(kTe, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeTe, OutputBoundaries) {
    EXPECT_EQ(encode(wsp_encode_te, kTe, "trailers", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_te, kTe, "trailers", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_te, kTe, "chunked", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_te, kTe, "chunked", 2).status, WSP_ERR_FAIL);
}

// ---- Trailer ----

TEST(EncodeTrailer, NamesAreCodesOrTokenText) {
    Result r = encode(wsp_encode_trailer, kTrailer, "Cache-Control, x-foo ,etag");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, hex(cat({bytes({0xBA, 0x88, 0xBA}), cstr("x-foo"), bytes({0xBA, 0x93})})));
}

TEST(EncodeTrailer, FramingHeadersAreRefused) {
    EXPECT_EQ(encode(wsp_encode_trailer, kTrailer, "Transfer-Encoding").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_trailer, kTrailer, "etag, content-length").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_trailer, kTrailer, "TRAILER").status, WSP_ERR_FAIL);
}

TEST(EncodeTrailer, NameThatIsNoTokenFails) {
    EXPECT_EQ(encode(wsp_encode_trailer, kTrailer, "a b").status, WSP_ERR_FAIL);
}

TEST(EncodeTrailer, EmptyValueWritesNothing) {
    Result r = encode(wsp_encode_trailer, kTrailer, "");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "");
}

TEST(EncodeTrailer, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_trailer(kTrailer, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeTrailer, OutputBoundaries) {
    EXPECT_EQ(encode(wsp_encode_trailer, kTrailer, "etag", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_trailer, kTrailer, "etag", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_trailer, kTrailer, "x", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_trailer, kTrailer, "x", 2).status, WSP_ERR_FAIL);
}


TEST(EncodeTe, EveryPrefixOfACodingWithQ) {
    const std::string full = "gzip;q=0.5";
    const char *expected_hex[] = {
        "B9",                       // ""
        "B9 02 67 00",              // "g": no row, Token-text
        "B9 03 67 7A 00",           // "gz"
        "B9 04 67 7A 69 00",        // "gzi"
        "B9 01 84",                 // "gzip"
        "B9 01 84",                 // "gzip;"
        "B9 03 84 80 00",           // "gzip;q": a q of one
        "B9 03 84 80 00",           // "gzip;q="
        "B9 03 84 80 01",           // "gzip;q=0": no fraction, code 1
        "B9 03 84 80 01",           // "gzip;q=0."
        "B9 03 84 80 33",           // "gzip;q=0.5"
    };
    for (size_t n = 0; n <= full.size(); ++n) {
        std::string prefix = full.substr(0, n);
        Result r = encode(wsp_encode_te, kTe, prefix);
        EXPECT_EQ(r.status, WSP_OK) << prefix;
        EXPECT_EQ(r.hex, expected_hex[n]) << prefix;
    }
}

} // namespace

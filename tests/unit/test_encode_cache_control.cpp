// Cache-Control value encoder (codes 0x08, 0x3D, 0x47): directives with and
// without arguments, field-name lists, unknown directives and bounds.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

using Encoded = EncodeResult;

Encoded run(uint8_t code, const std::string &value, uint16_t size = 64) {
    return encode_value(wsp_encode_cache_control, code, value, size);
}

} // namespace

TEST(CacheControl, NoCacheAndMaxAgeAreTwoHeaders) {
    Encoded e = run(0x47, "no-cache, max-age=60");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "C7 80 C7 02 82 BC");
}

TEST(CacheControl, EachCodeWritesItsOwnCodeOctet) {
    EXPECT_EQ(run(0x08, "no-cache, max-age=60").hex, "88 80 88 02 82 BC");
    EXPECT_EQ(run(0x3D, "no-cache, max-age=60").hex, "BD 80 BD 02 82 BC");
}

TEST(CacheControl, ValueIsTrimmedAndLowerCased) {
    Encoded e = run(0x47, "  Max-Age = 60 \r\n");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "C7 02 82 BC");
}

TEST(CacheControl, DirectivesWithoutArgumentAreTheirNumbers) {
    Encoded e = run(0x47, "no-cache,no-store,max-stale,only-if-cached,public,private,no-transform,"
                          "must-revalidate,proxy-revalidate,s-maxage");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "C7 80 C7 81 C7 83 C7 85 C7 86 C7 87 C7 88 C7 89 C7 8A C7 8B");
}

TEST(CacheControl, MaxAgeWithoutArgumentIsAnArgumentError) {
    Encoded e = run(0x47, "max-age");
    EXPECT_EQ(e.status, WSP_ERR_ARG);
    EXPECT_EQ(e.hex, "C7");
}

TEST(CacheControl, MinFreshWithoutArgumentIsAnArgumentError) {
    EXPECT_EQ(run(0x08, "min-fresh").status, WSP_ERR_ARG);
    EXPECT_EQ(run(0x08, "no-cache, min-fresh").status, WSP_ERR_ARG);
}

TEST(CacheControl, DirectivesThatTakeNoArgumentRefuseOne) {
    const char *refused[] = {"no-store=1",        "only-if-cached=1",  "public=1",
                             "no-transform=1",    "must-revalidate=1", "proxy-revalidate=1"};
    for (const char *directive : refused) {
        EXPECT_EQ(run(0x47, directive).status, WSP_ERR_ARG) << directive;
    }
}

TEST(CacheControl, NumericArgumentsUseTheIntegerTextWriter) {
    EXPECT_EQ(run(0x47, "max-stale=5").hex, "C7 02 83 85");
    EXPECT_EQ(run(0x47, "min-fresh=0x10").hex, "C7 02 84 90");
    EXPECT_EQ(run(0x47, "max-age=300").hex, "C7 04 82 02 01 2C");
    EXPECT_EQ(run(0x47, "max-age=abc").hex, "C7 02 82 80");
}

TEST(CacheControl, SMaxAgeIsKnownOnlyOnTheNewestCode) {
    EXPECT_EQ(run(0x47, "s-maxage=30").hex, "C7 02 8B 9E");
    // On the older codes "s-maxage" is an unknown directive: its name, then
    // the digits as an integer.
    Encoded e = run(0x3D, "s-maxage=30");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xBD, 0x0A}), text_bytes("s-maxage"), bytes({0x00, 0x9E})})));
    Encoded bare = run(0x08, "s-maxage");
    EXPECT_EQ(bare.status, WSP_OK);
    EXPECT_EQ(bare.hex, hex(cat({bytes({0x88}), text_bytes("s-maxage"), bytes({0x00})})));
}

TEST(CacheControl, FieldNameListOfPrivate) {
    Encoded e = run(0x47, "private=\"Accept-Language, X-Foo\"");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xC7, 0x08, 0x87, 0x83}), text_bytes("x-foo"), bytes({0x00})})));
}

TEST(CacheControl, FieldNameTakesTheLowestCodeOfASharedName) {
    Encoded e = run(0x47, "no-cache=\"cache-control\"");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "C7 02 80 88");
}

TEST(CacheControl, QuotedCommaDoesNotSplitDirectives) {
    Encoded e = run(0x47, "no-cache=\"a, b\", max-age=5");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "C7 05 80 61 00 62 00 C7 02 82 85");
}

TEST(CacheControl, FieldNameListWithoutQuotesIsAnArgumentError) {
    EXPECT_EQ(run(0x47, "no-cache=accept").status, WSP_ERR_ARG);
    EXPECT_EQ(run(0x47, "private=\"accept").status, WSP_ERR_ARG);
    EXPECT_EQ(run(0x47, "private=accept\"").status, WSP_ERR_ARG);
}

TEST(CacheControl, LoneQuotationMarkIsAnArgumentError) {
    EXPECT_EQ(run(0x47, "no-cache=\"").status, WSP_ERR_ARG);
}

TEST(CacheControl, EmptyFieldNameListFails) {
    Encoded e = run(0x47, "no-cache=\"\"");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
}

TEST(CacheControl, FieldNameTheWriterRefusesIsAnArgumentError) {
    EXPECT_EQ(run(0x47, "private=\"a b\"").status, WSP_ERR_ARG);
}

TEST(CacheControl, UnknownDirectiveWithoutArgumentIsAToken) {
    Encoded e = run(0x47, "X-Foo");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xC7}), text_bytes("x-foo"), bytes({0x00})})));
}

TEST(CacheControl, UnknownDirectiveArguments) {
    Bytes name = cat({text_bytes("x-foo"), bytes({0x00})});
    // A number with a full stop is a token.
    EXPECT_EQ(run(0x47, "x-foo=1.5").hex, hex(cat({bytes({0xC7, 0x0A}), name, text_bytes("1.5"), bytes({0})})));
    // Digits only: an integer, short or long.
    EXPECT_EQ(run(0x47, "x-foo=12").hex, hex(cat({bytes({0xC7, 0x07}), name, bytes({0x8C})})));
    EXPECT_EQ(run(0x47, "x-foo=200").hex, hex(cat({bytes({0xC7, 0x08}), name, bytes({0x01, 0xC8})})));
    // Text beginning with a quotation mark: a Quoted-string.
    EXPECT_EQ(run(0x47, "x-foo=\"Bar\"").hex,
              hex(cat({bytes({0xC7, 0x0B}), name, bytes({0x22}), text_bytes("bar"), bytes({0})})));
    EXPECT_EQ(run(0x47, "x-foo=\"1.5\"").hex,
              hex(cat({bytes({0xC7, 0x0B}), name, bytes({0x22}), text_bytes("1.5"), bytes({0})})));
    // Anything else: a token.
    EXPECT_EQ(run(0x47, "x-foo=bar").hex, hex(cat({bytes({0xC7, 0x0A}), name, text_bytes("bar"), bytes({0})})));
}

TEST(CacheControl, UnknownDirectiveArgumentTheWriterRefusesFails) {
    EXPECT_EQ(run(0x47, "x-foo=a/b").status, WSP_ERR_FAIL);
}

TEST(CacheControl, LongValueGetsTheLengthQuote) {
    Encoded e = run(0x47, "x-long=abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xC7, 0x1F, 0x22}), text_bytes("x-long"), bytes({0}),
                              text_bytes("abcdefghijklmnopqrstuvwxyz"), bytes({0})})));
}

TEST(CacheControl, ValueLongerThanTheStackScratch) {
    std::string argument(300, 'a');
    Encoded e = run(0x47, "x-long=" + argument, 312);
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.length, 312);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xC7, 0x1F, 0x82, 0x34}), text_bytes("x-long"), bytes({0}),
                              text_bytes(argument.c_str()), bytes({0})})));
    EXPECT_EQ(run(0x47, "x-long=" + argument, 311).status, WSP_ERR_FAIL);
}

TEST(CacheControl, NoDirectiveIsAnArgumentError) {
    Encoded e = run(0x47, "  ");
    EXPECT_EQ(e.status, WSP_ERR_ARG);
    EXPECT_EQ(e.length, 0);
}

TEST(CacheControl, CommaOnlyIsOneEmptyDirective) {
    Encoded e = run(0x47, ",");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "C7 00");
}

TEST(CacheControl, OutputBounds) {
    EXPECT_EQ(run(0x47, "no-cache", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(0x47, "no-cache", 3).hex, "C7 80");
    Encoded full = run(0x47, "max-age=60", 4);
    EXPECT_EQ(full.status, WSP_OK);
    EXPECT_EQ(full.hex, "C7 02 82 BC");
    Encoded short_by_one = run(0x47, "max-age=60", 3);
    EXPECT_EQ(short_by_one.status, WSP_ERR_FAIL);
    EXPECT_EQ(run(0x47, "max-age=60", 1).status, WSP_ERR_FAIL);
}

TEST(CacheControl, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_cache_control(0x47, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

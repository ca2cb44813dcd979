// The Cookie value encoder: version first, then one length-prefixed
// record per cookie (name, value, optional path), all inside a
// Value-length.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

constexpr uint8_t kCookie = 0x42;

using Result = EncodeResult;

Result encode(const std::string &value, uint16_t size = 512) {
    return encode_value(wsp_encode_cookie, kCookie, value, size, 2);
}

// One cookie record: short uintvar length, then the bytes.
Bytes record(const Bytes &cookie) { return cat({bytes({static_cast<int>(cookie.size())}), cookie}); }

std::string header(const Bytes &body) {
    return hex(cat({bytes({0xC2, static_cast<int>(body.size())}), body}));
}

TEST(EncodeCookie, VersionAndOneCookie) {
    Result r = encode("$Version=1; a=b");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C2 06 9F 04 61 00 62 00");
}

TEST(EncodeCookie, NamesAndValuesKeepTheirCase) {
    Result r = encode("  $VERSION=1.0;Name=Value  ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(cat({bytes({0x9F}), record(cat({cstr("Name"), cstr("Value")}))})));
}

TEST(EncodeCookie, PathBelongsToTheCookieBeforeIt) {
    Result r = encode("$Version=1; a=b; $Path=/x; c=d");
    EXPECT_EQ(r.status, WSP_OK);
    Bytes body = cat({bytes({0x9F}), record(cat({cstr("a"), cstr("b"), cstr("/x")})), record(cat({cstr("c"), cstr("d")}))});
    EXPECT_EQ(r.hex, header(body));
}

TEST(EncodeCookie, SemicolonAndCommaSeparateAlike) {
    std::string expected = encode("$Version=1; a=b; $Path=/x; c=d; $path=/y").hex;
    EXPECT_EQ(encode("$Version=1, a=b, $Path=/x, c=d, $PATH=/y").hex, expected);
    EXPECT_EQ(encode("$Version=1; a=b, $Path=/x; c=d,$path=/y").hex, expected);
    Bytes body = cat({bytes({0x9F}), record(cat({cstr("a"), cstr("b"), cstr("/x")})), record(cat({cstr("c"), cstr("d"), cstr("/y")}))});
    EXPECT_EQ(expected, header(body));
}

TEST(EncodeCookie, EmptyFieldsBetweenSeparatorsAreSkipped) {
    Result r = encode("$Version=1;; a=b;;c=d;");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(cat({bytes({0x9F}), record(cat({cstr("a"), cstr("b")})), record(cat({cstr("c"), cstr("d")}))})));
}

TEST(EncodeCookie, BlanksAroundNamesAndValuesAreTrimmed) {
    EXPECT_EQ(encode(" $Version = 1 ;  a = b ").hex, "C2 06 9F 04 61 00 62 00");
}

TEST(EncodeCookie, ValueIsEverythingAfterTheFirstEquals) {
    Result r = encode("$Version=1; a=x==");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(cat({bytes({0x9F}), record(cat({cstr("a"), cstr("x==")}))})));
}

TEST(EncodeCookie, QuotedValueKeepsSeparatorsAndQuotes) {
    Result r = encode("$Version=1; a=\"x;y,z\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(cat({bytes({0x9F}), record(cat({cstr("a"), cstr("\"x;y,z\"")}))})));
}

TEST(EncodeCookie, QuotedVersionIsWrittenAsText) {
    Result r = encode("$Version=\"1\"; a=b");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(cat({cstr("\"1\""), record(cat({cstr("a"), cstr("b")}))})));
}

TEST(EncodeCookie, ValueStartingHighGetsAQuote) {
    Result r = encode("$Version=1; a=\xE9t");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C2 08 9F 06 61 00 7F E9 74 00");
}

TEST(EncodeCookie, VersionAloneHasNoCookies) {
    Result r = encode("$Version=1");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C2 01 9F");
}

TEST(EncodeCookie, OtherDollarAttributesArePassedOver) {
    Result r = encode("$Version=1; $Domain=.x.org; a=b; $Domain=.y.org; $Path=/p");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(cat({bytes({0x9F}), record(cat({cstr("a"), cstr("b"), cstr("/p")}))})));
}

TEST(EncodeCookie, PathWithoutCookieFails) {
    EXPECT_EQ(encode("$Version=1; $Path=/x; a=b").status, WSP_ERR_FAIL);
}

TEST(EncodeCookie, SecondPathFails) {
    EXPECT_EQ(encode("$Version=1; a=b; $Path=/x; $Path=/y").status, WSP_ERR_FAIL);
}

TEST(EncodeCookie, EmptyPathFails) {
    EXPECT_EQ(encode("$Version=1; a=b; $Path=").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Version=1; a=b; $Path").status, WSP_ERR_FAIL);
}

TEST(EncodeCookie, EmptyNameOrValueFails) {
    EXPECT_EQ(encode("$Version=1; a=").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Version=1; a").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Version=1; =b").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Version=1; a= ; c=d").status, WSP_ERR_FAIL);
}

TEST(EncodeCookie, VersionMustComeFirst) {
    EXPECT_EQ(encode("a=b; $Version=1").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Ver=1; a=b").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("   ").status, WSP_ERR_FAIL);
}

TEST(EncodeCookie, EmptyVersionFails) {
    EXPECT_EQ(encode("$Version=").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Version=; a=b").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Version= , a=b").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Version").status, WSP_ERR_FAIL);
}

TEST(EncodeCookie, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_cookie(kCookie, nullptr, out.get(), 2), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(EncodeCookie, CookieFillingItsAreaExactly) {
    // 98 + 1 + 98 + 1 = 198 octets: the whole fixed area.
    std::string name(98, 'n');
    std::string value(98, 'v');
    Result r = encode("$Version=1; " + name + "=" + value);
    EXPECT_EQ(r.status, WSP_OK);
    // 1 (version) + 2 (uintvar 198) + 198 = 201 octets after the length.
    Bytes expected = cat({bytes({0xC2, 0x1F, 0x81, 0x49, 0x9F, 0x81, 0x46}), cstr(name.c_str()), cstr(value.c_str())});
    EXPECT_EQ(r.hex, hex(expected));
}

TEST(EncodeCookie, CookieLargerThanItsAreaFails) {
    std::string name(98, 'n');
    std::string value(99, 'v');
    EXPECT_EQ(encode("$Version=1; " + name + "=" + value).status, WSP_ERR_FAIL);
    std::string path(50, 'p');
    EXPECT_EQ(encode("$Version=1; " + name + "=" + std::string(60, 'v') + "; $Path=" + path).status, WSP_ERR_FAIL);
}

TEST(EncodeCookie, OutputBoundaries) {
    // C2 06 9F 04 61 00 62 00: eight octets.
    Result r = encode("$Version=1; a=b", 8);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "C2 06 9F 04 61 00 62 00");
    EXPECT_EQ(encode("$Version=1; a=b", 7).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode("$Version=1; a=b", 1).status, WSP_ERR_FAIL);
}


TEST(EncodeCookie, EveryPrefixOfAValue) {
    const std::string full = "$Version=1; a=b";
    for (size_t n = 0; n <= full.size(); ++n) {
        std::string prefix = full.substr(0, n);
        Result r = encode(prefix);
        if (n == 10 || n == 11 || n == 12) {
            // "$Version=1", with a trailing ";" or "; ": the version alone.
            EXPECT_EQ(r.status, WSP_OK) << prefix;
            EXPECT_EQ(r.hex, "C2 01 9F") << prefix;
        } else if (n == full.size()) {
            EXPECT_EQ(r.status, WSP_OK) << prefix;
            EXPECT_EQ(r.hex, "C2 06 9F 04 61 00 62 00");
        } else {
            EXPECT_EQ(r.status, WSP_ERR_FAIL) << prefix;
        }
    }
}

TEST(EncodeCookie, ScratchSizeWrapsAt16Bits) {
    // 65535 characters: the value scratch (text length + 1) wraps to 0 and
    // nothing fits into it.
    std::string value = "$Version=1; a=" + std::string(65535 - 14, 'v');
    ASSERT_EQ(value.size(), 65535u);
    EXPECT_EQ(encode(value).status, WSP_ERR_FAIL);
}

} // namespace

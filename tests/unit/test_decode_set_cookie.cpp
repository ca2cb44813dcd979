// Set-Cookie value decoding: Short-integer and text versions (with the
// last-digit-only minor of 10 to 14), cookie name and value, parameters,
// merging, refusals, bounds and truncated values.
#include <gtest/gtest.h>

#include <string>

#include "unit_support.h"

namespace {

using namespace wsp_test;

constexpr uint32_t kSetCookie = 0x41;

DecodeResult cookie(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_set_cookie, kSetCookie, in, out_size, remaining);
}

void expect_refused(const Bytes &in) {
    DecodeResult r = cookie(in);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}

Bytes simple(int version, const std::string &name, const std::string &value) {
    return short_length(cat({bytes({version}), cstr(name), cstr(value)}));
}

TEST(DecodeSetCookie, ShortIntegerVersion) {
    DecodeResult r = cookie(simple(0x90, "n", "v"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "set-cookie:n=v;Version=1.0\n");
    EXPECT_EQ(r.moved, 6);
}

TEST(DecodeSetCookie, VersionWithoutMinor) {
    EXPECT_EQ(cookie(simple(0x9F, "n", "v")).text, "set-cookie:n=v;Version=1\n");
    EXPECT_EQ(cookie(simple(0xFF, "n", "v")).text, "set-cookie:n=v;Version=7\n");
}

TEST(DecodeSetCookie, OneDigitMinors) {
    EXPECT_EQ(cookie(simple(0x93, "n", "v")).text, "set-cookie:n=v;Version=1.3\n");
    EXPECT_EQ(cookie(simple(0x89, "n", "v")).text, "set-cookie:n=v;Version=0.9\n");
}

TEST(DecodeSetCookie, TwoDigitMinorShowsItsLastDigit) {
    const struct {
        int octet;
        const char *text;
    } rows[] = {{0x9A, "1.0"}, {0x9B, "1.1"}, {0x9C, "1.2"}, {0x9D, "1.3"}, {0x9E, "1.4"}, {0xFA, "7.0"}};
    for (const auto &row : rows) {
        DecodeResult r = cookie(simple(row.octet, "n", "v"));
        EXPECT_EQ(r.status, WSP_OK) << row.text;
        EXPECT_EQ(r.text, std::string("set-cookie:n=v;Version=") + row.text + "\n");
        EXPECT_EQ(r.moved, 6);
    }
}

TEST(DecodeSetCookie, TextVersionHasNoPrefix) {
    DecodeResult r = cookie(short_length(cat({cstr("1.5"), cstr("n"), cstr("v")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "set-cookie:n=v;1.5\n");
    EXPECT_EQ(r.moved, 9);
}

TEST(DecodeSetCookie, QuotedAndQuoteTexts) {
    DecodeResult r = cookie(short_length(cat({cstr("\"1"), bytes({0x7F, 0xE9}), cstr("n"), cstr("\"v")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "set-cookie:\xE9n=\"v;\"1\n");
}

TEST(DecodeSetCookie, Parameters) {
    // 0x8F: "path", 0x8D: "domain".
    DecodeResult r = cookie(short_length(cat({bytes({0x91}), cstr("n"), cstr("v"), bytes({0x8F}), cstr("/"),
                                              bytes({0x8D}), cstr("d.com")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "set-cookie:n=v;Version=1.1;path=/;domain=d.com\n");
    EXPECT_EQ(r.moved, 16);
}

TEST(DecodeSetCookie, UntypedParameterWithoutValue) {
    DecodeResult r = cookie(short_length(cat({bytes({0x9F}), cstr("n"), cstr("v"), cstr("secure"), bytes({0x00})})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "set-cookie:n=v;Version=1;secure\n");
}

TEST(DecodeSetCookie, ParameterFailureRefused) {
    expect_refused(short_length(cat({bytes({0x90}), cstr("n"), cstr("v"), bytes({0x84, 0x00})})));
    expect_refused(short_length(cat({bytes({0x90}), cstr("n"), cstr("v"), bytes({0x01})})));
}

TEST(DecodeSetCookie, ParameterRunPastTheInputRefused) {
    expect_refused(cat({bytes({0x08, 0x90}), cstr("n"), cstr("v"), bytes({0x8F}), cstr("")}));
}

TEST(DecodeSetCookie, VersionOfLengthClassRefused) {
    expect_refused(short_length(cat({bytes({0x01, 0x90}), cstr("n"), cstr("v")})));
    expect_refused(short_length(cat({bytes({0x1F, 0x01}), cstr("n"), cstr("v")})));
}

TEST(DecodeSetCookie, NameAndValueMustBeText) {
    expect_refused(short_length(cat({bytes({0x90, 0x85}), cstr("v")})));     // name class 5
    expect_refused(short_length(cat({bytes({0x90}), cstr("n"), bytes({0x00})}))); // empty value
    expect_refused(short_length(cat({bytes({0x90}), cstr("n"), bytes({0x85})})));
    expect_refused(short_length(cat({bytes({0x90}), cstr("n")})));            // no value
    expect_refused(short_length(cat({bytes({0x90}), cstr("n"), bytes({'v', 0x02, 0})})));
}

TEST(DecodeSetCookie, NameAndValueBoundedByTheLength) {
    expect_refused(cat({bytes({0x03, 0x90}), cstr("nn"), cstr("v")}));
    expect_refused(cat({bytes({0x05, 0x90}), cstr("n"), cstr("vv")}));
    // A text version is bounded by the length too.
    expect_refused(cat({bytes({0x02}), cstr("1.5"), cstr("n"), cstr("v")}));
}

TEST(DecodeSetCookie, ValueUnterminatedAtTheInputEndRefused) {
    expect_refused(bytes({0x06, 0x90, 'n', 0, 'v', 'v', 'v'}));
}

TEST(DecodeSetCookie, ZeroLengthWritesNothing) {
    DecodeResult r = cookie(bytes({0x00, 0x90}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeSetCookie, FirstOctetMustStartALength) {
    expect_refused(bytes({0x90}));
    expect_refused(cstr("n"));
    expect_refused(cstr("\"n"));
    expect_refused(bytes({0x7F, 'n', 0}));
    expect_refused(bytes({0x07, 0x90, 'n', 0, 'v', 0}));   // above remaining
    DecodeResult r = cookie(simple(0x90, "n", "v"), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeSetCookie, LengthQuoteForm) {
    DecodeResult r = cookie(quoted_length(cat({bytes({0x90}), cstr("n"), cstr("v")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "set-cookie:n=v;Version=1.0\n");
    EXPECT_EQ(r.moved, 7);
}

TEST(DecodeSetCookie, RepeatedHeadersMergeIntoOneLine) {
    OutBuffer out(128);
    EXPECT_EQ(decode_into(wsp_dec_set_cookie, kSetCookie, simple(0x9F, "a", "1"), out).status, WSP_OK);
    DecodeResult r = decode_into(wsp_dec_set_cookie, kSetCookie, simple(0x9F, "b", "2"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "set-cookie:a=1;Version=1,b=2;Version=1\n");
}

TEST(DecodeSetCookie, OutputFullPassesTruncatedWithCursorUnchanged) {
    DecodeResult r = cookie(simple(0x9F, "a", "1"), 20);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeSetCookie, TextOf197CharactersWritten) {
    // 100 + "=" + 86 + ";Version=1" = 197.
    std::string name(100, 'n'), value(86, 'v');
    DecodeResult r = cookie(quoted_length(cat({bytes({0x9F}), cstr(name), cstr(value)})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "set-cookie:" + name + "=" + value + ";Version=1\n");
}

TEST(DecodeSetCookie, TextOf198CharactersRefused) {
    expect_refused(quoted_length(cat({bytes({0x9F}), cstr(std::string(100, 'n')), cstr(std::string(87, 'v'))})));
    expect_refused(quoted_length(cat({bytes({0x9F}), cstr(std::string(198, 'n')), cstr("v")})));
}

TEST(DecodeSetCookie, TruncatedAtEveryLength) {
    const Bytes forms[] = {
        simple(0x90, "n", "v"),
        short_length(cat({cstr("1.5"), cstr("n"), cstr("v"), bytes({0x8F}), cstr("/")})),
        quoted_length(cat({bytes({0x90}), cstr("n"), cstr("v")})),
    };
    for (const Bytes &full : forms) {
        ASSERT_EQ(cookie(full).status, WSP_OK) << hex(full);
        for (size_t n = 0; n < full.size(); ++n) expect_refused(Bytes(full.begin(), full.begin() + static_cast<long>(n)));
    }
}

TEST(DecodeSetCookie, CodePastTheNameTableRefused) {
    EXPECT_EQ(decode(wsp_dec_set_cookie, 0x48, simple(0x90, "n", "v")).status, WSP_ERR_FAIL);
}

} // namespace

// Encoding-Version value decoding: the Short-integer, text and code-page
// forms, the leading space of the code-page form, refusals, the writer and
// truncated values.
#include <gtest/gtest.h>

#include <string>

#include "unit_support.h"

namespace {

using namespace wsp_test;

constexpr uint32_t kEncodingVersion = 0x43;

DecodeResult ev(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_encoding_version, kEncodingVersion, in, out_size, remaining);
}

void expect_refused(const Bytes &in) {
    DecodeResult r = ev(in);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}

TEST(DecodeEncodingVersion, ShortIntegerMajorAndMinor) {
    DecodeResult r = ev(bytes({0x93}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version:1.3\n");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeEncodingVersion, MinorFifteenMeansMajorOnly) {
    EXPECT_EQ(ev(bytes({0x9F})).text, "encoding-version:1\n");
    EXPECT_EQ(ev(bytes({0xFF})).text, "encoding-version:7\n");
}

TEST(DecodeEncodingVersion, EdgeVersions) {
    EXPECT_EQ(ev(bytes({0x80})).text, "encoding-version:0.0\n");
    EXPECT_EQ(ev(bytes({0x9A})).text, "encoding-version:1.10\n");
    EXPECT_EQ(ev(bytes({0x8E})).text, "encoding-version:0.14\n");
    EXPECT_EQ(ev(bytes({0xF0})).text, "encoding-version:7.0\n");
}

TEST(DecodeEncodingVersion, TextVersion) {
    DecodeResult r = ev(cstr("1.5"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version:1.5\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeEncodingVersion, QuotedTextKeepsItsQuote) {
    DecodeResult r = ev(cstr("\"1.5"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version:\"1.5\n");
    EXPECT_EQ(r.moved, 5);
}

TEST(DecodeEncodingVersion, QuoteOctetDropped) {
    DecodeResult r = ev(bytes({0x7F, 0xE9, '1', 0}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version:\xE9" "1\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeEncodingVersion, TextRefusals) {
    expect_refused(text_bytes("1.5"));                      // no NUL before the end
    expect_refused(bytes({'1', 0x01, 0}));                  // not a text octet
    expect_refused(bytes({0x7F, 0xE9, '1'}));               // no NUL after a Quote
    expect_refused(bytes({0x7F}));
    expect_refused(cstr(std::string(198, '1')));            // fills the scratch
}

TEST(DecodeEncodingVersion, TextOf197Characters) {
    std::string text(197, '1');
    DecodeResult r = ev(cstr(text));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version:" + text + "\n");
    EXPECT_EQ(r.moved, 198);
}

TEST(DecodeEncodingVersion, CodePageFormHasALeadingSpace) {
    DecodeResult r = ev(bytes({0x02, 0x81, 0x93}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version: 1.3\n");
    EXPECT_EQ(r.moved, 3);
}

TEST(DecodeEncodingVersion, CodePageFormLengthQuote) {
    DecodeResult r = ev(bytes({0x1F, 0x02, 0x85, 0x9F}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version: 1\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeEncodingVersion, CodePageFormPassesOnlyItsTwoOctets) {
    // The length is not compared with the two octets read.
    DecodeResult longer = ev(bytes({0x03, 0x81, 0x93, 0x00}));
    EXPECT_EQ(longer.status, WSP_OK);
    EXPECT_EQ(longer.text, "encoding-version: 1.3\n");
    EXPECT_EQ(longer.moved, 3);
    DecodeResult shorter = ev(bytes({0x01, 0x81, 0x93}));
    EXPECT_EQ(shorter.status, WSP_OK);
    EXPECT_EQ(shorter.text, "encoding-version: 1.3\n");
    EXPECT_EQ(shorter.moved, 3);
}

TEST(DecodeEncodingVersion, CodePageFormRefusals) {
    expect_refused(bytes({0x02, 0x01, 0x93}));      // code page not a Short-integer
    expect_refused(bytes({0x02, 0x81, 'a'}));       // version not a Short-integer
    expect_refused(bytes({0x03, 0x81, 0x01, 0x93}));
    expect_refused(bytes({0x04, 0x81, 0x93}));      // length above remaining
    expect_refused(bytes({0x1F, 0x80}));            // bad uintvar
}

TEST(DecodeEncodingVersion, CodePageFormAtTheInputEndRefused) {
    expect_refused(bytes({0x02, 0x81}));
    expect_refused(bytes({0x1F, 0x02, 0x81}));
    expect_refused(bytes({0x1F, 0x00}));
}

TEST(DecodeEncodingVersion, ZeroLengthWritesNothing) {
    DecodeResult r = ev(bytes({0x00, 0x93}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeEncodingVersion, RemainingZeroRefused) {
    DecodeResult r = ev(bytes({0x93}), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeEncodingVersion, EachHeaderGetsItsOwnLine) {
    OutBuffer out(128);
    EXPECT_EQ(decode_into(wsp_dec_encoding_version, kEncodingVersion, bytes({0x93}), out).status, WSP_OK);
    DecodeResult r = decode_into(wsp_dec_encoding_version, kEncodingVersion, bytes({0x02, 0x81, 0x94}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version:1.3\nencoding-version: 1.4\n");
}

TEST(DecodeEncodingVersion, OutputFullRefusedWithCursorUnchanged) {
    // "encoding-version:1.3\n" is 21 octets.
    DecodeResult r = ev(bytes({0x93}), 20);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    DecodeResult fits = ev(bytes({0x93}), 21);
    EXPECT_EQ(fits.status, WSP_OK);
    EXPECT_EQ(fits.moved, 1);
    EXPECT_EQ(fits.text, "encoding-version:1.3\n");
}

TEST(DecodeEncodingVersion, TruncatedAtEveryLength) {
    const Bytes forms[] = {bytes({0x02, 0x81, 0x93}), bytes({0x1F, 0x02, 0x81, 0x93}), cstr("1.5")};
    for (const Bytes &full : forms) {
        ASSERT_EQ(ev(full).status, WSP_OK) << hex(full);
        for (size_t n = 0; n < full.size(); ++n) expect_refused(Bytes(full.begin(), full.begin() + static_cast<long>(n)));
    }
}

TEST(DecodeEncodingVersion, CodePastTheNameTableRefused) {
    EXPECT_EQ(decode(wsp_dec_encoding_version, 0x48, bytes({0x93})).status, WSP_ERR_FAIL);
}

TEST(DecodeEncodingVersion, BlockWritesBothForms) {
    DecodeResult r = decode_block(bytes({0xC3, 0x93, 0xC3, 0x02, 0x81, 0x93}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "encoding-version:1.3\nencoding-version: 1.3\n");
}

} // namespace

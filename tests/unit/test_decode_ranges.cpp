// Content-Range and Range value decoding: text layouts, the unknown entity
// length of the newer code, length checks, writers, bounds and truncated
// values.
#include <gtest/gtest.h>

#include <string>

#include "unit_support.h"

namespace {

using namespace wsp_test;

constexpr uint32_t kContentRange = 0x10;
constexpr uint32_t kContentRangeV4 = 0x3E;
constexpr uint32_t kRange = 0x23;

DecodeResult crange(const Bytes &in, uint32_t code = kContentRange, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_content_range, code, in, out_size, remaining);
}
DecodeResult range(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_range, kRange, in, out_size, remaining);
}

void expect_crange_refused(const Bytes &in, uint32_t code = kContentRange) {
    DecodeResult r = crange(in, code);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}
void expect_range_refused(const Bytes &in) {
    DecodeResult r = range(in);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}

// ---- Content-Range ------------------------------------------------------

TEST(DecodeContentRange, FirstPositionAndEntityLength) {
    DecodeResult r = crange(bytes({0x03, 0x00, 0x81, 0x10}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:bytes 0- /144\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeContentRange, NewerCodeSameText) {
    DecodeResult r = crange(bytes({0x03, 0x00, 0x81, 0x10}), kContentRangeV4);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:bytes 0- /144\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeContentRange, UnknownEntityLengthUnderNewerCode) {
    DecodeResult r = crange(bytes({0x02, 0x00, 0x80}), kContentRangeV4);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:bytes 0- /*\n");
    EXPECT_EQ(r.moved, 3);
}

TEST(DecodeContentRange, UnknownEntityLengthPassesOnlyItsOctet) {
    // The length is not compared after "*": the cursor stops after 0x80.
    DecodeResult r = crange(bytes({0x04, 0x00, 0x80, 0x77, 0x77}), kContentRangeV4);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:bytes 0- /*\n");
    EXPECT_EQ(r.moved, 3);
}

TEST(DecodeContentRange, UnknownEntityLengthOnlyUnderNewerCode) {
    // Under 0x10 the octet 0x80 is read as a uintvar, which may not start
    // with a bare continuation octet.
    expect_crange_refused(bytes({0x02, 0x00, 0x80}));
    expect_crange_refused(bytes({0x03, 0x00, 0x80, 0x01}));
}

TEST(DecodeContentRange, MultiOctetPositions) {
    DecodeResult r = crange(bytes({0x04, 0x81, 0x00, 0x81, 0x10}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:bytes 128- /144\n");
    EXPECT_EQ(r.moved, 5);
}

TEST(DecodeContentRange, LargestPositions) {
    DecodeResult r = crange(bytes({0x0A, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:bytes 4294967295- /4294967295\n");
    EXPECT_EQ(r.moved, 11);
}

TEST(DecodeContentRange, FirstPositionFillingTheLengthRefused) {
    expect_crange_refused(bytes({0x02, 0x81, 0x00}));
    expect_crange_refused(bytes({0x01, 0x00}));
    expect_crange_refused(bytes({0x02, 0x81, 0x00}), kContentRangeV4);
}

TEST(DecodeContentRange, LengthNotUsedExactlyRefused) {
    expect_crange_refused(bytes({0x04, 0x00, 0x01, 0x02, 0x03}));
    expect_crange_refused(bytes({0x02, 0x00, 0x81, 0x10}));
    expect_crange_refused(bytes({0x03, 0x00, 0x81, 0x80, 0x01}));
}

TEST(DecodeContentRange, OnlyAShortLengthAccepted) {
    expect_crange_refused(bytes({0x00, 0x00, 0x01}));
    expect_crange_refused(bytes({0x1F, 0x02, 0x00, 0x01}));
    expect_crange_refused(bytes({0x80}));
    expect_crange_refused(cstr("bytes"));
    expect_crange_refused(bytes({0x05, 0x00, 0x01}));
    DecodeResult r = crange(bytes({0x02, 0x00, 0x01}), kContentRange, 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeContentRange, LengthReachingTheInputEndReadsNothingPast) {
    // The length equals remaining: the entity length's last octet is missing.
    expect_crange_refused(bytes({0x03, 0x00, 0x81}));
}

TEST(DecodeContentRange, EachHeaderGetsItsOwnLine) {
    OutBuffer out(256);
    EXPECT_EQ(decode_into(wsp_dec_content_range, kContentRange, bytes({0x02, 0x00, 0x05}), out).status, WSP_OK);
    DecodeResult r = decode_into(wsp_dec_content_range, kContentRange, bytes({0x02, 0x01, 0x05}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:bytes 0- /5\ncontent-range:bytes 1- /5\n");
}

TEST(DecodeContentRange, OutputFullRefusedWithCursorUnchanged) {
    // "content-range:bytes 0- /5\n" is 26 octets.
    DecodeResult r = crange(bytes({0x02, 0x00, 0x05}), kContentRange, 25);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    DecodeResult fits = crange(bytes({0x02, 0x00, 0x05}), kContentRange, 26);
    EXPECT_EQ(fits.status, WSP_OK);
    EXPECT_EQ(fits.moved, 3);
    EXPECT_EQ(fits.text, "content-range:bytes 0- /5\n");
}

TEST(DecodeContentRange, TruncatedAtEveryLength) {
    const Bytes full = bytes({0x04, 0x81, 0x00, 0x81, 0x10});
    for (size_t n = 0; n < full.size(); ++n) {
        Bytes part(full.begin(), full.begin() + static_cast<long>(n));
        for (uint32_t code : {kContentRange, kContentRangeV4}) expect_crange_refused(part, code);
    }
}

// ---- Range ------------------------------------------------------------------

TEST(DecodeRange, SuffixRange) {
    DecodeResult r = range(bytes({0x02, 0x81, 0x05}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "range:-5\n");
    EXPECT_EQ(r.moved, 3);
}

TEST(DecodeRange, ByteRangeWithLastPosition) {
    DecodeResult r = range(bytes({0x04, 0x80, 0x00, 0x83, 0x73}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "range:0-499\n");
    EXPECT_EQ(r.moved, 5);
}

TEST(DecodeRange, ByteRangeWithoutLastPosition) {
    DecodeResult r = range(bytes({0x03, 0x80, 0x83, 0x74}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "range:500-\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeRange, LargestPositions) {
    DecodeResult r = range(bytes({0x0B, 0x80, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "range:4294967295-4294967295\n");
    EXPECT_EQ(r.moved, 12);
}

TEST(DecodeRange, UnknownFormRefused) {
    expect_range_refused(bytes({0x02, 0x82, 0x05}));
    expect_range_refused(bytes({0x02, 0xFF, 0x05}));
}

TEST(DecodeRange, FormMustBeAShortInteger) {
    expect_range_refused(bytes({0x02, 0x00, 0x05}));
    expect_range_refused(bytes({0x03, 'a', 0, 0x05}));
    expect_range_refused(bytes({0x01}));
}

TEST(DecodeRange, PositionsMustBeReadableUintvars) {
    expect_range_refused(bytes({0x03, 0x80, 0x80, 0x01}));     // leading continuation octet
    expect_range_refused(bytes({0x02, 0x81, 0x85}));           // suffix runs over the length
    expect_range_refused(bytes({0x04, 0x80, 0x00, 0x81, 0x81})); // last position never ends
    expect_range_refused(bytes({0x03, 0x80, 0x00, 0x81, 0x00})); // last position over the length
}

TEST(DecodeRange, LengthNotUsedExactlyRefused) {
    expect_range_refused(bytes({0x03, 0x81, 0x05, 0x00}));
    expect_range_refused(bytes({0x05, 0x80, 0x00, 0x01, 0x02, 0x03}));
    expect_range_refused(bytes({0x00, 0x81, 0x05}));
    expect_range_refused(bytes({0x01, 0x81, 0x05}));
}

TEST(DecodeRange, OnlyAShortLengthAccepted) {
    expect_range_refused(bytes({0x1F, 0x02, 0x81, 0x05}));
    expect_range_refused(bytes({0x81, 0x05}));
    expect_range_refused(bytes({0x04, 0x81, 0x05}));
    DecodeResult r = range(bytes({0x02, 0x81, 0x05}), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeRange, LengthReachingTheInputEndReadsNothingPast) {
    expect_range_refused(bytes({0x04, 0x80, 0x00, 0x83}));
    expect_range_refused(bytes({0x02, 0x81}));
}

TEST(DecodeRange, RepeatedHeadersMergeIntoOneLine) {
    OutBuffer out(256);
    EXPECT_EQ(decode_into(wsp_dec_range, kRange, bytes({0x04, 0x80, 0x00, 0x83, 0x73}), out).status, WSP_OK);
    DecodeResult r = decode_into(wsp_dec_range, kRange, bytes({0x02, 0x81, 0x05}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "range:0-499,-5\n");
}

TEST(DecodeRange, OutputFullPassesTruncatedAndMovesCursor) {
    DecodeResult r = range(bytes({0x02, 0x81, 0x05}), 8);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 3);
}

TEST(DecodeRange, TruncatedAtEveryLength) {
    const Bytes forms[] = {bytes({0x04, 0x80, 0x00, 0x83, 0x73}), bytes({0x03, 0x81, 0x83, 0x74})};
    for (const Bytes &full : forms) {
        ASSERT_EQ(range(full).status, WSP_OK) << hex(full);
        for (size_t n = 0; n < full.size(); ++n) expect_range_refused(Bytes(full.begin(), full.begin() + static_cast<long>(n)));
    }
}

TEST(DecodeContentRange, CodePastTheNameTableRefused) {
    EXPECT_EQ(crange(bytes({0x02, 0x00, 0x05}), 0x48).status, WSP_ERR_FAIL);
}

TEST(DecodeRange, CodePastTheNameTableRefused) {
    EXPECT_EQ(decode(wsp_dec_range, 0x48, bytes({0x02, 0x81, 0x05})).status, WSP_ERR_FAIL);
}

// ---- through the block decoder ------------------------------------------------

TEST(DecodeContentRange, BlockWritesBothCodes) {
    DecodeResult r = decode_block(bytes({0x90, 0x03, 0x00, 0x81, 0x10, 0xBE, 0x02, 0x00, 0x80}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:bytes 0- /144\ncontent-range:bytes 0- /*\n");
}

TEST(DecodeRange, BlockWritesSuffixRange) {
    DecodeResult r = decode_block(bytes({0xA3, 0x02, 0x81, 0x05}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "range:-5\n");
}

} // namespace

// uintvar and Short-integer cursor functions.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "primitives.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

struct EncResult {
    int status;
    uint8_t count;
    std::string text;
    ptrdiff_t advanced;
};

EncResult encode(uint32_t v) {
    uint8_t out[8];
    std::memset(out, 0xEE, sizeof out);
    uint8_t *cursor = out;
    uint8_t count = 0xAA;
    int status = wsp_enc_varint(v, &cursor, &count);
    // Only `count` octets may be touched.
    for (size_t i = count; i < sizeof out; ++i) EXPECT_EQ(out[i], 0xEE) << "octet " << i << " touched";
    return {status, count, hex(out, count), cursor - out};
}

} // namespace

// ---- wsp_enc_varint ---------------------------------------------------------

TEST(EncVarint, ZeroIsOneOctet) {
    EncResult r = encode(0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.count, 1);
    EXPECT_EQ(r.text, "00");
    EXPECT_EQ(r.advanced, 1);
}

TEST(EncVarint, SevenBitsIsOneOctet) {
    EncResult r = encode(0x7F);
    EXPECT_EQ(r.count, 1);
    EXPECT_EQ(r.text, "7F");
}

TEST(EncVarint, EightBitsIsTwoOctets) {
    EncResult r = encode(0x80);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.count, 2);
    EXPECT_EQ(r.text, "81 00");
    EXPECT_EQ(r.advanced, 2);
}

TEST(EncVarint, FourteenAndFifteenBits) {
    EXPECT_EQ(encode(0x3FFF).text, "FF 7F");
    EncResult r = encode(0x4000);
    EXPECT_EQ(r.count, 3);
    EXPECT_EQ(r.text, "81 80 00");
}

TEST(EncVarint, TwentyEightBitsIsFourOctets) {
    EncResult r = encode(0x0FFFFFFF);
    EXPECT_EQ(r.count, 4);
    EXPECT_EQ(r.text, "FF FF FF 7F");
}

TEST(EncVarint, TwentyNineBitsIsFiveOctets) {
    EncResult r = encode(0x10000000);
    EXPECT_EQ(r.count, 5);
    EXPECT_EQ(r.text, "81 80 80 80 00");
}

TEST(EncVarint, LargestValue) {
    EncResult r = encode(0xFFFFFFFF);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.count, 5);
    EXPECT_EQ(r.text, "8F FF FF FF 7F");
    EXPECT_EQ(r.advanced, 5);
}

TEST(EncVarint, NullArgumentsRefused) {
    uint8_t out[5] = {};
    uint8_t *cursor = out;
    uint8_t *null_cursor = nullptr;
    uint8_t count = 9;
    EXPECT_EQ(wsp_enc_varint(1, nullptr, &count), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_enc_varint(1, &null_cursor, &count), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_enc_varint(1, &cursor, nullptr), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, out);
    EXPECT_EQ(count, 9);
}

// ---- wsp_dec_varint ---------------------------------------------------------

TEST(DecVarint, SingleOctet) {
    InBytes in(bytes({0x05}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 1), WSP_OK);
    EXPECT_EQ(v, 5u);
    EXPECT_EQ(cursor, in.data() + 1);
}

TEST(DecVarint, LeadingEmptyContinuationRejected) {
    InBytes in(bytes({0x80, 0x01}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 2), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(DecVarint, LaterEmptyContinuationAccepted) {
    InBytes in(bytes({0x81, 0x80, 0x00}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 3), WSP_OK);
    EXPECT_EQ(v, 0x4000u);
    EXPECT_EQ(cursor, in.data() + 3);
}

TEST(DecVarint, AvailZeroFailsWithoutReading) {
    // The cursor sits at the end of an exact-size block: a read would be
    // reported by the address sanitizer.
    InBytes in(bytes({0x05}));
    const uint8_t *end = in.data() + 1;
    const uint8_t *cursor = end;
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 0), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, end);
    EXPECT_EQ(v, 77u);
}

TEST(DecVarint, TwoOctetValueWithAvailOneFails) {
    InBytes in(bytes({0x81})); // the second octet is not there at all
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 1), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(DecVarint, ValueEndingExactlyAtAvail) {
    InBytes in(bytes({0x81, 0x00}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 2), WSP_OK);
    EXPECT_EQ(v, 0x80u);
    EXPECT_EQ(cursor, in.data() + 2);
}

TEST(DecVarint, TruncatedAtEveryLength) {
    const Bytes full = bytes({0x8F, 0xFF, 0xFF, 0xFF, 0x7F});
    for (size_t n = 0; n < full.size(); ++n) {
        InBytes in(Bytes(full.begin(), full.begin() + n));
        const uint8_t *cursor = in.data();
        uint32_t v = 77;
        EXPECT_EQ(wsp_dec_varint(&cursor, &v, static_cast<uint16_t>(n)), WSP_ERR_FAIL) << n;
        EXPECT_EQ(cursor, in.data()) << n;
        EXPECT_EQ(v, 77u) << n;
    }
    InBytes in(full);
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 5), WSP_OK);
    EXPECT_EQ(v, 0xFFFFFFFFu);
    EXPECT_EQ(cursor, in.data() + 5);
}

TEST(DecVarint, AvailLargerThanValueConsumesOnlyTheValue) {
    InBytes in(bytes({0x81, 0x00, 0x42, 0x43}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 4), WSP_OK);
    EXPECT_EQ(v, 0x80u);
    EXPECT_EQ(cursor, in.data() + 2);
}

TEST(DecVarint, FiveOctetsKeepOnlyLow32Bits) {
    // 0x10 in the first group is bit 32: dropped without an error.
    InBytes in(bytes({0x90, 0x80, 0x80, 0x80, 0x00}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 5), WSP_OK);
    EXPECT_EQ(v, 0u);
    EXPECT_EQ(cursor, in.data() + 5);
}

TEST(DecVarint, SixOctetsRejected) {
    InBytes in(bytes({0x81, 0x81, 0x81, 0x81, 0x81, 0x01}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 6), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(DecVarint, SixContinuationOctetsRejected) {
    InBytes in(bytes({0x81, 0x81, 0x81, 0x81, 0x81, 0x81, 0x81}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varint(&cursor, &v, 7), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
}

TEST(DecVarint, RoundTripsEncoder) {
    const uint32_t values[] = {0, 1, 0x7F, 0x80, 0x3FFF, 0x4000, 0x1FFFFF, 0x200000, 0x0FFFFFFF, 0x10000000,
                               0xFFFFFFFF};
    for (uint32_t value : values) {
        uint8_t out[5];
        uint8_t *w = out;
        uint8_t count = 0;
        ASSERT_EQ(wsp_enc_varint(value, &w, &count), WSP_OK);
        InBytes in(Bytes(out, out + count));
        const uint8_t *cursor = in.data();
        uint32_t v = 0;
        EXPECT_EQ(wsp_dec_varint(&cursor, &v, count), WSP_OK) << value;
        EXPECT_EQ(v, value);
        EXPECT_EQ(cursor, in.data() + count);
    }
}

TEST(DecVarint, NullArgumentsRefused) {
    uint8_t in[1] = {5};
    const uint8_t *cursor = in;
    const uint8_t *null_cursor = nullptr;
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varint(nullptr, &v, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_dec_varint(&null_cursor, &v, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_dec_varint(&cursor, nullptr, 1), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in);
}

// ---- wsp_dec_varintLen ------------------------------------------------------

TEST(DecVarintLen, SingleOctetWithCountOne) {
    InBytes in(bytes({0x05}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 1, &v, 1), WSP_OK);
    EXPECT_EQ(v, 5u);
    EXPECT_EQ(cursor, in.data() + 1);
}

TEST(DecVarintLen, FailureIsTheUnsignedPattern) {
    InBytes in(bytes({0x05}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    int status = wsp_dec_varintLen(&cursor, 2, &v, 1);
    EXPECT_EQ(status, 65322);
    EXPECT_EQ(status, WSP_VARINTLEN_FAIL);
    EXPECT_EQ(static_cast<int16_t>(status), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(DecVarintLen, ExactTwoOctets) {
    InBytes in(bytes({0x81, 0x00}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 2, &v, 2), WSP_OK);
    EXPECT_EQ(v, 0x80u);
    EXPECT_EQ(cursor, in.data() + 2);
}

TEST(DecVarintLen, ValueLongerThanCountFails) {
    InBytes in(bytes({0x81, 0x00}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 1, &v, 2), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(DecVarintLen, ValueShorterThanCountFails) {
    InBytes in(bytes({0x81, 0x00, 0x00}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 3, &v, 3), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 77u);
}

TEST(DecVarintLen, LeadingEmptyContinuationFails) {
    InBytes in(bytes({0x80, 0x01}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 2, &v, 2), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(cursor, in.data());
}

TEST(DecVarintLen, AvailZeroFailsWithoutReading) {
    InBytes in(bytes({0x05}));
    const uint8_t *end = in.data() + 1;
    const uint8_t *cursor = end;
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 1, &v, 0), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(cursor, end);
    EXPECT_EQ(v, 77u);
}

TEST(DecVarintLen, CountZeroFails) {
    InBytes in(bytes({0x05}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 0, &v, 1), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(cursor, in.data());
}

TEST(DecVarintLen, TruncatedFails) {
    InBytes in(bytes({0x81})); // second octet missing
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 2, &v, 1), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(cursor, in.data());
}

TEST(DecVarintLen, FiveOctetsAccepted) {
    InBytes in(bytes({0x8F, 0xFF, 0xFF, 0xFF, 0x7F}));
    const uint8_t *cursor = in.data();
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 5, &v, 5), WSP_OK);
    EXPECT_EQ(v, 0xFFFFFFFFu);
    EXPECT_EQ(cursor, in.data() + 5);
}

TEST(DecVarintLen, SixOctetsRejectedEvenWhenAsked) {
    InBytes in(bytes({0x81, 0x81, 0x81, 0x81, 0x81, 0x01}));
    const uint8_t *cursor = in.data();
    uint32_t v = 77;
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 6, &v, 6), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(cursor, in.data());
}

TEST(DecVarintLen, NullArgumentsRefused) {
    uint8_t in[1] = {5};
    const uint8_t *cursor = in;
    uint32_t v = 0;
    EXPECT_EQ(wsp_dec_varintLen(nullptr, 1, &v, 1), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(wsp_dec_varintLen(&cursor, 1, nullptr, 1), WSP_VARINTLEN_FAIL);
    EXPECT_EQ(cursor, in);
}

// ---- Short-integer cursor functions ----------------------------------------

TEST(ShortIntEncodeTo, WritesValueWithHighBit) {
    uint8_t out[2] = {0xEE, 0xEE};
    uint8_t *cursor = out;
    EXPECT_EQ(wsp_short_int_encodeto(&cursor, 5), WSP_OK);
    EXPECT_EQ(hex(out, 2), "85 EE");
    EXPECT_EQ(cursor, out + 1);
    EXPECT_EQ(wsp_short_int_encodeto(&cursor, 127), WSP_OK);
    EXPECT_EQ(hex(out, 2), "85 FF");
    EXPECT_EQ(cursor, out + 2);
}

TEST(ShortIntEncodeTo, ZeroIs0x80) {
    uint8_t out[1] = {0xEE};
    uint8_t *cursor = out;
    EXPECT_EQ(wsp_short_int_encodeto(&cursor, 0), WSP_OK);
    EXPECT_EQ(out[0], 0x80);
}

TEST(ShortIntEncodeTo, OnlyLowEightBitsCount) {
    uint8_t out[2] = {0xEE, 0xEE};
    uint8_t *cursor = out;
    EXPECT_EQ(wsp_short_int_encodeto(&cursor, 300), WSP_OK); // 300 mod 256 = 44
    EXPECT_EQ(out[0], 0xAC);
    EXPECT_EQ(wsp_short_int_encodeto(&cursor, 256), WSP_OK);
    EXPECT_EQ(out[1], 0x80);
}

TEST(ShortIntEncodeTo, Bit7RefusedCursorUnchanged) {
    uint8_t out[1] = {0xEE};
    uint8_t *cursor = out;
    EXPECT_EQ(wsp_short_int_encodeto(&cursor, 128), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_short_int_encodeto(&cursor, 0x180), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_short_int_encodeto(&cursor, 255), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, out);
    EXPECT_EQ(out[0], 0xEE);
}

TEST(ShortIntDirectDecode, ReadsLowSevenBits) {
    InBytes in(bytes({0x80, 0xFF, 0x85}));
    const uint8_t *cursor = in.data();
    uint8_t v = 0xAA;
    EXPECT_EQ(wsp_shortint_direct_decode(&cursor, &v), WSP_OK);
    EXPECT_EQ(v, 0);
    EXPECT_EQ(wsp_shortint_direct_decode(&cursor, &v), WSP_OK);
    EXPECT_EQ(v, 127);
    EXPECT_EQ(wsp_shortint_direct_decode(&cursor, &v), WSP_OK);
    EXPECT_EQ(v, 5);
    EXPECT_EQ(cursor, in.data() + 3);
}

TEST(ShortIntDirectDecode, OctetBelow0x80Refused) {
    InBytes in(bytes({0x7F}));
    const uint8_t *cursor = in.data();
    uint8_t v = 0xAA;
    EXPECT_EQ(wsp_shortint_direct_decode(&cursor, &v), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in.data());
    EXPECT_EQ(v, 0xAA);
}

TEST(ShortIntCursor, NullArgumentsRefused) {
    uint8_t *null_out = nullptr;
    const uint8_t *null_in = nullptr;
    uint8_t v = 0;
    EXPECT_EQ(wsp_short_int_encodeto(nullptr, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_short_int_encodeto(&null_out, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_shortint_direct_decode(nullptr, &v), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_shortint_direct_decode(&null_in, &v), WSP_ERR_FAIL);
    uint8_t in[1] = {0x81};
    const uint8_t *cursor = in;
    EXPECT_EQ(wsp_shortint_direct_decode(&cursor, nullptr), WSP_ERR_FAIL);
    EXPECT_EQ(cursor, in);
}

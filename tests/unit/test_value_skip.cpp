// Stepping over and measuring encoded values.
#include <gtest/gtest.h>

#include <string>

#include "decode/decode.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

// Runs wsp_skip_value over an exact-size copy of `in` with `remaining`;
// returns the status and stores how far the cursor moved.
int skip(const Bytes &in, uint16_t remaining, long *moved) {
    InBytes copy(in);
    const uint8_t *p = copy.data();
    int status = wsp_skip_value(&p, remaining);
    *moved = p - copy.data();
    return status;
}

int size_of(const Bytes &in, uint16_t remaining, uint32_t *size) {
    InBytes copy(in);
    return wsp_value_size(copy.data(), size, remaining);
}

Bytes text_of(size_t chars) {
    Bytes b(chars, 'a');
    b.push_back(0);
    return b;
}

} // namespace

// ---- wsp_skip_value ---------------------------------------------------------

TEST(SkipValue, NullCursorFails) {
    const uint8_t *p = nullptr;
    EXPECT_EQ(wsp_skip_value(nullptr, 3), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_skip_value(&p, 3), WSP_ERR_FAIL);
}

TEST(SkipValue, NothingLeftFails) {
    long moved = -1;
    EXPECT_EQ(skip(bytes({0x85}), 0, &moved), WSP_ERR_FAIL);
    EXPECT_EQ(moved, 0);
}

TEST(SkipValue, ShortLengthMovesOnePlusLength) {
    long moved = 0;
    EXPECT_EQ(skip(bytes({0x03, 1, 2, 3, 0x85}), 5, &moved), WSP_OK);
    EXPECT_EQ(moved, 4);
    EXPECT_EQ(skip(bytes({0x00, 0x85}), 2, &moved), WSP_OK);
    EXPECT_EQ(moved, 1);
    EXPECT_EQ(skip(bytes({0x1E}), 1, &moved), WSP_OK); // 31 claimed, 1 left
    EXPECT_EQ(moved, 1);
}

TEST(SkipValue, LengthPastTheEndStopsAtTheEnd) {
    long moved = 0;
    EXPECT_EQ(skip(bytes({0x05, 1, 2}), 3, &moved), WSP_OK);
    EXPECT_EQ(moved, 3);
}

TEST(SkipValue, ShortIntegerIsOneOctet) {
    long moved = 0;
    EXPECT_EQ(skip(bytes({0x80, 0x81}), 2, &moved), WSP_OK);
    EXPECT_EQ(moved, 1);
    EXPECT_EQ(skip(bytes({0xFF}), 1, &moved), WSP_OK);
    EXPECT_EQ(moved, 1);
}

TEST(SkipValue, LengthQuoteWithUintvar) {
    Bytes in = cat({bytes({0x1F, 0x81, 0x00}), Bytes(128, 7), bytes({0x85})});
    long moved = 0;
    EXPECT_EQ(skip(in, static_cast<uint16_t>(in.size()), &moved), WSP_OK);
    EXPECT_EQ(moved, 131);
}

TEST(SkipValue, LengthQuoteClaimingTooMuchStopsAtEnd) {
    long moved = 0;
    EXPECT_EQ(skip(bytes({0x1F, 0x20, 1, 2}), 4, &moved), WSP_OK);
    EXPECT_EQ(moved, 4);
}

TEST(SkipValue, LengthQuoteFailures) {
    long moved = -1;
    EXPECT_EQ(skip(bytes({0x1F}), 1, &moved), WSP_ERR_FAIL); // no uintvar octet
    EXPECT_EQ(moved, 0);
    EXPECT_EQ(skip(bytes({0x1F, 0x80, 0x01}), 3, &moved), WSP_ERR_FAIL); // leading 0x80
    EXPECT_EQ(moved, 0);
    EXPECT_EQ(skip(bytes({0x1F, 0x81}), 2, &moved), WSP_ERR_FAIL); // uintvar cut by the end
    EXPECT_EQ(moved, 0);
    EXPECT_EQ(skip(bytes({0x1F, 0x81, 0x81, 0x81, 0x81, 0x81, 0x01}), 7, &moved), WSP_ERR_FAIL); // six octets
    EXPECT_EQ(moved, 0);
}

TEST(SkipValue, HugeUintvarWrapsLikeA32BitStep) {
    // 1 + 5 + 0xFFFFFFFF is 5 modulo 2^32.
    long moved = 0;
    EXPECT_EQ(skip(bytes({0x1F, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0, 0, 0, 0}), 10, &moved), WSP_OK);
    EXPECT_EQ(moved, 5);
}

TEST(SkipValue, TextMovesPastItsNul) {
    long moved = 0;
    EXPECT_EQ(skip(bytes({'a', 'b', 'c', 0, 0x85}), 5, &moved), WSP_OK);
    EXPECT_EQ(moved, 4);
    EXPECT_EQ(skip(bytes({'"', 'a', 0}), 3, &moved), WSP_OK);
    EXPECT_EQ(moved, 3);
    EXPECT_EQ(skip(bytes({0x7F, 0xE9, 0}), 3, &moved), WSP_OK);
    EXPECT_EQ(moved, 3);
}

TEST(SkipValue, TextOf196CharactersIsTheLongestSkipped) {
    long moved = 0;
    Bytes ok = text_of(196);
    EXPECT_EQ(skip(ok, static_cast<uint16_t>(ok.size()), &moved), WSP_OK);
    EXPECT_EQ(moved, 197);
    Bytes too_long = text_of(197);
    moved = -1;
    EXPECT_EQ(skip(too_long, static_cast<uint16_t>(too_long.size()), &moved), WSP_ERR_FAIL);
    EXPECT_EQ(moved, 0);
}

TEST(SkipValue, TextWithoutNulBeforeTheEndFails) {
    long moved = -1;
    EXPECT_EQ(skip(bytes({'a', 'b', 'c'}), 3, &moved), WSP_ERR_FAIL);
    EXPECT_EQ(moved, 0);
    // The NUL exists but lies at the hard end.
    EXPECT_EQ(skip(bytes({'a', 'b', 0}), 2, &moved), WSP_ERR_FAIL);
    EXPECT_EQ(moved, 0);
}

// ---- wsp_value_size ---------------------------------------------------------

TEST(ValueSize, NullOrEmptyFails) {
    uint32_t size = 77;
    EXPECT_EQ(wsp_value_size(nullptr, &size, 3), WSP_ERR_FAIL);
    uint8_t one = 0x85;
    EXPECT_EQ(wsp_value_size(&one, nullptr, 1), WSP_ERR_FAIL);
    EXPECT_EQ(size_of(bytes({0x85}), 0, &size), WSP_ERR_FAIL);
    EXPECT_EQ(size, 77u);
}

TEST(ValueSize, ShortLengthIsNotComparedWithRemaining) {
    uint32_t size = 0;
    EXPECT_EQ(size_of(bytes({0x00}), 1, &size), WSP_OK);
    EXPECT_EQ(size, 1u);
    EXPECT_EQ(size_of(bytes({0x1E}), 1, &size), WSP_OK);
    EXPECT_EQ(size, 31u);
}

TEST(ValueSize, ShortIntegerIsOne) {
    uint32_t size = 0;
    EXPECT_EQ(size_of(bytes({0x85}), 1, &size), WSP_OK);
    EXPECT_EQ(size, 1u);
}

TEST(ValueSize, LengthQuoteCountsItsOwnOctets) {
    uint32_t size = 0;
    EXPECT_EQ(size_of(bytes({0x1F, 0x81, 0x00}), 3, &size), WSP_OK);
    EXPECT_EQ(size, 131u);
    EXPECT_EQ(size_of(bytes({0x1F, 0x20}), 2, &size), WSP_OK);
    EXPECT_EQ(size, 34u);
}

TEST(ValueSize, LengthQuoteFailureLeavesSize) {
    uint32_t size = 9;
    EXPECT_EQ(size_of(bytes({0x1F}), 1, &size), WSP_ERR_FAIL);
    EXPECT_EQ(size_of(bytes({0x1F, 0x80, 0x01}), 3, &size), WSP_ERR_FAIL);
    EXPECT_EQ(size_of(bytes({0x1F, 0x81}), 2, &size), WSP_ERR_FAIL);
    EXPECT_EQ(size, 9u);
}

TEST(ValueSize, TextHasNo197Bound) {
    uint32_t size = 0;
    Bytes t = text_of(300);
    EXPECT_EQ(size_of(t, static_cast<uint16_t>(t.size()), &size), WSP_OK);
    EXPECT_EQ(size, 301u);
    EXPECT_EQ(size_of(bytes({0x7F, 0xE9, 0}), 3, &size), WSP_OK);
    EXPECT_EQ(size, 3u);
}

TEST(ValueSize, TextNulMustLieBeforeRemaining) {
    uint32_t size = 5;
    EXPECT_EQ(size_of(bytes({'a', 'b', 0}), 2, &size), WSP_ERR_FAIL);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(size_of(bytes({'a', 'b', 0}), 3, &size), WSP_OK);
    EXPECT_EQ(size, 3u);
}

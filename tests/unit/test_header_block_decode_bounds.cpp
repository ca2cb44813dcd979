// The octet at the block's end: a name or text value read by the walk may
// end with its NUL on the first octet after the block when the input
// buffer still holds that octet; values handed to the header decoders keep
// the block's end as their bound.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace header_block_decode;

namespace {

// The octets in a calloc'ed buffer of exactly `size` octets (at least the
// octets' own count) starting `offset` octets in; the holder's length is
// `length`.
struct HeldBlock {
    wsp_buffer buf{};
    wsp_hdrbuf hdr{};
    HeldBlock(const Bytes &octets, uint16_t offset, uint16_t size, uint16_t length) {
        buf.data = static_cast<unsigned char *>(std::calloc(size, 1));
        std::memcpy(buf.data + offset, octets.data(), octets.size());
        buf.size = size;
        buf.offset = offset;
        hdr.length = length;
        hdr.buffer = &buf;
    }
    ~HeldBlock() { std::free(buf.data); }
    HeldBlock(const HeldBlock &) = delete;
    HeldBlock &operator=(const HeldBlock &) = delete;
};

} // namespace

TEST(DecHdrBounds, TextValueEndingOnTheOctetAfterTheBlockIsRead) {
    // "x-a\0abc\0" in an 8-octet buffer, the holder counting 7 octets: the
    // value's NUL is the buffer's last octet.
    HeldBlock b(app("x-a", "abc"), 0, 8, 7);
    OutBuffer out(64);
    EXPECT_EQ(wsp_dec_hdr(&b.hdr, out.get(), nullptr, 4), WSP_OK);
    EXPECT_EQ(out.text(), "x-a:abc\n");
    EXPECT_EQ(out->length, 8);
    EXPECT_NE(b.buf.data, nullptr);
}

TEST(DecHdrBounds, WithoutThatOctetTheValueIsUnreadable) {
    // The same 7 octets in a 7-octet buffer: there is no octet after them.
    HeldBlock b(Bytes{'x', '-', 'a', 0, 'a', 'b', 'c'}, 0, 7, 7);
    OutBuffer out(64);
    EXPECT_EQ(wsp_dec_hdr(&b.hdr, out.get(), nullptr, 4), WSP_ERR_ARG);
    EXPECT_EQ(b.buf.data, nullptr); // released
    EXPECT_EQ(out.text(), "");
}

TEST(DecHdrBounds, BufferSizeCountsFromDataNotFromOffset) {
    // Offset 2, 7 octets held: the octet after them is data[9], inside a
    // 10-octet buffer but not inside a 9-octet one.
    {
        HeldBlock b(app("x-a", "abc"), 2, 10, 7);
        OutBuffer out(64);
        EXPECT_EQ(wsp_dec_hdr(&b.hdr, out.get(), nullptr, 4), WSP_OK);
        EXPECT_EQ(out.text(), "x-a:abc\n");
    }
    {
        HeldBlock b(Bytes{'x', '-', 'a', 0, 'a', 'b', 'c'}, 2, 9, 7);
        OutBuffer out(64);
        EXPECT_EQ(wsp_dec_hdr(&b.hdr, out.get(), nullptr, 4), WSP_ERR_ARG);
        EXPECT_EQ(b.buf.data, nullptr);
    }
}

TEST(DecHdrBounds, NameEndingOnTheOctetAfterTheBlockLeavesNoValue) {
    // "x-a" with its NUL just past the block: the name is read, and there
    // is no value left to read.
    HeldBlock b(cstr("x-a"), 0, 4, 3);
    OutBuffer out(64);
    EXPECT_EQ(wsp_dec_hdr(&b.hdr, out.get(), nullptr, 4), WSP_ERR_FAIL);
    EXPECT_EQ(b.buf.data, nullptr);
    EXPECT_EQ(out.text(), "");
}

TEST(DecHdrBounds, OnlyTheFirstOctetAfterTheBlockIsRead) {
    // Two octets short: the value's NUL lies beyond the octet after the
    // block, so the read fails even though the buffer holds it.
    HeldBlock b(app("x-a", "abc"), 0, 8, 6);
    OutBuffer out(64);
    EXPECT_EQ(wsp_dec_hdr(&b.hdr, out.get(), nullptr, 4), WSP_ERR_ARG);
    EXPECT_EQ(b.buf.data, nullptr);
}

TEST(DecHdrBounds, WellKnownTextValueKeepsTheBlockEnd) {
    // User-Agent "ab" with its NUL just past the block: the decoder is
    // handed the octets left in the block and refuses the value, which can
    // then not be measured either.
    HeldBlock b(Bytes{0xA9, 'a', 'b', 0}, 0, 4, 3);
    OutBuffer out(64);
    EXPECT_EQ(wsp_dec_hdr(&b.hdr, out.get(), nullptr, 4), WSP_ERR_FAIL);
    EXPECT_EQ(b.buf.data, nullptr);
    EXPECT_EQ(out.text(), "");
}

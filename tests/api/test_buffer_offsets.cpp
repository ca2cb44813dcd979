// The exported buffer-style functions seen by a client whose output buffer
// has a non-zero offset: bytes go to data + offset + length, size limits
// length (not offset + length), so the writable region is
// data[0 .. offset + size).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "api_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using api_core::low16;
using api_core::OnePageList;

namespace {

// A data block larger than the region, filled with 0xEE, so that octets
// before offset and at or after offset + size can be seen untouched.
struct WideBlock {
    explicit WideBlock(uint16_t octets) : n(octets) {
        data = static_cast<unsigned char *>(std::malloc(n));
        std::memset(data, 0xEE, n);
    }
    ~WideBlock() { std::free(data); }
    WideBlock(const WideBlock &) = delete;
    WideBlock &operator=(const WideBlock &) = delete;
    std::string hex_range(uint16_t from, uint16_t to) const { return hex(data + from, to - from); }
    unsigned char *data;
    uint16_t n;
};

wsp_buffer buffer_over(unsigned char *data, uint16_t size, uint16_t offset, uint16_t length) {
    wsp_buffer b;
    std::memset(&b, 0, sizeof b);
    b.data = data;
    b.size = size;
    b.offset = offset;
    b.length = length;
    return b;
}

// wsp_enc_hdr of one page-1 record holding `lines` into `out`.
int encode_block(const std::string &lines, wsp_buffer *out, wsp_hdrbuf *holder) {
    OnePageList list(lines);
    holder->length = 0xBEEF;
    holder->buffer = out;
    return wsp_enc_hdr(list.get(), holder, "1.4");
}

} // namespace

// ---- wsp_tokentext_encode_buff ----------------------------------------------------------

TEST(ApiOffsets, TokenTextFillsSizeBehindOffset) {
    WideBlock block(32);
    wsp_buffer b = buffer_over(block.data, 4, 8, 0);
    EXPECT_EQ(low16(wsp_tokentext_encode_buff("abc", &b)), WSP_OK);
    EXPECT_EQ(b.length, 4);
    EXPECT_EQ(block.hex_range(0, 8), "EE EE EE EE EE EE EE EE");
    EXPECT_EQ(block.hex_range(8, 12), "61 62 63 00");
    EXPECT_EQ(block.hex_range(12, 16), "EE EE EE EE");
}

TEST(ApiOffsets, TokenTextOneOctetShortIsRefused) {
    WideBlock block(32);
    wsp_buffer b = buffer_over(block.data, 3, 8, 0);
    EXPECT_EQ(low16(wsp_tokentext_encode_buff("abc", &b)), WSP_ERR_FAIL);
    EXPECT_EQ(b.length, 0);
    EXPECT_EQ(block.hex_range(0, 16), "EE EE EE EE EE EE EE EE EE EE EE EE EE EE EE EE");
}

TEST(ApiOffsets, TokenTextSweep) {
    expect_offset_safe([](wsp_buffer *out) { return low16(wsp_tokentext_encode_buff("x-abc", out)); });
}

// ---- wsp_encode_content -----------------------------------------------------------------

TEST(ApiOffsets, ContentTypeFillsSizeBehindOffset) {
    WideBlock block(32);
    wsp_buffer b = buffer_over(block.data, 4, 10, 0);
    EXPECT_EQ(low16(wsp_encode_content("text/html; q=0.5", &b, "1.4")), WSP_OK);
    EXPECT_EQ(b.length, 4);
    EXPECT_EQ(block.hex_range(8, 16), "EE EE 03 82 80 33 EE EE");
}

TEST(ApiOffsets, ContentTypeKeepsItsLastOctetAfterExistingBytes) {
    // Offset 3, two octets already there, size 8: the value's last octet
    // lands at data[8], inside the region of eleven octets.
    OutBuffer out(8, 3);
    out.fill(0xEE);
    out->length = 2;
    EXPECT_EQ(low16(wsp_encode_content("text/html; q=0.5", out.get(), "1.4")), WSP_OK);
    EXPECT_EQ(out->length, 6);
    EXPECT_EQ(out.region_hex(), "EE EE EE EE EE 03 82 80 33 EE EE");
}

TEST(ApiOffsets, ContentTypeOneOctetShortIsRefused) {
    OutBuffer out(3, 10);
    EXPECT_EQ(low16(wsp_encode_content("text/html; q=0.5", out.get(), "1.4")), WSP_ERR_FAIL);
}

TEST(ApiOffsets, ContentTypeSweep) {
    expect_offset_safe([](wsp_buffer *out) { return low16(wsp_encode_content("text/html; q=0.5", out, "1.4")); });
    expect_offset_safe(
        [](wsp_buffer *out) { return low16(wsp_encode_content("application/x-thing; charset=utf-8", out, "1.4")); });
}

// ---- wsp_enc_hdr ------------------------------------------------------------------------

TEST(ApiOffsets, HeaderBlockFillsSizeBehindOffset) {
    OutBuffer out(6, 5);
    out.fill(0xEE);
    wsp_hdrbuf holder;
    EXPECT_EQ(low16(encode_block("x-a:b", out.get(), &holder)), WSP_OK);
    EXPECT_EQ(holder.length, 6);
    EXPECT_EQ(out->length, 6);
    EXPECT_EQ(out.region_hex(), "EE EE EE EE EE 78 2D 61 00 62 00");
}

TEST(ApiOffsets, HeaderBlockOneOctetShortFailsAndReleases) {
    OutBuffer out(5, 5);
    wsp_hdrbuf holder;
    EXPECT_EQ(low16(encode_block("x-a:b", out.get(), &holder)), WSP_ERR_FAIL);
    EXPECT_EQ(out->data, nullptr);
    EXPECT_EQ(holder.length, 0xBEEF);
}

TEST(ApiOffsets, HeaderBlockSweep) {
    for (const char *lines : {"x-a:b", "age: 30\naccept-charset: utf-8;q=0.5", "content-length: 70000"}) {
        SCOPED_TRACE(lines);
        expect_offset_safe([lines](wsp_buffer *out) {
            wsp_hdrbuf holder;
            return low16(encode_block(lines, out, &holder));
        });
    }
}

// ---- wsp_uaphdr_encode ------------------------------------------------------------------

namespace {

wsp_uaprof profile_of(const char *text) {
    wsp_uaprof p;
    std::memset(&p, 0, sizeof p);
    p.text = reinterpret_cast<const unsigned char *>(text);
    p.length = static_cast<uint16_t>(std::strlen(text));
    return p;
}

const char kProfile[] = "http://p.example/a"; // 18 characters

} // namespace

namespace {

// wsp_uaphdr_encode on a buffer with two octets already there behind
// offset 4; the first two octets of data are 11 22, all others EE.
struct ProfileRun {
    ProfileRun(uint16_t size, const char *text) : out(size, 4), holder{2, nullptr} {
        out.fill(0xEE);
        out->data[0] = 0x11;
        out->data[1] = 0x22;
        out->length = 2;
        holder.buffer = out.get();
        before = out->data;
        wsp_uaprof profile = profile_of(text);
        wsp_uaphdr_encode(&holder, &profile);
    }
    OutBuffer out;
    wsp_hdrbuf holder;
    unsigned char *before;
};

} // namespace

TEST(ApiOffsets, ProfileDirectPathFillsSizeBehindOffset) {
    // Two octets already there, size 22 = 2 + code octet + 18 + NUL: the
    // direct path (size >= 18 + 2) fills the buffer exactly.
    ProfileRun run(22, kProfile);
    EXPECT_EQ(run.out->data, run.before);
    EXPECT_EQ(run.out->offset, 4);
    EXPECT_EQ(run.out->length, 22);
    EXPECT_EQ(run.holder.length, 22);
    EXPECT_EQ(run.out.region_hex(), "11 22 EE EE EE EE B5 " + hex(text_bytes(kProfile)) + " 00");
}

TEST(ApiOffsets, ProfileDirectPathOneOctetShortLeavesTheBlock) {
    ProfileRun run(21, kProfile);
    EXPECT_EQ(run.out->data, run.before);
    EXPECT_EQ(run.out->size, 21);
    EXPECT_EQ(run.out->length, 2);
    EXPECT_EQ(run.holder.length, 2);
}

TEST(ApiOffsets, ProfileExtensionPathCopiesFromTheStartOfData) {
    // size 10 < 20 + 2: a new buffer of 20 + 2 + 1 octets at offset 0 takes
    // the first two octets of the old data (not those at its offset), then
    // the Profile header.  The trailing blank is trimmed from the line.
    ProfileRun run(10, "http://p.example/a \n");
    EXPECT_NE(run.out->data, run.before);
    EXPECT_EQ(run.out->offset, 0);
    EXPECT_EQ(run.out->size, 23);
    EXPECT_EQ(run.out->length, 22);
    EXPECT_EQ(run.holder.length, 22);
    EXPECT_EQ(run.out.written_hex(), "11 22 B5 " + hex(text_bytes(kProfile)) + " 00");
}

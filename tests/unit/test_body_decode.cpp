// Body hand-over: the piecewise move to the start of the block, the zeroing
// rule and the ownership transfer.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

wsp_buffer make_body(const Bytes &block, uint16_t offset, uint16_t length) {
    wsp_buffer b{};
    b.data = static_cast<unsigned char *>(std::malloc(block.size()));
    std::memcpy(b.data, block.data(), block.size());
    b.size = static_cast<uint16_t>(block.size());
    b.offset = offset;
    b.length = length;
    return b;
}

} // namespace

TEST(DecodeBody, WithoutBodyGivesEmptyResult) {
    wsp_bodybuf src{};
    std::strcpy(src.content_type, "text/plain");
    wsp_body_result out;
    std::memset(&out, 0x5A, sizeof out);
    EXPECT_EQ(wsp_decode_body(&src, &out), WSP_OK);
    EXPECT_STREQ(out.content_type, "");
    EXPECT_EQ(out.body.data, nullptr);
    EXPECT_EQ(out.body.size, 0);
    EXPECT_EQ(out.body.length, 0);
    EXPECT_EQ(out.body.offset, 0);
    EXPECT_EQ(out.body.flags, 0);
}

TEST(DecodeBody, OffsetZeroIsHandedOverUnmoved) {
    wsp_buffer b = make_body(bytes({1, 2, 3, 4}), 0, 3);
    unsigned char *data = b.data;
    wsp_bodybuf src{};
    std::strcpy(src.content_type, "image/gif");
    src.body = &b;
    wsp_body_result out{};
    ASSERT_EQ(wsp_decode_body(&src, &out), WSP_OK);
    EXPECT_STREQ(out.content_type, "image/gif");
    EXPECT_EQ(out.body.data, data);
    EXPECT_EQ(out.body.size, 3);
    EXPECT_EQ(out.body.length, 3);
    EXPECT_EQ(out.body.offset, 0);
    EXPECT_EQ(hex(data, 4), "01 02 03 04");
    EXPECT_EQ(src.body, nullptr);
    // the source record itself is not changed
    EXPECT_EQ(b.length, 3);
    std::free(data);
}

TEST(DecodeBody, PartialLastPieceZeroesOffsetBytesAfterTheRun) {
    // 10 bytes at offset 3 in a 13-byte block
    wsp_buffer b = make_body(bytes({0xE0, 0xE1, 0xE2, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), 3, 10);
    wsp_bodybuf src{};
    src.body = &b;
    wsp_body_result out{};
    ASSERT_EQ(wsp_decode_body(&src, &out), WSP_OK);
    EXPECT_EQ(out.body.length, 10);
    EXPECT_EQ(out.body.size, 10);
    EXPECT_EQ(hex(out.body.data, 13), "00 01 02 03 04 05 06 07 08 09 00 00 00");
    std::free(out.body.data);
}

TEST(DecodeBody, ExactMultipleOfOffsetLeavesStaleBytes) {
    // 9 bytes at offset 3 in a 12-byte block
    wsp_buffer b = make_body(bytes({0xE0, 0xE1, 0xE2, 1, 2, 3, 4, 5, 6, 7, 8, 9}), 3, 9);
    wsp_bodybuf src{};
    src.body = &b;
    wsp_body_result out{};
    ASSERT_EQ(wsp_decode_body(&src, &out), WSP_OK);
    EXPECT_EQ(hex(out.body.data, 12), "01 02 03 04 05 06 07 08 09 07 08 09");
    std::free(out.body.data);
}

TEST(DecodeBody, OffsetLargerThanLengthMovesOnePiece) {
    wsp_buffer b = make_body(bytes({0xE0, 0xE1, 0xE2, 0xE3, 0xE4, 7, 8}), 5, 2);
    wsp_bodybuf src{};
    src.body = &b;
    wsp_body_result out{};
    ASSERT_EQ(wsp_decode_body(&src, &out), WSP_OK);
    EXPECT_EQ(hex(out.body.data, 7), "07 08 00 00 00 00 00");
    std::free(out.body.data);
}

TEST(DecodeBody, ReleasingTheSourceAfterwardsFreesNothing) {
    wsp_buffer b = make_body(bytes({1, 2}), 0, 2);
    wsp_bodybuf src{};
    src.body = &b;
    wsp_body_result out{};
    ASSERT_EQ(wsp_decode_body(&src, &out), WSP_OK);
    wsp_dealloc_bodybuf(&src);
    EXPECT_EQ(b.data, out.body.data);
    EXPECT_NE(out.body.data, nullptr);
    std::free(out.body.data);
}

TEST(DecodeBody, ContentTypeIsAStringCopy) {
    wsp_buffer b = make_body(bytes({1}), 0, 1);
    wsp_bodybuf src{};
    std::memset(src.content_type, 'x', sizeof src.content_type);
    std::strcpy(src.content_type, "text/vnd.wap.si");
    src.body = &b;
    wsp_body_result out;
    std::memset(&out, 0x5A, sizeof out);
    ASSERT_EQ(wsp_decode_body(&src, &out), WSP_OK);
    EXPECT_STREQ(out.content_type, "text/vnd.wap.si");
    EXPECT_EQ(static_cast<unsigned char>(out.content_type[20]), 0x5A);
    std::free(out.body.data);
}

// The guarded stores: octets land only inside data[0 .. offset + size).
#include <gtest/gtest.h>

#include <cstdint>

#include "buffer.h"
#include "wsp_test_support.h"

using namespace wsp_test;

TEST(BufferStore, StoresInsideOffsetPlusSize) {
    OutBuffer b(3, 2); // region of five octets
    b.fill(0xEE);
    EXPECT_TRUE(wsp_buffer_store(b.get(), 4, 0x11));
    EXPECT_FALSE(wsp_buffer_store(b.get(), 5, 0x22));
    EXPECT_FALSE(wsp_buffer_store(b.get(), 0x10002, 0x33));
    EXPECT_EQ(b.region_hex(), "EE EE EE EE 11");
}

TEST(BufferStore, WithoutOffsetTheRegionIsSize) {
    OutBuffer b(3);
    b.fill(0xEE);
    EXPECT_TRUE(wsp_buffer_store(b.get(), 2, 0x11));
    EXPECT_FALSE(wsp_buffer_store(b.get(), 3, 0x22));
    EXPECT_EQ(b.region_hex(), "EE EE 11");
}

TEST(BufferStore, RunInsideTheRegionIsStoredWhole) {
    OutBuffer b(2, 2);
    b.fill(0xEE);
    const uint8_t src[] = {1, 2};
    EXPECT_TRUE(wsp_buffer_store_run(b.get(), 2, src, 2));
    EXPECT_EQ(b.region_hex(), "EE EE 01 02");
}

TEST(BufferStore, RunIsCutAtTheRegionAndReportsIt) {
    OutBuffer b(2, 2);
    b.fill(0xEE);
    const uint8_t src[] = {1, 2, 3, 4};
    EXPECT_FALSE(wsp_buffer_store_run(b.get(), 3, src, 4));
    EXPECT_EQ(b.region_hex(), "EE EE EE 01");
    EXPECT_FALSE(wsp_buffer_store_run(b.get(), 4, src, 1));
    EXPECT_EQ(b.region_hex(), "EE EE EE 01");
}

TEST(BufferStore, EmptyRunAlwaysSucceeds) {
    OutBuffer b(1);
    EXPECT_TRUE(wsp_buffer_store_run(b.get(), 7, nullptr, 0));
}

TEST(BufferStore, AtEndStoresInsideAndDropsExactlyAtTheEnd) {
    OutBuffer b(2, 1); // region of three octets
    b.fill(0xEE);
    EXPECT_TRUE(wsp_buffer_store_at_end(b.get(), 2, 0x00));
    EXPECT_TRUE(wsp_buffer_store_at_end(b.get(), 3, 0x11));
    EXPECT_FALSE(wsp_buffer_store_at_end(b.get(), 4, 0x22));
    EXPECT_EQ(b.region_hex(), "EE EE 00");
}

TEST(BufferStore, TailAndEndIndexAddOffsetWithoutWrapping) {
    wsp_buffer b{};
    b.offset = 0xFFFF;
    b.length = 2;
    b.size = 3;
    EXPECT_EQ(wsp_buffer_tail_index(&b), 0x10001u);
    EXPECT_EQ(wsp_buffer_end_index(&b), 0x10002u);
}

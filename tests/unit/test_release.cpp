// Release functions and the fixed build switches.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "switches.h"
#include "tarnwspencdec.h"

namespace {

unsigned char *block(size_t n) { return static_cast<unsigned char *>(std::calloc(n, 1)); }

wsp_capab_item *item(bool with_data) {
    auto *it = static_cast<wsp_capab_item *>(std::calloc(1, sizeof(wsp_capab_item)));
    it->kind = 7;
    it->data = with_data ? std::calloc(4, 1) : nullptr;
    return it;
}

} // namespace

// ---- wsp_dealloc_hdrbuf --------------------------------------------------------------

TEST(DeallocHdrbuf, FreesDataKeepsCounts) {
    wsp_buffer buf{};
    buf.data = block(8);
    buf.size = 8;
    buf.offset = 2;
    buf.length = 5;
    wsp_hdrbuf holder{};
    holder.length = 5;
    holder.buffer = &buf;
    wsp_dealloc_hdrbuf(&holder);
    EXPECT_EQ(buf.data, nullptr);
    EXPECT_EQ(buf.size, 8);
    EXPECT_EQ(buf.offset, 2);
    EXPECT_EQ(buf.length, 5);
    EXPECT_EQ(holder.length, 5);
    EXPECT_EQ(holder.buffer, &buf);
}

TEST(DeallocHdrbuf, ExternalDataUntouched) {
    unsigned char own[4] = {1, 2, 3, 4};
    wsp_buffer buf{};
    buf.data = own;
    buf.size = 4;
    buf.flags = WSP_BUFFER_EXTERNAL;
    wsp_hdrbuf holder{4, &buf};
    wsp_dealloc_hdrbuf(&holder);
    EXPECT_EQ(buf.data, own);
    EXPECT_EQ(own[3], 4);
}

TEST(DeallocHdrbuf, OtherFlagBitsDoNotProtect) {
    wsp_buffer buf{};
    buf.data = block(4);
    buf.flags = 0xFE;
    wsp_hdrbuf holder{0, &buf};
    wsp_dealloc_hdrbuf(&holder);
    EXPECT_EQ(buf.data, nullptr);
}

TEST(DeallocHdrbuf, TwiceIsHarmless) {
    wsp_buffer buf{};
    buf.data = block(4);
    wsp_hdrbuf holder{0, &buf};
    wsp_dealloc_hdrbuf(&holder);
    wsp_dealloc_hdrbuf(&holder);
    EXPECT_EQ(buf.data, nullptr);
}

TEST(DeallocHdrbuf, NullHolderBufferOrData) {
    wsp_dealloc_hdrbuf(nullptr);
    wsp_hdrbuf no_buffer{3, nullptr};
    wsp_dealloc_hdrbuf(&no_buffer);
    EXPECT_EQ(no_buffer.length, 3);
    EXPECT_EQ(no_buffer.buffer, nullptr);
    wsp_buffer no_data{};
    no_data.size = 9;
    wsp_hdrbuf holder{0, &no_data};
    wsp_dealloc_hdrbuf(&holder);
    EXPECT_EQ(no_data.data, nullptr);
    EXPECT_EQ(no_data.size, 9);
}

// ---- wsp_dealloc_bodybuf -----------------------------------------------------------

TEST(DeallocBodybuf, FreesDataKeepsRecord) {
    wsp_buffer buf{};
    buf.data = block(8);
    buf.size = 8;
    buf.length = 8;
    wsp_bodybuf body{};
    std::strcpy(body.content_type, "text/plain");
    body.body = &buf;
    wsp_dealloc_bodybuf(&body);
    EXPECT_EQ(buf.data, nullptr);
    EXPECT_EQ(buf.size, 8);
    EXPECT_EQ(buf.length, 8);
    EXPECT_EQ(body.body, &buf);
    EXPECT_STREQ(body.content_type, "text/plain");
}

TEST(DeallocBodybuf, ExternalDataUntouched) {
    unsigned char own[2] = {9, 9};
    wsp_buffer buf{};
    buf.data = own;
    buf.flags = WSP_BUFFER_EXTERNAL | 0x10;
    wsp_bodybuf body{};
    body.body = &buf;
    wsp_dealloc_bodybuf(&body);
    EXPECT_EQ(buf.data, own);
}

TEST(DeallocBodybuf, TwiceAndNulls) {
    wsp_buffer buf{};
    buf.data = block(2);
    wsp_bodybuf body{};
    body.body = &buf;
    wsp_dealloc_bodybuf(&body);
    wsp_dealloc_bodybuf(&body);
    EXPECT_EQ(buf.data, nullptr);
    wsp_dealloc_bodybuf(nullptr);
    wsp_bodybuf empty{};
    wsp_dealloc_bodybuf(&empty);
    EXPECT_EQ(empty.body, nullptr);
}

// ---- wsp_dealloc_capab ----------------------------------------------------------------

TEST(DeallocCapab, ReleasesAllThreeItems) {
    wsp_capab capab{};
    capab.client_sdu_size = 1;
    capab.server_sdu_size = 2;
    capab.protocol_options = 3;
    capab.method_mor_push_mor = 4;
    capab.first = item(true);
    capab.second = item(true);
    capab.third = item(true);
    wsp_dealloc_capab(&capab); // leak check: every block is freed
    EXPECT_EQ(capab.first, nullptr);
    EXPECT_EQ(capab.second, nullptr);
    EXPECT_EQ(capab.third, nullptr);
    EXPECT_EQ(capab.client_sdu_size, 1u);
    EXPECT_EQ(capab.server_sdu_size, 2u);
    EXPECT_EQ(capab.protocol_options, 3u);
    EXPECT_EQ(capab.method_mor_push_mor, 4u);
}

TEST(DeallocCapab, MissingSecondItemStillReleasesOthers) {
    wsp_capab capab{};
    capab.first = item(true);
    capab.third = item(true);
    wsp_dealloc_capab(&capab);
    EXPECT_EQ(capab.first, nullptr);
    EXPECT_EQ(capab.second, nullptr);
    EXPECT_EQ(capab.third, nullptr);
}

TEST(DeallocCapab, ItemWithoutData) {
    wsp_capab capab{};
    capab.second = item(false);
    wsp_dealloc_capab(&capab);
    EXPECT_EQ(capab.second, nullptr);
}

TEST(DeallocCapab, NullRecordAndTwice) {
    wsp_dealloc_capab(nullptr);
    wsp_capab capab{};
    capab.first = item(true);
    wsp_dealloc_capab(&capab);
    wsp_dealloc_capab(&capab);
    EXPECT_EQ(capab.first, nullptr);
}

// ---- switches -----------------------------------------------------------------------------

TEST(Switches, ExportedFixedValues) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(device_is_sar_enabled(), 1);
        EXPECT_EQ(device_is_optionTPI_support_enabled(), 1);
        EXPECT_EQ(device_Is_SIA_Available(), 0);
        EXPECT_EQ(device_fallback_to_byterange(), 1);
    }
}

TEST(Switches, InternalFixedValues) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(device_content_id_text_allowed(), 1);
        EXPECT_EQ(device_encoding_version_as_text(), 0);
    }
}

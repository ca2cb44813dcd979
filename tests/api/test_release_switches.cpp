// The status values, the fixed switches and the release functions, seen
// through the public header.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "api_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace api_core;

// ===========================================================================
// Records, statuses and switches

TEST(ApiStatus, CodesAndPatterns) {
    EXPECT_EQ(32767, WSP_OK);
    EXPECT_EQ(-211, WSP_ERR_ARG);
    EXPECT_EQ(-214, WSP_ERR_FAIL);
    EXPECT_EQ(-216, WSP_ERR_TRUNCATED);
    EXPECT_EQ(-217, WSP_ERR_VERSION);
    EXPECT_EQ(65322, WSP_VARINTLEN_FAIL);
    EXPECT_EQ(-214, static_cast<int16_t>(WSP_VARINTLEN_FAIL));
    EXPECT_EQ(152, WSP_CONTENT_TYPE_SIZE);
    EXPECT_EQ(1, WSP_BUFFER_EXTERNAL);
}

TEST(ApiSwitches, ExportedSwitchesReturnTheirFixedValuesOnEveryCall) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(1, device_is_sar_enabled());
        EXPECT_EQ(1, device_is_optionTPI_support_enabled());
        EXPECT_EQ(0, device_Is_SIA_Available());
        EXPECT_EQ(1, device_fallback_to_byterange());
    }
}

TEST(ApiSwitches, ContentIdAcceptsPlainTextAndQuotedForms) {
    // The Content-ID decoder takes both forms; the quote octet is dropped.
    EXPECT_EQ("content-id:abc\n", decoded_text(cat({bytes({0xC0}), cstr("abc")}), 3));
    EXPECT_EQ("content-id:<p1>\n", decoded_text(cat({bytes({0xC0, 0x22}), cstr("<p1>")}), 3));
}

TEST(ApiSwitches, EncodingVersionUsesItsWellKnownEncoding) {
    EXPECT_EQ("C3 9F", encoded_hex("encoding-version: 1.0", "1.3"));
    EXPECT_EQ("C3 93", encoded_hex("Encoding-Version: 1.3", "1.4"));
}

// ===========================================================================
// Release functions

TEST(ApiRelease, HdrbufFreesOwnDataAndKeepsTheCounts) {
    wsp_buffer b;
    std::memset(&b, 0, sizeof b);
    b.data = static_cast<unsigned char *>(std::calloc(8, 1));
    b.size = 8;
    b.offset = 2;
    b.length = 5;
    wsp_hdrbuf h;
    h.length = 4;
    h.buffer = &b;
    wsp_dealloc_hdrbuf(&h);
    EXPECT_EQ(nullptr, b.data);
    EXPECT_EQ(8, b.size);
    EXPECT_EQ(2, b.offset);
    EXPECT_EQ(5, b.length);
    EXPECT_EQ(4, h.length);
    EXPECT_EQ(&b, h.buffer);
    // A second release finds data NULL and does nothing.
    wsp_dealloc_hdrbuf(&h);
    EXPECT_EQ(nullptr, b.data);
}

TEST(ApiRelease, HdrbufLeavesExternalDataAlone) {
    unsigned char mine[4] = {1, 2, 3, 4};
    wsp_buffer b;
    std::memset(&b, 0, sizeof b);
    b.data = mine;
    b.size = 4;
    b.length = 4;
    b.flags = WSP_BUFFER_EXTERNAL;
    wsp_hdrbuf h;
    h.length = 4;
    h.buffer = &b;
    wsp_dealloc_hdrbuf(&h);
    EXPECT_EQ(mine, b.data);
    EXPECT_EQ(4, mine[3]);
}

TEST(ApiRelease, HdrbufWithoutHolderBufferOrDataIsANoOp) {
    wsp_dealloc_hdrbuf(nullptr);
    wsp_hdrbuf h;
    h.length = 3;
    h.buffer = nullptr;
    wsp_dealloc_hdrbuf(&h);
    EXPECT_EQ(nullptr, h.buffer);
    wsp_buffer b;
    std::memset(&b, 0, sizeof b);
    h.buffer = &b;
    wsp_dealloc_hdrbuf(&h);
    EXPECT_EQ(nullptr, b.data);
}

TEST(ApiRelease, BodybufFreesOwnDataAndIsHarmlessTwice) {
    wsp_buffer b;
    std::memset(&b, 0, sizeof b);
    b.data = static_cast<unsigned char *>(std::calloc(6, 1));
    b.size = 6;
    b.length = 6;
    wsp_bodybuf body;
    std::memset(&body, 0, sizeof body);
    std::strcpy(body.content_type, "text/plain");
    body.body = &b;
    wsp_dealloc_bodybuf(&body);
    EXPECT_EQ(nullptr, b.data);
    EXPECT_EQ(6, b.size);
    EXPECT_EQ(6, b.length);
    EXPECT_EQ(&b, body.body);
    EXPECT_STREQ("text/plain", body.content_type);
    wsp_dealloc_bodybuf(&body);
    EXPECT_EQ(nullptr, b.data);
}

TEST(ApiRelease, BodybufLeavesExternalDataAndMissingBodyAlone) {
    unsigned char mine[2] = {9, 8};
    wsp_buffer b;
    std::memset(&b, 0, sizeof b);
    b.data = mine;
    b.size = 2;
    b.flags = WSP_BUFFER_EXTERNAL;
    wsp_bodybuf body;
    std::memset(&body, 0, sizeof body);
    body.body = &b;
    wsp_dealloc_bodybuf(&body);
    EXPECT_EQ(mine, b.data);
    body.body = nullptr;
    wsp_dealloc_bodybuf(&body);
    EXPECT_EQ(nullptr, body.body);
    wsp_dealloc_bodybuf(nullptr);
}

namespace {
wsp_capab_item *new_item(bool with_data) {
    auto *item = static_cast<wsp_capab_item *>(std::calloc(1, sizeof(wsp_capab_item)));
    item->kind = 77;
    item->data = with_data ? std::calloc(16, 1) : nullptr;
    return item;
}
} // namespace

TEST(ApiRelease, CapabReleasesAllThreeItemsAndLeavesTheLeadingFields) {
    wsp_capab c;
    c.client_sdu_size = 1400;
    c.server_sdu_size = 1400;
    c.protocol_options = 0x70;
    c.method_mor_push_mor = 0x0101;
    c.first = new_item(true);
    c.second = new_item(true);
    c.third = new_item(true);
    wsp_dealloc_capab(&c);
    EXPECT_EQ(nullptr, c.first);
    EXPECT_EQ(nullptr, c.second);
    EXPECT_EQ(nullptr, c.third);
    EXPECT_EQ(1400u, c.client_sdu_size);
    EXPECT_EQ(1400u, c.server_sdu_size);
    EXPECT_EQ(0x70u, c.protocol_options);
    EXPECT_EQ(0x0101u, c.method_mor_push_mor);
}

TEST(ApiRelease, CapabWithoutSecondItemStillReleasesThirdAndFirst) {
    wsp_capab c;
    std::memset(&c, 0, sizeof c);
    c.first = new_item(true);
    c.third = new_item(false);
    wsp_dealloc_capab(&c);
    EXPECT_EQ(nullptr, c.first);
    EXPECT_EQ(nullptr, c.second);
    EXPECT_EQ(nullptr, c.third);
    wsp_dealloc_capab(&c); // nothing left: harmless
    wsp_dealloc_capab(nullptr);
}

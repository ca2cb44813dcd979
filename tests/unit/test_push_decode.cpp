// Push PDU decoding: prefix, content type, header block and body placement,
// own versus external PDU buffers, and what is freed when.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

// A PDU buffer over a calloc'ed copy of the bytes (own unless external).
struct Pdu {
    wsp_buffer buf{};
    explicit Pdu(const Bytes &b, bool external = false, uint16_t offset = 0) {
        buf.size = static_cast<uint16_t>(b.size() + offset);
        buf.data = static_cast<unsigned char *>(std::calloc(buf.size ? buf.size : 1, 1));
        if (!b.empty()) std::memcpy(buf.data + offset, b.data(), b.size());
        buf.offset = offset;
        buf.length = static_cast<uint16_t>(b.size());
        buf.flags = external ? WSP_BUFFER_EXTERNAL : 0;
    }
    ~Pdu() { std::free(buf.data); }
    Bytes valid() const { return Bytes(buf.data + buf.offset, buf.data + buf.offset + buf.length); }
};

struct Spare {
    wsp_buffer buf{};
    wsp_buffer *ptr = &buf;
    Spare() { buf.flags = 0xFF; }
    ~Spare() {
        if (buf.flags != 0xFF) std::free(buf.data);
    }
};

} // namespace

TEST(PushDecoding, HeadersLenZeroFreesOwnPdu) {
    Pdu pdu(bytes({0x06, 0x00, 0x83}));
    wsp_push_result res;
    std::memset(&res, 0xAB, sizeof res);
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_OK);
    EXPECT_EQ(pdu.buf.data, nullptr);
    EXPECT_EQ(res.headers.length, 0);
    EXPECT_EQ(res.headers.buffer, nullptr);
    EXPECT_EQ(res.body.body, nullptr);
}

TEST(PushDecoding, HeadersLenZeroKeepsExternalPdu) {
    Pdu pdu(bytes({0x06, 0x00}), true);
    unsigned char *data = pdu.buf.data;
    wsp_push_result res{};
    Spare spare;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare.ptr), WSP_OK);
    EXPECT_EQ(pdu.buf.data, data);
    EXPECT_EQ(res.headers.buffer, nullptr);
    EXPECT_EQ(spare.ptr, &spare.buf);
    spare.buf.flags = 0xFF;
}

TEST(PushDecoding, HeadersClaimingMoreThanThePduFail) {
    Pdu pdu(bytes({0x06, 0x05, 0x83, 0xB4}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_ERR_FAIL);
    EXPECT_NE(pdu.buf.data, nullptr);
    EXPECT_EQ(pdu.buf.length, 4);
    EXPECT_EQ(pdu.buf.offset, 0);
}

TEST(PushDecoding, HeadersLenNearTwoToThe32IsMoreThanThePduHolds) {
    // HeadersLen FF FF FF FF 7A keeps its low 32 bits, 0xFFFFFFFA; with the
    // prefix of 6 a 32-bit sum would wrap to 0.
    Pdu pdu(bytes({0x15, 0xFF, 0xFF, 0xFF, 0xFF, 0x7A, 0x00, 0x09, 0x8E, 0xB3}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_ERR_FAIL);
    EXPECT_EQ(res.headers.buffer, nullptr);
    EXPECT_EQ(res.body.body, nullptr);
    EXPECT_EQ(pdu.buf.offset, 0);
    EXPECT_EQ(pdu.buf.length, 10);
}

TEST(PushDecoding, BadHeadersLenUintvarFails) {
    Pdu pdu(bytes({0x06, 0x80, 0x01, 0x83}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_ERR_FAIL);
}

TEST(PushDecoding, EmptyPduIsRefused) {
    Pdu pdu(bytes({}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_ERR_FAIL);
}

TEST(PushDecoding, OwnPduWithoutDataIsRepointedAtTheHeaders) {
    // type, HeadersLen 3, content type text/plain, push-flag 0
    Pdu pdu(bytes({0x06, 0x03, 0x83, 0xB4, 0x80}), false, 2);
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    ASSERT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_OK);
    EXPECT_STREQ(res.body.content_type, "text/plain");
    EXPECT_EQ(res.body.body, nullptr);
    EXPECT_EQ(res.headers.buffer, &pdu.buf);
    EXPECT_EQ(res.headers.length, 2);
    EXPECT_EQ(pdu.buf.offset, 2 + 3);
    EXPECT_EQ(pdu.buf.length, 2);
    EXPECT_EQ(hex(pdu.valid()), "B4 80");
}

TEST(PushDecoding, ExternalPduWithoutDataIsCopiedIntoTheSpare) {
    Pdu pdu(bytes({0x06, 0x03, 0x83, 0xB4, 0x80}), true);
    wsp_push_result res{};
    Spare spare;
    wsp_buffer *const before = spare.ptr;
    ASSERT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare.ptr), WSP_OK);
    EXPECT_EQ(spare.ptr, before);
    EXPECT_EQ(res.headers.buffer, &spare.buf);
    EXPECT_EQ(res.headers.length, 2);
    EXPECT_EQ(res.body.body, nullptr);
    EXPECT_EQ(spare.buf.flags, 0);
    EXPECT_EQ(spare.buf.size, 2);
    EXPECT_EQ(spare.buf.length, 2);
    EXPECT_EQ(spare.buf.offset, 0);
    EXPECT_EQ(hex(spare.buf.data, 2), "B4 80");
    // the PDU itself is untouched
    EXPECT_EQ(pdu.buf.offset, 0);
    EXPECT_EQ(pdu.buf.length, 5);
}

TEST(PushDecoding, ExternalPduWithoutSpareFails) {
    Pdu pdu(bytes({0x06, 0x03, 0x83, 0xB4, 0x80}), true);
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_ERR_FAIL);
}

TEST(PushDecoding, ContentTypeFailureWithoutDataIsPassedOn) {
    // 0xFF is Short-integer 127: above the last constrained code
    Pdu pdu(bytes({0x06, 0x02, 0xFF, 0xB4}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_ERR_FAIL);
    EXPECT_EQ(pdu.buf.offset, 0);
}

TEST(PushDecoding, OwnPduWithDataSharesOneBufferForHeadersAndBody) {
    Pdu pdu(bytes({0x06, 0x03, 0x83, 0xB4, 0x80, 'h', 'e', 'l', 'l', 'o'}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    ASSERT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_OK);
    EXPECT_STREQ(res.body.content_type, "text/plain");
    EXPECT_EQ(res.headers.length, 2);
    EXPECT_EQ(res.headers.buffer, &pdu.buf);
    EXPECT_EQ(res.body.body, &pdu.buf);
    EXPECT_EQ(pdu.buf.offset, 3);
    EXPECT_EQ(pdu.buf.length, 7);
    EXPECT_EQ(hex(pdu.valid()), "B4 80 68 65 6C 6C 6F");
}

TEST(PushDecoding, ExternalPduWithDataIsCopiedIntoTheSpare) {
    Pdu pdu(bytes({0x06, 0x03, 0x83, 0xB4, 0x80, 'h', 'i'}), true);
    wsp_push_result res{};
    Spare spare;
    spare.buf.offset = 9;
    spare.buf.length = 9;
    ASSERT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare.ptr), WSP_OK);
    EXPECT_EQ(res.body.body, &spare.buf);
    EXPECT_EQ(res.headers.buffer, &spare.buf);
    EXPECT_EQ(res.headers.length, 2);
    EXPECT_EQ(spare.buf.flags, 0);
    EXPECT_EQ(spare.buf.offset, 0);
    EXPECT_EQ(spare.buf.size, 4);
    EXPECT_EQ(spare.buf.length, 4);
    EXPECT_EQ(hex(spare.buf.data, 4), "B4 80 68 69");
    EXPECT_EQ(pdu.buf.offset, 0);
    EXPECT_EQ(pdu.buf.length, 7);
}

TEST(PushDecoding, ContentTypeFillingHeadersLenLeavesNoHeaderBuffer) {
    Pdu pdu(bytes({0x06, 0x01, 0x83, 'x', 'y'}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    ASSERT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_OK);
    EXPECT_EQ(res.headers.buffer, nullptr);
    EXPECT_EQ(res.headers.length, 0);
    EXPECT_EQ(res.body.body, &pdu.buf);
    EXPECT_EQ(pdu.buf.offset, 3);
    EXPECT_EQ(pdu.buf.length, 2);
}

TEST(PushDecoding, ContentTypeFailureWithDataBecomesFail) {
    Pdu pdu(bytes({0x06, 0x02, 0xFF, 0xB4, 'x'}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_ERR_FAIL);
}

TEST(PushDecoding, ContentTypeLongerThanHeadersLenWithDataFails) {
    // the content type (general form, 4 octets) is longer than HeadersLen 2
    Pdu pdu(bytes({0x06, 0x02, 0x03, 0x83, 0x81, 0xEA, 'x'}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    EXPECT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_ERR_FAIL);
}

TEST(PushDecoding, ContentTypeWithParametersAndApplicationId) {
    // application/vnd.wap.mms-message with an x-wap-application-id header
    Pdu pdu(bytes({0x06, 0x03, 0xBE, 0xAF, 0x84, 0x8C, 0x82}));
    wsp_push_result res{};
    wsp_buffer *spare = nullptr;
    ASSERT_EQ(wsp_push_decoding(&pdu.buf, &res, &spare), WSP_OK);
    EXPECT_STREQ(res.body.content_type, "application/vnd.wap.mms-message");
    EXPECT_EQ(res.headers.length, 2);

    char text[128] = {};
    wsp_buffer out{};
    out.data = reinterpret_cast<unsigned char *>(text);
    out.size = sizeof text;
    ASSERT_EQ(wsp_dec_hdr(&res.headers, &out, nullptr, 4), WSP_OK);
    EXPECT_STREQ(text, "x-wap-application-id:x-wap-application:mms.ua\n");
}

TEST(DecodeHdr, CopiesCountBytesIntoAFreshBlock) {
    const Bytes src = bytes({1, 2, 3, 4, 5});
    InBytes in(src);
    const uint8_t *cur = in.data();
    wsp_buffer target{};
    target.offset = 7;
    ASSERT_EQ(wsp_decode_hdr(&target, &cur, 4), WSP_OK);
    EXPECT_EQ(cur, in.data() + 4);
    EXPECT_EQ(target.size, 4);
    EXPECT_EQ(target.length, 4);
    EXPECT_EQ(target.offset, 0);
    EXPECT_EQ(hex(target.data, 4), "01 02 03 04");
    std::free(target.data);
}

TEST(DecodeHdr, ZeroCountGivesAnEmptyBlock) {
    const Bytes src = bytes({9});
    InBytes in(src);
    const uint8_t *cur = in.data();
    wsp_buffer target{};
    ASSERT_EQ(wsp_decode_hdr(&target, &cur, 0), WSP_OK);
    EXPECT_EQ(cur, in.data());
    EXPECT_NE(target.data, nullptr);
    EXPECT_EQ(target.size, 0);
    EXPECT_EQ(target.length, 0);
    std::free(target.data);
}

TEST(DecodeHentity, DoesNotAdvanceTheCallersCursor) {
    // an own PDU whose ContentType starts one octet into its data
    Pdu pdu(bytes({0x00, 0x83, 0xB4, 0x80, 'z'}));
    const uint8_t *cur = pdu.buf.data + 1;
    const uint8_t *const before = cur;
    wsp_push_result res{};
    ASSERT_EQ(wsp_decode_hdentity(&cur, &pdu.buf, &res, &res.body, 3, 4), WSP_OK);
    EXPECT_EQ(cur, before);
    EXPECT_STREQ(res.body.content_type, "text/plain");
    EXPECT_EQ(res.headers.length, 2);
    EXPECT_EQ(res.headers.buffer, &pdu.buf);
    EXPECT_EQ(res.body.body, &pdu.buf);
    EXPECT_EQ(pdu.buf.length, 3);
    EXPECT_EQ(pdu.buf.offset, 2);
    EXPECT_EQ(hex(pdu.valid()), "B4 80 7A");
}

TEST(DecodeHentity, ContentTypeFailureIsPassedOn) {
    Pdu pdu(bytes({0xFF, 0xB4}));
    const uint8_t *cur = pdu.buf.data;
    wsp_push_result res{};
    EXPECT_EQ(wsp_decode_hdentity(&cur, &pdu.buf, &res, &res.body, 2, 2), WSP_ERR_FAIL);
    EXPECT_EQ(pdu.buf.offset, 0);
    EXPECT_EQ(pdu.buf.length, 2);
}

TEST(DecodeHentity, ExternalWithoutSpareFails) {
    const Bytes src = bytes({0x83, 0xB4, 0x80, 'z'});
    InBytes in(src);
    const uint8_t *cur = in.data();
    wsp_buffer pdu{};
    pdu.flags = WSP_BUFFER_EXTERNAL;
    wsp_push_result res{};
    EXPECT_EQ(wsp_decode_hdentity(&cur, &pdu, &res, &res.body, 3, 4), WSP_ERR_FAIL);
}

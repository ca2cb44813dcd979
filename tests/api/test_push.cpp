// Push PDU decoding through the public header: the headers-length prefix,
// where headers and body end up (own PDU, external PDU, spare buffer), the
// content-type counts, the releases afterwards, and the two halves of push
// decoding called directly.
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
// Push PDU decoding: prefix and placement

TEST(ApiPush, HeadersLenZeroFreesAnOwnPdu) {
    PushPdu pdu(bytes({0x06, 0x00, 0x83, 0x11, 0x22}));
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    EXPECT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_EQ(nullptr, pdu.buf.data);
    EXPECT_EQ(0, res.headers.length);
    EXPECT_EQ(nullptr, res.headers.buffer);
    EXPECT_EQ(nullptr, res.body.body);
    EXPECT_EQ(&spare.buf, spare.ptr);
    EXPECT_EQ(nullptr, spare.buf.data);
}

TEST(ApiPush, HeadersLenZeroKeepsAnExternalPdu) {
    PushPdu pdu(bytes({0x06, 0x00}), bytes({0x07}), true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    EXPECT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(1, pdu.buf.offset);
    EXPECT_EQ(2, pdu.buf.length);
    EXPECT_EQ(0, res.headers.length);
    EXPECT_EQ(nullptr, res.headers.buffer);
    EXPECT_EQ(nullptr, res.body.body);
    EXPECT_EQ(&spare.buf, spare.ptr);
    EXPECT_EQ(nullptr, spare.buf.data);
}

TEST(ApiPush, HeadersLenBeyondThePduFails) {
    for (bool external : {false, true}) {
        PushPdu pdu(bytes({0x06, 0x05, 0xBE, 0xAF, 0x84}), {}, external);
        wsp_push_result res = dirty_result();
        SpareBuffer spare;
        EXPECT_EQ(WSP_ERR_FAIL, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
        EXPECT_EQ(pdu.original, pdu.buf.data);
        EXPECT_EQ(0, pdu.buf.offset);
        EXPECT_EQ(5, pdu.buf.length);
        EXPECT_EQ(0, res.headers.length);
        EXPECT_EQ(nullptr, res.headers.buffer);
        EXPECT_EQ(nullptr, res.body.body);
        EXPECT_EQ(&spare.buf, spare.ptr);
    }
}

TEST(ApiPush, UnreadableHeadersLenFails) {
    const Bytes cases[] = {bytes({0x06}), bytes({0x06, 0x81}), bytes({0x06, 0x80, 0x03, 0xBE, 0xAF, 0x84}),
                           bytes({0x06, 0x81, 0x81, 0x81, 0x81, 0x81, 0x00})};
    for (const Bytes &b : cases) {
        PushPdu pdu(b);
        wsp_push_result res = dirty_result();
        wsp_buffer *spare = nullptr;
        EXPECT_EQ(WSP_ERR_FAIL, wsp_push_decoding(&pdu.buf, &res, &spare)) << hex(b);
        EXPECT_EQ(pdu.original, pdu.buf.data);
        EXPECT_EQ(0, pdu.buf.offset);
        EXPECT_EQ(b.size(), pdu.buf.length);
        EXPECT_EQ(0, res.headers.length);
        EXPECT_EQ(nullptr, res.headers.buffer);
        EXPECT_EQ(nullptr, res.body.body);
    }
}

TEST(ApiPush, EveryTruncationOfAPdu) {
    const Bytes whole = bytes({0x06, 0x03, 0xBE, 0xAF, 0x84, 0x8C, 0x82, 0x98});
    for (size_t n = 1; n <= whole.size(); ++n) {
        PushPdu pdu(Bytes(whole.begin(), whole.begin() + static_cast<long>(n)));
        wsp_push_result res = dirty_result();
        wsp_buffer *spare = nullptr;
        int st = wsp_push_decoding(&pdu.buf, &res, &spare);
        if (n < 5) {
            EXPECT_EQ(WSP_ERR_FAIL, st) << n;
            EXPECT_EQ(n, pdu.buf.length);
            continue;
        }
        ASSERT_EQ(WSP_OK, st) << n;
        EXPECT_STREQ("application/vnd.wap.mms-message", res.body.content_type);
        EXPECT_EQ(2, res.headers.length);
        EXPECT_EQ(&pdu.buf, res.headers.buffer);
        EXPECT_EQ(3, pdu.buf.offset);
        if (n == 5) {
            EXPECT_EQ(nullptr, res.body.body) << n;
            EXPECT_EQ(2, pdu.buf.length);
        } else {
            EXPECT_EQ(&pdu.buf, res.body.body) << n;
            EXPECT_EQ(n - 3, pdu.buf.length);
        }
    }
}

TEST(ApiPush, OwnPduWithoutDataIsThePduRepointedAtTheHeaders) {
    PushPdu pdu(bytes({0x06, 0x03, 0xBE, 0xAF, 0x84}));
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.wap.mms-message", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&pdu.buf, res.headers.buffer);
    EXPECT_EQ(nullptr, res.body.body);
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(3, pdu.buf.offset);
    EXPECT_EQ(2, pdu.buf.length);
    EXPECT_EQ(5, pdu.buf.size);
    EXPECT_EQ("AF 84", hex(pdu.valid()));
    EXPECT_EQ(nullptr, spare.buf.data);
    EXPECT_EQ(&spare.buf, spare.ptr);
    EXPECT_EQ("x-wap-application-id:x-wap-application:mms.ua\n", push_headers_text(res));
}

TEST(ApiPush, ExternalPduWithoutDataCopiesTheHeadersIntoTheSpare) {
    PushPdu pdu(bytes({0x06, 0x03, 0xBE, 0xAF, 0x84}), bytes({0x42}), true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.wap.mms-message", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&spare.buf, res.headers.buffer);
    EXPECT_EQ(nullptr, res.body.body);
    EXPECT_EQ(&spare.buf, spare.ptr);
    ASSERT_NE(nullptr, spare.buf.data);
    EXPECT_NE(pdu.buf.data, spare.buf.data);
    EXPECT_EQ(0, spare.buf.flags);
    EXPECT_EQ(0, spare.buf.offset);
    EXPECT_EQ(2, spare.buf.size);
    EXPECT_EQ(2, spare.buf.length);
    EXPECT_EQ("AF 84", hex(spare.valid()));
    // The caller's PDU is not touched.
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(1, pdu.buf.offset);
    EXPECT_EQ(5, pdu.buf.length);
    EXPECT_EQ(WSP_BUFFER_EXTERNAL, pdu.buf.flags);
    EXPECT_EQ("x-wap-application-id:x-wap-application:mms.ua\n", push_headers_text(res));
}

TEST(ApiPush, ContentTypeFillingHeadersLenWithoutData) {
    PushPdu own(bytes({0x06, 0x01, 0xAE}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&own.buf, &res, &none));
    EXPECT_STREQ("application/vnd.wap.sic", res.body.content_type);
    EXPECT_EQ(0, res.headers.length);
    EXPECT_EQ(&own.buf, res.headers.buffer);
    EXPECT_EQ(nullptr, res.body.body);
    EXPECT_EQ(3, own.buf.offset);
    EXPECT_EQ(0, own.buf.length);
    EXPECT_EQ("", push_headers_text(res));

    PushPdu ext(bytes({0x06, 0x01, 0xAE}), {}, true);
    wsp_push_result res2 = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&ext.buf, &res2, &spare.ptr));
    EXPECT_EQ(0, res2.headers.length);
    EXPECT_EQ(&spare.buf, res2.headers.buffer);
    EXPECT_EQ(nullptr, res2.body.body);
    EXPECT_EQ(0, spare.buf.size);
    EXPECT_EQ(0, spare.buf.length);
    EXPECT_EQ(0, spare.buf.offset);
    EXPECT_EQ(0, spare.buf.flags);
}

TEST(ApiPush, OwnPduWithDataHoldsHeadersAndBodyInOneRun) {
    const Bytes body = bytes({0x8C, 0x82, 0x98, 0x31, 0x00});
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xBE, 0xAF, 0x84}), body}));
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&pdu.buf, res.headers.buffer);
    EXPECT_EQ(&pdu.buf, res.body.body);
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(3, pdu.buf.offset);
    EXPECT_EQ(7, pdu.buf.length);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x84}), body})), hex(pdu.valid()));
    EXPECT_EQ(nullptr, spare.buf.data);
    EXPECT_EQ(&spare.buf, spare.ptr);
}

TEST(ApiPush, ExternalPduWithDataCopiesHeadersAndBodyIntoTheSpare) {
    const Bytes body = bytes({0x8C, 0x82, 0x98, 0x31, 0x00});
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xBE, 0xAF, 0x84}), body}), bytes({0x09}), true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.wap.mms-message", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&spare.buf, res.headers.buffer);
    EXPECT_EQ(&spare.buf, res.body.body);
    EXPECT_EQ(&spare.buf, spare.ptr);
    ASSERT_NE(nullptr, spare.buf.data);
    EXPECT_EQ(0, spare.buf.flags);
    EXPECT_EQ(0, spare.buf.offset);
    EXPECT_EQ(7, spare.buf.size);
    EXPECT_EQ(7, spare.buf.length);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x84}), body})), hex(spare.valid()));
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(1, pdu.buf.offset);
    EXPECT_EQ(10, pdu.buf.length);
}

TEST(ApiPush, ContentTypeFillingHeadersLenWithData) {
    const Bytes body = bytes({0x02, 0x05, 0x6A, 0x00});
    PushPdu own(cat({bytes({0x06, 0x01, 0xAE}), body}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&own.buf, &res, &none));
    EXPECT_EQ(0, res.headers.length);
    EXPECT_EQ(nullptr, res.headers.buffer);
    EXPECT_EQ(&own.buf, res.body.body);
    EXPECT_EQ(3, own.buf.offset);
    EXPECT_EQ(4, own.buf.length);
    EXPECT_EQ(hex(body), hex(own.valid()));

    PushPdu ext(cat({bytes({0x06, 0x01, 0xAE}), body}), {}, true);
    wsp_push_result res2 = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&ext.buf, &res2, &spare.ptr));
    EXPECT_EQ(0, res2.headers.length);
    EXPECT_EQ(nullptr, res2.headers.buffer);
    EXPECT_EQ(&spare.buf, res2.body.body);
    EXPECT_EQ(4, spare.buf.length);
    EXPECT_EQ(hex(body), hex(spare.valid()));
}

TEST(ApiPush, ContentTypeLongerThanHeadersLenWithDataFails) {
    PushPdu pdu(bytes({0x06, 0x02, 0x61, 0x2F, 0x62, 0x00, 0xFF, 0xFF}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(0, pdu.buf.offset);
    EXPECT_EQ(8, pdu.buf.length);
    EXPECT_EQ(nullptr, res.body.body);
}

namespace {
// A content type of 256 octets whose untyped parameter name is too long for
// its scratch area: the decoder reports -216.
Bytes overlong_parameter_content_type() {
    return cat({bytes({0x1F, 0x81, 0x7D, 0x83}), Bytes(250, 'a'), bytes({0x00, 0x00})});
}
} // namespace

TEST(ApiPush, ContentTypeStatusIsPassedOnWithoutData) {
    PushPdu pdu(cat({bytes({0x06, 0x82, 0x00}), overlong_parameter_content_type()}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    EXPECT_EQ(WSP_ERR_TRUNCATED, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(0, pdu.buf.offset);

    PushPdu bad(bytes({0x06, 0x01, 0xFF}));
    EXPECT_EQ(WSP_ERR_FAIL, wsp_push_decoding(&bad.buf, &res, &none));
}

TEST(ApiPush, ContentTypeFailureWithDataIsReportedAsFailure) {
    PushPdu pdu(cat({bytes({0x06, 0x82, 0x00}), overlong_parameter_content_type(), bytes({0x01, 0x02})}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(0, pdu.buf.offset);
    EXPECT_EQ(261, pdu.buf.length);
}

namespace {
// A content type of 260 octets: its parameter run is broken (code 0x04), so
// the decoder empties the text and passes the whole value.
Bytes content_type_of_260_octets() {
    return cat({bytes({0x1F, 0x82, 0x01, 0x83, 0x84}), Bytes(255, 0x00)});
}
} // namespace

TEST(ApiPush, WithDataTheContentTypeOctetsAreCountedInEightBits) {
    // HeadersLen 262 = 260 octets of content type + AF 84; 5 octets of data.
    // The content type's 260 octets count as 4, so the headers are taken to
    // be 258 octets long and the run to be 263.
    const Bytes body = bytes({0x01, 0x02, 0x03, 0x04, 0x05});
    const Bytes pdu_bytes = cat({bytes({0x06, 0x82, 0x06}), content_type_of_260_octets(), bytes({0xAF, 0x84}), body});
    ASSERT_EQ(270u, pdu_bytes.size());
    PushPdu pdu(pdu_bytes);
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("", res.body.content_type);
    EXPECT_EQ(258, res.headers.length);
    EXPECT_EQ(&pdu.buf, res.headers.buffer);
    EXPECT_EQ(&pdu.buf, res.body.body);
    EXPECT_EQ(263, pdu.buf.offset);
    EXPECT_EQ(263, pdu.buf.length);
    EXPECT_EQ(pdu.original, pdu.buf.data);

    PushPdu ext(pdu_bytes, {}, true);
    wsp_push_result res2 = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&ext.buf, &res2, &spare.ptr));
    EXPECT_EQ(258, res2.headers.length);
    EXPECT_EQ(&spare.buf, res2.headers.buffer);
    EXPECT_EQ(&spare.buf, res2.body.body);
    EXPECT_EQ(263, spare.buf.size);
    EXPECT_EQ(263, spare.buf.length);
    EXPECT_EQ(0, spare.buf.offset);
    ASSERT_NE(nullptr, spare.buf.data);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x84}), body})), hex(spare.buf.data, 7));
}

TEST(ApiPush, WithoutDataTheContentTypeOctetsAreCountedInFull) {
    PushPdu pdu(cat({bytes({0x06, 0x82, 0x06}), content_type_of_260_octets(), bytes({0xAF, 0x84})}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(263, pdu.buf.offset);
    EXPECT_EQ(2, pdu.buf.length);
    EXPECT_EQ("x-wap-application-id:x-wap-application:mms.ua\n", push_headers_text(res));
}

TEST(ApiPush, TwoOctetHeadersLen) {
    // HeadersLen 128: content type BE, then an application header of 127
    // octets; no data.
    std::string value(124, 'y');
    PushPdu pdu(cat({bytes({0x06, 0x81, 0x00, 0xBE}), cstr("x"), cstr(value.c_str())}));
    ASSERT_EQ(131, pdu.buf.length);
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(127, res.headers.length);
    EXPECT_EQ(4, pdu.buf.offset);
    EXPECT_EQ("x:" + value + "\n", push_headers_text(res));
}

TEST(ApiPush, ReleasingBothHoldersOfAnOwnPduFreesItOnce) {
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xBE, 0xAF, 0x84}), kMmsNotification}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    wsp_dealloc_hdrbuf(&res.headers);
    EXPECT_EQ(nullptr, pdu.buf.data);
    wsp_dealloc_bodybuf(&res.body);
    EXPECT_EQ(nullptr, pdu.buf.data);
}

TEST(ApiPush, ExternalPduIsNeverFreedByTheReleases) {
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xBE, 0xAF, 0x84}), kMmsNotification}), {}, true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    wsp_dealloc_hdrbuf(&res.headers);
    EXPECT_EQ(nullptr, spare.buf.data);
    wsp_dealloc_bodybuf(&res.body);
    EXPECT_EQ(pdu.original, pdu.buf.data);
}

// ===========================================================================
// The two halves of push decoding, called directly

TEST(ApiDecodeHdr, CopiesIntoAFreshBlockAndAdvancesTheCursor) {
    const uint8_t in[] = {0xAF, 0x84, 0x8D, 0x90, 0x55};
    const uint8_t *p = in;
    wsp_buffer target;
    std::memset(&target, 0, sizeof target);
    target.offset = 5;
    target.length = 1;
    target.size = 1;
    target.reserved = 0x1234;
    ASSERT_EQ(WSP_OK, wsp_decode_hdr(&target, &p, 4));
    EXPECT_EQ(in + 4, p);
    ASSERT_NE(nullptr, target.data);
    EXPECT_EQ(4, target.size);
    EXPECT_EQ(4, target.length);
    EXPECT_EQ(0, target.offset);
    EXPECT_EQ("AF 84 8D 90", hex(target.data, 4));
    std::free(target.data);
}

TEST(ApiDecodeHentity, OwnPduIsRepointedAndTheCursorKept) {
    PushPdu pdu(bytes({0x06, 0x03, 0xBE, 0xAF, 0x84, 0x11, 0x22}));
    wsp_push_result res = dirty_result();
    const uint8_t *cursor = pdu.buf.data + 2;
    const uint8_t *before = cursor;
    ASSERT_EQ(WSP_OK, wsp_decode_hdentity(&cursor, &pdu.buf, &res, &res.body, 3, 5));
    EXPECT_EQ(before, cursor);
    EXPECT_STREQ("application/vnd.wap.mms-message", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&pdu.buf, res.headers.buffer);
    EXPECT_EQ(&pdu.buf, res.body.body);
    EXPECT_EQ(3, pdu.buf.offset);
    EXPECT_EQ(4, pdu.buf.length);
    EXPECT_EQ("AF 84 11 22", hex(pdu.valid()));
}

TEST(ApiDecodeHentity, ExternalPduFillsTheBodyHoldersBuffer) {
    PushPdu pdu(bytes({0x06, 0x03, 0xBE, 0xAF, 0x84, 0x11, 0x22}), {}, true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    res.body.body = &spare.buf;
    const uint8_t *cursor = pdu.buf.data + 2;
    ASSERT_EQ(WSP_OK, wsp_decode_hdentity(&cursor, &pdu.buf, &res, &res.body, 3, 5));
    EXPECT_EQ(pdu.buf.data + 2, cursor);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&spare.buf, res.headers.buffer);
    EXPECT_EQ(&spare.buf, res.body.body);
    EXPECT_EQ(4, spare.buf.size);
    EXPECT_EQ(4, spare.buf.length);
    EXPECT_EQ(0, spare.buf.offset);
    EXPECT_EQ("AF 84 11 22", hex(spare.valid()));
    EXPECT_EQ(0, pdu.buf.offset);
    EXPECT_EQ(7, pdu.buf.length);
}

TEST(ApiDecodeHentity, ContentTypeStatusPassesUnchanged) {
    Bytes pdu_bytes = cat({bytes({0x06, 0x82, 0x00}), overlong_parameter_content_type(), bytes({0x01})});
    PushPdu pdu(pdu_bytes);
    wsp_push_result res = dirty_result();
    const uint8_t *cursor = pdu.buf.data + 3;
    EXPECT_EQ(WSP_ERR_TRUNCATED, wsp_decode_hdentity(&cursor, &pdu.buf, &res, &res.body, 256, 257));
    EXPECT_EQ(0, pdu.buf.offset);
    EXPECT_EQ(pdu_bytes.size(), pdu.buf.length);
}

TEST(ApiDecodeHentity, ContentTypeBeyondHeadersLenFails) {
    PushPdu pdu(bytes({0x06, 0x02, 0x61, 0x2F, 0x62, 0x00, 0xFF, 0xFF}));
    wsp_push_result res = dirty_result();
    const uint8_t *cursor = pdu.buf.data + 2;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_decode_hdentity(&cursor, &pdu.buf, &res, &res.body, 2, 6));
    EXPECT_EQ(0, pdu.buf.offset);
    EXPECT_EQ(8, pdu.buf.length);
}

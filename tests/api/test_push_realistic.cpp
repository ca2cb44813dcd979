// Push PDUs shaped like the ones handsets receive (multimedia
// notifications, service indications and loadings, provisioning, rights
// objects, device management ...) and a reply header block as received, all
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

namespace {

// A tokenised service indication (version, public id, charset, si, indication
// with href and text).
const Bytes kSiBody = cat({bytes({0x02, 0x05, 0x6A, 0x00, 0x45, 0xC6, 0x0C, 0x03}), cstr("example.org/news"),
                           bytes({0x01, 0x03}), cstr("Headlines"), bytes({0x01, 0x01})});

// A tokenised service loading (version, public id, charset, sl with href).
const Bytes kSlBody = cat({bytes({0x02, 0x06, 0x6A, 0x00, 0x85, 0x0A, 0x03}), cstr("example.org/app.jad"),
                           bytes({0x01})});

// A tokenised provisioning document opening.
const Bytes kProvisioningBody = bytes({0x03, 0x0B, 0x6A, 0x00, 0xC5, 0x46, 0xC6, 0x56, 0x87, 0x07, 0x06, 0x03,
                                       0x41, 0x50, 0x4E, 0x00, 0x01, 0x01, 0x01});

// A tokenised rights object opening.
const Bytes kRightsBody = bytes({0x03, 0x0E, 0x6A, 0x00, 0xC5, 0x05, 0x85, 0x06, 0x86, 0x07, 0x87, 0x01, 0x46,
                                 0x47, 0x03, 0x31, 0x2E, 0x30, 0x00, 0x01, 0x01});

// A device-management notification (digest, version, session id ...).
const Bytes kDmNotification = bytes({0x8E, 0x11, 0x3D, 0x28, 0x51, 0x06, 0xA2, 0x78, 0x6B, 0x1C, 0x5F, 0x40, 0x29,
                                     0x0B, 0x33, 0x02, 0xC0, 0x00, 0x00, 0x00, 0x01, 0x2C, 0x07});

const char kMac[] = "7F3A9C21B0E45D6A8F1C2B3D4E5F60718293A4B5";

} // namespace

// ===========================================================================
// Push PDUs as handsets receive them

TEST(ApiPushRealistic, MmsNotificationWithTextualContentTypeAndTransactionId) {
    const Bytes ct = cstr("application/vnd.wap.mms-message");
    ASSERT_EQ(32u, ct.size());
    const Bytes pdu_bytes = cat({bytes({0x06, 0x22}), ct, bytes({0xAF, 0x84}), kMmsNotification});
    PushPdu pdu(pdu_bytes, bytes({0x01}));
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.wap.mms-message", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&pdu.buf, res.headers.buffer);
    EXPECT_EQ(&pdu.buf, res.body.body);
    EXPECT_EQ(1 + 2 + 32, pdu.buf.offset);
    EXPECT_EQ(2 + kMmsNotification.size(), pdu.buf.length);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x84}), kMmsNotification})), hex(pdu.valid()));
    EXPECT_EQ(&spare.buf, spare.ptr);
    EXPECT_EQ(nullptr, spare.buf.data);
    EXPECT_EQ("x-wap-application-id:x-wap-application:mms.ua\n", push_headers_text(res));

    // The body hand-over moves the run (headers and data) to the start.
    wsp_body_result out;
    std::memset(&out, 0xCD, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&res.body, &out));
    EXPECT_STREQ("application/vnd.wap.mms-message", out.content_type);
    EXPECT_EQ(pdu.original, out.body.data);
    const uint16_t n = static_cast<uint16_t>(2 + kMmsNotification.size());
    EXPECT_EQ(n, out.body.size);
    EXPECT_EQ(n, out.body.length);
    EXPECT_EQ(0, out.body.offset);
    EXPECT_EQ(0, out.body.flags);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x84}), kMmsNotification})), hex(out.body.data, n));
    if (n % 35 != 0) EXPECT_EQ(hex(Bytes(35, 0)), hex(out.body.data + n, 35));
    EXPECT_EQ(nullptr, res.body.body);
}

TEST(ApiPushRealistic, MmsNotificationWithWellKnownContentTypeInAnExternalBuffer) {
    const Bytes pdu_bytes = cat({bytes({0x06, 0x03, 0xBE, 0xAF, 0x84}), kMmsNotification});
    PushPdu pdu(pdu_bytes, {}, true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.wap.mms-message", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&spare.buf, res.headers.buffer);
    EXPECT_EQ(&spare.buf, res.body.body);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x84}), kMmsNotification})), hex(spare.valid()));
    EXPECT_EQ(hex(pdu_bytes), hex(pdu.valid()));
    EXPECT_EQ("x-wap-application-id:x-wap-application:mms.ua\n", push_headers_text(res));

    wsp_body_result out;
    std::memset(&out, 0, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&res.body, &out));
    EXPECT_EQ(spare.buf.data, out.body.data);
    EXPECT_EQ(spare.buf.length, out.body.length);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x84}), kMmsNotification})), hex(out.body.data, out.body.length));
}

TEST(ApiPushRealistic, MmsNotificationWithAFullHeaderSet) {
    const Bytes headers =
        cat({bytes({0xAF, 0x84, 0xB1}), cstr("http://mmsc.example.net/"),
             bytes({0x92, 0x04, 0x2E, 0xBC, 0x98, 0xA1, 0x8D, static_cast<int>(0x80 | kMmsNotification.size())}),
             bytes({0x93, 0x22}), cstr("v1"), bytes({0xB4, 0x81}), cstr("X-Mms-Note"), cstr("ok")});
    const size_t hl = 1 + headers.size();
    ASSERT_LT(hl, 128u);
    ASSERT_LT(kMmsNotification.size(), 128u);
    PushPdu pdu(cat({bytes({0x06, static_cast<int>(hl), 0xBE}), headers, kMmsNotification}), bytes({0x5C}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("application/vnd.wap.mms-message", res.body.content_type);
    EXPECT_EQ(headers.size(), res.headers.length);
    EXPECT_EQ("x-wap-application-id:x-wap-application:mms.ua\n"
              "x-wap-initiator-uri:http://mmsc.example.net/\n"
              "date:Sun, 06 Nov 1994 08:49:37 GMT\n"
              "content-length:" +
                  std::to_string(kMmsNotification.size()) +
                  "\n"
                  "etag:\"v1\n"
                  "push-flag:1\n"
                  "x-mms-note:ok\n",
              push_headers_text(res));
}

TEST(ApiPushRealistic, ServiceIndicationWithoutHeaders) {
    PushPdu pdu(cat({bytes({0x06, 0x01, 0xAE}), kSiBody}), bytes({0x25}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("application/vnd.wap.sic", res.body.content_type);
    EXPECT_EQ(0, res.headers.length);
    EXPECT_EQ(nullptr, res.headers.buffer);
    EXPECT_EQ(&pdu.buf, res.body.body);
    EXPECT_EQ(4, pdu.buf.offset);
    EXPECT_EQ(kSiBody.size(), pdu.buf.length);
    EXPECT_EQ(hex(kSiBody), hex(pdu.valid()));

    wsp_body_result out;
    std::memset(&out, 0, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&res.body, &out));
    EXPECT_STREQ("application/vnd.wap.sic", out.content_type);
    EXPECT_EQ(hex(kSiBody), hex(out.body.data, out.body.length));
    EXPECT_EQ(kSiBody.size(), out.body.size);
}

TEST(ApiPushRealistic, ServiceIndicationWithCharsetAndApplicationId) {
    PushPdu pdu(cat({bytes({0x06, 0x06, 0x03, 0xAE, 0x81, 0xEA, 0xAF, 0x82}), kSiBody}), bytes({0x3A}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("application/vnd.wap.sic;charset=utf-8", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(1 + 2 + 4, pdu.buf.offset);
    EXPECT_EQ(2 + kSiBody.size(), pdu.buf.length);
    EXPECT_EQ("x-wap-application-id:x-wap-application:wml.ua\n", push_headers_text(res));
}

TEST(ApiPushRealistic, ServiceLoadingInAnExternalBuffer) {
    PushPdu pdu(cat({bytes({0x06, 0x01, 0xB0}), kSlBody}), bytes({0x0B}), true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.wap.slc", res.body.content_type);
    EXPECT_EQ(0, res.headers.length);
    EXPECT_EQ(nullptr, res.headers.buffer);
    EXPECT_EQ(&spare.buf, res.body.body);
    EXPECT_EQ(hex(kSlBody), hex(spare.valid()));
    EXPECT_EQ(kSlBody.size(), spare.buf.size);
}

TEST(ApiPushRealistic, ProvisioningWithSecurityAndMac) {
    const Bytes ct = cat({bytes({0x1F, 0x2D, 0xB6, 0x91, 0x81, 0x92}), cstr(kMac)});
    ASSERT_EQ(47u, ct.size());
    PushPdu pdu(cat({bytes({0x06, 0x2F}), ct, kProvisioningBody}), bytes({0x01}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(std::string("application/vnd.wap.connectivity-wbxml;sec=1;mac=") + kMac, res.body.content_type);
    EXPECT_EQ(0, res.headers.length);
    EXPECT_EQ(nullptr, res.headers.buffer);
    EXPECT_EQ(&pdu.buf, res.body.body);
    EXPECT_EQ(1 + 2 + 47, pdu.buf.offset);
    EXPECT_EQ(kProvisioningBody.size(), pdu.buf.length);

    // The body (19 octets) is shorter than its offset (50): one piece is
    // moved and 50 zero octets follow it.
    wsp_body_result out;
    std::memset(&out, 0, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&res.body, &out));
    EXPECT_EQ(std::string("application/vnd.wap.connectivity-wbxml;sec=1;mac=") + kMac, out.content_type);
    ASSERT_EQ(19, out.body.length);
    EXPECT_EQ(hex(kProvisioningBody), hex(out.body.data, 19));
    EXPECT_EQ(hex(Bytes(50, 0)), hex(out.body.data + 19, 50));
}

TEST(ApiPushRealistic, ProvisioningWithNetworkPinInAnExternalBuffer) {
    const Bytes ct = cat({bytes({0x1F, 0x2D, 0xB6, 0x91, 0x80, 0x92}), cstr(kMac)});
    PushPdu pdu(cat({bytes({0x06, 0x31}), ct, bytes({0xAF, 0x80}), kProvisioningBody}), {}, true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_EQ(std::string("application/vnd.wap.connectivity-wbxml;sec=0;mac=") + kMac, res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(&spare.buf, res.headers.buffer);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x80}), kProvisioningBody})), hex(spare.valid()));
    EXPECT_EQ("x-wap-application-id:x-wap-application:*\n", push_headers_text(res));
}

TEST(ApiPushRealistic, DrmRightsObject) {
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xCB, 0xAF, 0x88}), kRightsBody}), {}, true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.oma.drm.rights+wbxml", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ("x-wap-application-id:x-wap-application:drm.ua\n", push_headers_text(res));
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x88}), kRightsBody})), hex(spare.valid()));
}

TEST(ApiPushRealistic, DrmRightsAsTextualXml) {
    const Bytes body = text_bytes("<o-ex:rights/>");
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xCA, 0xAF, 0x88}), body}), bytes({0x44}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("application/vnd.oma.drm.rights+xml", res.body.content_type);
    EXPECT_EQ("x-wap-application-id:x-wap-application:drm.ua\n", push_headers_text(res));
}

TEST(ApiPushRealistic, DeviceManagementNotification) {
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xC4, 0xAF, 0x87}), kDmNotification}), bytes({0x6F}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("application/vnd.syncml.notification", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(1 + 2 + 1, pdu.buf.offset);
    EXPECT_EQ("x-wap-application-id:x-wap-application:syncml.dm\n", push_headers_text(res));
}

TEST(ApiPushRealistic, EmailNotificationWithTextualMediaAndCharset) {
    const Bytes ct = cat({bytes({0x1F, 0x20}), cstr("application/vnd.wap.emn+wbxml"), bytes({0x81, 0xEA})});
    ASSERT_EQ(34u, ct.size());
    const Bytes body = bytes({0x03, 0x0D, 0x6A, 0x00, 0x85, 0x05, 0x03, 0x40, 0x00, 0x01});
    PushPdu pdu(cat({bytes({0x06, 0x24}), ct, bytes({0xAF, 0x89}), body}), {}, true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.wap.emn+wbxml;charset=utf-8", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x89}), body})), hex(spare.valid()));
    EXPECT_EQ("x-wap-application-id:x-wap-application:emn.ua\n", push_headers_text(res));
}

TEST(ApiPushRealistic, TextMediaWithTextualApplicationId) {
    const Bytes ct = cstr("text/x-example-list");
    const Bytes headers = cat({bytes({0xAF}), cstr("x-oma-application:example.ua")});
    const Bytes body = text_bytes("Name: Game\nVersion: 1.0\n");
    PushPdu pdu(cat({bytes({0x06, static_cast<int>(ct.size() + headers.size())}), ct, headers, body}),
                bytes({0x02}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("text/x-example-list", res.body.content_type);
    EXPECT_EQ(headers.size(), res.headers.length);
    EXPECT_EQ("x-wap-application-id:x-oma-application:example.ua\n", push_headers_text(res));
}

TEST(ApiPushRealistic, PlainTextWithCharset) {
    const Bytes body = text_bytes("Hello");
    PushPdu pdu(cat({bytes({0x06, 0x04, 0x03, 0x83, 0x81, 0xEA}), body}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("text/plain;charset=utf-8", res.body.content_type);
    EXPECT_EQ(nullptr, res.headers.buffer);
    EXPECT_EQ(hex(body), hex(pdu.valid()));
}

TEST(ApiPushRealistic, LongIntegerContentType) {
    const Bytes body = bytes({0x01, 0x02, 0x03});
    PushPdu pdu(cat({bytes({0x06, 0x04, 0x03, 0x02, 0x02, 0x01}), body}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("application/vnd.uplanet.cacheop-wbxml", res.body.content_type);
    EXPECT_EQ(0, res.headers.length);
    EXPECT_EQ(6, pdu.buf.offset);
    EXPECT_EQ(hex(body), hex(pdu.valid()));
}

TEST(ApiHeaderBlocks, ReplyHeadersAsReceived) {
    const Bytes block = cat({bytes({0x92, 0x04, 0x4F, 0x61, 0xC4, 0xA8}), bytes({0x8D, 0x02, 0x04, 0x00}),
                             bytes({0x88, 0x04, 0x82, 0x02, 0x0E, 0x10}), bytes({0x93}), cstr("\"abc123"),
                             bytes({0x9D, 0x04, 0x4F, 0x61, 0xC4, 0xA8, 0x8E}), cstr("http://example.com/x"),
                             cstr("X-Powered-By"), cstr("gateway")});
    EXPECT_EQ("date:Thu, 15 Mar 2012 10:30:00 GMT\n"
              "content-length:1024\n"
              "cache-control:max-age=3600\n"
              "etag:\"abc123\n"
              "last-modified:Thu, 15 Mar 2012 10:30:00 GMT\n"
              "content-location:http://example.com/x\n"
              "x-powered-by:gateway\n",
              decoded_text(block, 2));
}

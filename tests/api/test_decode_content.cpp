// Content types with their parameters (the exported wsp_decode_content),
// and push PDUs and header blocks as handsets receive them
// (wsp_push_decoding, wsp_dec_hdr, wsp_decode_body).
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "api_support.h"

using namespace wsp_test;
using namespace api_decode;

// ---------------------------------------------------------------------------
// Content types (wsp_decode_content)

namespace {

struct Content {
    int16_t status = 0;
    std::string text;
    long consumed = -1;
};

Content content(const Bytes &in, int avail = -1) {
    InBytes b(in);
    const uint8_t *cur = b.data();
    char out[WSP_CONTENT_TYPE_SIZE];
    std::memset(out, 0, sizeof out);
    std::strcpy(out, "untouched");
    Content c;
    c.status = static_cast<int16_t>(
        wsp_decode_content(&cur, out, static_cast<uint16_t>(avail < 0 ? in.size() : avail)));
    c.text = std::string(out, strnlen(out, sizeof out));
    c.consumed = cur - b.data();
    return c;
}

::testing::AssertionResult Ct(const Bytes &in, const std::string &expected) {
    Content c = content(in);
    if (c.status != WSP_OK) return ::testing::AssertionFailure() << "status " << c.status;
    if (c.text != expected)
        return ::testing::AssertionFailure() << "text \"" << printable(c.text) << "\", expected \""
                                             << printable(expected) << "\"";
    if (c.consumed != static_cast<long>(in.size()))
        return ::testing::AssertionFailure() << "consumed " << c.consumed << " of " << in.size();
    return ::testing::AssertionSuccess();
}

void ExpectCtFails(const Bytes &in, int16_t status = WSP_ERR_FAIL) {
    Content c = content(in);
    EXPECT_EQ(c.status, status);
    EXPECT_EQ(c.consumed, 0);
}

} // namespace

TEST(ApiContent, ShortIntegerMediaRows) {
    EXPECT_TRUE(Ct(bytes({0x83}), "text/plain"));
    EXPECT_TRUE(Ct(bytes({0x80}), "*/*"));
    EXPECT_TRUE(Ct(bytes({0xAE}), "application/vnd.wap.sic"));
    EXPECT_TRUE(Ct(bytes({0xB0}), "application/vnd.wap.slc"));
    EXPECT_TRUE(Ct(bytes({0xBE}), "application/vnd.wap.mms-message"));
    EXPECT_TRUE(Ct(bytes({0xBF}), "application/vnd.wap.rollover-certificate"));
}

TEST(ApiContent, HashedCertificateKeepsItsSpelling) {
    EXPECT_TRUE(Ct(bytes({0xB8}), "application/vnd.wap.hashed-certifiate"));
}

TEST(ApiContent, ShortIntegersAbove63AreLookedUpByCode) {
    EXPECT_TRUE(Ct(bytes({0xC2}), "application/vnd.syncml.dm+wbxml"));
    EXPECT_TRUE(Ct(bytes({0xC3}), "application/vnd.syncml.dm+xml"));
    EXPECT_TRUE(Ct(bytes({0xC4}), "application/vnd.syncml.notification"));
    EXPECT_TRUE(Ct(bytes({0xCA}), "application/vnd.oma.drm.rights+xml"));
    EXPECT_TRUE(Ct(bytes({0xCB}), "application/vnd.oma.drm.rights+wbxml"));
}

TEST(ApiContent, ShortIntegerWithoutRowSucceedsWithOutputUntouched) {
    for (int o : {0xC0, 0xC1, 0xC5, 0xC9, 0xCC, 0xD1}) {
        SCOPED_TRACE(o);
        EXPECT_TRUE(Ct(bytes({o}), "untouched"));
    }
}

TEST(ApiContent, ShortIntegerAbove81IsRefused) {
    ExpectCtFails(bytes({0xD2}));
    ExpectCtFails(bytes({0xFF})); // application/x-agps is never reached this way
}

TEST(ApiContent, GeneralFormShortIntegerIsARowIndex) {
    EXPECT_TRUE(Ct(bytes({0x01, 0xC2}), "application/vnd.syncml.notification"));
    EXPECT_TRUE(Ct(bytes({0x01, 0xC0}), "application/vnd.syncml.dm+wbxml"));
    EXPECT_TRUE(Ct(bytes({0x01, 0xC5}), "application/x-agps"));
    EXPECT_TRUE(Ct(bytes({0x01, 0xD1}), "application/vnd.omaloc-supl-init"));
    ExpectCtFails(bytes({0x01, 0xD2}));
}

TEST(ApiContent, GeneralFormLongIntegerIsLookedUpByCode) {
    EXPECT_TRUE(Ct(bytes({0x03, 0x02, 0x03, 0x12}), "application/vnd.omaloc-supl-init"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x02, 0x02, 0x01}), "application/vnd.uplanet.cacheop-wbxml"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x02, 0x02, 0x0B}), "application/vnd.nokia.syncset+wbxml"));
    EXPECT_TRUE(Ct(bytes({0x02, 0x01, 0x7F}), "application/x-agps"));
    EXPECT_TRUE(Ct(bytes({0x02, 0x01, 0x03}), "text/plain"));
    ExpectCtFails(bytes({0x02, 0x01, 0x40}));
    ExpectCtFails(bytes({0x03, 0x02, 0x02, 0x0C}));
}

TEST(ApiContent, EmptyGeneralForm) { EXPECT_TRUE(Ct(bytes({0x00}), "")); }

TEST(ApiContent, NothingToReadIsRefused) {
    Content c = content(bytes({0x83}), 0);
    EXPECT_EQ(c.status, WSP_ERR_FAIL);
    EXPECT_EQ(c.consumed, 0);
}

TEST(ApiContent, ExtensionMediaText) {
    EXPECT_TRUE(Ct(cstr("application/vnd.wap.mms-message"), "application/vnd.wap.mms-message"));
    EXPECT_TRUE(Ct(cstr("application/vnd.wap.emn+wbxml"), "application/vnd.wap.emn+wbxml"));
}

TEST(ApiContent, ExtensionMediaTextOf150CharactersIsRefused) {
    ExpectCtFails(cstr(std::string(150, 'm').c_str()));
    ExpectCtFails(text_bytes("text/plain")); // no terminator before the end
}

TEST(ApiContent, QuotedMediaFormsAreRefused) {
    ExpectCtFails(cstr("\"text/plain"));
    ExpectCtFails(bytes({0x7F, 0xE9, 0x00}));
}

TEST(ApiContent, GeneralFormRefusesOtherMediaClasses) {
    ExpectCtFails(bytes({0x03, 0x22, 'a', 0x00}));
    ExpectCtFails(bytes({0x03, 0x7F, 'a', 0x00}));
    ExpectCtFails(bytes({0x03, 0x1F, 0x01, 0x83}));
}

TEST(ApiContent, ValueLengthShorterThanTheMediaIsRefused) {
    ExpectCtFails(cat({bytes({0x02}), cstr("abc")}));
}

TEST(ApiContent, BadLengthQuoteIsRefused) { ExpectCtFails(bytes({0x1F, 0x80, 0x01, 0x83})); }

TEST(ApiContent, CharsetParameter) {
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x81, 0xEA}), "text/plain;charset=utf-8"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x81, 0x84}), "text/plain;charset=iso-8859-1"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x81, 0x80}), "text/plain;charset=unknown-charset"));
    EXPECT_TRUE(Ct(bytes({0x05, 0x83, 0x81, 0x02, 0x03, 0xEC}), "text/plain;charset=iso-8859-1"));
    EXPECT_TRUE(Ct(bytes({0x05, 0x83, 0x81, 0x02, 0x08, 0xCC}), "text/plain;charset=unknown-charset"));
    EXPECT_TRUE(Ct(bytes({0x05, 0x83, 0x81, 0x02, 0x08, 0xCB}), "text/plain;charset=windows-1251"));
}

TEST(ApiContent, LengthQuoteForm) {
    EXPECT_TRUE(Ct(bytes({0x1F, 0x03, 0x83, 0x81, 0xEA}), "text/plain;charset=utf-8"));
}

TEST(ApiContent, TextMediaWithParameters) {
    EXPECT_TRUE(Ct(cat({bytes({0x0D}), cstr("text/plain"), bytes({0x81, 0xEA})}), "text/plain;charset=utf-8"));
}

TEST(ApiContent, SeveralParametersInOrder) {
    EXPECT_TRUE(Ct(bytes({0x05, 0x83, 0x81, 0xEA, 0x82, 0x90}), "text/plain;charset=utf-8;level=1.0"));
}

TEST(ApiContent, QValueParameter) {
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0x33}), "text/plain;q=0.50"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0x00}), "text/plain;q"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0x01}), "text/plain;q=0.00"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0x0A}), "text/plain;q=0.09"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0x64}), "text/plain;q=0.99"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0x65}), "text/plain;q=0.001"));
    EXPECT_TRUE(Ct(bytes({0x04, 0x83, 0x80, 0x83, 0x31}), "text/plain;q=0.333"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0x6E}), "text/plain;q=0.010")); // 110
    EXPECT_TRUE(Ct(bytes({0x04, 0x83, 0x80, 0x88, 0x4B}), "text/plain;q=0.999"));
    EXPECT_TRUE(Ct(bytes({0x04, 0x83, 0x80, 0x88, 0x4C}), "text/plain;q=0.1000"));
}

TEST(ApiContent, QValueThatIsNoUintvarIsReadUntyped) {
    // 0x80 cannot start a uintvar, so the octet is printed as a Short-integer
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0x80}), "text/plain;q=0"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x80, 0xE4}), "text/plain;q=100"));
}

TEST(ApiContent, LevelParameter) {
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x82, 0x9F}), "text/plain;level=1"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x82, 0x91}), "text/plain;level=1.1"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x82, 0xBE}), "text/plain;level=3.14"));
    EXPECT_TRUE(Ct(cat({bytes({0x06, 0x83, 0x82}), cstr("2.0")}), "text/plain;level=2.0"));
}

TEST(ApiContent, UntypedParameters) {
    EXPECT_TRUE(Ct(bytes({0x04, 0x83, 'x', 0x00, 0x85}), "text/plain;x=5"));
    EXPECT_TRUE(Ct(bytes({0x04, 0x83, 'x', 0x00, 0x00}), "text/plain;x"));
    EXPECT_TRUE(Ct(cat({bytes({0x06, 0x83}), cstr("x"), cstr("ab")}), "text/plain;x=ab"));
    EXPECT_TRUE(Ct(cat({bytes({0x07, 0x83}), cstr("x"), cstr("\"ab")}), "text/plain;x=\"ab\""));
    EXPECT_TRUE(Ct(bytes({0x06, 0x83, 'x', 0x00, 0x02, 0x01, 0x00}), "text/plain;x=256"));
}

TEST(ApiContent, SignedAndUnsignedPrintingOfTheSameOctets) {
    EXPECT_TRUE(Ct(bytes({0x08, 0x83, 'x', 0x00, 0x04, 0xFF, 0xFF, 0xFF, 0xFF}), "text/plain;x=-1"));
    EXPECT_TRUE(Ct(bytes({0x07, 0x83, 0x96, 0x04, 0xFF, 0xFF, 0xFF, 0xFF}), "text/plain;size=4294967295"));
}

TEST(ApiContent, IntegerTextOfMoreThanFourOctetsIsHex) {
    EXPECT_TRUE(Ct(bytes({0x08, 0x83, 0x96, 0x05, 0x01, 0x0A, 0xFF, 0x00, 0x0B}), "text/plain;size=0X1AFF0B"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x83, 0x85}), "text/plain;type=5"));
}

TEST(ApiContent, TypedValueThatDoesNotParseIsReadUntyped) {
    EXPECT_TRUE(Ct(cat({bytes({0x08, 0x83, 0x81}), cstr("utf-8")}), "text/plain;charset=utf-8"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x87, 0xC8}), "text/plain;differences=72"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x88, 0x05}), "")); // padding takes no Short-length: class 0
}

TEST(ApiContent, TextParameters) {
    EXPECT_TRUE(Ct(cat({bytes({0x0E, 0x83, 0x85}), cstr("file.txt"), bytes({0x8C}), cstr("c")}),
                   "text/plain;name=file.txt;comment=c"));
    EXPECT_TRUE(Ct(cat({bytes({0x0A, 0x83, 0x98}), cstr("a.jpg"), bytes({0x90, 0x00})}),
                   "text/plain;filename=a.jpg;secure"));
    EXPECT_TRUE(Ct(cat({bytes({0x05, 0x83, 0x8F}), cstr("/a")}), "text/plain;path=/a"));
}

TEST(ApiContent, NumberParameters) {
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x88, 0x83}), "text/plain;padding=3"));
    EXPECT_TRUE(Ct(bytes({0x05, 0x83, 0x8E, 0x02, 0x01, 0x00}), "text/plain;max_age=256"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x87, 0x8D}), "text/plain;differences=content-length"));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x90, 0x81}), "text/plain;secure="));
}

TEST(ApiContent, DateParameter) {
    EXPECT_TRUE(Ct(bytes({0x07, 0x83, 0x93, 0x04, 0x2E, 0xBC, 0x98, 0xA1}),
                   "text/plain;creation-date=Sun, 06 Nov 1994 08:49:37 GMT"));
}

TEST(ApiContent, MultipartRelatedTypeAndStart) {
    EXPECT_TRUE(Ct(cat({bytes({0x08, 0xB3, 0x89, 0xB0, 0x8A}), cstr("<a>")}),
                   "application/vnd.wap.multipart.related;type=application/vnd.wap.slc;start=<a>"));
    EXPECT_TRUE(Ct(bytes({0x03, 0xB3, 0x89, 0xC2}),
                   "application/vnd.wap.multipart.related;type=application/vnd.syncml.dm+wbxml"));
    EXPECT_TRUE(Ct(bytes({0x03, 0xB3, 0x89, 0xC0}), "application/vnd.wap.multipart.related;type="));
    EXPECT_TRUE(Ct(bytes({0x05, 0xB3, 0x89, 0x22, 'a', 0x00}), "application/vnd.wap.multipart.related;type=\"a\""));
    EXPECT_TRUE(Ct(cat({bytes({0x12, 0xB3, 0x89}), cstr("application/xml")}),
                   "application/vnd.wap.multipart.related;type=application/xml"));
}

TEST(ApiContent, BrokenParameterRunCostsTheTextNotTheValue) {
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x84, 0x80}), ""));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x9E, 0x80}), ""));
    EXPECT_TRUE(Ct(bytes({0x03, 0x83, 0x22, 0x00}), ""));
    EXPECT_TRUE(Ct(bytes({0x04, 0x83, 'x', 0x00, 0x1F}), ""));
}

TEST(ApiContent, MediaTextOf149CharactersIsSwallowed) {
    std::string media(149, 'm');
    EXPECT_TRUE(Ct(cat({value_length(150), cstr(media.c_str())}), ""));
    std::string shorter(148, 'm');
    EXPECT_TRUE(Ct(cat({value_length(149), cstr(shorter.c_str())}), shorter));
    // the constrained text form has no such test
    EXPECT_TRUE(Ct(cstr(media.c_str()), media));
}

TEST(ApiContent, ParametersFillingTheTextAreSwallowed) {
    // 10 + 1 + 138 + 1 + 1 = 151 characters: past the 150 capacity
    std::string name(138, 'p');
    Bytes v = cat({bytes({0x83}), cstr(name.c_str()), bytes({0x85})});
    EXPECT_TRUE(Ct(cat({value_length(v.size()), v}), ""));
    name.resize(136); // 149 characters fit
    v = cat({bytes({0x83}), cstr(name.c_str()), bytes({0x85})});
    EXPECT_TRUE(Ct(cat({value_length(v.size()), v}), "text/plain;" + name + "=5"));
}

TEST(ApiContent, OverlongParameterNameTruncates) {
    std::string name(198, 'p');
    Bytes v = cat({bytes({0x83}), cstr(name.c_str())});
    Bytes in = cat({value_length(v.size()), v});
    EXPECT_EQ(content(in).status, WSP_ERR_TRUNCATED);
}

TEST(ApiContent, CursorStopsAtTheEndOfTheValue) {
    Content c = content(bytes({0x03, 0x83, 0x81, 0xEA, 0x8D, 0x85}));
    EXPECT_EQ(c.status, WSP_OK);
    EXPECT_EQ(c.consumed, 4);
    c = content(bytes({0x83, 0x8D}));
    EXPECT_EQ(c.consumed, 1);
}

// ---------------------------------------------------------------------------
// Push PDUs and header blocks as handsets receive them

namespace {

struct Pushed {
    int16_t status = 0;
    std::string content_type;
    uint16_t headers_length = 0;
    bool headers_block = false;
    Bytes body_bytes; // valid bytes of the body buffer (headers then data)
    Decoded headers;
};

// Own PDU buffer (flags clear) with a transaction id in front of `offset`.
Pushed push(const Bytes &pdu_bytes) {
    Bytes framed = cat({bytes({0x01}), pdu_bytes});
    wsp_buffer pdu{};
    pdu.size = static_cast<uint16_t>(framed.size());
    pdu.data = static_cast<unsigned char *>(std::calloc(pdu.size, 1));
    std::memcpy(pdu.data, framed.data(), framed.size());
    pdu.offset = 1;
    pdu.length = static_cast<uint16_t>(pdu_bytes.size());
    wsp_push_result res;
    std::memset(&res, 0, sizeof res);
    wsp_buffer *spare = nullptr;
    Pushed p;
    p.status = static_cast<int16_t>(wsp_push_decoding(&pdu, &res, &spare));
    p.content_type = std::string(res.body.content_type, strnlen(res.body.content_type, WSP_CONTENT_TYPE_SIZE));
    p.headers_length = res.headers.length;
    p.headers_block = res.headers.buffer != nullptr;
    if (res.body.body != nullptr)
        p.body_bytes = Bytes(res.body.body->data + res.body.body->offset,
                             res.body.body->data + res.body.body->offset + res.body.body->length);
    if (res.headers.buffer != nullptr) {
        // Decoded where the push decoder left it: the block starts at the
        // buffer's offset and the body follows it inside the same buffer.
        OutBuffer out(1024);
        p.headers.status = static_cast<int16_t>(wsp_dec_hdr(&res.headers, out.get(), nullptr, 4));
        p.headers.text = out.text();
        p.headers.length = out->length;
        p.headers.released = res.headers.buffer->data == nullptr;
    }
    std::free(pdu.data); // NULL when the decoder released it
    return p;
}

const char kMac[] = "8A5D6C3B0F2E4D1A9B7C6E5F4A3B2C1D0E9F8A7B";

} // namespace

TEST(ApiRealistic, MmsNotificationWithTextContentType) {
    Bytes body = cat({bytes({0x8C, 0x82, 0x98}), cstr("T1a2b3c"), bytes({0x8D, 0x92, 0x89, 0x08, 0x80}),
                      cstr("+4915112345678/TYPE=PLMN")});
    Bytes pdu = cat({bytes({0x06, 0x22}), cstr("application/vnd.wap.mms-message"), bytes({0xAF, 0x84}), body});
    Pushed p = push(pdu);
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.wap.mms-message");
    EXPECT_EQ(p.headers_length, 2);
    EXPECT_EQ(hex(p.body_bytes), hex(cat({bytes({0xAF, 0x84}), body})));
    EXPECT_EQ(p.headers.status, WSP_OK);
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:mms.ua\n");
}

TEST(ApiRealistic, MmsNotificationWithBinaryContentType) {
    Pushed p = push(bytes({0x06, 0x03, 0xBE, 0xAF, 0x84, 0x8C, 0x82, 0x98, 0x41, 0x00}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.wap.mms-message");
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:mms.ua\n");
}

TEST(ApiRealistic, ServiceIndicationWithDateAndLength) {
    Bytes hdrs = bytes({0xAF, 0x82, 0x92, 0x04, 0x2E, 0xBC, 0x98, 0xA1, 0x8D, 0x9A});
    Bytes pdu = cat({bytes({0x06, static_cast<int>(hdrs.size() + 1), 0xAE}), hdrs,
                     bytes({0x02, 0x05, 0x6A, 0x00, 0x45, 0xC6, 0x0C, 0x03}), cstr("wap.example.com"),
                     bytes({0x01, 0x01})});
    Pushed p = push(pdu);
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.wap.sic");
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:wml.ua\n"
                              "date:Sun, 06 Nov 1994 08:49:37 GMT\n"
                              "content-length:26\n");
}

TEST(ApiRealistic, ServiceLoadingWithCharset) {
    Pushed p = push(bytes({0x06, 0x06, 0x03, 0xB0, 0x81, 0xEA, 0xAF, 0x82, 0x02, 0x06, 0x6A, 0x00, 0x85}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.wap.slc;charset=utf-8");
    EXPECT_EQ(p.headers_length, 2);
    EXPECT_EQ(hex(p.body_bytes), "AF 82 02 06 6A 00 85");
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:wml.ua\n");
}

TEST(ApiRealistic, ProvisioningWithSecAndMac) {
    Bytes ct = cat({bytes({0x1F, 0x2D, 0xB6, 0x91, 0x81, 0x92}), cstr(kMac)});
    Bytes wbxml = bytes({0x03, 0x0B, 0x6A, 0x00, 0x45, 0xC6, 0x01});
    Pushed p = push(cat({bytes({0x06, static_cast<int>(ct.size())}), ct, wbxml}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, std::string("application/vnd.wap.connectivity-wbxml;sec=1;mac=") + kMac);
    EXPECT_EQ(p.headers_length, 0);
    EXPECT_FALSE(p.headers_block);
    EXPECT_EQ(hex(p.body_bytes), hex(wbxml));
}

TEST(ApiRealistic, ProvisioningWithAppIdAndUserPin) {
    Bytes ct = cat({bytes({0x1F, 0x2D, 0xB6, 0x91, 0x80, 0x92}), cstr(kMac)});
    Bytes hdrs = bytes({0xAF, 0x82}); // some networks send the browser application
    Pushed p = push(cat({bytes({0x06, static_cast<int>(ct.size() + hdrs.size())}), ct, hdrs, bytes({0x03, 0x0B})}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, std::string("application/vnd.wap.connectivity-wbxml;sec=0;mac=") + kMac);
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:wml.ua\n");
}

TEST(ApiRealistic, DrmRightsObject) {
    Pushed p = push(bytes({0x06, 0x03, 0xCB, 0xAF, 0x88, 0x03, 0x0E, 0x6A, 0x00}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.oma.drm.rights+wbxml");
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:drm.ua\n");
}

TEST(ApiRealistic, DrmRightsAsXmlWithContentLocation) {
    Bytes hdrs = cat({bytes({0xAF, 0x88, 0x8E}), cstr("http://ri.example.com/ro1")});
    Pushed p = push(cat({bytes({0x06, static_cast<int>(hdrs.size() + 1), 0xCA}), hdrs, cstr("<o-ex:rights/>")}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.oma.drm.rights+xml");
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:drm.ua\n"
                              "content-location:http://ri.example.com/ro1\n");
}

TEST(ApiRealistic, SyncMlDeviceManagementNotification) {
    Pushed p = push(bytes({0x06, 0x03, 0xC4, 0xAF, 0x87, 0xE1, 0x5B, 0x02, 0x10}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.syncml.notification");
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:syncml.dm\n");
}

TEST(ApiRealistic, SuplInitWithLongContentTypeCode) {
    Pushed p = push(bytes({0x06, 0x06, 0x03, 0x02, 0x03, 0x12, 0xAF, 0x90, 0x00, 0x2C, 0x01}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.omaloc-supl-init");
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-oma-application:ulp.ua\n");
}

TEST(ApiRealistic, EmailNotificationWithTextApplicationId) {
    Bytes hdrs = cat({bytes({0xAF}), cstr("x-wap-application:emn.ua")});
    Bytes ct = cstr("application/vnd.wap.emn+wbxml");
    Pushed p = push(cat({bytes({0x06, static_cast<int>(ct.size() + hdrs.size())}), ct, hdrs, bytes({0x03, 0x0D})}));
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.content_type, "application/vnd.wap.emn+wbxml");
    EXPECT_EQ(p.headers.text, "x-wap-application-id:x-wap-application:emn.ua\n");
}

TEST(ApiRealistic, MultimediaMessageContentType) {
    EXPECT_TRUE(Ct(cat({bytes({0x1B, 0xB3, 0x89}), cstr("application/smil"), bytes({0x8A}), cstr("<0000>")}),
                   "application/vnd.wap.multipart.related;type=application/smil;start=<0000>"));
    EXPECT_TRUE(Ct(bytes({0x05, 0xB3, 0x89, 0x83, 0x8A, 0x00}), "application/vnd.wap.multipart.related;type=text/plain;start"));
}

TEST(ApiRealistic, ReplyHeadersOfAWapGateway) {
    Bytes b = cat({bytes({0x92, 0x04, 0x2E, 0xBC, 0x98, 0xA1}),             // Date
                   bytes({0x9D, 0x04, 0x2E, 0xBB, 0x47, 0x21}),             // Last-Modified
                   bytes({0x8D, 0x02, 0x05, 0xDC}),                         // Content-Length 1500
                   bytes({0x88, 0x80}),                                     // Cache-Control no-cache
                   bytes({0xC7, 0x02, 0x82, 0x9E}),                         // Cache-Control max-age=30
                   bytes({0x93}), cstr("\"a1b2c3\""),                          // ETag
                   bytes({0xA6}), cstr("Apache/2.2"),                          // Server
                   bytes({0x84, 0x81}),                                     // Accept-Ranges bytes
                   bytes({0x8E}), cstr("http://wap.example.com/index.wml"),    // Content-Location
                   cstr("X-Powered-By"), cstr("PHP/5.2"),                         // application header
                   bytes({0x8C, 0x99})});                                   // Content-Language en
    EXPECT_TRUE(Lines(b, "date:Sun, 06 Nov 1994 08:49:37 GMT\n"
                         "last-modified:Sat, 05 Nov 1994 08:49:37 GMT\n"
                         "content-length:1500\n"
                         "cache-control:no-cache,max-age=30\n"
                         "etag:\"a1b2c3\"\n"
                         "server:Apache/2.2\n"
                         "accept-ranges:bytes\n"
                         "content-location:http://wap.example.com/index.wml\n"
                         "x-powered-by:PHP/5.2\n"
                         "content-language:en\n"));
}

TEST(ApiRealistic, ExternalPduIsCopiedIntoTheSpare) {
    Bytes pdu = bytes({0x06, 0x03, 0xBE, 0xAF, 0x84, 0x8C, 0x82});
    InBytes in(pdu);
    wsp_buffer buf{};
    buf.data = in.mutable_data();
    buf.size = buf.length = in.size();
    buf.flags = WSP_BUFFER_EXTERNAL;
    wsp_buffer spare_rec{};
    wsp_buffer *spare = &spare_rec;
    wsp_push_result res;
    std::memset(&res, 0, sizeof res);
    ASSERT_EQ(static_cast<int16_t>(wsp_push_decoding(&buf, &res, &spare)), WSP_OK);
    EXPECT_EQ(spare, &spare_rec);
    EXPECT_EQ(res.body.body, &spare_rec);
    EXPECT_EQ(res.headers.buffer, &spare_rec);
    EXPECT_EQ(res.headers.length, 2);
    EXPECT_STREQ(res.body.content_type, "application/vnd.wap.mms-message");
    OutBuffer out(128);
    EXPECT_EQ(static_cast<int16_t>(wsp_dec_hdr(&res.headers, out.get(), nullptr, 4)), WSP_OK);
    EXPECT_EQ(out.text(), "x-wap-application-id:x-wap-application:mms.ua\n");
    wsp_body_result body;
    std::memset(&body, 0, sizeof body);
    EXPECT_EQ(static_cast<int16_t>(wsp_decode_body(&res.body, &body)), WSP_OK);
    EXPECT_STREQ(body.content_type, "application/vnd.wap.mms-message");
    EXPECT_EQ(hex(body.body.data, body.body.length), "AF 84 8C 82");
    std::free(body.body.data);
}

// Acceptance checks for the foundations and the PDU operations, made through
// the public header alone: the exported primitives, the release functions,
// the fixed switches, the assigned-number tables and the date conversions as
// the codecs expose them, push PDU decoding (with PDUs shaped like the ones
// handsets receive), the body hand-over and the Profile headers.  Every
// expected value here was worked out by hand from the documented behaviour,
// never copied from the library's output.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

int16_t low16(int status) { return static_cast<int16_t>(status & 0xFFFF); }

// ---------------------------------------------------------------------------
// Header blocks through wsp_enc_hdr and wsp_dec_hdr.

struct Encoded {
    int status;
    Bytes bytes;
    uint16_t holder_length;
    bool data_released;
};

// One page-1 record holding `lines`, encoded under `version` into a fresh
// output block of `size` bytes.
Encoded encode_lines(const std::string &lines, const char *version, uint16_t size = 512) {
    TextCopy text(lines);
    wsp_hdr_page page;
    std::memset(&page, 0, sizeof page);
    page.page = 1;
    page.text.data = reinterpret_cast<unsigned char *>(text.get());
    page.text.size = static_cast<uint16_t>(lines.size() + 1);
    page.text.length = static_cast<uint16_t>(lines.size());
    wsp_hdr_page_list list;
    list.count = 1;
    list.pages = &page;
    OutBuffer out(size);
    wsp_hdrbuf holder;
    holder.length = 0;
    holder.buffer = out.get();
    Encoded e;
    e.status = wsp_enc_hdr(&list, &holder, version);
    e.data_released = out->data == nullptr;
    e.bytes = out.written();
    e.holder_length = holder.length;
    return e;
}

std::string encoded_hex(const std::string &lines, const char *version) {
    Encoded e = encode_lines(lines, version);
    if (low16(e.status) != WSP_OK) return "failed " + std::to_string(e.status);
    return hex(e.bytes);
}

struct Decoded {
    int status;
    std::string text;
    bool block_released;
};

// Decodes `block` (a calloc'ed copy, since failures release it) into an
// empty text buffer of `out_size` bytes.
Decoded decode_block(const Bytes &block, int version, uint16_t out_size = 2048) {
    wsp_buffer in;
    std::memset(&in, 0, sizeof in);
    in.data = static_cast<unsigned char *>(std::calloc(block.empty() ? 1 : block.size(), 1));
    if (!block.empty()) std::memcpy(in.data, block.data(), block.size());
    in.size = static_cast<uint16_t>(block.size());
    in.length = static_cast<uint16_t>(block.size());
    wsp_hdrbuf holder;
    holder.length = static_cast<uint16_t>(block.size());
    holder.buffer = &in;
    OutBuffer out(out_size);
    Decoded d;
    d.status = wsp_dec_hdr(&holder, out.get(), nullptr, version);
    d.block_released = in.data == nullptr;
    d.text = out.text();
    std::free(in.data);
    return d;
}

std::string decoded_text(const Bytes &block, int version = 4) {
    Decoded d = decode_block(block, version);
    if (low16(d.status) != WSP_OK) return "failed " + std::to_string(d.status);
    return d.text;
}

// ---------------------------------------------------------------------------
// Content types through wsp_decode_content and wsp_encode_content.

struct Content {
    int status;
    std::string text;
    long consumed;
};

Content decode_ct(const Bytes &value, uint16_t avail, const char *prefill = "") {
    InBytes in(value);
    const uint8_t *p = in.data();
    char out[WSP_CONTENT_TYPE_SIZE];
    std::memset(out, 0, sizeof out);
    std::strcpy(out, prefill);
    Content c;
    c.status = wsp_decode_content(&p, out, avail);
    c.text = out;
    c.consumed = static_cast<long>(p - in.data());
    return c;
}

Content decode_ct(const Bytes &value) { return decode_ct(value, static_cast<uint16_t>(value.size())); }

struct ContentOut {
    int status;
    Bytes bytes;
};

ContentOut encode_ct(const char *text, const char *version, uint16_t size = 256) {
    OutBuffer out(size);
    ContentOut c;
    c.status = wsp_encode_content(text, out.get(), version);
    c.bytes = out.written();
    return c;
}

std::string encoded_ct_hex(const char *text, const char *version) {
    ContentOut c = encode_ct(text, version);
    if (low16(c.status) != WSP_OK) return "failed " + std::to_string(c.status);
    return hex(c.bytes);
}

// ---------------------------------------------------------------------------
// Push PDUs.

// A received PDU in a calloc'ed block.  `lead` octets (the transaction id of
// a connectionless push) sit in front of the PDU and are passed over through
// the buffer's offset, as clients do.
struct PushPdu {
    wsp_buffer buf;
    unsigned char *original;
    PushPdu(const Bytes &pdu, const Bytes &lead = {}, bool external = false) {
        std::memset(&buf, 0, sizeof buf);
        size_t n = lead.size() + pdu.size();
        buf.data = static_cast<unsigned char *>(std::calloc(n ? n : 1, 1));
        if (!lead.empty()) std::memcpy(buf.data, lead.data(), lead.size());
        if (!pdu.empty()) std::memcpy(buf.data + lead.size(), pdu.data(), pdu.size());
        buf.size = static_cast<uint16_t>(n);
        buf.offset = static_cast<uint16_t>(lead.size());
        buf.length = static_cast<uint16_t>(pdu.size());
        buf.flags = external ? WSP_BUFFER_EXTERNAL : 0;
        original = buf.data;
    }
    ~PushPdu() { std::free(buf.data); }
    PushPdu(const PushPdu &) = delete;
    PushPdu &operator=(const PushPdu &) = delete;
    Bytes valid() const { return Bytes(buf.data + buf.offset, buf.data + buf.offset + buf.length); }
};

// The caller's spare record, deliberately dirty so that the fields the
// library must clear can be checked.
struct SpareBuffer {
    wsp_buffer buf;
    wsp_buffer *ptr;
    SpareBuffer() {
        std::memset(&buf, 0, sizeof buf);
        buf.flags = WSP_BUFFER_EXTERNAL | 0x40;
        buf.offset = 7;
        buf.length = 9;
        buf.size = 3;
        ptr = &buf;
    }
    ~SpareBuffer() { std::free(buf.data); }
    SpareBuffer(const SpareBuffer &) = delete;
    SpareBuffer &operator=(const SpareBuffer &) = delete;
    Bytes valid() const { return Bytes(buf.data + buf.offset, buf.data + buf.offset + buf.length); }
};

wsp_push_result dirty_result() {
    wsp_push_result r;
    std::memset(&r, 0xA5, sizeof r);
    return r;
}

// Header text of a decoded push: the result's header holder through
// wsp_dec_hdr under encoding version 1.4.
std::string push_headers_text(wsp_push_result &res) {
    OutBuffer out(1024);
    int st = wsp_dec_hdr(&res.headers, out.get(), nullptr, 4);
    if (low16(st) != WSP_OK) return "failed " + std::to_string(st);
    return out.text();
}

Bytes text0(const char *s) { return cat({text_bytes(s), bytes({0x00})}); }

// A multimedia-message notification body (message type, transaction id,
// version, class, size, expiry, location).
const Bytes kMmsNotification = cat({bytes({0x8C, 0x82, 0x98}), text0("T1"),
                                    bytes({0x8D, 0x90, 0x8A, 0x80, 0x8E, 0x02, 0x1F, 0x40, 0x88, 0x05, 0x81,
                                           0x03, 0x03, 0xF4, 0x80, 0x83}),
                                    text0("http://mms.example.net/T1")});

// A tokenised service indication (version, public id, charset, si, indication
// with href and text).
const Bytes kSiBody = cat({bytes({0x02, 0x05, 0x6A, 0x00, 0x45, 0xC6, 0x0C, 0x03}), text0("example.org/news"),
                           bytes({0x01, 0x03}), text0("Headlines"), bytes({0x01, 0x01})});

// A tokenised service loading (version, public id, charset, sl with href).
const Bytes kSlBody = cat({bytes({0x02, 0x06, 0x6A, 0x00, 0x85, 0x0A, 0x03}), text0("example.org/app.jad"),
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
// Records, statuses and switches

TEST(ConfStatus, CodesAndPatterns) {
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

TEST(ConfSwitches, ExportedSwitchesReturnTheirFixedValuesOnEveryCall) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(1, device_is_sar_enabled());
        EXPECT_EQ(1, device_is_optionTPI_support_enabled());
        EXPECT_EQ(0, device_Is_SIA_Available());
        EXPECT_EQ(1, device_fallback_to_byterange());
    }
}

TEST(ConfSwitches, ContentIdAcceptsPlainTextAndQuotedForms) {
    // The Content-ID decoder takes both forms; the quote octet is dropped.
    EXPECT_EQ("content-id:abc\n", decoded_text(cat({bytes({0xC0}), text0("abc")}), 3));
    EXPECT_EQ("content-id:<p1>\n", decoded_text(cat({bytes({0xC0, 0x22}), text0("<p1>")}), 3));
}

TEST(ConfSwitches, EncodingVersionUsesItsWellKnownEncoding) {
    EXPECT_EQ("C3 9F", encoded_hex("encoding-version: 1.0", "1.3"));
    EXPECT_EQ("C3 93", encoded_hex("Encoding-Version: 1.3", "1.4"));
}

// ===========================================================================
// Release functions

TEST(ConfRelease, HdrbufFreesOwnDataAndKeepsTheCounts) {
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

TEST(ConfRelease, HdrbufLeavesExternalDataAlone) {
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

TEST(ConfRelease, HdrbufWithoutHolderBufferOrDataIsANoOp) {
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

TEST(ConfRelease, BodybufFreesOwnDataAndIsHarmlessTwice) {
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

TEST(ConfRelease, BodybufLeavesExternalDataAndMissingBodyAlone) {
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

TEST(ConfRelease, CapabReleasesAllThreeItemsAndLeavesTheLeadingFields) {
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

TEST(ConfRelease, CapabWithoutSecondItemStillReleasesThirdAndFirst) {
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

// ===========================================================================
// uintvar

namespace {
std::string enc_varint(uint32_t v, uint8_t *count_out = nullptr) {
    uint8_t area[5];
    std::memset(area, 0xEE, sizeof area);
    uint8_t *cur = area;
    uint8_t count = 0xCC;
    int st = wsp_enc_varint(v, &cur, &count);
    if (st != WSP_OK) return "failed";
    if (count_out) *count_out = count;
    if (cur != area + count) return "cursor not advanced by the count";
    return hex(area, count);
}
} // namespace

TEST(ConfVarint, EncodesTheDocumentedValues) {
    uint8_t n = 0;
    EXPECT_EQ("00", enc_varint(0, &n));
    EXPECT_EQ(1, n);
    EXPECT_EQ("7F", enc_varint(0x7F, &n));
    EXPECT_EQ(1, n);
    EXPECT_EQ("81 00", enc_varint(0x80, &n));
    EXPECT_EQ(2, n);
    EXPECT_EQ("8F FF FF FF 7F", enc_varint(0xFFFFFFFFu, &n));
    EXPECT_EQ(5, n);
}

TEST(ConfVarint, EncodesEveryGroupBoundary) {
    EXPECT_EQ("FF 7F", enc_varint(0x3FFF));
    EXPECT_EQ("81 80 00", enc_varint(0x4000));
    EXPECT_EQ("FF FF 7F", enc_varint(0x1FFFFF));
    EXPECT_EQ("81 80 80 00", enc_varint(0x200000));
    EXPECT_EQ("FF FF FF 7F", enc_varint(0x0FFFFFFF));
    EXPECT_EQ("81 80 80 80 00", enc_varint(0x10000000));
    EXPECT_EQ("83 31", enc_varint(433));
}

TEST(ConfVarint, DecodesWithinTheAvailableOctets) {
    const uint8_t in[] = {0x81, 0x80, 0x00, 0x55};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 3));
    EXPECT_EQ(0x4000u, v);
    EXPECT_EQ(in + 3, p);

    const uint8_t one[] = {0x05};
    p = one;
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 1));
    EXPECT_EQ(5u, v);
    EXPECT_EQ(one + 1, p);
}

TEST(ConfVarint, RefusesALeadingContinuationOctetWithoutBits) {
    const uint8_t in[] = {0x80, 0x01};
    const uint8_t *p = in;
    uint32_t v = 1234;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 2));
    EXPECT_EQ(in, p);
}

TEST(ConfVarint, RefusesSixOctets) {
    const uint8_t in[] = {0x81, 0x81, 0x81, 0x81, 0x81, 0x01};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 6));
    EXPECT_EQ(in, p);
    const uint8_t longer[] = {0x81, 0x81, 0x81, 0x81, 0x81, 0x81, 0x01};
    p = longer;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 7));
    EXPECT_EQ(longer, p);
}

TEST(ConfVarint, RefusesAValueRunningPastTheAvailableOctets) {
    const uint8_t in[] = {0x81, 0x00};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 1));
    EXPECT_EQ(in, p);
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 0));
    EXPECT_EQ(in, p);
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 2));
    EXPECT_EQ(0x80u, v);
}

TEST(ConfVarint, ASingleOctetNeedsOneAvailableOctet) {
    const uint8_t in[] = {0x05};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 0));
    EXPECT_EQ(in, p);
}

TEST(ConfVarint, FiveOctetsKeepOnlyTheLow32Bits) {
    const uint8_t in[] = {0xFF, 0xFF, 0xFF, 0xFF, 0x7F};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 5));
    EXPECT_EQ(0xFFFFFFFFu, v);
    EXPECT_EQ(in + 5, p);
    const uint8_t in2[] = {0x9F, 0x80, 0x80, 0x80, 0x01};
    p = in2;
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 5));
    EXPECT_EQ(0xF0000001u, v);
}

TEST(ConfVarint, RoundTripsThroughTheEncoder) {
    const uint32_t values[] = {0, 1, 127, 128, 300, 16383, 16384, 0x12345678, 0xFFFFFFFFu};
    for (uint32_t value : values) {
        uint8_t area[5];
        uint8_t *w = area;
        uint8_t n = 0;
        ASSERT_EQ(WSP_OK, wsp_enc_varint(value, &w, &n));
        const uint8_t *r = area;
        uint32_t back = 0;
        ASSERT_EQ(WSP_OK, wsp_dec_varint(&r, &back, n));
        EXPECT_EQ(value, back);
        EXPECT_EQ(area + n, r);
        r = area;
        ASSERT_EQ(WSP_OK, wsp_dec_varintLen(&r, n, &back, n));
        EXPECT_EQ(value, back);
    }
}

TEST(ConfVarintLen, AcceptsOnlyTheExpectedOctetCount) {
    const uint8_t in[] = {0x81, 0x00};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_OK, wsp_dec_varintLen(&p, 2, &v, 2));
    EXPECT_EQ(0x80u, v);
    EXPECT_EQ(in + 2, p);
    p = in;
    v = 99;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 3, &v, 2));
    EXPECT_EQ(in, p);
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 1, &v, 2));
    EXPECT_EQ(in, p);
}

TEST(ConfVarintLen, SingleOctetNeedsAnExpectedCountOfOne) {
    const uint8_t in[] = {0x05, 0x00};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 2, &v, 2));
    EXPECT_EQ(in, p);
    EXPECT_EQ(WSP_OK, wsp_dec_varintLen(&p, 1, &v, 2));
    EXPECT_EQ(5u, v);
    EXPECT_EQ(in + 1, p);
}

TEST(ConfVarintLen, EveryFailureIsTheUnsignedPattern) {
    const uint8_t lead[] = {0x80, 0x01};
    const uint8_t *p = lead;
    uint32_t v = 0;
    int st = wsp_dec_varintLen(&p, 2, &v, 2);
    EXPECT_EQ(65322, st);
    EXPECT_EQ(-214, low16(st));
    const uint8_t longv[] = {0x81, 0x80, 0x00};
    p = longv;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 3, &v, 2)); // past avail
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 2, &v, 3)); // longer than expected
    EXPECT_EQ(longv, p);
    const uint8_t six[] = {0x81, 0x81, 0x81, 0x81, 0x81, 0x01};
    p = six;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 6, &v, 6));
    EXPECT_EQ(six, p);
    const uint8_t one[] = {0x05};
    p = one;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 1, &v, 0));
    EXPECT_EQ(one, p);
}

TEST(ConfVarintLen, FiveOctetsWhenFiveAreExpected) {
    const uint8_t in[] = {0x8F, 0xFF, 0xFF, 0xFF, 0x7F};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_OK, wsp_dec_varintLen(&p, 5, &v, 5));
    EXPECT_EQ(0xFFFFFFFFu, v);
    p = in;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 5, &v, 4));
    EXPECT_EQ(in, p);
}

// ===========================================================================
// Short-integer

TEST(ConfShortInt, WritesValueOrHighBit) {
    uint8_t area[1];
    const uint32_t values[] = {0, 5, 127};
    const uint8_t expect[] = {0x80, 0x85, 0xFF};
    for (int i = 0; i < 3; ++i) {
        uint8_t *w = area;
        area[0] = 0;
        EXPECT_EQ(WSP_OK, wsp_short_int_encodeto(&w, values[i]));
        EXPECT_EQ(expect[i], area[0]);
        EXPECT_EQ(area + 1, w);
    }
}

TEST(ConfShortInt, OnlyTheLowEightBitsCount) {
    uint8_t area[1] = {0};
    uint8_t *w = area;
    EXPECT_EQ(WSP_OK, wsp_short_int_encodeto(&w, 300));
    EXPECT_EQ(0xAC, area[0]);
    w = area;
    EXPECT_EQ(WSP_OK, wsp_short_int_encodeto(&w, 256));
    EXPECT_EQ(0x80, area[0]);
}

TEST(ConfShortInt, RefusesBitSevenAndLeavesTheCursor) {
    uint8_t area[1] = {0x11};
    uint8_t *w = area;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_short_int_encodeto(&w, 128));
    EXPECT_EQ(area, w);
    EXPECT_EQ(WSP_ERR_FAIL, wsp_short_int_encodeto(&w, 255));
    EXPECT_EQ(WSP_ERR_FAIL, wsp_short_int_encodeto(&w, 0x1FF));
    EXPECT_EQ(area, w);
    EXPECT_EQ(0x11, area[0]);
}

TEST(ConfShortInt, DecodesTheLowSevenBits) {
    const uint8_t in[] = {0x80, 0xFF, 0xB5};
    const uint8_t *p = in;
    uint8_t v = 0x55;
    EXPECT_EQ(WSP_OK, wsp_shortint_direct_decode(&p, &v));
    EXPECT_EQ(0, v);
    EXPECT_EQ(in + 1, p);
    EXPECT_EQ(WSP_OK, wsp_shortint_direct_decode(&p, &v));
    EXPECT_EQ(127, v);
    EXPECT_EQ(WSP_OK, wsp_shortint_direct_decode(&p, &v));
    EXPECT_EQ(0x35, v);
    EXPECT_EQ(in + 3, p);
}

TEST(ConfShortInt, DecodeRefusesOctetsBelow128AndLeavesTheCursor) {
    const uint8_t in[] = {0x7F, 0x00, 0x20};
    for (int i = 0; i < 3; ++i) {
        const uint8_t *p = in + i;
        uint8_t v = 0;
        EXPECT_EQ(WSP_ERR_FAIL, wsp_shortint_direct_decode(&p, &v));
        EXPECT_EQ(in + i, p);
    }
}

// The Short-integer writer's last-octet rule as the header encoder shows it:
// a value octet that would fill the block to its last byte fails the call.
TEST(ConfShortInt, AppendingIntoTheLastByteFailsTheHeader) {
    Encoded fits = encode_lines("age: 5", "1.1", 3);
    EXPECT_EQ(WSP_OK, low16(fits.status));
    EXPECT_EQ("85 85", hex(fits.bytes));
    EXPECT_EQ(2, fits.holder_length);
    Encoded full = encode_lines("age: 5", "1.1", 2);
    EXPECT_EQ(WSP_ERR_FAIL, low16(full.status));
    EXPECT_TRUE(full.data_released);
}

// ===========================================================================
// Token-text writer

namespace {
struct TokenOut {
    int status;
    std::string hex_all;
    uint16_t length;
};
TokenOut token_text(const char *text, uint16_t size, uint16_t length = 0) {
    OutBuffer out(size);
    out->length = length;
    TokenOut t;
    t.status = wsp_tokentext_encode_buff(text, out.get());
    t.hex_all = hex(out->data, size);
    t.length = out->length;
    return t;
}
} // namespace

TEST(ConfTokenText, WritesCharactersAndNul) {
    TokenOut t = token_text("x-wap-tod", 10);
    EXPECT_EQ(WSP_OK, t.status);
    EXPECT_EQ(hex(text0("x-wap-tod")), t.hex_all);
    EXPECT_EQ(10, t.length);
}

TEST(ConfTokenText, EmptyTextWritesOneNul) {
    OutBuffer out(2);
    out->data[0] = 0x77;
    EXPECT_EQ(WSP_OK, wsp_tokentext_encode_buff("", out.get()));
    EXPECT_EQ(1, out->length);
    EXPECT_EQ(0, out->data[0]);
}

TEST(ConfTokenText, AppendsAfterOffsetAndLength) {
    OutBuffer out(10, 3);
    out->length = 2;
    out->data[3] = 0xA1;
    out->data[4] = 0xA2;
    EXPECT_EQ(WSP_OK, wsp_tokentext_encode_buff("abc", out.get()));
    EXPECT_EQ(6, out->length);
    EXPECT_EQ("00 00 00 A1 A2 61 62 63 00 00", hex(out->data, 10));
}

TEST(ConfTokenText, ExactRoomAndOneShort) {
    TokenOut exact = token_text("abc", 4);
    EXPECT_EQ(WSP_OK, exact.status);
    EXPECT_EQ("61 62 63 00", exact.hex_all);
    EXPECT_EQ(4, exact.length);
    TokenOut shortb = token_text("abc", 3);
    EXPECT_EQ(WSP_ERR_FAIL, shortb.status);
    EXPECT_EQ("00 00 00", shortb.hex_all);
    EXPECT_EQ(0, shortb.length);
    TokenOut after = token_text("ab", 5, 2);
    EXPECT_EQ(WSP_OK, after.status);
    EXPECT_EQ(5, after.length);
    TokenOut after_short = token_text("ab", 4, 2);
    EXPECT_EQ(WSP_ERR_FAIL, after_short.status);
    EXPECT_EQ(2, after_short.length);
}

TEST(ConfTokenText, SlashIsASeparator) {
    TokenOut t = token_text("text/plain", 20);
    EXPECT_EQ(WSP_ERR_FAIL, t.status);
    EXPECT_EQ(0, t.length);
    // The characters before the separator stay in the buffer, uncounted.
    EXPECT_EQ("74 65 78 74", t.hex_all.substr(0, 11));
}

TEST(ConfTokenText, EverySeparatorAndControlIsRefused) {
    const char separators[] = "()<>@,;:\\\"/[]?={} \t";
    for (const char *s = separators; *s; ++s) {
        char text[4] = {'a', *s, 'b', 0};
        TokenOut t = token_text(text, 8);
        EXPECT_EQ(WSP_ERR_FAIL, t.status) << "separator " << static_cast<int>(*s);
        EXPECT_EQ(0, t.length);
    }
    const unsigned char others[] = {0x01, 0x0A, 0x0D, 0x1F, 0x7F, 0x80, 0xE9, 0xFF};
    for (unsigned char c : others) {
        char text[3] = {'a', static_cast<char>(c), 0};
        TokenOut t = token_text(text, 8);
        EXPECT_EQ(WSP_ERR_FAIL, t.status) << "octet " << static_cast<int>(c);
    }
}

TEST(ConfTokenText, EveryOtherPrintableIsAccepted) {
    std::string all;
    const std::string separators = "()<>@,;:\\\"/[]?={} \t";
    for (int c = 33; c <= 126; ++c)
        if (separators.find(static_cast<char>(c)) == std::string::npos) all += static_cast<char>(c);
    TokenOut t = token_text(all.c_str(), static_cast<uint16_t>(all.size() + 1));
    EXPECT_EQ(WSP_OK, t.status);
    EXPECT_EQ(all.size() + 1, t.length);
}

// ===========================================================================
// In-place tokenizer

namespace {
// All tokens of `text` split at `delim`, then "NULL" for the end.
std::string tokens(const std::string &text, const char *delim) {
    TextCopy copy(text);
    char *pos = copy.get();
    std::string out;
    for (int i = 0; i < 10; ++i) {
        char *t = wsp_strtoken(&pos, delim);
        if (t == nullptr) return out + "NULL";
        out += "[" + std::string(t) + "]";
    }
    return out + "...";
}
} // namespace

TEST(ConfStrtoken, QuotedSectionsDoNotSplit) {
    EXPECT_EQ("[a][\"b,c\"][d]NULL", tokens("a,\"b,c\",d", ","));
}

TEST(ConfStrtoken, LeadingDelimitersAndEmptyFieldsAreSkipped) {
    EXPECT_EQ("[x]NULL", tokens(",,x", ","));
    EXPECT_EQ("[a][b]NULL", tokens("a,,b", ","));
    EXPECT_EQ("[a]NULL", tokens("a,", ","));
}

TEST(ConfStrtoken, OnlyDelimitersYieldOneEmptyTokenThenNull) {
    EXPECT_EQ("[]NULL", tokens(",,", ","));
    EXPECT_EQ("[]NULL", tokens(" ", " "));
}

TEST(ConfStrtoken, CutsInPlaceAndAdvancesPastTheDelimiter) {
    char text[] = "age: 10\nx-a:1";
    char *pos = text;
    char *line = wsp_strtoken(&pos, "\n");
    ASSERT_EQ(text, line);
    EXPECT_EQ(text + 8, pos);
    EXPECT_EQ('\0', text[7]);
    char *lp = line;
    char *name = wsp_strtoken(&lp, ":");
    EXPECT_STREQ("age", name);
    EXPECT_STREQ(" 10", lp);
    char *last = wsp_strtoken(&pos, "\n");
    EXPECT_STREQ("x-a:1", last);
    EXPECT_EQ('\0', *pos);
    EXPECT_EQ(nullptr, wsp_strtoken(&pos, "\n"));
}

TEST(ConfStrtoken, AnUnbalancedQuoteIsAnOrdinaryCharacter) {
    EXPECT_EQ("[\"a][b]NULL", tokens("\"a,b", ","));
    EXPECT_EQ("[a\"b][c]NULL", tokens("a\"b,c", ","));
}

TEST(ConfStrtoken, TheCharacterAfterAClosingQuoteOpensNothing) {
    // After "a" the next quotation mark is an ordinary character, so the
    // comma after b splits; the rest then has an unbalanced quote.
    EXPECT_EQ("[\"a\"\"b][c\"][d]NULL", tokens("\"a\"\"b,c\",d", ","));
    EXPECT_EQ("[\"x\"y][z]NULL", tokens("\"x\"y,z", ","));
    EXPECT_EQ("[\"x\"][y]NULL", tokens("\"x\",y", ","));
}

TEST(ConfStrtoken, RefusesBadArguments) {
    char text[] = "a,b";
    char *pos = text;
    EXPECT_EQ(nullptr, wsp_strtoken(&pos, ",;"));
    EXPECT_EQ(text, pos);
    EXPECT_EQ(nullptr, wsp_strtoken(nullptr, ","));
    char *none = nullptr;
    EXPECT_EQ(nullptr, wsp_strtoken(&none, ","));
    char empty[] = "";
    char *ep = empty;
    EXPECT_EQ(nullptr, wsp_strtoken(&ep, ","));
    EXPECT_STREQ("a,b", text);
}

// ===========================================================================
// Integer, Version, Quoted-string and Text-string writers as the encoders
// show them

TEST(ConfIntegerText, DecimalShortAndLongForms) {
    EXPECT_EQ("85 85", encoded_hex("age: 5", "1.1"));
    EXPECT_EQ("85 80", encoded_hex("age: 0", "1.1"));
    EXPECT_EQ("85 FF", encoded_hex("age: 127", "1.1"));
    EXPECT_EQ("85 01 80", encoded_hex("age: 128", "1.1"));
    EXPECT_EQ("85 01 C8", encoded_hex("age: 200", "1.1"));
    EXPECT_EQ("85 02 01 2C", encoded_hex("age:    300", "1.1"));
    EXPECT_EQ("85 03 01 00 00", encoded_hex("age: 65536", "1.1"));
    EXPECT_EQ("85 04 01 00 00 00", encoded_hex("age: 16777216", "1.1"));
    EXPECT_EQ("85 04 FF FF FF FE", encoded_hex("age: 4294967294", "1.1"));
    EXPECT_EQ("8D 02 04 00", encoded_hex("content-length: 1024", "1.1"));
    EXPECT_EQ("9E 8A", encoded_hex("max-forwards: 10", "1.1"));
}

TEST(ConfIntegerText, DecimalOverflowFails) {
    Encoded e = encode_lines("age: 4294967295", "1.1");
    EXPECT_EQ(WSP_ERR_FAIL, low16(e.status));
    EXPECT_TRUE(e.data_released);
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("age: 99999999999", "1.1").status));
}

TEST(ConfIntegerText, TextThatIsNotANumberIsZero) {
    EXPECT_EQ("85 80", encoded_hex("age: abc", "1.1"));
}

TEST(ConfIntegerText, HexadecimalForms) {
    EXPECT_EQ("85 90", encoded_hex("age: 0X10", "1.1"));
    EXPECT_EQ("85 FF", encoded_hex("age: 0x7F", "1.1"));
    EXPECT_EQ("85 02 01 23", encoded_hex("age: 0x123", "1.1"));
    EXPECT_EQ("85 81", encoded_hex("age: 0x0000000001", "1.1"));
}

TEST(ConfIntegerText, HexadecimalOverflowBecomesALongIntegerOfTheDigits) {
    // Ten digits: five octets, the digits taken in pairs.
    EXPECT_EQ("85 05 1F FF FF FF FF", encoded_hex("age: 0x1FFFFFFFFF", "1.1"));
    // Nine digits: the first digit alone makes the first octet.
    EXPECT_EQ("85 05 01 23 45 67 89", encoded_hex("age: 0x123456789", "1.1"));
    // All bits set reads as the overflow value and takes the digit path.
    EXPECT_EQ("85 04 FF FF FF FF", encoded_hex("age: 0xFFFFFFFF", "1.1"));
    // No upper limit of 30 octets on the length.
    std::string digits(64, 'a');
    Bytes expect = bytes({0x85, 32});
    for (int i = 0; i < 32; ++i) expect.push_back(0xAA);
    EXPECT_EQ(hex(expect), encoded_hex("age: 0x" + digits, "1.1"));
}

TEST(ConfIntegerText, HexadecimalOverflowNeedsRoomForLengthAndDigits) {
    Encoded exact = encode_lines("age: 0x1FFFFFFFFF", "1.1", 7);
    EXPECT_EQ(WSP_OK, low16(exact.status));
    EXPECT_EQ("85 05 1F FF FF FF FF", hex(exact.bytes));
    Encoded shortb = encode_lines("age: 0x1FFFFFFFFF", "1.1", 6);
    EXPECT_EQ(WSP_ERR_FAIL, low16(shortb.status));
    EXPECT_TRUE(shortb.data_released);
}

TEST(ConfLongInt, MayFillTheBlockToItsLastByte) {
    Encoded exact = encode_lines("age: 300", "1.1", 4);
    EXPECT_EQ(WSP_OK, low16(exact.status));
    EXPECT_EQ("85 02 01 2C", hex(exact.bytes));
    EXPECT_EQ(4, exact.holder_length);
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("age: 300", "1.1", 3).status));
}

TEST(ConfVersionValue, NumericForms) {
    EXPECT_EQ("03 83 82 9F", encoded_ct_hex("text/plain; level=1.0", "1.1"));
    EXPECT_EQ("03 83 82 92", encoded_ct_hex("text/plain; level=1.2", "1.1"));
    EXPECT_EQ("03 83 82 9F", encoded_ct_hex("text/plain; level=1", "1.1"));
    EXPECT_EQ("03 83 82 F9", encoded_ct_hex("text/plain; level=7.9", "1.1"));
    EXPECT_EQ("03 83 82 8F", encoded_ct_hex("text/plain; level=0", "1.1"));
}

TEST(ConfVersionValue, OtherFormsAreTheWholeTextAsTextString) {
    EXPECT_EQ("06 83 82 39 2E 31 00", encoded_ct_hex("text/plain; level=9.1", "1.1"));
    EXPECT_EQ("07 83 82 31 2E 31 30 00", encoded_ct_hex("text/plain; level=1.10", "1.1"));
    EXPECT_EQ("07 83 82 31 2E 31 35 00", encoded_ct_hex("text/plain; level=1.15", "1.1"));
    EXPECT_EQ("04 83 82 38 00", encoded_ct_hex("text/plain; level=8", "1.1"));
    EXPECT_EQ("05 83 82 31 30 00", encoded_ct_hex("text/plain; level=10", "1.1"));
    // A minor part must be a single digit too.
    EXPECT_EQ("07 83 82 37 2E 31 34 00", encoded_ct_hex("text/plain; level=7.14", "1.1"));
}

TEST(ConfVersionValue, DecodedBack) {
    EXPECT_EQ("text/plain;level=1", decode_ct(bytes({0x03, 0x83, 0x82, 0x9F})).text);
    EXPECT_EQ("text/plain;level=1.1", decode_ct(bytes({0x03, 0x83, 0x82, 0x91})).text);
    EXPECT_EQ("text/plain;level=7.14", decode_ct(bytes({0x03, 0x83, 0x82, 0xFE})).text);
}

TEST(ConfQuotedString, ClosingQuoteBecomesTheTerminator) {
    EXPECT_EQ("0A 83 66 6F 6F 00 22 62 61 72 00", encoded_ct_hex("text/plain; foo=\"bar\"", "1.1"));
}

TEST(ConfQuotedString, WithoutClosingQuoteTheNulIsNotCounted) {
    // Four octets counted for the four characters; the NUL after them falls
    // outside the counted run, so the value that is copied on has none.
    EXPECT_EQ("09 83 66 6F 6F 00 22 62 61 72", encoded_ct_hex("text/plain; foo=\"bar", "1.1"));
}

TEST(ConfQuotedString, AQuoteBeforeTheEndIsRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_ct("text/plain; foo=\"a\"b\"", "1.1").status));
}

TEST(ConfTextString, QuoteOctetBeforeAHighFirstCharacter) {
    EXPECT_EQ(hex(cat({text0("x-foo"), bytes({0x7F, 0xE9, 0x74, 0xE9, 0x00})})),
              encoded_hex("x-foo:\xE9t\xE9", "1.1"));
    EXPECT_EQ(hex(cat({text0("x-foo"), text0(" bar")})), encoded_hex("X-Foo: bar", "1.1"));
}

TEST(ConfTextString, ControlCharactersAreRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("x-foo:a\x01" "b", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("x-foo:a\x7F" "b", "1.1").status));
    // Tab is a text character.
    EXPECT_EQ(hex(cat({text0("x-foo"), text0("a\tb")})), encoded_hex("x-foo:a\tb", "1.1"));
}

TEST(ConfPlainText, ExtensionMediaHasNoQuoteOctet) {
    EXPECT_EQ("E9 2F 78 00", encoded_ct_hex("\xE9/x", "1.4"));
}

TEST(ConfTextReaders, QuoteOctetIsDroppedWhenReading) {
    EXPECT_EQ("x:\xE9t\n", decoded_text(cat({text0("x"), bytes({0x7F, 0xE9, 0x74, 0x00})})));
}

TEST(ConfTextReaders, QuotedParameterValueGetsItsClosingMarkBack) {
    Content c = decode_ct(bytes({0x08, 0x83, 0x78, 0x00, 0x22, 0x61, 0x62, 0x63, 0x00}));
    EXPECT_EQ(WSP_OK, c.status);
    EXPECT_EQ("text/plain;x=\"abc\"", c.text);
    EXPECT_EQ(9, c.consumed);
}

TEST(ConfTextReaders, TokenLongerThanItsScratchIsTruncationStatus) {
    // An untyped parameter name of 250 characters fills the 198-octet area
    // before its NUL: -216 comes back from the content-type decoder as it is.
    Bytes value = cat({bytes({0x1F, 0x81, 0x7D, 0x83}), Bytes(250, 'a'), bytes({0x00, 0x00})});
    Content c = decode_ct(value);
    EXPECT_EQ(WSP_ERR_TRUNCATED, c.status);
}

// ===========================================================================
// Assigned-number tables through the codecs

TEST(ConfTables, HashedCertificateKeepsItsOwnSpelling) {
    Content c = decode_ct(bytes({0xB8}));
    EXPECT_EQ(WSP_OK, c.status);
    EXPECT_EQ("application/vnd.wap.hashed-certifiate", c.text);
    EXPECT_EQ(1, c.consumed);
    EXPECT_EQ("B8", encoded_ct_hex("application/vnd.wap.hashed-certifiate", "1.4"));
    EXPECT_EQ(hex(text0("application/vnd.wap.hashed-certificate")),
              encoded_ct_hex("application/vnd.wap.hashed-certificate", "1.4"));
    // Row 0x38 lies past the 55 rows of 1.3.
    EXPECT_EQ(hex(text0("application/vnd.wap.hashed-certifiate")),
              encoded_ct_hex("application/vnd.wap.hashed-certifiate", "1.3"));
}

TEST(ConfTables, ContentTypeRowsAdmittedPerVersion) {
    EXPECT_EQ(hex(text0("application/vnd.wap.sia")), encoded_ct_hex("application/vnd.wap.sia", "1.1"));
    EXPECT_EQ("B4", encoded_ct_hex("application/vnd.wap.sia", "1.2"));
    EXPECT_EQ(hex(text0("application/vnd.wap.sic")), encoded_ct_hex("application/vnd.wap.sic", "1.1"));
    EXPECT_EQ("AE", encoded_ct_hex("application/vnd.wap.sic", "1.2"));
    EXPECT_EQ("AD", encoded_ct_hex("text/vnd.wap.si", "1.1"));
    EXPECT_EQ(hex(text0("text/vnd.wap.connectivity-xml")), encoded_ct_hex("text/vnd.wap.connectivity-xml", "1.2"));
    EXPECT_EQ("B5", encoded_ct_hex("text/vnd.wap.connectivity-xml", "1.3"));
    EXPECT_EQ(hex(text0("application/vnd.wap.mms-message")), encoded_ct_hex("application/vnd.wap.mms-message", "1.3"));
    EXPECT_EQ("BE", encoded_ct_hex("application/vnd.wap.mms-message", "1.4"));
    EXPECT_EQ("80", encoded_ct_hex("*/*", "1.1"));
    EXPECT_EQ("82", encoded_ct_hex("TEXT/HTML", "1.1"));
    EXPECT_EQ("C4", encoded_ct_hex("application/vnd.syncml.notification", "1.4"));
    EXPECT_EQ(hex(text0("application/vnd.syncml.notification")),
              encoded_ct_hex("application/vnd.syncml.notification", "1.3"));
}

TEST(ConfTables, UnknownVersionIsRefusedByTheContentTypeEncoder) {
    OutBuffer out(8);
    EXPECT_EQ(WSP_ERR_VERSION, low16(wsp_encode_content("text/plain", out.get(), "1.5")));
    EXPECT_EQ(0, out->length);
    EXPECT_EQ("00", encoded_ct_hex(nullptr, "1.1"));
}

TEST(ConfTables, ConstrainedCodesAbove63AreFoundByCode) {
    EXPECT_EQ("application/vnd.syncml.dm+wbxml", decode_ct(bytes({0xC2})).text);
    EXPECT_EQ("application/vnd.syncml.dm+xml", decode_ct(bytes({0xC3})).text);
    EXPECT_EQ("application/vnd.syncml.notification", decode_ct(bytes({0xC4})).text);
    EXPECT_EQ("application/vnd.oma.drm.rights+xml", decode_ct(bytes({0xCA})).text);
    EXPECT_EQ("application/vnd.oma.drm.rights+wbxml", decode_ct(bytes({0xCB})).text);
    EXPECT_EQ("application/vnd.wap.rollover-certificate", decode_ct(bytes({0xBF})).text);
}

TEST(ConfTables, ConstrainedCodesWithoutRowLeaveTheOutputUntouched) {
    const int codes[] = {0xC0, 0xC1, 0xC5, 0xC9, 0xCC, 0xD1};
    for (int code : codes) {
        Content c = decode_ct(bytes({code}), 1, "untouched");
        EXPECT_EQ(WSP_OK, c.status) << code;
        EXPECT_EQ("untouched", c.text) << code;
        EXPECT_EQ(1, c.consumed) << code;
    }
}

TEST(ConfTables, ConstrainedCodesAbove81AreRefused) {
    Content agps = decode_ct(bytes({0xFF}));
    EXPECT_EQ(WSP_ERR_FAIL, agps.status);
    EXPECT_EQ(0, agps.consumed);
    EXPECT_EQ(WSP_ERR_FAIL, decode_ct(bytes({0xD2})).status);
    // The encoder still sends application/x-agps as its code 0x7F.
    EXPECT_EQ("FF", encoded_ct_hex("application/x-agps", "1.4"));
}

TEST(ConfTables, GeneralFormShortCodeIsARowIndex) {
    EXPECT_EQ("application/vnd.syncml.notification", decode_ct(bytes({0x01, 0xC2})).text);
    EXPECT_EQ("application/x-agps", decode_ct(bytes({0x01, 0xC5})).text);
    EXPECT_EQ("application/vnd.omaloc-supl-init", decode_ct(bytes({0x01, 0xD1})).text);
    EXPECT_EQ(WSP_ERR_FAIL, decode_ct(bytes({0x01, 0xD2})).status);
}

TEST(ConfTables, GeneralFormLongCodeIsSearchedByCode) {
    Content supl = decode_ct(bytes({0x03, 0x02, 0x03, 0x12}));
    EXPECT_EQ(WSP_OK, supl.status);
    EXPECT_EQ("application/vnd.omaloc-supl-init", supl.text);
    EXPECT_EQ(4, supl.consumed);
    EXPECT_EQ("application/vnd.uplanet.cacheop-wbxml", decode_ct(bytes({0x03, 0x02, 0x02, 0x01})).text);
    EXPECT_EQ("application/vnd.nokia.syncset+wbxml", decode_ct(bytes({0x03, 0x02, 0x02, 0x0B})).text);
    EXPECT_EQ("application/x-agps", decode_ct(bytes({0x02, 0x01, 0x7F})).text);
    EXPECT_EQ("text/plain", decode_ct(bytes({0x02, 0x01, 0x03})).text);
    EXPECT_EQ(WSP_ERR_FAIL, decode_ct(bytes({0x03, 0x02, 0x02, 0x0C})).status);
    EXPECT_EQ(WSP_ERR_FAIL, decode_ct(bytes({0x02, 0x01, 0x40})).status);
}

TEST(ConfTables, LongMediaCodesFromTheContentTypeEncoder) {
    // Without parameters the octet after the length is not the code: the
    // copy starts past the Long-integer, deliberately.
    ContentOut plain = encode_ct("application/vnd.uplanet.signal", "1.4");
    EXPECT_EQ(WSP_OK, low16(plain.status));
    ASSERT_EQ(4u, plain.bytes.size());
    EXPECT_EQ("03 00 00", hex(plain.bytes.data(), 3));
    ContentOut supl = encode_ct("application/vnd.omaloc-supl-init", "1.4");
    ASSERT_EQ(4u, supl.bytes.size());
    EXPECT_EQ("03 00 00", hex(supl.bytes.data(), 3));
    // With parameters the Long-integer is in place.
    EXPECT_EQ("05 02 02 02 81 EA", encoded_ct_hex("application/vnd.uplanet.signal; charset=utf-8", "1.4"));
    EXPECT_EQ("application/vnd.uplanet.signal;charset=utf-8",
              decode_ct(bytes({0x05, 0x02, 0x02, 0x02, 0x81, 0xEA})).text);
}

TEST(ConfTables, CharsetNamesAndMibEnums) {
    EXPECT_EQ("03 83 81 84", encoded_ct_hex("text/plain; charset=ISO-8859-1", "1.1"));
    EXPECT_EQ("03 83 81 84", encoded_ct_hex("text/plain; charset=iso-8859-1", "1.1"));
    EXPECT_EQ("03 83 81 EA", encoded_ct_hex("Text/Plain; charset=UTF-8", "1.3"));
    EXPECT_EQ("05 83 81 02 07 EA", encoded_ct_hex("text/plain; charset=Big5", "1.1"));
    EXPECT_EQ("text/plain;charset=utf-8", decode_ct(bytes({0x03, 0x83, 0x81, 0xEA})).text);
    EXPECT_EQ("text/plain;charset=us-ascii", decode_ct(bytes({0x03, 0x83, 0x81, 0x83})).text);
    EXPECT_EQ("text/plain;charset=iso-8859-1",
              decode_ct(bytes({0x05, 0x83, 0x81, 0x02, 0x03, 0xEC})).text);
    EXPECT_EQ("text/plain;charset=big5", decode_ct(bytes({0x05, 0x83, 0x81, 0x02, 0x07, 0xEA})).text);
    EXPECT_EQ("text/plain;charset=windows-1253", decode_ct(bytes({0x05, 0x83, 0x81, 0x02, 0x08, 0xCD})).text);
}

TEST(ConfTables, CharsetsWithoutRow) {
    EXPECT_EQ("text/plain;charset=unknown-charset",
              decode_ct(bytes({0x05, 0x83, 0x81, 0x02, 0x08, 0xCC})).text);
    EXPECT_EQ("text/plain;charset=unknown-charset", decode_ct(bytes({0x03, 0x83, 0x81, 0x80})).text);
    // An unknown charset name goes out as an untyped parameter.
    EXPECT_EQ(hex(cat({bytes({0x16, 0x83}), text0("charset"), text0("windows-1252")})),
              encoded_ct_hex("text/plain; charset=windows-1252", "1.1"));
}

TEST(ConfTables, LanguageCodesAndNames) {
    EXPECT_EQ("83 99", encoded_hex("accept-language: en", "1.1"));
    EXPECT_EQ("83 99", encoded_hex("accept-language: english", "1.1"));
    EXPECT_EQ("83 A2", encoded_hex("accept-language: fr", "1.2"));
    EXPECT_EQ("83 A1", encoded_hex("accept-language: ur", "1.2"));
    EXPECT_EQ("83 D8", encoded_hex("accept-language: po", "1.1"));
    EXPECT_EQ("83 D8", encoded_hex("accept-language: polish", "1.1"));
    EXPECT_EQ(hex(cat({bytes({0x83}), text0("pl")})), encoded_hex("accept-language: pl", "1.1"));
    EXPECT_EQ("83 02 01 8C", encoded_hex("accept-language: rm", "1.4"));
    EXPECT_EQ("8C D8", encoded_hex("content-language: po", "1.1"));
    EXPECT_EQ("8C D8", encoded_hex("content-language: polish", "1.1"));
    EXPECT_EQ("8C 01 8C", encoded_hex("content-language: rhaeto-romance", "1.1"));
}

TEST(ConfTables, LanguageNamesKeepTheTablesSpellings) {
    EXPECT_EQ("83 F0", encoded_hex("accept-language: sewdish", "1.1"));
    EXPECT_EQ(hex(cat({bytes({0x83}), text0("swedish")})), encoded_hex("accept-language: swedish", "1.1"));
    EXPECT_EQ("83 DA", encoded_hex("accept-language: portugese", "1.1"));
    EXPECT_EQ("accept-language:sewdish\n", decoded_text(bytes({0x83, 0xF0})));
    EXPECT_EQ("accept-language:portugese\n", decoded_text(bytes({0x83, 0xDA})));
    EXPECT_EQ("accept-language:scots gealic\n", decoded_text(bytes({0x83, 0xA5})));
}

TEST(ConfTables, AcceptLanguageShowsNamesContentLanguageShowsCodes) {
    EXPECT_EQ("accept-language:english\n", decoded_text(bytes({0x83, 0x99})));
    EXPECT_EQ("accept-language:polish\n", decoded_text(bytes({0x83, 0xD8})));
    EXPECT_EQ("accept-language:bengali\n", decoded_text(bytes({0x83, 0x8E})));
    EXPECT_EQ("accept-language:afan\n", decoded_text(bytes({0x83, 0xD5})));
    EXPECT_EQ("accept-language:uighur\n", decoded_text(bytes({0x83, 0xFF})));
    EXPECT_EQ("accept-language:unknown-language\n", decoded_text(bytes({0x83, 0x80})));
    EXPECT_EQ("content-language:po\n", decoded_text(bytes({0x8C, 0xD8})));
    EXPECT_EQ("content-language:en\n", decoded_text(bytes({0x8C, 0x99})));
}

TEST(ConfTables, LanguageCode0x80HasNoRow) {
    // Content-Language as a Long-integer: 0x80 has no row, 0x81 is "na".
    // A long application header behind it keeps the remaining count above
    // the code.
    std::string filler(130, 'z');
    Bytes tail = cat({text0("x"), text0(filler.c_str())});
    EXPECT_EQ("content-language:unknown-language\nx:" + filler + "\n",
              decoded_text(cat({bytes({0x8C, 0x01, 0x80}), tail})));
    EXPECT_EQ("content-language:na\nx:" + filler + "\n", decoded_text(cat({bytes({0x8C, 0x01, 0x81}), tail})));
}

TEST(ConfTables, HeaderNamesOfTextHeaders) {
    const int codes[] = {0x8A, 0x8E, 0x93, 0x95, 0x96, 0x9C, 0xA4, 0xA6, 0xA9, 0xB0, 0xB1};
    const char *names[] = {"content-base", "content-location", "etag",    "from",
                           "host",         "location",         "referer", "server",
                           "user-agent",   "x-wap-content-uri", "x-wap-initiator-uri"};
    Bytes block;
    std::string expect;
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i) {
        block = cat({block, bytes({codes[i]}), text0("v")});
        expect += std::string(names[i]) + ":v\n";
    }
    EXPECT_EQ(expect, decoded_text(block, 4));
    // The same names find their codes when encoding.
    std::string lines;
    Bytes encoded;
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i) {
        lines += std::string(names[i]) + ": v\n";
        encoded = cat({encoded, bytes({codes[i]}), text0("v")});
    }
    EXPECT_EQ(hex(encoded), encoded_hex(lines, "1.4"));
}

TEST(ConfTables, DuplicatedHeaderNamesTakeTheHighestCodeTheVersionAdmits) {
    EXPECT_EQ("C7 80", encoded_hex("cache-control: no-cache", "1.4"));
    EXPECT_EQ("BD 80", encoded_hex("cache-control: no-cache", "1.3"));
    EXPECT_EQ("88 80", encoded_hex("cache-control: no-cache", "1.2"));
    EXPECT_EQ("88 80", encoded_hex("Cache-Control: no-cache", "1.1"));
    EXPECT_EQ("81 EA", encoded_hex("accept-charset: utf-8", "1.2"));
    EXPECT_EQ("BB EA", encoded_hex("accept-charset: utf-8", "1.3"));
    EXPECT_EQ("BB EA", encoded_hex("ACCEPT-CHARSET: utf-8", "1.4"));
    EXPECT_EQ("AE 01 81", encoded_hex("content-disposition: attachment", "1.3"));
    EXPECT_EQ("C5 01 81", encoded_hex("content-disposition: attachment", "1.4"));
    EXPECT_EQ("90 03 00 87 68", encoded_hex("content-range: bytes 0-99/1000", "1.2"));
    EXPECT_EQ("BE 03 00 87 68", encoded_hex("content-range: bytes 0-99/1000", "1.3"));
}

TEST(ConfTables, NamesAboveTheVersionLimitAreApplicationHeaders) {
    EXPECT_EQ(hex(cat({text0("x-wap-application-id"), text0(" x-wap-application:mms.ua")})),
              encoded_hex("x-wap-application-id: x-wap-application:mms.ua", "1.1"));
    EXPECT_EQ("AF 84", encoded_hex("x-wap-application-id: x-wap-application:mms.ua", "1.2"));
    EXPECT_EQ(hex(cat({text0("encoding-version"), text0(" 1.0")})), encoded_hex("encoding-version: 1.0", "1.2"));
    EXPECT_EQ(hex(cat({text0("age"), text0(" 5")})), encoded_hex("age: 5", "2.0"));
}

TEST(ConfTables, HeaderCodesAboveTheDecodersVersionAreSkipped) {
    Bytes block = cat({bytes({0xB0}), text0("http://a/"), bytes({0xAF, 0x84})});
    EXPECT_EQ("", decoded_text(block, 1));
    EXPECT_EQ("x-wap-content-uri:http://a/\nx-wap-application-id:x-wap-application:mms.ua\n",
              decoded_text(block, 2));
    // Codes past the table and the content type are never written.
    EXPECT_EQ("age:5\n", decoded_text(bytes({0xC8, 0x85, 0x91, 0x83, 0x85, 0x85}), 4));
}

TEST(ConfTables, PushApplicationIds) {
    EXPECT_EQ("x-wap-application-id:x-wap-application:*\n", decoded_text(bytes({0xAF, 0x80})));
    EXPECT_EQ("x-wap-application-id:x-wap-application:push.sia\n", decoded_text(bytes({0xAF, 0x81})));
    EXPECT_EQ("x-wap-application-id:x-wap-application:syncml.dm\n", decoded_text(bytes({0xAF, 0x87})));
    EXPECT_EQ("x-wap-application-id:x-wap-application:emn.ua\n", decoded_text(bytes({0xAF, 0x89})));
    EXPECT_EQ("x-wap-application-id:x-oma-application:ulp.ua\n", decoded_text(bytes({0xAF, 0x90})));
    EXPECT_EQ("x-wap-application-id:x-vantrell:location.ua\n", decoded_text(bytes({0xAF, 0x02, 0x80, 0x05})));
    EXPECT_EQ("x-wap-application-id:x-oma-vantrell:screen3.ua\n", decoded_text(bytes({0xAF, 0x02, 0x90, 0x1E})));
    EXPECT_EQ("x-wap-application-id:x-microsoft:drm.license\n", decoded_text(bytes({0xAF, 0x02, 0x90, 0x35})));
    // Code 6 has no row: the header is dropped.
    EXPECT_EQ("", decoded_text(bytes({0xAF, 0x86})));
    EXPECT_EQ("AF 81", encoded_hex("x-wap-application-id: x-wap-application:push.sia", "1.2"));
    EXPECT_EQ("AF 02 90 34", encoded_hex("x-wap-application-id: x-microsoft:drm.meter", "1.4"));
}

TEST(ConfTables, Methods) {
    EXPECT_EQ("allow:GET\n", decoded_text(bytes({0x86, 0xC0})));
    EXPECT_EQ("allow:POST\n", decoded_text(bytes({0x86, 0xE0})));
    EXPECT_EQ("allow:69\n", decoded_text(bytes({0x86, 0xC5})));
    EXPECT_EQ("public:TRACE\n", decoded_text(bytes({0xA2, 0xC4})));
    EXPECT_EQ("86 C0 86 C1", encoded_hex("allow: GET, 0x41", "1.1"));
    EXPECT_EQ("86 E1", encoded_hex("allow: PUT", "1.1"));
    EXPECT_EQ("A2 C0 A2 E0", encoded_hex("public: GET, POST", "1.1"));
}

TEST(ConfTables, CodingsAndRangeUnits) {
    EXPECT_EQ("82 80", encoded_hex("accept-encoding: gzip", "1.1"));
    EXPECT_EQ("8B 82", encoded_hex("content-encoding: deflate", "1.1"));
    EXPECT_EQ("content-encoding:compress\n", decoded_text(bytes({0x8B, 0x81})));
    EXPECT_EQ("accept-ranges:none\n", decoded_text(bytes({0x84, 0x80})));
    EXPECT_EQ("accept-ranges:bytes\n", decoded_text(bytes({0x84, 0x81})));
    EXPECT_EQ("B9 01 82", encoded_hex("te: chunked", "1.3"));
    EXPECT_EQ("B9 01 84", encoded_hex("te: gzip", "1.3"));
    EXPECT_EQ("A7 80", encoded_hex("transfer-encoding: chunked", "1.1"));
    EXPECT_EQ("transfer-encoding:chunked\n", decoded_text(bytes({0xA7, 0x80})));
}

TEST(ConfTables, ParameterNamesKeepTheirSpellings) {
    EXPECT_EQ("application/vnd.wap.multipart.related;start_info=abc",
              decode_ct(cat({bytes({0x06, 0xB3, 0x8B}), text0("abc")})).text);
    EXPECT_EQ("application/vnd.wap.multipart.related;start-info=abc",
              decode_ct(cat({bytes({0x06, 0xB3, 0x9A}), text0("abc")})).text);
    EXPECT_EQ("text/plain;max_age=5", decode_ct(bytes({0x03, 0x83, 0x8E, 0x85})).text);
    EXPECT_EQ("text/plain;differences=user-agent", decode_ct(bytes({0x03, 0x83, 0x87, 0xA9})).text);
}

TEST(ConfTables, ParameterCodesWithoutNameEmptyTheContentType) {
    Content c4 = decode_ct(bytes({0x03, 0x83, 0x84, 0x80}));
    EXPECT_EQ(WSP_OK, c4.status);
    EXPECT_EQ("", c4.text);
    EXPECT_EQ(4, c4.consumed);
    Content c1e = decode_ct(bytes({0x03, 0x83, 0x9E, 0x80}));
    EXPECT_EQ(WSP_OK, c1e.status);
    EXPECT_EQ("", c1e.text);
    EXPECT_EQ(4, c1e.consumed);
}

// ===========================================================================
// Dates

TEST(ConfDates, DateValueToText) {
    EXPECT_EQ("date:Sun, 06 Nov 1994 08:49:37 GMT\n", decoded_text(bytes({0x92, 0x04, 0x2E, 0xBC, 0x98, 0xA1})));
    EXPECT_EQ("date:Sat, 01 Jan 2000 00:00:00 GMT\n", decoded_text(bytes({0x92, 0x04, 0x38, 0x6D, 0x43, 0x80})));
    EXPECT_EQ("date:Tue, 19 Jan 2038 03:14:07 GMT\n", decoded_text(bytes({0x92, 0x04, 0x7F, 0xFF, 0xFF, 0xFF})));
    EXPECT_EQ("date:Thu, 15 Mar 2012 10:30:00 GMT\n", decoded_text(bytes({0x92, 0x04, 0x4F, 0x61, 0xC4, 0xA8})));
}

TEST(ConfDates, ZeroAndShortLongIntegers) {
    EXPECT_EQ("date:Thu, 01 Jan 1970 00:00:00 GMT\n", decoded_text(bytes({0x92, 0x00})));
    EXPECT_EQ("date:Thu, 01 Jan 1970 00:00:00 GMT\n", decoded_text(bytes({0x92, 0x01, 0x00})));
    EXPECT_EQ("date:Thu, 01 Jan 1970 00:01:00 GMT\n", decoded_text(bytes({0x92, 0x01, 0x3C})));
}

TEST(ConfDates, EveryDateHeader) {
    const Bytes v = bytes({0x04, 0x2E, 0xBC, 0x98, 0xA1});
    const std::string t = ":Sun, 06 Nov 1994 08:49:37 GMT\n";
    EXPECT_EQ("expires" + t, decoded_text(cat({bytes({0x94}), v})));
    EXPECT_EQ("if-modified-since" + t, decoded_text(cat({bytes({0x97}), v})));
    EXPECT_EQ("if-unmodified-since" + t, decoded_text(cat({bytes({0x9B}), v})));
    EXPECT_EQ("last-modified" + t, decoded_text(cat({bytes({0x9D}), v})));
    EXPECT_EQ("if-range" + t, decoded_text(cat({bytes({0x9A}), v})));
    EXPECT_EQ("x-wap-tod" + t, decoded_text(cat({bytes({0xBF}), v}), 3));
    EXPECT_EQ("", decoded_text(cat({bytes({0xBF}), v}), 2));
    EXPECT_EQ("retry-after" + t, decoded_text(cat({bytes({0xA5, 0x06, 0x80}), v})));
}

TEST(ConfDates, ValuesThatAreNotDateValuesAreDropped) {
    EXPECT_EQ("age:1\n", decoded_text(bytes({0x92, 0x85, 0x85, 0x81})));
    EXPECT_EQ("age:1\n", decoded_text(bytes({0x92, 0x05, 0x01, 0x02, 0x03, 0x04, 0x05, 0x85, 0x81})));
}

TEST(ConfDates, Rfc1123FormEncodes) {
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun, 06 Nov 1994 08:49:37 GMT", "1.1"));
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("Date: SUN, 06 NOV 1994 08:49:37 GMT", "1.1"));
    EXPECT_EQ("92 01 00", encoded_hex("date: Thu, 01 Jan 1970 00:00:00 GMT", "1.1"));
    EXPECT_EQ("94 04 38 6D 43 80", encoded_hex("expires: Sat, 01 Jan 2000 00:00:00 GMT", "1.1"));
    EXPECT_EQ("9D 04 38 6D 43 80", encoded_hex("last-modified: Sat, 01 Jan 2000 00:00:00 GMT", "1.1"));
    EXPECT_EQ("97 04 38 6D 43 80", encoded_hex("if-modified-since: Sat, 01 Jan 2000 00:00:00 GMT", "1.1"));
    EXPECT_EQ("9B 04 38 6D 43 80", encoded_hex("if-unmodified-since: Sat, 01 Jan 2000 00:00:00 GMT", "1.1"));
    EXPECT_EQ("BF 04 38 6D 43 80", encoded_hex("x-wap-tod: Sat, 01 Jan 2000 00:00:00 GMT", "1.3"));
}

TEST(ConfDates, Rfc1123WithoutGmtIsAccepted) {
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun, 06 Nov 1994 08:49:37", "1.1"));
}

TEST(ConfDates, Rfc1123MissingSecondsAreZero) {
    EXPECT_EQ("92 04 2E BC 98 7C", encoded_hex("date: Sun, 06 Nov 1994 08:49 GMT", "1.1"));
}

TEST(ConfDates, WeekdayNameDoesNotChangeTheValue) {
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Wed, 06 Nov 1994 08:49:37 GMT", "1.1"));
}

TEST(ConfDates, Rfc1123YearRange) {
    EXPECT_EQ(WSP_OK, low16(encode_lines("date: Tue, 31 Dec 2069 23:59:59 GMT", "1.1").status));
    Encoded late = encode_lines("date: Sun, 06 Nov 2070 08:49:37 GMT", "1.1");
    EXPECT_EQ(WSP_ERR_FAIL, low16(late.status));
    EXPECT_TRUE(late.data_released);
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Wed, 31 Dec 1969 23:59:59 GMT", "1.1").status));
}

TEST(ConfDates, Rfc1123ExtraOrWrongWordsAreRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT now", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 UTC", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Foo 1994 08:49:37 GMT", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Fun, 06 Nov 1994 08:49:37 GMT", "1.1").status));
}

TEST(ConfDates, FourTimePartsAreRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37:00 GMT", "1.1").status));
}

TEST(ConfDates, FullDayNameWithoutCommaIsRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sunday 06 Nov 1994 08:49:37 GMT", "1.1").status));
}

TEST(ConfDates, Rfc850Form) {
    // A four-digit year is taken as written; a two-digit one is accepted too
    // and is not widened.
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sunday, 06-Nov-1994 08:49:37 GMT", "1.1"));
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sunday, 06-Nov-1994 08:49:37", "1.1"));
    Encoded two = encode_lines("date: Sunday, 06-Nov-94 08:49:37 GMT", "1.1");
    EXPECT_EQ(WSP_OK, low16(two.status));
    ASSERT_GE(two.bytes.size(), 3u);
    EXPECT_EQ(0x92, two.bytes[0]);
    EXPECT_LE(two.bytes[1], 4);
    EXPECT_EQ(two.bytes.size(), 2u + two.bytes[1]);
    EXPECT_NE("92 04 2E BC 98 A1", hex(two.bytes));
}

TEST(ConfDates, Rfc850ExtraPartsAreRefused) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sunday, 06-Nov-1994-x 08:49:37 GMT", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sunday, 06-Nov-1994 08:49:37 GMT x", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sunday, 06-Nox-1994 08:49:37 GMT", "1.1").status));
}

TEST(ConfDates, AsctimeForm) {
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun Nov  6 08:49:37 1994", "1.1"));
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun Nov 06 08:49:37 1994", "1.1"));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun Nov 6 08:49:37 1994 GMT", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun Nov 6 08:49:37 2070", "1.1").status));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun Nox 6 08:49:37 1994", "1.1").status));
}

TEST(ConfDates, DateRoundTrip) {
    Encoded e = encode_lines("date: Thu, 15 Mar 2012 10:30:00 GMT", "1.4");
    ASSERT_EQ(WSP_OK, low16(e.status));
    EXPECT_EQ("92 04 4F 61 C4 A8", hex(e.bytes));
    EXPECT_EQ("date:Thu, 15 Mar 2012 10:30:00 GMT\n", decoded_text(e.bytes));
}

TEST(ConfDates, IfRangeDateOrLowerCasedText) {
    EXPECT_EQ("9A 04 2E BC 98 A1", encoded_hex("if-range:Sun, 06 Nov 1994 08:49:37 GMT", "1.1"));
    EXPECT_EQ("9A 22 78 79 7A 22 00", encoded_hex("if-range: \"XYZ\"", "1.1"));
    EXPECT_EQ(hex(cat({bytes({0x9A}), text0("\"sunny\"")})), encoded_hex("if-range:\"Sunny\"", "1.1"));
    // The first three characters decide: a leading blank is not a day name.
    EXPECT_EQ(hex(cat({bytes({0x9A}), text0("sun, 06 nov 1994 08:49:37 gmt")})),
              encoded_hex("if-range: Sun, 06 Nov 1994 08:49:37 GMT", "1.1"));
}

TEST(ConfDates, DateCodeOctetMayNotFillTheBlock) {
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT", "1.1", 1).status));
    Encoded exact = encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT", "1.1", 6);
    EXPECT_EQ(WSP_OK, low16(exact.status));
    EXPECT_EQ("92 04 2E BC 98 A1", hex(exact.bytes));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT", "1.1", 5).status));
}

// ===========================================================================
// Push PDU decoding: prefix and placement

TEST(ConfPush, HeadersLenZeroFreesAnOwnPdu) {
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

TEST(ConfPush, HeadersLenZeroKeepsAnExternalPdu) {
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

TEST(ConfPush, HeadersLenBeyondThePduFails) {
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

TEST(ConfPush, UnreadableHeadersLenFails) {
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

TEST(ConfPush, EveryTruncationOfAPdu) {
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

TEST(ConfPush, OwnPduWithoutDataIsThePduRepointedAtTheHeaders) {
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

TEST(ConfPush, ExternalPduWithoutDataCopiesTheHeadersIntoTheSpare) {
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

TEST(ConfPush, ContentTypeFillingHeadersLenWithoutData) {
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

TEST(ConfPush, OwnPduWithDataHoldsHeadersAndBodyInOneRun) {
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

TEST(ConfPush, ExternalPduWithDataCopiesHeadersAndBodyIntoTheSpare) {
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

TEST(ConfPush, ContentTypeFillingHeadersLenWithData) {
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

TEST(ConfPush, ContentTypeLongerThanHeadersLenWithDataFails) {
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

TEST(ConfPush, ContentTypeStatusIsPassedOnWithoutData) {
    PushPdu pdu(cat({bytes({0x06, 0x82, 0x00}), overlong_parameter_content_type()}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    EXPECT_EQ(WSP_ERR_TRUNCATED, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(pdu.original, pdu.buf.data);
    EXPECT_EQ(0, pdu.buf.offset);

    PushPdu bad(bytes({0x06, 0x01, 0xFF}));
    EXPECT_EQ(WSP_ERR_FAIL, wsp_push_decoding(&bad.buf, &res, &none));
}

TEST(ConfPush, ContentTypeFailureWithDataIsReportedAsFailure) {
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

TEST(ConfPush, WithDataTheContentTypeOctetsAreCountedInEightBits) {
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

TEST(ConfPush, WithoutDataTheContentTypeOctetsAreCountedInFull) {
    PushPdu pdu(cat({bytes({0x06, 0x82, 0x06}), content_type_of_260_octets(), bytes({0xAF, 0x84})}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(263, pdu.buf.offset);
    EXPECT_EQ(2, pdu.buf.length);
    EXPECT_EQ("x-wap-application-id:x-wap-application:mms.ua\n", push_headers_text(res));
}

TEST(ConfPush, TwoOctetHeadersLen) {
    // HeadersLen 128: content type BE, then an application header of 127
    // octets; no data.
    std::string value(124, 'y');
    PushPdu pdu(cat({bytes({0x06, 0x81, 0x00, 0xBE}), text0("x"), text0(value.c_str())}));
    ASSERT_EQ(131, pdu.buf.length);
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_EQ(127, res.headers.length);
    EXPECT_EQ(4, pdu.buf.offset);
    EXPECT_EQ("x:" + value + "\n", push_headers_text(res));
}

TEST(ConfPush, ReleasingBothHoldersOfAnOwnPduFreesItOnce) {
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xBE, 0xAF, 0x84}), kMmsNotification}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    wsp_dealloc_hdrbuf(&res.headers);
    EXPECT_EQ(nullptr, pdu.buf.data);
    wsp_dealloc_bodybuf(&res.body);
    EXPECT_EQ(nullptr, pdu.buf.data);
}

TEST(ConfPush, ExternalPduIsNeverFreedByTheReleases) {
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

TEST(ConfDecodeHdr, CopiesIntoAFreshBlockAndAdvancesTheCursor) {
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

TEST(ConfDecodeHentity, OwnPduIsRepointedAndTheCursorKept) {
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

TEST(ConfDecodeHentity, ExternalPduFillsTheBodyHoldersBuffer) {
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

TEST(ConfDecodeHentity, ContentTypeStatusPassesUnchanged) {
    Bytes pdu_bytes = cat({bytes({0x06, 0x82, 0x00}), overlong_parameter_content_type(), bytes({0x01})});
    PushPdu pdu(pdu_bytes);
    wsp_push_result res = dirty_result();
    const uint8_t *cursor = pdu.buf.data + 3;
    EXPECT_EQ(WSP_ERR_TRUNCATED, wsp_decode_hdentity(&cursor, &pdu.buf, &res, &res.body, 256, 257));
    EXPECT_EQ(0, pdu.buf.offset);
    EXPECT_EQ(pdu_bytes.size(), pdu.buf.length);
}

TEST(ConfDecodeHentity, ContentTypeBeyondHeadersLenFails) {
    PushPdu pdu(bytes({0x06, 0x02, 0x61, 0x2F, 0x62, 0x00, 0xFF, 0xFF}));
    wsp_push_result res = dirty_result();
    const uint8_t *cursor = pdu.buf.data + 2;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_decode_hdentity(&cursor, &pdu.buf, &res, &res.body, 2, 6));
    EXPECT_EQ(0, pdu.buf.offset);
    EXPECT_EQ(8, pdu.buf.length);
}

// ===========================================================================
// Push PDUs as handsets receive them

TEST(ConfPushRealistic, MmsNotificationWithTextualContentTypeAndTransactionId) {
    const Bytes ct = text0("application/vnd.wap.mms-message");
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

TEST(ConfPushRealistic, MmsNotificationWithWellKnownContentTypeInAnExternalBuffer) {
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

TEST(ConfPushRealistic, MmsNotificationWithAFullHeaderSet) {
    const Bytes headers =
        cat({bytes({0xAF, 0x84, 0xB1}), text0("http://mmsc.example.net/"),
             bytes({0x92, 0x04, 0x2E, 0xBC, 0x98, 0xA1, 0x8D, static_cast<int>(0x80 | kMmsNotification.size())}),
             bytes({0x93, 0x22}), text0("v1"), bytes({0xB4, 0x81}), text0("X-Mms-Note"), text0("ok")});
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

TEST(ConfPushRealistic, ServiceIndicationWithoutHeaders) {
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

TEST(ConfPushRealistic, ServiceIndicationWithCharsetAndApplicationId) {
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

TEST(ConfPushRealistic, ServiceLoadingInAnExternalBuffer) {
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

TEST(ConfPushRealistic, ProvisioningWithSecurityAndMac) {
    const Bytes ct = cat({bytes({0x1F, 0x2D, 0xB6, 0x91, 0x81, 0x92}), text0(kMac)});
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

TEST(ConfPushRealistic, ProvisioningWithNetworkPinInAnExternalBuffer) {
    const Bytes ct = cat({bytes({0x1F, 0x2D, 0xB6, 0x91, 0x80, 0x92}), text0(kMac)});
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

TEST(ConfPushRealistic, DrmRightsObject) {
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xCB, 0xAF, 0x88}), kRightsBody}), {}, true);
    wsp_push_result res = dirty_result();
    SpareBuffer spare;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &spare.ptr));
    EXPECT_STREQ("application/vnd.oma.drm.rights+wbxml", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ("x-wap-application-id:x-wap-application:drm.ua\n", push_headers_text(res));
    EXPECT_EQ(hex(cat({bytes({0xAF, 0x88}), kRightsBody})), hex(spare.valid()));
}

TEST(ConfPushRealistic, DrmRightsAsTextualXml) {
    const Bytes body = text_bytes("<o-ex:rights/>");
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xCA, 0xAF, 0x88}), body}), bytes({0x44}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("application/vnd.oma.drm.rights+xml", res.body.content_type);
    EXPECT_EQ("x-wap-application-id:x-wap-application:drm.ua\n", push_headers_text(res));
}

TEST(ConfPushRealistic, DeviceManagementNotification) {
    PushPdu pdu(cat({bytes({0x06, 0x03, 0xC4, 0xAF, 0x87}), kDmNotification}), bytes({0x6F}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("application/vnd.syncml.notification", res.body.content_type);
    EXPECT_EQ(2, res.headers.length);
    EXPECT_EQ(1 + 2 + 1, pdu.buf.offset);
    EXPECT_EQ("x-wap-application-id:x-wap-application:syncml.dm\n", push_headers_text(res));
}

TEST(ConfPushRealistic, EmailNotificationWithTextualMediaAndCharset) {
    const Bytes ct = cat({bytes({0x1F, 0x20}), text0("application/vnd.wap.emn+wbxml"), bytes({0x81, 0xEA})});
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

TEST(ConfPushRealistic, TextMediaWithTextualApplicationId) {
    const Bytes ct = text0("text/x-example-list");
    const Bytes headers = cat({bytes({0xAF}), text0("x-oma-application:example.ua")});
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

TEST(ConfPushRealistic, PlainTextWithCharset) {
    const Bytes body = text_bytes("Hello");
    PushPdu pdu(cat({bytes({0x06, 0x04, 0x03, 0x83, 0x81, 0xEA}), body}));
    wsp_push_result res = dirty_result();
    wsp_buffer *none = nullptr;
    ASSERT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &res, &none));
    EXPECT_STREQ("text/plain;charset=utf-8", res.body.content_type);
    EXPECT_EQ(nullptr, res.headers.buffer);
    EXPECT_EQ(hex(body), hex(pdu.valid()));
}

TEST(ConfPushRealistic, LongIntegerContentType) {
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

// ===========================================================================
// Body hand-over

namespace {
// A body buffer of `size` octets holding 0xE0.. in front of `offset` and
// 1, 2, 3 ... from offset on.
wsp_buffer body_buffer(uint16_t size, uint16_t offset, uint16_t length) {
    wsp_buffer b;
    std::memset(&b, 0, sizeof b);
    b.data = static_cast<unsigned char *>(std::calloc(size ? size : 1, 1));
    for (uint16_t i = 0; i < size; ++i)
        b.data[i] = static_cast<unsigned char>(i < offset ? 0xE0 + i : 1 + (i - offset));
    b.size = size;
    b.offset = offset;
    b.length = length;
    return b;
}
} // namespace

TEST(ConfBody, WithoutBodyTheResultIsEmpty) {
    wsp_bodybuf src;
    std::memset(&src, 0, sizeof src);
    std::strcpy(src.content_type, "text/plain");
    src.body = nullptr;
    wsp_body_result out;
    std::memset(&out, 0xCD, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&src, &out));
    EXPECT_STREQ("", out.content_type);
    EXPECT_EQ(nullptr, out.body.data);
    EXPECT_EQ(0, out.body.size);
    EXPECT_EQ(0, out.body.offset);
    EXPECT_EQ(0, out.body.length);
    EXPECT_EQ(0, out.body.flags);
    EXPECT_STREQ("text/plain", src.content_type);
}

TEST(ConfBody, OffsetZeroIsHandedOverUnmoved) {
    wsp_buffer b = body_buffer(6, 0, 6);
    unsigned char *data = b.data;
    wsp_bodybuf src;
    std::memset(&src, 0, sizeof src);
    std::strcpy(src.content_type, "image/png");
    src.body = &b;
    wsp_body_result out;
    std::memset(&out, 0xCD, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&src, &out));
    EXPECT_STREQ("image/png", out.content_type);
    EXPECT_EQ(data, out.body.data);
    EXPECT_EQ(6, out.body.size);
    EXPECT_EQ(6, out.body.length);
    EXPECT_EQ(0, out.body.offset);
    EXPECT_EQ(0, out.body.flags);
    EXPECT_EQ("01 02 03 04 05 06", hex(data, 6));
    EXPECT_EQ(nullptr, src.body);
    // The source buffer record itself is not changed.
    EXPECT_EQ(data, b.data);
    EXPECT_EQ(6, b.length);
    std::free(data);
}

TEST(ConfBody, PartialLastPieceIsFollowedByOffsetZeroOctets) {
    wsp_buffer b = body_buffer(13, 3, 10);
    wsp_bodybuf src;
    std::memset(&src, 0, sizeof src);
    src.body = &b;
    wsp_body_result out;
    std::memset(&out, 0, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&src, &out));
    EXPECT_EQ(b.data, out.body.data);
    EXPECT_EQ(10, out.body.size);
    EXPECT_EQ(10, out.body.length);
    EXPECT_EQ("01 02 03 04 05 06 07 08 09 0A 00 00 00", hex(b.data, 13));
    EXPECT_EQ(3, b.offset);
    EXPECT_EQ(10, b.length);
    std::free(b.data);
}

TEST(ConfBody, ExactMultipleOfTheOffsetLeavesTheStaleOctets) {
    wsp_buffer b = body_buffer(12, 3, 9);
    wsp_bodybuf src;
    std::memset(&src, 0, sizeof src);
    src.body = &b;
    wsp_body_result out;
    std::memset(&out, 0, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&src, &out));
    EXPECT_EQ(9, out.body.length);
    EXPECT_EQ("01 02 03 04 05 06 07 08 09 07 08 09", hex(b.data, 12));
    std::free(b.data);
}

TEST(ConfBody, OffsetLargerThanTheBody) {
    wsp_buffer b = body_buffer(8, 5, 3);
    wsp_bodybuf src;
    std::memset(&src, 0, sizeof src);
    src.body = &b;
    wsp_body_result out;
    std::memset(&out, 0, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&src, &out));
    EXPECT_EQ(3, out.body.length);
    EXPECT_EQ(3, out.body.size);
    EXPECT_EQ("01 02 03 00 00 00 00 00", hex(b.data, 8));
    std::free(b.data);
}

TEST(ConfBody, EmptyBodyBehindAnOffsetIsNotMoved) {
    wsp_buffer b = body_buffer(4, 4, 0);
    wsp_bodybuf src;
    std::memset(&src, 0, sizeof src);
    std::strcpy(src.content_type, "text/plain");
    src.body = &b;
    wsp_body_result out;
    std::memset(&out, 0xCD, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&src, &out));
    EXPECT_STREQ("text/plain", out.content_type);
    EXPECT_EQ(b.data, out.body.data);
    EXPECT_EQ(0, out.body.size);
    EXPECT_EQ(0, out.body.length);
    EXPECT_EQ("E0 E1 E2 E3", hex(b.data, 4));
    EXPECT_EQ(nullptr, src.body);
    std::free(b.data);
}

TEST(ConfBody, ReleasingTheSourceAfterwardsFreesNothing) {
    wsp_buffer b = body_buffer(5, 1, 4);
    wsp_bodybuf src;
    std::memset(&src, 0, sizeof src);
    src.body = &b;
    wsp_body_result out;
    std::memset(&out, 0, sizeof out);
    EXPECT_EQ(WSP_OK, wsp_decode_body(&src, &out));
    wsp_dealloc_bodybuf(&src);
    EXPECT_EQ(out.body.data, b.data);
    EXPECT_EQ("01 02 03 04", hex(out.body.data, 4));
    std::free(out.body.data);
}

// ===========================================================================
// Profile headers

namespace {
struct ProfileBlock {
    wsp_buffer buf;
    wsp_hdrbuf holder;
    unsigned char *original;
    ProfileBlock(const Bytes &existing, uint16_t size) {
        std::memset(&buf, 0, sizeof buf);
        buf.data = static_cast<unsigned char *>(std::calloc(size ? size : 1, 1));
        if (!existing.empty()) std::memcpy(buf.data, existing.data(), existing.size());
        buf.size = size;
        buf.length = static_cast<uint16_t>(existing.size());
        holder.length = buf.length;
        holder.buffer = &buf;
        original = buf.data;
    }
    // A replaced block was freed by the library itself.
    ~ProfileBlock() { std::free(buf.data); }
    ProfileBlock(const ProfileBlock &) = delete;
    ProfileBlock &operator=(const ProfileBlock &) = delete;
    Bytes valid() const { return Bytes(buf.data + buf.offset, buf.data + buf.offset + buf.length); }
};

// Appends the profile text (an exact-size copy, not NUL-terminated).
void append_profile(ProfileBlock &block, const std::string &text) {
    InBytes copy(Bytes(text.begin(), text.end()));
    wsp_uaprof prof;
    std::memset(&prof, 0, sizeof prof);
    prof.text = copy.data();
    prof.length = static_cast<uint16_t>(text.size());
    wsp_uaphdr_encode(&block.holder, &prof);
}

const Bytes kTenOctets = bytes({0x80, 0x80, 0x81, 0xEA, 0x83, 0x99, 0xA9, 0x41, 0x42, 0x00});
} // namespace

TEST(ConfProfile, OneLineIntoRoomyBlock) {
    const std::string line = "http://a.example/u.x";
    ASSERT_EQ(20u, line.size());
    ProfileBlock block(kTenOctets, 100);
    append_profile(block, line);
    EXPECT_EQ(32, block.holder.length);
    EXPECT_EQ(32, block.buf.length);
    EXPECT_EQ(100, block.buf.size);
    EXPECT_EQ(block.original, block.buf.data);
    EXPECT_EQ(hex(cat({kTenOctets, bytes({0xB5}), text0(line.c_str())})), hex(block.valid()));
}

TEST(ConfProfile, HolderLengthBecomesTheBuffersLength) {
    ProfileBlock block(kTenOctets, 100);
    block.holder.length = 0;
    append_profile(block, "abc");
    EXPECT_EQ(15, block.buf.length);
    EXPECT_EQ(15, block.holder.length);
}

TEST(ConfProfile, TwoLinesGiveTwoHeaders) {
    ProfileBlock block({}, 64);
    append_profile(block, "http://a.example/p.xml\nhttp://b.example/d.xml");
    EXPECT_EQ(hex(cat({bytes({0xB5}), text0("http://a.example/p.xml"), bytes({0xB5}),
                       text0("http://b.example/d.xml")})),
              hex(block.valid()));
    EXPECT_EQ(block.buf.length, block.holder.length);
}

TEST(ConfProfile, LinesAreTrimmedAndEmptyLinesSkipped) {
    ProfileBlock block({}, 64);
    append_profile(block, "\n\n  first \n\n\tsecond\t\n\n");
    EXPECT_EQ(hex(cat({bytes({0xB5}), text0("first"), bytes({0xB5}), text0("second")})), hex(block.valid()));
}

TEST(ConfProfile, ALineOfOnlyACarriageReturnIsAnEmptyText) {
    // The split is at line feeds only; a line holding a lone carriage return
    // is not empty, and trimming leaves an empty Text-string.
    ProfileBlock block({}, 64);
    append_profile(block, " a \r\n\r\n  b\t");
    EXPECT_EQ("B5 61 00 B5 00 B5 62 00", hex(block.valid()));
}

TEST(ConfProfile, OnlyLineFeedsAndBlanksAddTheCodeOctetAlone) {
    ProfileBlock block(kTenOctets, 100);
    append_profile(block, "\n \n\t\n");
    EXPECT_EQ(11, block.holder.length);
    EXPECT_EQ(hex(cat({kTenOctets, bytes({0xB5})})), hex(block.valid()));
    ProfileBlock empty(kTenOctets, 100);
    append_profile(empty, "");
    EXPECT_EQ(hex(cat({kTenOctets, bytes({0xB5})})), hex(empty.valid()));
}

TEST(ConfProfile, HighFirstCharacterGetsTheQuoteOctet) {
    ProfileBlock block({}, 16);
    append_profile(block, "\xE9tude");
    EXPECT_EQ("B5 7F E9 74 75 64 65 00", hex(block.valid()));
    EXPECT_EQ(8, block.holder.length);
}

TEST(ConfProfile, DirectAppendFailureRestoresTheLengths) {
    const std::string line = "http://a.example/u.x";
    ProfileBlock block(kTenOctets, 31); // at least L + N, but the line needs 32
    block.holder.length = 7;
    append_profile(block, line);
    EXPECT_EQ(7, block.holder.length);
    EXPECT_EQ(10, block.buf.length);
    EXPECT_EQ(31, block.buf.size);
    EXPECT_EQ(block.original, block.buf.data);
    EXPECT_EQ(hex(kTenOctets), hex(block.valid()));
    // The abandoned code octet was written past the old length.
    EXPECT_EQ(0xB5, block.buf.data[10]);

    ProfileBlock exact(kTenOctets, 32);
    append_profile(exact, line);
    EXPECT_EQ(32, exact.buf.length);
    EXPECT_EQ(32, exact.holder.length);
}

TEST(ConfProfile, CodeOctetMayNotFillTheBlock) {
    ProfileBlock block(bytes({0x80, 0x80, 0x80}), 4);
    append_profile(block, "");
    EXPECT_EQ(3, block.buf.length);
    EXPECT_EQ(3, block.holder.length);
    EXPECT_EQ(4, block.buf.size);
    EXPECT_EQ(0xB5, block.buf.data[3]);

    ProfileBlock room(bytes({0x80, 0x80, 0x80}), 5);
    append_profile(room, "");
    EXPECT_EQ(4, room.buf.length);
    EXPECT_EQ(4, room.holder.length);
}

TEST(ConfProfile, QuoteOctetsAreWrittenBeforeTheRoomTest) {
    ProfileBlock block({}, 4);
    append_profile(block, "\xE9" "abc");
    EXPECT_EQ(0, block.buf.length);
    EXPECT_EQ(0, block.holder.length);
    EXPECT_EQ("B5 7F E9", hex(block.buf.data, 3));
}

TEST(ConfProfile, FallbackBuildsALargerBlockWhenTheTextFits) {
    // L = 4, N = 2, size 5 < 6: the new block has 4 + 2 + 1 octets and the
    // trimmed line needs exactly that.
    ProfileBlock block(bytes({0x80, 0x80}), 5);
    block.buf.reserved = 0xDEADBEEF;
    append_profile(block, "abc\n");
    EXPECT_NE(block.original, block.buf.data);
    EXPECT_EQ(7, block.buf.size);
    EXPECT_EQ(7, block.buf.length);
    EXPECT_EQ(0, block.buf.offset);
    EXPECT_EQ(0, block.buf.flags);
    EXPECT_EQ(0u, block.buf.reserved);
    EXPECT_EQ(7, block.holder.length);
    EXPECT_EQ("80 80 B5 61 62 63 00", hex(block.valid()));
}

TEST(ConfProfile, FallbackFailureLeavesTheBlockAsItWas) {
    ProfileBlock block(bytes({0x80, 0x80}), 5);
    append_profile(block, "abcd");
    EXPECT_EQ(block.original, block.buf.data);
    EXPECT_EQ(5, block.buf.size);
    EXPECT_EQ(2, block.buf.length);
    EXPECT_EQ(2, block.holder.length);
    EXPECT_EQ("80 80", hex(block.valid()));

    // Most texts of several lines do not fit the fallback's sizing.
    ProfileBlock two({}, 4);
    append_profile(two, "ab\ncd");
    EXPECT_EQ(two.original, two.buf.data);
    EXPECT_EQ(4, two.buf.size);
    EXPECT_EQ(0, two.buf.length);
    EXPECT_EQ(0, two.holder.length);
}

TEST(ConfProfile, ExactlyLPlusNTakesTheDirectPath) {
    // Size 4 = L + N: appended in place, which fails for want of the NUL;
    // the fallback is not tried.
    ProfileBlock block({}, 4);
    append_profile(block, "abc\n");
    EXPECT_EQ(block.original, block.buf.data);
    EXPECT_EQ(4, block.buf.size);
    EXPECT_EQ(0, block.buf.length);
    EXPECT_EQ(0, block.holder.length);
    // One octet less: the fallback's block of 5 holds it.
    ProfileBlock smaller({}, 3);
    append_profile(smaller, "abc\n");
    EXPECT_NE(smaller.original, smaller.buf.data);
    EXPECT_EQ(5, smaller.buf.size);
    EXPECT_EQ("B5 61 62 63 00", hex(smaller.valid()));
}

TEST(ConfProfile, FallbackDoesNotFreeAnExternalBlock) {
    unsigned char mine[3] = {0x80, 0x80, 0x00};
    wsp_buffer b;
    std::memset(&b, 0, sizeof b);
    b.data = mine;
    b.size = 3;
    b.length = 2;
    b.flags = WSP_BUFFER_EXTERNAL;
    b.flags_spare = 0x5A;
    wsp_hdrbuf h;
    h.length = 2;
    h.buffer = &b;
    const std::string text = "xyz\n";
    wsp_uaprof prof;
    std::memset(&prof, 0, sizeof prof);
    prof.text = reinterpret_cast<const unsigned char *>(text.data());
    prof.length = static_cast<uint16_t>(text.size());
    wsp_uaphdr_encode(&h, &prof);
    ASSERT_NE(mine, b.data);
    EXPECT_EQ(0, b.flags);
    EXPECT_EQ(0, b.flags_spare);
    EXPECT_EQ(7, b.size);
    EXPECT_EQ(7, b.length);
    EXPECT_EQ(7, h.length);
    EXPECT_EQ("80 80 B5 78 79 7A 00", hex(b.data, 7));
    EXPECT_EQ(0x80, mine[0]);
    std::free(b.data);
}

TEST(ConfProfile, MissingArgumentsChangeNothing) {
    ProfileBlock block(kTenOctets, 100);
    wsp_uaprof prof;
    std::memset(&prof, 0, sizeof prof);
    prof.text = nullptr;
    prof.length = 5;
    wsp_uaphdr_encode(&block.holder, &prof);
    wsp_uaphdr_encode(&block.holder, nullptr);
    const std::string text = "abc";
    prof.text = reinterpret_cast<const unsigned char *>(text.data());
    prof.length = 3;
    wsp_uaphdr_encode(nullptr, &prof);
    wsp_hdrbuf no_buffer;
    no_buffer.length = 9;
    no_buffer.buffer = nullptr;
    wsp_uaphdr_encode(&no_buffer, &prof);
    EXPECT_EQ(9, no_buffer.length);
    EXPECT_EQ(10, block.holder.length);
    EXPECT_EQ(10, block.buf.length);
    EXPECT_EQ(hex(kTenOctets), hex(block.valid()));
}

TEST(ConfProfile, SixteenBitSumsWrap) {
    // L + N = 65540 is 4 in 16 bits, so the text is appended in place; the
    // Text-string's room test (65531 + 11 = 6 in 16 bits) passes as well and
    // the lengths wrap to 6.  Only the octets inside the block are written.
    ProfileBlock block(kTenOctets, 12);
    std::string text(65530, 'p');
    append_profile(block, text);
    EXPECT_EQ(block.original, block.buf.data);
    EXPECT_EQ(12, block.buf.size);
    EXPECT_EQ(6, block.buf.length);
    EXPECT_EQ(6, block.holder.length);
    EXPECT_EQ(hex(cat({kTenOctets, bytes({0xB5, 'p'})})), hex(block.buf.data, 12));
}

TEST(ConfProfile, BrowserRequestHeadersWithProfileUnderEachVersion) {
    const std::string lines =
        "Accept: */*\nAccept: application/vnd.wap.wmlc\nAccept-Charset: utf-8\nAccept-Language: en\n"
        "User-Agent: Handset/1.0\n";
    const Bytes ua = cat({bytes({0xA9}), text0("Handset/1.0")});
    const char *versions[] = {"1.1", "1.2", "1.3", "1.4"};
    for (const char *v : versions) {
        TextCopy text(lines);
        wsp_hdr_page page;
        std::memset(&page, 0, sizeof page);
        page.page = 1;
        page.text.data = reinterpret_cast<unsigned char *>(text.get());
        page.text.size = static_cast<uint16_t>(lines.size() + 1);
        page.text.length = static_cast<uint16_t>(lines.size());
        wsp_hdr_page_list list;
        list.count = 1;
        list.pages = &page;
        ProfileBlock block({}, 256);
        ASSERT_EQ(WSP_OK, low16(wsp_enc_hdr(&list, &block.holder, v))) << v;
        const bool newer_charset = v[2] >= '3';
        Bytes expect = cat({bytes({0x80, 0x80, 0x80, 0x94}), bytes({newer_charset ? 0xBB : 0x81, 0xEA}),
                            bytes({0x83, 0x99}), ua});
        EXPECT_EQ(hex(expect), hex(block.valid())) << v;
        EXPECT_EQ(expect.size(), block.holder.length) << v;

        append_profile(block, "http://example.com/uaprof/handset.xml\n");
        expect = cat({expect, bytes({0xB5}), text0("http://example.com/uaprof/handset.xml")});
        EXPECT_EQ(hex(expect), hex(block.valid())) << v;
        EXPECT_EQ(expect.size(), block.holder.length) << v;

        // Profile headers have no decoder and are passed over; the newer
        // Accept-Charset code has none either.
        OutBuffer out(512);
        ASSERT_EQ(WSP_OK, low16(wsp_dec_hdr(&block.holder, out.get(), nullptr, 4))) << v;
        EXPECT_EQ(std::string("accept:*/*,application/vnd.wap.wmlc\n") +
                      (newer_charset ? "" : "accept-charset:utf-8\n") +
                      "accept-language:english\nuser-agent:Handset/1.0\n",
                  out.text())
            << v;
    }
}

// ===========================================================================
// Further boundaries

TEST(ConfTokenText, SixteenBitRoomTestWraps) {
    // 65535 characters + 0 + 1 is 0 in 16 bits: the room test passes and the
    // length wraps back to where it was.  Only the octets inside the buffer
    // are written.
    std::string text(65535, 'a');
    OutBuffer out(10);
    EXPECT_EQ(WSP_OK, wsp_tokentext_encode_buff(text.c_str(), out.get()));
    EXPECT_EQ(0, out->length);
    EXPECT_EQ(hex(Bytes(10, 'a')), hex(out->data, 10));
}

TEST(ConfTextString, MayFillTheBlockToItsLastByte) {
    Encoded exact = encode_lines("x:ab", "1.1", 5);
    EXPECT_EQ(WSP_OK, low16(exact.status));
    EXPECT_EQ("78 00 61 62 00", hex(exact.bytes));
    Encoded shortb = encode_lines("x:ab", "1.1", 4);
    EXPECT_EQ(WSP_ERR_FAIL, low16(shortb.status));
    EXPECT_TRUE(shortb.data_released);
}

TEST(ConfValueLength, AboveThirtyOctetsUsesTheLengthQuote) {
    const std::string name(40, 'n');
    EXPECT_EQ(hex(cat({bytes({0xAE, 0x1F, 0x2B, 0x81, 0x86}), text0(name.c_str())})),
              encoded_hex("content-disposition: attachment; filename=" + name, "1.1"));
    EXPECT_EQ(hex(cat({bytes({0x1F, 0x2B, 0x83, 0x85}), text0(name.c_str())})),
              encoded_ct_hex(("text/plain; name=" + name).c_str(), "1.1"));
    // Thirty octets still take the short form.
    const std::string n27(27, 'n');
    EXPECT_EQ(hex(cat({bytes({0x1E, 0x83, 0x85}), text0(n27.c_str())})),
              encoded_ct_hex(("text/plain; name=" + n27).c_str(), "1.1"));
    const std::string n28(28, 'n');
    EXPECT_EQ(hex(cat({bytes({0x1F, 0x1F, 0x83, 0x85}), text0(n28.c_str())})),
              encoded_ct_hex(("text/plain; name=" + n28).c_str(), "1.1"));
}

TEST(ConfDates, ThreeOctetDateValue) {
    EXPECT_EQ("date:Thu, 01 Jan 1970 18:12:16 GMT\n", decoded_text(bytes({0x92, 0x03, 0x01, 0x00, 0x00})));
    EXPECT_EQ("92 03 01 00 00", encoded_hex("date: Thu, 01 Jan 1970 18:12:16 GMT", "1.1"));
}

TEST(ConfDates, TrailingBlanks) {
    // One trailing blank ends with the last token; two leave one empty token
    // behind it, which is one token too many.
    EXPECT_EQ("92 04 2E BC 98 A1", encoded_hex("date: Sun, 06 Nov 1994 08:49:37 GMT ", "1.1"));
    EXPECT_EQ(WSP_ERR_FAIL, low16(encode_lines("date: Sun, 06 Nov 1994 08:49:37 GMT  ", "1.1").status));
}
// Rows of the assigned-number tables, as published for clients.
namespace {
struct CodeName {
    uint32_t code;
    const char *name;
};
const CodeName kContentTypes[] = {
    {0x0, "*/*"}, {0x1, "text/*"}, {0x2, "text/html"}, {0x3, "text/plain"}, {0x4, "text/x-hdml"},
    {0x5, "text/x-ttml"}, {0x6, "text/x-vcalendar"}, {0x7, "text/x-vcard"}, {0x8, "text/vnd.wap.wml"},
    {0x9, "text/vnd.wap.wmlscript"}, {0xA, "application/vnd.wap.catc"}, {0xB, "multipart/*"},
    {0xC, "multipart/mixed"}, {0xD, "multipart/form-data"}, {0xE, "multipart/byteranges"},
    {0xF, "multipart/alternative"}, {0x10, "application/*"}, {0x11, "application/java-vm"},
    {0x12, "application/x-www-form-urlencoded"}, {0x13, "application/x-hdmlc"}, {0x14, "application/vnd.wap.wmlc"},
    {0x15, "application/vnd.wap.wmlscriptc"}, {0x16, "application/vnd.wap.wsic"},
    {0x17, "application/vnd.wap.uaprof"}, {0x18, "application/vnd.wap.wtls-ca-certificate"},
    {0x19, "application/vnd.wap.wtls-user-certificate"}, {0x1A, "application/x-x509-ca-cert"},
    {0x1B, "application/x-x509-user-cert"}, {0x1C, "image/*"}, {0x1D, "image/gif"}, {0x1E, "image/jpeg"},
    {0x1F, "image/tiff"}, {0x20, "image/png"}, {0x21, "image/vnd.wap.wbmp"},
    {0x22, "application/vnd.wap.multipart.*"}, {0x23, "application/vnd.wap.multipart.mixed"},
    {0x24, "application/vnd.wap.multipart.form-data"}, {0x25, "application/vnd.wap.multipart.byteranges"},
    {0x26, "application/vnd.wap.multipart.alternative"}, {0x27, "application/xml"}, {0x28, "text/xml"},
    {0x29, "application/vnd.wap.wbxml"}, {0x2A, "application/x-x968-cross-cert"},
    {0x2B, "application/x-x968-ca-cert"}, {0x2C, "application/x-x968-user-cert"}, {0x2D, "text/vnd.wap.si"},
    {0x2E, "application/vnd.wap.sic"}, {0x2F, "text/vnd.wap.sl"}, {0x30, "application/vnd.wap.slc"},
    {0x31, "text/vnd.wap.co"}, {0x32, "application/vnd.wap.coc"}, {0x33, "application/vnd.wap.multipart.related"},
    {0x34, "application/vnd.wap.sia"}, {0x35, "text/vnd.wap.connectivity-xml"},
    {0x36, "application/vnd.wap.connectivity-wbxml"}, {0x37, "application/pkcs7-mime"},
    {0x38, "application/vnd.wap.hashed-certifiate"}, {0x39, "application/vnd.wap.signed-certificate"},
    {0x3A, "application/vnd.wap.cert-response"}, {0x3B, "application/xhtml+xml"}, {0x3C, "application/wml+xml"},
    {0x3D, "text/css"}, {0x3E, "application/vnd.wap.mms-message"},
    {0x3F, "application/vnd.wap.rollover-certificate"}, {0x42, "application/vnd.syncml.dm+wbxml"},
    {0x43, "application/vnd.syncml.dm+xml"}, {0x44, "application/vnd.syncml.notification"},
    {0x4A, "application/vnd.oma.drm.rights+xml"}, {0x4B, "application/vnd.oma.drm.rights+wbxml"},
    {0x7F, "application/x-agps"}, {0x201, "application/vnd.uplanet.cacheop-wbxml"},
    {0x202, "application/vnd.uplanet.signal"}, {0x203, "application/vnd.uplanet.alert-wbxml"},
    {0x204, "application/vnd.uplanet.list-wbxml"}, {0x205, "application/vnd.uplanet.listcmd-wbxml"},
    {0x206, "application/vnd.uplanet.channel-wbxml"}, {0x207, "application/vnd.uplanet.provisioning-status-uri"},
    {0x208, "x-wap.multipart/vnd.uplanet.header-set"}, {0x209, "application/vnd.uplanet.bearer-choice-wbxml"},
    {0x20A, "application/vnd.phonecom.mmc-wbxml"}, {0x20B, "application/vnd.nokia.syncset+wbxml"},
    {0x312, "application/vnd.omaloc-supl-init"},
};
const CodeName kCharsets[] = {
    {0x3, "us-ascii"}, {0x4, "iso-8859-1"}, {0x5, "iso-8859-2"}, {0x6, "iso-8859-3"}, {0x7, "iso-8859-4"},
    {0x8, "iso-8859-5"}, {0x9, "iso-8859-6"}, {0xA, "iso-8859-7"}, {0xB, "iso-8859-8"}, {0xC, "iso-8859-9"},
    {0xD, "iso-8859-10"}, {0xE, "iso_6937-2-add"}, {0xF, "jis_x0201"}, {0x10, "jis_encoding"}, {0x11, "shift_jis"},
    {0x12, "euc-jp"}, {0x13, "extended_unix_code_fixed_width_for_japanese"}, {0x14, "bs_4730"},
    {0x15, "sen_850200_c"}, {0x16, "it"}, {0x17, "es"}, {0x18, "din_66003"}, {0x19, "ns_4551-1"},
    {0x1A, "nf_z_62-010"}, {0x1B, "iso-10646-utf-1"}, {0x1C, "iso_646.basic:1983"}, {0x1D, "invariant"},
    {0x1E, "iso_646.irv:1983"}, {0x1F, "nats-sefi"}, {0x20, "nats-sefi-add"}, {0x21, "nats-dano"},
    {0x22, "nats-dano-add"}, {0x23, "sen_850200_b"}, {0x24, "ks_c_5601-1987"}, {0x25, "iso-2022-kr"},
    {0x26, "euc-kr"}, {0x27, "iso-2022-jp"}, {0x28, "iso-2022-jp-2"}, {0x29, "jis_c6220-1969-jp"},
    {0x2A, "jis_c6220-1969-ro"}, {0x2B, "pt"}, {0x2C, "greek7-old"}, {0x2D, "latin-greek"},
    {0x2E, "nf_z_62-010_(1973)"}, {0x2F, "latin-greek-1"}, {0x30, "iso_5427"}, {0x31, "jis_c6226-1978"},
    {0x32, "bs_viewdata"}, {0x33, "inis"}, {0x34, "inis-8"}, {0x35, "inis-cyrillic"}, {0x36, "iso_5427:1981"},
    {0x37, "iso_5428:1980"}, {0x38, "gb_1988-80"}, {0x39, "gb_2312-80"}, {0x3A, "ns_4551-2"},
    {0x3B, "videotex-suppl"}, {0x3C, "pt2"}, {0x3D, "es2"}, {0x3E, "msz_7795.3"}, {0x3F, "jis_c6226-1983"},
    {0x40, "greek7"}, {0x41, "asmo_449"}, {0x42, "iso-ir-90"}, {0x43, "jis_c6229-1984-a"},
    {0x44, "jis_c6229-1984-b"}, {0x45, "jis_c6229-1984-b-add"}, {0x46, "jis_c6229-1984-hand"},
    {0x47, "jis_c6229-1984-hand-add"}, {0x48, "jis_c6229-1984-kana"}, {0x49, "iso_2033-1983"},
    {0x4A, "ansi_x3.110-1983"}, {0x4B, "t.61-7bit"}, {0x4C, "t.61-8bit"}, {0x4D, "ecma-cyrillic"},
    {0x4E, "csa_z243.4-1985-1"}, {0x4F, "csa_z243.4-1985-2"}, {0x50, "csa_z243.4-1985-gr"}, {0x51, "iso_8859-6-e"},
    {0x52, "iso_8859-6-i"}, {0x53, "t.101-g2"}, {0x54, "iso_8859-8-e"}, {0x55, "iso_8859-8-i"},
    {0x56, "csn_369103"}, {0x57, "jus_i.b1.002"}, {0x58, "iec_p27-1"}, {0x59, "jus_i.b1.003-serb"},
    {0x5A, "jus_i.b1.003-mac"}, {0x5B, "greek-ccitt"}, {0x5C, "nc_nc00-10:81"}, {0x5D, "iso_6937-2-25"},
    {0x5E, "gost_19768-74"}, {0x5F, "iso_8859-supp"}, {0x60, "iso_10367-box"}, {0x61, "latin-lap"},
    {0x62, "jis_x0212-1990"}, {0x63, "ds_2089"}, {0x64, "us-dk"}, {0x65, "dk-us"}, {0x66, "ksc5636"},
    {0x67, "unicode-1-1-utf-7"}, {0x68, "iso-2022-cn"}, {0x69, "iso-2022-cn-ext"}, {0x6A, "utf-8"},
    {0x6D, "iso-8859-13"}, {0x6E, "iso-8859-14"}, {0x6F, "iso-8859-15"}, {0x70, "iso-8859-16"}, {0x71, "gbk"},
    {0x72, "gb18030"}, {0x3E8, "iso-10646-ucs-2"}, {0x3E9, "iso-10646-ucs-4"}, {0x3EA, "iso-10646-ucs-basic"},
    {0x3EB, "iso-10646-unicode-latin1"}, {0x3EC, "iso-8859-1"}, {0x3ED, "iso-unicode-ibm-1261"},
    {0x3EE, "iso-unicode-ibm-1268"}, {0x3EF, "iso-unicode-ibm-1276"}, {0x3F0, "iso-unicode-ibm-1264"},
    {0x3F1, "iso-unicode-ibm-1265"}, {0x3F2, "unicode-1-1"}, {0x3F3, "scsu"}, {0x3F4, "utf-7"}, {0x3F5, "utf-16be"},
    {0x3F6, "utf-16le"}, {0x3F7, "utf-16"}, {0x3F8, "cesu-8"}, {0x3F9, "utf-32"}, {0x3FA, "utf-32be"},
    {0x3FB, "utf-32le"}, {0x3FC, "bocu-1"}, {0x7D0, "iso-8859-1-windows-3.0-latin-1"},
    {0x7D1, "iso-8859-1-windows-3.1-latin-1"}, {0x7D2, "iso-8859-2-windows-latin-2"},
    {0x7D3, "iso-8859-9-windows-latin-5"}, {0x7D4, "hp-roman8"}, {0x7D5, "adobe-standard-encoding"},
    {0x7D6, "ventura-us"}, {0x7D7, "ventura-international"}, {0x7D8, "dec-mcs"}, {0x7D9, "ibm850"},
    {0x7DA, "ibm852"}, {0x7DB, "ibm437"}, {0x7DC, "pc8-danish-norwegian"}, {0x7DD, "ibm862"},
    {0x7DE, "pc8-turkish"}, {0x7DF, "ibm-symbols"}, {0x7E0, "ibm-thai"}, {0x7E1, "hp-legal"}, {0x7E2, "hp-pi-font"},
    {0x7E3, "hp-math8"}, {0x7E4, "adobe-symbol-encoding"}, {0x7E5, "hp-desktop"}, {0x7E6, "ventura-math"},
    {0x7E7, "microsoft-publishing"}, {0x7E8, "windows-31j"}, {0x7E9, "gb2312"}, {0x7EA, "big5"},
    {0x7EB, "macintosh"}, {0x7EC, "ibm037"}, {0x7ED, "ibm038"}, {0x7EE, "ibm273"}, {0x7EF, "ibm274"},
    {0x7F0, "ibm275"}, {0x7F1, "ibm277"}, {0x7F2, "ibm278"}, {0x7F3, "ibm280"}, {0x7F4, "ibm281"},
    {0x7F5, "ibm284"}, {0x7F6, "ibm285"}, {0x7F7, "ibm290"}, {0x7F8, "ibm297"}, {0x7F9, "ibm420"},
    {0x7FA, "ibm423"}, {0x7FB, "ibm424"}, {0x7FC, "ibm500"}, {0x7FD, "ibm851"}, {0x7FE, "ibm855"},
    {0x7FF, "ibm857"}, {0x800, "ibm860"}, {0x801, "ibm861"}, {0x802, "ibm863"}, {0x803, "ibm864"},
    {0x804, "ibm865"}, {0x805, "ibm868"}, {0x806, "ibm869"}, {0x807, "ibm870"}, {0x808, "ibm871"},
    {0x809, "ibm880"}, {0x80A, "ibm891"}, {0x80B, "ibm903"}, {0x80C, "ibm904"}, {0x80D, "ibm905"},
    {0x80E, "ibm918"}, {0x80F, "ibm1026"}, {0x810, "ebcdic-at-de"}, {0x811, "ebcdic-at-de-a"},
    {0x812, "ebcdic-ca-fr"}, {0x813, "ebcdic-dk-no"}, {0x814, "ebcdic-dk-no-a"}, {0x815, "ebcdic-fi-se"},
    {0x816, "ebcdic-fi-se-a"}, {0x817, "ebcdic-fr"}, {0x818, "ebcdic-it"}, {0x819, "ebcdic-pt"},
    {0x81A, "ebcdic-es"}, {0x81B, "ebcdic-es-a"}, {0x81C, "ebcdic-es-s"}, {0x81D, "ebcdic-uk"},
    {0x81E, "ebcdic-us"}, {0x81F, "unknown-8bit"}, {0x820, "mnemonic"}, {0x821, "mnem"}, {0x822, "viscii"},
    {0x823, "viqr"}, {0x824, "koi8-r"}, {0x825, "hz-gb-2312"}, {0x826, "ibm866"}, {0x827, "ibm775"},
    {0x828, "koi8-u"}, {0x829, "ibm00858"}, {0x82A, "ibm00924"}, {0x82B, "ibm01140"}, {0x82C, "ibm01141"},
    {0x82D, "ibm01142"}, {0x82E, "ibm01143"}, {0x82F, "ibm01144"}, {0x830, "ibm01145"}, {0x831, "ibm01146"},
    {0x832, "ibm01147"}, {0x833, "ibm01148"}, {0x834, "ibm01149"}, {0x835, "big5-hkscs"}, {0x836, "ibm1047"},
    {0x837, "ptcp154"}, {0x8CA, "windows-1250"}, {0x8CB, "windows-1251"}, {0x8CD, "windows-1253"},
    {0x8CE, "windows-1254"}, {0x8CF, "windows-1255"}, {0x8D0, "windows-1256"}, {0x8D1, "windows-1257"},
    {0x8D2, "windows-1258"}, {0x8D3, "tis-620"},
};
const CodeName kLanguageCodes[] = {
    {0x1, "aa"}, {0x2, "ab"}, {0x3, "af"}, {0x4, "am"}, {0x5, "ar"}, {0x6, "as"}, {0x7, "ay"}, {0x8, "az"},
    {0x9, "ba"}, {0xA, "be"}, {0xB, "bg"}, {0xC, "bh"}, {0xD, "bi"}, {0xE, "bn"}, {0xF, "bo"}, {0x10, "br"},
    {0x11, "ca"}, {0x12, "co"}, {0x13, "cs"}, {0x14, "cy"}, {0x15, "da"}, {0x16, "de"}, {0x17, "dz"}, {0x18, "el"},
    {0x19, "en"}, {0x1A, "eo"}, {0x1B, "es"}, {0x1C, "et"}, {0x1D, "eu"}, {0x1E, "fa"}, {0x1F, "fi"}, {0x20, "fj"},
    {0x21, "ur"}, {0x22, "fr"}, {0x23, "uz"}, {0x24, "ga"}, {0x25, "gd"}, {0x26, "gl"}, {0x27, "gn"}, {0x28, "gu"},
    {0x29, "ha"}, {0x2A, "he"}, {0x2B, "hi"}, {0x2C, "hr"}, {0x2D, "hu"}, {0x2E, "hy"}, {0x2F, "vi"}, {0x30, "id"},
    {0x31, "wo"}, {0x32, "xh"}, {0x33, "is"}, {0x34, "it"}, {0x35, "yo"}, {0x36, "ja"}, {0x37, "jw"}, {0x38, "ka"},
    {0x39, "kk"}, {0x3A, "za"}, {0x3B, "km"}, {0x3C, "kn"}, {0x3D, "ko"}, {0x3E, "ks"}, {0x3F, "ku"}, {0x40, "ky"},
    {0x41, "zh"}, {0x42, "ln"}, {0x43, "lo"}, {0x44, "lt"}, {0x45, "lv"}, {0x46, "mg"}, {0x47, "mi"}, {0x48, "mk"},
    {0x49, "ml"}, {0x4A, "mn"}, {0x4B, "mo"}, {0x4C, "mr"}, {0x4D, "ms"}, {0x4E, "mt"}, {0x4F, "my"}, {0x50, "uk"},
    {0x51, "ne"}, {0x52, "nl"}, {0x53, "no"}, {0x54, "oc"}, {0x55, "om"}, {0x56, "or"}, {0x57, "pa"}, {0x58, "po"},
    {0x59, "ps"}, {0x5A, "pt"}, {0x5B, "qu"}, {0x5C, "zu"}, {0x5D, "rn"}, {0x5E, "ro"}, {0x5F, "ru"}, {0x60, "rw"},
    {0x61, "sa"}, {0x62, "sd"}, {0x63, "sg"}, {0x64, "sh"}, {0x65, "si"}, {0x66, "sk"}, {0x67, "sl"}, {0x68, "sm"},
    {0x69, "sn"}, {0x6A, "so"}, {0x6B, "sq"}, {0x6C, "sr"}, {0x6D, "ss"}, {0x6E, "st"}, {0x6F, "su"}, {0x70, "sv"},
    {0x71, "sw"}, {0x72, "ta"}, {0x73, "te"}, {0x74, "tg"}, {0x75, "th"}, {0x76, "ti"}, {0x77, "tk"}, {0x78, "tl"},
    {0x79, "tn"}, {0x7A, "to"}, {0x7B, "tr"}, {0x7C, "ts"}, {0x7D, "tt"}, {0x7E, "tw"}, {0x7F, "ug"}, {0x81, "na"},
    {0x82, "fo"}, {0x83, "fy"}, {0x84, "ia"}, {0x85, "vo"}, {0x86, "ie"}, {0x87, "ik"}, {0x88, "yi"}, {0x89, "iu"},
    {0x8A, "kl"}, {0x8B, "la"}, {0x8C, "rm"},
};
const CodeName kLanguageNames[] = {
    {0x1, "afar"}, {0x2, "abkhazian"}, {0x3, "afrikaans"}, {0x4, "amharic"}, {0x5, "arabic"}, {0x6, "assamese"},
    {0x7, "aymara"}, {0x8, "azerbaijani"}, {0x9, "bashkir"}, {0xA, "byelorussian"}, {0xB, "bulgarian"},
    {0xC, "bihari"}, {0xD, "bislama"}, {0xE, "bengali"}, {0xE, "bangla"}, {0xF, "tibetan"}, {0x10, "breton"},
    {0x11, "catalan"}, {0x12, "corsican"}, {0x13, "czech"}, {0x14, "welsh"}, {0x15, "danish"}, {0x16, "german"},
    {0x17, "bhutani"}, {0x18, "greek"}, {0x19, "english"}, {0x1A, "esperanto"}, {0x1B, "spanish"},
    {0x1C, "estonian"}, {0x1D, "basque"}, {0x1E, "persian"}, {0x1F, "finnish"}, {0x20, "fiji"}, {0x21, "urdu"},
    {0x22, "french"}, {0x23, "uzbek"}, {0x24, "irish"}, {0x25, "scots gealic"}, {0x26, "galician"},
    {0x27, "guarani"}, {0x28, "gujarati"}, {0x29, "hausa"}, {0x2A, "hebrew"}, {0x2B, "hindi"}, {0x2C, "croatian"},
    {0x2D, "hungarian"}, {0x2E, "armenian"}, {0x2F, "vietnamese"}, {0x30, "indonesian"}, {0x31, "wolof"},
    {0x32, "xhosa"}, {0x33, "icelandic"}, {0x34, "italian"}, {0x35, "yoruba"}, {0x36, "japanese"},
    {0x37, "javanese"}, {0x38, "georgian"}, {0x39, "kazakh"}, {0x3A, "zhuang"}, {0x3B, "cambodian"},
    {0x3C, "kannada"}, {0x3D, "korean"}, {0x3E, "kashmiri"}, {0x3F, "kurdish"}, {0x40, "kirghiz"},
    {0x41, "chinese"}, {0x42, "lingala"}, {0x43, "laothian"}, {0x44, "lithuanian"}, {0x45, "latvian"},
    {0x45, "lettish"}, {0x46, "malagasy"}, {0x47, "maori"}, {0x48, "macedonian"}, {0x49, "malayalam"},
    {0x4A, "mongolian"}, {0x4B, "moldavian"}, {0x4C, "marathi"}, {0x4D, "malay"}, {0x4E, "maltese"},
    {0x4F, "burmese"}, {0x50, "ukrainian"}, {0x51, "nepali"}, {0x52, "dutch"}, {0x53, "norwegian"},
    {0x54, "occitan"}, {0x55, "afan"}, {0x55, "oromo"}, {0x56, "oriya"}, {0x57, "punjabi"}, {0x58, "polish"},
    {0x59, "pashto"}, {0x59, "pushto"}, {0x5A, "portugese"}, {0x5B, "quechua"}, {0x5C, "zulu"}, {0x5D, "kirundi"},
    {0x5E, "romanian"}, {0x5F, "russian"}, {0x60, "kinyarwanda"}, {0x61, "sanskrit"}, {0x62, "sindhi"},
    {0x63, "sangho"}, {0x64, "serbo-croatian"}, {0x65, "sinhalese"}, {0x66, "slovak"}, {0x67, "slovenian"},
    {0x68, "samoan"}, {0x69, "shona"}, {0x6A, "somali"}, {0x6B, "albanian"}, {0x6C, "serbian"}, {0x6D, "siswati"},
    {0x6E, "sesotho"}, {0x6F, "sundanese"}, {0x70, "sewdish"}, {0x71, "swahili"}, {0x72, "tamil"}, {0x73, "telugu"},
    {0x74, "tajik"}, {0x75, "thai"}, {0x76, "tigrinya"}, {0x77, "turkmen"}, {0x78, "tagalog"}, {0x79, "setswana"},
    {0x7A, "tonga"}, {0x7B, "turkish"}, {0x7C, "tsonga"}, {0x7D, "tatar"}, {0x7E, "twi"}, {0x7F, "uighur"},
    {0x81, "nauru"}, {0x82, "faeroese"}, {0x83, "frisian"}, {0x84, "interlingua"}, {0x85, "volapuk"},
    {0x86, "interlingue"}, {0x87, "inupiak"}, {0x88, "yiddish"}, {0x89, "inuktitu"}, {0x8A, "greenlandic"},
    {0x8B, "latin"}, {0x8C, "rhaeto-romance"},
};
const CodeName kHeaderNames[] = {
    {0x0, "accept"}, {0x1, "accept-charset"}, {0x2, "accept-encoding"}, {0x3, "accept-language"},
    {0x4, "accept-ranges"}, {0x5, "age"}, {0x6, "allow"}, {0x7, "authorization"}, {0x8, "cache-control"},
    {0x9, "connection"}, {0xA, "content-base"}, {0xB, "content-encoding"}, {0xC, "content-language"},
    {0xD, "content-length"}, {0xE, "content-location"}, {0xF, "content-md5"}, {0x10, "content-range"},
    {0x11, "content-type"}, {0x12, "date"}, {0x13, "etag"}, {0x14, "expires"}, {0x15, "from"}, {0x16, "host"},
    {0x17, "if-modified-since"}, {0x18, "if-match"}, {0x19, "if-none-match"}, {0x1A, "if-range"},
    {0x1B, "if-unmodified-since"}, {0x1C, "location"}, {0x1D, "last-modified"}, {0x1E, "max-forwards"},
    {0x1F, "pragma"}, {0x20, "proxy-authenticate"}, {0x21, "proxy-authorization"}, {0x22, "public"},
    {0x23, "range"}, {0x24, "referer"}, {0x25, "retry-after"}, {0x26, "server"}, {0x27, "transfer-encoding"},
    {0x28, "upgrade"}, {0x29, "user-agent"}, {0x2A, "vary"}, {0x2B, "via"}, {0x2C, "warning"},
    {0x2D, "www-authenticate"}, {0x2E, "content-disposition"}, {0x2F, "x-wap-application-id"},
    {0x30, "x-wap-content-uri"}, {0x31, "x-wap-initiator-uri"}, {0x32, "accept-application"},
    {0x33, "bearer-indication"}, {0x34, "push-flag"}, {0x35, "profile"}, {0x36, "profile_diff"},
    {0x37, "profile-warning"}, {0x38, "expect"}, {0x39, "te"}, {0x3A, "trailer"}, {0x3B, "accept-charset"},
    {0x3C, "accept-encoding"}, {0x3D, "cache-control"}, {0x3E, "content-range"}, {0x3F, "x-wap-tod"},
    {0x40, "content-id"}, {0x41, "set-cookie"}, {0x42, "cookie"}, {0x43, "encoding-version"},
    {0x44, "profile-warning"}, {0x45, "content-disposition"}, {0x46, "x-wap-security"}, {0x47, "cache-control"},
};
const CodeName kParamNames[] = {
    {0x0, "q"}, {0x1, "charset"}, {0x2, "level"}, {0x3, "type"}, {0x4, nullptr}, {0x5, "name"}, {0x6, "filename"},
    {0x7, "differences"}, {0x8, "padding"}, {0x9, "type"}, {0xA, "start"}, {0xB, "start_info"}, {0xC, "comment"},
    {0xD, "domain"}, {0xE, "max_age"}, {0xF, "path"}, {0x10, "secure"}, {0x11, "sec"}, {0x12, "mac"},
    {0x13, "creation-date"}, {0x14, "modification-date"}, {0x15, "read-date"}, {0x16, "size"}, {0x17, "name"},
    {0x18, "filename"}, {0x19, "start"}, {0x1A, "start-info"}, {0x1B, "comment"}, {0x1C, "domain"}, {0x1D, "path"},
};
const CodeName kPushAppIds[] = {
    {0x0, "x-wap-application:*"}, {0x1, "x-wap-application:push.sia"}, {0x2, "x-wap-application:wml.ua"},
    {0x3, "x-wap-application:wta.ua"}, {0x4, "x-wap-application:mms.ua"}, {0x5, "x-wap-application:push.syncml"},
    {0x7, "x-wap-application:syncml.dm"}, {0x8, "x-wap-application:drm.ua"}, {0x9, "x-wap-application:emn.ua"},
    {0x10, "x-oma-application:ulp.ua"}, {0x8005, "x-vantrell:location.ua"}, {0x901E, "x-oma-vantrell:screen3.ua"},
    {0x9034, "x-microsoft:drm.meter"}, {0x9035, "x-microsoft:drm.license"},
};
} // namespace

namespace {
Bytes integer_value(uint32_t v) {
    if (v < 128) return bytes({static_cast<int>(0x80 | v)});
    if (v < 0x100) return bytes({0x01, static_cast<int>(v)});
    if (v < 0x10000) return bytes({0x02, static_cast<int>(v >> 8), static_cast<int>(v & 0xFF)});
    return bytes({0x03, static_cast<int>(v >> 16), static_cast<int>((v >> 8) & 0xFF), static_cast<int>(v & 0xFF)});
}
Bytes long_integer(uint32_t v) {
    if (v < 0x100) return bytes({0x01, static_cast<int>(v)});
    return bytes({0x02, static_cast<int>(v >> 8), static_cast<int>(v & 0xFF)});
}
// A general-form value: Value-length (short form) and the octets.
Bytes with_length(const Bytes &inner) { return cat({bytes({static_cast<int>(inner.size())}), inner}); }
} // namespace

TEST(ConfTableRows, EveryContentTypeDecodesByCode) {
    ASSERT_EQ(82u, sizeof kContentTypes / sizeof kContentTypes[0]);
    for (size_t row = 0; row < 82; ++row) {
        const CodeName &r = kContentTypes[row];
        // Long-integer code: searched by code.
        EXPECT_EQ(r.name, decode_ct(with_length(long_integer(r.code))).text) << row;
        // Short-integer in the general form: the row index.
        EXPECT_EQ(r.name, decode_ct(bytes({0x01, static_cast<int>(0x80 | row)})).text) << row;
        // Constrained form: codes 0..63 directly, 64..81 by code.
        if (r.code <= 81) EXPECT_EQ(r.name, decode_ct(bytes({static_cast<int>(0x80 | r.code)})).text) << row;
    }
}

TEST(ConfTableRows, EveryContentTypeEncodesWithinItsVersion) {
    const char *versions[] = {"1.1", "1.2", "1.3", "1.4"};
    const size_t limits[] = {46, 53, 55, 82};
    for (int v = 0; v < 4; ++v) {
        for (size_t row = 0; row < 82; ++row) {
            const CodeName &r = kContentTypes[row];
            std::string got = encoded_ct_hex(r.name, versions[v]);
            if (row >= limits[v])
                EXPECT_EQ(hex(text0(r.name)), got) << versions[v] << " " << r.name;
            else if (r.code < 128)
                EXPECT_EQ(hex(bytes({static_cast<int>(0x80 | r.code)})), got) << versions[v] << " " << r.name;
            else
                EXPECT_EQ("03 00 00", got.substr(0, 8)) << versions[v] << " " << r.name;
        }
    }
}

TEST(ConfTableRows, EveryCharsetDecodesAndEncodes) {
    ASSERT_EQ(244u, sizeof kCharsets / sizeof kCharsets[0]);
    for (size_t row = 0; row < 244; ++row) {
        const CodeName &r = kCharsets[row];
        // Decoding takes the first row carrying the MIBenum.
        const Bytes value = with_length(cat({bytes({0x83, 0x81}), integer_value(r.code)}));
        EXPECT_EQ(std::string("text/plain;charset=") + r.name, decode_ct(value).text) << row;
        // Encoding takes the first row carrying the name.
        size_t first = 0;
        while (std::strcmp(kCharsets[first].name, r.name) != 0) ++first;
        const Bytes expect = with_length(cat({bytes({0x83, 0x81}), integer_value(kCharsets[first].code)}));
        EXPECT_EQ(hex(expect), encoded_ct_hex((std::string("text/plain; charset=") + r.name).c_str(), "1.1"))
            << r.name;
    }
}

TEST(ConfTableRows, EveryLanguageCodeDecodes) {
    ASSERT_EQ(139u, sizeof kLanguageCodes / sizeof kLanguageCodes[0]);
    ASSERT_EQ(143u, sizeof kLanguageNames / sizeof kLanguageNames[0]);
    const std::string filler(150, 'z');
    const Bytes tail = cat({text0("x"), text0(filler.c_str())});
    for (const CodeName &r : kLanguageCodes) {
        const char *name = nullptr;
        for (const CodeName &n : kLanguageNames)
            if (n.code == r.code) {
                name = n.name;
                break;
            }
        ASSERT_NE(nullptr, name) << r.name;
        if (r.code < 128) {
            EXPECT_EQ(std::string("accept-language:") + name + "\n",
                      decoded_text(bytes({0x83, static_cast<int>(0x80 | r.code)})))
                << r.name;
            EXPECT_EQ(std::string("content-language:") + r.name + "\n",
                      decoded_text(bytes({0x8C, static_cast<int>(0x80 | r.code)})))
                << r.name;
        } else {
            EXPECT_EQ(std::string("content-language:") + r.name + "\nx:" + filler + "\n",
                      decoded_text(cat({bytes({0x8C, 0x01, static_cast<int>(r.code)}), tail})))
                << r.name;
        }
    }
}

TEST(ConfTableRows, EveryLanguageCodeAndNameEncodes) {
    for (const CodeName *table : {kLanguageCodes, kLanguageNames}) {
        const size_t rows = table == kLanguageCodes ? 139 : 143;
        for (size_t i = 0; i < rows; ++i) {
            const CodeName &r = table[i];
            const Bytes accept = r.code < 128 ? bytes({0x83, static_cast<int>(0x80 | r.code)})
                                              : bytes({0x83, 0x02, 0x01, static_cast<int>(r.code)});
            EXPECT_EQ(hex(accept), encoded_hex(std::string("accept-language: ") + r.name, "1.4")) << r.name;
            EXPECT_EQ(hex(cat({bytes({0x8C}), integer_value(r.code)})),
                      encoded_hex(std::string("content-language: ") + r.name, "1.4"))
                << r.name;
        }
    }
}

TEST(ConfTableRows, EveryHeaderNameThroughTheDifferencesParameter) {
    ASSERT_EQ(72u, sizeof kHeaderNames / sizeof kHeaderNames[0]);
    for (const CodeName &r : kHeaderNames) {
        EXPECT_EQ(std::string("text/plain;differences=") + r.name,
                  decode_ct(bytes({0x03, 0x83, 0x87, static_cast<int>(0x80 | r.code)})).text)
            << r.code;
        // Encoding finds the lowest code carrying the name.
        uint32_t lowest = 0;
        while (std::strcmp(kHeaderNames[lowest].name, r.name) != 0) ++lowest;
        EXPECT_EQ(hex(bytes({0x03, 0x83, 0x87, static_cast<int>(0x80 | lowest)})),
                  encoded_ct_hex((std::string("text/plain; differences=") + r.name).c_str(), "1.1"))
            << r.name;
    }
    // Past the table the typed value is refused and read again untyped: the
    // Short-integer's seven bits in decimal.
    EXPECT_EQ("text/plain;differences=72", decode_ct(bytes({0x03, 0x83, 0x87, 0xC8})).text);
}

TEST(ConfTableRows, EveryHeaderNameAsAVaryValue) {
    for (const CodeName &r : kHeaderNames)
        EXPECT_EQ(std::string("vary:") + r.name + "\n", decoded_text(bytes({0xAA, static_cast<int>(0x80 | r.code)})))
            << r.code;
}

TEST(ConfTableRows, EveryParameterNameWithoutValue) {
    ASSERT_EQ(30u, sizeof kParamNames / sizeof kParamNames[0]);
    for (const CodeName &r : kParamNames) {
        Content c = decode_ct(bytes({0x03, 0x83, static_cast<int>(0x80 | r.code), 0x00}));
        EXPECT_EQ(WSP_OK, c.status) << r.code;
        EXPECT_EQ(4, c.consumed) << r.code;
        if (r.name == nullptr)
            EXPECT_EQ("", c.text);
        else
            EXPECT_EQ(std::string("text/plain;") + r.name, c.text) << r.code;
    }
}

TEST(ConfTableRows, EveryPushApplicationId) {
    ASSERT_EQ(14u, sizeof kPushAppIds / sizeof kPushAppIds[0]);
    for (const CodeName &r : kPushAppIds) {
        EXPECT_EQ(std::string("x-wap-application-id:") + r.name + "\n",
                  decoded_text(cat({bytes({0xAF}), integer_value(r.code)})))
            << r.name;
        EXPECT_EQ(hex(cat({bytes({0xAF}), integer_value(r.code)})),
                  encoded_hex(std::string("x-wap-application-id: ") + r.name, "1.4"))
            << r.name;
    }
}

TEST(ConfTableRows, CacheDirectivesDispositionsAndMethods) {
    const char *directives[] = {"no-cache", "no-store",     "max-age",         "max-stale",
                                "min-fresh", "only-if-cached", "public",        "private",
                                "no-transform", "must-revalidate", "proxy-revalidate"};
    for (int d = 0; d < 11; ++d) {
        std::string got = decoded_text(bytes({0x88, 0x80 | d}));
        // max-age and min-fresh need a value: bare, they are dropped.
        EXPECT_EQ(d == 2 || d == 4 ? std::string() : std::string("cache-control:") + directives[d] + "\n", got) << d;
    }
    EXPECT_EQ("cache-control:s-maxage=5\n", decoded_text(bytes({0xC7, 0x02, 0x8B, 0x85})));
    EXPECT_EQ("cache-control:max-age=60\n", decoded_text(bytes({0x88, 0x02, 0x82, 0xBC})));
    const char *dispositions[] = {"form-data", "attachment", "inline"};
    for (int d = 0; d < 3; ++d)
        EXPECT_EQ(std::string("content-disposition:") + dispositions[d] + "\n",
                  decoded_text(bytes({0xAE, 0x01, 0x80 | d})));
    const char *methods[] = {"GET", "OPTIONS", "HEAD", "DELETE", "TRACE", "POST", "PUT"};
    const int method_codes[] = {0x40, 0x41, 0x42, 0x43, 0x44, 0x60, 0x61};
    for (int m = 0; m < 7; ++m) {
        EXPECT_EQ(std::string("allow:") + methods[m] + "\n", decoded_text(bytes({0x86, 0x80 | method_codes[m]})));
        EXPECT_EQ(hex(bytes({0x86, 0x80 | method_codes[m]})), encoded_hex(std::string("allow: ") + methods[m], "1.1"));
    }
    const char *codings[] = {"chunked", "identity", "gzip", "compress", "deflate"};
    for (int c = 0; c < 5; ++c)
        EXPECT_EQ(hex(bytes({0xB9, 0x01, 0x82 + c})), encoded_hex(std::string("te: ") + codings[c], "1.3"));
    const char *content_codings[] = {"gzip", "compress", "deflate"};
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(std::string("content-encoding:") + content_codings[c] + "\n", decoded_text(bytes({0x8B, 0x80 | c})));
        EXPECT_EQ(std::string("accept-encoding:") + content_codings[c] + "\n", decoded_text(bytes({0x82, 0x80 | c})));
    }
}

TEST(ConfTables, AnEmptyCodingTokenIsTheFirstCodingRow) {
    EXPECT_EQ("B9 01 80", encoded_hex("te: ;", "1.3"));
}

TEST(ConfTables, ListEncodersFollowTheSameRows) {
    EXPECT_EQ(hex(cat({bytes({0x80}), text0("application/vnd.wap.sia")})),
              encoded_hex("accept: application/vnd.wap.sia", "1.1"));
    EXPECT_EQ("80 B4", encoded_hex("accept: application/vnd.wap.sia", "1.2"));
    EXPECT_EQ("81 84", encoded_hex("accept-charset: ISO-8859-1", "1.1"));
    EXPECT_EQ("81 03 02 03 E8", encoded_hex("accept-charset: iso-10646-ucs-2", "1.1"));
    EXPECT_EQ("BC 80", encoded_hex("accept-encoding: gzip", "1.3"));
    EXPECT_EQ("82 80", encoded_hex("accept-encoding: gzip", "1.2"));
}

TEST(ConfDates, TimePartsAreKeptAsEightBits) {
    // 300 seconds keep their low 8 bits, 44.
    EXPECT_EQ("92 04 2E BC 98 A8", encoded_hex("date: Sun, 06 Nov 1994 08:49:300 GMT", "1.1"));
}

TEST(ConfDates, OutOfRangeFieldsAreNormalisedByTheCalendar) {
    // 25:49:37 on the 6th is 01:49:37 on the 7th.
    EXPECT_EQ("92 04 2E BD 87 B1", encoded_hex("date: Sun, 06 Nov 1994 25:49:37 GMT", "1.1"));
}

TEST(ConfHeaderBlocks, ReplyHeadersAsReceived) {
    const Bytes block = cat({bytes({0x92, 0x04, 0x4F, 0x61, 0xC4, 0xA8}), bytes({0x8D, 0x02, 0x04, 0x00}),
                             bytes({0x88, 0x04, 0x82, 0x02, 0x0E, 0x10}), bytes({0x93}), text0("\"abc123"),
                             bytes({0x9D, 0x04, 0x4F, 0x61, 0xC4, 0xA8, 0x8E}), text0("http://example.com/x"),
                             text0("X-Powered-By"), text0("gateway")});
    EXPECT_EQ("date:Thu, 15 Mar 2012 10:30:00 GMT\n"
              "content-length:1024\n"
              "cache-control:max-age=3600\n"
              "etag:\"abc123\n"
              "last-modified:Thu, 15 Mar 2012 10:30:00 GMT\n"
              "content-location:http://example.com/x\n"
              "x-powered-by:gateway\n",
              decoded_text(block, 2));
}

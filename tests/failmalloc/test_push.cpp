// Push decoding with each allocation failing in turn: the copies made into
// the caller's spare buffer for an external PDU (headers alone, or headers
// and body), the two halves on their own, and the whole road of a received
// message (push decoding, header decoding, body hand-over, release).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "failmalloc_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace failmalloc;
using wsp_test::bytes;
using wsp_test::cat;
using wsp_test::hex;

namespace {

// Content type application/vnd.wap.sic as a well-known code.
const Bytes kSiContentType = bytes({0xAE});
const char kSiContentTypeText[] = "application/vnd.wap.sic";

// The headers of a service indication push: application id, initiator,
// content location and an application header.
std::vector<Entry> push_header_entries() {
    return {
        well_known(bytes({0xAF, 0x82})),                                                   // x-wap-application-id
        well_known(cat({bytes({0xB1}), text0("http://push.example.com/si-gateway")})),      // x-wap-initiator-uri
        well_known(cat({bytes({0x8E}), text0("http://wap.example.com/news/today.wml")})),  // content-location
        app_text("X-Wap-Push-Info", "urgent"),
    };
}

// A tokenised service indication.
const Bytes kSiBody = cat({bytes({0x02, 0x05, 0x6A, 0x00, 0x45, 0xC6, 0x0C, 0x03}), text0("example.org/news"),
                           bytes({0x01, 0x03}), text0("Headlines"), bytes({0x01, 0x01})});

// Type octet, HeadersLen (one octet here), content type, headers, data.
Bytes push_pdu(const Bytes &headers, const Bytes &body) {
    const size_t headers_len = kSiContentType.size() + headers.size();
    EXPECT_LT(headers_len, 128u);
    return cat({bytes({0x06, static_cast<int>(headers_len)}), kSiContentType, headers, body});
}

// The PDU in a block of exactly its size, allocated by the test.
struct Pdu {
    wsp_buffer buf;
    unsigned char *original;
    explicit Pdu(const Bytes &octets, bool external) {
        std::memset(&buf, 0, sizeof buf);
        buf.data = static_cast<unsigned char *>(std::malloc(octets.size()));
        std::memcpy(buf.data, octets.data(), octets.size());
        buf.size = static_cast<uint16_t>(octets.size());
        buf.length = static_cast<uint16_t>(octets.size());
        buf.flags = external ? WSP_BUFFER_EXTERNAL : 0;
        original = buf.data;
    }
    ~Pdu() {
        if (buf.data != nullptr) std::free(buf.data);
    }
    Pdu(const Pdu &) = delete;
    Pdu &operator=(const Pdu &) = delete;
    bool untouched(const Bytes &octets) const {
        return buf.data == original && buf.size == octets.size() && buf.length == octets.size() && buf.offset == 0 &&
               std::memcmp(buf.data, octets.data(), octets.size()) == 0;
    }
};

// The caller's spare record, filled with recognisable values; its data
// points at memory the library must never free.
constexpr uint16_t kSpareSize = 0x1234;
constexpr uint16_t kSpareOffset = 5;
constexpr uint16_t kSpareLength = 7;

struct Spare {
    unsigned char sentinel[4] = {1, 2, 3, 4};
    wsp_buffer buf;
    wsp_buffer *ptr = &buf;
    Spare() {
        buf.data = sentinel;
        buf.reserved = 0x5A5A5A5A;
        buf.size = kSpareSize;
        buf.offset = kSpareOffset;
        buf.length = kSpareLength;
        buf.flags = 0xFE;
        buf.flags_spare = 0;
    }
    void expect_size_offset_length_kept() const {
        EXPECT_EQ(kSpareSize, buf.size);
        EXPECT_EQ(kSpareOffset, buf.offset);
        EXPECT_EQ(kSpareLength, buf.length);
    }
    // Frees a block the library installed.
    void release() {
        if (buf.data != nullptr && buf.data != sentinel) std::free(buf.data);
        buf.data = nullptr;
    }
};

wsp_push_result dirty_result() {
    wsp_push_result r;
    std::memset(&r, 0xCD, sizeof r);
    return r;
}

// An external PDU through wsp_push_decoding with the fail_at-th allocation
// failing (0: none).
struct ExternalPush {
    Pdu pdu;
    Spare spare;
    wsp_push_result result = dirty_result();
    int status = 0;
    unsigned allocations = 0;
    ExternalPush(const Bytes &octets, unsigned fail_at) : pdu(octets, true) {
        arm(fail_at);
        status = wsp_push_decoding(&pdu.buf, &result, &spare.ptr);
        allocations = disarm();
    }
    // A clean run: the spare holds a copy of `run`, whose first
    // `headers_length` octets are the header block; the copy is released.
    void expect_copied(const Bytes &run, size_t headers_length) {
        EXPECT_EQ(WSP_OK, status);
        EXPECT_EQ(hex(run), hex(spare.buf.data, spare.buf.length));
        EXPECT_EQ(&spare.buf, result.headers.buffer);
        EXPECT_EQ(headers_length, result.headers.length);
        EXPECT_EQ(1u, live_blocks());
        spare.release();
    }
};

} // namespace

TEST(FailmallocPush, ExternalPduWithoutBodyLeavesNoCopyWhenItFails) {
    const Bytes headers = join_all(push_header_entries());
    const Bytes octets = push_pdu(headers, {});
    const unsigned total = fail_each_allocation([&](unsigned k) {
        ExternalPush push(octets, k);
        EXPECT_TRUE(push.pdu.untouched(octets));
        EXPECT_EQ(&push.spare.buf, push.spare.ptr);
        EXPECT_STREQ(kSiContentTypeText, push.result.body.content_type);
        EXPECT_EQ(nullptr, push.result.body.body);
        EXPECT_EQ(0, push.spare.buf.flags);
        if (k == 0) {
            push.expect_copied(headers, headers.size());
        } else {
            // The copy could not be had: the spare's data is NULL, its other
            // fields are as the caller left them.
            EXPECT_EQ(WSP_ERR_FAIL, static_cast<int16_t>(push.status));
            EXPECT_EQ(nullptr, push.spare.buf.data);
            push.spare.expect_size_offset_length_kept();
            EXPECT_EQ(nullptr, push.result.headers.buffer);
            EXPECT_EQ(0, push.result.headers.length);
        }
        EXPECT_EQ(0u, live_blocks());
        return push.allocations;
    });
    EXPECT_GE(total, 1u) << "an external PDU's headers are copied";
}

TEST(FailmallocPush, ExternalPduWithBodyLeavesNoCopyWhenItFails) {
    const Bytes headers = join_all(push_header_entries());
    const Bytes octets = push_pdu(headers, kSiBody);
    const unsigned total = fail_each_allocation([&](unsigned k) {
        ExternalPush push(octets, k);
        EXPECT_TRUE(push.pdu.untouched(octets));
        EXPECT_EQ(&push.spare.buf, push.spare.ptr);
        // Set before the copy is made: the spare is the body holder, emptied.
        EXPECT_EQ(&push.spare.buf, push.result.body.body);
        EXPECT_EQ(0, push.spare.buf.flags);
        EXPECT_EQ(0, push.spare.buf.offset);
        if (k == 0) {
            EXPECT_STREQ(kSiContentTypeText, push.result.body.content_type);
            push.expect_copied(cat({headers, kSiBody}), headers.size());
        } else {
            EXPECT_EQ(WSP_ERR_FAIL, static_cast<int16_t>(push.status));
            EXPECT_EQ(push.spare.sentinel, push.spare.buf.data) << "no block was installed";
            EXPECT_EQ(kSpareSize, push.spare.buf.size);
            EXPECT_EQ(0, push.spare.buf.length);
            EXPECT_EQ(nullptr, push.result.headers.buffer);
            if (push.allocations == k) {
                // The copy was the allocation that failed (the last one made):
                // the content type and the header length are already set.
                EXPECT_STREQ(kSiContentTypeText, push.result.body.content_type);
                EXPECT_EQ(headers.size(), push.result.headers.length);
            }
        }
        EXPECT_EQ(0u, live_blocks());
        return push.allocations;
    });
    EXPECT_GE(total, 1u) << "an external PDU's headers and body are copied";
}

TEST(FailmallocPush, OwnPduIsReadInPlace) {
    const Bytes headers = join_all(push_header_entries());
    for (const Bytes &body : {Bytes{}, kSiBody}) {
        const Bytes octets = push_pdu(headers, body);
        Pdu pdu(octets, false);
        Spare spare;
        wsp_push_result result = dirty_result();
        reset();
        arm(0);
        EXPECT_EQ(WSP_OK, wsp_push_decoding(&pdu.buf, &result, &spare.ptr));
        EXPECT_EQ(0u, disarm()) << "an own PDU is re-pointed, never copied";
        EXPECT_EQ(&pdu.buf, result.headers.buffer);
        EXPECT_EQ(pdu.original, pdu.buf.data);
        EXPECT_EQ(spare.sentinel, spare.buf.data);
    }
}

TEST(FailmallocPush, DecodeHdrCopyFailureSetsDataNullAndNothingElse) {
    const Bytes headers = join_all(push_header_entries());
    fail_each_allocation([&](unsigned k) {
        const uint8_t *cursor = headers.data();
        Spare spare;
        arm(k);
        const int status = wsp_decode_hdr(&spare.buf, &cursor, static_cast<uint16_t>(headers.size()));
        const unsigned n = disarm();
        if (k == 0) {
            EXPECT_EQ(WSP_OK, status);
            EXPECT_EQ(headers.data() + headers.size(), cursor);
            EXPECT_EQ(hex(headers), hex(spare.buf.data, spare.buf.length));
            EXPECT_EQ(headers.size(), spare.buf.size);
            EXPECT_EQ(0, spare.buf.offset);
            spare.release();
        } else {
            EXPECT_EQ(WSP_ERR_FAIL, static_cast<int16_t>(status));
            EXPECT_EQ(headers.data(), cursor);
            EXPECT_EQ(nullptr, spare.buf.data);
            spare.expect_size_offset_length_kept();
            EXPECT_EQ(0xFE, spare.buf.flags);
        }
        EXPECT_EQ(0u, live_blocks());
        return n;
    });
}

TEST(FailmallocPush, DecodeHdentityCopyFailureInstallsNothing) {
    const Bytes headers = join_all(push_header_entries());
    const Bytes octets = push_pdu(headers, kSiBody);
    const uint16_t headers_len = octets[1];
    const uint16_t remaining = static_cast<uint16_t>(octets.size() - 2);
    fail_each_allocation([&](unsigned k) {
        Pdu pdu(octets, true);
        Spare spare;
        wsp_push_result result = dirty_result();
        result.body.body = &spare.buf;
        const uint8_t *cursor = pdu.buf.data + 2;
        arm(k);
        const int status = wsp_decode_hdentity(&cursor, &pdu.buf, &result, &result.body, headers_len, remaining);
        const unsigned n = disarm();
        EXPECT_EQ(pdu.buf.data + 2, cursor);
        EXPECT_TRUE(pdu.untouched(octets));
        if (k == 0) {
            EXPECT_EQ(WSP_OK, status);
            EXPECT_EQ(hex(cat({headers, kSiBody})), hex(spare.buf.data, spare.buf.length));
            spare.release();
        } else {
            EXPECT_EQ(WSP_ERR_FAIL, static_cast<int16_t>(status));
            EXPECT_EQ(spare.sentinel, spare.buf.data);
            spare.expect_size_offset_length_kept();
        }
        EXPECT_EQ(0u, live_blocks());
        return n;
    });
}

// The road of a received message: push decoding, header decoding of the
// result, body hand-over, release.  A failure during push decoding ends the
// road there; one during header decoding drops the header whose decoder
// lost its allocation; the body is handed over and freed by the caller in
// every case, and nothing is left behind.
void received_message_road(bool external) {
    const std::vector<Entry> entries = push_header_entries();
    const Bytes headers = join_all(entries);
    const Bytes octets = push_pdu(headers, kSiBody);
    const Bytes run = cat({headers, kSiBody});
    unsigned push_allocations = 0;
    const unsigned total = fail_each_allocation([&](unsigned k) {
        Pdu pdu(octets, external);
        Spare spare;
        wsp_test::OutBuffer text(kTextSize);
        wsp_push_result result = dirty_result();
        arm(k);
        const int pushed = wsp_push_decoding(&pdu.buf, &result, &spare.ptr);
        const unsigned after_push = calls();
        if (k == 0) push_allocations = after_push;
        if (k != 0 && k <= after_push) {
            disarm();
            EXPECT_EQ(WSP_ERR_FAIL, static_cast<int16_t>(pushed));
            EXPECT_EQ(0u, live_blocks());
            return after_push;
        }
        EXPECT_EQ(WSP_OK, pushed);
        const int decoded = wsp_dec_hdr(&result.headers, text.get(), nullptr, 4);
        wsp_body_result body;
        std::memset(&body, 0xCD, sizeof body);
        const int handed = wsp_decode_body(&result.body, &body);
        const unsigned n = disarm();

        // Header decoding: each failure drops one header, never the block.
        EXPECT_EQ(WSP_OK, decoded);
        std::vector<Entry> expected_entries = entries;
        if (k > push_allocations) {
            const size_t j = entry_of_allocation(entries, k - push_allocations);
            EXPECT_LT(j, entries.size());
            if (j < entries.size()) expected_entries.erase(expected_entries.begin() + static_cast<long>(j));
        }
        const Decoded expected = decode_block(join_all(expected_entries), 0);
        EXPECT_EQ(text_of(expected.text), text.text());

        // The body hand-over moves headers and data to the start of the block.
        EXPECT_EQ(WSP_OK, handed);
        EXPECT_EQ(nullptr, result.body.body);
        EXPECT_STREQ(kSiContentTypeText, body.content_type);
        EXPECT_NE(nullptr, body.body.data);
        if (body.body.data != nullptr) EXPECT_EQ(hex(run), hex(body.body.data, body.body.length));
        if (external) {
            EXPECT_EQ(pdu.original, pdu.buf.data);
            std::free(body.body.data);
        } else {
            EXPECT_EQ(pdu.original, body.body.data);
            pdu.buf.data = nullptr; // handed over with the body
            std::free(body.body.data);
        }
        EXPECT_EQ(0u, live_blocks());
        return n;
    });
    if (external) EXPECT_GE(push_allocations, 1u) << "the copy into the spare buffer";
    EXPECT_GE(total, push_allocations);
}

TEST(FailmallocPush, ReceivedExternalMessageRoadSurvivesEachFailure) { received_message_road(true); }

TEST(FailmallocPush, ReceivedOwnMessageRoadSurvivesEachFailure) { received_message_road(false); }

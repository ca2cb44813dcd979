// Profile header encoding with each allocation failing in turn, on the
// direct path (the block's buffer has room) and on the path that builds a
// larger buffer: a failure leaves the holder and its buffer exactly as they
// were, and frees whatever the call allocated.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "failmalloc_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace failmalloc;
using wsp_test::Bytes;
using wsp_test::hex;

namespace {

// An encoded request block of 10 octets (Accept */*, Host, User-Agent code).
const Bytes kBlock = wsp_test::bytes({0x80, 0x80, 0x96, 'w', 'a', 'p', '.', 'e', 'x', 0x00});

const char kProfile[] = "http://wap.example.com/profiles/handset-x200.rdf\r\n";

// The block in a buffer of `size` octets allocated by the test.
struct Block {
    wsp_buffer buf;
    wsp_hdrbuf holder;
    unsigned char *original;
    explicit Block(uint16_t size, uint8_t flags) {
        std::memset(&buf, 0, sizeof buf);
        buf.data = static_cast<unsigned char *>(std::calloc(size, 1));
        std::memcpy(buf.data, kBlock.data(), kBlock.size());
        buf.size = size;
        buf.length = static_cast<uint16_t>(kBlock.size());
        buf.flags = flags;
        buf.reserved = 0x77;
        holder.length = static_cast<uint16_t>(kBlock.size());
        holder.buffer = &buf;
        original = buf.data;
    }
    ~Block() {
        if (buf.data != original) std::free(buf.data);
        std::free(original);
    }
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;

    // The holder and buffer as they were before the call.
    void expect_unchanged(uint16_t size, uint8_t flags) const {
        EXPECT_EQ(&buf, holder.buffer);
        EXPECT_EQ(kBlock.size(), holder.length);
        EXPECT_EQ(original, buf.data);
        EXPECT_EQ(size, buf.size);
        EXPECT_EQ(0, buf.offset);
        EXPECT_EQ(kBlock.size(), buf.length);
        EXPECT_EQ(flags, buf.flags);
        EXPECT_EQ(0x77u, buf.reserved);
        EXPECT_EQ(hex(kBlock), hex(buf.data, kBlock.size()));
    }
};

wsp_uaprof profile_of(const char *text) {
    wsp_uaprof p;
    std::memset(&p, 0, sizeof p);
    p.text = reinterpret_cast<const unsigned char *>(text);
    p.length = static_cast<uint16_t>(std::strlen(text));
    return p;
}

// The Profile header that the text becomes: 0xB5, the trimmed line, NUL.
Bytes profile_header() {
    Bytes b = wsp_test::bytes({0xB5});
    const std::string line = "http://wap.example.com/profiles/handset-x200.rdf";
    b.insert(b.end(), line.begin(), line.end());
    b.push_back(0);
    return b;
}

void profile_road(uint16_t size, uint8_t flags, bool grows) {
    const wsp_uaprof profile = profile_of(kProfile);
    const unsigned total = fail_each_allocation([&](unsigned k) {
        Block block(size, flags);
        arm(k);
        wsp_uaphdr_encode(&block.holder, &profile);
        const unsigned n = disarm();
        if (k == 0) {
            const Bytes expected = wsp_test::cat({kBlock, profile_header()});
            EXPECT_EQ(expected.size(), block.holder.length);
            EXPECT_EQ(hex(expected), hex(block.buf.data + block.buf.offset, block.buf.length));
            if (grows) {
                EXPECT_NE(block.original, block.buf.data) << "the larger buffer replaces the old one";
                EXPECT_EQ(0, block.buf.flags);
                EXPECT_EQ(0u, block.buf.reserved);
                EXPECT_EQ(1u, live_blocks()) << "the caller now owns the new data";
                if ((flags & WSP_BUFFER_EXTERNAL) == 0) block.original = nullptr; // freed by the library
            } else {
                EXPECT_EQ(block.original, block.buf.data);
                EXPECT_EQ(0u, live_blocks());
            }
        } else {
            block.expect_unchanged(size, flags);
            EXPECT_EQ(0u, live_blocks());
        }
        return n;
    });
    EXPECT_GE(total, grows ? 2u : 1u) << "the text copy, and the larger buffer when it grows";
}

} // namespace

TEST(FailmallocProfile, DirectAppendSurvivesEachFailure) { profile_road(200, 0, false); }

TEST(FailmallocProfile, LargerBufferSurvivesEachFailure) { profile_road(12, 0, true); }

TEST(FailmallocProfile, LargerBufferOverAnExternalBlockSurvivesEachFailure) {
    profile_road(12, WSP_BUFFER_EXTERNAL, true);
}

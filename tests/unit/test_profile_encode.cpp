// Profile headers: direct append, the larger-buffer fallback with its
// deliberate undersizing, and the line splitting rules.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "pdu/pdu.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

struct Block {
    wsp_buffer buf{};
    wsp_hdrbuf holder{};
    Block(const Bytes &existing, uint16_t size) {
        buf.data = static_cast<unsigned char *>(std::calloc(size ? size : 1, 1));
        if (!existing.empty()) std::memcpy(buf.data, existing.data(), existing.size());
        buf.size = size;
        buf.length = static_cast<uint16_t>(existing.size());
        holder.length = buf.length;
        holder.buffer = &buf;
    }
    ~Block() {
        if ((buf.flags & WSP_BUFFER_EXTERNAL) == 0) std::free(buf.data);
    }
    Bytes valid() const { return Bytes(buf.data + buf.offset, buf.data + buf.offset + buf.length); }
};

wsp_uaprof profile_of(const std::string &text) {
    wsp_uaprof p{};
    p.text = reinterpret_cast<const unsigned char *>(text.data());
    p.length = static_cast<uint16_t>(text.size());
    return p;
}

} // namespace

TEST(ProfileEncode, OneLineAppendedDirectly) {
    Block b(Bytes(10, 0x11), 100);
    const std::string text = "http://p.example/u.x"; // 20 characters
    wsp_uaprof p = profile_of(text);
    unsigned char *data = b.buf.data;
    wsp_uaphdr_encode(&b.holder, &p);
    EXPECT_EQ(b.holder.length, 32);
    EXPECT_EQ(b.buf.length, 32);
    EXPECT_EQ(b.buf.data, data);
    EXPECT_EQ(b.buf.data[10], 0xB5);
    EXPECT_EQ(std::string(reinterpret_cast<char *>(b.buf.data) + 11), text);
    EXPECT_EQ(b.buf.data[31], 0x00);
}

TEST(ProfileEncode, TwoLinesGiveTwoHeaders) {
    Block b({}, 64);
    const std::string text = "a\nbc";
    wsp_uaprof p = profile_of(text);
    wsp_uaphdr_encode(&b.holder, &p);
    EXPECT_EQ(hex(b.valid()), "B5 61 00 B5 62 63 00");
    EXPECT_EQ(b.holder.length, 7);
}

TEST(ProfileEncode, EmptyLinesAndBlanksAreSkipped) {
    Block b({}, 64);
    const std::string text = "\n\n  a \n\n\tb\n\n";
    wsp_uaprof p = profile_of(text);
    wsp_uaphdr_encode(&b.holder, &p);
    EXPECT_EQ(hex(b.valid()), "B5 61 00 B5 62 00");
}

TEST(ProfileEncode, OnlyLineFeedsAndBlanksWriteTheCodeOctetAlone) {
    Block b({}, 64);
    const std::string text = "\n  \n \t\n";
    wsp_uaprof p = profile_of(text);
    wsp_uaphdr_encode(&b.holder, &p);
    EXPECT_EQ(hex(b.valid()), "B5");
    EXPECT_EQ(b.holder.length, 1);
}

TEST(ProfileEncode, HighFirstCharacterGetsTheQuoteOctet) {
    Block b({}, 64);
    const std::string text = "\xE9t\xE9";
    wsp_uaprof p = profile_of(text);
    wsp_uaphdr_encode(&b.holder, &p);
    EXPECT_EQ(hex(b.valid()), "B5 7F E9 74 E9 00");
}

TEST(ProfileEncode, MissingArgumentsChangeNothing) {
    Block b(bytes({1, 2}), 8);
    const std::string text = "x";
    wsp_uaprof p = profile_of(text);
    wsp_uaphdr_encode(nullptr, &p);
    wsp_uaphdr_encode(&b.holder, nullptr);
    wsp_uaprof no_text{};
    wsp_uaphdr_encode(&b.holder, &no_text);
    wsp_hdrbuf no_buffer{};
    wsp_uaphdr_encode(&no_buffer, &p);
    EXPECT_EQ(b.buf.length, 2);
    EXPECT_EQ(b.holder.length, 2);
}

TEST(ProfileEncode, DirectFailureRestoresLengths) {
    // size 3 >= L + N = 3, but 0xB5, 'a', 'b', NUL needs 4 octets
    Block b(bytes({0x01}), 3);
    b.holder.length = 1;
    const std::string text = "ab";
    wsp_uaprof p = profile_of(text);
    unsigned char *data = b.buf.data;
    wsp_uaphdr_encode(&b.holder, &p);
    EXPECT_EQ(b.buf.data, data);
    EXPECT_EQ(b.buf.length, 1);
    EXPECT_EQ(b.buf.size, 3);
    EXPECT_EQ(b.holder.length, 1);
}

TEST(ProfileEncode, FallbackBuildsALargerBuffer) {
    // size 4 < L + N = 8 + 2: the new block has 8 + 2 + 1 = 11 bytes;
    // needed: 2 old + 0xB5 + 8 chars + NUL = 12 > 11, so a one-line text...
    // fails; a text with one trailing line feed gets one more octet.
    Block b(bytes({0xAA, 0xBB}), 4);
    const std::string text = "abcdefg\n"; // L = 8, one line feed: S = 11
    wsp_uaprof p = profile_of(text);
    wsp_uaphdr_encode(&b.holder, &p);
    // 2 + 1 + 7 + 1 = 11 octets, and the Short-integer leaves room: success
    EXPECT_EQ(b.buf.size, 11);
    EXPECT_EQ(b.buf.length, 11);
    EXPECT_EQ(b.buf.offset, 0);
    EXPECT_EQ(b.buf.flags, 0);
    EXPECT_EQ(b.holder.length, 11);
    EXPECT_EQ(hex(b.valid()), "AA BB B5 61 62 63 64 65 66 67 00");
}

TEST(ProfileEncode, FallbackTooSmallLeavesTheBlockUntouched) {
    Block b(bytes({0xAA, 0xBB}), 4);
    const std::string text = "line1\nline2"; // L 11, S = 11 + 2 + 1 = 14, needs 16
    wsp_uaprof p = profile_of(text);
    unsigned char *data = b.buf.data;
    wsp_uaphdr_encode(&b.holder, &p);
    EXPECT_EQ(b.buf.data, data);
    EXPECT_EQ(b.buf.size, 4);
    EXPECT_EQ(b.buf.length, 2);
    EXPECT_EQ(b.holder.length, 2);
}

TEST(ProfileEncode, FallbackKeepsAnExternalBlock) {
    unsigned char external[3] = {0x81, 0x82, 0x83};
    wsp_buffer buf{};
    buf.data = external;
    buf.size = 3;
    buf.length = 3;
    buf.flags = WSP_BUFFER_EXTERNAL;
    wsp_hdrbuf holder{3, &buf};
    const std::string text = "x\n";
    wsp_uaprof p = profile_of(text);
    wsp_uaphdr_encode(&holder, &p);
    ASSERT_NE(buf.data, external);
    EXPECT_EQ(buf.flags, 0);
    EXPECT_EQ(buf.size, 6);
    EXPECT_EQ(hex(buf.data, buf.length), "81 82 83 B5 78 00");
    EXPECT_EQ(external[0], 0x81);
    std::free(buf.data);
}

TEST(ProfileEncode, FallbackTakesOldBytesFromTheStartOfData) {
    Block b(bytes({0x01, 0x02, 0x03}), 3);
    b.buf.offset = 1;
    b.buf.length = 2;
    const std::string text = "q\n";
    wsp_uaprof p = profile_of(text);
    wsp_uaphdr_encode(&b.holder, &p);
    EXPECT_EQ(b.buf.offset, 0);
    EXPECT_EQ(hex(b.buf.data, b.buf.length), "01 02 B5 71 00");
}

TEST(ProfileLines, CodeAloneWhenNoLine) {
    OutBuffer out(8);
    char text[] = " \n ";
    EXPECT_EQ(wsp_uaphdr_lines(0x35, text, out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "B5");
}

TEST(ProfileLines, ExactlyFullAfterCodeOctetFails) {
    OutBuffer out(1);
    char text[] = "a";
    EXPECT_EQ(wsp_uaphdr_lines(0x35, text, out.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 1);
}

TEST(ProfileLines, TextStringFailureIsPassedOn) {
    OutBuffer out(16);
    char text[] = "a\x01";
    EXPECT_EQ(wsp_uaphdr_lines(0x35, text, out.get()), WSP_ERR_FAIL);
}

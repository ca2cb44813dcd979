// The body hand-over and the Profile headers added to an encoded header
// block, seen through the public header.
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

TEST(ApiBody, WithoutBodyTheResultIsEmpty) {
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

TEST(ApiBody, OffsetZeroIsHandedOverUnmoved) {
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

TEST(ApiBody, PartialLastPieceIsFollowedByOffsetZeroOctets) {
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

TEST(ApiBody, ExactMultipleOfTheOffsetLeavesTheStaleOctets) {
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

TEST(ApiBody, OffsetLargerThanTheBody) {
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

TEST(ApiBody, EmptyBodyBehindAnOffsetIsNotMoved) {
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

TEST(ApiBody, ReleasingTheSourceAfterwardsFreesNothing) {
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

TEST(ApiProfile, OneLineIntoRoomyBlock) {
    const std::string line = "http://a.example/u.x";
    ASSERT_EQ(20u, line.size());
    ProfileBlock block(kTenOctets, 100);
    append_profile(block, line);
    EXPECT_EQ(32, block.holder.length);
    EXPECT_EQ(32, block.buf.length);
    EXPECT_EQ(100, block.buf.size);
    EXPECT_EQ(block.original, block.buf.data);
    EXPECT_EQ(hex(cat({kTenOctets, bytes({0xB5}), cstr(line.c_str())})), hex(block.valid()));
}

TEST(ApiProfile, HolderLengthBecomesTheBuffersLength) {
    ProfileBlock block(kTenOctets, 100);
    block.holder.length = 0;
    append_profile(block, "abc");
    EXPECT_EQ(15, block.buf.length);
    EXPECT_EQ(15, block.holder.length);
}

TEST(ApiProfile, TwoLinesGiveTwoHeaders) {
    ProfileBlock block({}, 64);
    append_profile(block, "http://a.example/p.xml\nhttp://b.example/d.xml");
    EXPECT_EQ(hex(cat({bytes({0xB5}), cstr("http://a.example/p.xml"), bytes({0xB5}),
                       cstr("http://b.example/d.xml")})),
              hex(block.valid()));
    EXPECT_EQ(block.buf.length, block.holder.length);
}

TEST(ApiProfile, LinesAreTrimmedAndEmptyLinesSkipped) {
    ProfileBlock block({}, 64);
    append_profile(block, "\n\n  first \n\n\tsecond\t\n\n");
    EXPECT_EQ(hex(cat({bytes({0xB5}), cstr("first"), bytes({0xB5}), cstr("second")})), hex(block.valid()));
}

TEST(ApiProfile, ALineOfOnlyACarriageReturnIsAnEmptyText) {
    // The split is at line feeds only; a line holding a lone carriage return
    // is not empty, and trimming leaves an empty Text-string.
    ProfileBlock block({}, 64);
    append_profile(block, " a \r\n\r\n  b\t");
    EXPECT_EQ("B5 61 00 B5 00 B5 62 00", hex(block.valid()));
}

TEST(ApiProfile, OnlyLineFeedsAndBlanksAddTheCodeOctetAlone) {
    ProfileBlock block(kTenOctets, 100);
    append_profile(block, "\n \n\t\n");
    EXPECT_EQ(11, block.holder.length);
    EXPECT_EQ(hex(cat({kTenOctets, bytes({0xB5})})), hex(block.valid()));
    ProfileBlock empty(kTenOctets, 100);
    append_profile(empty, "");
    EXPECT_EQ(hex(cat({kTenOctets, bytes({0xB5})})), hex(empty.valid()));
}

TEST(ApiProfile, HighFirstCharacterGetsTheQuoteOctet) {
    ProfileBlock block({}, 16);
    append_profile(block, "\xE9tude");
    EXPECT_EQ("B5 7F E9 74 75 64 65 00", hex(block.valid()));
    EXPECT_EQ(8, block.holder.length);
}

TEST(ApiProfile, DirectAppendFailureRestoresTheLengths) {
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

TEST(ApiProfile, CodeOctetMayNotFillTheBlock) {
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

TEST(ApiProfile, QuoteOctetsAreWrittenBeforeTheRoomTest) {
    ProfileBlock block({}, 4);
    append_profile(block, "\xE9" "abc");
    EXPECT_EQ(0, block.buf.length);
    EXPECT_EQ(0, block.holder.length);
    EXPECT_EQ("B5 7F E9", hex(block.buf.data, 3));
}

TEST(ApiProfile, FallbackBuildsALargerBlockWhenTheTextFits) {
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

TEST(ApiProfile, FallbackFailureLeavesTheBlockAsItWas) {
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

TEST(ApiProfile, ExactlyLPlusNTakesTheDirectPath) {
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

TEST(ApiProfile, FallbackDoesNotFreeAnExternalBlock) {
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

TEST(ApiProfile, MissingArgumentsChangeNothing) {
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

TEST(ApiProfile, SixteenBitSumsWrap) {
    // L + N = 65540 is 4 in 16 bits, so the text is appended in place; the
    // Text-string's room test (65531 + 11 = 6 in 16 bits) passes as well,
    // but the text cannot be stored past the block: the append fails and
    // the lengths are restored.  Only the octets inside the block are
    // written.
    ProfileBlock block(kTenOctets, 12);
    std::string text(65530, 'p');
    append_profile(block, text);
    EXPECT_EQ(block.original, block.buf.data);
    EXPECT_EQ(12, block.buf.size);
    EXPECT_EQ(10, block.buf.length);
    EXPECT_EQ(10, block.holder.length);
    EXPECT_EQ(hex(cat({kTenOctets, bytes({0xB5, 'p'})})), hex(block.buf.data, 12));
}

TEST(ApiProfile, BrowserRequestHeadersWithProfileUnderEachVersion) {
    const std::string lines =
        "Accept: */*\nAccept: application/vnd.wap.wmlc\nAccept-Charset: utf-8\nAccept-Language: en\n"
        "User-Agent: Handset/1.0\n";
    const Bytes ua = cat({bytes({0xA9}), cstr("Handset/1.0")});
    const char *versions[] = {"1.1", "1.2", "1.3", "1.4"};
    for (const char *v : versions) {
        OnePageList list(lines);
        ProfileBlock block({}, 256);
        ASSERT_EQ(WSP_OK, low16(wsp_enc_hdr(list.get(), &block.holder, v))) << v;
        const bool newer_charset = v[2] >= '3';
        Bytes expect = cat({bytes({0x80, 0x80, 0x80, 0x94}), bytes({newer_charset ? 0xBB : 0x81, 0xEA}),
                            bytes({0x83, 0x99}), ua});
        EXPECT_EQ(hex(expect), hex(block.valid())) << v;
        EXPECT_EQ(expect.size(), block.holder.length) << v;

        append_profile(block, "http://example.com/uaprof/handset.xml\n");
        expect = cat({expect, bytes({0xB5}), cstr("http://example.com/uaprof/handset.xml")});
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

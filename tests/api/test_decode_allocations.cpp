// Decoding allocates nothing on ordinary input: wsp_dec_hdr,
// wsp_decode_content and wsp_push_decoding of a PDU decoded in place are
// counted through the process's calloc and malloc (glibc builds without a
// sanitizer, which keeps its own allocator).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tarnwspencdec.h"

#if defined(__SANITIZE_ADDRESS__)
#define WSP_COUNTS_ALLOCATIONS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define WSP_COUNTS_ALLOCATIONS 0
#endif
#endif
#if !defined(WSP_COUNTS_ALLOCATIONS)
#if defined(__GLIBC__)
#define WSP_COUNTS_ALLOCATIONS 1
#else
#define WSP_COUNTS_ALLOCATIONS 0
#endif
#endif

namespace {
long g_allocations = 0;
}

#if WSP_COUNTS_ALLOCATIONS
extern "C" void *__libc_calloc(size_t, size_t);
extern "C" void *__libc_malloc(size_t);
extern "C" void *calloc(size_t n, size_t s) {
    ++g_allocations;
    return __libc_calloc(n, s);
}
extern "C" void *malloc(size_t n) {
    ++g_allocations;
    return __libc_malloc(n);
}
#endif

namespace {

void add_text(std::vector<uint8_t> &b, const char *text) { b.insert(b.end(), text, text + std::strlen(text) + 1); }

// A browser's request block: Accept text/html and */*, Accept-Charset
// utf-8, Accept-Language en, User-Agent, Host, Referer and an application
// header.
std::vector<uint8_t> request_block() {
    std::vector<uint8_t> b = {0x80, 0x82, 0x80, 0x80, 0x81, 0xEA, 0x83, 0x99};
    b.push_back(0xA9);
    add_text(b, "ExampleBrowser/2.1 (X200; MIDP-2.0; CLDC-1.1)");
    b.push_back(0x96);
    add_text(b, "wap.example.com");
    b.push_back(0xA4);
    add_text(b, "http://wap.example.com/index.wml");
    add_text(b, "x-wap-profile");
    add_text(b, "http://example.com/uaprof/x200.xml");
    return b;
}

// A record over the octets, `length` counting all of them.
wsp_buffer held(std::vector<uint8_t> &octets, uint8_t flags) {
    wsp_buffer b{};
    b.data = octets.data();
    b.size = static_cast<uint16_t>(octets.size());
    b.length = b.size;
    b.flags = flags;
    return b;
}

} // namespace

TEST(DecodeAllocations, HeaderBlockDecodingAllocatesNothing) {
    if (!WSP_COUNTS_ALLOCATIONS) GTEST_SKIP() << "allocations are not counted in this build";
    std::vector<uint8_t> block = request_block();
    std::vector<unsigned char> text(1024);
    wsp_buffer in = held(block, WSP_BUFFER_EXTERNAL);
    wsp_hdrbuf holder{static_cast<uint16_t>(block.size()), &in};
    wsp_buffer out{};
    out.data = text.data();
    out.size = static_cast<uint16_t>(text.size());

    long before = g_allocations;
    int status = wsp_dec_hdr(&holder, &out, nullptr, 4);
    EXPECT_EQ(g_allocations - before, 0);
    EXPECT_EQ(static_cast<int16_t>(status), WSP_OK);
    EXPECT_EQ(std::string(reinterpret_cast<char *>(text.data()), out.length),
              "accept:text/html,*/*\n"
              "accept-charset:utf-8\n"
              "accept-language:english\n"
              "user-agent:ExampleBrowser/2.1 (X200; MIDP-2.0; CLDC-1.1)\n"
              "host:wap.example.com\n"
              "referer:http://wap.example.com/index.wml\n"
              "x-wap-profile:http://example.com/uaprof/x200.xml\n");
}

TEST(DecodeAllocations, ContentTypeDecodingAllocatesNothing) {
    if (!WSP_COUNTS_ALLOCATIONS) GTEST_SKIP() << "allocations are not counted in this build";
    // application/vnd.wap.mms-message with a charset parameter.
    const uint8_t value[] = {0x03, 0xBE, 0x81, 0xEA};
    const uint8_t *cursor = value;
    char text[WSP_CONTENT_TYPE_SIZE] = {};
    long before = g_allocations;
    int status = wsp_decode_content(&cursor, text, sizeof value);
    EXPECT_EQ(g_allocations - before, 0);
    EXPECT_EQ(static_cast<int16_t>(status), WSP_OK);
    EXPECT_EQ(cursor, value + sizeof value);
}

TEST(DecodeAllocations, PushDecodedInPlaceAllocatesNothing) {
    if (!WSP_COUNTS_ALLOCATIONS) GTEST_SKIP() << "allocations are not counted in this build";
    // Type, HeadersLen 5, mms-message, application id mms.ua, Push-Flag 0,
    // then a body; the PDU is the library's to point into.
    std::vector<uint8_t> pdu = {0x06, 0x05, 0xBE, 0xAF, 0x84, 0xB4, 0x80, 0x8C, 0x82};
    wsp_buffer in = held(pdu, 0);
    wsp_push_result result{};
    wsp_buffer *spare = nullptr;
    long before = g_allocations;
    int status = wsp_push_decoding(&in, &result, &spare);
    EXPECT_EQ(g_allocations - before, 0);
    EXPECT_EQ(static_cast<int16_t>(status), WSP_OK);
    EXPECT_EQ(result.headers.length, 4);
}

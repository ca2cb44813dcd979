// Helpers shared by the decoding acceptance tests: header blocks in
// exactly-sized own buffers (so a release shows as data == NULL), the
// decode-and-compare step through wsp_dec_hdr, and byte-run builders.
#ifndef CONF_DECODE_SUPPORT_H
#define CONF_DECODE_SUPPORT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

namespace wsp_test {

// Text and NUL.
inline Bytes z(const char *s) {
    Bytes b = text_bytes(s);
    b.push_back(0);
    return b;
}

inline Bytes rep(char c, size_t n) { return Bytes(n, static_cast<uint8_t>(c)); }

// A Value-length for n octets (n below 16384): one octet up to 30, else 31
// and a uintvar.
inline Bytes value_length(size_t n) {
    if (n <= 30) return bytes({static_cast<int>(n)});
    Bytes b = bytes({0x1F});
    if (n >= 128) b.push_back(static_cast<uint8_t>(0x80 | (n >> 7)));
    b.push_back(static_cast<uint8_t>(n & 0x7F));
    return b;
}

// Content-Length 5, used after a dropped header to show that decoding went
// on right behind the dropped value.
inline const Bytes kTail = bytes({0x8D, 0x85});
inline const std::string kTailLine = "content-length:5\n";

inline std::string printable(const std::string &s) {
    std::string o;
    for (unsigned char c : s) {
        if (c >= 32 && c < 127 && c != '\\') {
            o += static_cast<char>(c);
        } else {
            char t[8];
            std::snprintf(t, sizeof t, "\\x%02X", c);
            o += t;
        }
    }
    return o;
}

// A header block in a calloc'ed block of exactly its size, owned by the
// library's rules (flags clear), so that a release shows as data == NULL.
struct Block {
    wsp_buffer buf{};
    wsp_hdrbuf hdr{};
    explicit Block(const Bytes &b) {
        buf.data = static_cast<unsigned char *>(std::calloc(b.empty() ? 1 : b.size(), 1));
        if (!b.empty()) std::memcpy(buf.data, b.data(), b.size());
        buf.size = buf.length = static_cast<uint16_t>(b.size());
        hdr.length = static_cast<uint16_t>(b.size());
        hdr.buffer = &buf;
    }
    ~Block() { std::free(buf.data); }
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;
};

struct Decoded {
    int16_t status = 0;
    std::string text;    // NUL-terminated text from the first octet, within size
    std::string counted; // the `length` octets from the first octet, within size
    uint16_t length = 0;
    bool released = false;
};

inline Decoded decode(const Bytes &block, int version = 4, uint16_t out_size = 1024,
               const wsp_dec_page_list *pages = nullptr, const std::string &before = "") {
    Block b(block);
    OutBuffer out(out_size);
    std::memcpy(out->data, before.data(), std::min<size_t>(before.size(), out_size));
    out->length = static_cast<uint16_t>(before.size());
    Decoded d;
    d.status = static_cast<int16_t>(wsp_dec_hdr(&b.hdr, out.get(), pages, version));
    d.text = out.text();
    d.length = out->length;
    d.counted = std::string(reinterpret_cast<const char *>(out->data), std::min(out->length, out->size));
    d.released = b.buf.data == nullptr;
    return d;
}

inline ::testing::AssertionResult Lines(const Bytes &block, const std::string &expected, int version = 4,
                                 const wsp_dec_page_list *pages = nullptr) {
    Decoded d = decode(block, version, 1024, pages);
    if (d.status != WSP_OK) return ::testing::AssertionFailure() << "status " << d.status;
    if (d.released) return ::testing::AssertionFailure() << "block released";
    if (d.text != expected)
        return ::testing::AssertionFailure() << "text \"" << printable(d.text) << "\", expected \""
                                             << printable(expected) << "\"";
    if (d.length != expected.size())
        return ::testing::AssertionFailure() << "length " << d.length << ", expected " << expected.size();
    return ::testing::AssertionSuccess();
}

// The header is dropped and decoding goes on right behind its value.
inline ::testing::AssertionResult Dropped(const Bytes &header, int version = 4) {
    return Lines(cat({header, kTail}), kTailLine, version);
}

} // namespace wsp_test

#endif

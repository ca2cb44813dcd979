// Helpers shared by the header block decoding tests: encoded blocks in
// calloc'ed buffers of exactly their size, one wsp_dec_hdr call with its
// outcome, text and application-header octets, and the code pages the
// page tests decode with.
#ifndef HEADER_BLOCK_DECODE_SUPPORT_H
#define HEADER_BLOCK_DECODE_SUPPORT_H

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>

#include "decode/decode.h"
#include "wsp_test_support.h"

namespace header_block_decode {

using wsp_test::Bytes;
using wsp_test::cat;
using wsp_test::OutBuffer;

// An encoded block in a calloc'ed buffer of exactly offset + its size
// octets, so that any read past the block's end is caught.
class Block {
  public:
    explicit Block(const Bytes &b, uint16_t offset = 0) {
        std::memset(&buf_, 0, sizeof buf_);
        size_t total = offset + b.size();
        buf_.data = static_cast<unsigned char *>(std::calloc(total ? total : 1, 1));
        if (!b.empty()) std::memcpy(buf_.data + offset, b.data(), b.size());
        buf_.size = static_cast<uint16_t>(total);
        buf_.offset = offset;
        hdr_.length = static_cast<uint16_t>(b.size());
        hdr_.buffer = &buf_;
    }
    ~Block() { std::free(buf_.data); }
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;

    wsp_hdrbuf *get() { return &hdr_; }
    wsp_buffer &buffer() { return buf_; }
    bool released() const { return buf_.data == nullptr; }

  private:
    wsp_buffer buf_;
    wsp_hdrbuf hdr_;
};

struct Outcome {
    int status;
    std::string text;
    uint16_t length;
    bool released;
};

inline Outcome run(const Bytes &in, int version = 4, const wsp_dec_page_list *pages = nullptr,
                   uint16_t out_size = 512) {
    Block block(in);
    OutBuffer out(out_size);
    int status = wsp_dec_hdr(block.get(), out.get(), pages, version);
    return {status, out.text(), out->length, block.released()};
}

inline Bytes str0(const std::string &s) {
    Bytes b(s.begin(), s.end());
    b.push_back(0);
    return b;
}

// An application header with a text value.
inline Bytes app(const std::string &name, const std::string &value) { return cat({str0(name), str0(value)}); }

// Pages for the code-page tests: page 2 names codes 5 and 6 and has a
// named end row; page 0x80 has an unnamed end row; page 3 claims 129 rows.
inline const wsp_code_entry kPage2Rows[] = {
    {"X-Page-A", 0x105}, // compared on its low 8 bits: code 5
    {nullptr, 6},
    {"x-page-b", 7},
    {"end", 0},
};
inline const wsp_code_entry kPage80Rows[] = {
    {"X-Eighty", 1},
    {nullptr, 0},
};
inline const wsp_code_entry kLongNameRows[] = {
    {"x-a-very-long-page-header-name-of-40-chars", 1},
    {nullptr, 0},
};
inline const wsp_dec_page kPages[] = {
    {2, 3, kPage2Rows},
    {0x80, 1, kPage80Rows},
    {3, 129, kPage2Rows},
    {4, 1, kLongNameRows},
};
inline const wsp_dec_page_list kPageList = {4, kPages};

// One cut of a block: its length, the status and, on success, the text.
struct CutCase {
    size_t n;
    int status;
    const char *text; // expected text on success
};

} // namespace header_block_decode

#endif

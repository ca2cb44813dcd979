// Helpers of the unit tests, which call internal functions through the
// static archive:
//  - wsp_test: one well-known header value decoder called the way the block
//    decoder calls it (code, cursor, output, remaining) over an exact-size
//    copy of its input, and the byte-run builders of encoded values;
//  - header_block_decode: blocks for wsp_dec_hdr in buffers of exactly their
//    size, one call with its outcome, and the code pages of the page tests;
//  - param_decode: the result of one parameter decoder call and the value
//    area the decoders write into;
//  - wsp_test again: one well-known header value encoder called on a
//    writable copy of its value text.
#ifndef WSP_UNIT_SUPPORT_H
#define WSP_UNIT_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "decode/decode.h"
#include "encode/encode.h"
#include "wsp_test_support.h"

namespace wsp_test {

using HeaderDecoder = wsp_header_decoder;

// The one call every helper below goes through.  `remaining` defaults to the
// input's size: the input block ends exactly where the value's octets end.
// A smaller count keeps the decoder inside the first `remaining` octets.
inline int call_decoder(HeaderDecoder fn, uint32_t code, const Bytes &in, wsp_buffer *out, int remaining,
                        size_t *moved) {
    InBytes input(in);
    const uint8_t *cursor = input.data();
    uint16_t rem = remaining < 0 ? input.size() : static_cast<uint16_t>(remaining);
    int status = fn(code, &cursor, out, rem);
    *moved = static_cast<size_t>(cursor - input.data());
    return status;
}

struct DecodeResult {
    int status;
    std::string text; // the whole output text afterwards
    long moved;       // how far the cursor moved
};

// Decodes `in` into an existing output buffer.
inline DecodeResult decode_into(HeaderDecoder fn, uint32_t code, const Bytes &in, OutBuffer &out,
                                int remaining = -1) {
    size_t moved = 0;
    int status = call_decoder(fn, code, in, out.get(), remaining, &moved);
    return {status, out.text(), static_cast<long>(moved)};
}

// Decodes `in` into a fresh output buffer of `out_size` octets.
inline DecodeResult decode(HeaderDecoder fn, uint32_t code, const Bytes &in, uint16_t out_size = 512,
                           int remaining = -1) {
    OutBuffer out(out_size);
    return decode_into(fn, code, in, out, remaining);
}

// The narrower result for tests that keep the output buffer and read its
// text themselves: the status and the octets the cursor moved (0: left
// where it was).
struct DecodeRun {
    int status;
    size_t moved;
};

// Decodes `value` with the decoder seeing exactly its octets.
inline DecodeRun decode_value(HeaderDecoder fn, uint32_t code, const Bytes &value, OutBuffer &out) {
    size_t moved = 0;
    int status = call_decoder(fn, code, value, out.get(), -1, &moved);
    return {status, moved};
}

// The same with a smaller remaining count than the octets at hand: the
// decoder must stay inside the first `remaining` octets.
inline DecodeRun decode_value_within(HeaderDecoder fn, uint32_t code, const Bytes &value, uint16_t remaining,
                                     OutBuffer &out) {
    size_t moved = 0;
    int status = call_decoder(fn, code, value, out.get(), remaining, &moved);
    return {status, moved};
}

// Decodes a whole header block with wsp_dec_hdr (no page list) and
// returns its status and the output text.  The block's buffer is marked
// external, so a failure path cannot free the test's copy.
inline DecodeResult decode_block(const Bytes &block, int version = 4, uint16_t out_size = 512) {
    InBytes input(block);
    wsp_buffer in{};
    in.data = input.mutable_data();
    in.size = input.size();
    in.length = input.size();
    in.flags = WSP_BUFFER_EXTERNAL;
    wsp_hdrbuf holder{};
    holder.length = input.size();
    holder.buffer = &in;
    OutBuffer out(out_size);
    int status = wsp_dec_hdr(&holder, out.get(), nullptr, version);
    return {status, out.text(), 0};
}

// An output buffer that already holds `text` (length set to match).
inline void prefill(OutBuffer &out, const char *text) {
    size_t n = std::strlen(text);
    std::memcpy(out->data, text, n);
    out->data[n] = 0;
    out->length = static_cast<uint16_t>(n);
}

// The uintvar octets of v.
inline Bytes uintvar(uint32_t v) {
    Bytes groups;
    do {
        groups.insert(groups.begin(), static_cast<uint8_t>(v & 0x7F));
        v >>= 7;
    } while (v != 0);
    for (size_t i = 0; i + 1 < groups.size(); ++i) groups[i] |= 0x80;
    return groups;
}

// A Length-quote form: 0x1F, the uintvar of the body's size, the body.
inline Bytes quoted_length(const Bytes &body) {
    return cat({bytes({0x1F}), uintvar(static_cast<uint32_t>(body.size())), body});
}

// A Short-length form: the body's size (must be 30 or less), the body.
inline Bytes short_length(const Bytes &body) {
    return cat({bytes({static_cast<int>(body.size())}), body});
}

// A text of n copies of c.
inline std::string repeated(size_t n, char c) { return std::string(n, c); }

} // namespace wsp_test

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

// An application header with a text value.
inline Bytes app(const std::string &name, const std::string &value) {
    return cat({wsp_test::cstr(name), wsp_test::cstr(value)});
}

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

namespace param_decode {

using wsp_test::Bytes;

struct Result {
    int status;
    std::string text;
    long moved;
};

// A 200-octet zeroed value area preset with `before`.
struct Area {
    char text[WSP_TEXT_AREA] = {};
    explicit Area(const std::string &before = "") { std::memcpy(text, before.c_str(), before.size() + 1); }
};

} // namespace param_decode

namespace wsp_test {

// What one value encoder call left: its status, the octets written (hex)
// and the output's length.  A failed write may count octets that did not
// fit; the hex then reads "length past size" instead of looking past the
// block.
struct EncodeResult {
    int status;
    std::string hex;
    uint16_t length;
};

// Calls `fn` with the code, a writable copy of `value`, a fresh output of
// exactly `size` octets and the version index.
inline EncodeResult encode_value(wsp_header_encoder fn, uint8_t code, const std::string &value, uint16_t size,
                                 uint8_t version = 3) {
    TextCopy text(value);
    OutBuffer out(size);
    int status = fn(code, text.get(), out.get(), version);
    if (out->length > out->size) return {status, "length past size", out->length};
    return {status, out.written_hex(), out->length};
}

} // namespace wsp_test

#endif

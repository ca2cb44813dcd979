// Calls one well-known header value decoder the way the block decoder does
// (code, cursor, output, remaining) over an exact-size copy of the input, so
// that any read past the value's last octet is caught by ASan, and reports
// the status, how far the cursor moved and, where asked, the output text.
#ifndef WSP_TEST_DECODER_HARNESS_H
#define WSP_TEST_DECODER_HARNESS_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "decode/decode.h"
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

// A NUL-terminated text's octets.
inline Bytes cstr(const std::string &s) {
    Bytes b(s.begin(), s.end());
    b.push_back(0);
    return b;
}

// A text of n copies of c.
inline std::string repeated(size_t n, char c) { return std::string(n, c); }

} // namespace wsp_test

#endif

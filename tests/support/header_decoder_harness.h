// Calls one well-known header value decoder on an exact-size copy of the
// value octets and reports its status, how far it moved the cursor and what
// the output text holds afterwards.
#ifndef WSP_HEADER_DECODER_HARNESS_H
#define WSP_HEADER_DECODER_HARNESS_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "decode/decode.h"
#include "wsp_test_support.h"

namespace wsp_test {

struct DecodeRun {
    int status;
    size_t moved; // octets the cursor moved (0: left where it was)
};

// The decoder sees exactly `value` (remaining = its size), so any read past
// the last octet is caught by ASan.
inline DecodeRun decode_value(wsp_header_decoder decoder, uint32_t code, const Bytes &value, OutBuffer &out) {
    InBytes in(value);
    const uint8_t *p = in.data();
    int status = decoder(code, &p, out.get(), in.size());
    return {status, static_cast<size_t>(p - in.data())};
}

// The same with a smaller remaining count than the octets at hand: the
// decoder must stay inside the first `remaining` octets.
inline DecodeRun decode_value_within(wsp_header_decoder decoder, uint32_t code, const Bytes &value,
                                     uint16_t remaining, OutBuffer &out) {
    InBytes in(value);
    const uint8_t *p = in.data();
    int status = decoder(code, &p, out.get(), remaining);
    return {status, static_cast<size_t>(p - in.data())};
}

// A text of n copies of c.
inline std::string repeated(size_t n, char c) { return std::string(n, c); }

// The octets of a NUL-terminated text value.
inline Bytes text_value(const std::string &s) {
    Bytes b(s.begin(), s.end());
    b.push_back(0);
    return b;
}

} // namespace wsp_test

#endif

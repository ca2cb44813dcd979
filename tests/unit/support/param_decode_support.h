// Helpers shared by the parameter decoding tests: the result of one call
// (status, text, how far the cursor moved), the 200-octet value area the
// decoders write into, and NUL-terminated texts.
#ifndef PARAM_DECODE_SUPPORT_H
#define PARAM_DECODE_SUPPORT_H

#include <cstring>
#include <string>

#include "decode/decode.h"
#include "wsp_test_support.h"

namespace param_decode {

using wsp_test::Bytes;

struct Result {
    int status;
    std::string text;
    long moved;
};

// A 200-octet zeroed value area preset with `before`.
struct Area {
    char text[WSP_DEC_VALUE_AREA] = {};
    explicit Area(const std::string &before = "") { std::memcpy(text, before.c_str(), before.size() + 1); }
};

inline Bytes str0(const std::string &s) {
    Bytes b(s.begin(), s.end());
    b.push_back(0);
    return b;
}

} // namespace param_decode

#endif

// Content-type decoding over arbitrary octets.
#include <cstdlib>
#include <cstring>

#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size > 2048) return 0;
    auto *copy = static_cast<uint8_t *>(std::malloc(size ? size : 1));
    std::memcpy(copy, data, size);
    char text[WSP_CONTENT_TYPE_SIZE];
    const uint8_t *cursor = copy;
    wsp_decode_content(&cursor, text, static_cast<uint16_t>(size));
    std::free(copy);
    return 0;
}

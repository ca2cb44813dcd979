// Content-type encoding of arbitrary text under each version.
#include <cstdlib>
#include <cstring>

#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 1 || size > 1024) return 0;
    static const char *const versions[] = {"1.1", "1.2", "1.3", "1.4"};
    const char *version = versions[data[0] & 3];
    char *text = static_cast<char *>(std::malloc(size));
    std::memcpy(text, data + 1, size - 1);
    text[size - 1] = '\0';
    wsp_buffer out{};
    const uint16_t out_size = static_cast<uint16_t>(1 + (data[0] >> 2) * 4);
    out.data = static_cast<unsigned char *>(std::calloc(out_size, 1));
    out.size = out_size;
    wsp_encode_content(text, &out, version);
    std::free(out.data);
    std::free(text);
    return 0;
}

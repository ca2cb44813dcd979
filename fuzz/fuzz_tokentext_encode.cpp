// The Token-text writer: the first three octets pick the output's offset,
// size and length already written; the rest is the text.  The output's
// block is exactly offset + size octets (the region the writer may use).
// Success must add the text and its NUL; a failure must leave the length.
#include <cstdlib>
#include <cstring>

#include "harness.h"
#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 3 || size > 1024) return 0;
    const uint16_t offset = data[0] & 7;
    const uint16_t out_size = data[1];
    const uint16_t length = out_size ? data[2] % (out_size + 1) : 0;
    data += 3;
    size -= 3;

    char *text = static_cast<char *>(std::malloc(size + 1));
    std::memcpy(text, data, size);
    text[size] = '\0';
    const size_t text_len = std::strlen(text);

    const size_t block = static_cast<size_t>(offset) + out_size;
    wsp_buffer out{};
    out.data = static_cast<unsigned char *>(std::malloc(block ? block : 1));
    std::memset(out.data, 0xEE, block ? block : 1);
    out.size = out_size;
    out.offset = offset;
    out.length = length;

    if (fuzz_ok(wsp_tokentext_encode_buff(text, &out))) {
        fuzz_check(out.length == length + text_len + 1);
        fuzz_check(std::memcmp(out.data + offset + length, text, text_len + 1) == 0);
    } else {
        fuzz_check(out.length == length);
    }
    std::free(out.data);
    std::free(text);
    return 0;
}

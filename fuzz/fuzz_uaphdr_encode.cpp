// Profile header encoding: the first four octets pick the block buffer's
// size, the length already in it, whether the caller owns its data
// (external) and whether it has data at all; the rest is the profile text,
// handed over in a block of exactly its length (it is not NUL-terminated).
// The block buffer is exactly `size` octets.  Afterwards the holder and the
// buffer must agree, and a replaced buffer must be the library's.
#include <cstdlib>
#include <cstring>

#include "harness.h"
#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 4 || size > 2048) return 0;
    const uint16_t buf_size = static_cast<uint16_t>(data[0] | ((data[1] & 1) << 8));
    const uint16_t buf_length = buf_size ? data[2] % (buf_size + 1) : 0;
    const bool external = (data[3] & 1) != 0;
    const bool no_data = (data[3] & 6) == 6;
    data += 4;
    size -= 4;

    auto *text = static_cast<unsigned char *>(std::malloc(size ? size : 1));
    if (size) std::memcpy(text, data, size);
    wsp_uaprof profile{};
    profile.text = text;
    profile.length = static_cast<uint16_t>(size);

    wsp_buffer buf{};
    unsigned char *original = nullptr;
    if (!no_data) {
        original = static_cast<unsigned char *>(std::malloc(buf_size ? buf_size : 1));
        std::memset(original, 0x42, buf_size ? buf_size : 1);
    }
    buf.data = original;
    buf.size = buf_size;
    buf.length = no_data ? 0 : buf_length;
    buf.flags = external ? WSP_BUFFER_EXTERNAL : 0;
    wsp_hdrbuf holder{buf.length, &buf};
    const uint16_t before = buf.length;

    wsp_uaphdr_encode(&holder, &profile);

    fuzz_check(buf.length <= buf.size);
    if (holder.length != before) fuzz_check(holder.length == buf.length && buf.length > before);
    if (buf.data != original) {
        // A larger buffer replaced the old one: the old data was freed unless
        // the caller owns it.
        fuzz_check(buf.offset == 0 && buf.flags == 0 && holder.length == buf.length);
        std::free(buf.data);
        if (external || original == nullptr) std::free(original);
    } else {
        std::free(original);
    }
    std::free(text);
    return 0;
}

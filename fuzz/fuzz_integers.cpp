// The uintvar and Short-integer readers and writers.  The input is read as
// a uintvar (and as one of each exact length) within exactly its size, and
// its first octets are read as Short-integers; the 32-bit value built from
// the first four octets is written both ways and read back, which must
// give it again.
#include <cstdlib>
#include <cstring>

#include "harness.h"
#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size > 64) return 0;
    auto *in = static_cast<uint8_t *>(std::malloc(size ? size : 1));
    if (size) std::memcpy(in, data, size);
    const uint16_t avail = static_cast<uint16_t>(size);

    // Readers over exactly `size` octets (an empty input is handed as one
    // octet with no octets available).
    const uint8_t *cursor = in;
    uint32_t value = 0;
    if (size != 0 && fuzz_ok(wsp_dec_varint(&cursor, &value, avail))) {
        const size_t used = static_cast<size_t>(cursor - in);
        fuzz_check(used >= 1 && used <= 5 && used <= size);
        // The exact-length reader agrees with it for that length only.
        for (uint16_t want = 1; want <= 6; ++want) {
            const uint8_t *c = in;
            uint32_t v = 0;
            const int status = wsp_dec_varintLen(&c, want, &v, avail);
            if (want == used) {
                fuzz_check(fuzz_ok(status) && v == value && c == cursor);
            } else {
                fuzz_check(status == WSP_VARINTLEN_FAIL && c == in);
            }
        }
    } else {
        fuzz_check(cursor == in);
    }
    for (size_t i = 0; i < size && i < 4; ++i) {
        const uint8_t *c = in + i;
        uint8_t v = 0;
        if (fuzz_ok(wsp_shortint_direct_decode(&c, &v))) {
            fuzz_check(c == in + i + 1 && v == (in[i] & 0x7F) && in[i] >= 0x80);
        } else {
            fuzz_check(c == in + i && in[i] < 0x80);
        }
    }

    // Writers: the value built from the first four octets.
    uint32_t v = 0;
    for (size_t i = 0; i < size && i < 4; ++i) v = (v << 8) | in[i];
    auto *out = static_cast<uint8_t *>(std::malloc(5)); // a uintvar takes at most 5 octets
    uint8_t *w = out;
    uint8_t count = 0;
    fuzz_check(fuzz_ok(wsp_enc_varint(v, &w, &count)));
    fuzz_check(count >= 1 && count <= 5 && w == out + count);
    const uint8_t *r = out;
    uint32_t back = 0;
    fuzz_check(fuzz_ok(wsp_dec_varint(&r, &back, count)) && back == v && r == out + count);
    r = out;
    fuzz_check(fuzz_ok(wsp_dec_varintLen(&r, count, &back, count)) && back == v && r == out + count);
    std::free(out);

    auto *octet = static_cast<uint8_t *>(std::malloc(1));
    w = octet;
    if (fuzz_ok(wsp_short_int_encodeto(&w, v))) {
        fuzz_check((v & 0x80) == 0 && w == octet + 1 && *octet == ((v & 0x7F) | 0x80));
        const uint8_t *c = octet;
        uint8_t s = 0;
        fuzz_check(fuzz_ok(wsp_shortint_direct_decode(&c, &s)) && s == (v & 0x7F));
    } else {
        fuzz_check((v & 0x80) != 0 && w == octet);
    }
    std::free(octet);
    std::free(in);
    return 0;
}

// The second half of push decoding on its own: the first octets pick
// whether the PDU is external, the headers length (16 bits) and how many
// of the PDU's octets precede the content type (0..3); the rest is the PDU.
// The PDU block is exactly its size and `remaining` counts exactly the
// octets from the content type to its end.
#include <cstdlib>
#include <cstring>

#include "harness.h"
#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 4 || size > 4096) return 0;
    const bool external = (data[0] & 1) != 0;
    const uint16_t headers_length = static_cast<uint16_t>(data[1] | (data[2] << 8));
    const uint16_t prefix = data[3] & 3;
    data += 4;
    size -= 4;

    if (prefix > size) return 0;
    wsp_buffer pdu = fuzz_pdu(data, size, external);
    unsigned char *const original = pdu.data;

    wsp_buffer spare{};
    wsp_push_result result{};
    result.body.body = external ? &spare : nullptr;
    const uint8_t *cursor = pdu.data + prefix;
    const uint8_t *const start = cursor;
    const int status = wsp_decode_hdentity(&cursor, &pdu, &result, &result.body, headers_length,
                                           static_cast<uint16_t>(size - prefix));
    fuzz_check(cursor == start);
    fuzz_check(pdu.data == original);
    if (fuzz_ok(status)) {
        fuzz_check(std::memchr(result.body.content_type, 0, WSP_CONTENT_TYPE_SIZE) != nullptr);
        if (external) {
            fuzz_check(spare.data != nullptr && spare.offset == 0 && spare.length == spare.size);
            fuzz_check(result.headers.buffer == nullptr || result.headers.buffer == &spare);
        } else {
            fuzz_check(result.body.body == &pdu);
            fuzz_check(result.headers.buffer == nullptr || result.headers.buffer == &pdu);
        }
    }
    std::free(spare.data);
    std::free(original);
    return 0;
}

// The second half of push decoding on its own: the first octets pick
// whether the PDU is external, the headers length (16 bits) and how many
// octets precede the content type in the PDU; the rest follows as the
// content type, headers and data.  The PDU block is exactly its size and
// `remaining` counts exactly the octets from the content type to its end.
#include <cstdlib>
#include <cstring>

#include "tarnwspencdec.h"

namespace {

void check(bool ok) {
    if (!ok) __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 4 || size > 4096) return 0;
    const bool external = (data[0] & 1) != 0;
    const uint16_t headers_length = static_cast<uint16_t>(data[1] | (data[2] << 8));
    const uint16_t prefix = data[3] & 3;
    data += 4;
    size -= 4;

    const size_t total = prefix + size;
    wsp_buffer pdu{};
    pdu.data = static_cast<unsigned char *>(std::malloc(total ? total : 1));
    std::memset(pdu.data, 0x06, prefix);
    if (size) std::memcpy(pdu.data + prefix, data, size);
    pdu.size = static_cast<uint16_t>(total);
    pdu.length = static_cast<uint16_t>(total);
    pdu.flags = external ? WSP_BUFFER_EXTERNAL : 0;
    unsigned char *const original = pdu.data;

    wsp_buffer spare{};
    wsp_push_result result{};
    result.body.body = external ? &spare : nullptr;
    const uint8_t *cursor = pdu.data + prefix;
    const uint8_t *const start = cursor;
    const int status = wsp_decode_hdentity(&cursor, &pdu, &result, &result.body, headers_length,
                                           static_cast<uint16_t>(size));
    check(cursor == start);
    check(pdu.data == original);
    if (static_cast<int16_t>(status) == WSP_OK) {
        check(std::memchr(result.body.content_type, 0, WSP_CONTENT_TYPE_SIZE) != nullptr);
        if (external) {
            check(spare.data != nullptr && spare.offset == 0 && spare.length == spare.size);
            check(result.headers.buffer == nullptr || result.headers.buffer == &spare);
        } else {
            check(result.body.body == &pdu);
            check(result.headers.buffer == nullptr || result.headers.buffer == &pdu);
        }
    }
    std::free(spare.data);
    std::free(original);
    return 0;
}

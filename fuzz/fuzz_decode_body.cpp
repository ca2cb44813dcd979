// Body hand-over after push decoding: the PDU (own when the first octet is
// even, external otherwise) is decoded, and when it carries a body the run
// of headers and data is handed over with wsp_decode_body.  The result
// must own the same octets, moved to the start of their block, with the
// octets after them zeroed when the run is not a whole number of pieces.
#include <cstdlib>
#include <cstring>
#include <vector>

#include "harness.h"
#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 1 || size > 4096) return 0;
    const bool external = (data[0] & 1) != 0;
    wsp_buffer pdu = fuzz_pdu(data, size, external);
    unsigned char *const original = pdu.data;

    wsp_buffer spare{};
    wsp_buffer *spare_ptr = &spare;
    wsp_push_result result{};
    const int pushed = wsp_push_decoding(&pdu, &result, &spare_ptr);

    if (fuzz_ok(pushed) && result.body.body != nullptr) {
        wsp_buffer *source = result.body.body;
        const uint16_t o = source->offset;
        const uint16_t n = source->length;
        // The run lies inside its block: the PDU, or the spare's copy.
        const size_t block = source == &pdu ? size : spare.size;
        fuzz_check(static_cast<size_t>(o) + n <= block);
        const std::vector<uint8_t> run(source->data + o, source->data + o + n);
        std::vector<char> content_type(result.body.content_type, result.body.content_type + WSP_CONTENT_TYPE_SIZE);

        wsp_body_result body;
        std::memset(&body, 0xCD, sizeof body);
        fuzz_check(fuzz_ok(wsp_decode_body(&result.body, &body)));
        fuzz_check(result.body.body == nullptr);
        fuzz_check(body.body.data == source->data && body.body.offset == 0 && body.body.flags == 0);
        fuzz_check(body.body.size == n && body.body.length == n);
        fuzz_check(std::strcmp(body.content_type, content_type.data()) == 0);
        fuzz_check(n == 0 || std::memcmp(body.body.data, run.data(), n) == 0);
        if (o != 0 && n % o != 0) {
            for (uint16_t i = 0; i < o; ++i) fuzz_check(body.body.data[n + i] == 0);
        }
        // The result owns the block now (the spare's copy, or the own PDU).
        if (body.body.data != original) std::free(body.body.data);
    } else if (spare.data != nullptr) {
        std::free(spare.data); // a copy of the headers alone
    }
    if (pdu.data != nullptr) std::free(pdu.data); // NULL when HeadersLen 0 freed an own PDU
    return 0;
}

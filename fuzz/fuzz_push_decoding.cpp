// Push PDU decoding, own (first octet even) or external PDU buffers, then the
// header block and body of the result.
#include <cstdlib>
#include <cstring>

#include "harness.h"
#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 1 || size > 4096) return 0;
    const bool external = (data[0] & 1) != 0;
    wsp_buffer pdu = fuzz_pdu(data, size, external);

    wsp_buffer spare{};
    wsp_buffer *spare_ptr = &spare;
    wsp_push_result result{};
    if (wsp_push_decoding(&pdu, &result, &spare_ptr) == WSP_OK && result.headers.buffer != nullptr) {
        char text[1024] = {};
        wsp_buffer out{};
        out.data = reinterpret_cast<unsigned char *>(text);
        out.size = sizeof text;
        wsp_hdrbuf headers = result.headers;
        wsp_buffer copy = *headers.buffer;
        copy.flags = WSP_BUFFER_EXTERNAL; // keep the data for the body below
        headers.buffer = &copy;
        wsp_dec_hdr(&headers, &out, nullptr, 4);
    }
    wsp_body_result body{};
    if (result.body.body != nullptr) wsp_decode_body(&result.body, &body);
    if (spare.data != nullptr) std::free(spare.data);
    if (pdu.data != nullptr && pdu.data != spare.data) std::free(pdu.data);
    return 0;
}

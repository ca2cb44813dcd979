// Header block decoding: the first octet picks the version and the output
// size, the rest is the block.  A fixed page list is offered on every third
// input so that code-page headers are walked too.
#include <cstdlib>
#include <cstring>

#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2 || size > 4096) return 0;
    const int version = 1 + (data[0] & 3);
    const uint16_t out_size = static_cast<uint16_t>(1 + (data[1] % 2) * 400 + data[0]);
    data += 2;
    size -= 2;

    wsp_buffer in{};
    in.data = static_cast<unsigned char *>(std::malloc(size ? size : 1));
    std::memcpy(in.data, data, size);
    in.size = static_cast<uint16_t>(size);
    wsp_hdrbuf block{static_cast<uint16_t>(size), &in};

    wsp_buffer out{};
    out.data = static_cast<unsigned char *>(std::calloc(out_size, 1));
    out.size = out_size;

    static const wsp_code_entry rows[] = {{"x-one", 0x01}, {"x-two", 0x02}, {nullptr, 0x03}, {"end", 0}};
    static const wsp_dec_page pages[] = {{0x10, 3, rows}, {0x20, 200, rows}};
    static const wsp_dec_page_list list{2, pages};
    const wsp_dec_page_list *pl = (size % 3 == 0) ? &list : nullptr;

    wsp_dec_hdr(&block, &out, pl, version);
    std::free(in.data); // freed by the library on most failures (then NULL)
    std::free(out.data);
    return 0;
}

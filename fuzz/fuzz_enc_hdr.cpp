// Header block encoding of arbitrary text: the first octet picks the version
// and the output size; the text is split into a page-1 record and, on odd
// inputs, an extension page record.
#include <cstdlib>
#include <cstring>

#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 1 || size > 4096) return 0;
    static const char *const versions[] = {"1.1", "1.2", "1.3", "1.4", "2.0"};
    const char *version = versions[data[0] % 5];
    const uint16_t out_size = static_cast<uint16_t>(16 + data[0] * 8);
    data += 1;
    size -= 1;

    char *text = static_cast<char *>(std::malloc(size + 1));
    std::memcpy(text, data, size);
    text[size] = '\0';
    const size_t half = size / 2;
    char *second = static_cast<char *>(std::malloc(size - half + 1));
    std::memcpy(second, data + half, size - half);
    second[size - half] = '\0';

    static const wsp_code_entry names[] = {{"x-a", 1}, {"x-b", 2}};
    wsp_hdr_page pages[2] = {};
    pages[0].page = 1;
    pages[0].text.data = reinterpret_cast<unsigned char *>(text);
    pages[0].text.size = static_cast<uint16_t>(size + 1);
    pages[0].text.length = static_cast<uint16_t>(size);
    pages[1].page = 0x20;
    pages[1].name_count = 2;
    pages[1].names = names;
    pages[1].text.data = reinterpret_cast<unsigned char *>(second);
    pages[1].text.size = static_cast<uint16_t>(size - half + 1);
    pages[1].text.length = static_cast<uint16_t>(size - half);
    wsp_hdr_page_list list{static_cast<uint16_t>((size & 1) ? 2 : 1), pages};

    wsp_buffer out{};
    out.data = static_cast<unsigned char *>(std::calloc(out_size, 1));
    out.size = out_size;
    wsp_hdrbuf holder{0, &out};
    wsp_enc_hdr(&list, &holder, version);
    std::free(out.data); // NULL after a failure
    std::free(text);
    std::free(second);
    return 0;
}

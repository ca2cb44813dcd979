// Header block encoding over several page records: the first octet picks
// the version and the output size; the text is cut at 0xFF octets into up
// to four records, and the first octet of each record picks its page
// (page 1, a short-cut page 0x10..0x1F, a page above 0x1F, or an invalid
// one) and its name table (none, a few names, a NULL name, or more than
// 128 rows).  Every text block is exactly its length plus the NUL, the
// output block exactly its size.
#include <array>
#include <cstdlib>
#include <cstring>

#include "harness.h"
#include "tarnwspencdec.h"

namespace {

constexpr int kMaxRecords = 4;

// A name table of more than 128 rows: every line of its page is skipped.
const wsp_code_entry *table_rows() {
    static const auto rows = [] {
        std::array<wsp_code_entry, 130> r{};
        for (uint32_t i = 0; i < r.size(); ++i) r[i] = {"x-many", i};
        return r;
    }();
    return rows.data();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 1 || size > 4096) return 0;
    static const char *const versions[] = {"1.1", "1.2", "1.3", "1.4", "2.0"};
    static const wsp_code_entry names[] = {{"X-Alpha", 0x01}, {"x-beta", 0x02}, {"X-Gamma", 0x7F},
                                           {"X-Delta", 0x80}};
    static const wsp_code_entry with_null[] = {{"X-Alpha", 0x01}, {nullptr, 0x02}};
    static const uint8_t page_numbers[] = {1, 0x10, 0x1F, 0x20, 0x7F, 0x00, 0x80, 0x02};
    const char *version = versions[data[0] % 5];
    const uint16_t out_size = static_cast<uint16_t>(1 + data[0] * 4);
    data += 1;
    size -= 1;

    wsp_hdr_page pages[kMaxRecords] = {};
    char *texts[kMaxRecords] = {};
    uint16_t count = 0;
    size_t at = 0;
    while (count < kMaxRecords && at < size) {
        const uint8_t pick = data[at++];
        size_t end = at;
        while (end < size && data[end] != 0xFF) ++end;
        const size_t len = end - at;
        char *text = static_cast<char *>(std::malloc(len + 1));
        std::memcpy(text, data + at, len);
        text[len] = '\0';
        texts[count] = text;
        wsp_hdr_page &page = pages[count];
        page.page = page_numbers[pick & 7];
        switch ((pick >> 3) & 3) {
        case 0:
            page.name_count = 0;
            break;
        case 1:
            page.name_count = 4;
            page.names = names;
            break;
        case 2:
            page.name_count = 2;
            page.names = with_null;
            break;
        default:
            page.name_count = 129;
            page.names = table_rows();
            break;
        }
        if (page.page == 1 && (pick & 0x40) == 0) {
            page.name_count = 0;
            page.names = nullptr;
        }
        page.text.data = reinterpret_cast<unsigned char *>(text);
        page.text.size = static_cast<uint16_t>(len + 1);
        page.text.length = static_cast<uint16_t>(len);
        ++count;
        at = end + 1;
    }
    wsp_hdr_page_list list{count, pages};

    wsp_buffer out{};
    out.data = static_cast<unsigned char *>(std::calloc(out_size, 1));
    out.size = out_size;
    wsp_hdrbuf holder{0x7777, &out};
    const int status = wsp_enc_hdr(&list, &holder, version);
    if (fuzz_ok(status)) {
        fuzz_check(out.data != nullptr && holder.length == out.length && out.length <= out.size);
    } else {
        fuzz_check(static_cast<int16_t>(status) == WSP_ERR_FAIL && out.data == nullptr && holder.length == 0x7777);
    }
    std::free(out.data);
    for (char *t : texts) std::free(t);
    return 0;
}

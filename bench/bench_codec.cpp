// Throughput of the codec on realistic header blocks: decoding a typical
// response block, encoding a browser's request headers, and splitting a push
// PDU.  Reported as time per block and bytes per second.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tarnwspencdec.h"

namespace {

// A response header block: content-length, date, cache-control, etag,
// last-modified, an application header and accept-ranges.
const std::vector<uint8_t> kResponseBlock = {
    0x8D, 0x02, 0x12, 0x34,                               // content-length 4660
    0x92, 0x04, 0x2E, 0xBC, 0xC8, 0xA1,                   // date
    0x88, 0x80,                                           // cache-control: no-cache
    0x93, '"', 'a', 'b', 'c', '1', '2', '3', '"', 0x00,   // etag
    0x9D, 0x04, 0x2E, 0xBC, 0xC8, 0xA1,                   // last-modified
    'x', '-', 'p', 'o', 'w', 'e', 'r', 'e', 'd', 0x00, 'w', 's', 'p', 0x00,
    0x84, 0x81,                                           // accept-ranges: bytes
    0xA6, 'E', 'x', 'a', 'm', 'p', 'l', 'e', '/', '1', '.', '0', 0x00, // server
};

const char kRequestHeaders[] =
    "Accept: text/html, application/vnd.wap.wmlc, image/gif;q=0.5, */*;q=0.1\n"
    "Accept-Charset: utf-8, iso-8859-1;q=0.5\n"
    "Accept-Language: en, fr;q=0.7\n"
    "User-Agent: Handset/2.0 Browser/1.1\n"
    "Cache-Control: no-cache, max-age=60\n"
    "X-Wap-Profile: http://example.com/profile.rdf\n";

const std::vector<uint8_t> kPushPdu = {
    0x06, 0x05, 0xBE, 0xAF, 0x84, 0xB4, 0x80, // type, HeadersLen, mms-message, app id mms.ua, push-flag
    0x8C, 0x82, 0x98, 'T', 'X', '1', 0x00, 0x8D, 0x92, // an m-notification-ind body
};

void BM_DecodeHeaderBlock(benchmark::State &state) {
    std::vector<uint8_t> block = kResponseBlock;
    std::vector<unsigned char> text(2048);
    for (auto _ : state) {
        wsp_buffer in{};
        in.data = block.data();
        in.size = static_cast<uint16_t>(block.size());
        in.flags = WSP_BUFFER_EXTERNAL;
        wsp_hdrbuf holder{static_cast<uint16_t>(block.size()), &in};
        text[0] = 0;
        wsp_buffer out{};
        out.data = text.data();
        out.size = static_cast<uint16_t>(text.size());
        int status = wsp_dec_hdr(&holder, &out, nullptr, 4);
        benchmark::DoNotOptimize(status);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * block.size()));
}
BENCHMARK(BM_DecodeHeaderBlock);

void BM_EncodeRequestHeaders(benchmark::State &state) {
    std::vector<char> text(sizeof kRequestHeaders);
    // calloc'ed: a failing encoder frees its output data.
    auto *out_data = static_cast<unsigned char *>(std::calloc(1024, 1));
    for (auto _ : state) {
        std::memcpy(text.data(), kRequestHeaders, sizeof kRequestHeaders);
        wsp_hdr_page page{};
        page.page = 1;
        page.text.data = reinterpret_cast<unsigned char *>(text.data());
        page.text.size = static_cast<uint16_t>(text.size());
        page.text.length = static_cast<uint16_t>(text.size() - 1);
        wsp_hdr_page_list list{1, &page};
        wsp_buffer out{};
        out.data = out_data;
        out.size = 1024;
        wsp_hdrbuf holder{0, &out};
        int status = wsp_enc_hdr(&list, &holder, "1.4");
        if (static_cast<int16_t>(status) != WSP_OK) {
            out_data = nullptr; // released by the encoder
            state.SkipWithError("encoding failed");
            break;
        }
    }
    std::free(out_data);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * (sizeof kRequestHeaders - 1)));
}
BENCHMARK(BM_EncodeRequestHeaders);

void BM_PushDecoding(benchmark::State &state) {
    std::vector<uint8_t> pdu = kPushPdu;
    for (auto _ : state) {
        wsp_buffer in{};
        in.data = pdu.data();
        in.size = static_cast<uint16_t>(pdu.size());
        in.length = static_cast<uint16_t>(pdu.size());
        wsp_push_result result{};
        wsp_buffer *spare = nullptr;
        int status = wsp_push_decoding(&in, &result, &spare);
        benchmark::DoNotOptimize(status);
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * pdu.size()));
}
BENCHMARK(BM_PushDecoding);

} // namespace

// The encoder calls the benchmarks time, shared by the timed suite
// (bench_codec) and the fixed-count driver (bench_calls) that instruction
// counters run.
#ifndef BENCH_ENCODE_CALLS_H
#define BENCH_ENCODE_CALLS_H

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tarnwspencdec.h"

namespace bench {

// The largest buffer the library describes: room for any text or block.
inline constexpr uint16_t kBufferSize = 65535;
inline constexpr const char *kEncodeVersion = "1.4";

inline bool succeeded(int status) { return static_cast<int16_t>(status) == WSP_OK; }

// The encoder's output: calloc'ed, since a failing encoder frees it.
struct EncodedOutput {
    unsigned char *data = static_cast<unsigned char *>(std::calloc(kBufferSize, 1));
    wsp_buffer buffer{};

    EncodedOutput() = default;
    EncodedOutput(const EncodedOutput &) = delete;
    EncodedOutput &operator=(const EncodedOutput &) = delete;
    ~EncodedOutput() { std::free(data); }

    wsp_buffer *empty() {
        buffer = wsp_buffer{};
        buffer.data = data;
        buffer.size = kBufferSize;
        return &buffer;
    }
    // After a failure: the encoder may have freed the block.
    void forget_if_released() { data = buffer.data; }
};

// Header lines in a writable copy, for the encoder cuts them in place.
struct WritableLines {
    std::string source;
    std::vector<char> work;

    explicit WritableLines(std::string lines) : source(std::move(lines)), work(source.size() + 1) {}

    wsp_hdr_page fresh_page() {
        std::memcpy(work.data(), source.c_str(), source.size() + 1);
        wsp_hdr_page page{};
        page.page = 1;
        page.text.data = reinterpret_cast<unsigned char *>(work.data());
        page.text.size = static_cast<uint16_t>(work.size());
        page.text.length = static_cast<uint16_t>(source.size());
        return page;
    }
};

// wsp_enc_hdr on a fresh copy of the lines, appending to out.
inline int encode_lines(WritableLines &lines, wsp_buffer *out) {
    wsp_hdr_page page = lines.fresh_page();
    wsp_hdr_page_list pages{1, &page};
    wsp_hdrbuf holder{0, out};
    return wsp_enc_hdr(&pages, &holder, kEncodeVersion);
}

// A push initiator's side: the content type, then the headers behind it.
inline int encode_push(const char *content_type, WritableLines &lines, wsp_buffer *out) {
    int status = wsp_encode_content(content_type, out, kEncodeVersion);
    return succeeded(status) ? encode_lines(lines, out) : status;
}

} // namespace bench

#endif

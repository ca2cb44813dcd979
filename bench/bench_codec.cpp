// The codec's speed on realistic header blocks and on growing blocks.
//
//   decode/<block>          wsp_dec_hdr on a browser request and a server reply
//   decode_push/<message>   wsp_push_decoding, wsp_dec_hdr and wsp_decode_body on
//                           an MMS notification, a service indication and a
//                           provisioning push
//   encode/<block>          wsp_enc_hdr on the text of those blocks
//   encode_push/<message>   wsp_encode_content and wsp_enc_hdr on the text of
//                           those pushes
//   decode_scaling/<n>      wsp_dec_hdr on n octets of distinct headers
//   encode_scaling/<n>      wsp_enc_hdr on n characters of distinct header lines
//
// Each reports the time per call, per_octet (time per input octet) and
// allocs_per_call / alloc_octets_per_call (heap allocations inside the timed
// loop, library and program together).  Every timed call checks its status: a
// failing call stops the benchmark with an error instead of timing nothing,
// and the program then exits with status 1.
//
// Only the public header and the exported functions are used, so that the same
// program can be built against an earlier revision of the library
// (scripts/bench-compare).
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "alloc_counter.h"
#include "encode_calls.h"
#include "inputs.h"
#include "tarnwspencdec.h"

namespace {

using bench::EncodedOutput;
using bench::succeeded;
using bench::WritableLines;
using bench::kBufferSize;

constexpr int kDecodeVersion = 4;

// Set when a benchmark stops on a failing call: the program then exits with
// status 1, so that a short run in CI catches it.
bool any_call_failed = false;

void stop_on_failure(benchmark::State &state, const char *what) {
    any_call_failed = true;
    state.SkipWithError(what);
}

// Heap allocations between construction and report(), per iteration; also
// sets the per-octet time and the bytes-per-second figure.
class CallCounters {
public:
    CallCounters() : start_(bench_alloc_snapshot()) {}

    void report(benchmark::State &state, std::size_t octets) const {
        const bench_alloc_totals end = bench_alloc_snapshot();
        state.counters["allocs_per_call"] =
            benchmark::Counter(static_cast<double>(end.calls - start_.calls), benchmark::Counter::kAvgIterations);
        state.counters["alloc_octets_per_call"] =
            benchmark::Counter(static_cast<double>(end.octets - start_.octets), benchmark::Counter::kAvgIterations);
        state.counters["per_octet"] = benchmark::Counter(
            static_cast<double>(octets), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
        state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(octets));
    }

private:
    bench_alloc_totals start_;
};

// A text buffer for the decoder, emptied before each call.
struct TextOutput {
    std::vector<unsigned char> text = std::vector<unsigned char>(kBufferSize);
    wsp_buffer buffer{};

    wsp_buffer *empty() {
        text[0] = 0;
        buffer = wsp_buffer{};
        buffer.data = text.data();
        buffer.size = kBufferSize;
        return &buffer;
    }
};

int decode_block(std::vector<uint8_t> &block, TextOutput &output) {
    wsp_buffer input{};
    input.data = block.data();
    input.size = static_cast<uint16_t>(block.size());
    input.length = static_cast<uint16_t>(block.size());
    input.flags = WSP_BUFFER_EXTERNAL; // the benchmark's own array: never freed
    wsp_hdrbuf holder{static_cast<uint16_t>(block.size()), &input};
    return wsp_dec_hdr(&holder, output.empty(), nullptr, kDecodeVersion);
}

void run_decode(benchmark::State &state, std::vector<uint8_t> block) {
    TextOutput output;
    CallCounters counters;
    for (auto _ : state) {
        if (!succeeded(decode_block(block, output))) {
            stop_on_failure(state, "wsp_dec_hdr failed");
            break;
        }
        benchmark::DoNotOptimize(output.buffer.length);
    }
    counters.report(state, block.size());
}

// The road of a received push: split the PDU in place, decode its headers,
// hand the body over.  The PDU is copied back first because the body
// hand-over moves the body within the PDU's block.
int decode_push(const bench::PushMessage &message, std::vector<uint8_t> &pdu, TextOutput &output) {
    std::memcpy(pdu.data(), message.pdu.data(), pdu.size());
    wsp_buffer received{};
    received.data = pdu.data();
    received.size = static_cast<uint16_t>(pdu.size());
    received.offset = message.offset;
    received.length = static_cast<uint16_t>(pdu.size() - message.offset);
    wsp_buffer spare_record{};
    wsp_buffer *spare = &spare_record;
    wsp_push_result result{};
    int status = wsp_push_decoding(&received, &result, &spare);
    if (!succeeded(status)) {
        return status;
    }
    // Decoded in place: the block is the benchmark's array.  Marked external
    // so that a failing header decode cannot free it.
    received.flags |= WSP_BUFFER_EXTERNAL;
    status = wsp_dec_hdr(&result.headers, output.empty(), nullptr, kDecodeVersion);
    if (!succeeded(status)) {
        return status;
    }
    wsp_body_result body;
    return wsp_decode_body(&result.body, &body);
}

void run_decode_push(benchmark::State &state, const bench::PushMessage &message) {
    std::vector<uint8_t> pdu = message.pdu;
    TextOutput output;
    CallCounters counters;
    for (auto _ : state) {
        if (!succeeded(decode_push(message, pdu, output))) {
            stop_on_failure(state, "push decoding failed");
            break;
        }
        benchmark::DoNotOptimize(output.buffer.length);
    }
    counters.report(state, message.pdu.size() - message.offset);
}

void run_encode(benchmark::State &state, std::string text) {
    WritableLines lines(std::move(text));
    EncodedOutput output;
    CallCounters counters;
    for (auto _ : state) {
        if (!succeeded(bench::encode_lines(lines, output.empty()))) {
            output.forget_if_released();
            stop_on_failure(state, "wsp_enc_hdr failed");
            break;
        }
        benchmark::DoNotOptimize(output.buffer.length);
    }
    counters.report(state, lines.source.size());
}

// A push initiator's side: the content type, then the headers behind it.
void run_encode_push(benchmark::State &state, const bench::PushMessage &message) {
    WritableLines lines(message.header_lines);
    EncodedOutput output;
    CallCounters counters;
    for (auto _ : state) {
        if (!succeeded(bench::encode_push(message.content_type, lines, output.empty()))) {
            output.forget_if_released();
            stop_on_failure(state, "push encoding failed");
            break;
        }
        benchmark::DoNotOptimize(output.buffer.length);
    }
    counters.report(state, std::strlen(message.content_type) + lines.source.size());
}

void register_all() {
    for (const bench::HeaderText *text : {&bench::kBrowserRequest, &bench::kServerReply}) {
        // The block is what the library itself makes of the text.
        WritableLines lines(text->lines);
        EncodedOutput output;
        wsp_buffer *out = output.empty();
        if (!succeeded(bench::encode_lines(lines, out))) {
            output.forget_if_released();
            std::fprintf(stderr, "cannot encode the %s text\n", text->name);
            std::exit(1);
        }
        std::vector<uint8_t> block(out->data, out->data + out->length);
        benchmark::RegisterBenchmark((std::string("decode/") + text->name).c_str(), run_decode, block);
    }
    for (const bench::PushMessage &message : bench::push_messages()) {
        benchmark::RegisterBenchmark(("decode_push/" + std::string(message.name)).c_str(), run_decode_push,
                                     message);
    }
    for (const bench::HeaderText *text : {&bench::kBrowserRequest, &bench::kServerReply}) {
        benchmark::RegisterBenchmark((std::string("encode/") + text->name).c_str(), run_encode,
                                     std::string(text->lines));
    }
    for (const bench::PushMessage &message : bench::push_messages()) {
        benchmark::RegisterBenchmark(("encode_push/" + std::string(message.name)).c_str(), run_encode_push,
                                     message);
    }
    for (std::size_t octets : bench::kScalingSizes) {
        benchmark::RegisterBenchmark(("decode_scaling/" + std::to_string(octets)).c_str(), run_decode,
                                     bench::distinct_header_block(octets));
    }
    for (std::size_t octets : bench::kScalingSizes) {
        benchmark::RegisterBenchmark(("encode_scaling/" + std::to_string(octets)).c_str(), run_encode,
                                     bench::distinct_header_text(octets));
    }
}

} // namespace

int main(int argc, char **argv) {
    register_all();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return any_call_failed ? 1 : 0;
}

// Runs one encoder benchmark's call a fixed number of times, untimed, for
// instruction counters (valgrind --tool=callgrind, perf stat), whose counts
// the load of a shared machine does not disturb:
//
//   bench_calls encode/browser_request 10000
//   bench_calls encode_push/provisioning 10000
//   bench_calls encode_scaling/2048 1000
//
// The names are those of bench_codec.  Exits with status 1 when a call
// fails or the name is unknown, 2 on a usage error.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "encode_calls.h"
#include "inputs.h"

namespace {

// The push message of that name, or null.
const bench::PushMessage *find_push(const std::string &name) {
    for (const bench::PushMessage &message : bench::push_messages())
        if (name == message.name) return &message;
    return nullptr;
}

// Calls the encoder `count` times on the named input; false when the name
// is unknown or a call fails.
bool run(const std::string &name, unsigned long count) {
    const std::string family = name.substr(0, name.find('/'));
    const std::string input = name.find('/') == std::string::npos ? "" : name.substr(name.find('/') + 1);
    std::string text;
    const bench::PushMessage *push = nullptr;
    if (family == "encode") {
        for (const bench::HeaderText *candidate : {&bench::kBrowserRequest, &bench::kServerReply})
            if (input == candidate->name) text = candidate->lines;
        if (text.empty()) return false;
    } else if (family == "encode_push") {
        push = find_push(input);
        if (push == nullptr) return false;
        text = push->header_lines;
    } else if (family == "encode_scaling") {
        const unsigned long octets = std::strtoul(input.c_str(), nullptr, 10);
        if (octets < 96 || octets > bench::kBufferSize) return false;
        text = bench::distinct_header_text(octets);
    } else {
        return false;
    }

    bench::WritableLines lines(text);
    bench::EncodedOutput output;
    uint32_t written = 0;
    for (unsigned long i = 0; i < count; ++i) {
        wsp_buffer *out = output.empty();
        int status = push != nullptr ? bench::encode_push(push->content_type, lines, out)
                                     : bench::encode_lines(lines, out);
        if (!bench::succeeded(status)) {
            output.forget_if_released();
            return false;
        }
        written += out->length;
    }
    std::printf("%s: %lu calls, %u octets written\n", name.c_str(), count, static_cast<unsigned>(written));
    return true;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s BENCHMARK COUNT\n", argv[0]);
        return 2;
    }
    if (!run(argv[1], std::strtoul(argv[2], nullptr, 10))) {
        std::fprintf(stderr, "%s: %s: unknown benchmark or a failing call\n", argv[0], argv[1]);
        return 1;
    }
    return 0;
}

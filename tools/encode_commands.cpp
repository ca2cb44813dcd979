// encode-headers, encode-content-type and encode-push.
#include <algorithm>
#include <functional>
#include <iostream>
#include <string>

#include "commands.h"
#include "decode_error.h"
#include "diagnostics.h"
#include "library_buffers.h"
#include "pdu_names.h"

namespace wsptool {

namespace {

void print_octets(Streams io, const Octets &octets, bool raw) {
    if (raw)
        io.out.write(reinterpret_cast<const char *>(octets.data()), static_cast<std::streamsize>(octets.size()));
    else
        io.out << format_hex(octets.data(), octets.size());
}

// How a failing line is named, from its 1-based number in the text.
using LineNamer = std::function<std::string(unsigned)>;

// After a failure: the first line whose text, with the lines before it,
// makes the encoder fail is the one to blame (lines before it may matter:
// the encoder remembers the last header it recognised).
// Returns "" when no run of first lines makes it fail.
std::string failing_line(const std::string &lines, const std::string &version, const LineNamer &name) {
    std::string prefix;
    unsigned number = 0;
    size_t start = 0;
    while (start < lines.size()) {
        size_t end = lines.find('\n', start);
        if (end == std::string::npos) end = lines.size();
        ++number;
        prefix.append(lines, start, end - start).append("\n");
        std::string line = lines.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        start = end + 1;
        try {
            encode_header_lines(prefix, version);
        } catch (const LibraryFailure &e) {
            return describe_encode_failure(name(number), line, e.status);
        }
    }
    return "";
}

// encode_header_lines, whose refusal names the line to blame after the
// library's status.
Octets encode_lines_naming_failure(const std::string &lines, const std::string &version, const LineNamer &name) {
    try {
        return encode_header_lines(lines, version);
    } catch (const LibraryFailure &e) {
        const std::string line = failing_line(lines, version, name);
        throw DecodeError(std::string(e.what()) + (line.empty() ? "" : "\nwsptool: " + line));
    }
}

size_t line_count(const std::string &text) {
    return static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
}

} // namespace

int run_encode_headers(const EncodeOptions &options, Streams io) {
    const std::string lines = read_text(options.file, io.in);
    const Octets octets = encode_lines_naming_failure(
        lines, options.version, [](unsigned number) { return "line " + std::to_string(number); });
    print_octets(io, octets, options.raw_out);
    return kExitOk;
}

int run_encode_content_type(const EncodeOptions &options, Streams io) {
    print_octets(io, encode_content_type(options.text, options.version), false);
    return kExitOk;
}

int run_encode_push(const EncodePushOptions &options, Streams io) {
    std::string lines;
    if (!options.headers_file.empty()) {
        lines = read_file(options.headers_file);
        if (!lines.empty() && lines.back() != '\n') lines += '\n';
    }

    // The file's lines come first, then the --header lines.
    const size_t file_lines = line_count(lines);
    for (const std::string &line : options.headers) lines.append(line).append("\n");

    const Octets content_type = encode_content_type(options.content_type, options.version);
    const LineNamer name = [&options, file_lines](unsigned number) {
        if (number <= file_lines) return "line " + std::to_string(number) + " of " + options.headers_file;
        return "--header " + std::to_string(number - file_lines);
    };
    const Octets headers = lines.empty() ? Octets() : encode_lines_naming_failure(lines, options.version, name);
    Octets body;
    if (!options.body_hex.empty())
        body = parse_hex(options.body_hex);
    else if (!options.body_file.empty()) {
        const std::string bytes = options.body_file == "-" ? read_stream(io.in) : read_file(options.body_file);
        body.assign(bytes.begin(), bytes.end());
    }

    Octets pdu;
    if (options.tid >= 0) pdu.push_back(static_cast<uint8_t>(options.tid));
    pdu.push_back(options.confirmed ? kPduConfirmedPush : kPduPush);
    const Octets length = encode_uintvar(static_cast<uint32_t>(content_type.size() + headers.size()));
    pdu.insert(pdu.end(), length.begin(), length.end());
    pdu.insert(pdu.end(), content_type.begin(), content_type.end());
    pdu.insert(pdu.end(), headers.begin(), headers.end());
    pdu.insert(pdu.end(), body.begin(), body.end());
    if (pdu.size() > kMaxOctets)
        throw InputError("the push PDU would have " + std::to_string(pdu.size()) +
                         " octets; the library handles at most 65535");
    print_octets(io, pdu, options.raw_out);
    return kExitOk;
}

} // namespace wsptool

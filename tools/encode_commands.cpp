// encode-headers and encode-content-type.
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "diagnostics.h"
#include "library_buffers.h"
#include "status_names.h"
#include "tarnwspencdec.h"

namespace wsptool {

namespace {

// Room for the encoded octets: the largest buffer the library can describe.
// The library never grows it; a block that does not fit is a failure.
constexpr uint16_t kOutputSize = 0xFFFF;

int codec_failure(Streams io, const char *function, int status) {
    io.err << "wsptool: " << function << " failed: " << status_report(status) << '\n';
    return kExitCodec;
}

void print_octets(Streams io, const uint8_t *data, size_t count, bool raw) {
    if (raw)
        io.out.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(count));
    else
        io.out << format_hex(data, count);
}

// Encodes header lines (all on page 1) into the holder's buffer; returns
// the status.
int encode_lines(const std::string &lines, const std::string &version, wsp_hdrbuf &holder) {
    // The encoder cuts and lower-cases the text in place: it gets a
    // writable, NUL-terminated copy.  All lines go on page 1.
    std::vector<char> writable(lines.begin(), lines.end());
    writable.push_back('\0');
    wsp_hdr_page page{};
    page.page = 1;
    page.text.data = reinterpret_cast<unsigned char *>(writable.data());
    page.text.size = static_cast<uint16_t>(lines.size());
    page.text.length = static_cast<uint16_t>(lines.size());
    page.text.flags = WSP_BUFFER_EXTERNAL;
    wsp_hdr_page_list list{1, &page};
    return wsp_enc_hdr(&list, &holder, version.c_str());
}

// After a failure: the first line whose text, with the lines before it,
// makes the encoder fail is the one to blame (lines before it may matter:
// the encoder remembers the last header it recognised).
void report_failing_line(const std::string &lines, const std::string &version, Streams io) {
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
        OutputBlock out(kOutputSize);
        wsp_hdrbuf holder{0, &out.record()};
        const int status = encode_lines(prefix, version, holder);
        if (!status_ok(status)) {
            print_encode_failure(number, line, status, io.err);
            return;
        }
    }
}

} // namespace

int run_encode_headers(const EncodeOptions &options, Streams io) {
    const std::string lines = read_text(options.file, io.in);
    if (lines.size() > kMaxOctets) {
        io.err << "wsptool: the header text has " << lines.size() << " octets; the library handles at most "
               << kMaxOctets << '\n';
        return kExitCodec;
    }

    OutputBlock out(kOutputSize);
    wsp_hdrbuf holder{0, &out.record()};
    const int status = encode_lines(lines, options.version, holder);
    if (!status_ok(status)) {
        codec_failure(io, "wsp_enc_hdr", status);
        report_failing_line(lines, options.version, io);
        return kExitCodec;
    }

    const wsp_buffer &b = out.record();
    print_octets(io, b.data + b.offset, holder.length, options.raw_out);
    return kExitOk;
}

int run_encode_content_type(const EncodeOptions &options, Streams io) {
    OutputBlock out(kOutputSize);
    const int status = wsp_encode_content(options.text.c_str(), &out.record(), options.version.c_str());
    if (!status_ok(status)) return codec_failure(io, "wsp_encode_content", status);

    const wsp_buffer &b = out.record();
    print_octets(io, b.data + b.offset, b.length, false);
    return kExitOk;
}

} // namespace wsptool

// encode-headers and encode-content-type.
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "library_buffers.h"
#include "status_names.h"
#include "tarnwspencdec.h"

namespace wsptool {

namespace {

// Room for the encoded octets: the largest buffer the library can describe.
// The library never grows it; a block that does not fit is a failure.
constexpr uint16_t kOutputSize = 0xFFFF;

int codec_failure(Streams io, const char *function, int status) {
    io.err << "wsptool: " << function << " failed: " << status_name(status) << '\n';
    return kExitCodec;
}

void print_octets(Streams io, const uint8_t *data, size_t count, bool raw) {
    if (raw)
        io.out.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(count));
    else
        io.out << format_hex(data, count);
}

} // namespace

int run_encode_headers(const EncodeOptions &options, Streams io) {
    const std::string lines = read_text(options.file, io.in);
    if (lines.size() > kMaxOctets) {
        io.err << "wsptool: the header text has " << lines.size() << " octets; the library handles at most "
               << kMaxOctets << '\n';
        return kExitCodec;
    }

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

    OutputBlock out(kOutputSize);
    wsp_hdrbuf holder{0, &out.record()};
    const int status = wsp_enc_hdr(&list, &holder, options.version.c_str());
    if (!status_ok(status)) return codec_failure(io, "wsp_enc_hdr", status);

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

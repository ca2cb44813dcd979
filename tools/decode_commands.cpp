// decode-push, decode-headers and decode-content-type.
#include <cstring>
#include <iterator>
#include <iostream>
#include <string>

#include "commands.h"
#include "diagnostics.h"
#include "explain/block_walk.h"
#include "library_buffers.h"
#include "status_names.h"
#include "tarnwspencdec.h"

namespace wsptool {

namespace {

// Room for the decoded header text: the largest buffer the library can
// describe.  The library never grows it.
constexpr uint16_t kTextSize = 0xFFFF;

int version_number(const std::string &version) {
    for (size_t i = 0; i < std::size(kVersions); ++i)
        if (version == kVersions[i]) return static_cast<int>(i) + 1;
    return 0; // not reached: the command line admits the four versions only
}

std::string octet_count(size_t count) {
    return std::to_string(count) + (count == 1 ? " octet" : " octets");
}

int codec_failure(Streams io, const char *function, int status) {
    io.err << "wsptool: " << function << " failed: " << status_report(status) << '\n';
    return kExitCodec;
}

bool too_long(Streams io, size_t count, const char *what) {
    if (count <= kMaxOctets) return false;
    io.err << "wsptool: the " << what << " has " << count << " octets; the library handles at most " << kMaxOctets
           << '\n';
    return true;
}

// Decodes a header block into `text` (NUL-terminated, `length` octets) and
// returns the library status.
int decode_block(wsp_hdrbuf &block, OutputBlock &text, const DecodeOptions &options) {
    return wsp_dec_hdr(&block, &text.record(), nullptr, version_number(options.version));
}

// Walks the same block with the explain engine (which ends exactly where
// wsp_dec_hdr ends) to tell what was stepped over and where a failure
// stopped the decoding.  `base` is the block's offset in the input.
explain::Explanation walk_block(const uint8_t *block, uint16_t length, uint16_t base, const DecodeOptions &options) {
    explain::WalkOptions walk_options;
    walk_options.version = version_number(options.version);
    walk_options.output_size = kTextSize;
    walk_options.base_offset = base;
    return explain::explain_block(block, length, walk_options);
}

std::string header_text(OutputBlock &text, const DecodeOptions &options, std::string_view indent) {
    const wsp_buffer &t = text.record();
    return options.hex_out ? format_hex(t.data, t.length, indent) : format_text(t.data, t.length, indent);
}

} // namespace

int run_decode_push(const DecodeOptions &options, Streams io) {
    const Octets pdu = read_octets(options.input, io.in);
    if (too_long(io, pdu.size(), "push PDU")) return kExitCodec;
    const size_t skip = options.tid ? 1 : 0;
    if (pdu.size() < skip + 1) {
        io.err << "wsptool: the push PDU is empty" << (options.tid ? " after its transaction id" : "") << '\n';
        return kExitCodec;
    }

    // The PDU is handed over as the caller's own bytes (external flag): the
    // library then copies headers and body into the spare record, which
    // this function frees, and never touches the PDU's block.  A
    // transaction id is stepped over through the offset.
    InputBlock block(pdu);
    wsp_buffer &record = block.record();
    record.offset = static_cast<uint16_t>(skip);
    record.length = static_cast<uint16_t>(pdu.size() - skip);

    SpareRecord spare;
    wsp_buffer *spare_ptr = &spare.record();
    wsp_push_result result{};
    int status = wsp_push_decoding(&record, &result, &spare_ptr);
    if (!status_ok(status)) return codec_failure(io, "wsp_push_decoding", status);

    const std::string content_type(result.body.content_type,
                                   strnlen(result.body.content_type, sizeof result.body.content_type));
    const uint16_t header_octets = result.headers.buffer ? result.headers.length : 0;

    // With a body, headers and body share one run of octets: the header
    // block first, then the data.  The data is taken out before the header
    // decoder runs, since a decoder failure releases the shared block.
    Octets body;
    if (const wsp_buffer *b = result.body.body; b != nullptr && b->data != nullptr) {
        const uint8_t *run = b->data + b->offset;
        if (result.headers.length < b->length) body.assign(run + result.headers.length, run + b->length);
    }

    // The header block sits right before the data (or ends the PDU).
    const size_t block_start = pdu.size() - body.size() - header_octets;
    const explain::Explanation walk =
        walk_block(pdu.data() + block_start, header_octets, static_cast<uint16_t>(block_start), options);
    OutputBlock text(kTextSize);
    int header_status = WSP_OK;
    if (header_octets != 0) {
        header_status = decode_block(result.headers, text, options);
        if (!options.quiet) print_stepped_over_notes(walk, io.err);
    }

    // format_text ends the line; an empty content type leaves the colon alone.
    std::string report = "content-type:";
    if (content_type.empty())
        report += '\n';
    else
        report.append(" ").append(
            format_text(reinterpret_cast<const uint8_t *>(content_type.data()), content_type.size(), ""));
    report.append("headers: ").append(octet_count(header_octets)).append("\n");
    report += header_text(text, options, "  ");
    report.append("body: ").append(octet_count(body.size())).append("\n");
    report += format_hex(body.data(), body.size(), "  ");
    io.out << report;
    if (!status_ok(header_status)) {
        print_decode_failure(header_status, walk, io.err);
        return kExitCodec;
    }
    return kExitOk;
}

int run_decode_headers(const DecodeOptions &options, Streams io) {
    const Octets octets = read_octets(options.input, io.in);
    if (too_long(io, octets.size(), "header block")) return kExitCodec;

    InputBlock block(octets);
    wsp_hdrbuf holder{static_cast<uint16_t>(octets.size()), &block.record()};
    OutputBlock text(kTextSize);
    const int status = decode_block(holder, text, options);
    const explain::Explanation walk = walk_block(octets.data(), holder.length, 0, options);
    if (!options.quiet) print_stepped_over_notes(walk, io.err);
    // The lines decoded before a failure stay in the text: shown either way.
    io.out << header_text(text, options, "");
    if (!status_ok(status)) {
        print_decode_failure(status, walk, io.err);
        return kExitCodec;
    }
    return kExitOk;
}

int run_decode_content_type(const DecodeOptions &options, Streams io) {
    const Octets octets = read_octets(options.input, io.in);
    if (too_long(io, octets.size(), "content-type value")) return kExitCodec;

    InputBlock block(octets);
    const uint8_t *cursor = block.octets();
    char text[WSP_CONTENT_TYPE_SIZE] = {};
    const int status = wsp_decode_content(&cursor, text, static_cast<uint16_t>(octets.size()));
    if (!status_ok(status)) return codec_failure(io, "wsp_decode_content", status);

    const size_t used = static_cast<size_t>(cursor - block.octets());
    io.out << format_text(reinterpret_cast<const uint8_t *>(text), strnlen(text, sizeof text), "");
    if (strnlen(text, sizeof text) == 0) io.out << '\n';
    if (used < octets.size())
        io.err << "wsptool: note: " << octet_count(octets.size() - used) << " after the value not read\n";
    return kExitOk;
}

} // namespace wsptool

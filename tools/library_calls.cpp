#include "library_calls.h"

#include <cstring>
#include <iterator>
#include <vector>

#include "decode_error.h"
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

} // namespace

int version_number(const std::string &version) {
    for (size_t i = 0; i < std::size(kVersions); ++i)
        if (version == kVersions[i]) return static_cast<int>(i) + 1;
    return 0;
}

std::string decode_header_text(const uint8_t *block, size_t count, const std::string &version,
                               const HeaderNotes &notes) {
    if (count > kMaxOctets) throw DecodeError("the header block has more than 65535 octets");
    InputBlock input(Octets(block, block + count));
    wsp_hdrbuf holder{static_cast<uint16_t>(count), &input.record()};
    OutputBlock text(kTextSize);
    const int status = wsp_dec_hdr(&holder, &text.record(), nullptr, version_number(version));
    const wsp_buffer &t = text.record();
    std::string decoded(reinterpret_cast<const char *>(t.data), t.length);
    if (notes.err == nullptr && status_ok(status)) return decoded;

    // The explain engine walks the same block and ends exactly where the
    // library ends: it tells what was stepped over and where a failure
    // stopped the decoding.
    explain::WalkOptions walk_options;
    walk_options.version = version_number(version);
    walk_options.output_size = kTextSize;
    walk_options.base_offset = static_cast<uint16_t>(notes.base);
    const explain::Explanation walk = explain::explain_block(block, static_cast<uint16_t>(count), walk_options);
    if (notes.err != nullptr) print_stepped_over_notes(walk, *notes.err, notes.context);
    if (!status_ok(status))
        throw HeaderDecodeError({"wsp_dec_hdr failed: " + describe_status(status), status, walk.stop_offset,
                                 describe_stop(walk)},
                                std::move(decoded));
    return decoded;
}

ContentType decode_content_type(const uint8_t *value, size_t avail) {
    if (avail > kMaxOctets) avail = kMaxOctets;
    InputBlock input(Octets(value, value + avail));
    const uint8_t *cursor = input.octets();
    char text[WSP_CONTENT_TYPE_SIZE] = {};
    const int status = wsp_decode_content(&cursor, text, static_cast<uint16_t>(avail));
    if (!status_ok(status)) throw_library_failure("wsp_decode_content", status);
    return {std::string(text, strnlen(text, sizeof text)), static_cast<size_t>(cursor - input.octets())};
}

uint32_t read_uintvar(const Octets &pdu, size_t *at, const char *what) {
    if (*at >= pdu.size()) throw DecodeError(std::string("the PDU ends before its ").append(what));
    const size_t avail = pdu.size() - *at;
    // The reader may look at the octet after the value: give it a padded copy.
    InputBlock input(Octets(pdu.begin() + static_cast<std::ptrdiff_t>(*at),
                            pdu.begin() + static_cast<std::ptrdiff_t>(*at + (avail < 6 ? avail : 6))));
    const uint8_t *cursor = input.octets();
    uint32_t value = 0;
    const int status = wsp_dec_varint(&cursor, &value, static_cast<uint16_t>(avail < 6 ? avail : 6));
    if (!status_ok(status))
        throw DecodeError(std::string("the ").append(what).append(" is not a valid uintvar: wsp_dec_varint failed: ")
                              .append(describe_status(status)));
    *at += static_cast<size_t>(cursor - input.octets());
    return value;
}

Octets encode_header_lines(const std::string &lines, const std::string &version) {
    if (lines.size() > kMaxOctets)
        throw InputError("the header text has " + std::to_string(lines.size()) +
                         " octets; the library handles at most 65535");
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

    OutputBlock out(kTextSize);
    wsp_hdrbuf holder{0, &out.record()};
    const int status = wsp_enc_hdr(&list, &holder, version.c_str());
    if (!status_ok(status)) throw_library_failure("wsp_enc_hdr", status);
    const wsp_buffer &b = out.record();
    return Octets(b.data + b.offset, b.data + b.offset + holder.length);
}

Octets encode_content_type(const std::string &text, const std::string &version) {
    OutputBlock out(kTextSize);
    const int status = wsp_encode_content(text.c_str(), &out.record(), version.c_str());
    if (!status_ok(status)) throw_library_failure("wsp_encode_content", status);
    const wsp_buffer &b = out.record();
    return Octets(b.data + b.offset, b.data + b.offset + b.length);
}

Octets encode_uintvar(uint32_t value) {
    uint8_t octets[8] = {};
    uint8_t *cursor = octets;
    uint8_t count = 0;
    const int status = wsp_enc_varint(value, &cursor, &count);
    if (!status_ok(status)) throw_library_failure("wsp_enc_varint", status);
    return Octets(octets, octets + count);
}

} // namespace wsptool

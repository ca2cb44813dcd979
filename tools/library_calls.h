// The library calls that several commands make, wrapped so that a refusal
// becomes a DecodeError naming the function and its status.
#ifndef WSPTOOL_LIBRARY_CALLS_H
#define WSPTOOL_LIBRARY_CALLS_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <utility>

#include "decode_error.h"
#include "hex_io.h"

namespace wsptool {

// Encoding versions the commands accept, as given on the command line.
inline constexpr const char *kVersions[] = {"1.1", "1.2", "1.3", "1.4"};
inline constexpr const char *kDefaultVersion = "1.4";

// "1.1" .. "1.4" to 1 .. 4 (the command line admits these four only).
int version_number(const std::string &version);

// Where decode_header_text tells about the headers the library stepped
// over (one note each, see diagnostics.h).
struct HeaderNotes {
    std::ostream *err = nullptr; // nullptr: no notes
    size_t base = 0;             // the block's offset in the input, for the offsets in the notes
    std::string context;         // put before the offset in each note ("packet 3, "), may be ""
};

// wsp_dec_hdr refused a block.  `failure` holds the status and where the
// decoding stopped (offsets counted as for the notes); `partial_text` the
// lines written before it.
class HeaderDecodeError : public DecodeError {
public:
    HeaderDecodeError(DecodeFailure stopped, std::string partial)
        : DecodeError(stopped.message()), failure(std::move(stopped)), partial_text(std::move(partial)) {}
    DecodeFailure failure;
    std::string partial_text;
};

// Decodes a header block with wsp_dec_hdr: the text exactly as the library
// writes it (lines "name:value\n", possibly with NUL octets left in).
// Throws HeaderDecodeError when the library refuses the block.
std::string decode_header_text(const uint8_t *block, size_t count, const std::string &version,
                               const HeaderNotes &notes = {});

// One Content-type value decoded with wsp_decode_content from at most
// `avail` octets: the text and the octets the value took.
struct ContentType {
    std::string text;
    size_t octets = 0;
};
ContentType decode_content_type(const uint8_t *value, size_t avail);

// A uintvar read with wsp_dec_varint at `*at`, within `end`; `*at` moves
// past it.  `what` names the field in the error.
uint32_t read_uintvar(const Octets &pdu, size_t *at, const char *what);

// Header lines ("Name: value", one per line, all on page 1) encoded with
// wsp_enc_hdr.
Octets encode_header_lines(const std::string &lines, const std::string &version);

// A content-type text with parameters encoded with wsp_encode_content.
Octets encode_content_type(const std::string &text, const std::string &version);

// A uintvar as wsp_enc_varint writes it.
Octets encode_uintvar(uint32_t value);

} // namespace wsptool

#endif // WSPTOOL_LIBRARY_CALLS_H

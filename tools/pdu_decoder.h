// A WSP PDU taken apart: its transaction id (connectionless form), type,
// fixed fields, capabilities, content type, header block and data.  Push
// PDUs go through the library's push decoder; the other types are split
// here with the library's readers for uintvars, content types and headers.
#ifndef WSPTOOL_PDU_DECODER_H
#define WSPTOOL_PDU_DECODER_H

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "decode_error.h"
#include "hex_io.h"

namespace wsptool {

// Whether the first octet is a transaction id.
enum class TidMode {
    kDetect,  // decided from the octets (see detect_type_offset)
    kPresent, // --tid
    kAbsent,  // --no-tid
};

// A fixed field: its name as printed ("uri", "version", "status") and its
// value as text.
struct PduField {
    std::string name;
    std::string value;
};

struct DecodedPdu {
    std::optional<uint8_t> tid;
    uint8_t type = 0;
    std::vector<PduField> fields;
    std::optional<Octets> capabilities;
    std::optional<std::string> content_type;
    // The header block: its encoded size and the library's text for it.
    bool has_headers = false;
    size_t header_octets = 0;
    std::string header_text;
    std::optional<Octets> body;
    // Decoding stopped here: the fields above are those read before it
    // (with a refused header block, header_text holds the lines written
    // before the failure and the data after the block is still read).
    std::optional<DecodeFailure> failure;
    bool failed_in_headers = false; // the failure is the library's, on the header block
};

struct PduOptions {
    TidMode tid = TidMode::kDetect;
    std::string version = "1.4"; // for the header block
    bool push_only = false;      // decode-push: only Push and ConfirmedPush
    std::ostream *notes = nullptr; // notes for headers stepped over (nullptr: none)
    std::string note_context;      // put before the offset in each note ("packet 3, ")
};

// Takes a PDU apart.  When the library refuses a part, the fields do not
// fit the octets or the type is not one that is decoded (with push_only:
// not a push PDU), the result holds what was read before and `failure`.
// Throws DecodeError when the place of the PDU type cannot be told (see
// detect_type_offset), InputError when the PDU is empty or too long.
DecodedPdu decode_pdu(const Octets &pdu, const PduOptions &options);

// Where the PDU type octet is: 0, or 1 after a transaction id.  Detection:
// the first octet is the type when it is one and the second is not; the
// second when only it is; when both are, the reading that decodes wins;
// when both do, the one without a transaction id, unless its content type
// comes out empty and the other reading's does not; when neither does, the
// one without a transaction id if only its header block was refused and the
// other reading was refused before its headers, else the other.
size_t detect_type_offset(const Octets &pdu, const PduOptions &options);

} // namespace wsptool

#endif // WSPTOOL_PDU_DECODER_H

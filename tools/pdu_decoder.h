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
    // The library refused the header block: the message (status and where
    // the decoding stopped); header_text holds the lines written before it.
    std::optional<std::string> header_failure;
    std::optional<Octets> body;
};

struct PduOptions {
    TidMode tid = TidMode::kDetect;
    std::string version = "1.4"; // for the header block
    bool push_only = false;      // decode-push: only Push and ConfirmedPush
    std::ostream *notes = nullptr; // notes for headers stepped over (nullptr: none)
};

// Takes a PDU apart.  A header block the library refuses is kept in
// header_text / header_failure.  Throws DecodeError when the library refuses another part,
// when the fields do not fit the octets, or when the type is not one that
// is decoded (with push_only: not a push PDU); InputError when the PDU is
// empty.
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

// What the explain engine records for each entry of a header block (and for
// the fields of a PDU around it), and the stable shape in which wsptool
// prints it with --json.
//
// JSON shape of one entry (field names are stable; scripts may rely on
// them (ctest wsptool_explain_block_json, wsptool_explain_push_tid_json), and
// the decode commands use the same names for the same things):
//
//   {
//     "offset":  12,                 // octet offset of the entry's first octet in the input
//     "octets":  "AF 84",            // the entry's octets, upper-case hex pairs, one blank apart
//     "kind":    "well-known",       // "well-known" | "application" | "shift" | "code-page" | "pdu"
//     "name":    "x-wap-application-id", // header name ("" for a shift; the field name for "pdu")
//     "code":    47,                 // header code (number), or null when the entry has none
//     "page":    1,                  // the header code page in force when the entry was read
//     "form":    "Short-integer",    // the value's encoding ("Text-string", "Value-length + 5", ...)
//     "text":    "x-wap-application-id:x-wap-application:mms.ua", // what the library writes for
//                                    // the entry on its own ("" when it writes nothing)
//     "fate":    "written",          // "written" | "merged" | "dropped" | "shifted" | "failed" | "field"
//     "line":    2,                  // the output line written or merged into, else null
//     "reason":  "",                 // why it was dropped, shifted or failed ("" otherwise)
//     "status":  null                // the library status that refused it: {"name": "WSP_ERR_FAIL",
//                                    //  "code": -214, "meaning": "..."}, else null
//   }
//
// The whole result of `wsptool explain --json`:
//
//   {"entries": [...], "text": "<the decoded header text>", "status": {...},
//    "stop_offset": N, "block_released": false}
//
// where "status" is the status of the whole walk (WSP_OK on success) and
// "stop_offset" the offset where decoding stopped (the block's end on
// success).
#ifndef WSPTOOL_EXPLAIN_ENTRY_H
#define WSPTOOL_EXPLAIN_ENTRY_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tarnwspencdec.h"

namespace wsptool::explain {

enum class Kind {
    kWellKnown,   // a well-known header of the default page (code octet 0x80..0xFF)
    kApplication, // a Token-text name followed by a value
    kShift,       // a shift sequence: 0x7F and a page, or a short-cut shift 1..31
    kCodePage,    // a header of an extension page, named by the caller's page list
    kPduField,    // a field of the PDU around the header block (type, lengths, content type, body)
};

enum class Fate {
    kWritten, // a new line was written
    kMerged,  // the value was joined with "," to an earlier line
    kDropped, // stepped over; decoding went on
    kShifted, // the code page changed
    kFailed,  // decoding stopped here with `status`
    kField,   // a PDU field: read, not a header
};

struct Entry {
    uint16_t offset = 0;         // in the input the command was given
    std::vector<uint8_t> octets; // the octets the entry spans
    Kind kind = Kind::kWellKnown;
    std::string name;
    std::optional<unsigned> code; // header code or page code
    unsigned page = 1;
    std::string form;
    std::string text; // octets of the text, as the library writes them
    Fate fate = Fate::kWritten;
    std::optional<unsigned> line; // 1-based output line
    std::string reason;
    std::optional<int> status; // the refusing status
};

// The walk over one header block.
struct Explanation {
    std::vector<Entry> entries;
    std::string text;          // the output text, `length` octets as the library left them
    int status = WSP_OK;       // the status wsp_dec_hdr returns for the block
    uint16_t stop_offset = 0;  // block offset where decoding stopped
    bool block_released = false; // the library releases the block on this failure
};

const char *kind_name(Kind kind);
const char *fate_name(Fate fate);

} // namespace wsptool::explain

#endif // WSPTOOL_EXPLAIN_ENTRY_H

// How a decoded PDU is printed: the text layout people read and the JSON
// object scripts read (one object per PDU, on one line).
#ifndef WSPTOOL_PDU_REPORT_H
#define WSPTOOL_PDU_REPORT_H

#include <string>

#include <nlohmann/json.hpp>

#include "pdu_decoder.h"

namespace wsptool {

struct ReportOptions {
    bool hex_headers = false; // the decoded header text as hex octets, and the capabilities undecoded
    bool raw_body = false;    // WBXML bodies in hex too
};

// The text layout:
//   tid: 0x01                (connectionless PDUs only)
//   pdu: Push (0x06)
//   NAME: VALUE              (the fixed fields of the type, one a line)
//   capabilities: N octets   (Connect, ConnectReply, Resume), then one
//                            line per capability (see capabilities.h), or
//                            hex with hex_headers
//   content-type: TEXT       (Push, Reply, Post)
//   headers: N octets        then the decoded lines, indented
//   body: N octets           then hex, or "(WBXML, shown as XML)" and XML
std::string pdu_text(const DecodedPdu &pdu, const ReportOptions &options);

// The JSON object of the same PDU (see the manual page for its keys).
nlohmann::ordered_json pdu_json(const DecodedPdu &pdu, const ReportOptions &options);

// Decoded header text as JSON: [{"name": ..., "value": ...}, ...], the
// values in the text layout's printable form.
nlohmann::ordered_json header_lines_json(const std::string &header_text);

// Octets as one run of upper-case hex digits ("AF84"), for JSON.
std::string hex_run(const Octets &octets);

// The body lines of the text layout ("body: N octets ..." and what follows).
std::string body_text(const std::string &content_type, const Octets &body, const ReportOptions &options);

} // namespace wsptool

#endif // WSPTOOL_PDU_REPORT_H

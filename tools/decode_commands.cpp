// decode-push, decode-pdu, decode-headers and decode-content-type.
#include <cstring>
#include <iostream>
#include <optional>
#include <string>

#include "capture_reader.h"
#include "commands.h"
#include "decode_error.h"
#include "json_fields.h"
#include "library_calls.h"
#include "library_buffers.h"
#include "pdu_names.h"
#include "pdu_report.h"

namespace wsptool {

namespace {

std::string octet_count(size_t count) {
    return std::to_string(count) + (count == 1 ? " octet" : " octets");
}

void too_long(size_t count, const char *what) {
    if (count > kMaxOctets)
        throw InputError(std::string("the ") + what + " has " + std::to_string(count) +
                         " octets; the library handles at most 65535");
}

PduOptions pdu_options(const DecodeOptions &options, bool push_only, std::ostream &err) {
    PduOptions out;
    out.tid = options.tid;
    out.version = options.version;
    out.push_only = push_only;
    if (!options.quiet) out.notes = &err;
    return out;
}

ReportOptions report_options(const DecodeOptions &options) {
    ReportOptions out;
    out.hex_headers = options.hex_out;
    out.raw_body = options.raw_body;
    return out;
}

// Every connectionless PDU of a capture: one report per datagram.  A PDU
// that does not decode is reported (stderr, or an "error" key in JSON) and
// the next one is read; the exit code is then 1.
int run_capture(const DecodeOptions &options, Streams io, bool push_only) {
    std::vector<uint16_t> ports(std::begin(kWspPorts), std::end(kWspPorts));
    ports.insert(ports.end(), options.ports.begin(), options.ports.end());
    PduOptions pdu = pdu_options(options, push_only, io.err);
    // On these ports every PDU is connectionless: a transaction id first.
    if (pdu.tid == TidMode::kDetect) pdu.tid = TidMode::kPresent;
    const ReportOptions report = report_options(options);

    int code = kExitOk;
    size_t reports = 0;
    read_capture(options.pcap, ports, [&](const Datagram &datagram) {
        // decode-push passes over the other PDU types of the capture.
        const size_t type_at = pdu.tid == TidMode::kPresent ? 1 : 0;
        if (push_only && datagram.payload.size() > type_at && !is_push_type(datagram.payload[type_at])) {
            io.err << "wsptool: note: packet " << datagram.number << " is a "
                   << describe_pdu_type(datagram.payload[type_at]) << " PDU, passed over (decode-pdu decodes it)\n";
            return;
        }
        const std::string time = format_capture_time(datagram.seconds, datagram.microseconds);
        const std::string packet = "packet " + std::to_string(datagram.number);
        nlohmann::ordered_json object{{"packet", datagram.number},
                              {"time", time},
                              {"source", datagram.source},
                              {"destination", datagram.destination}};
        std::string text = packet + ", " + time + ", " + datagram.source + " -> " + datagram.destination + "\n";
        // Notes and failures name the packet; their offsets count from the
        // start of its datagram.
        pdu.note_context = packet + ", ";
        std::optional<DecodeFailure> failure;
        try {
            const DecodedPdu decoded = decode_pdu(datagram.payload, pdu);
            object.update(pdu_json(decoded, report));
            text += pdu_text(decoded, report);
            failure = decoded.failure;
        } catch (const std::runtime_error &e) {
            failure = DecodeFailure::from(e, 0);
        }
        if (failure) {
            io.err << "wsptool: " << packet << ": " << failure->error << '\n';
            text += "error: " + failure->error + "\n";
            if (!failure->detail.empty()) {
                io.err << "wsptool: " << packet << ": " << failure->detail << '\n';
                text += failure->detail + "\n";
            }
            object.erase("failure");
            object["error"] = failure->error;
            object["failure"] = failure_json(*failure);
            code = kExitCodec;
        }
        if (options.json) {
            io.out << json_line(object);
        } else {
            if (reports) io.out << '\n';
            io.out << text;
        }
        ++reports;
    });
    if (reports == 0) io.err << "wsptool: note: the capture has no UDP datagram on the WSP ports\n";
    return code;
}

int run_pdu(const DecodeOptions &options, Streams io, bool push_only) {
    if (!options.pcap.empty()) return run_capture(options, io, push_only);
    const Octets octets = read_octets(options.input, io.in);
    DecodedPdu decoded;
    try {
        decoded = decode_pdu(octets, pdu_options(options, push_only, io.err));
    } catch (const DecodeError &e) {
        // Where the PDU type is could not be told: nothing was read.
        if (options.json) io.out << json_line({{"failure", failure_json(DecodeFailure::from(e, 0))}});
        throw;
    }
    const ReportOptions report = report_options(options);
    // The report holds what was read before a failure.
    io.out << (options.json ? json_line(pdu_json(decoded, report)) : pdu_text(decoded, report));
    if (decoded.failure) throw DecodeError(decoded.failure->message());
    return kExitOk;
}

} // namespace

int run_decode_push(const DecodeOptions &options, Streams io) { return run_pdu(options, io, true); }

int run_decode_pdu(const DecodeOptions &options, Streams io) { return run_pdu(options, io, false); }

int run_decode_headers(const DecodeOptions &options, Streams io) {
    const Octets octets = read_octets(options.input, io.in);
    too_long(octets.size(), "header block");
    std::string text;
    std::optional<DecodeFailure> failure;
    if (!octets.empty()) {
        HeaderNotes notes;
        if (!options.quiet) notes.err = &io.err;
        try {
            text = decode_header_text(octets.data(), octets.size(), options.version, notes);
        } catch (const HeaderDecodeError &e) {
            // The lines decoded before the failure are printed either way.
            text = e.partial_text;
            failure = e.failure;
        }
    }
    const auto *bytes = reinterpret_cast<const uint8_t *>(text.data());
    if (options.json) {
        nlohmann::ordered_json object{{"octets", octets.size()}, {"lines", header_lines_json(text)}};
        if (failure) object["failure"] = failure_json(*failure);
        io.out << json_line(object);
    } else {
        io.out << (options.hex_out ? format_hex(bytes, text.size(), "") : format_text(bytes, text.size(), ""));
    }
    if (failure) throw DecodeError(failure->message());
    return kExitOk;
}

int run_decode_content_type(const DecodeOptions &options, Streams io) {
    const Octets octets = read_octets(options.input, io.in);
    too_long(octets.size(), "content-type value");
    if (octets.empty()) throw InputError("the content-type value is empty");
    ContentType type;
    try {
        type = decode_content_type(octets.data(), octets.size());
    } catch (const DecodeError &e) {
        // The decoder leaves its cursor where it was: nothing was read.
        if (options.json)
            io.out << json_line({{"content_type", ""},
                                 {"octets", 0},
                                 {"unread", octets.size()},
                                 {"failure", failure_json(DecodeFailure::from(e, 0))}});
        throw;
    }
    const std::string text = format_text(reinterpret_cast<const uint8_t *>(type.text.data()), type.text.size(), "");
    const size_t unread = octets.size() - type.octets;
    if (options.json) {
        std::string bare = text;
        if (!bare.empty()) bare.pop_back();
        io.out << json_line({{"content_type", bare}, {"octets", type.octets}, {"unread", unread}});
    } else {
        io.out << (text.empty() ? "\n" : text);
    }
    if (unread != 0) io.err << "wsptool: note: " << octet_count(unread) << " after the value not read\n";
    return kExitOk;
}

} // namespace wsptool

#include "pdu_decoder.h"

#include <cstring>

#include "decode_error.h"
#include "library_buffers.h"
#include "library_calls.h"
#include "pdu_names.h"
#include "status_names.h"
#include "tarnwspencdec.h"

namespace wsptool {

namespace {

// A DecodeError naming the field when `count` octets from `at` run past
// the PDU.
void check_room(const Octets &pdu, size_t at, size_t count, const char *what) {
    if (count > pdu.size() - at)
        throw DecodeError(std::string("the ")
                              .append(what)
                              .append(" claims ")
                              .append(std::to_string(count))
                              .append(" octets; ")
                              .append(std::to_string(pdu.size() - at))
                              .append(" are left"));
}

// Octets [at, at + count) of the PDU, or a DecodeError naming the field;
// `*at` moves past them.
Octets take(const Octets &pdu, size_t *at, size_t count, const char *what) {
    check_room(pdu, *at, count, what);
    Octets out(pdu.begin() + static_cast<std::ptrdiff_t>(*at),
               pdu.begin() + static_cast<std::ptrdiff_t>(*at + count));
    *at += count;
    return out;
}

// Text octets as a field value: printable, without format_text's line end.
std::string field_text(const Octets &octets) {
    std::string text = format_text(octets.data(), octets.size(), "");
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

// The header block, found at offset `base` of the PDU.  A block the
// library refuses keeps the lines written before the failure, and the
// failure.
void set_headers(DecodedPdu &out, const Octets &block, size_t base, const PduOptions &options) {
    out.has_headers = true;
    out.header_octets = block.size();
    if (block.empty()) return;
    try {
        out.header_text = decode_header_text(block.data(), block.size(), options.version,
                                             {options.notes, base, options.note_context});
    } catch (const HeaderDecodeError &e) {
        out.header_text = e.partial_text;
        out.failure = e.failure;
        out.failed_in_headers = true;
    }
}

// The header block that starts at `*at`, `count` octets; `*at` moves past
// it.
void take_headers(DecodedPdu &out, const Octets &pdu, size_t *at, size_t count, const char *what,
                  const PduOptions &options) {
    const size_t base = *at;
    set_headers(out, take(pdu, at, count, what), base, options);
}

// Content type and headers sharing one length (Reply, Post): the content
// type first, the header block after it.  `*at` stands at the content type
// and moves past the headers; it stays at the content type when the
// library refuses it.
void content_type_and_headers(DecodedPdu &out, const Octets &pdu, size_t *at, uint32_t length,
                              const PduOptions &options) {
    check_room(pdu, *at, length, "headers length");
    const ContentType type = decode_content_type(pdu.data() + *at, length);
    if (type.octets > length) throw DecodeError("the content type is longer than the headers length");
    out.content_type = type.text;
    *at += type.octets;
    take_headers(out, pdu, at, length - type.octets, "headers length", options);
}

void expect_end(const Octets &pdu, size_t at) {
    if (at < pdu.size())
        throw DecodeError(std::to_string(pdu.size() - at) + (pdu.size() - at == 1 ? " octet" : " octets") +
                          " after the end of the PDU");
}

// Push and ConfirmedPush through wsp_push_decoding.  The PDU is handed over
// as the caller's own bytes (external flag): the library then copies
// headers and body into the spare record, which is freed here, and never
// touches the PDU's block.  A transaction id is stepped over through the
// offset.  `*at` stands after the type octet; on a refusal it is left at
// HeadersLen when that cannot be read, else at the content type.
void decode_push(const Octets &pdu, size_t start, size_t *at, DecodedPdu &out, const PduOptions &options) {
    InputBlock block(pdu);
    wsp_buffer &record = block.record();
    record.offset = static_cast<uint16_t>(start);
    record.length = static_cast<uint16_t>(pdu.size() - start);

    SpareRecord spare;
    wsp_buffer *spare_ptr = &spare.record();
    wsp_push_result result{};
    const int status = wsp_push_decoding(&record, &result, &spare_ptr);
    if (!status_ok(status)) {
        // Past HeadersLen when it reads, to stop at the content type.
        try {
            read_uintvar(pdu, at, "headers length");
        } catch (const DecodeError &) {
            // It does not: the push decoder stopped at HeadersLen.
        }
        throw_library_failure("wsp_push_decoding", status);
    }

    out.content_type = std::string(result.body.content_type,
                                   strnlen(result.body.content_type, sizeof result.body.content_type));
    const uint16_t header_octets = result.headers.buffer ? result.headers.length : 0;

    // With a body, headers and body share one run of octets: the header
    // block first, then the data.
    Octets body;
    if (const wsp_buffer *b = result.body.body; b != nullptr && b->data != nullptr) {
        const uint8_t *run = b->data + b->offset;
        if (result.headers.length < b->length) body.assign(run + result.headers.length, run + b->length);
    }
    Octets headers;
    if (header_octets != 0) {
        const wsp_buffer *h = result.headers.buffer;
        headers.assign(h->data + h->offset, h->data + h->offset + header_octets);
    }
    // The header block sits right before the data (or ends the PDU).
    *at = pdu.size() - body.size() - header_octets;
    set_headers(out, headers, *at, options);
    *at = pdu.size();
    out.body = std::move(body);
}

void decode_other(const Octets &pdu, size_t *at, DecodedPdu &out, const PduOptions &options) {
    const uint8_t type = out.type;
    if (type == kPduConnect || type == kPduConnectReply) {
        if (type == kPduConnect) {
            if (*at >= pdu.size()) throw DecodeError("the PDU ends before its version");
            const uint8_t version = pdu[*at];
            out.fields.push_back({"version", std::to_string(version >> 4) + "." + std::to_string(version & 0x0F)});
            ++*at;
        } else {
            out.fields.push_back({"server-session-id", std::to_string(read_uintvar(pdu, at, "server session id"))});
        }
        const uint32_t caps = read_uintvar(pdu, at, "capabilities length");
        const uint32_t headers = read_uintvar(pdu, at, "headers length");
        out.capabilities = take(pdu, at, caps, "capabilities length");
        take_headers(out, pdu, at, headers, "headers length", options);
        expect_end(pdu, *at);
    } else if (type == kPduReply) {
        if (*at >= pdu.size()) throw DecodeError("the PDU ends before its status");
        const uint8_t status = pdu[*at];
        const std::string text = reply_status_text(status);
        out.fields.push_back({"status", hex_octet(status) + (text.empty() ? " (unassigned)" : " (" + text + ")")});
        ++*at;
        const uint32_t length = read_uintvar(pdu, at, "headers length");
        content_type_and_headers(out, pdu, at, length, options);
        out.body = Octets(pdu.begin() + static_cast<std::ptrdiff_t>(*at), pdu.end());
        *at = pdu.size();
    } else if (type == kPduDisconnect) {
        out.fields.push_back({"server-session-id", std::to_string(read_uintvar(pdu, at, "server session id"))});
        expect_end(pdu, *at);
    } else if (type == kPduSuspend || type == kPduResume) {
        out.fields.push_back({"session-id", std::to_string(read_uintvar(pdu, at, "session id"))});
        if (type == kPduResume) {
            const uint32_t caps = read_uintvar(pdu, at, "capabilities length");
            out.capabilities = take(pdu, at, caps, "capabilities length");
            take_headers(out, pdu, at, pdu.size() - *at, "headers", options);
        }
        expect_end(pdu, *at);
    } else if (is_get_type(type)) {
        const uint32_t length = read_uintvar(pdu, at, "URI length");
        out.fields.push_back({"uri", field_text(take(pdu, at, length, "URI length"))});
        take_headers(out, pdu, at, pdu.size() - *at, "headers", options);
    } else if (is_post_type(type)) {
        const uint32_t uri_length = read_uintvar(pdu, at, "URI length");
        const uint32_t headers_length = read_uintvar(pdu, at, "headers length");
        out.fields.push_back({"uri", field_text(take(pdu, at, uri_length, "URI length"))});
        content_type_and_headers(out, pdu, at, headers_length, options);
        out.body = Octets(pdu.begin() + static_cast<std::ptrdiff_t>(*at), pdu.end());
        *at = pdu.size();
    }
}

bool accepted(uint8_t type, const PduOptions &options) {
    return options.push_only ? is_push_type(type) : (is_decodable_type(type) || type == kPduRedirect);
}

// The type and what follows it; a refusal ends the reading with `failure`
// set at the offset where it stood.
DecodedPdu decode_at(const Octets &pdu, size_t start, const PduOptions &options) {
    DecodedPdu out;
    if (start == 1) out.tid = pdu[0];
    if (start >= pdu.size())
        throw InputError(start ? "the PDU is empty after its transaction id" : "the PDU is empty");
    out.type = pdu[start];
    size_t at = start;
    try {
        if (options.push_only && !is_push_type(out.type))
            throw DecodeError("the PDU type is " + describe_pdu_type(out.type) +
                              ", not Push (0x06) or ConfirmedPush (0x07); decode-pdu decodes the other types");
        if (!is_decodable_type(out.type))
            throw DecodeError("the PDU type is " + describe_pdu_type(out.type) +
                              "; decoded are Connect, ConnectReply, Reply, Disconnect, Push, ConfirmedPush, "
                              "Suspend, Resume, Get (0x40-0x44) and Post (0x60-0x61)");
        ++at;
        if (is_push_type(out.type))
            decode_push(pdu, start, &at, out, options);
        else
            decode_other(pdu, &at, out, options);
    } catch (const DecodeError &e) {
        // A refused header block is kept as the first failure.
        if (!out.failure) {
            out.failure = DecodeFailure::from(e, at);
            if (out.failure->status) out.failure->detail = "decoding stopped at offset " + std::to_string(at);
        }
    }
    return out;
}

} // namespace

size_t detect_type_offset(const Octets &pdu, const PduOptions &options) {
    if (options.tid == TidMode::kPresent) return 1;
    if (options.tid == TidMode::kAbsent || pdu.size() < 2) return 0;
    const bool first = accepted(pdu[0], options);
    const bool second = accepted(pdu[1], options);
    if (first && !second) return 0;
    if (second && !first) return 1;
    if (!first) {
        const char *what = options.push_only ? "a push PDU type" : "a PDU type";
        throw DecodeError(std::string("neither the first octet (") + hex_octet(pdu[0]) + ") nor the second (" +
                          hex_octet(pdu[1]) + ") is " + what + "; give --tid or --no-tid to say where it is");
    }
    // Both octets could be the type: the reading that decodes wins; when
    // both do, the one that finds a content type; then the one without a
    // transaction id.
    // The trial readings print no notes, and a refused header block counts
    // as a reading that does not decode.
    PduOptions trial = options;
    trial.notes = nullptr;
    std::optional<DecodedPdu> readings[2];
    bool only_headers_refused[2] = {false, false};
    for (size_t start = 0; start < 2; ++start) {
        try {
            readings[start] = decode_at(pdu, start, trial);
            if (readings[start]->failure) {
                only_headers_refused[start] = readings[start]->failed_in_headers;
                readings[start].reset();
            }
        } catch (const std::runtime_error &) {
        }
    }
    // Neither decodes: the reading that got as far as its header block wins
    // over one refused before it, so that the report shows the lines
    // decoded before the failure.
    if (!readings[0] && !readings[1] && only_headers_refused[0] && !only_headers_refused[1]) return 0;
    if (!readings[0]) return 1;
    if (!readings[1]) return 0;
    const bool empty_type = readings[0]->content_type && readings[0]->content_type->empty();
    const bool found_type = readings[1]->content_type && !readings[1]->content_type->empty();
    return empty_type && found_type ? 1 : 0;
}

DecodedPdu decode_pdu(const Octets &pdu, const PduOptions &options) {
    if (pdu.empty()) throw InputError("the PDU is empty");
    if (pdu.size() > kMaxOctets)
        throw InputError("the PDU has " + std::to_string(pdu.size()) + " octets; the library handles at most 65535");
    return decode_at(pdu, detect_type_offset(pdu, options), options);
}

} // namespace wsptool

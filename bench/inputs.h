// The inputs the benchmarks run on: realistic header texts and push PDUs, and
// blocks of distinct headers of any size for the scaling series.
#ifndef BENCH_INPUTS_H
#define BENCH_INPUTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// Header lines as a client hands them to the encoder ("Name: value\n"...).
struct HeaderText {
    const char *name; // benchmark label
    const char *lines;
};

// A browser's request (13 headers) and a server's reply with three dates.
extern const HeaderText kBrowserRequest;
extern const HeaderText kServerReply;

// A push PDU as received, and the text a push initiator would encode for it.
struct PushMessage {
    const char *name;
    std::vector<uint8_t> pdu;  // as received
    uint16_t offset;           // octets before the PDU type (a transaction id)
    const char *content_type;  // content-type text of the PDU
    const char *header_lines;  // its headers as text lines
};

// MMS notification, service indication, provisioning (content-type
// parameters): the same octets as the tool's examples.
const std::vector<PushMessage> &push_messages();

// The sizes of the scaling series, in octets.
extern const std::size_t kScalingSizes[6];

// An encoded header block of exactly `octets` octets (at least 64): a
// User-Agent, an Accept-Charset and a Content-Length, then application headers
// with distinct names, with a Content-Length after every eighth.  No name but
// Content-Length repeats, so no line is merged with another.
std::vector<uint8_t> distinct_header_block(std::size_t octets);

// The same mix as text lines, exactly `octets` characters long (at least 96).
std::string distinct_header_text(std::size_t octets);

} // namespace bench

#endif

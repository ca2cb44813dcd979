// The command-line registration of the decode commands.
#include <memory>

#include "command_line.h"

namespace wsptool {

namespace {

constexpr const char *kPduLayout = R"text(Output (text):
  tid: 0xNN                the transaction id, when the PDU has one
  pdu: Push (0x06)         the PDU type
  capabilities: N octets   Connect, ConnectReply, Resume: then one line per
    Name (0xNN): value     capability, its value decoded (--hex: the octets)
  content-type: TEXT       the decoded content type (nothing after the colon when empty)
  headers: N octets        the size of the encoded header block, then the decoded
    name:value             header lines, indented (--hex: the text's octets in hex)
  body: N octets           the data after the header block, in hex, 16 octets to a
    HH HH ...              line; WBXML bodies as XML ("(WBXML, shown as XML)")

)text";

constexpr const char *kCapture = R"(--pcap FILE reads a capture (pcap or pcapng) and decodes every UDP datagram to
or from port 9200 or 2948 (and the --port ports) as a connectionless PDU: one
report per packet, headed "packet N, TIME, SOURCE -> DESTINATION".  Notes and
failures name their packet; their offsets count from the start of its
datagram.

)";

void add_quiet(CLI::App *command, bool &quiet) {
    command->add_flag("--quiet,-q", quiet, "no notes on standard error for headers the library stepped over");
}

void add_pdu_options(CLI::App *command, DecodeOptions &options) {
    CLI::Option *tid = command->add_flag_callback(
        "--tid", [&options] { options.tid = TidMode::kPresent; }, "the first octet is a transaction id");
    CLI::Option *no_tid = command->add_flag_callback(
        "--no-tid", [&options] { options.tid = TidMode::kAbsent; }, "the first octet is the PDU type");
    tid->excludes(no_tid);
    add_wsp_version(command, options.version, "for the header block");
    command->add_flag("--hex", options.hex_out, "print the decoded header text and the capabilities as hex octets");
    command->add_flag("--raw-body", options.raw_body, "print WBXML bodies in hex, not as XML");
    add_json(command, options.json);
    add_quiet(command, options.quiet);
    CLI::Option *pcap = command->add_option("--pcap", options.pcap, "decode the WSP datagrams of a pcap or pcapng capture")
                            ->check(CLI::ExistingFile);
    command->add_option("--port", options.ports, "another UDP port that carries WSP in the capture")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->needs(pcap)
        ->check(CLI::Range(1, 65535));
    for (const char *name : {"HEX", "--file", "--raw"}) pcap->excludes(command->get_option(name));
}

} // namespace

void add_decode_commands(CLI::App &app, std::vector<Command> &commands) {
    auto push = std::make_shared<DecodeOptions>();
    CLI::App *c = app.add_subcommand(
        "decode-push", "Split a Push or ConfirmedPush PDU; decode its content type and headers; print the body.");
    add_octet_input(c, push->input, "the push PDU");
    add_pdu_options(c, *push);
    c->footer(std::string(kPduLayout) + kCapture + kOctetInput + kExitCodes);
    commands.push_back({c, [push](Streams io) { return run_decode_push(*push, io); }});

    auto pdu = std::make_shared<DecodeOptions>();
    c = app.add_subcommand("decode-pdu",
                           "Decode any WSP PDU: Connect, ConnectReply, Reply, Disconnect, Push, ConfirmedPush, "
                           "Suspend, Resume, Get, Post.");
    add_octet_input(c, pdu->input, "the PDU");
    add_pdu_options(c, *pdu);
    c->footer(std::string(kPduLayout) + kCapture + kOctetInput + kExitCodes);
    commands.push_back({c, [pdu](Streams io) { return run_decode_pdu(*pdu, io); }});

    auto headers = std::make_shared<DecodeOptions>();
    c = app.add_subcommand("decode-headers",
                           "Decode a WSP header block to text lines (name:value, one header per line).");
    add_octet_input(c, headers->input, "the header block");
    add_wsp_version(c, headers->version, "for the header block");
    c->add_flag("--hex", headers->hex_out, "print the decoded header text as hex octets");
    add_json(c, headers->json);
    add_quiet(c, headers->quiet);
    c->footer(std::string(kOctetInput) + kExitCodes);
    commands.push_back({c, [headers](Streams io) { return run_decode_headers(*headers, io); }});

    auto content = std::make_shared<DecodeOptions>();
    c = app.add_subcommand("decode-content-type", "Decode one Content-type value to text.");
    add_octet_input(c, content->input, "the Content-type value");
    add_json(c, content->json);
    c->footer(std::string(kOctetInput) + kExitCodes);
    commands.push_back({c, [content](Streams io) { return run_decode_content_type(*content, io); }});
}

} // namespace wsptool

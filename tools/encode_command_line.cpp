// The command-line registration of the encode commands.
#include <memory>

#include "command_line.h"

namespace wsptool {

void add_encode_commands(CLI::App &app, std::vector<Command> &commands) {
    auto headers = std::make_shared<EncodeOptions>();
    CLI::App *c = app.add_subcommand(
        "encode-headers",
        "Encode header lines (Name: value, one per line, from --file or standard input) to a header block.");
    c->footer(kExitCodes);
    c->add_option("--file,-f", headers->file, "read the header lines from this file (- for stdin)")
        ->check(CLI::ExistingFile | CLI::IsMember({"-"}));
    add_wsp_version(c, headers->version, "for the header codes");
    CLI::Option *hex_out = c->add_flag_callback("--hex", [] {}, "print the octets as hex (the default form)");
    CLI::Option *raw_out = c->add_flag("--raw-out", headers->raw_out, "write the octets as raw bytes");
    hex_out->excludes(raw_out);
    commands.push_back({c, [headers](Streams io) { return run_encode_headers(*headers, io); }});

    auto content = std::make_shared<EncodeOptions>();
    c = app.add_subcommand("encode-content-type", "Encode a content-type text with parameters to hex.");
    c->footer(kExitCodes);
    c->add_option("TEXT", content->text, "e.g. \"text/plain; charset=utf-8\"")->required();
    add_wsp_version(c, content->version, "for the content-type and parameter codes");
    commands.push_back({c, [content](Streams io) { return run_encode_content_type(*content, io); }});

    auto push = std::make_shared<EncodePushOptions>();
    c = app.add_subcommand("encode-push",
                           "Build a Push PDU from a content type, header lines and a body, to make test messages.");
    c->footer(std::string(R"(The PDU: the type octet (0x06, or 0x07 with --confirmed; after the transaction
id with --tid), the length of content type and headers as a uintvar, the
content type (wsp_encode_content), the header block (wsp_enc_hdr) and the body.

)") + kExitCodes);
    c->add_option("--content-type,-c", push->content_type, "the content type, e.g. application/vnd.wap.sic")
        ->required();
    c->add_option("--header,-H", push->headers, "a header line \"Name: value\" (repeatable)")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    c->add_option("--headers-file", push->headers_file, "header lines from a file, one per line")
        ->check(CLI::ExistingFile);
    CLI::Option *body = c->add_option("--body", push->body_file, "the body: a file of raw bytes (- for stdin)")
                            ->check(CLI::ExistingFile | CLI::IsMember({"-"}));
    CLI::Option *body_hex = c->add_option("--body-hex", push->body_hex, "the body as hex text");
    body->excludes(body_hex);
    c->add_option("--tid", push->tid, "put this transaction id first (connectionless form)")
        ->check(CLI::Range(0, 255));
    c->add_flag("--confirmed", push->confirmed, "a ConfirmedPush (0x07) instead of a Push (0x06)");
    add_wsp_version(c, push->version, "for the content-type and header codes");
    c->add_flag("--raw-out", push->raw_out, "write the octets as raw bytes");
    commands.push_back({c, [push](Streams io) { return run_encode_push(*push, io); }});
}

} // namespace wsptool

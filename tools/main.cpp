// wsptool: the command line around libtarnwspencdec.  This file only sets up
// the commands and their options; the work is done in the run_* functions.
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "commands.h"

namespace {

using namespace wsptool;

const std::vector<std::string> kVersionList(std::begin(kVersions), std::end(kVersions));

constexpr const char *kExitCodes = R"(Exit codes: 0 success, 1 the library refused the input (its status is printed
on standard error by name and number, e.g. WSP_ERR_FAIL (-214)), 2 usage error
or unreadable input.)";

constexpr const char *kOctetInput = R"(Octets are read as hex text: pairs of hex digits, blanks and line breaks
anywhere, "#" starts a comment to the end of the line.  --raw reads the bytes
as they are.  Without HEX and --file the input comes from standard input.

)";

constexpr const char *kPushLayout = R"(Output:
  content-type: TEXT       the decoded content type (nothing after the colon when empty)
  headers: N octets        the size of the encoded header block, then the decoded
    name:value             header lines, indented (--hex: the text's octets in hex)
  body: N octets           the data after the header block, then its octets in
    HH HH ...              hex, 16 to a line, indented

)";

constexpr const char *kExplainLayout = R"(Output: one row per entry, then the decoded text and the status.
  OFFSET  where the entry starts in the input     OCTETS  its octets (8 shown, then the count)
  KIND    well-known, application, shift,         CODE    header code (shift: the new page)
          code-page, or pdu (a push PDU field)    NAME    header name
  FORM    how the value is encoded                TEXT    what the library writes for it alone
  RESULT  written (line N), merged into line N, dropped: why, shifted: to page N, failed: why
--json prints one object: {"entries": [...], "text", "status", "stop_offset", "block_released"}.

)";

void add_version(CLI::App *command, std::string &version, const char *what) {
    command->add_option("--version", version, std::string("encoding version ") + what)
        ->check(CLI::IsMember(kVersionList))
        ->capture_default_str();
}

// The octet input shared by the three decode commands.
void add_octet_input(CLI::App *command, InputSource &input, const char *what) {
    command->footer(std::string(kOctetInput) + kExitCodes);
    CLI::Option *hex =
        command->add_option("HEX", input.args, std::string(what) + " as hex (several arguments are joined)");
    CLI::Option *file = command->add_option("--file,-f", input.file, "read the input from this file")
                            ->check(CLI::ExistingFile);
    hex->excludes(file);
    command->add_flag("--raw", input.raw, "the input is raw bytes, not hex text");
}

} // namespace

int main(int argc, char **argv) {
    CLI::App app{"Decode and encode WSP header blocks, content types and push PDUs with libtarnwspencdec.",
                 "wsptool"};
    app.footer(kExitCodes);
    app.require_subcommand(1);

    DecodeOptions push_options, headers_options, content_options;
    EncodeOptions encode_headers_options, encode_content_options;

    CLI::App *push = app.add_subcommand(
        "decode-push", "Split a push PDU and decode its content type and headers; print the body in hex.");
    add_octet_input(push, push_options.input, "the push PDU");
    push->footer(std::string(kPushLayout) + kOctetInput + kExitCodes);
    push->add_flag("--tid", push_options.tid, "the first octet is a transaction id (stepped over)");
    add_version(push, push_options.version, "for the header block");
    push->add_flag("--hex", push_options.hex_out, "print the decoded header text as hex octets");

    CLI::App *headers = app.add_subcommand(
        "decode-headers", "Decode a WSP header block to text lines (name:value, one header per line).");
    add_octet_input(headers, headers_options.input, "the header block");
    add_version(headers, headers_options.version, "for the header block");
    headers->add_flag("--hex", headers_options.hex_out, "print the decoded header text as hex octets");

    CLI::App *content = app.add_subcommand("decode-content-type", "Decode one Content-type value to text.");
    add_octet_input(content, content_options.input, "the Content-type value");

    CLI::App *encode_headers = app.add_subcommand(
        "encode-headers",
        "Encode header lines (Name: value, one per line, from --file or standard input) to a header block.");
    encode_headers->footer(kExitCodes);
    encode_headers->add_option("--file,-f", encode_headers_options.file, "read the header lines from this file")
        ->check(CLI::ExistingFile);
    add_version(encode_headers, encode_headers_options.version, "for the header codes");
    bool hex_requested = false; // the default form; the flag only makes it explicit
    CLI::Option *hex_out = encode_headers->add_flag("--hex", hex_requested, "print the octets as hex (the default)");
    CLI::Option *raw_out = encode_headers->add_flag("--raw-out", encode_headers_options.raw_out,
                                                    "write the octets as raw bytes");
    hex_out->excludes(raw_out);

    CLI::App *encode_content = app.add_subcommand("encode-content-type",
                                                  "Encode a content-type text with parameters to hex.");
    encode_content->footer(kExitCodes);
    encode_content->add_option("TEXT", encode_content_options.text, "e.g. \"text/plain; charset=utf-8\"")
        ->required();
    add_version(encode_content, encode_content_options.version, "for the content-type and parameter codes");

    ExplainOptions explain_options;
    CLI::App *explain = app.add_subcommand(
        "explain", "Show every entry of a header block or push PDU: offset, octets, kind, name, code, value form, "
                   "the text written for it, and what became of it.");
    add_octet_input(explain, explain_options.input, "the header block (or, with --push, the push PDU)");
    explain->footer(std::string(kExplainLayout) + kOctetInput +
                    "Exit codes: 0 the block decodes, 1 the library fails on it (the rows up to the\n"
                    "failure are printed, with the status), 2 usage error or unreadable input.");
    explain->add_option("-V,--wsp-version", explain_options.version, "encoding version for the header block")
        ->check(CLI::IsMember(kVersionList))
        ->capture_default_str();
    bool headers_requested = false; // the default input; the flag only makes it explicit
    CLI::Option *explain_headers =
        explain->add_flag("--headers", headers_requested, "the input is a header block (the default)");
    CLI::Option *explain_push = explain->add_flag("--push", explain_options.push, "the input is a push PDU");
    explain_headers->excludes(explain_push);
    explain->add_flag("--tid", explain_options.tid, "with --push: the first octet is a transaction id")
        ->needs(explain_push);
    explain->add_flag("--json", explain_options.json, "print one JSON object (entries, text, status)");
    for (CLI::App *decoder : {push, headers})
        decoder->add_flag("--quiet,-q", decoder == push ? push_options.quiet : headers_options.quiet,
                          "no notes on standard error for headers stepped over");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &e) {
        // Help requests exit 0; every other parse error is a usage error.
        return app.exit(e) == 0 ? kExitOk : kExitUsage;
    }

    Streams io{std::cin, std::cout, std::cerr};
    try {
        int code = kExitUsage;
        if (push->parsed()) code = run_decode_push(push_options, io);
        else if (headers->parsed()) code = run_decode_headers(headers_options, io);
        else if (content->parsed()) code = run_decode_content_type(content_options, io);
        else if (encode_headers->parsed()) code = run_encode_headers(encode_headers_options, io);
        else if (encode_content->parsed()) code = run_encode_content_type(encode_content_options, io);
        else if (explain->parsed()) code = run_explain(explain_options, io);
        std::cout.flush();
        if (!std::cout) {
            std::cerr << "wsptool: cannot write the output\n";
            return kExitCodec;
        }
        return code;
    } catch (const InputError &e) {
        std::cerr << "wsptool: " << e.what() << '\n';
        return kExitUsage;
    } catch (const std::bad_alloc &) {
        std::cerr << "wsptool: out of memory\n";
        return kExitCodec;
    } catch (const std::exception &e) {
        std::cerr << "wsptool: " << e.what() << '\n';
        return kExitCodec;
    }
}

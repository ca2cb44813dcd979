// The wsptool commands.  Each takes its parsed options and the three
// standard streams and returns the process exit code.
#ifndef WSPTOOL_COMMANDS_H
#define WSPTOOL_COMMANDS_H

#include <iosfwd>
#include <string>

#include "hex_io.h"

namespace wsptool {

// Process exit codes.
enum ExitCode : int {
    kExitOk = 0,    // the command did what it was asked
    kExitCodec = 1, // the library refused the input (status on stderr)
    kExitUsage = 2, // bad command line or unreadable / malformed input text
};

// Encoding versions the commands accept, as given on the command line.
inline constexpr const char *kVersions[] = {"1.1", "1.2", "1.3", "1.4"};
inline constexpr const char *kDefaultVersion = "1.4";

struct DecodeOptions {
    InputSource input;
    std::string version = kDefaultVersion;
    bool tid = false;     // decode-push: the first octet is a transaction id
    bool hex_out = false; // print the decoded header text as hex octets
    bool quiet = false;   // no notes on stderr for headers stepped over
};

struct EncodeOptions {
    std::string file;    // encode-headers: the header lines (empty: stdin)
    std::string text;    // encode-content-type: the content-type text
    std::string version = kDefaultVersion;
    bool raw_out = false; // encode-headers: write the octets as raw bytes
};

struct ExplainOptions {
    InputSource input;
    std::string version = kDefaultVersion;
    bool push = false; // the input is a push PDU, not a header block
    bool tid = false;  // --push: the first octet is a transaction id
    bool json = false; // one JSON object instead of the table
};

struct Streams {
    std::istream &in;
    std::ostream &out;
    std::ostream &err;
};

int run_decode_push(const DecodeOptions &options, Streams io);
int run_decode_headers(const DecodeOptions &options, Streams io);
int run_decode_content_type(const DecodeOptions &options, Streams io);
int run_encode_headers(const EncodeOptions &options, Streams io);
int run_encode_content_type(const EncodeOptions &options, Streams io);
int run_explain(const ExplainOptions &options, Streams io);

} // namespace wsptool

#endif // WSPTOOL_COMMANDS_H

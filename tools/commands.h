// The wsptool commands.  Each takes its parsed options and the three
// standard streams and returns the process exit code.
#ifndef WSPTOOL_COMMANDS_H
#define WSPTOOL_COMMANDS_H

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "hex_io.h"
#include "library_calls.h"
#include "pdu_decoder.h"

namespace wsptool {

// Process exit codes.
enum ExitCode : int {
    kExitOk = 0,    // the command did what it was asked
    kExitCodec = 1, // the input was refused: by the library (status on
                    // stderr) or because it is not the PDU asked for
    kExitUsage = 2, // bad command line, unreadable input, input that is
                    // not hex, an empty PDU or more than 65535 octets
};

struct DecodeOptions {
    InputSource input;
    std::string version = kDefaultVersion; // --wsp-version
    TidMode tid = TidMode::kDetect;        // decode-push, decode-pdu
    bool hex_out = false;                  // the decoded header text as hex octets
    bool raw_body = false;                 // WBXML bodies in hex too
    bool json = false;                     // one JSON object per PDU
    std::string pcap;                      // decode-push, decode-pdu: a capture
    std::vector<uint16_t> ports;           // extra UDP ports for the capture
    bool quiet = false;                    // no notes on stderr for headers stepped over
};

struct EncodeOptions {
    std::string file;    // encode-headers: the header lines (empty: stdin)
    std::string text;    // encode-content-type: the content-type text
    std::string version = kDefaultVersion;
    bool raw_out = false; // write the octets as raw bytes
};

struct EncodePushOptions {
    std::string content_type;         // the content-type text
    std::vector<std::string> headers; // "Name: value" lines
    std::string headers_file;         // more lines from a file
    std::string body_file;            // the body, raw bytes ("-": stdin)
    std::string body_hex;             // or the body as hex text
    int tid = -1;                     // 0..255: connectionless form
    bool confirmed = false;           // ConfirmedPush instead of Push
    std::string version = kDefaultVersion;
    bool raw_out = false;
};

struct ExplainOptions {
    InputSource input;
    std::string version = kDefaultVersion;
    bool push = false; // the input is a push PDU, not a header block
    bool tid = false;  // --push: the first octet is a transaction id
    bool json = false; // one JSON object instead of the table
    std::vector<std::string> pages; // --page: extension code pages (see page_list.h)
};

struct Streams {
    std::istream &in;
    std::ostream &out;
    std::ostream &err;
};

int run_decode_push(const DecodeOptions &options, Streams io);
int run_decode_pdu(const DecodeOptions &options, Streams io);
int run_decode_headers(const DecodeOptions &options, Streams io);
int run_decode_content_type(const DecodeOptions &options, Streams io);
int run_encode_headers(const EncodeOptions &options, Streams io);
int run_encode_content_type(const EncodeOptions &options, Streams io);
int run_encode_push(const EncodePushOptions &options, Streams io);
int run_explain(const ExplainOptions &options, Streams io);

} // namespace wsptool

#endif // WSPTOOL_COMMANDS_H

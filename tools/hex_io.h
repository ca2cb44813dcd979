// Input and output forms of wsptool: octets given as hex text (from the
// command line, a file or standard input) or as raw bytes, and octets or
// decoded text printed back in a stable, line-oriented form.
#ifndef WSPTOOL_HEX_IO_H
#define WSPTOOL_HEX_IO_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace wsptool {

using Octets = std::vector<uint8_t>;

// Bad input that is the caller's fault (unreadable file, hex text that is
// not hex): reported as a usage error.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Where a command takes its octets from.  At most one of `args` and `file`
// is set (the command line refuses both); with neither, standard input is
// read.  `raw` takes the bytes as they are instead of parsing hex.
struct InputSource {
    std::vector<std::string> args;
    std::string file;
    bool raw = false;
};

// Hex text to octets, in the forms engineers copy from other tools:
//  - plain pairs, blanks and line breaks anywhere ("af 84", "AF84");
//  - "0x" and "\x" prefixes and ":" or "," separators ("0xaf, 0x84",
//    "\xaf\x84", "af:84"), where a one-digit field is one octet;
//  - dumps with an offset column, recognised when the first line opens
//    with a zero offset followed by ":" or two blanks ("0000  af 84 ..." as
//    analysers print it, xxd's "00000000: af84 ...", hexdump -C's
//    "00000000  af 84 ... |..|"): the offsets must follow the octets, and
//    the character column at the end of each line is left out.
// "#" starts a comment that runs to the end of its line, so the bundled
// .hex files can explain their octets.  Plain digits are taken in pairs, so
// an odd count is an error.  Upper and lower case are both fine.
Octets parse_hex(std::string_view text);

// Reads the whole of a file or of a stream as bytes.
std::string read_file(const std::string &path);
std::string read_stream(std::istream &in);

// The octets a command works on: the arguments (joined with a blank), the
// file or `in` (also when the one argument or the file is "-"), parsed as
// hex unless source.raw is set.
Octets read_octets(const InputSource &source, std::istream &in);

// Text a command works on (encoder input): the file, or `in` (no file or "-").
std::string read_text(const std::string &file, std::istream &in);

// Octets as upper-case hex pairs separated by one blank, 16 to a line, each
// line starting with `indent` and ending with "\n".  No octets: "".
std::string format_hex(const uint8_t *data, size_t count, std::string_view indent = "");

// Decoded header text as printable lines: octets 0x20..0x7E stay as they
// are (a backslash is doubled), "\n" ends a line, NUL octets are left out
// (the decoder's line writers may leave a counted NUL in the text), and
// every other octet is written as \xHH.  Each line is prefixed with
// `indent`; text that does not end in "\n" gets one.
std::string format_text(const uint8_t *data, size_t count, std::string_view indent = "");

} // namespace wsptool

#endif // WSPTOOL_HEX_IO_H

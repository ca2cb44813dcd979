#include "command_line.h"

#include <iterator>

namespace wsptool {

const char *const kExitCodes = R"(Exit codes: 0 success; 1 the input was refused (the library's status is printed
on standard error by name, number and meaning, e.g. WSP_ERR_FAIL (-214)), or it
is not the PDU asked for; 2 usage error, unreadable input, an empty PDU or more
than 65535 octets.)";

const char *const kOctetInput = R"(Octets are read as hex text: pairs of hex digits with blanks and line breaks
anywhere; "0x" and "\x" prefixes, ":" and "," separators; dumps with an offset
column as analysers, xxd and hexdump -C print them.  "#" starts a comment to
the end of the line.  --raw reads the bytes as they are.  Without HEX and
--file, or with "-", the input comes from standard input.

)";

void add_wsp_version(CLI::App *command, std::string &version, const std::string &what) {
    static const std::vector<std::string> versions(std::begin(kVersions), std::end(kVersions));
    command->add_option("--wsp-version,-V", version, "WSP encoding version " + what)
        ->check(CLI::IsMember(versions))
        ->capture_default_str();
}

void add_octet_input(CLI::App *command, InputSource &input, const std::string &what) {
    CLI::Option *hex = command->add_option("HEX", input.args, what + " as hex (several arguments are joined; - for stdin)");
    CLI::Option *file = command->add_option("--file,-f", input.file, "read the input from this file (- for stdin)")
                            ->check(CLI::ExistingFile | CLI::IsMember({"-"}));
    hex->excludes(file);
    command->add_flag("--raw", input.raw, "the input is raw bytes, not hex text");
}

void add_json(CLI::App *command, bool &json) {
    command->add_flag("--json", json, "print one JSON object per line instead of text (also on a failure: what was decoded, then \"failure\")");
}

} // namespace wsptool

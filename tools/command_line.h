// The command line: each command registers itself on the program's CLI11
// app with its options and the function that runs it once parsed.
#ifndef WSPTOOL_COMMAND_LINE_H
#define WSPTOOL_COMMAND_LINE_H

#include <functional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "commands.h"

namespace wsptool {

// A registered command: its CLI11 subcommand and what runs it.
struct Command {
    CLI::App *app;
    std::function<int(Streams)> run;
};

// The help texts shared by the commands.
extern const char *const kExitCodes;
extern const char *const kOctetInput;

// --wsp-version/-V V (1.1 .. 1.4, default 1.4).
void add_wsp_version(CLI::App *command, std::string &version, const std::string &what);

// HEX..., --file/-f F, --raw: the octet input of a decode command.
void add_octet_input(CLI::App *command, InputSource &input, const std::string &what);

// --json.
void add_json(CLI::App *command, bool &json);

void add_decode_commands(CLI::App &app, std::vector<Command> &commands);
void add_encode_commands(CLI::App &app, std::vector<Command> &commands);
void add_explain_command(CLI::App &app, std::vector<Command> &commands);

} // namespace wsptool

#endif // WSPTOOL_COMMAND_LINE_H

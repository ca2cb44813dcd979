// wsptool: the command line around libtarnwspencdec.  This file sets up the
// program-wide options, lets every command register itself and runs the
// one that was asked for; the work is done in the run_* functions.
#include <cstdlib>
#include <ctime>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "command_line.h"
#include "decode_error.h"
#include "tool_version.h"

namespace {

using namespace wsptool;

constexpr const char *kDescription =
    "Decode and encode WSP PDUs, header blocks and content types with libtarnwspencdec.";

constexpr const char *kTimeZone = R"(--tz ZONE (default UTC) is the zone in which the library converts dates: it
reads and writes dates in the process's local time as if that were GMT, so
only UTC gives true GMT dates.

)";

// Names of the registered commands, for the unknown-command message.
std::string command_list(const std::vector<Command> &commands) {
    std::string list;
    for (const Command &command : commands) list.append("  ").append(command.app->get_name()).append("\n");
    return list;
}

// Catches what CLI11 would report less clearly: an unknown command, and the
// old --version option after a command (the encoding version is now
// --wsp-version).  Returns a message, or "" when the line may be parsed.
std::string precheck(int argc, char **argv, const std::vector<Command> &commands) {
    bool after_command = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (!after_command) {
            if (arg == "--tz") {
                ++i;
                continue;
            }
            if (!arg.empty() && arg[0] == '-') continue;
            bool known = false;
            for (const Command &command : commands) known = known || command.app->get_name() == arg;
            if (!known) return "unknown command " + arg + "; the commands are:\n" + command_list(commands);
            after_command = true;
        } else if (arg == "--version" || arg.rfind("--version=", 0) == 0) {
            return "--version prints the program's version; the WSP encoding version is --wsp-version (-V)";
        }
    }
    return "";
}

} // namespace

int main(int argc, char **argv) {
    CLI::App app{kDescription, "wsptool"};
    app.footer(std::string(kTimeZone) + kExitCodes);
    app.require_subcommand(0, 1);
    app.fallthrough();
    bool show_version = false;
    std::string zone = "UTC";
    app.add_flag("--version", show_version, "print the versions of wsptool and of the library, then exit");
    app.add_option("--tz", zone, "the zone in which dates are converted")->capture_default_str();

    std::vector<Command> commands;
    add_decode_commands(app, commands);
    add_encode_commands(app, commands);
    add_explain_command(app, commands);

    if (const std::string problem = precheck(argc, argv, commands); !problem.empty()) {
        std::cerr << "wsptool: " << problem << (problem.back() == '\n' ? "" : "\n");
        return kExitUsage;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp &e) {
        return app.exit(e);
    } catch (const CLI::CallForAllHelp &e) {
        return app.exit(e);
    } catch (const CLI::ParseError &e) {
        std::cerr << "wsptool: " << e.what() << "\nRun wsptool --help (or wsptool COMMAND --help) for the usage.\n";
        return kExitUsage;
    }

    if (show_version) {
        std::cout << "wsptool " << kToolVersion << "\nlibtarnwspencdec " << kLibraryVersion << '\n';
        return kExitOk;
    }

    // The library converts dates in the process's local zone.
    setenv("TZ", zone.c_str(), 1);
    tzset();

    Streams io{std::cin, std::cout, std::cerr};
    try {
        int code = kExitUsage;
        bool ran = false;
        for (const Command &command : commands) {
            if (!command.app->parsed()) continue;
            code = command.run(io);
            ran = true;
        }
        if (!ran) {
            std::cerr << "wsptool: no command given; the commands are:\n" << command_list(commands)
                      << "Run wsptool --help for the usage.\n";
            return kExitUsage;
        }
        std::cout.flush();
        if (!std::cout) {
            std::cerr << "wsptool: cannot write the output\n";
            return kExitCodec;
        }
        return code;
    } catch (const InputError &e) {
        std::cerr << "wsptool: " << e.what() << '\n';
        return kExitUsage;
    } catch (const DecodeError &e) {
        std::cout.flush();
        std::cerr << "wsptool: " << e.what() << '\n';
        return kExitCodec;
    } catch (const std::bad_alloc &) {
        std::cerr << "wsptool: out of memory\n";
        return kExitCodec;
    } catch (const std::exception &e) {
        std::cerr << "wsptool: " << e.what() << '\n';
        return kExitCodec;
    }
}

// explain: one row per entry of a header block or push PDU, what it is and
// what became of it, then the decoded text; --json prints the same as one
// object (its shape is described in explain/entry.h).
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "command_line.h"
#include "diagnostics.h"
#include "explain/block_walk.h"
#include "explain/push_walk.h"
#include "json_fields.h"
#include "library_buffers.h"
#include "page_list.h"
#include "status_names.h"

namespace wsptool {

namespace {

using explain::Entry;
using explain::Fate;
using Json = nlohmann::ordered_json;

// Octets shown in one table cell; the rest is summarised.
constexpr size_t kOctetsShown = 8;

constexpr const char *kExplainLayout = R"(Output: one row per entry, then the decoded text and the status.
  OFFSET  where the entry starts in the input     OCTETS  its octets (8 shown, then the count)
  KIND    well-known, application, shift,         CODE    header code (shift: the new page)
          code-page, or pdu (a push PDU field)    NAME    header name
  FORM    how the value is encoded                TEXT    what the library writes for it alone
  RESULT  written (line N), merged into line N, dropped: why, shifted: to page N, failed: why
--json prints one object: {"entries": [...], "text", "status", "stop_offset", "block_released"}.
--page PAGE[:NAME=CODE,...] hands the decoder a page list: PAGE (2..255) names
its headers by code (0..127), e.g. --page 2:x-foo=0x10,x-bar=17.  With pages
given, a shift to a page not among them stops the decoding, as it does in the
library; without, every header of an extension page is stepped over.

)";

std::string hex_octets(const std::vector<uint8_t> &octets, size_t most) {
    std::string text;
    const size_t shown = std::min(octets.size(), most);
    for (size_t i = 0; i < shown; ++i) {
        char pair[4];
        std::snprintf(pair, sizeof pair, "%02X", octets[i]);
        if (i) text += ' ';
        text += pair;
    }
    if (shown < octets.size()) text += " ... (" + std::to_string(octets.size()) + ")";
    return text;
}

// A decoded text on one line: printable octets as they are (a backslash
// doubled), a line feed as \n, NUL octets left out, the rest as \xHH.
std::string one_line(const std::string &text) {
    std::string shown;
    for (unsigned char c : text) {
        if (c == 0) continue;
        if (c == '\\') {
            shown += "\\\\";
        } else if (c == '\n') {
            shown += "\\n";
        } else if (c >= 0x20 && c < 0x7F) {
            shown += static_cast<char>(c);
        } else {
            char esc[8];
            std::snprintf(esc, sizeof esc, "\\x%02X", c);
            shown += esc;
        }
    }
    return shown;
}

std::string code_cell(const Entry &e) {
    if (!e.code) return "-";
    char text[8];
    std::snprintf(text, sizeof text, "0x%02x", *e.code);
    return text;
}

std::string result_cell(const Entry &e) {
    std::string cell = explain::fate_name(e.fate);
    switch (e.fate) {
    case Fate::kWritten: cell += " (line " + std::to_string(e.line.value_or(0)) + ")"; break;
    case Fate::kMerged: cell = "merged into line " + std::to_string(e.line.value_or(0)); break;
    case Fate::kField: return "";
    default:
        if (!e.reason.empty()) cell += ": " + e.reason;
        break;
    }
    if (e.status) cell += " [" + status_name(*e.status) + "]";
    return cell;
}

// ---- text ----

void print_table(const std::vector<const Entry *> &entries, std::ostream &out) {
    const std::vector<std::string> heads = {"OFFSET", "OCTETS", "KIND", "CODE", "NAME", "FORM", "TEXT", "RESULT"};
    std::vector<std::vector<std::string>> rows;
    for (const Entry *e : entries)
        rows.push_back({std::to_string(e->offset), hex_octets(e->octets, kOctetsShown), explain::kind_name(e->kind),
                        code_cell(*e), one_line(e->name), e->form, one_line(e->text), result_cell(*e)});
    std::vector<size_t> widths(heads.size());
    for (size_t c = 0; c < heads.size(); ++c) {
        widths[c] = heads[c].size();
        for (const auto &row : rows) widths[c] = std::max(widths[c], row[c].size());
    }
    auto print_row = [&](const std::vector<std::string> &row) {
        std::string line;
        for (size_t c = 0; c < row.size(); ++c) {
            line += row[c];
            if (c + 1 < row.size()) line += std::string(widths[c] - row[c].size() + 2, ' ');
        }
        while (!line.empty() && line.back() == ' ') line.pop_back();
        out << line << '\n';
    };
    print_row(heads);
    for (const auto &row : rows) print_row(row);
}

void print_text(const explain::Explanation &walk, std::ostream &out) {
    out << "\ntext:\n" << format_text(reinterpret_cast<const uint8_t *>(walk.text.data()), walk.text.size(), "  ");
    out << "status: " << status_report(walk.status) << '\n';
    if (!status_ok(walk.status)) {
        out << "stopped at offset " << walk.stop_offset;
        if (walk.block_released) out << "; the library releases the header block";
        else if (static_cast<int16_t>(walk.status) == WSP_ERR_TRUNCATED) out << "; the header block is kept";
        out << '\n';
    }
}

// ---- JSON ----

// Text that may hold any octet, as JSON text: octets below 0x80 as they
// are, others as the Latin-1 character of the same number, so that every
// octet survives a round trip.
std::string json_text(const std::string &text) {
    std::string utf8;
    for (unsigned char c : text) {
        if (c < 0x80) {
            utf8 += static_cast<char>(c);
        } else {
            utf8 += static_cast<char>(0xC0 | (c >> 6));
            utf8 += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return utf8;
}

Json entry_json(const Entry &e) {
    return Json{{"offset", e.offset},
                {"octets", hex_octets(e.octets, e.octets.size())},
                {"kind", explain::kind_name(e.kind)},
                {"name", json_text(e.name)},
                {"code", e.code ? Json(*e.code) : Json(nullptr)},
                {"page", e.page},
                {"form", e.form},
                {"text", json_text(e.text)},
                {"fate", explain::fate_name(e.fate)},
                {"line", e.line ? Json(*e.line) : Json(nullptr)},
                {"reason", e.reason},
                {"status", status_json(e.status)}};
}

Json walk_json(const std::vector<const Entry *> &entries, const explain::Explanation &walk) {
    Json list = Json::array();
    for (const Entry *e : entries) list.push_back(entry_json(*e));
    return Json{{"entries", list},
                {"text", json_text(walk.text)},
                {"status", status_json(walk.status)},
                {"stop_offset", walk.stop_offset},
                {"block_released", walk.block_released}};
}

void print_walk(const std::vector<const Entry *> &entries, const explain::Explanation &walk,
                const ExplainOptions &options, std::ostream &out) {
    if (options.json) {
        out << walk_json(entries, walk).dump(2) << '\n';
        return;
    }
    print_table(entries, out);
    print_text(walk, out);
}

int explain_push_pdu(const Octets &pdu, const ExplainOptions &options, const explain::WalkOptions &walk_options,
                     Streams io) {
    const size_t skip = options.tid ? 1 : 0;
    if (pdu.size() < skip + 1)
        throw InputError(options.tid ? "the PDU is empty after its transaction id" : "the PDU is empty");
    const explain::PushExplanation pushed = explain::explain_push(pdu, options.tid, walk_options);

    std::vector<const Entry *> entries;
    for (const Entry &e : pushed.fields) entries.push_back(&e);
    for (const Entry &e : pushed.headers.entries) entries.push_back(&e);
    for (const Entry &e : pushed.trailer) entries.push_back(&e);

    explain::Explanation summary = pushed.headers;
    if (!status_ok(pushed.push_status)) {
        summary.status = pushed.push_status;
        summary.stop_offset = entries.back()->offset;
    } else if (pushed.headers.entries.empty() && status_ok(pushed.headers.status)) {
        summary.stop_offset = static_cast<uint16_t>(pdu.size());
    }
    print_walk(entries, summary, options, io.out);
    return status_ok(summary.status) ? kExitOk : kExitCodec;
}

} // namespace

int run_explain(const ExplainOptions &options, Streams io) {
    const Octets octets = read_octets(options.input, io.in);
    if (octets.size() > kMaxOctets)
        throw InputError("the input has " + std::to_string(octets.size()) + " octets; the library handles at most 65535");
    const PageList pages(options.pages);
    explain::WalkOptions walk_options;
    walk_options.version = version_number(options.version);
    walk_options.pages = pages.list();
    if (options.push) return explain_push_pdu(octets, options, walk_options, io);

    const explain::Explanation walk =
        explain::explain_block(octets.data(), static_cast<uint16_t>(octets.size()), walk_options);
    std::vector<const Entry *> entries;
    for (const Entry &e : walk.entries) entries.push_back(&e);
    print_walk(entries, walk, options, io.out);
    return status_ok(walk.status) ? kExitOk : kExitCodec;
}

void add_explain_command(CLI::App &app, std::vector<Command> &commands) {
    auto options = std::make_shared<ExplainOptions>();
    CLI::App *c = app.add_subcommand(
        "explain", "Show every entry of a header block or push PDU: offset, octets, kind, name, code, value form, "
                   "the text written for it, and what became of it.");
    add_octet_input(c, options->input, "the header block (or, with --push, the push PDU)");
    add_wsp_version(c, options->version, "for the header block");
    // The default input: the flag only makes it explicit, and stores nothing
    // (a variable here would be gone when the line is parsed).
    CLI::Option *headers = c->add_flag_callback("--headers", [] {}, "the input is a header block (the default)");
    CLI::Option *push = c->add_flag("--push", options->push, "the input is a push PDU");
    headers->excludes(push);
    c->add_flag("--tid", options->tid, "with --push: the first octet is a transaction id")->needs(push);
    c->add_flag("--json", options->json, "print one JSON object (entries, text, status)");
    c->add_option("--page", options->pages,
                  "an extension header code page and the headers it names: PAGE[:NAME=CODE,...] (repeatable)")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    c->footer(std::string(kExplainLayout) + kOctetInput +
              "Exit codes: 0 the input decodes; 1 the library fails on it (the rows up to the\n"
              "failure are printed, with the status); 2 usage error, unreadable input, an\n"
              "empty PDU or more than 65535 octets.");
    commands.push_back({c, [options](Streams io) { return run_explain(*options, io); }});
}

} // namespace wsptool

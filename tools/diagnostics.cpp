#include "diagnostics.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <ostream>

#include "status_names.h"
#include "tarnwspencdec.h"

namespace wsptool {

namespace {

std::string hex_code(unsigned code) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%02x", code);
    return text;
}

// Text from the input shown inside quotation marks: printable characters
// as they are, the rest as \xHH.
std::string quoted(std::string_view text) {
    std::string q = "\"";
    for (unsigned char c : text) {
        if (c >= 0x20 && c < 0x7F && c != '"' && c != '\\') {
            q += static_cast<char>(c);
        } else {
            char esc[8];
            std::snprintf(esc, sizeof esc, "\\x%02X", c);
            q += esc;
        }
    }
    return q + "\"";
}

// Lower-cased name before the first colon of a header line.
std::string line_name(std::string_view line) {
    std::string name;
    for (char c : line.substr(0, line.find(':'))) name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    while (!name.empty() && (name.back() == ' ' || name.back() == '\t')) name.pop_back();
    size_t start = name.find_first_not_of(" \t");
    return start == std::string::npos ? std::string() : name.substr(start);
}

} // namespace

std::string status_report(int status) { return status_name(status) + ": " + status_meaning(status); }

std::string entry_label(const explain::Entry &entry) {
    using explain::Kind;
    switch (entry.kind) {
    case Kind::kWellKnown:
    case Kind::kCodePage: {
        std::string label = entry.kind == Kind::kCodePage ? "page " + std::to_string(entry.page) + " header "
                                                          : std::string("header ");
        label += entry.code ? hex_code(*entry.code) : std::string("?");
        if (!entry.name.empty()) label += " (" + entry.name + ")";
        return label;
    }
    case Kind::kApplication: return "header " + quoted(entry.name);
    case Kind::kShift:
        return entry.code ? "shift to page " + std::to_string(*entry.code) : std::string("shift");
    case Kind::kPduField: return entry.name;
    }
    return "entry";
}

void print_stepped_over_notes(const explain::Explanation &walk, std::ostream &err, std::string_view context) {
    // Written in one piece: standard error is unbuffered, and a block may
    // step over thousands of headers.
    std::string notes;
    for (const explain::Entry &e : walk.entries) {
        if (e.fate != explain::Fate::kDropped) continue;
        notes.append("wsptool: note: ").append(context).append("offset ").append(std::to_string(e.offset)).append(": ");
        notes.append(entry_label(e)).append(" stepped over: ").append(e.reason);
        if (e.status) notes.append(" [").append(status_name(*e.status)).append("]");
        notes += '\n';
    }
    err << notes;
}

std::string describe_stop(const explain::Explanation &walk) {
    std::string text = "decoding stopped at offset " + std::to_string(walk.stop_offset);
    if (!walk.entries.empty() && walk.entries.back().fate == explain::Fate::kFailed) {
        const explain::Entry &e = walk.entries.back();
        text += ", in the " + entry_label(e);
        if (e.offset != walk.stop_offset) text += " that starts at offset " + std::to_string(e.offset);
        text += ": " + e.reason;
    }
    return text;
}

std::string describe_encode_failure(std::string_view where, std::string_view line, int status) {
    std::string text = std::string(where) + ' ' + quoted(line) + ": " + status_name(status) + ": ";
    const std::string name = line_name(line);
    if (name == "content-type")
        text += "content-type travels outside the header block and cannot be encoded in it";
    else if (name == "profile" || name == "profile_diff" || name == "profile-warning" || name == "set-cookie")
        text += "the header is known, but the library has no encoder for its value";
    else if (line.find(':') == std::string_view::npos)
        text += "the line has no colon: it is read as a name with an empty value, which the encoder refused";
    else
        text += "the encoder refused this header's value (" + status_meaning(status) + ")";
    return text;
}

} // namespace wsptool

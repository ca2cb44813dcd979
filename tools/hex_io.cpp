#include "hex_io.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace wsptool {

namespace {

int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string describe_octet(char c) {
    const auto octet = static_cast<unsigned char>(c);
    char text[16];
    if (octet >= 0x20 && octet <= 0x7E)
        std::snprintf(text, sizeof text, "'%c'", c);
    else
        std::snprintf(text, sizeof text, "0x%02X", octet);
    return text;
}

} // namespace

Octets parse_hex(std::string_view text) {
    Octets out;
    int high = -1;
    size_t line = 1;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\n') ++line;
        if (is_blank(c)) continue;
        if (c == '#') {
            while (i + 1 < text.size() && text[i + 1] != '\n') ++i;
            continue;
        }
        const int digit = hex_digit(c);
        if (digit < 0)
            throw InputError(std::string("not a hex digit: ")
                                 .append(describe_octet(c))
                                 .append(" on line ")
                                 .append(std::to_string(line)));
        if (high < 0) {
            high = digit;
        } else {
            out.push_back(static_cast<uint8_t>(high << 4 | digit));
            high = -1;
        }
    }
    if (high >= 0) throw InputError("odd number of hex digits");
    return out;
}

std::string read_file(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw InputError(std::string("cannot open ").append(path).append(": ").append(std::strerror(errno)));
    std::string data = read_stream(in);
    if (in.bad()) throw InputError(std::string("cannot read ").append(path));
    return data;
}

std::string read_stream(std::istream &in) {
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
}

Octets read_octets(const InputSource &source, std::istream &in) {
    std::string text;
    if (!source.args.empty()) {
        for (size_t i = 0; i < source.args.size(); ++i) {
            if (i) text += ' ';
            text += source.args[i];
        }
    } else if (!source.file.empty()) {
        text = read_file(source.file);
    } else {
        text = read_stream(in);
    }
    if (source.raw) return Octets(text.begin(), text.end());
    return parse_hex(text);
}

std::string read_text(const std::string &file, std::istream &in) {
    return file.empty() ? read_stream(in) : read_file(file);
}

std::string format_hex(const uint8_t *data, size_t count, std::string_view indent) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string out;
    for (size_t i = 0; i < count; ++i) {
        if (i % 16 == 0) {
            if (i) out += '\n';
            out += indent;
        } else {
            out += ' ';
        }
        out += digits[data[i] >> 4];
        out += digits[data[i] & 0x0F];
    }
    if (count) out += '\n';
    return out;
}

std::string format_text(const uint8_t *data, size_t count, std::string_view indent) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string out;
    bool line_start = true;
    for (size_t i = 0; i < count; ++i) {
        const uint8_t octet = data[i];
        if (octet == 0x00) continue;
        if (line_start) {
            out += indent;
            line_start = false;
        }
        if (octet == '\n') {
            out += '\n';
            line_start = true;
        } else if (octet == '\\') {
            out += "\\\\";
        } else if (octet >= 0x20 && octet <= 0x7E) {
            out += static_cast<char>(octet);
        } else {
            out += "\\x";
            out += digits[octet >> 4];
            out += digits[octet & 0x0F];
        }
    }
    if (!line_start) out += '\n';
    return out;
}

} // namespace wsptool

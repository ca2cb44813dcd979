#include "hex_io.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <vector>

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

namespace {

// One line of a dump with an offset column ("0000  af 84 ...", "00000000:
// af84 b480  ....", "00000000  af 84 ... |....|"): the octets after the
// offset, without the character column at the end.
struct DumpLine {
    std::string_view hex; // the octets' hex text, as the dump groups it
    size_t offset = 0;    // the value of the offset column
};

bool is_hex_run(std::string_view text) {
    if (text.empty()) return false;
    for (char c : text)
        if (hex_digit(c) < 0) return false;
    return true;
}

// The leading offset column of a line, if it has one: four to eight hex
// digits followed by ":" or by at least two blanks (one tab will do).
bool split_offset(std::string_view line, DumpLine &out) {
    size_t i = 0;
    while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) ++i;
    const size_t digits_start = i;
    while (i < line.size() && hex_digit(line[i]) >= 0) ++i;
    const size_t digits = i - digits_start;
    if (digits < 4 || digits > 8) return false;
    size_t rest = i;
    if (rest < line.size() && line[rest] == ':') {
        ++rest;
    } else {
        size_t blanks = 0;
        bool tab = false;
        while (rest < line.size() && (line[rest] == ' ' || line[rest] == '\t')) {
            tab = tab || line[rest] == '\t';
            ++rest;
            ++blanks;
        }
        if (blanks < 2 && !tab && rest < line.size()) return false;
    }
    out.offset = std::stoul(std::string(line.substr(digits_start, digits)), nullptr, 16);
    out.hex = line.substr(rest);
    return true;
}

// The hex part of what follows an offset column: a "|...|" character column
// is cut off; so is a trailing character column separated by two or more
// blanks, recognised by holding something that is not hex, or by being one
// word exactly as long as the octets before it.
std::string_view strip_character_column(std::string_view rest) {
    if (const size_t bar = rest.find('|'); bar != std::string_view::npos) rest = rest.substr(0, bar);
    // Cut into groups separated by runs of two or more blanks.
    size_t end = 0; // end of the accepted hex text
    size_t octets_before = 0;
    size_t i = 0;
    while (i < rest.size()) {
        while (i < rest.size() && (rest[i] == ' ' || rest[i] == '\t')) ++i;
        if (i >= rest.size()) break;
        size_t j = i;
        while (j < rest.size()) {
            if ((rest[j] == ' ' || rest[j] == '\t') &&
                (rest[j] == '\t' || (j + 1 < rest.size() && (rest[j + 1] == ' ' || rest[j + 1] == '\t'))))
                break;
            ++j;
        }
        const std::string_view group = rest.substr(i, j - i);
        size_t group_octets = 0;
        bool hex = true;
        bool single_word = true;
        size_t k = 0;
        while (k < group.size()) {
            if (group[k] == ' ') {
                single_word = false;
                ++k;
                continue;
            }
            size_t w = k;
            while (w < group.size() && group[w] != ' ') ++w;
            const std::string_view word = group.substr(k, w - k);
            if (!is_hex_run(word) || word.size() % 2 != 0) hex = false;
            group_octets += word.size() / 2;
            k = w;
        }
        if (!hex) break;
        if (single_word && octets_before != 0 && group.size() == octets_before && j >= rest.size()) break;
        octets_before += group_octets;
        end = j;
        i = j;
    }
    return rest.substr(0, end);
}

// Reads the free-form hex of one stretch of text into `out`.  Plain digits
// are taken in pairs across blanks (so "8 3" is 0x83); "0x" and "\x"
// prefixes, ":" and "," separate octets, and a one-digit field between
// separators ("0x6", "6:5") is one octet.
class HexReader {
public:
    explicit HexReader(Octets &out) : out_(out) {}

    void read(std::string_view text, size_t line) {
        size_t i = 0;
        while (i < text.size()) {
            const char c = text[i];
            if (is_blank(c)) {
                ++i;
            } else if (c == ',' || c == ':' || c == ';') {
                need_even(line);
                ++i;
            } else if (c == '\\' && i + 1 < text.size() && (text[i + 1] == 'x' || text[i + 1] == 'X')) {
                need_even(line);
                i = field(text, i + 2, line, 2);
            } else if (c == '0' && i + 2 < text.size() && (text[i + 1] == 'x' || text[i + 1] == 'X') &&
                       hex_digit(text[i + 2]) >= 0 && high_ < 0) {
                i = field(text, i + 2, line, 0);
            } else if (hex_digit(c) >= 0) {
                // A run of digits right before ":" or "," (or after one) is a
                // field of its own; otherwise the digits join the pair stream.
                size_t j = i;
                while (j < text.size() && hex_digit(text[j]) >= 0) ++j;
                const bool separated = (j < text.size() && (text[j] == ':' || text[j] == ',')) ||
                                       (i > 0 && (text[i - 1] == ':' || text[i - 1] == ','));
                if (separated && high_ < 0) {
                    i = field(text, i, line, 0);
                } else {
                    for (; i < j; ++i) nibble(hex_digit(text[i]));
                }
            } else {
                throw InputError(std::string("not a hex digit: ")
                                     .append(describe_octet(c))
                                     .append(" on line ")
                                     .append(std::to_string(line)));
            }
        }
    }

    void finish() {
        if (high_ >= 0) throw InputError("odd number of hex digits");
    }

private:
    void nibble(int digit) {
        if (high_ < 0) {
            high_ = digit;
        } else {
            out_.push_back(static_cast<uint8_t>(high_ << 4 | digit));
            high_ = -1;
        }
    }

    void need_even(size_t line) {
        if (high_ >= 0)
            throw InputError(std::string("odd number of hex digits before a separator on line ")
                                 .append(std::to_string(line)));
    }

    // A field of hex digits starting at `i`: at most `limit` digits (0: as
    // many as there are).  An odd count gets a leading zero.
    size_t field(std::string_view text, size_t i, size_t line, size_t limit) {
        size_t j = i;
        while (j < text.size() && hex_digit(text[j]) >= 0 && (limit == 0 || j - i < limit)) ++j;
        if (j == i)
            throw InputError(std::string("a hex prefix without digits on line ").append(std::to_string(line)));
        if ((j - i) % 2 != 0) nibble(0);
        for (size_t k = i; k < j; ++k) nibble(hex_digit(text[k]));
        return j;
    }

    Octets &out_;
    int high_ = -1;
};

} // namespace

Octets parse_hex(std::string_view text) {
    // Split into lines, drop comments; a first line that opens with a zero
    // offset column makes the whole input a dump with offsets.
    std::vector<std::string_view> lines;
    for (size_t start = 0; start <= text.size();) {
        size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        std::string_view line = text.substr(start, end - start);
        if (const size_t hash = line.find('#'); hash != std::string_view::npos) line = line.substr(0, hash);
        lines.push_back(line);
        start = end + 1;
    }

    bool dump = false;
    for (const std::string_view line : lines) {
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) continue;
        DumpLine first;
        dump = split_offset(line, first) && first.offset == 0 && !first.hex.empty();
        break;
    }

    Octets out;
    HexReader reader(out);
    for (size_t n = 0; n < lines.size(); ++n) {
        std::string_view line = lines[n];
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (dump && line.find_first_not_of(" \t") != std::string_view::npos) {
            DumpLine parts;
            if (!split_offset(line, parts))
                throw InputError(std::string("line ").append(std::to_string(n + 1)).append(
                    " of the dump has no offset column"));
            // A line with an offset alone (xxd and hexdump end with the total) is
            // accepted when it states the octets read so far.
            const std::string_view hex = strip_character_column(parts.hex);
            if (parts.offset != out.size()) {
                char expected[32];
                std::snprintf(expected, sizeof expected, "%04zx", out.size());
                throw InputError(std::string("the offset on line ")
                                     .append(std::to_string(n + 1))
                                     .append(" does not follow the octets before it (expected ")
                                     .append(expected)
                                     .append(")"));
            }
            reader.read(hex, n + 1);
            reader.finish();
        } else {
            reader.read(line, n + 1);
        }
    }
    reader.finish();
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
    const bool from_stdin = (source.args.size() == 1 && source.args[0] == "-") || source.file == "-" ||
                            (source.args.empty() && source.file.empty());
    if (from_stdin) {
        text = read_stream(in);
    } else if (!source.args.empty()) {
        for (size_t i = 0; i < source.args.size(); ++i) {
            if (i) text += ' ';
            text += source.args[i];
        }
    } else {
        text = read_file(source.file);
    }
    if (source.raw) return Octets(text.begin(), text.end());
    return parse_hex(text);
}

std::string read_text(const std::string &file, std::istream &in) {
    return file.empty() || file == "-" ? read_stream(in) : read_file(file);
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

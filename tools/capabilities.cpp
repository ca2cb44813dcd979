#include "capabilities.h"

#include <cstdint>
#include <iterator>

#include "decode_error.h"
#include "library_calls.h"
#include "pdu_names.h"

namespace wsptool {

namespace {

// Identifiers, as assigned.
enum CapabilityCode : unsigned {
    kClientSduSize = 0x00,
    kServerSduSize = 0x01,
    kProtocolOptions = 0x02,
    kMethodMor = 0x03,
    kPushMor = 0x04,
    kExtendedMethods = 0x05,
    kHeaderCodePages = 0x06,
    kAliases = 0x07,
    kClientMessageSize = 0x08,
    kServerMessageSize = 0x09,
};

constexpr const char *kCapabilityNames[] = {
    "Client-SDU-Size", "Server-SDU-Size", "Protocol Options",    "Method-MOR",         "Push-MOR",
    "Extended Methods", "Header Code Pages", "Aliases", "Client-Message-Size", "Server-Message-Size",
};

struct ProtocolOption {
    uint8_t bit;
    const char *name;
};
constexpr ProtocolOption kOptionFlags[] = {
    {0x80, "confirmed push"},          {0x40, "push"},
    {0x20, "session resume"},          {0x10, "acknowledgement headers"},
    {0x08, "large data transfer"},
};

// Address type octet of an alias.
constexpr uint8_t kBearerIncluded = 0x80;
constexpr uint8_t kPortIncluded = 0x40;
constexpr uint8_t kAddressLengthMask = 0x3F;

std::string hex_pairs(const uint8_t *data, size_t count) {
    std::string text = format_hex(data, count, "");
    for (char &c : text)
        if (c == '\n') c = ' ';
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

// The octets [at, end) of a value, read front to back.
struct Span {
    const uint8_t *at;
    const uint8_t *end;
    bool empty() const { return at >= end; }
    size_t size() const { return static_cast<size_t>(end - at); }
};

// A uintvar through the library's reader; nullopt when it is not one.
std::optional<uint32_t> take_uintvar(Span &s) {
    const Octets octets(s.at, s.end);
    size_t used = 0;
    try {
        const uint32_t value = read_uintvar(octets, &used, "value");
        s.at += used;
        return value;
    } catch (const DecodeError &) {
        return std::nullopt;
    }
}

// A Text-string ending with its NUL (a leading quote octet 0x7F dropped),
// in the reports' printable form; nullopt when no NUL ends it.
std::optional<std::string> take_text(Span &s) {
    const uint8_t *nul = s.at;
    while (nul < s.end && *nul != 0) ++nul;
    if (nul == s.end) return std::nullopt;
    const uint8_t *first = s.at < nul && *s.at == 0x7F ? s.at + 1 : s.at;
    std::string text = format_text(first, static_cast<size_t>(nul - first), "");
    if (!text.empty() && text.back() == '\n') text.pop_back();
    s.at = nul + 1;
    return text;
}

std::optional<std::string> size_value(Span s) {
    const std::optional<uint32_t> size = take_uintvar(s);
    if (!size || !s.empty()) return std::nullopt;
    return std::to_string(*size) + (*size == 1 ? " octet" : " octets");
}

std::optional<std::string> options_value(Span s) {
    if (s.empty()) return std::nullopt;
    const uint8_t flags = *s.at++;
    std::string text = hex_octet(flags) + ":";
    uint8_t known = 0;
    for (const ProtocolOption &option : kOptionFlags) {
        known |= option.bit;
        if (flags & option.bit) text.append(text.back() == ':' ? " " : ", ").append(option.name);
    }
    if (flags == 0) text += " none";
    if (flags & ~known) text.append(text.back() == ':' ? " " : ", ").append("unassigned bits ").append(hex_octet(flags & ~known));
    if (!s.empty()) text.append("; then ").append(hex_pairs(s.at, s.size()));
    return text;
}

std::optional<std::string> mor_value(Span s) {
    if (s.size() != 1) return std::nullopt;
    return std::to_string(*s.at);
}

// Codes with names ("0x50 PROPFIND, 0x70 PROPPATCH"), or codes alone.
std::optional<std::string> code_list(Span s, bool with_names) {
    std::string text;
    while (!s.empty()) {
        if (!text.empty()) text += ", ";
        text += hex_octet(*s.at++);
        if (!with_names) continue;
        const std::optional<std::string> name = take_text(s);
        if (!name) return std::nullopt;
        text.append(" ").append(*name);
    }
    return text.empty() ? std::optional<std::string>() : text;
}

// The client's lists pair each code with a name, the server's hold codes
// alone; a list that does not read the expected way is tried the other.
std::optional<std::string> list_value(Span s, bool from_server) {
    if (std::optional<std::string> text = code_list(s, !from_server)) return text;
    return code_list(s, from_server);
}

std::optional<std::string> alias_value(Span s) {
    std::string text;
    while (!s.empty()) {
        const uint8_t type = *s.at++;
        std::string alias;
        if (type & kBearerIncluded) {
            if (s.empty()) return std::nullopt;
            alias.append("bearer ").append(hex_octet(*s.at++)).append(", ");
        }
        if (type & kPortIncluded) {
            if (s.size() < 2) return std::nullopt;
            alias.append("port ").append(std::to_string(s.at[0] << 8 | s.at[1])).append(", ");
            s.at += 2;
        }
        const size_t length = type & kAddressLengthMask;
        if (s.size() < length) return std::nullopt;
        if (length == 4) {
            alias.append(std::to_string(s.at[0])).append(".").append(std::to_string(s.at[1])).append(".")
                .append(std::to_string(s.at[2])).append(".").append(std::to_string(s.at[3]));
        } else {
            alias.append("address ").append(length ? hex_pairs(s.at, length) : std::string("(none)"));
        }
        s.at += length;
        text.append(text.empty() ? "" : "; ").append(alias);
    }
    return text.empty() ? std::optional<std::string>() : text;
}

// The parameters of a capability with an assigned number, as text;
// nullopt for an unassigned number or parameters not of their form.
std::optional<std::string> known_value(unsigned code, Span s, bool from_server) {
    switch (code) {
    case kClientSduSize:
    case kServerSduSize:
    case kClientMessageSize:
    case kServerMessageSize: return size_value(s);
    case kProtocolOptions: return options_value(s);
    case kMethodMor:
    case kPushMor: return mor_value(s);
    case kExtendedMethods:
    case kHeaderCodePages: return list_value(s, from_server);
    case kAliases: return alias_value(s);
    default: return std::nullopt;
    }
}

} // namespace

std::vector<Capability> decode_capabilities(const Octets &field, bool from_server) {
    std::vector<Capability> out;
    size_t at = 0;
    while (at < field.size()) {
        Capability c;
        c.offset = at;
        const auto rest = [&](std::string problem) {
            c.octets.assign(field.begin() + static_cast<std::ptrdiff_t>(c.offset), field.end());
            c.problem = std::move(problem);
            out.push_back(std::move(c));
        };
        uint32_t length = 0;
        try {
            length = read_uintvar(field, &at, "capability length");
        } catch (const DecodeError &) {
            rest("the capability length is not a valid uintvar");
            break;
        }
        if (length > field.size() - at) {
            rest("the capability length claims " + std::to_string(length) + " octets; " +
                 std::to_string(field.size() - at) + " are left");
            break;
        }
        if (length == 0) {
            rest("a capability of 0 octets has no identifier");
            break;
        }
        const size_t end = at + length;
        c.octets.assign(field.begin() + static_cast<std::ptrdiff_t>(c.offset),
                        field.begin() + static_cast<std::ptrdiff_t>(end));
        Span value{field.data() + at, field.data() + end};
        if (*value.at & 0x80) {
            c.code = *value.at++ & 0x7Fu;
            if (*c.code < std::size(kCapabilityNames)) c.name = kCapabilityNames[*c.code];
        } else if (std::optional<std::string> token = take_text(value)) {
            c.name = *token;
        }
        const std::optional<std::string> text =
            c.code ? known_value(*c.code, value, from_server) : std::optional<std::string>();
        if (text)
            c.value = *text;
        else if (value.empty())
            c.value = "(no parameters)";
        else
            c.value = hex_pairs(value.at, value.size()) + (c.name.empty() || !c.code ? "" : " (not of its form)");
        out.push_back(std::move(c));
        at = end;
    }
    return out;
}

std::string describe_capability(const Capability &c) {
    if (!c.problem.empty())
        return "octet " + std::to_string(c.offset) + " on: " + c.problem + ": " + hex_pairs(c.octets.data(), c.octets.size());
    std::string label;
    if (c.code)
        label = (c.name.empty() ? "capability" : c.name) + " (" + hex_octet(*c.code) + ")";
    else
        label = c.name.empty() ? "capability with an unreadable identifier" : c.name;
    return label + ": " + c.value;
}

} // namespace wsptool

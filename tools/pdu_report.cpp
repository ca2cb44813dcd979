#include "pdu_report.h"

#include <cstdio>

#include "capabilities.h"
#include "json_fields.h"
#include "pdu_names.h"
#include "wbxml_body.h"

namespace wsptool {

namespace {

std::string octet_count(size_t count) {
    return std::to_string(count) + (count == 1 ? " octet" : " octets");
}

std::string printable(const std::string &text) {
    return format_text(reinterpret_cast<const uint8_t *>(text.data()), text.size(), "");
}

std::string json_key(std::string name) {
    for (char &c : name)
        if (c == '-') c = '_';
    return name;
}

std::string indented(const std::string &text, const std::string &indent) {
    std::string out;
    bool line_start = true;
    for (char c : text) {
        if (line_start) out += indent;
        out += c;
        line_start = c == '\n';
    }
    return out;
}

} // namespace

std::string hex_run(const Octets &octets) {
    std::string out;
    char pair[4];
    for (uint8_t octet : octets) {
        std::snprintf(pair, sizeof pair, "%02X", octet);
        out += pair;
    }
    return out;
}

std::string body_text(const std::string &content_type, const Octets &body, const ReportOptions &options) {
    std::string out = "body: " + octet_count(body.size());
    if (!body.empty() && !options.raw_body && is_wbxml_content_type(content_type)) {
        const WbxmlConversion xml = wbxml_to_xml(body.data(), body.size());
        if (xml.ok) return out + " (WBXML, shown as XML)\n" + indented(xml.xml, "  ");
        out += " (WBXML that libwbxml2 cannot read: " + xml.error + ")";
    }
    return out + "\n" + format_hex(body.data(), body.size(), "  ");
}

std::string pdu_text(const DecodedPdu &pdu, const ReportOptions &options) {
    std::string out;
    char tid[16];
    if (pdu.tid) {
        std::snprintf(tid, sizeof tid, "0x%02X", *pdu.tid);
        out.append("tid: ").append(tid).append("\n");
    }
    out.append("pdu: ").append(describe_pdu_type(pdu.type)).append("\n");
    for (const PduField &field : pdu.fields) out.append(field.name).append(": ").append(field.value).append("\n");
    if (pdu.capabilities) {
        out.append("capabilities: ").append(octet_count(pdu.capabilities->size())).append("\n");
        if (options.hex_headers)
            out += format_hex(pdu.capabilities->data(), pdu.capabilities->size(), "  ");
        else
            for (const Capability &c : decode_capabilities(*pdu.capabilities, pdu.type == kPduConnectReply))
                out.append("  ").append(describe_capability(c)).append("\n");
    }
    if (pdu.content_type) {
        // An empty content type leaves the colon alone.
        out += "content-type:";
        out += pdu.content_type->empty() ? std::string("\n") : " " + printable(*pdu.content_type);
    }
    if (pdu.has_headers) {
        out.append("headers: ").append(octet_count(pdu.header_octets)).append("\n");
        const auto *text = reinterpret_cast<const uint8_t *>(pdu.header_text.data());
        out += options.hex_headers ? format_hex(text, pdu.header_text.size(), "  ")
                                   : format_text(text, pdu.header_text.size(), "  ");
    }
    if (pdu.body) out += body_text(pdu.content_type.value_or(""), *pdu.body, options);
    return out;
}

nlohmann::ordered_json header_lines_json(const std::string &header_text) {
    nlohmann::ordered_json lines = nlohmann::ordered_json::array();
    const std::string text = printable(header_text);
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        const std::string line = text.substr(start, end - start);
        const size_t colon = line.find(':');
        nlohmann::ordered_json entry;
        entry["name"] = line.substr(0, colon);
        entry["value"] = colon == std::string::npos ? std::string() : line.substr(colon + 1);
        lines.push_back(std::move(entry));
        start = end + 1;
    }
    return lines;
}

nlohmann::ordered_json pdu_json(const DecodedPdu &pdu, const ReportOptions &options) {
    nlohmann::ordered_json out;
    out["tid"] = pdu.tid ? nlohmann::ordered_json(*pdu.tid) : nlohmann::ordered_json(nullptr);
    out["pdu"] = pdu_type_name(pdu.type);
    out["type"] = pdu.type;
    for (const PduField &field : pdu.fields) out[json_key(field.name)] = field.value;
    if (pdu.capabilities) out["capabilities"] = hex_run(*pdu.capabilities);
    if (pdu.content_type) {
        std::string type = printable(*pdu.content_type);
        if (!type.empty() && type.back() == '\n') type.pop_back();
        out["content_type"] = type;
    }
    if (pdu.has_headers)
        out["headers"] = {{"octets", pdu.header_octets}, {"lines", header_lines_json(pdu.header_text)}};
    if (pdu.body) {
        nlohmann::ordered_json body{{"octets", pdu.body->size()}, {"hex", hex_run(*pdu.body)}};
        if (!pdu.body->empty() && !options.raw_body && is_wbxml_content_type(pdu.content_type.value_or(""))) {
            const WbxmlConversion xml = wbxml_to_xml(pdu.body->data(), pdu.body->size());
            if (xml.ok)
                body["xml"] = xml.xml;
            else
                body["wbxml_error"] = xml.error;
        }
        out["body"] = std::move(body);
    }
    // The capabilities taken apart (after the keys scripts knew before).
    if (pdu.capabilities) {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const Capability &c : decode_capabilities(*pdu.capabilities, pdu.type == kPduConnectReply))
            list.push_back({{"offset", c.offset},
                            {"hex", hex_run(c.octets)},
                            {"identifier", c.code ? nlohmann::ordered_json(*c.code) : nlohmann::ordered_json(nullptr)},
                            {"name", c.name},
                            {"value", c.value},
                            {"problem", c.problem}});
        out["capability_list"] = std::move(list);
    }
    if (pdu.failure) out["failure"] = failure_json(*pdu.failure);
    return out;
}

} // namespace wsptool

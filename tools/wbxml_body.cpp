#include "wbxml_body.h"

#include <cctype>
#include <cstdlib>
#include <vector>

#include <wbxml/wbxml.h>

namespace wsptool {

bool is_wbxml_content_type(std::string_view content_type) {
    std::string media(content_type.substr(0, content_type.find(';')));
    for (char &c : media) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    // The WBXML types of the push content-type codes, then any name that
    // says wbxml at its end (+wbxml, -wbxml, .wbxml).
    static constexpr std::string_view kWbxmlTypes[] = {
        "application/vnd.wap.sic",  "application/vnd.wap.slc",  "application/vnd.wap.coc",
        "application/vnd.wap.wmlc", "application/vnd.wap.wbxml", "application/vnd.wap.emn+wbxml",
    };
    for (std::string_view type : kWbxmlTypes)
        if (media == type) return true;
    return media.size() > 5 && media.compare(media.size() - 5, 5, "wbxml") == 0;
}

WbxmlConversion wbxml_to_xml(const uint8_t *data, size_t count) {
    WbxmlConversion result;
    if (count == 0) {
        result.error = "the body is empty";
        return result;
    }
    WBXMLConvWBXML2XML *conv = nullptr;
    WBXMLError error = wbxml_conv_wbxml2xml_create(&conv);
    if (error != WBXML_OK) {
        result.error = reinterpret_cast<const char *>(wbxml_errors_string(error));
        return result;
    }
    wbxml_conv_wbxml2xml_set_gen_type(conv, WBXML_GEN_XML_INDENT);
    wbxml_conv_wbxml2xml_set_indent(conv, 2);
    // The converter wants writable input.
    std::vector<WB_UTINY> input(data, data + count);
    WB_UTINY *xml = nullptr;
    WB_ULONG xml_length = 0;
    error = wbxml_conv_wbxml2xml_run(conv, input.data(), static_cast<WB_ULONG>(input.size()), &xml, &xml_length);
    wbxml_conv_wbxml2xml_destroy(conv);
    if (error != WBXML_OK) {
        result.error = reinterpret_cast<const char *>(wbxml_errors_string(error));
        std::free(xml);
        return result;
    }
    result.ok = true;
    result.xml.assign(reinterpret_cast<const char *>(xml), xml_length);
    std::free(xml);
    while (!result.xml.empty() && (result.xml.back() == '\n' || result.xml.back() == '\0')) result.xml.pop_back();
    result.xml += '\n';
    return result;
}

} // namespace wsptool

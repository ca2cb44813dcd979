// Bodies in WBXML (service indication and loading, provisioning, DRM
// rights, SyncML, ...) turned into XML with libwbxml2 so that they can be
// read.
#ifndef WSPTOOL_WBXML_BODY_H
#define WSPTOOL_WBXML_BODY_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace wsptool {

// True when the content type (with or without parameters) names a WBXML
// document.
bool is_wbxml_content_type(std::string_view content_type);

// The XML of a WBXML document, indented by two blanks per level.
struct WbxmlConversion {
    bool ok = false;
    std::string xml;   // ok: the document, ending in "\n"
    std::string error; // not ok: libwbxml2's reason
};
WbxmlConversion wbxml_to_xml(const uint8_t *data, size_t count);

} // namespace wsptool

#endif // WSPTOOL_WBXML_BODY_H

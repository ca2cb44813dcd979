#include "status_names.h"

#include <cstdint>

#include "tarnwspencdec.h"

namespace wsptool {

bool status_ok(int status) { return static_cast<int16_t>(status) == WSP_OK; }

std::string status_name(int status) {
    if (static_cast<uint16_t>(status) == WSP_VARINTLEN_FAIL && status > 0)
        return std::string("WSP_VARINTLEN_FAIL (").append(std::to_string(WSP_VARINTLEN_FAIL)).append(")");
    const int code = static_cast<int16_t>(status);
    const char *name = nullptr;
    switch (code) {
    case WSP_OK: name = "WSP_OK"; break;
    case WSP_ERR_ARG: name = "WSP_ERR_ARG"; break;
    case WSP_ERR_FAIL: name = "WSP_ERR_FAIL"; break;
    case WSP_ERR_TRUNCATED: name = "WSP_ERR_TRUNCATED"; break;
    case WSP_ERR_VERSION: name = "WSP_ERR_VERSION"; break;
    default: break;
    }
    std::string text = name ? std::string(name).append(" (") : std::string("unknown status (");
    return text.append(std::to_string(code)).append(")");
}

} // namespace wsptool

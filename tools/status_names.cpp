#include "status_names.h"

#include <cstdint>

#include "decode_error.h"
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

std::string status_meaning(int status) {
    if (static_cast<uint16_t>(status) == WSP_VARINTLEN_FAIL && status > 0)
        return "the uintvar does not have the expected length";
    switch (static_cast<int16_t>(status)) {
    case WSP_OK: return "success";
    case WSP_ERR_ARG: return "a value of a form the decoder does not accept, or a code-page shift it cannot follow";
    case WSP_ERR_FAIL: return "malformed or over-long value, no room in the output, or a lookup miss";
    case WSP_ERR_TRUNCATED: return "a text or header line longer than the room the library gives it";
    case WSP_ERR_VERSION: return "the encoding version is not one of 1.1 to 1.4";
    default: return "a status the library does not document";
    }
}

std::string describe_status(int status) {
    std::string text = status_name(status);
    if (!status_ok(status)) text.append(": ").append(status_meaning(status));
    return text;
}

void throw_library_failure(const char *function, int status) {
    throw LibraryFailure(std::string(function).append(" failed: ").append(describe_status(status)), status);
}

} // namespace wsptool

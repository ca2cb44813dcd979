#include "json_fields.h"

#include <cstdint>

#include "status_names.h"

namespace wsptool {

nlohmann::ordered_json status_json(std::optional<int> status) {
    if (!status) return nullptr;
    const std::string name = status_name(*status);
    return {{"name", name.substr(0, name.find(' '))},
            {"code", static_cast<int16_t>(*status)},
            {"meaning", status_meaning(*status)}};
}

nlohmann::ordered_json failure_json(const DecodeFailure &failure) {
    return {{"error", failure.error},
            {"status", status_json(failure.status)},
            {"stop_offset", failure.stop_offset},
            {"detail", failure.detail}};
}

std::string json_line(const nlohmann::ordered_json &object) {
    return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace wsptool

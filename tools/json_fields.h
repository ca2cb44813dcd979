// JSON pieces that several commands print the same way: a library status,
// the failure that stopped a decoding, and one object on one line.
#ifndef WSPTOOL_JSON_FIELDS_H
#define WSPTOOL_JSON_FIELDS_H

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "decode_error.h"

namespace wsptool {

// {"name": "WSP_ERR_FAIL", "code": -214, "meaning": "..."}, or null.
nlohmann::ordered_json status_json(std::optional<int> status);

// {"error": "...", "status": STATUS or null, "stop_offset": N, "detail": "..."}
nlohmann::ordered_json failure_json(const DecodeFailure &failure);

// The object on one line, ending with a line feed; text that is not UTF-8
// is replaced, never refused.
std::string json_line(const nlohmann::ordered_json &object);

} // namespace wsptool

#endif // WSPTOOL_JSON_FIELDS_H

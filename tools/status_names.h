// Library statuses as wsptool reports them: by name, number and meaning.
#ifndef WSPTOOL_STATUS_NAMES_H
#define WSPTOOL_STATUS_NAMES_H

#include <string>

namespace wsptool {

// True when the low 16 bits of a library result carry WSP_OK.
bool status_ok(int status);

// "WSP_ERR_FAIL (-214)".  The low 16 bits are read as a signed code, as
// callers of the library compare them; the varint-length failure pattern
// 65322 keeps its unsigned form.  Unknown codes: "unknown status (N)".
std::string status_name(int status);

// A short meaning of the status ("malformed or over-long value, no room in
// the output, or a lookup miss"); "success" for WSP_OK.
std::string status_meaning(int status);

// "WSP_ERR_FAIL (-214): malformed or ...": name, number and meaning (a
// success: its name and number only).
std::string describe_status(int status);

} // namespace wsptool

#endif // WSPTOOL_STATUS_NAMES_H

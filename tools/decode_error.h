// Input that the library, or wsptool's reading of a PDU, refused: reported
// on standard error and the command exits with 1.
#ifndef WSPTOOL_DECODE_ERROR_H
#define WSPTOOL_DECODE_ERROR_H

#include <stdexcept>
#include <string>

namespace wsptool {

class DecodeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A library function returned a failure status.
class LibraryFailure : public DecodeError {
public:
    LibraryFailure(const std::string &message, int failed_status) : DecodeError(message), status(failed_status) {}
    int status;
};

// "wsp_dec_hdr failed: WSP_ERR_ARG (-211): <meaning>" as a LibraryFailure.
[[noreturn]] void throw_library_failure(const char *function, int status);

} // namespace wsptool

#endif // WSPTOOL_DECODE_ERROR_H

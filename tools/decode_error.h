// Input that the library, or wsptool's reading of a PDU, refused: reported
// on standard error and the command exits with 1.
#ifndef WSPTOOL_DECODE_ERROR_H
#define WSPTOOL_DECODE_ERROR_H

#include <cstddef>
#include <optional>
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

// Where and why decoding stopped, kept beside what was decoded before it so
// that the reports can print both.
struct DecodeFailure {
    std::string error;         // "wsp_dec_hdr failed: WSP_ERR_ARG (-211): <meaning>", or what wsptool found
    std::optional<int> status; // the library's status; none when wsptool itself found the fault
    size_t stop_offset = 0;    // where decoding stopped, from the start of the input (or datagram)
    std::string detail;        // "decoding stopped at offset 10, in the shift: <why>", or ""

    // The error, then the detail on a line of its own ("wsptool: " before
    // it, as main prints the first line).
    std::string message() const { return detail.empty() ? error : error + "\nwsptool: " + detail; }

    // The failure a thrown error describes (with its status when the
    // library refused), stopped at `stop_offset`.
    static DecodeFailure from(const std::exception &e, size_t stop_offset) {
        const auto *library = dynamic_cast<const LibraryFailure *>(&e);
        return {e.what(), library ? std::optional<int>(library->status) : std::nullopt, stop_offset, ""};
    }
};

} // namespace wsptool

#endif // WSPTOOL_DECODE_ERROR_H

// The versions `wsptool --version` prints.
#ifndef WSPTOOL_TOOL_VERSION_H
#define WSPTOOL_TOOL_VERSION_H

#include "tarnwspencdec.h"

#define WSPTOOL_STRINGIFY_(x) #x
#define WSPTOOL_STRINGIFY(x) WSPTOOL_STRINGIFY_(x)

namespace wsptool {

// The tool is versioned with the project (WSPTOOL_VERSION, set by the build).
inline constexpr const char *kToolVersion = WSPTOOL_VERSION;

// The library's version as its public header states it; a header without
// the version macros is the one the project was configured with.
#if defined(TARNWSPENCDEC_VERSION_MAJOR) && defined(TARNWSPENCDEC_VERSION_MINOR) && \
    defined(TARNWSPENCDEC_VERSION_PATCH)
inline constexpr const char *kLibraryVersion = WSPTOOL_STRINGIFY(TARNWSPENCDEC_VERSION_MAJOR) "." WSPTOOL_STRINGIFY(
    TARNWSPENCDEC_VERSION_MINOR) "." WSPTOOL_STRINGIFY(TARNWSPENCDEC_VERSION_PATCH);
#else
inline constexpr const char *kLibraryVersion = WSPTOOL_VERSION;
#endif

} // namespace wsptool

#endif // WSPTOOL_TOOL_VERSION_H

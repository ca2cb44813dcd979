// Fixed build switches.  Their values are part of the library's contract.
#include "switches.h"

#include "tarnwspencdec.h"

extern "C" {
WSP_API int device_is_sar_enabled(void) { return 1; }
WSP_API int device_is_optionTPI_support_enabled(void) { return 1; }
WSP_API int device_Is_SIA_Available(void) { return 0; }
WSP_API int device_fallback_to_byterange(void) { return 1; }
}

int device_content_id_text_allowed() { return 1; }
int device_encoding_version_as_text() { return 0; }

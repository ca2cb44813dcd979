/* The public header under the oldest C it supports: C89 (with <stdint.h>).
 * Compiled, never run: the build fails when the header stops being valid. */
#include <tarnwspencdec.h>

int wsp_header_c89_major(void) { return TARNWSPENCDEC_VERSION_MAJOR; }

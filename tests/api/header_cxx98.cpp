// The public header under the oldest C++ it supports: C++98, where the
// layout checks cannot use static_assert.  Compiled, never run.
#include <tarnwspencdec.h>

int wsp_header_cxx98_major() { return TARNWSPENCDEC_VERSION_MAJOR; }

// What the harnesses share: the check that stops the fuzzer when an
// invariant breaks, the status test, and the PDU buffer of the push
// harnesses.
#ifndef WSP_FUZZ_HARNESS_H
#define WSP_FUZZ_HARNESS_H

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "tarnwspencdec.h"

// A broken invariant is a finding like a sanitizer report.
inline void fuzz_check(bool ok) {
    if (!ok) __builtin_trap();
}

inline bool fuzz_ok(int status) { return static_cast<int16_t>(status) == WSP_OK; }

// A PDU buffer over a malloc'ed copy of exactly the input's octets: own
// (the library may free or re-point it) or external (the caller's).
inline wsp_buffer fuzz_pdu(const uint8_t *data, size_t size, bool external) {
    wsp_buffer pdu{};
    pdu.data = static_cast<unsigned char *>(std::malloc(size ? size : 1));
    if (size) std::memcpy(pdu.data, data, size);
    pdu.size = static_cast<uint16_t>(size);
    pdu.length = static_cast<uint16_t>(size);
    pdu.flags = external ? WSP_BUFFER_EXTERNAL : 0;
    return pdu;
}

#endif

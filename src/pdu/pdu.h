// PDU operations: push PDU decoding, body hand-over and Profile headers.
#ifndef WSP_PDU_PDU_H
#define WSP_PDU_PDU_H

#include <cstdint>

#include "tarnwspencdec.h"

// Appends code as a Short-integer and each line of text (NUL-terminated,
// cut in place) as a Text-string, with the code again between lines.
int wsp_uaphdr_lines(uint8_t code, char *text, wsp_buffer *out);

#endif

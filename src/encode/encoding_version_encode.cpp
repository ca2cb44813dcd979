// Encoding-Version: a version, optionally preceded by the code page it
// applies to.
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"

int wsp_encode_encoding_version(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (value == nullptr) return kWspErrFail;
    const uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *text = wsp_enc_prepare(value, true);
    // An empty value has no numeric form either: like any other such value
    // it goes out as its Text-string, here a lone NUL (C3 00).
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;

    char *blank = std::strchr(text, ' ');
    if (blank == nullptr) {
        // "1.3" is 0x93; "1.0" and "1" are both 0x9F; anything that does not
        // fit the one-octet form goes out as text.
        return wsp_append_version(text, out) == kWspOk ? kWspOk : kWspErrFail;
    }
    // "<code page> <version>": both inside a Value-length.  The page is
    // read the way strtoul reads a decimal number.
    *blank = '\0';
    char *version = blank + 1;
    wsp_trim(&version);
    wsp_scratch scratch(scratch_size);
    if (!scratch.ok()) return kWspErrFail;
    if (wsp_append_short_int(wsp_strtou32(text, nullptr, 10), scratch.get()) != kWspOk) return kWspErrFail;
    if (wsp_append_version(version, scratch.get()) != kWspOk) return kWspErrFail;
    return wsp_append_value_block(out, scratch.get()) == kWspOk ? kWspOk : kWspErrFail;
}

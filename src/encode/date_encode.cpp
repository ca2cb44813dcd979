// The encoders of the date headers (Date, Expires, If-Modified-Since,
// If-Unmodified-Since, Last-Modified, X-Wap-Tod) and of If-Range, in the
// shape of the per-header encoder table entries.
#include <cstring>

#include "date.h"
#include "encode.h"
#include "primitives.h"

// The code octet goes first; any failure there is -214, also when it fills
// the output exactly.  The text is then lower-cased in place and parsed.
// A missing text fails after the code octet, as any unusable value does.
int wsp_encode_date_header(uint8_t code, char *text, wsp_buffer *out, uint8_t version_index) {
    if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    if (text == nullptr) return kWspErrFail;
    wsp_str_lower(text);
    return wsp_parse_http_date(text, out);
}

// A value that starts with a day name is a date; anything else (an entity
// tag) goes out through the text-or-number encoder.  The whole value is
// lower-cased first, so an entity tag is sent in lower case as well: kept
// that way on purpose.
int wsp_encode_if_range(uint8_t code, char *text, wsp_buffer *out, uint8_t version_index) {
    if (text == nullptr) return kWspErrFail;
    wsp_str_lower(text);
    for (const char *day : wsp_day_names)
        if (std::strncmp(text, day, 3) == 0) return wsp_encode_date_header(code, text, out, version_index);
    return wsp_encode_number_or_text(code, text, out, version_index);
}

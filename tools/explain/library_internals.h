// The one place where wsptool's explain engine reaches inside the library:
// the per-header decoders, the value measuring and skipping functions, the
// readers and line writers of the header block walk, and the header-name
// and version tables.  They come from the library's internal static archive
// (the same objects as the shared object).  When the library renames or
// re-stores one of them, only library_internals.cpp changes.
#ifndef WSPTOOL_EXPLAIN_LIBRARY_INTERNALS_H
#define WSPTOOL_EXPLAIN_LIBRARY_INTERNALS_H

#include <cstdint>

#include "tarnwspencdec.h"

namespace wsptool::lib {

// Statuses, as the library returns them.
inline constexpr int kOk = WSP_OK;
inline constexpr int kErrArg = WSP_ERR_ARG;
inline constexpr int kErrFail = WSP_ERR_FAIL;
inline constexpr int kErrTruncated = WSP_ERR_TRUNCATED;

// Scratch sizes the block walk works with.
extern const uint16_t kNameArea;     // the name buffer (32 octets)
extern const uint16_t kNameCapacity; // capacity handed to the name reader (30)
extern const uint16_t kValueArea;    // the text value buffer (200 octets)
extern const uint16_t kValueCapacity; // capacity handed to the text reader (198)

// Value classes of a first octet: 0 Short-length (0..30), 1 Length-quote
// (31), 2 Quote (127), 3 Quoted-string (34), 4 text (32..126), 5
// Short-integer (128..255).
enum ValueClass : uint8_t {
    kShortLength = 0,
    kLengthQuote = 1,
    kQuote = 2,
    kQuoted = 3,
    kText = 4,
    kShortInteger = 5,
};
ValueClass value_class(uint8_t octet);
bool is_text_class(ValueClass cls);

// The highest well-known header code and the content-type code that a
// header block never writes out.
inline constexpr uint8_t kHighestHeaderCode = 0x47;
inline constexpr uint8_t kContentTypeCode = 0x11;

// The name of a well-known header code 0..0x47 (nullptr past the table).
const char *header_name(uint8_t code);

// The highest well-known code that encoding version 1..4 decodes, or -1 for
// any other version number (none is decoded).
int highest_code(int version);

// The value decoder registered for a code, nullptr when the entry is empty.
using HeaderDecoder = int (*)(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
HeaderDecoder header_decoder(uint8_t code);

// True when the code's decoder reads its value as a number or a date (a
// Short-length octet there starts a Long-integer, not a Value-length).
bool decodes_long_integer(uint8_t code);

int skip_value(const uint8_t **cursor, uint16_t remaining);
int value_size(const uint8_t *value, uint32_t *size, uint16_t remaining);
int read_token_text(const uint8_t **cursor, char *out, uint16_t remaining, uint16_t capacity);
int read_text_string(const uint8_t **cursor, char *out, uint16_t remaining, uint16_t capacity);
int read_uintvar(const uint8_t **cursor, uint32_t *value, uint16_t avail);
void str_lower(char *text);

int add_header_line(wsp_buffer *out, const char *name, const char *value);
int add_raw_header_line(wsp_buffer *out, const char *name, const uint8_t *value, uint16_t size);

} // namespace wsptool::lib

#endif // WSPTOOL_EXPLAIN_LIBRARY_INTERNALS_H

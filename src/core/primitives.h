// Primitive value codecs of the WSP basic types: uintvar, Short-integer,
// Long-integer, Integer-value, Value-length, Text-string, Quoted-string,
// Token-text and Version-value, the octet classifier and the text utilities
// every header codec is built from.
//
// Two calling styles live side by side:
//  - cursor style: a pointer to a byte pointer that is advanced on success
//    and left alone on failure;
//  - buffer style: appends at data + offset + length of a wsp_buffer, tests
//    length against size and adds what was written to length.  Writers never
//    roll back; callers discard a buffer after a failure.  Every octet goes
//    through the guarded stores of buffer.h.
// Every length, index and counter is uint16_t and wraps at 0x10000.
#ifndef WSP_CORE_PRIMITIVES_H
#define WSP_CORE_PRIMITIVES_H

#include <cstddef>
#include <cstdint>

#include "tarnwspencdec.h"

// Status values, as carried in the low 16 bits of every result.
inline constexpr int kWspOk = WSP_OK;
inline constexpr int kWspErrArg = WSP_ERR_ARG;
inline constexpr int kWspErrFail = WSP_ERR_FAIL;
inline constexpr int kWspErrTruncated = WSP_ERR_TRUNCATED;
inline constexpr int kWspErrVersion = WSP_ERR_VERSION;

// True when a result carries WSP_OK in its low 16 bits, the way clients
// read every status.
constexpr bool wsp_ok(int status) { return static_cast<int16_t>(status) == static_cast<int16_t>(kWspOk); }

// Value classes of a value's first octet.
enum : uint8_t {
    WSP_CLASS_SHORT_LENGTH = 0, // 0..30
    WSP_CLASS_LENGTH_QUOTE = 1, // 31, a uintvar length follows
    WSP_CLASS_QUOTE = 2,        // 127, a Text-string starting at 128+ follows
    WSP_CLASS_QUOTED = 3,       // 34, start of a Quoted-string
    WSP_CLASS_TEXT = 4,         // 32..126 other than 34
    WSP_CLASS_SHORT_INT = 5,    // 128..255
};

// The class of one octet (the same decision as wsp_value_class).
constexpr uint8_t wsp_class_of(uint8_t o) {
    if (o < 31) return WSP_CLASS_SHORT_LENGTH;
    if (o == 31) return WSP_CLASS_LENGTH_QUOTE;
    if (o == 127) return WSP_CLASS_QUOTE;
    if (o == 34) return WSP_CLASS_QUOTED;
    if (o >= 32 && o <= 126) return WSP_CLASS_TEXT;
    return WSP_CLASS_SHORT_INT;
}

// Text classes: 2, 3 and 4.
constexpr bool wsp_is_text_class(uint8_t cls) {
    return cls == WSP_CLASS_QUOTE || cls == WSP_CLASS_QUOTED || cls == WSP_CLASS_TEXT;
}

// Octet 32..126 that is not one of the separators ()<>@,;:\"/[]?={} SP HT.
// One bit per octet, built at compile time: the writers test it on every
// octet of a name.
struct wsp_octet_set {
    uint32_t bits[8];
    constexpr bool has(uint8_t c) const { return ((bits[c >> 5] >> (c & 31u)) & 1u) != 0; }
};
constexpr wsp_octet_set wsp_make_token_chars() {
    wsp_octet_set set{};
    constexpr const char separators[] = "()<>@,;:\\\"/[]?={} \t";
    for (unsigned c = 32; c <= 126; ++c) {
        bool separator = false;
        for (const char *p = separators; *p != '\0'; ++p) separator = separator || static_cast<unsigned char>(*p) == c;
        if (!separator) set.bits[c >> 5] |= 1u << (c & 31u);
    }
    return set;
}
inline constexpr wsp_octet_set wsp_token_chars = wsp_make_token_chars();
constexpr bool wsp_is_token_char(uint8_t c) { return wsp_token_chars.has(c); }
static_assert(wsp_is_token_char('a') && wsp_is_token_char('~') && wsp_is_token_char('!'));
static_assert(!wsp_is_token_char(' ') && !wsp_is_token_char('\t') && !wsp_is_token_char('"') &&
              !wsp_is_token_char('}') && !wsp_is_token_char(127) && !wsp_is_token_char(31) &&
              !wsp_is_token_char(128));

// Octet 9, 10, 13, 32..126 or 128..255.  Inline: the text writers test it
// on every octet they copy.
constexpr bool wsp_is_text_char(uint8_t c) { return c == 9 || c == 10 || c == 13 || (c >= 32 && c != 127); }

// Stores the class of the octet at p.
void wsp_value_class(const uint8_t *p, uint8_t *cls);

// Number of significant bits of v (1 for 0).
uint8_t wsp_bit_count(uint32_t v);

// ---- cursor style readers (internal) ----
// wsp_read_long_int: `remaining` counts the input octets from the length
// octet on.  The length octet n is compared with the octets that follow it
// (remaining - 1), so the whole integer always lies inside the input.
int wsp_read_long_int(const uint8_t **cursor, uint32_t *value, uint16_t remaining);
int wsp_read_token_text(const uint8_t **cursor, char *out, uint16_t remaining, uint16_t capacity);
int wsp_read_text_string(const uint8_t **cursor, char *out, uint16_t remaining, uint16_t capacity);
int wsp_read_text_value(const uint8_t **cursor, char *out, int cls, uint16_t limit, uint16_t outsize);
// wsp_read_text_string without the copy: the same statuses, and on WSP_OK
// *text points at the text inside the input (NUL-terminated there) and
// *cursor is past its NUL.
int wsp_check_text_string(const uint8_t **cursor, const char **text, uint16_t remaining, uint16_t capacity);

// ---- buffer style writers (internal) ----
int wsp_append_text_string(const char *text, wsp_buffer *buf);
int wsp_append_plain_text(const char *text, wsp_buffer *buf);
int wsp_append_quoted_string(const char *text, wsp_buffer *buf);
int wsp_append_short_int(uint32_t v, wsp_buffer *buf);
int wsp_append_long_int(uint32_t v, wsp_buffer *buf);
int wsp_append_integer(uint32_t v, wsp_buffer *buf);
int wsp_append_integer_text(const char *text, wsp_buffer *buf);
int wsp_append_version(const char *text, wsp_buffer *buf);
int wsp_append_value_block(wsp_buffer *dst, const wsp_buffer *src);

// Appends raw octets after a room test (size >= length + n), else -214.
int wsp_append_bytes(const uint8_t *bytes, uint16_t n, wsp_buffer *buf);

// ---- locale-independent character helpers ----
// The library lower-cases and tests characters the way the C locale does, on
// octets, whatever the host's char signedness.
constexpr uint8_t wsp_ascii_lower(uint8_t c) { return (c >= 'A' && c <= 'Z') ? static_cast<uint8_t>(c + 32) : c; }
constexpr uint8_t wsp_ascii_upper(uint8_t c) { return (c >= 'a' && c <= 'z') ? static_cast<uint8_t>(c - 32) : c; }
constexpr bool wsp_ascii_is_digit(uint8_t c) { return c >= '0' && c <= '9'; }
// strcasecmp over ASCII letters: 0 when equal.
int wsp_strcasecmp(const char *a, const char *b);

// strtoul as a 32-bit unsigned long behaves on the target: optional leading
// white space and sign, base 10 or 16 (optional 0x prefix for 16); a value
// that does not fit saturates to 0xFFFFFFFF; a minus sign negates modulo
// 2^32.  *end (may be null) receives the first character not used.
uint32_t wsp_strtou32(const char *text, const char **end, int base);

// ---- text utilities (internal) ----
// The tokenizer of wsp_strtoken for a delimiter known to be one character
// (not NUL): the same cuts, without the test of the delimiter text.
char *wsp_next_token(char **pos, uint8_t delim);
// The same, also giving the token's length.
char *wsp_next_token_n(char **pos, uint8_t delim, size_t *length);
// Lower-cases the n octets at s in place.
void wsp_lower_run(char *s, size_t n);
const char *wsp_find_unquoted(const char *hay, const char *needle);
char *wsp_uint_to_text(uint32_t v, char *end);
void wsp_str_lower(char *s);
void wsp_trim(char **pos);

#endif

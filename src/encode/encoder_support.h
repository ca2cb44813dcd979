// Steps shared by the well-known header value encoders: preparing the value
// text, walking its list elements, sizing a value scratch, and the few
// writers that several value encoders need on top of the primitive ones.
#ifndef WSP_ENCODE_ENCODER_SUPPORT_H
#define WSP_ENCODE_ENCODER_SUPPORT_H

#include <cstdint>

#include "tarnwspencdec.h"

// Trims the value in place and, when `lower` is set, lower-cases what is
// left.  Returns the start of the trimmed text, or nullptr for a null value
// (every value encoder refuses a null value with -214).
char *wsp_enc_prepare(char *value, bool lower);

// The next element of a list cut at the one-character delimiter `delim`
// (outside quoted sections, with the tokenizer's rules: leading and empty
// fields are skipped, a list of delimiters only yields one empty element),
// trimmed.  nullptr when the list is done.
char *wsp_enc_next_element(char **cursor, const char *delim);

// Capacity of the scratch in which a value encoder builds the part of a value that
// follows its Value-length: the length of the whole value text as it was
// handed in (leading blanks included) plus one, in 16 bits.
uint16_t wsp_enc_scratch_size(const char *value);

// A uintvar appended to a buffer after a room test (size >= length + n);
// -214 when it does not fit.
int wsp_append_uintvar(uint32_t v, wsp_buffer *out);

// True when the text is non-empty and made of the digits 0-9 only.
bool wsp_is_decimal_digits(const char *text);

// A free-form value: digits only become an Integer-value (Short-integer up
// to 127, Long-integer above; too large a number saturates to 0xFFFFFFFF),
// a text beginning with a quotation mark a Quoted-string, anything else
// Token-text.  -214 when the writer fails.
int wsp_append_untyped_value(const char *text, wsp_buffer *out);

// Cuts `list` at `delim` and hands each trimmed element (lower-cased first
// when `lower` is set) to wsp_encode_param with the version index, writing
// into `out`.  Any parameter that does not encode gives -214.
int wsp_append_param_list(char *list, const char *delim, bool lower, wsp_buffer *out, uint8_t version_index);

#endif

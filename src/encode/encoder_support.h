// Steps shared by the well-known header value encoders: preparing the value
// text, walking its list elements, sizing a value scratch, and the few
// writers that several value encoders need on top of the primitive ones.
#ifndef WSP_ENCODE_ENCODER_SUPPORT_H
#define WSP_ENCODE_ENCODER_SUPPORT_H

#include <cstdint>

#include "encode.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"
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

// How a value's first part (a scheme, a unit, a disposition) is cut off.
enum class wsp_first_part : uint8_t {
    token_lowered, // by the tokenizer from the value as written, then lower-cased alone
    element,       // from the value lower-cased whole, as a trimmed list element
};

// The opening of a value whose first part decides its form: the scratch
// size of the value as handed in, and the text after the first part.
struct wsp_value_opening {
    uint16_t scratch_size;
    char *rest;
};

// Prepares the value and cuts its first part at `delim` as `how` says.
// nullptr for a null value or one without a first part; nothing is
// written to any output.
char *wsp_enc_open_value(char *value, const char *delim, wsp_first_part how, wsp_value_opening *opening);

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

// The code of the first of a table's first `rows` rows whose name is the
// element as written, as an Integer-value (a Short-integer up to 127), or,
// when no row has that name, the element itself as Token-text.  -214 when
// the writer fails.
int wsp_append_code_or_token(const wsp_table &table, uint16_t rows, const char *element, wsp_buffer *out);

// What a list does after a first element that must stand alone ("none" in
// Accept-Ranges, "*" in If-Match and If-None-Match).
enum class wsp_after_lone_first : uint8_t {
    refused, // a further element is refused (-214) before its code octet goes out
    ignored, // the list ends there: nothing after it is looked at
};

// The walk of the encoders that send one header per element of a comma
// list: for every element the code octet, then what `encode_value(element)`
// writes after it; -214 when either fails.  A first element for which
// `stands_alone(element)` holds is followed as `after` says.  A list with
// no element returns `if_empty`.
template <typename EncodeValue, typename StandsAlone>
int wsp_encode_each_element(uint8_t code, char *list, wsp_buffer *out, int if_empty, EncodeValue encode_value,
                            StandsAlone stands_alone, wsp_after_lone_first after) {
    bool any = false;
    bool lone = false;
    char *element;
    while ((element = wsp_enc_next_element(&list, ",")) != nullptr) {
        if (lone) return kWspErrFail;
        lone = !any && stands_alone(static_cast<const char *>(element));
        if (wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
        if (encode_value(element) != kWspOk) return kWspErrFail;
        any = true;
        if (lone && after == wsp_after_lone_first::ignored) return kWspOk;
    }
    return any ? kWspOk : if_empty;
}

// The same walk for a list in which every element may follow any other.
template <typename EncodeValue>
int wsp_encode_each_element(uint8_t code, char *list, wsp_buffer *out, int if_empty, EncodeValue encode_value) {
    return wsp_encode_each_element(
        code, list, out, if_empty, encode_value, [](const char *) { return false; }, wsp_after_lone_first::refused);
}

// One header per element of the comma list at `list`: the code octet, then
// the element as wsp_append_code_or_token writes it.  -214 when an element
// does not go out or the list has no element at all.
int wsp_encode_code_or_token_list(uint8_t code, char *list, const wsp_table &table, uint16_t rows, wsp_buffer *out);

// One header per element of the comma list at `list`, for values that are
// one well-known element or a value sent behind its Value-length: the code
// octet, then the Short-integer `known(element)` gives (when it gives one,
// >= 0), else what `build(element, body)` writes into a scratch of
// `scratch_size` octets.  -214 when anything does not go out; a list with
// no element writes nothing and succeeds.
template <typename Known, typename Build>
int wsp_encode_known_or_built_list(uint8_t code, char *list, uint16_t scratch_size, wsp_buffer *out, Known known,
                                   Build build) {
    return wsp_encode_each_element(code, list, out, kWspOk, [&](char *element) {
        const int known_code = known(element);
        if (known_code >= 0) return wsp_append_short_int(static_cast<uint32_t>(known_code), out);
        return wsp_append_built_value(scratch_size, out, [&](wsp_buffer *body) { return build(element, body); });
    });
}

// A value whose first part leads a body sent behind its Value-length (the
// credentials, the disposition): the code octet, then `build(first, rest,
// body)` in a scratch the size of the value.  A value without a first part
// is refused before anything is written.
template <typename Build>
int wsp_encode_headed_value(uint8_t code, char *value, const char *delim, wsp_first_part how, wsp_buffer *out,
                            Build build) {
    wsp_value_opening opening;
    char *first = wsp_enc_open_value(value, delim, how, &opening);
    if (first == nullptr || wsp_write_code_octet(code, out) != kWspOk) return kWspErrFail;
    char *rest = opening.rest;
    return wsp_append_built_value(opening.scratch_size, out,
                                  [&](wsp_buffer *body) { return build(first, rest, body); });
}

// Cuts `list` at `delim` and hands each trimmed element (lower-cased first
// when `lower` is set) to wsp_encode_param with the version index, writing
// into `out`.  Any parameter that does not encode gives -214.
int wsp_append_param_list(char *list, const char *delim, bool lower, wsp_buffer *out, uint8_t version_index);

#endif

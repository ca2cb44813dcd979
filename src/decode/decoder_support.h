// Pieces shared by the single-value header decoders: the line name of a
// code, the hard end of the value being read, code-table look-ups that give
// a row's name, and the last step every decoder takes (write the line with
// its writer, then move the cursor under the decoder's own rule).
#ifndef WSP_DECODE_DECODER_SUPPORT_H
#define WSP_DECODE_DECODER_SUPPORT_H

#include <cstdint>

#include "decode.h"
#include "tables.h"
#include "tarnwspencdec.h"
#include "text_builder.h"

// The line name of a well-known header code; nullptr past the name table
// (a decoder handed such a code refuses it with -214).
const char *wsp_decoded_header_name(uint32_t code);

// Octets between p and the hard end (start + remaining) of a value; 0 when
// p has reached it.  p never lies past the hard end: every step is tested
// against this count before it is taken.
inline uint16_t wsp_octets_left(const uint8_t *start, uint16_t remaining, const uint8_t *p) {
    return static_cast<uint16_t>(remaining - static_cast<uint16_t>(p - start));
}

// Octets a value has used from `from` to `to`, as a 16-bit count.
inline uint16_t wsp_octets_used(const uint8_t *from, const uint8_t *to) { return static_cast<uint16_t>(to - from); }

// The remaining count handed to wsp_read_long_int for a Long-integer that
// opens a field of Value-length `length`, with `left` input octets from its
// length octet on: the length octet may claim up to `length` octets after
// itself (one more than the field holds; the field's own count of used
// octets refuses that later), never more than the input holds.
inline uint16_t wsp_long_int_in_field(uint16_t length, uint16_t left) {
    return length < left ? static_cast<uint16_t>(length + 1) : left;
}

// The name of the first of `rows` rows whose code equals `code` (low 16
// bits), or nullptr.
const char *wsp_code_name(const wsp_table &table, uint16_t rows, uint32_t code);

// A header code given as a Long-integer (Content-Language, Trailer): read
// with the hard end as bound; a value above 255, or one whose low 8 bits
// exceed `remaining`, is refused with -214.  A failed read returns the
// reader's status.  *cursor moves only on WSP_OK.
int wsp_read_small_long_code(const uint8_t **cursor, uint16_t remaining, uint32_t *code);

// True when `name` occurs anywhere in the output text (a plain substring
// search from the first octet of data, stopping at the text's NUL and never
// looking past size).  Bearer-Indication, Push-Flag and
// X-Wap-Application-Id write only their first occurrence.
bool wsp_output_mentions(const wsp_buffer *out, const char *name);

enum class wsp_line_writer : uint8_t {
    merging, // wsp_add_header_line: joins repeats with ",", -216 when full
    plain,   // wsp_append_header_line: one line each, -214 when full
};

enum class wsp_cursor_rule : uint8_t {
    on_ok,  // the cursor moves only when the writer says WSP_OK
    always, // the cursor moves whatever the writer says
};

// Writes "name:text" for the code's name with the writer, moves *cursor to
// `next` as the rule says and returns the writer's status.  A code without
// a name gives -214 with nothing written and the cursor left.
int wsp_write_value_line(uint32_t code, const char *text, wsp_buffer *out, wsp_line_writer writer,
                         const uint8_t **cursor, const uint8_t *next, wsp_cursor_rule rule);

// The frame of the decoders whose value is one item with no Value-length
// around it: -211 when no octet remains; otherwise `read(&p, &value)` reads
// the item from p (a copy of *cursor) into a 200-octet text, and a status
// other than WSP_OK is returned as it stands, with *cursor left alone.  The
// text then goes out as the code's line (see wsp_write_value_line).
template <typename ReadItem>
inline int wsp_decode_one_item(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining,
                               wsp_line_writer writer, wsp_cursor_rule rule, ReadItem read) {
    if (remaining == 0) return kWspErrArg;
    const uint8_t *p = *cursor;
    wsp_text_builder value;
    int status = read(&p, &value);
    if (status != kWspOk) return status;
    return wsp_write_value_line(code, value.text, out, writer, cursor, p, rule);
}

// A run of parameters whose described length may reach past the hard end:
// the run handed to the parameter decoder is cut to the octets left, and a
// decoder that succeeds on a cut run is then answered with `status_if_cut`
// (what it would have met at the first octet past the end).
struct wsp_bounded_run {
    uint16_t run;  // the length handed to the parameter decoder
    bool cut;      // true when the described run reached past the hard end
};
inline wsp_bounded_run wsp_bound_run(uint32_t described, uint16_t left) {
    if (described > left) return {left, true};
    return {static_cast<uint16_t>(described), false};
}

// Content-ID with the text switch given explicitly (wsp_dec_content_id
// passes device_content_id_text_allowed()): 1 accepts a Quoted-string or a
// plain text, 0 the Quoted-string alone.
int wsp_dec_content_id_switched(int text_allowed, uint32_t code, const uint8_t **cursor, wsp_buffer *out,
                                uint16_t remaining);

#endif

// The per-call index of the output text's lines that lets the line writers
// find a line by its name without walking the whole text for every header.
//
// wsp_dec_hdr keeps one on its stack for the length of a call.  The header
// decoders only ever see a wsp_buffer, so the index travels with the output
// record: the decoders are handed a copy of the caller's record (the view)
// that sits inside a wsp_indexed_output and carries a mark in its
// `reserved` field; the writers recognise the mark and reach the index.
// The caller's own record is never marked, and its `length` is written back
// from the view when the call returns.
//
// The index describes the text exactly only while the text is one whose
// lines and names the quote-aware walk would cut exactly where a plain scan
// cuts them: every quotation mark of a line closed inside that line (as the
// walk pairs them) and none in a line's name, no NUL before the end, a line
// feed at the end, `offset` 0 and `length` not below the text's end.  The
// moment a write would leave that shape (or its outcome depends on
// something the index does not hold), the writer takes the exact walk and
// the index is switched off for the rest of the call.
#ifndef WSP_DECODE_LINE_INDEX_H
#define WSP_DECODE_LINE_INDEX_H

#include <cstddef>
#include <cstdint>

#include "tarnwspencdec.h"

struct wsp_line_index {
    // The table holds the names of the first lines (up to three quarters of
    // kSlots distinct names, far more than a realistic block brings).
    // Lines after it filled are not in it; their names go into a bit
    // filter instead, which tells for certain when a name is on none of
    // them, and only when it may be are those lines looked at one by one.
    // Both are sized so that the deepest decoder under wsp_dec_hdr stays
    // within the stack allowance on the target.
    static constexpr uint16_t kSlots = 128;
    static constexpr uint16_t kFirstSlots = 32;
    static constexpr uint16_t kFilterBytes = 1280;
    static constexpr uint8_t kFilterProbes = 4;

    bool usable = false;
    bool full = false;     // the table filled up: lines from `overflow` on are not in it
    uint16_t end = 0;      // octets of text before its NUL (size when it has none)
    uint16_t overflow = 0; // start of the first line left out of the table (when full)
    uint16_t mask = 0;     // slots in use - 1 (a power of two minus one)
    uint16_t names = 0;    // occupied slots
    // Where the name of the first line carrying it starts, plus one; 0 is
    // an empty slot.
    // Only the slots up to `mask` are ever read, and they are cleared as
    // they come into use, so the array is left uninitialised.
    uint16_t slot[kSlots];
    // Names of the lines from `overflow` on (cleared when the table fills).
    uint8_t filter[kFilterBytes];
};

// The output record handed to the header decoders during wsp_dec_hdr.
struct wsp_indexed_output {
    wsp_buffer view; // first member: the decoders and writers see this record
    wsp_line_index index;
};

// Copies the caller's record into the view, marks it and describes the
// text already in the buffer (one pass).  `use_index` false leaves the
// index switched off, so every write takes the exact walk.
void wsp_indexed_output_start(wsp_indexed_output *io, const wsp_buffer *out, bool use_index);

// The index behind a marked view, or nullptr for any other record or when
// the index is switched off.
wsp_line_index *wsp_line_index_of(wsp_buffer *out);

// ---- used by the line writers on a marked view ----

// A line of the text: [start, stop) holds no line feed; its name is
// [name, name_stop) (leading colons passed over, up to the first colon or
// the line's end).
struct wsp_indexed_line {
    uint16_t start;
    uint16_t stop;
    uint16_t name;
    uint16_t name_stop;
};

// True when `name` can be looked up and filed as it is (not empty, and no
// colon, line feed or quotation mark in it, where the walk would cut it
// elsewhere), with *hash the hash the index files it under.
bool wsp_line_index_key(const char *name, uint16_t n, uint32_t *hash);

// Finds the first line whose name is the n octets at `name` (a usable name,
// `hash` its hash): true and the line in *line, or false when no line has
// that name.
bool wsp_line_index_find(const wsp_line_index *ix, const uint8_t *text, const char *name, uint16_t n,
                         uint32_t hash, wsp_indexed_line *line);

// The text [ix->end, new_end) was appended: its lines join the index.  A
// line the walk would cut differently switches the index off.
void wsp_line_index_appended(wsp_line_index *ix, const uint8_t *text, uint16_t new_end);

// The line "name:value\n" was written at ix->end, its line feed the octet
// before new_end (a usable name, `hash` its hash, the value holding no
// NUL).  The line joins the index, or the index is switched off when the
// walk would cut the line differently.
void wsp_line_index_appended_line(wsp_line_index *ix, const uint8_t *text, uint16_t name_len, uint32_t hash,
                                  uint16_t new_end);

// `grown` octets were inserted into the text at `at` (the end of a line
// that keeps its name): later lines move on.
void wsp_line_index_inserted(wsp_line_index *ix, uint16_t at, uint16_t grown);

// The text became empty (a writer wrote a NUL at its first octet).
void wsp_line_index_clear(wsp_line_index *ix);

// True when the n octets at p, joined to the end of a line, leave every
// line and name where it was: no NUL or line feed, and every quotation
// mark closed inside them as the walk pairs them.
bool wsp_line_index_keeps_lines(const uint8_t *p, size_t n);

// True when the walk that cuts a line from `from` would cut it at the line
// feed at `to`: every quotation mark in [from, to) closed inside it.
bool wsp_line_index_quotes_closed(const uint8_t *text, uint16_t from, uint16_t to);

// The first occurrence of the n octets at `needle` in text[0..end), or
// nullptr (n = 0 finds the text's start).
const uint8_t *wsp_text_find(const uint8_t *text, size_t end, const uint8_t *needle, size_t n);

#endif

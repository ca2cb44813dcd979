// The three writers through which every decoded header line reaches the
// output text: the merging writer (repeats share one line, joined by ","),
// the plain writer (one line per header) and the raw writer (the value's
// encoded octets copied as they stand).
//
// The output text is never read or written at or past out->size.  A text
// that fills the buffer to its last octet has no NUL inside it; every walk
// below treats data[size] as the NUL it would have had.  Where a write
// (normally the terminating NUL) would land on data[size] or beyond, the
// octet is dropped and the visible result (status, length, text up to size)
// is what it would have been.
#include <cstdlib>
#include <cstring>

#include "buffer.h"
#include "decode.h"
#include "line_index.h"
#include "primitives.h"

namespace {

// Index of the first NUL of text[0..cap), or cap when there is none.
uint16_t bounded_length(const uint8_t *text, uint16_t cap) {
    uint16_t n = 0;
    while (n < cap && text[n] != 0) ++n;
    return n;
}

uint16_t text_length(const char *s) { return static_cast<uint16_t>(std::strlen(s)); }

// "none" is never combined with another range unit on this header's line.
constexpr const char kAcceptRanges[] = "accept-ranges";
constexpr uint16_t kAcceptRangesLength = sizeof kAcceptRanges - 1;

// True when the n octets at p spell exactly `word`.
bool span_is(const uint8_t *p, uint32_t n, const char *word) {
    return n == std::strlen(word) && std::memcmp(p, word, n) == 0;
}

// One token cut out of a text by split_token.
struct token {
    uint16_t start; // first octet of the token
    uint16_t stop;  // the octet that ends it: the delimiter (now NUL) or the text's end
    bool cut;       // true when a delimiter was overwritten with NUL at `stop`
};

// Splits the text s[*pos..end) at the delimiter in place (index `end` is the
// text's terminator, real or virtual), the way the library's tokenizer does:
// leading delimiters are passed over, a balanced pair of quotation marks
// hides delimiters, after an unbalanced quotation mark every later one is an
// ordinary character, and the octet after a closing mark is only tested as a
// delimiter or terminator.  Returns false when the text at *pos is empty;
// otherwise the token, with *pos moved past the cut (or onto the terminator
// for the last token).  Nothing at or past `end` is read or written.
bool split_token(uint8_t *s, uint16_t end, uint16_t *pos, uint8_t delim, token *t) {
    uint16_t b = *pos;
    if (b >= end) return false;
    uint16_t i = 0;
    bool unbalanced = false;
    for (;;) {
        uint16_t at = static_cast<uint16_t>(b + i);
        uint8_t tested = at < end ? s[at] : 0;
        if (tested == '"') {
            uint16_t j = static_cast<uint16_t>(at + 1);
            while (j < end && s[j] != '"') ++j;
            if (j >= end) {
                unbalanced = true;
            } else if (!unbalanced) {
                at = static_cast<uint16_t>(j + 1);
                i = static_cast<uint16_t>(at - b);
                tested = at < end ? s[at] : 0;
            }
        }
        if (tested == delim) {
            if (i > 0) {
                s[at] = 0;
                *t = {b, at, true};
                *pos = static_cast<uint16_t>(at + 1);
                return true;
            }
            ++b; // a leading delimiter: the token starts one octet later
            continue;
        }
        if (tested == 0) {
            *t = {b, at, false};
            *pos = at;
            return true;
        }
        ++i;
    }
}

// Writes octets at text[w], text[w+1], ... and drops every octet that would
// land at or past cap.
struct bounded_writer {
    uint8_t *text;
    uint16_t cap;
    uint32_t w;

    void put(uint8_t c) {
        if (w < cap) text[w] = c;
        ++w;
    }
    void put_text(const char *s) {
        for (; *s != 0; ++s) put(static_cast<uint8_t>(*s));
    }
    void put_octets(const uint8_t *p, uint16_t n) {
        for (uint16_t k = 0; k < n; ++k) put(p[k]);
    }
    void terminate() { put(0); }
};

// The text after a line that is being extended, set aside while the line
// grows over it: up to 198 characters in a stack area, longer ones in a heap
// copy of exactly their length plus the terminator, freed on every path.
class remainder_copy {
  public:
    remainder_copy() = default;
    remainder_copy(const remainder_copy &) = delete;
    remainder_copy &operator=(const remainder_copy &) = delete;
    ~remainder_copy() { std::free(heap_); }

    bool take(const uint8_t *src, uint16_t n) {
        uint8_t *dst = small_;
        if (n > kSmallChars) {
            heap_ = static_cast<uint8_t *>(std::calloc(static_cast<size_t>(n) + 1, 1));
            if (heap_ == nullptr) return false;
            dst = heap_;
        }
        std::memcpy(dst, src, n);
        dst[n] = 0;
        held_ = dst;
        length_ = n;
        return true;
    }
    const uint8_t *octets() const { return held_; }
    uint16_t length() const { return length_; }

  private:
    static constexpr uint16_t kSmallChars = WSP_TEXT_CAPACITY;
    uint8_t small_[WSP_TEXT_AREA] = {};
    uint8_t *heap_ = nullptr;
    const uint8_t *held_ = small_;
    uint16_t length_ = 0;
};

// Writes "," value "\n" and the set-aside remainder from the writer's
// position (the end of the line being extended), then the terminator.
void extend_line(bounded_writer &wr, const uint8_t *value, uint16_t value_len, bool value_is_text,
                 const remainder_copy &rest) {
    wr.put(',');
    if (value_is_text) {
        wr.put_text(reinterpret_cast<const char *>(value));
    } else {
        wr.put_octets(value, value_len);
    }
    wr.put('\n');
    wr.put_octets(rest.octets(), rest.length());
    wr.terminate();
}

// ---- writes through the line index of a view ---------------------------
//
// Each of these either does the whole write (true, *status set) with the
// same text, status and length the walk below would give, or touches
// nothing and returns false: the caller then switches the index off and
// takes the walk.

// 16-bit sums of a write that could wrap are left to the walk.
bool sum_fits(uint32_t a, uint32_t b, uint32_t c) { return a + b + c + 2u <= 0xFFFFu; }

// Writes "name:value\n" (value octets up to the first 0x00 of `value_len`)
// at the text's end and hands the new line to the index.
void append_indexed_line(wsp_line_index *ix, uint8_t *text, uint16_t size, const char *name, uint16_t name_len,
                         uint32_t hash, const uint8_t *value, uint16_t value_len) {
    uint16_t w = ix->end;
    std::memcpy(text + w, name, name_len);
    w = static_cast<uint16_t>(w + name_len);
    text[w++] = ':';
    const void *zero = std::memchr(value, 0, value_len);
    const uint16_t n = zero != nullptr ? static_cast<uint16_t>(static_cast<const uint8_t *>(zero) - value) : value_len;
    std::memcpy(text + w, value, n);
    w = static_cast<uint16_t>(w + n);
    text[w++] = '\n';
    if (w < size) text[w] = 0;
    wsp_line_index_appended_line(ix, text, name_len, hash, w);
}

// Joins "," and the value to the end of `line` (which keeps its name),
// moving the text after it on.
void extend_indexed_line(wsp_line_index *ix, uint8_t *text, uint16_t stop, const uint8_t *value, uint16_t n) {
    const uint16_t end = ix->end;
    std::memmove(text + stop + 1 + n, text + stop, static_cast<size_t>(end - stop));
    text[stop] = ',';
    std::memcpy(text + stop + 1, value, n);
    text[end + n + 1] = 0;
    wsp_line_index_inserted(ix, stop, static_cast<uint16_t>(n + 1));
}

// The state a failed merge leaves: the line's '\n' and its name's ':' are
// NUL octets.  The index no longer describes that text.
void leave_split(wsp_line_index *ix, uint8_t *text, const wsp_indexed_line &line) {
    text[line.stop] = 0;
    if (line.name_stop < line.stop) text[line.name_stop] = 0;
    ix->usable = false;
}

bool add_indexed(wsp_line_index *ix, wsp_buffer *out, const char *name, const char *value, int *status) {
    uint8_t *text = out->data;
    const uint16_t size = out->size;
    const uint16_t name_len = text_length(name);
    const uint16_t value_len = text_length(value);
    uint32_t hash = 0;
    if (!sum_fits(out->length, name_len, value_len) || out->length < ix->end ||
        !wsp_line_index_key(name, name_len, &hash))
        return false;

    wsp_indexed_line line;
    if (out->length != 0 && wsp_line_index_find(ix, text, name, name_len, hash, &line)) {
        // A line without a colon would take the new value into its name.
        if (line.name_stop == line.stop ||
            !wsp_line_index_keeps_lines(reinterpret_cast<const uint8_t *>(value), value_len))
            return false;
        if (static_cast<uint16_t>(out->length + value_len + 1) >= size) {
            leave_split(ix, text, line);
            *status = kWspErrTruncated;
            return true;
        }
        const uint16_t old_value = static_cast<uint16_t>(line.name_stop + 1);
        if (name_len == kAcceptRangesLength && std::memcmp(name, kAcceptRanges, kAcceptRangesLength) == 0 &&
            (std::strcmp(value, "none") == 0 || span_is(text + old_value, line.stop - old_value, "none"))) {
            leave_split(ix, text, line);
            *status = kWspErrFail;
            return true;
        }
        extend_indexed_line(ix, text, line.stop, reinterpret_cast<const uint8_t *>(value), value_len);
        out->length = ix->end;
        *status = kWspOk;
        return true;
    }

    if (out->length == 0) {
        text[0] = 0;
        wsp_line_index_clear(ix);
    }
    if (static_cast<uint16_t>(out->length + name_len + value_len + 2) > size) {
        *status = kWspErrTruncated;
        return true;
    }
    append_indexed_line(ix, text, size, name, name_len, hash, reinterpret_cast<const uint8_t *>(value), value_len);
    out->length = ix->end;
    *status = kWspOk;
    return true;
}

bool add_raw_indexed(wsp_line_index *ix, wsp_buffer *out, const char *name, const uint8_t *value, uint16_t size,
                     int *status) {
    uint8_t *text = out->data;
    const uint16_t name_len = text_length(name);
    uint32_t hash = 0;
    if (!wsp_line_index_key(name, name_len, &hash) || !sum_fits(out->length, name_len, size) ||
        out->length < ix->end)
        return false;

    const uint8_t *found = wsp_text_find(text, ix->end, reinterpret_cast<const uint8_t *>(name), name_len);
    if (found != nullptr) {
        const uint16_t at = static_cast<uint16_t>(found - text);
        // The line the name was found in keeps its name only when that name
        // ends at a colon.
        uint16_t name_at = at;
        while (name_at > 0 && text[name_at - 1] != '\n') --name_at;
        const uint16_t stop = static_cast<uint16_t>(
            static_cast<const uint8_t *>(std::memchr(text + at, '\n', static_cast<size_t>(ix->end - at))) - text);
        while (name_at < stop && text[name_at] == ':') ++name_at;
        if (std::memchr(text + name_at, ':', static_cast<size_t>(stop - name_at)) == nullptr) return false;
        // The line is cut from where the name was found: a quotation mark
        // there may pair differently than it does from the line's start.
        if (!wsp_line_index_quotes_closed(text, at, stop) || !wsp_line_index_keeps_lines(value, size)) return false;
        if (static_cast<uint16_t>(out->length + size + 1) >= out->size) {
            *status = kWspErrTruncated;
            return true;
        }
        extend_indexed_line(ix, text, stop, value, size);
        out->length = static_cast<uint16_t>(out->length + size + 2);
        *status = kWspOk;
        return true;
    }

    if (out->length == 0) {
        text[0] = 0;
        wsp_line_index_clear(ix);
        out->length = 1;
    }
    if (static_cast<uint16_t>(out->length + name_len + size + 2) > out->size) {
        *status = kWspErrTruncated;
        return true;
    }
    append_indexed_line(ix, text, out->size, name, name_len, hash, value, size);
    out->length = static_cast<uint16_t>(out->length + name_len + size + 2);
    *status = kWspOk;
    return true;
}

} // namespace

// The merging writer.  Looks through the whole text from the first octet of
// data (offset is not used here) for a line whose name equals `name`
// exactly; joins the new value to it with ",", or appends a new line.
// A null value is refused like a null name (-214) before anything is
// touched.
int wsp_add_header_line(wsp_buffer *out, const char *name, const char *value) {
    if (out == nullptr || name == nullptr || value == nullptr || out->data == nullptr) return kWspErrFail;
    if (wsp_line_index *ix = wsp_line_index_of(out)) {
        int status = kWspOk;
        if (add_indexed(ix, out, name, value, &status)) return status;
        ix->usable = false;
    }
    uint8_t *text = out->data;
    const uint16_t size = out->size;
    uint16_t end = bounded_length(text, size);
    const uint16_t name_len = text_length(name);
    const uint16_t value_len = text_length(value);

    if (out->length != 0) {
        uint16_t pos = 0;
        while (pos < out->length) {
            token line;
            if (!split_token(text, end, &pos, '\n', &line)) break;
            uint16_t name_pos = line.start;
            token line_name;
            bool has_name = split_token(text, line.stop, &name_pos, ':', &line_name);
            bool same = has_name && line_name.stop - line_name.start == name_len &&
                        std::memcmp(text + line_name.start, name, name_len) == 0;
            if (!same) {
                // Not this one: the line gets its ':' and '\n' back.
                if (has_name && line_name.cut) text[line_name.stop] = ':';
                if (line.cut) text[line.stop] = '\n';
                continue;
            }

            // From here on a failure leaves the line as the split made it:
            // its ':' and '\n' stay NUL and length is not touched.  Callers
            // rely on that state (AddHeaderLine.MergeRoomTestBoundary,
            // AddHeaderLine.AcceptRangesNoneIsNeverCombined).
            if (static_cast<uint16_t>(out->length + value_len + 1) >= size) return kWspErrTruncated;
            if (std::strcmp(name, "accept-ranges") == 0 &&
                (std::strcmp(value, "none") == 0 || span_is(text + name_pos, line.stop - name_pos, "none"))) {
                // "none" is never combined with another range unit.
                return kWspErrFail;
            }
            remainder_copy rest;
            if (!rest.take(text + pos, static_cast<uint16_t>(end - pos))) return kWspErrFail;
            bounded_writer wr{text, size, line.stop};
            extend_line(wr, reinterpret_cast<const uint8_t *>(value), value_len, true, rest);
            if (line_name.cut) text[line_name.stop] = ':';
            out->length = bounded_length(text, size);
            return kWspOk;
        }
    }

    if (out->length == 0) {
        if (size != 0) text[0] = 0;
        end = 0;
    }
    // The room test lets the terminating NUL fall on data[size]; that NUL is
    // then simply not stored and the text fills the buffer exactly.
    if (static_cast<uint16_t>(out->length + name_len + value_len + 2) > size) return kWspErrTruncated;
    bounded_writer wr{text, size, end};
    wr.put_text(name);
    wr.put(':');
    wr.put_text(value);
    wr.put('\n');
    wr.terminate();
    out->length = bounded_length(text, size);
    return kWspOk;
}

// The plain writer: one new line at data + offset + length, whatever lines
// are already there.  No room gives -214 (not -216), so a decoder using this
// writer loses its header while decoding goes on.  size limits length; the
// room test does not count the terminating NUL, so a line that fills size
// exactly has its NUL land at data + offset + size, where it is dropped.
int wsp_append_header_line(wsp_buffer *out, const char *name, const char *value) {
    if (out == nullptr || name == nullptr || value == nullptr || out->data == nullptr) return kWspErrFail;
    const uint16_t name_len = text_length(name);
    const uint16_t value_len = text_length(value);
    wsp_line_index *ix = wsp_line_index_of(out);
    // An empty output becomes an empty text even when the line does not fit.
    if (out->length == 0) {
        if (ix != nullptr) wsp_line_index_clear(ix);
        if (!wsp_buffer_store_at_end(out, out->offset, 0)) return kWspErrFail;
    }
    if (static_cast<uint16_t>(out->length + name_len + value_len + 2) > out->size) return kWspErrFail;
    const uint32_t at = wsp_buffer_tail_index(out);
    const uint32_t colon = at + name_len;
    const uint32_t newline = colon + 1 + value_len;
    if (newline + 1 < wsp_buffer_end_index(out)) {
        // The whole line and its NUL lie inside the writable region.
        uint8_t *data = out->data;
        std::memcpy(data + at, name, name_len);
        data[colon] = ':';
        std::memcpy(data + colon + 1, value, value_len);
        data[newline] = '\n';
        data[newline + 1] = 0;
    } else if (!wsp_buffer_store_run(out, at, reinterpret_cast<const uint8_t *>(name), name_len) ||
        !wsp_buffer_store(out, colon, ':') ||
        !wsp_buffer_store_run(out, colon + 1, reinterpret_cast<const uint8_t *>(value), value_len) ||
        !wsp_buffer_store(out, newline, '\n') || !wsp_buffer_store_at_end(out, newline + 1, 0)) {
        // Part of the line may have landed in the text.
        if (ix != nullptr) ix->usable = false;
        return kWspErrFail;
    }
    const uint16_t before = out->length;
    out->length = static_cast<uint16_t>(out->length + name_len + value_len + 2);
    if (ix != nullptr && !sum_fits(before, name_len, value_len)) {
        ix->usable = false;
    } else if (ix != nullptr) {
        // A line written at the text's end joins the index; one written past
        // the NUL of a raw writer's counted octet is not part of the text.
        if (before == ix->end) {
            const uint16_t new_end = static_cast<uint16_t>(ix->end + name_len + value_len + 2);
            uint32_t hash = 0;
            if (wsp_line_index_key(name, name_len, &hash)) {
                wsp_line_index_appended_line(ix, out->data, name_len, hash, new_end);
            } else {
                wsp_line_index_appended(ix, out->data, new_end);
            }
        } else if (before < ix->end) {
            ix->usable = false;
        }
    }
    return kWspOk;
}

// The raw writer: the value's encoded octets (length prefix or
// Short-integer octet included) go after the colon as they stand.
//
// `name` is looked for anywhere in the text from data + offset, not only at
// a line start; a hit extends the line it falls in.  length then grows by
// the value size + 2 although the text grows by one less (the line's '\n'
// was already there); when the text is empty the NUL at its start is
// counted too.  Both counts are kept on purpose.
//
// Nothing bounds the value size: the value octets are copied straight into
// the output (its room test has passed by then), a new line's copy stopping
// early at a 0x00 octet, which gives the same text a 200-octet scratch copy
// would give for shorter values and needs no scratch at all.
int wsp_add_raw_header_line(wsp_buffer *out, const char *name, const uint8_t *value, uint16_t size) {
    if (out == nullptr || name == nullptr || value == nullptr || out->data == nullptr) return kWspErrFail;
    if (wsp_line_index *ix = wsp_line_index_of(out)) {
        int status = kWspOk;
        if (add_raw_indexed(ix, out, name, value, size, &status)) return status;
        ix->usable = false;
    }
    uint8_t *text = out->data + out->offset;
    const uint16_t cap = out->size > out->offset ? static_cast<uint16_t>(out->size - out->offset) : 0;
    const uint16_t end = bounded_length(text, cap);
    const uint16_t name_len = text_length(name);

    // Plain substring search over text[0..end).
    const uint8_t *hit = wsp_text_find(text, end, reinterpret_cast<const uint8_t *>(name), name_len);
    const int32_t found = hit != nullptr ? static_cast<int32_t>(hit - text) : -1;

    if (found >= 0) {
        if (static_cast<uint16_t>(out->length + size + 1) >= out->size) return kWspErrTruncated;
        uint16_t pos = static_cast<uint16_t>(found);
        token line;
        if (!split_token(text, end, &pos, '\n', &line)) return kWspErrFail;
        remainder_copy rest;
        if (!rest.take(text + pos, static_cast<uint16_t>(end - pos))) return kWspErrFail;
        bounded_writer wr{text, cap, line.stop};
        extend_line(wr, value, size, false, rest);
        out->length = static_cast<uint16_t>(out->length + size + 2);
        return kWspOk;
    }

    uint16_t start = end;
    if (out->length == 0) {
        if (cap != 0) text[0] = 0;
        start = 0;
        out->length = 1;
    }
    if (static_cast<uint16_t>(out->length + name_len + size + 2) > out->size) return kWspErrTruncated;
    bounded_writer wr{text, cap, start};
    wr.put_text(name);
    wr.put(':');
    for (uint16_t k = 0; k < size && value[k] != 0; ++k) wr.put(value[k]);
    wr.put('\n');
    wr.terminate();
    out->length = static_cast<uint16_t>(out->length + name_len + size + 2);
    return kWspOk;
}

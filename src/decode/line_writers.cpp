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
#include "primitives.h"

namespace {

// Index of the first NUL of text[0..cap), or cap when there is none.
uint16_t bounded_length(const uint8_t *text, uint16_t cap) {
    uint16_t n = 0;
    while (n < cap && text[n] != 0) ++n;
    return n;
}

uint16_t text_length(const char *s) { return static_cast<uint16_t>(std::strlen(s)); }

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

} // namespace

// The merging writer.  Looks through the whole text from the first octet of
// data (offset is not used here) for a line whose name equals `name`
// exactly; joins the new value to it with ",", or appends a new line.
// A null value is refused like a null name (-214) before anything is
// touched.
int wsp_add_header_line(wsp_buffer *out, const char *name, const char *value) {
    if (out == nullptr || name == nullptr || value == nullptr || out->data == nullptr) return kWspErrFail;
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
            // rely on that state.
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
    // An empty output becomes an empty text even when the line does not fit.
    if (out->length == 0 && !wsp_buffer_store_at_end(out, out->offset, 0)) return kWspErrFail;
    if (static_cast<uint16_t>(out->length + name_len + value_len + 2) > out->size) return kWspErrFail;
    const uint32_t at = wsp_buffer_tail_index(out);
    const uint32_t colon = at + name_len;
    const uint32_t newline = colon + 1 + value_len;
    if (!wsp_buffer_store_run(out, at, reinterpret_cast<const uint8_t *>(name), name_len) ||
        !wsp_buffer_store(out, colon, ':') ||
        !wsp_buffer_store_run(out, colon + 1, reinterpret_cast<const uint8_t *>(value), value_len) ||
        !wsp_buffer_store(out, newline, '\n') || !wsp_buffer_store_at_end(out, newline + 1, 0)) {
        return kWspErrFail;
    }
    out->length = static_cast<uint16_t>(out->length + name_len + value_len + 2);
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
    uint8_t *text = out->data + out->offset;
    const uint16_t cap = out->size > out->offset ? static_cast<uint16_t>(out->size - out->offset) : 0;
    const uint16_t end = bounded_length(text, cap);
    const uint16_t name_len = text_length(name);

    // Plain substring search over text[0..end).
    int32_t found = -1;
    for (uint32_t at = 0; at + name_len <= end; ++at) {
        if (std::memcmp(text + at, name, name_len) == 0) {
            found = static_cast<int32_t>(at);
            break;
        }
    }

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

// The per-call line index: an open-addressing table from a line name to the
// first line that carries it, kept in step with every write of a call.
//
// On a text of the indexed shape (see line_index.h) the quote-aware walk of
// the merging writer cuts a line at every line feed (runs of line feeds
// give no line) and a name at the line's first colon after any leading
// colons; the scans below cut the same way.
#include "line_index.h"

#include <cstring>

namespace {

// The mark a view carries in its `reserved` field.
constexpr uint32_t kViewMark = 0x7767C0DEu;

bool is_view(const wsp_buffer *out) { return out != nullptr && out->reserved == kViewMark; }

uint32_t name_hash(const uint8_t *p, uint16_t n) {
    uint32_t h = 2166136261u;
    for (uint16_t i = 0; i < n; ++i) h = (h ^ p[i]) * 16777619u;
    return h ^ (h >> 15);
}

// The filter's bits for a name: kFilterProbes positions by double hashing.
constexpr uint32_t kFilterBits = wsp_line_index::kFilterBytes * 8u;

uint32_t filter_step(uint32_t h) { return ((h * 0x9E3779B1u) >> 7) | 1u; }

void filter_add(wsp_line_index *ix, uint32_t h) {
    uint32_t step = filter_step(h);
    for (uint8_t k = 0; k < wsp_line_index::kFilterProbes; ++k, h += step) {
        uint32_t bit = h % kFilterBits;
        ix->filter[bit >> 3] = static_cast<uint8_t>(ix->filter[bit >> 3] | (1u << (bit & 7)));
    }
}

bool filter_may_hold(const wsp_line_index *ix, uint32_t h) {
    uint32_t step = filter_step(h);
    for (uint8_t k = 0; k < wsp_line_index::kFilterProbes; ++k, h += step) {
        uint32_t bit = h % kFilterBits;
        if ((ix->filter[bit >> 3] & (1u << (bit & 7))) == 0) return false;
    }
    return true;
}

// The line starting at `start` (not a line feed, below end).
wsp_indexed_line line_at(const uint8_t *text, uint16_t start, uint16_t end) {
    wsp_indexed_line l{start, start, start, start};
    const void *nl = std::memchr(text + start, '\n', static_cast<size_t>(end - start));
    l.stop = nl != nullptr ? static_cast<uint16_t>(static_cast<const uint8_t *>(nl) - text) : end;
    uint16_t n = start;
    while (n < l.stop && text[n] == ':') ++n;
    l.name = n;
    const void *colon = std::memchr(text + n, ':', static_cast<size_t>(l.stop - n));
    l.name_stop = colon != nullptr ? static_cast<uint16_t>(static_cast<const uint8_t *>(colon) - text) : l.stop;
    return l;
}

// The next line at or after *pos, passing over line feeds; false at end.
bool next_line(const uint8_t *text, uint16_t *pos, uint16_t end, wsp_indexed_line *l) {
    uint16_t p = *pos;
    while (p < end && text[p] == '\n') ++p;
    if (p >= end) {
        *pos = end;
        return false;
    }
    *l = line_at(text, p, end);
    *pos = l->stop;
    return true;
}

bool name_is(const uint8_t *text, const wsp_indexed_line &l, const char *name, uint16_t n) {
    return static_cast<uint16_t>(l.name_stop - l.name) == n && std::memcmp(text + l.name, name, n) == 0;
}

enum class insert_result : uint8_t { placed, present, no_room };

// Puts the line's name into the table unless a line of that name is there
// already.  Growth is the caller's business.
insert_result insert(wsp_line_index *ix, const uint8_t *text, const wsp_indexed_line &l) {
    const uint16_t n = static_cast<uint16_t>(l.name_stop - l.name);
    uint16_t i = static_cast<uint16_t>(name_hash(text + l.name, n) & ix->mask);
    for (;;) {
        uint16_t v = ix->slot[i];
        if (v == 0) break;
        wsp_indexed_line other = line_at(text, static_cast<uint16_t>(v - 1), ix->end);
        if (name_is(text, other, reinterpret_cast<const char *>(text + l.name), n)) return insert_result::present;
        i = static_cast<uint16_t>((i + 1) & ix->mask);
    }
    // At most three quarters of the slots in use.
    if ((ix->names + 1u) * 4u > (ix->mask + 1u) * 3u) return insert_result::no_room;
    ix->slot[i] = static_cast<uint16_t>(l.start + 1);
    ++ix->names;
    return insert_result::placed;
}

// Doubles the table and puts back every line before `upto`.  Those lines
// all had their names in the table, which was at most three quarters full,
// so they take at most three eighths of the doubled one and every insert
// finds room: the rehash is a plain loop, no call back into index_lines.
bool grow(wsp_line_index *ix, const uint8_t *text, uint16_t upto) {
    uint32_t slots = (ix->mask + 1u) * 2u;
    if (slots > wsp_line_index::kSlots) return false;
    std::memset(ix->slot, 0, sizeof ix->slot[0] * slots);
    ix->mask = static_cast<uint16_t>(slots - 1);
    ix->names = 0;
    uint16_t pos = 0;
    wsp_indexed_line l;
    while (next_line(text, &pos, upto, &l)) insert(ix, text, l);
    return true;
}

// Lines [from, upto) join the table, growing it while it may grow; once it
// cannot take a name, the rest of the lines are left to the overflow scan.
void index_lines(wsp_line_index *ix, const uint8_t *text, uint16_t from, uint16_t upto) {
    uint16_t pos = from;
    wsp_indexed_line l;
    while (next_line(text, &pos, upto, &l)) {
        if (!ix->full) {
            if (insert(ix, text, l) != insert_result::no_room) continue;
            if (grow(ix, text, l.start) && insert(ix, text, l) != insert_result::no_room) continue;
            ix->full = true;
            ix->overflow = l.start;
            std::memset(ix->filter, 0, sizeof ix->filter);
        }
        filter_add(ix, name_hash(text + l.name, static_cast<uint16_t>(l.name_stop - l.name)));
    }
}

} // namespace

bool wsp_line_index_plain(const uint8_t *p, size_t n) {
    for (size_t i = 0; i < n; ++i) {
        if (p[i] == 0 || p[i] == '\n' || p[i] == '"') return false;
    }
    return true;
}

void wsp_line_index_clear(wsp_line_index *ix) {
    std::memset(ix->slot, 0, sizeof ix->slot[0] * (ix->mask + 1u));
    ix->mask = wsp_line_index::kFirstSlots - 1;
    ix->names = 0;
    ix->full = false;
    ix->overflow = 0;
    ix->end = 0;
}

void wsp_indexed_output_start(wsp_indexed_output *io, const wsp_buffer *out, bool use_index) {
    io->view = *out;
    io->view.reserved = kViewMark;
    wsp_line_index *ix = &io->index;
    ix->usable = false;
    ix->mask = wsp_line_index::kFirstSlots - 1;
    wsp_line_index_clear(ix);
    if (!use_index || out->offset != 0) return;

    const uint8_t *text = out->data;
    uint16_t end = 0;
    while (end < out->size && text[end] != 0) ++end;
    // Every line must be walked (length not below the end), and the text
    // must be of the indexed shape: quote-free and closed by a line feed.
    if (out->length < end || (end > 0 && text[end - 1] != '\n')) return;
    if (std::memchr(text, '"', end) != nullptr) return;
    ix->usable = true;
    wsp_line_index_appended(ix, text, end);
}

wsp_line_index *wsp_line_index_of(wsp_buffer *out) {
    if (!is_view(out)) return nullptr;
    wsp_line_index *ix = &reinterpret_cast<wsp_indexed_output *>(out)->index;
    return ix->usable ? ix : nullptr;
}

bool wsp_line_index_find(const wsp_line_index *ix, const uint8_t *text, const char *name, uint16_t n,
                         wsp_indexed_line *line) {
    const uint32_t h = name_hash(reinterpret_cast<const uint8_t *>(name), n);
    uint16_t i = static_cast<uint16_t>(h & ix->mask);
    for (;;) {
        uint16_t v = ix->slot[i];
        if (v == 0) break;
        wsp_indexed_line l = line_at(text, static_cast<uint16_t>(v - 1), ix->end);
        if (name_is(text, l, name, n)) {
            *line = l;
            return true;
        }
        i = static_cast<uint16_t>((i + 1) & ix->mask);
    }
    if (!ix->full || !filter_may_hold(ix, h)) return false;
    // Lines left out of a full table that may carry the name: looked at
    // one by one, the name compared where the line starts before the line
    // is cut (a line led by colons is cut first).
    const uint16_t end = ix->end;
    uint16_t pos = ix->overflow;
    while (pos < end) {
        if (text[pos] == '\n') {
            ++pos;
            continue;
        }
        const bool leads = text[pos] == ':' || (static_cast<uint32_t>(pos) + n < end &&
                                                 std::memcmp(text + pos, name, n) == 0 &&
                                                 (text[pos + n] == ':' || text[pos + n] == '\n'));
        wsp_indexed_line l;
        if (leads) {
            l = line_at(text, pos, end);
            if (name_is(text, l, name, n)) {
                *line = l;
                return true;
            }
            pos = l.stop;
            continue;
        }
        const void *nl = std::memchr(text + pos, '\n', static_cast<size_t>(end - pos));
        if (nl == nullptr) break;
        pos = static_cast<uint16_t>(static_cast<const uint8_t *>(nl) - text);
    }
    return false;
}

void wsp_line_index_appended(wsp_line_index *ix, const uint8_t *text, uint16_t new_end) {
    const uint16_t from = ix->end;
    ix->end = new_end;
    if (std::memchr(text + from, '"', static_cast<size_t>(new_end - from)) != nullptr ||
        (new_end > 0 && text[new_end - 1] != '\n')) {
        ix->usable = false;
        return;
    }
    index_lines(ix, text, from, new_end);
}

void wsp_line_index_inserted(wsp_line_index *ix, uint16_t at, uint16_t grown) {
    // The last line growing (repeats in a row) moves nothing.
    const bool lines_follow = static_cast<uint32_t>(at) + 1 < ix->end;
    for (uint32_t i = 0; lines_follow && i <= ix->mask; ++i) {
        uint16_t v = ix->slot[i];
        if (v != 0 && v - 1 > at) ix->slot[i] = static_cast<uint16_t>(v + grown);
    }
    if (ix->full && ix->overflow > at) ix->overflow = static_cast<uint16_t>(ix->overflow + grown);
    ix->end = static_cast<uint16_t>(ix->end + grown);
}

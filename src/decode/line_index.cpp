// The per-call line index: an open-addressing table from a line name to the
// first line that carries it, kept in step with every write of a call.
//
// On a text of the indexed shape (see line_index.h) the quote-aware walk of
// the merging writer cuts a line at every line feed (runs of line feeds
// give no line) and a name at the line's first colon after any leading
// colons; the scans below cut the same way.
//
// How the walk pairs quotation marks: a mark looks for the next mark
// anywhere after it; when there is one, the walk goes on after it and the
// octet right after the closing mark is tested only as a line end, never
// as the start of another quoted section.  A mark without a partner makes
// every later mark of the same line an ordinary octet.  So a line whose
// marks all find their partners inside it is cut at its own line feed,
// whatever text follows it; a mark whose partner lies further on would
// hide the line feed, and such a text is left to the walk.
#include "line_index.h"

#include <cstring>

namespace {

// The mark a view carries in its `reserved` field.
constexpr uint32_t kViewMark = 0x7767C0DEu;

bool is_view(const wsp_buffer *out) { return out != nullptr && out->reserved == kViewMark; }

// The same hash as wsp_line_index_key gives.
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

uint16_t index_of(const uint8_t *text, const void *p) {
    return static_cast<uint16_t>(static_cast<const uint8_t *>(p) - text);
}

// The line starting at `start` (not a line feed, below end).
wsp_indexed_line line_at(const uint8_t *text, uint16_t start, uint16_t end) {
    wsp_indexed_line l{start, start, start, start};
    const void *nl = std::memchr(text + start, '\n', static_cast<size_t>(end - start));
    l.stop = nl != nullptr ? index_of(text, nl) : end;
    uint16_t n = start;
    while (n < l.stop && text[n] == ':') ++n;
    l.name = n;
    const void *colon = std::memchr(text + n, ':', static_cast<size_t>(l.stop - n));
    l.name_stop = colon != nullptr ? index_of(text, colon) : l.stop;
    return l;
}

// The line whose name starts at `name` (as a slot holds it).  Only the
// octets from the name on are looked at: the line's start is not needed by
// the writers.
wsp_indexed_line line_from_name(const uint8_t *text, uint16_t name, uint16_t end) {
    wsp_indexed_line l{name, name, name, name};
    const void *nl = std::memchr(text + name, '\n', static_cast<size_t>(end - name));
    l.stop = nl != nullptr ? index_of(text, nl) : end;
    const void *colon = std::memchr(text + name, ':', static_cast<size_t>(l.stop - name));
    l.name_stop = colon != nullptr ? index_of(text, colon) : l.stop;
    return l;
}

// True when the name filed at `at` is the n octets of `name` (a usable
// name: it holds no colon or line feed, so an equal run followed by a
// colon or a line feed is the whole name).
bool name_at_is(const uint8_t *text, uint16_t end, uint16_t at, const uint8_t *name, uint16_t n) {
    if (static_cast<uint32_t>(at) + n >= end) return false;
    const uint8_t after = text[at + n];
    return (after == ':' || after == '\n') && text[at] == name[0] && std::memcmp(text + at, name, n) == 0;
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

enum class insert_result : uint8_t { placed, present, no_room };

// Files the name at `at` (n octets, hash h) unless a line of that name is
// there already.  Growth is the caller's business.
insert_result insert(wsp_line_index *ix, const uint8_t *text, uint16_t at, uint16_t n, uint32_t h) {
    uint16_t i = static_cast<uint16_t>(h & ix->mask);
    for (;;) {
        uint16_t v = ix->slot[i];
        if (v == 0) break;
        if (name_at_is(text, ix->end, static_cast<uint16_t>(v - 1), text + at, n)) return insert_result::present;
        i = static_cast<uint16_t>((i + 1) & ix->mask);
    }
    // At most three quarters of the slots in use.
    if ((ix->names + 1u) * 4u > (ix->mask + 1u) * 3u) return insert_result::no_room;
    ix->slot[i] = static_cast<uint16_t>(at + 1);
    ++ix->names;
    return insert_result::placed;
}

insert_result insert_line(wsp_line_index *ix, const uint8_t *text, const wsp_indexed_line &l) {
    const uint16_t n = static_cast<uint16_t>(l.name_stop - l.name);
    return insert(ix, text, l.name, n, name_hash(text + l.name, n));
}

// Doubles the table and puts back every line before `upto`.  Those lines
// all had their names in the table, which was at most three quarters full,
// so they take at most three eighths of the doubled one and every insert
// finds room: the rehash is a plain loop, no call back into file_name.
bool grow(wsp_line_index *ix, const uint8_t *text, uint16_t upto) {
    uint32_t slots = (ix->mask + 1u) * 2u;
    if (slots > wsp_line_index::kSlots) return false;
    std::memset(ix->slot, 0, sizeof ix->slot[0] * slots);
    ix->mask = static_cast<uint16_t>(slots - 1);
    ix->names = 0;
    uint16_t pos = 0;
    wsp_indexed_line l;
    while (next_line(text, &pos, upto, &l)) insert_line(ix, text, l);
    return true;
}

// Files the name of the line starting at `line_start` (name at `at`, n
// octets, hash h): into the table while it may grow, into the filter of
// the lines left out once it cannot take a name.
void file_name(wsp_line_index *ix, const uint8_t *text, uint16_t line_start, uint16_t at, uint16_t n, uint32_t h) {
    if (!ix->full) {
        if (insert(ix, text, at, n, h) != insert_result::no_room) return;
        if (grow(ix, text, line_start) && insert(ix, text, at, n, h) != insert_result::no_room) return;
        ix->full = true;
        ix->overflow = line_start;
        std::memset(ix->filter, 0, sizeof ix->filter);
    }
    filter_add(ix, h);
}

// True when the walk cuts the line and its name where line_at does.
bool line_keeps_shape(const uint8_t *text, const wsp_indexed_line &l) {
    return std::memchr(text + l.start, '"', static_cast<size_t>(l.name_stop - l.start)) == nullptr &&
           wsp_line_index_quotes_closed(text, l.name_stop, l.stop);
}

} // namespace

bool wsp_line_index_quotes_closed(const uint8_t *text, uint16_t from, uint16_t to) {
    const uint8_t *p = text + from;
    const uint8_t *const stop = text + to;
    while (p < stop) {
        const void *open = std::memchr(p, '"', static_cast<size_t>(stop - p));
        if (open == nullptr) return true;
        const uint8_t *after_open = static_cast<const uint8_t *>(open) + 1;
        const void *close = std::memchr(after_open, '"', static_cast<size_t>(stop - after_open));
        if (close == nullptr) return false;
        // The octet after the closing mark is never an opening one.
        p = static_cast<const uint8_t *>(close) + 2;
    }
    return true;
}

bool wsp_line_index_keeps_lines(const uint8_t *p, size_t n) {
    if (std::memchr(p, '\n', n) != nullptr || std::memchr(p, 0, n) != nullptr) return false;
    // A run is at most a header value: its positions fit 16 bits.
    return wsp_line_index_quotes_closed(p, 0, static_cast<uint16_t>(n));
}

namespace {

// Octets that end a line or a name where the walk cuts them (all below
// 64): line feed, quotation mark and colon, one bit each.
constexpr uint64_t kCutOctets = (1ull << '\n') | (1ull << '"') | (1ull << ':');

bool cuts(uint8_t c) { return c < 64 && ((kCutOctets >> c) & 1u) != 0; }

} // namespace

bool wsp_line_index_key(const char *name, uint16_t n, uint32_t *hash) {
    if (n == 0) return false;
    uint32_t h = 2166136261u;
    for (uint16_t i = 0; i < n; ++i) {
        const uint8_t c = static_cast<uint8_t>(name[i]);
        if (cuts(c)) return false;
        h = (h ^ c) * 16777619u;
    }
    *hash = h ^ (h >> 15);
    return true;
}

const uint8_t *wsp_text_find(const uint8_t *text, size_t end, const uint8_t *needle, size_t n) {
    if (n == 0) return text;
    if (n > end) return nullptr;
    const uint8_t first = needle[0];
    const uint8_t *p = text;
    const uint8_t *const last = text + (end - n);
    while (p <= last) {
        p = static_cast<const uint8_t *>(std::memchr(p, first, static_cast<size_t>(last - p) + 1));
        if (p == nullptr) return nullptr;
        if (p[n - 1] == needle[n - 1] && std::memcmp(p + 1, needle + 1, n - 1) == 0) return p;
        ++p;
    }
    return nullptr;
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
    // must be closed by a line feed.
    if (out->length < end || (end > 0 && text[end - 1] != '\n')) return;
    ix->usable = true;
    wsp_line_index_appended(ix, text, end);
}

wsp_line_index *wsp_line_index_of(wsp_buffer *out) {
    if (!is_view(out)) return nullptr;
    wsp_line_index *ix = &reinterpret_cast<wsp_indexed_output *>(out)->index;
    return ix->usable ? ix : nullptr;
}

bool wsp_line_index_find(const wsp_line_index *ix, const uint8_t *text, const char *name, uint16_t n, uint32_t hash,
                         wsp_indexed_line *line) {
    const uint8_t *const key = reinterpret_cast<const uint8_t *>(name);
    uint16_t i = static_cast<uint16_t>(hash & ix->mask);
    for (;;) {
        uint16_t v = ix->slot[i];
        if (v == 0) break;
        if (name_at_is(text, ix->end, static_cast<uint16_t>(v - 1), key, n)) {
            *line = line_from_name(text, static_cast<uint16_t>(v - 1), ix->end);
            return true;
        }
        i = static_cast<uint16_t>((i + 1) & ix->mask);
    }
    if (!ix->full || !filter_may_hold(ix, hash)) return false;
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
            if (static_cast<uint16_t>(l.name_stop - l.name) == n && std::memcmp(text + l.name, name, n) == 0) {
                *line = l;
                return true;
            }
            pos = l.stop;
            continue;
        }
        const void *nl = std::memchr(text + pos, '\n', static_cast<size_t>(end - pos));
        if (nl == nullptr) break;
        pos = index_of(text, nl);
    }
    return false;
}

void wsp_line_index_appended(wsp_line_index *ix, const uint8_t *text, uint16_t new_end) {
    uint16_t pos = ix->end;
    ix->end = new_end;
    if (new_end > 0 && text[new_end - 1] != '\n') {
        ix->usable = false;
        return;
    }
    wsp_indexed_line l;
    while (next_line(text, &pos, new_end, &l)) {
        if (!line_keeps_shape(text, l)) {
            ix->usable = false;
            return;
        }
        const uint16_t n = static_cast<uint16_t>(l.name_stop - l.name);
        file_name(ix, text, l.start, l.name, n, name_hash(text + l.name, n));
    }
}

void wsp_line_index_appended_line(wsp_line_index *ix, const uint8_t *text, uint16_t name_len, uint32_t hash,
                                  uint16_t new_end) {
    const uint16_t start = ix->end;
    ix->end = new_end;
    // The value lies between the colon and the line feed.
    const uint16_t value = static_cast<uint16_t>(start + name_len + 1);
    const uint16_t stop = static_cast<uint16_t>(new_end - 1);
    if (std::memchr(text + value, '\n', static_cast<size_t>(stop - value)) != nullptr ||
        !wsp_line_index_quotes_closed(text, value, stop)) {
        ix->usable = false;
        return;
    }
    file_name(ix, text, start, start, name_len, hash);
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

// Octet classes, character classes and the small text utilities: the
// quote-aware in-place tokenizer, unquoted substring search, number
// formatting, lower-casing, trimming and ASCII case-insensitive comparison.
#include <cstdint>
#include <cstring>

#include "primitives.h"

namespace {

// Blanks that trimming removes: space, tab, CR and LF.
bool is_blank(uint8_t c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

} // namespace

void wsp_value_class(const uint8_t *p, uint8_t *cls) { *cls = wsp_class_of(*p); }

// Splits at the one-character delimiter, in place, keeping balanced
// double-quoted sections whole:
//  - leading delimiters (and so empty fields) are skipped; a text made only
//    of delimiters gives one empty token (at its terminating NUL) before
//    NULL, on purpose;
//  - after one quotation mark without a partner every later quotation mark
//    is an ordinary character;
//  - the character right after a closing quotation mark is only tested as
//    delimiter or terminator, never as the start of a new quoted section.
// A NULL or empty delimiter returns NULL: an empty one would make the
// terminator itself a delimiter and move *pos past the text.  The index is
// not bounded to 16 bits: a text is scanned to its terminator whatever its
// length.
extern "C" WSP_API char *wsp_strtoken(char **pos, const char *delim) {
    if (delim == nullptr || delim[0] == '\0' || delim[1] != '\0') return nullptr;
    return wsp_next_token(pos, static_cast<uint8_t>(delim[0]));
}

namespace {

// The quote-aware walk from s: a quotation mark (while quotes still pair
// up) jumps to its partner, and the walk stops at the delimiter or the
// terminator.  The search for a partner that is not there happens once;
// after it a mark is an ordinary character.
char *walk_token(char **pos, char *s, uint8_t delim) {
    size_t i = 0;
    bool unbalanced = false;
    for (;;) {
        uint8_t tested = static_cast<uint8_t>(s[i]);
        if (tested == '"' && !unbalanced) {
            const char *close = std::strchr(s + i + 1, '"');
            if (close == nullptr) {
                unbalanced = true; // the mark itself is tested below
            } else {
                i = static_cast<size_t>(close - s) + 1;
                tested = static_cast<uint8_t>(s[i]);
            }
        }
        if (tested == delim) {
            if (i > 0) {
                s[i] = '\0';
                *pos = s + i + 1;
                return s;
            }
            ++s; // a leading delimiter: skipped
            continue;
        }
        if (tested == 0) {
            *pos = s + i;
            return s;
        }
        ++i;
    }
}

} // namespace

// Most tokens hold no quotation mark: after the leading delimiters, the
// first delimiter ends the token unless a mark comes before it.  Both
// searches run through the C library's string functions; a token with a
// mark takes the quote-aware walk.  A quotation mark as the delimiter
// always takes the walk, which treats it as a quote first.
char *wsp_next_token_n(char **pos, uint8_t delim, size_t *length) {
    if (pos == nullptr || *pos == nullptr || (*pos)[0] == '\0') return nullptr;
    char *s = *pos;
    if (delim != '"') {
        while (static_cast<uint8_t>(*s) == delim) ++s;
        char *stop = std::strchr(s, static_cast<char>(delim));
        const size_t n = stop != nullptr ? static_cast<size_t>(stop - s) : std::strlen(s);
        if (std::memchr(s, '"', n) == nullptr) {
            if (stop == nullptr) {
                *pos = s + n;
            } else {
                *stop = '\0';
                *pos = stop + 1;
            }
            *length = n;
            return s;
        }
    }
    char *token = walk_token(pos, s, delim);
    *length = std::strlen(token);
    return token;
}

char *wsp_next_token(char **pos, uint8_t delim) {
    size_t length = 0;
    return wsp_next_token_n(pos, delim, &length);
}

// Scans hay for needle outside double-quoted sections.  The needle is
// compared in place; no scratch copy of it is needed.
const char *wsp_find_unquoted(const char *hay, const char *needle) {
    if (needle == nullptr || needle[0] == '\0') return hay;
    if (hay == nullptr || hay[0] == '\0') return nullptr;
    size_t n = std::strlen(needle);
    const char *p = hay;
    for (;;) {
        char c = *p;
        if (c == '\0') return nullptr;
        if (c == needle[0]) {
            if (strnlen(p, n) < n) return nullptr; // fewer than n characters left
            if (std::memcmp(p, needle, n) == 0) return p;
            ++p;
            continue;
        }
        if (c == '"') {
            const char *close = std::strchr(p + 1, '"');
            if (close == nullptr) return nullptr;
            p = close + 1;
            continue;
        }
        ++p;
    }
}

char *wsp_uint_to_text(uint32_t v, char *end) {
    *end = '\0';
    char *p = end;
    do {
        *--p = static_cast<char>('0' + v % 10);
        v /= 10;
    } while (v != 0);
    return p;
}

// A machine word at a time (eight octets here, four on the 32-bit target):
// in each octet below 0x80 whose low seven bits lie in 'A'..'Z' the 0x20 bit
// is set; every other octet is written back as it was.  The tail goes octet
// by octet.
void wsp_lower_run(char *s, size_t n) {
    using word = unsigned long;
    constexpr word kOnes = ~word{0} / 0xFF;
    constexpr word kHigh = kOnes * 0x80;
    size_t i = 0;
    for (; i + sizeof(word) <= n; i += sizeof(word)) {
        word w;
        std::memcpy(&w, s + i, sizeof w);
        const word low7 = w & ~kHigh;
        const word from_a = low7 + kOnes * (0x80 - 'A');   // high bit: at least 'A'
        const word past_z = low7 + kOnes * (0x80 - 'Z' - 1); // high bit: above 'Z'
        const word capitals = from_a & ~past_z & ~w & kHigh;
        if (capitals == 0) continue;
        w |= capitals >> 2;
        std::memcpy(s + i, &w, sizeof w);
    }
    for (; i < n; ++i) {
        const uint8_t c = static_cast<uint8_t>(s[i]);
        if (static_cast<uint8_t>(c - 'A') < 26u) s[i] = static_cast<char>(c + ('a' - 'A'));
    }
}

void wsp_str_lower(char *s) {
    if (s == nullptr) return;
    wsp_lower_run(s, std::strlen(s));
}

void wsp_trim(char **pos) {
    if (pos == nullptr || *pos == nullptr) return;
    char *s = *pos;
    while (is_blank(static_cast<uint8_t>(*s))) ++s;
    *pos = s;
    size_t len = std::strlen(s);
    while (len > 0 && is_blank(static_cast<uint8_t>(s[len - 1]))) s[--len] = '\0';
}

// Equal octets need no folding; only a pair that differs is compared again
// in lower case.
int wsp_strcasecmp(const char *a, const char *b) {
    const uint8_t *x = reinterpret_cast<const uint8_t *>(a);
    const uint8_t *y = reinterpret_cast<const uint8_t *>(b);
    for (;; ++x, ++y) {
        uint8_t cx = *x;
        uint8_t cy = *y;
        if (cx == cy) {
            if (cx == 0) return 0;
            continue;
        }
        cx = wsp_ascii_lower(cx);
        cy = wsp_ascii_lower(cy);
        if (cx != cy) return static_cast<int>(cx) - static_cast<int>(cy);
    }
}

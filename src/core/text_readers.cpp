// Cursor-style readers of Token-text, Text-string, text values and
// Long-integers.  Readers leave the cursor where it was on every failure.
//
// Input bounds: the text readers never read an input octet at an index at
// or past their bound (remaining, resp. limit, counted from where the text
// starts).  Reaching that index is treated as running past the end of the
// input: NUL at out[i] and -214, after the capacity test that comes first.
#include <cstdint>

#include "primitives.h"

namespace {

// The loop shared by the Token-text and Text-string readers: octets of
// `src` are copied to out until a NUL.  -216 when out fills before the NUL
// (out left unterminated), -214 for a refused octet or the end of the
// input.  On success *used is the number of octets consumed, NUL included.
// A null `out` checks the text with the same results and copies nothing.
template <typename CharTest>
int read_terminated(const uint8_t *src, char *out, uint16_t remaining, uint16_t capacity, CharTest allowed,
                    uint16_t *used) {
    // Below both bounds every octet is read; at the first bound reached the
    // capacity is tested before the end of the input.
    const uint16_t limit = remaining < capacity ? remaining : capacity;
    uint16_t i = 0;
    for (; i < limit; i = static_cast<uint16_t>(i + 1)) {
        const uint8_t c = src[i];
        if (c == 0) {
            if (out != nullptr) out[i] = '\0';
            *used = static_cast<uint16_t>(i + 1);
            return kWspOk;
        }
        if (!allowed(c)) {
            if (out != nullptr) out[i] = '\0';
            return kWspErrFail;
        }
        if (out != nullptr) out[i] = static_cast<char>(c);
    }
    if (i >= capacity) return kWspErrTruncated;
    if (out != nullptr) out[i] = '\0';
    return kWspErrFail;
}

bool valid_cursor(const uint8_t *const *cursor) { return cursor != nullptr && *cursor != nullptr; }

// The Text-string at *cursor checked in place: the statuses of
// wsp_read_text_string, and on WSP_OK *text at its first character (after
// a leading Quote) and *cursor past its NUL.  `out` receives the copy when
// not null.
int text_string(const uint8_t **cursor, char *out, const char **text, uint16_t remaining, uint16_t capacity) {
    const uint8_t *p = *cursor;
    uint16_t skipped = 0;
    if (remaining != 0) {
        if (p[0] >= 128) {
            // Stored only when out has room for it at all.
            if (out != nullptr && capacity != 0) out[0] = '\0';
            return kWspErrFail;
        }
        if (p[0] == 127) {
            p += 1;
            skipped = 1;
        }
    }
    // With nothing left to read the first octet is not examined: the loop
    // below reports the capacity or the end of the input.
    // The skipped Quote is not counted against the capacity, but it is
    // counted against the octets the caller has: callers hand over the
    // octets left from the cursor, and the text after a Quote must end
    // inside them too (otherwise the octet just past the input would be
    // examined).
    uint16_t used = 0;
    int status = read_terminated(p, out, static_cast<uint16_t>(remaining - skipped), capacity,
                                 [](uint8_t c) { return wsp_is_text_char(c); }, &used);
    if (status != kWspOk) return status;
    if (text != nullptr) *text = reinterpret_cast<const char *>(p);
    *cursor += skipped + used;
    return kWspOk;
}

} // namespace

// A first octet of 128 or above needs the Quote in front: -214.  A leading
// Quote (127) is passed over and not counted against either bound; the
// octet after it may then be 128 or above.
int wsp_read_text_string(const uint8_t **cursor, char *out, uint16_t remaining, uint16_t capacity) {
    if (!valid_cursor(cursor) || out == nullptr) return kWspErrFail;
    return text_string(cursor, out, nullptr, remaining, capacity);
}

int wsp_check_text_string(const uint8_t **cursor, const char **text, uint16_t remaining, uint16_t capacity) {
    if (!valid_cursor(cursor) || text == nullptr) return kWspErrFail;
    return text_string(cursor, nullptr, text, remaining, capacity);
}

// The length octet n is tested against the octets that follow it, not
// against remaining itself: n + 1 octets are read when n <= remaining - 1.
// No octet at all (remaining 0) fails before the length octet is read.
int wsp_read_long_int(const uint8_t **cursor, uint32_t *value, uint16_t remaining) {
    if (!valid_cursor(cursor) || value == nullptr || remaining == 0) return kWspErrFail;
    const uint8_t *p = *cursor;
    uint8_t n = p[0];
    const uint16_t following = static_cast<uint16_t>(remaining - 1);
    if (n > 4 || n > following) return kWspErrFail;
    uint32_t v = 0;
    for (uint8_t i = 1; i <= n; ++i) v = (v << 8) | p[i];
    *value = v;
    *cursor = p + n + 1;
    return kWspOk;
}

int wsp_read_token_text(const uint8_t **cursor, char *out, uint16_t remaining, uint16_t capacity) {
    if (!valid_cursor(cursor) || out == nullptr) return kWspErrFail;
    uint16_t used = 0;
    int status = read_terminated(*cursor, out, remaining, capacity,
                                 [](uint8_t c) { return wsp_is_token_char(c); }, &used);
    if (status == kWspOk) *cursor += used;
    return status;
}

// Class 3 (Quoted-string): the leading quotation mark of the input is
// passed over without being examined, a quotation mark is written to out[0]
// and the closing one is added back in front of the NUL.  i indexes both the
// output and the input from the cursor, so for class 3 input octet 0 is the
// skipped mark.
int wsp_read_text_value(const uint8_t **cursor, char *out, int cls, uint16_t limit, uint16_t outsize) {
    if (!valid_cursor(cursor) || out == nullptr) return kWspErrFail;
    const uint8_t *p = *cursor;
    bool quoted = (cls == WSP_CLASS_QUOTED);
    uint16_t i = 0;
    if (quoted) {
        // No room for even the opening mark: nothing is stored.
        if (outsize == 0) return kWspErrFail;
        out[0] = '"';
        i = 1;
    }
    for (;; i = static_cast<uint16_t>(i + 1)) {
        if (i >= outsize) return kWspErrFail; // nothing terminated
        if (i >= limit) {
            out[i] = '\0';
            return kWspErrFail;
        }
        uint8_t c = p[i];
        if (c == 0) {
            if (quoted) {
                out[i] = '"';
                // The NUL after the added closing mark lands at out[i + 1],
                // which may be one past outsize: stored only inside outsize.
                if (static_cast<uint32_t>(i) + 1 < outsize) out[i + 1] = '\0';
            } else {
                out[i] = '\0';
            }
            *cursor = p + i + 1;
            return kWspOk;
        }
        if (!wsp_is_text_char(c)) {
            out[i] = '\0';
            return kWspErrFail;
        }
        out[i] = static_cast<char>(c);
    }
}

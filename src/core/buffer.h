// The guarded stores through which every buffer-style writer puts octets
// into a caller's wsp_buffer.
//
// A buffer-style output is written at data + offset + length, and `size`
// limits `length`, not offset + length: the caller's writable region is
// data[0 .. offset + size).  No octet is ever stored outside it.
//
// A writer reports success only when every octet it counts was stored, so
// the stores return a result that the writer has to look at.  The only
// octets a writer may drop while keeping its status and length are the
// one-octet over-runs that land exactly at data + offset + size (a
// terminating NUL its room test does not count); those go through
// wsp_buffer_store_at_end, and each call site says which octet it is.
#ifndef WSP_CORE_BUFFER_H
#define WSP_CORE_BUFFER_H

#include <cstdint>
#include <cstring>

#include "tarnwspencdec.h"

// Index of the next write position, counted from data: offset + length,
// without wrapping.
inline uint32_t wsp_buffer_tail_index(const wsp_buffer *buf) {
    return static_cast<uint32_t>(buf->offset) + buf->length;
}

// Index one past the writable region, counted from data: offset + size,
// without wrapping.
inline uint32_t wsp_buffer_end_index(const wsp_buffer *buf) {
    return static_cast<uint32_t>(buf->offset) + buf->size;
}

// True when the n octets at data[index...] all lie inside the writable
// region.  A writer that has this for everything it will store may write
// through data directly: no store of it can be refused.
inline bool wsp_buffer_holds(const wsp_buffer *buf, uint32_t index, uint32_t n) {
    return index <= wsp_buffer_end_index(buf) && n <= wsp_buffer_end_index(buf) - index;
}

// Stores one octet at data[index].  False, with nothing stored, when index
// lies outside the writable region.
[[nodiscard]] inline bool wsp_buffer_store(wsp_buffer *buf, uint32_t index, uint8_t octet) {
    if (index >= wsp_buffer_end_index(buf)) return false;
    buf->data[index] = octet;
    return true;
}

// Stores n octets from src at data[index...].  The part that lies inside the
// writable region is stored; true only when all n octets were.
[[nodiscard]] inline bool wsp_buffer_store_run(wsp_buffer *buf, uint32_t index, const uint8_t *src, uint32_t n) {
    if (n == 0) return true;
    const uint32_t end = wsp_buffer_end_index(buf);
    if (index >= end) return false;
    const uint32_t room = end - index;
    std::memcpy(buf->data + index, src, n < room ? n : room);
    return n <= room;
}

// Stores an octet that the writer's room test allows to fall one past the
// region: inside the region it is stored; exactly at offset + size it is
// dropped and still counts as done (true); any further out is refused
// (false), as with wsp_buffer_store.
[[nodiscard]] inline bool wsp_buffer_store_at_end(wsp_buffer *buf, uint32_t index, uint8_t octet) {
    return wsp_buffer_store(buf, index, octet) || index == wsp_buffer_end_index(buf);
}

#endif

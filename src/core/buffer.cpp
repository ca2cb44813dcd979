// Guarded stores into a buffer-style output's writable region
// data[0 .. offset + size).
#include "buffer.h"

#include <cstring>

bool wsp_buffer_store(wsp_buffer *buf, uint32_t index, uint8_t octet) {
    if (index >= wsp_buffer_end_index(buf)) return false;
    buf->data[index] = octet;
    return true;
}

bool wsp_buffer_store_run(wsp_buffer *buf, uint32_t index, const uint8_t *src, uint32_t n) {
    if (n == 0) return true;
    const uint32_t end = wsp_buffer_end_index(buf);
    if (index >= end) return false;
    const uint32_t room = end - index;
    std::memcpy(buf->data + index, src, n < room ? n : room);
    return n <= room;
}

bool wsp_buffer_store_at_end(wsp_buffer *buf, uint32_t index, uint8_t octet) {
    return wsp_buffer_store(buf, index, octet) || index == wsp_buffer_end_index(buf);
}

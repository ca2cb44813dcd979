// Body hand-over: the valid bytes of a body holder are moved to the start of
// their block and the block passes to the caller's wsp_body_result.
#include <cstring>

#include "pdu.h"
#include "primitives.h"

extern "C" WSP_API int wsp_decode_body(wsp_bodybuf *source, wsp_body_result *out) {
    if (out == nullptr) return kWspOk;
    out->body.size = 0;
    out->body.data = nullptr;
    out->content_type[0] = '\0';
    if (source != nullptr) {
        // A string copy: the bytes after the NUL are left as they were.
        size_t n = strnlen(source->content_type, WSP_CONTENT_TYPE_SIZE - 1);
        std::memcpy(out->content_type, source->content_type, n);
        out->content_type[n] = '\0';
    }
    out->body.offset = 0;
    out->body.length = 0;
    out->body.flags = 0;

    if (source == nullptr || source->body == nullptr) {
        // No body: the content type copied above is cleared again, on purpose.
        out->content_type[0] = '\0';
        return kWspOk;
    }

    wsp_buffer *b = source->body;
    const uint16_t o = b->offset;
    const uint16_t n = b->length;
    unsigned char *data = b->data;
    out->body.data = data;
    out->body.size = n;

    if (o != 0 && n != 0 && data != nullptr) {
        // The run moves to the front as if in pieces of o bytes, front to
        // back: no piece's source overlaps its destination, so the result is
        // one forward move.  A last partial piece is followed by o zero bytes
        // at data + n; when n is a multiple of o no zeros are written and the
        // stale bytes after the run stay, expressly.  Both lie inside the
        // o + n bytes the buffer held.
        std::memmove(data, data + o, n);
        if (n % o != 0) std::memset(data + n, 0, o);
    }
    out->body.length = n;
    source->body = nullptr;
    return kWspOk;
}

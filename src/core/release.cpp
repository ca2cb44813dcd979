// Release functions: the only places besides documented failure paths where
// the library frees a caller-visible data block.  Records themselves are
// never freed, only the data they point to (and the items of a wsp_capab).
#include <cstdlib>

#include "tarnwspencdec.h"

namespace {

// Frees a buffer's data unless it is missing or belongs to the caller.
void release_buffer_data(wsp_buffer *buffer) {
    if (buffer == nullptr || buffer->data == nullptr) return;
    if ((buffer->flags & WSP_BUFFER_EXTERNAL) != 0) return;
    std::free(buffer->data);
    buffer->data = nullptr;
}

void release_item(wsp_capab_item **slot) {
    wsp_capab_item *item = *slot;
    if (item == nullptr) return;
    if (item->data != nullptr) {
        std::free(item->data);
        item->data = nullptr;
    }
    std::free(item);
    *slot = nullptr;
}

} // namespace

extern "C" {

// A NULL holder is a no-op: the header encoder releases its output holder on
// failure even when the caller passed none.
WSP_API void wsp_dealloc_hdrbuf(wsp_hdrbuf *block) {
    if (block == nullptr) return;
    release_buffer_data(block->buffer);
}

WSP_API void wsp_dealloc_bodybuf(wsp_bodybuf *body) {
    if (body == nullptr) return;
    release_buffer_data(body->body);
}

// Items go in the order second, third, first.
WSP_API void wsp_dealloc_capab(wsp_capab *capab) {
    if (capab == nullptr) return;
    release_item(&capab->second);
    release_item(&capab->third);
    release_item(&capab->first);
}

} // extern "C"

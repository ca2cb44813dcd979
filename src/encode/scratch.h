// A zero-filled scratch wsp_buffer (offset 0, length 0, flags 0) in which an
// encoder builds the part of a value that follows its Value-length.  Ordinary
// values fit the fixed area on the stack; larger ones get a heap block that
// is freed when the scratch goes out of scope, on every path.
#ifndef WSP_ENCODE_SCRATCH_H
#define WSP_ENCODE_SCRATCH_H

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "primitives.h"
#include "tarnwspencdec.h"

class wsp_scratch {
  public:
    static constexpr uint16_t kLocalSize = 256;

    // Only the `size` octets the scratch describes are zeroed: nothing is
    // stored or read past them.
    explicit wsp_scratch(uint16_t size) : heap_(nullptr), buf_{} {
        unsigned char *data = local_;
        if (size > kLocalSize) {
            heap_ = static_cast<unsigned char *>(std::calloc(size, 1));
            data = heap_;
        } else {
            std::memset(local_, 0, size);
        }
        buf_.data = data;
        buf_.size = size;
    }
    ~wsp_scratch() { std::free(heap_); }
    wsp_scratch(const wsp_scratch &) = delete;
    wsp_scratch &operator=(const wsp_scratch &) = delete;

    // False when the heap block could not be had (callers return -214).
    bool ok() const { return buf_.data != nullptr; }
    wsp_buffer *get() { return &buf_; }
    const wsp_buffer *get() const { return &buf_; }

  private:
    unsigned char local_[kLocalSize];
    unsigned char *heap_;
    wsp_buffer buf_;
};

// A value that goes out behind its Value-length: `build(body)` writes it
// into a scratch of `size` octets, which then follows its length in `out`.
// A scratch that cannot be had or a block that does not fit gives -214; a
// build status other than WSP_OK is returned as it stands.
template <typename Build> int wsp_append_built_value(uint16_t size, wsp_buffer *out, Build build) {
    wsp_scratch scratch(size);
    if (!scratch.ok()) return kWspErrFail;
    int status = build(scratch.get());
    if (status != kWspOk) return status;
    return wsp_append_value_block(out, scratch.get()) == kWspOk ? kWspOk : kWspErrFail;
}

#endif

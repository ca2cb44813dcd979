// Buffers that wsptool hands to the library, with the ownership rules the
// library expects: blocks it may free come from calloc, blocks it must not
// free carry the external flag.
#ifndef WSPTOOL_LIBRARY_BUFFERS_H
#define WSPTOOL_LIBRARY_BUFFERS_H

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "tarnwspencdec.h"

namespace wsptool {

// The most octets a library buffer can describe (sizes are 16-bit).
inline constexpr size_t kMaxOctets = 0xFFFF;

// Octets the library reads from: a copy of the input followed by a few zero
// octets.  The buffer record covers the input alone and is marked external,
// so the library never frees it; the zero tail only guards against a reader
// that looks one octet further than it was told.
class InputBlock {
public:
    explicit InputBlock(const std::vector<uint8_t> &octets) : storage_(octets.size() + kGuard, 0) {
        if (!octets.empty()) std::memcpy(storage_.data(), octets.data(), octets.size());
        record_.data = storage_.data();
        record_.size = static_cast<uint16_t>(octets.size());
        record_.length = static_cast<uint16_t>(octets.size());
        record_.flags = WSP_BUFFER_EXTERNAL;
    }
    InputBlock(const InputBlock &) = delete;
    InputBlock &operator=(const InputBlock &) = delete;

    wsp_buffer &record() { return record_; }
    const uint8_t *octets() const { return storage_.data(); }

private:
    static constexpr size_t kGuard = 8;
    std::vector<uint8_t> storage_;
    wsp_buffer record_{};
};

// An output buffer of `size` usable octets over a calloc'ed block that is
// one octet longer, so that a terminating NUL written at `size` still lands
// inside.  The library may free the block on a failure (it then sets data
// to NULL); whatever is left is freed here.
class OutputBlock {
public:
    explicit OutputBlock(uint16_t size) {
        record_.data = static_cast<unsigned char *>(std::calloc(static_cast<size_t>(size) + 1, 1));
        if (record_.data == nullptr) throw std::bad_alloc();
        record_.size = size;
    }
    ~OutputBlock() { std::free(record_.data); }
    OutputBlock(const OutputBlock &) = delete;
    OutputBlock &operator=(const OutputBlock &) = delete;

    wsp_buffer &record() { return record_; }

private:
    wsp_buffer record_{};
};

// A buffer record whose data block, if the library allocates one into it,
// is freed when the record goes (the spare buffer of push decoding).
class SpareRecord {
public:
    SpareRecord() = default;
    ~SpareRecord() { std::free(record_.data); }
    SpareRecord(const SpareRecord &) = delete;
    SpareRecord &operator=(const SpareRecord &) = delete;

    wsp_buffer &record() { return record_; }

private:
    wsp_buffer record_{};
};

} // namespace wsptool

#endif // WSPTOOL_LIBRARY_BUFFERS_H

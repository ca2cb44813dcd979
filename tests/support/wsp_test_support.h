// Helpers shared by both test suites (unit/ and api/): byte vectors, hex
// text, texts with their NUL, and input and output buffers whose data block
// has exactly the size handed to the library, so that ASan reports any
// access past it.
#ifndef WSP_TEST_SUPPORT_H
#define WSP_TEST_SUPPORT_H

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "tarnwspencdec.h"

namespace wsp_test {

using Bytes = std::vector<uint8_t>;

inline Bytes bytes(std::initializer_list<int> values) {
    Bytes out;
    for (int v : values) out.push_back(static_cast<uint8_t>(v));
    return out;
}

// Bytes of a C string, without its NUL.
inline Bytes text_bytes(const char *s) { return Bytes(s, s + std::strlen(s)); }

// A text's octets followed by its NUL.
inline Bytes cstr(const std::string &s) {
    Bytes b(s.begin(), s.end());
    b.push_back(0);
    return b;
}

// Concatenation.
inline Bytes cat(std::initializer_list<Bytes> parts) {
    Bytes out;
    for (const Bytes &p : parts) out.insert(out.end(), p.begin(), p.end());
    return out;
}

// "03 83 81 EA" style text of a byte run.
inline std::string hex(const uint8_t *p, size_t n) {
    static const char digits[] = "0123456789ABCDEF";
    std::string s;
    for (size_t i = 0; i < n; ++i) {
        if (i) s += ' ';
        s += digits[p[i] >> 4];
        s += digits[p[i] & 15];
    }
    return s;
}
inline std::string hex(const Bytes &b) { return hex(b.data(), b.size()); }

// An output wsp_buffer over a calloc'ed block of exactly its writable
// region, offset + size bytes (an empty region still gets a distinct block),
// so that ASan reports any write past it.  The library may free the block on
// documented failure paths; the destructor frees whatever is still there.
class OutBuffer {
  public:
    explicit OutBuffer(uint16_t size, uint16_t offset = 0) {
        std::memset(&buf_, 0, sizeof buf_);
        size_t region = static_cast<size_t>(offset) + size;
        buf_.data = static_cast<unsigned char *>(std::calloc(region ? region : 1, 1));
        buf_.size = size;
        buf_.offset = offset;
    }
    // Octets of the writable region: offset + size.
    size_t region() const { return static_cast<size_t>(buf_.offset) + buf_.size; }
    // Sets every octet of the region, so that untouched octets can be told
    // from written ones.
    void fill(uint8_t v) {
        if (buf_.data != nullptr) std::memset(buf_.data, v, region() ? region() : 1);
    }
    // The whole region, from the first octet of data.
    std::string region_hex() const { return buf_.data == nullptr ? std::string() : hex(buf_.data, region()); }
    ~OutBuffer() {
        if (buf_.data != nullptr && (buf_.flags & WSP_BUFFER_EXTERNAL) == 0) std::free(buf_.data);
    }
    OutBuffer(const OutBuffer &) = delete;
    OutBuffer &operator=(const OutBuffer &) = delete;

    wsp_buffer *get() { return &buf_; }
    wsp_buffer &operator*() { return buf_; }
    wsp_buffer *operator->() { return &buf_; }

    // The bytes written so far (offset .. offset + length).
    Bytes written() const {
        if (buf_.data == nullptr) return {};
        return Bytes(buf_.data + buf_.offset, buf_.data + buf_.offset + buf_.length);
    }
    std::string written_hex() const {
        Bytes w = written();
        return hex(w);
    }
    // The text from the first byte of data, bounded by size.
    std::string text() const {
        if (buf_.data == nullptr) return {};
        size_t n = strnlen(reinterpret_cast<const char *>(buf_.data), buf_.size);
        return std::string(reinterpret_cast<const char *>(buf_.data), n);
    }

  private:
    wsp_buffer buf_;
};

// A heap copy of input bytes of exactly their size, so that over-reads are
// caught by ASan.
class InBytes {
  public:
    explicit InBytes(const Bytes &b) : n_(b.size()) {
        p_ = static_cast<uint8_t *>(std::malloc(n_ ? n_ : 1));
        if (n_) std::memcpy(p_, b.data(), n_);
    }
    ~InBytes() { std::free(p_); }
    InBytes(const InBytes &) = delete;
    InBytes &operator=(const InBytes &) = delete;
    const uint8_t *data() const { return p_; }
    uint8_t *mutable_data() { return p_; }
    uint16_t size() const { return static_cast<uint16_t>(n_); }

  private:
    uint8_t *p_;
    size_t n_;
};

// A writable, NUL-terminated heap copy of a text (encoders cut text in place).
class TextCopy {
  public:
    explicit TextCopy(const std::string &s) {
        p_ = static_cast<char *>(std::malloc(s.size() + 1));
        std::memcpy(p_, s.c_str(), s.size() + 1);
    }
    ~TextCopy() { std::free(p_); }
    TextCopy(const TextCopy &) = delete;
    TextCopy &operator=(const TextCopy &) = delete;
    char *get() { return p_; }

  private:
    char *p_;
};

} // namespace wsp_test

#endif

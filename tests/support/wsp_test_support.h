// Helpers shared by every test suite (unit/, api/ and failmalloc/): byte
// vectors, hex text, texts with their NUL, input and output buffers whose
// data block has exactly the size handed to the library, so that ASan
// reports any access past it, and the offset sweep of buffer-style writers.
#ifndef WSP_TEST_SUPPORT_H
#define WSP_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
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

// ---- the offset sweep of buffer-style writers ----
//
// A writer's region is data[0 .. offset + size): size limits length, offset
// only moves where the bytes go.  So a writer run at offset k must do
// exactly what it does at offset 0, shifted by k octets: the same status,
// the same length, the same octets, nothing before offset touched and
// nothing stored past the region (each block is exactly offset + size
// octets, so ASan sees any write past it).  A writer is swept over every
// size from what is already there to a little more than it needs, which
// covers the exact fit, one octet short and the over-runs.

namespace wsp_test {

// One call of a buffer-style writer on the given output.
using Writer = std::function<int(wsp_buffer *)>;

// What the caller sees after one run.
struct WriterOutcome {
    int16_t status;
    uint16_t length;
    bool freed;         // the writer released the data block
    std::string region; // every octet of data[0 .. offset + size)
};

inline constexpr uint8_t kUntouched = 0xEE;

// Runs the writer on a fresh output of the given shape whose region is
// filled with kUntouched; `already` octets count as written before it.
inline WriterOutcome run_at(const Writer &w, uint16_t offset, uint16_t already, uint16_t size) {
    OutBuffer b(size, offset);
    b.fill(kUntouched);
    b->length = already;
    int status = w(b.get());
    return {static_cast<int16_t>(status), b->length, b->data == nullptr, b.region_hex()};
}

inline std::string untouched(uint16_t n) {
    std::string s;
    for (uint16_t i = 0; i < n; ++i) s += i ? " EE" : "EE";
    return s;
}

// The region of an offset-k run expected from the offset-0 run.
inline std::string shifted(const WriterOutcome &at0, uint16_t k) {
    if (at0.freed || k == 0) return at0.region;
    if (at0.region.empty()) return untouched(k);
    return untouched(k) + " " + at0.region;
}

// The octets a writer produces into a roomy output at offset 0.
inline WriterOutcome reference(const Writer &w) { return run_at(w, 0, 0, 1024); }

// The sweep: for every size from `already` to already + n + 2 and for a
// few offsets, the offset-k run equals the offset-0 run shifted by k.
// Returns the smallest size that succeeds (0xFFFF when none does).
inline uint16_t expect_offset_only_moves_bytes(const Writer &w, uint16_t already, uint16_t n) {
    uint16_t smallest = 0xFFFF;
    for (uint16_t size = already; size <= already + n + 2; ++size) {
        const WriterOutcome at0 = run_at(w, 0, already, size);
        if (at0.status == WSP_OK && smallest == 0xFFFF) smallest = size;
        for (uint16_t k : {1, 3, 17}) {
            const WriterOutcome atk = run_at(w, k, already, size);
            EXPECT_EQ(atk.status, at0.status) << "offset " << k << " size " << size;
            EXPECT_EQ(atk.length, at0.length) << "offset " << k << " size " << size;
            EXPECT_EQ(atk.freed, at0.freed) << "offset " << k << " size " << size;
            EXPECT_EQ(atk.region, shifted(at0, k)) << "offset " << k << " size " << size;
        }
    }
    return smallest;
}

// The whole check for one writer: the sweep with an empty output and with
// octets already there; then, at offset 5, the smallest size that succeeds
// holds exactly the reference octets after what was there, and one octet
// less does not succeed.
inline void expect_offset_safe(const Writer &w) {
    const WriterOutcome ref = reference(w);
    ASSERT_EQ(ref.status, WSP_OK) << "the sample must encode";
    ASSERT_GT(ref.length, 0);
    const std::string ref_octets = ref.region.substr(0, ref.length * 3u - 1u);
    for (uint16_t already : {0, 2}) {
        SCOPED_TRACE(testing::Message() << "already " << already);
        const uint16_t smallest = expect_offset_only_moves_bytes(w, already, ref.length);
        ASSERT_NE(smallest, 0xFFFF) << "never fits";
        ASSERT_GE(smallest, already + ref.length);

        OutBuffer fits(smallest, 5);
        fits.fill(kUntouched);
        fits->length = already;
        EXPECT_EQ(static_cast<int16_t>(w(fits.get())), WSP_OK);
        EXPECT_EQ(fits->length, already + ref.length);
        EXPECT_EQ(hex(fits->data, 5u + already + ref.length),
                  untouched(static_cast<uint16_t>(5 + already)) + " " + ref_octets);

        if (smallest > already) {
            OutBuffer short_one(static_cast<uint16_t>(smallest - 1), 5);
            short_one->length = already;
            EXPECT_NE(static_cast<int16_t>(w(short_one.get())), WSP_OK);
        }
    }
}

} // namespace wsp_test

#endif

// The offset sweep shared by the unit and client-view tests of buffer-style
// writers.
//
// A writer's region is data[0 .. offset + size): size limits length, offset
// only moves where the bytes go.  So a writer run at offset k must do
// exactly what it does at offset 0, shifted by k octets: the same status,
// the same length, the same octets, nothing before offset touched and
// nothing stored past the region (each block is exactly offset + size
// octets, so ASan sees any write past it).  A writer is swept over every
// size from what is already there to a little more than it needs, which
// covers the exact fit, one octet short and the over-runs.
#ifndef WSP_BUFFER_OFFSET_SWEEP_H
#define WSP_BUFFER_OFFSET_SWEEP_H

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

#include "wsp_test_support.h"

namespace wsp_test {

// One call of a buffer-style writer on the given output.
using Writer = std::function<int(wsp_buffer *)>;

// What the caller sees after one run.
struct Outcome {
    int16_t status;
    uint16_t length;
    bool freed;         // the writer released the data block
    std::string region; // every octet of data[0 .. offset + size)
};

inline constexpr uint8_t kUntouched = 0xEE;

// Runs the writer on a fresh output of the given shape whose region is
// filled with kUntouched; `already` octets count as written before it.
inline Outcome run_at(const Writer &w, uint16_t offset, uint16_t already, uint16_t size) {
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
inline std::string shifted(const Outcome &at0, uint16_t k) {
    if (at0.freed || k == 0) return at0.region;
    if (at0.region.empty()) return untouched(k);
    return untouched(k) + " " + at0.region;
}

// The octets a writer produces into a roomy output at offset 0.
inline Outcome reference(const Writer &w) { return run_at(w, 0, 0, 1024); }

// The sweep: for every size from `already` to already + n + 2 and for a
// few offsets, the offset-k run equals the offset-0 run shifted by k.
// Returns the smallest size that succeeds (0xFFFF when none does).
inline uint16_t expect_offset_only_moves_bytes(const Writer &w, uint16_t already, uint16_t n) {
    uint16_t smallest = 0xFFFF;
    for (uint16_t size = already; size <= already + n + 2; ++size) {
        const Outcome at0 = run_at(w, 0, already, size);
        if (at0.status == WSP_OK && smallest == 0xFFFF) smallest = size;
        for (uint16_t k : {1, 3, 17}) {
            const Outcome atk = run_at(w, k, already, size);
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
    const Outcome ref = reference(w);
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

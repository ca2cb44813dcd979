// Allocation-failure injection for the library's objects.
//
// The failmalloc executables are linked with -Wl,--wrap=calloc and
// -Wl,--wrap=free, so every calloc and free of the objects linked into them
// (the static library archive among them) goes through the two wrappers of
// failmalloc.cpp.  While armed, the wrappers count the calloc calls, make
// the chosen one fail, and remember every block they hand out until it is
// freed, whoever frees it (the library, or the test through the library's
// release functions or its own free).  Disarmed, they pass through.
//
// Arm only around calls into the library: the test's own allocations made
// while armed would be counted as the library's.
//
// Header blocks are given as a list of entries, one header each, so that an
// allocation that fails while a block is decoded can be traced to the entry
// whose decoding made it: the allocations of a clean decode of the first j
// entries tell where the k-th one happens.  What the failure must leave
// then depends on the entry:
//  - a well-known header whose decoder fails loses its line, and decoding
//    goes on: the text is that of the block without the entry;
//  - an application header merged into an earlier line fails the whole
//    block (-214, block released) and leaves that line as the split made
//    it: its ':' (text values) and its '\n' turned into NUL octets, the
//    length as it was before the entry.
#ifndef WSP_FAILMALLOC_SUPPORT_H
#define WSP_FAILMALLOC_SUPPORT_H

#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

namespace failmalloc {

// Starts counting; the fail_at-th calloc (1-based) returns NULL, 0 fails none.
void arm(unsigned fail_at);

// Stops counting; returns the number of calloc calls made while armed,
// the failed one included.
unsigned disarm();

// calloc calls made since arm(), the failed one included.
unsigned calls();

// Blocks handed out while armed and not freed since.
unsigned live_blocks();

// Forgets every remembered block (start of a scenario).
void reset();

// Runs scenario(0), a clean run, to learn how many allocations the path
// makes, then scenario(k) for k = 1 .. that count, each with the k-th
// allocation failing.  A scenario arms the injector with the number it is
// given, calls the library, disarms, checks, and returns what disarm()
// returned.  Returns the count of the clean run.
template <class Scenario> unsigned fail_each_allocation(Scenario scenario) {
    reset();
    const unsigned total = scenario(0u);
    ::testing::Test::RecordProperty("allocations", static_cast<int>(total));
    for (unsigned k = 1; k <= total; ++k) {
        SCOPED_TRACE("allocation " + std::to_string(k) + " of " + std::to_string(total) + " fails");
        reset();
        scenario(k);
    }
    return total;
}

// ---- header blocks as entries ----

using wsp_test::Bytes;

enum class merge { none, text, raw };

struct Entry {
    Bytes octets;
    merge kind = merge::none;
    std::string line_name; // for merges: the (lower-case) name of the line extended
};

// The octets of a text and its NUL.
inline Bytes text0(const std::string &s) {
    Bytes b(s.begin(), s.end());
    b.push_back(0);
    return b;
}

// An application header: Token-text name, then the value's octets.  An
// entry that repeats an earlier name is marked as merging (text or raw).
inline Entry app_octets(const std::string &name, const Bytes &value, merge kind = merge::none) {
    Entry e;
    e.octets.assign(name.begin(), name.end());
    e.octets.push_back(0);
    e.octets.insert(e.octets.end(), value.begin(), value.end());
    e.kind = kind;
    for (char c : name) e.line_name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return e;
}

// An application header with a Text-string value.
inline Entry app_text(const std::string &name, const std::string &value, merge kind = merge::none) {
    return app_octets(name, text0(value), kind);
}

// A well-known header: its code octet and its encoded value.
inline Entry well_known(const Bytes &octets) {
    Entry e;
    e.octets = octets;
    return e;
}

// The octets of entries [0, count), leaving out `skip` (or none).
inline Bytes join(const std::vector<Entry> &entries, size_t count, size_t skip = SIZE_MAX) {
    Bytes out;
    for (size_t i = 0; i < count && i < entries.size(); ++i)
        if (i != skip) out.insert(out.end(), entries[i].octets.begin(), entries[i].octets.end());
    return out;
}

inline Bytes join_all(const std::vector<Entry> &entries) { return join(entries, entries.size()); }

constexpr uint16_t kTextSize = 2048;

struct Decoded {
    int status = 0;
    unsigned allocations = 0;
    bool released = false;   // the block's data was freed by the library
    bool block_kept = false; // the block's data and octets are as they were
    uint16_t length = 0;     // the output's length
    Bytes text;              // the whole output block (kTextSize octets)
};

// Decodes a copy of `block` (exactly its size, allocated by the test) under
// version 4 into a fresh zeroed text buffer, with the fail_at-th allocation
// failing (0: none).  Everything still held afterwards is freed by the test.
inline Decoded decode_block(const Bytes &block, unsigned fail_at) {
    wsp_buffer in;
    std::memset(&in, 0, sizeof in);
    in.data = static_cast<unsigned char *>(std::malloc(block.empty() ? 1 : block.size()));
    if (!block.empty()) std::memcpy(in.data, block.data(), block.size());
    unsigned char *original = in.data;
    in.size = static_cast<uint16_t>(block.size());
    wsp_hdrbuf holder;
    holder.length = static_cast<uint16_t>(block.size());
    holder.buffer = &in;
    wsp_test::OutBuffer out(kTextSize);

    Decoded d;
    arm(fail_at);
    d.status = wsp_dec_hdr(&holder, out.get(), nullptr, 4);
    d.allocations = disarm();
    d.released = in.data == nullptr;
    d.block_kept = in.data == original && holder.length == block.size() && in.size == block.size() &&
                   in.offset == 0 && (block.empty() || std::memcmp(in.data, block.data(), block.size()) == 0);
    d.length = out->length;
    d.text.assign(out->data, out->data + kTextSize);
    std::free(in.data);
    return d;
}

// Index of the entry during whose decoding the k-th allocation happens.
inline size_t entry_of_allocation(const std::vector<Entry> &entries, unsigned k) {
    for (size_t j = 1; j <= entries.size(); ++j)
        if (decode_block(join(entries, j), 0).allocations >= k) return j - 1;
    return entries.size();
}

// The octets of `text` up to its first NUL, as a string.
inline std::string text_of(const Bytes &text) {
    const char *p = reinterpret_cast<const char *>(text.data());
    return std::string(p, strnlen(p, text.size()));
}

// Checks what decoding `entries` leaves when the k-th allocation fails.
inline void expect_decode_failure_outcome_at(const std::vector<Entry> &entries, unsigned k) {
    const size_t j = entry_of_allocation(entries, k);
    ASSERT_LT(j, entries.size());
    const Entry &entry = entries[j];
    const Decoded failed = decode_block(join_all(entries), k);
    EXPECT_EQ(0u, live_blocks()) << "a block allocated by the decoder was not freed";

    if (entry.kind == merge::none) {
        SCOPED_TRACE("a well-known header's decoder lost its allocation: entry " + std::to_string(j));
        const Decoded without = decode_block(join(entries, entries.size(), j), 0);
        EXPECT_EQ(WSP_OK, failed.status);
        EXPECT_TRUE(failed.block_kept);
        EXPECT_EQ(without.length, failed.length);
        EXPECT_EQ(text_of(without.text), text_of(failed.text));
        return;
    }

    SCOPED_TRACE("merging an application header into an earlier line lost its allocation: entry " +
                 std::to_string(j));
    const Decoded before = decode_block(join(entries, j), 0);
    ASSERT_EQ(WSP_OK, before.status);
    Bytes expected = before.text;
    const std::string text = text_of(before.text);
    const std::string name = entry.line_name;
    size_t at;
    if (entry.kind == merge::text) {
        // The line that starts with the name and a colon.
        at = text.compare(0, name.size() + 1, name + ":") == 0 ? 0 : text.find("\n" + name + ":");
        ASSERT_NE(std::string::npos, at);
        if (at != 0) ++at;
        expected[at + name.size()] = 0; // the ':' after the name
    } else {
        // The raw writer extends the line in which the name first occurs.
        at = text.find(name);
        ASSERT_NE(std::string::npos, at);
    }
    const size_t line_end = text.find('\n', at);
    ASSERT_NE(std::string::npos, line_end);
    expected[line_end] = 0;
    EXPECT_EQ(static_cast<int16_t>(WSP_ERR_FAIL), static_cast<int16_t>(failed.status));
    EXPECT_EQ(k, failed.allocations) << "the block ends at the failed merge";
    EXPECT_TRUE(failed.released) << "the block is released on a writer failure";
    EXPECT_EQ(before.length, failed.length);
    EXPECT_EQ(wsp_test::hex(expected), wsp_test::hex(failed.text));
}

// Decodes the entries once cleanly, then once per allocation of that run
// with it failing, checking each outcome.  Returns the clean run.
inline Decoded decode_failing_each_allocation(const std::vector<Entry> &entries) {
    reset();
    const Decoded clean = decode_block(join_all(entries), 0);
    ::testing::Test::RecordProperty("allocations", static_cast<int>(clean.allocations));
    EXPECT_EQ(0u, live_blocks()) << "a clean decode leaves no block behind";
    for (unsigned k = 1; k <= clean.allocations; ++k) {
        SCOPED_TRACE("allocation " + std::to_string(k) + " of " + std::to_string(clean.allocations) + " fails");
        reset();
        expect_decode_failure_outcome_at(entries, k);
    }
    return clean;
}

} // namespace failmalloc

#endif

// The per-call line index against the exact walk: the same writes, the same
// blocks, through both paths, must leave the same status, length and every
// octet of the output buffer.  Inputs are generated from a fixed seed so
// that a failure reproduces.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "decode/decode.h"
#include "decode/line_index.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace header_block_decode;
using wsp_test::cstr;

namespace {

// Names that are prefixes, suffixes and substrings of one another, so that
// the raw writer's search finds them inside other names and values.
const char *const kNames[] = {"a", "ab", "b", "x-a", "x-ab", "accept-ranges", "bearer", "x", "ax-a", "user-agent"};
const char *const kValues[] = {"1", "none", "bytes", "v", "ab", "x-a", "a:b", "", "q\"r", "m\nn", "long-value-0123",
                               "\"ab\"", "a\"b\"c", "\"\"", "\"a\"\"b\"", "\"a\"b\"", "\"x-a:b\"", "\"m\nn\""};

template <size_t N> const char *pick(std::mt19937 &rng, const char *const (&from)[N]) {
    return from[std::uniform_int_distribution<size_t>(0, N - 1)(rng)];
}
int below(std::mt19937 &rng, int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); }

// A text already in the output before the writes: mostly well-formed
// lines, sometimes with quotes, leading colons or line feeds, a line
// without a colon or a last line without its line feed.
// Values whose quotation marks all close inside them and without a line
// feed, which keep the index in use.
const char *plain_value(std::mt19937 &rng) {
    static const char *const kKept[] = {"1", "none", "bytes", "v", "ab", "x-a", "a:b", "", "long-value-0123",
                                        "\"ab\"", "a\"b\"c", "\"\"", "\"x-a:b\""};
    return pick(rng, kKept);
}

std::string prefill(std::mt19937 &rng, bool rare = true) {
    std::string text;
    int lines = below(rng, 5);
    for (int i = 0; i < lines; ++i) {
        int shape = below(rng, 12);
        if (shape == 0) text += "\n";
        if (shape == 1) text += ":";
        text += pick(rng, kNames);
        if (shape != 2) text += ":";
        text += rare ? pick(rng, kValues) : plain_value(rng);
        if (shape != 3 || i + 1 < lines) text += "\n";
    }
    return text;
}

// Two identical output buffers: one written as it is (the exact walk), the
// other through a view with its index.
struct Pair {
    OutBuffer exact;
    OutBuffer indexed;
    wsp_indexed_output io;

    Pair(uint16_t size, uint16_t offset, const std::string &text, uint16_t length)
        : exact(size, offset), indexed(size, offset) {
        for (OutBuffer *b : {&exact, &indexed}) {
            size_t n = text.size() < size ? text.size() : size;
            std::memcpy((*b)->data, text.data(), n);
            (*b)->length = length;
        }
        wsp_indexed_output_start(&io, indexed.get(), true);
    }
    void expect_same(const std::string &what) {
        ASSERT_EQ(exact->length, io.view.length) << what;
        ASSERT_EQ(0, std::memcmp(exact->data, indexed->data, exact->size)) << what;
    }
};

std::string describe(const std::string &text, uint16_t size, uint16_t length, uint16_t offset, int step) {
    return "prefill \"" + text + "\" size " + std::to_string(size) + " length " + std::to_string(length) +
           " offset " + std::to_string(offset) + " step " + std::to_string(step);
}

} // namespace

TEST(LineIndex, WritersMatchTheExactWalk) {
    std::mt19937 rng(20261124);
    int writes = 0;
    int through_index = 0;
    for (int round = 0; round < 10000; ++round) {
        // Half the rounds keep to octets that leave the index in use
        // (no quotation marks, line feeds or zero octets, roomy buffers),
        // so that it lives through long runs of writes; the other half
        // brings every state that switches it off.
        bool rare = round % 2 == 0;
        std::string text = prefill(rng, rare);
        uint16_t size = static_cast<uint16_t>(!rare              ? 8 + below(rng, 300)
                                              : below(rng, 3) == 0 ? 1 + below(rng, 24)
                                                                   : 8 + below(rng, 120));
        uint16_t length = static_cast<uint16_t>(text.size());
        int lshape = below(rng, 10);
        if (lshape == 0) length = 0;
        if (lshape == 1) length = static_cast<uint16_t>(length + 1);
        if (lshape == 2 && length > 0) length = static_cast<uint16_t>(length - 1);
        if (length >= size) length = static_cast<uint16_t>(size - 1);
        uint16_t offset = below(rng, 16) == 0 ? 1 : 0;
        Pair p(size, offset, text, length);
        for (int step = 0; step < 12; ++step) {
            const char *name = pick(rng, kNames);
            const char *value = rare ? pick(rng, kValues) : plain_value(rng);
            int writer = below(rng, 3);
            ++writes;
            if (wsp_line_index_of(&p.io.view) != nullptr) ++through_index;
            int a, b;
            if (writer == 0) {
                a = wsp_add_header_line(p.exact.get(), name, value);
                b = wsp_add_header_line(&p.io.view, name, value);
            } else if (writer == 1) {
                a = wsp_append_header_line(p.exact.get(), name, value);
                b = wsp_append_header_line(&p.io.view, name, value);
            } else {
                // Raw values: a Short-integer, a short length form with a
                // zero octet, or a text with a line feed.
                static const uint8_t kRaw[][4] = {
                    {0x85, 0, 0, 0}, {0x02, '"', 0x41, '"'}, {0x02, 0x00, 0x41, 0}, {'z', '\n', 'w', 0}, {'"', 0x41, 0, 0}};
                int which = rare ? below(rng, 5) : below(rng, 2);
                uint16_t n = static_cast<uint16_t>(which == 0 ? 1 : which == 1 ? 4 : which == 4 ? 2 : 3);
                a = wsp_add_raw_header_line(p.exact.get(), name, kRaw[which], n);
                b = wsp_add_raw_header_line(&p.io.view, name, kRaw[which], n);
            }
            std::string what = describe(text, size, length, offset, step) + " writer " + std::to_string(writer) +
                               " name " + name + " value " + value;
            ASSERT_EQ(a, b) << what;
            p.expect_same(what);
        }
    }
    // The comparison means something only if the index did much of the work.
    EXPECT_GT(through_index, writes / 3);
    std::printf("%d of %d writes went through the index\n", through_index, writes);
}

TEST(LineIndex, ExactWalkStaysReachable) {
    // With the index switched off the view is written by the walk alone.
    OutBuffer b(64);
    wsp_indexed_output io;
    wsp_indexed_output_start(&io, b.get(), false);
    EXPECT_EQ(wsp_line_index_of(&io.view), nullptr);
    EXPECT_EQ(wsp_add_header_line(&io.view, "a", "1"), WSP_OK);
    EXPECT_EQ(wsp_add_header_line(&io.view, "a", "2"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1,2\n");
    EXPECT_EQ(io.view.length, 6);
}

TEST(LineIndex, OnlyAMarkedViewCarriesAnIndex) {
    OutBuffer b(64);
    EXPECT_EQ(wsp_line_index_of(b.get()), nullptr);
    wsp_indexed_output io;
    wsp_indexed_output_start(&io, b.get(), true);
    EXPECT_NE(wsp_line_index_of(&io.view), nullptr);
    // The caller's record is left as it was.
    EXPECT_EQ(b->reserved, 0u);
}

namespace {

// An output buffer written through a view that carries its index.
struct IndexedView {
    OutBuffer b;
    wsp_indexed_output io;
    explicit IndexedView(uint16_t size) : b(size) { wsp_indexed_output_start(&io, b.get(), true); }
    wsp_buffer *view() { return &io.view; }
};

} // namespace

TEST(LineIndex, QuotedValuesClosedInTheirLineKeepTheIndex) {
    IndexedView v(64);
    ASSERT_EQ(wsp_add_header_line(v.view(), "etag", "\"a:b\""), WSP_OK);
    ASSERT_EQ(wsp_add_header_line(v.view(), "x", "1"), WSP_OK);
    ASSERT_EQ(wsp_add_header_line(v.view(), "etag", "\"c\""), WSP_OK);
    EXPECT_NE(wsp_line_index_of(v.view()), nullptr);
    EXPECT_EQ(v.b.text(), "etag:\"a:b\",\"c\"\nx:1\n");
    EXPECT_EQ(v.view()->length, 19);
}

TEST(LineIndex, AMarkRightAfterAClosingMarkIsOrdinary) {
    // In "a""b" the third mark follows a closing one, so the fourth has no
    // partner in its line: the walk would look for one in later lines.
    IndexedView v(64);
    ASSERT_EQ(wsp_add_header_line(v.view(), "x", "\"a\"\"b\""), WSP_OK);
    EXPECT_EQ(wsp_line_index_of(v.view()), nullptr);
    EXPECT_TRUE(wsp_line_index_quotes_closed(reinterpret_cast<const uint8_t *>("\"a\"b\"c\""), 0, 7));
    EXPECT_FALSE(wsp_line_index_quotes_closed(reinterpret_cast<const uint8_t *>("\"a\"\"b\""), 0, 6));
}

TEST(LineIndex, RawNameFoundInsideAQuotedSectionTakesTheWalk) {
    // Cut from the name found inside the quotes, the closing mark opens a
    // section that reaches the next line's marks.
    OutBuffer exact(128);
    IndexedView fast(128);
    const uint8_t raw[] = {0x85};
    for (wsp_buffer *out : {exact.get(), fast.view()}) {
        ASSERT_EQ(wsp_add_header_line(out, "etag", "\"ab\""), WSP_OK);
        ASSERT_EQ(wsp_add_header_line(out, "x", "\"c\""), WSP_OK);
        ASSERT_EQ(wsp_add_raw_header_line(out, "ab", raw, 1), WSP_OK);
    }
    EXPECT_EQ(wsp_line_index_of(fast.view()), nullptr);
    EXPECT_EQ(exact->length, fast.view()->length);
    EXPECT_EQ(exact.text(), fast.b.text());
}

TEST(LineIndex, QuoteInTheTextSwitchesTheIndexOff) {
    IndexedView v(64);
    ASSERT_EQ(wsp_add_header_line(v.view(), "etag", "\"abc"), WSP_OK);
    EXPECT_EQ(wsp_line_index_of(v.view()), nullptr);
    EXPECT_EQ(wsp_add_header_line(v.view(), "etag", "d"), WSP_OK);
    EXPECT_EQ(v.b.text(), "etag:\"abc,d\n");
}

TEST(LineIndex, FullTableFindsLaterLinesByScanning) {
    // More distinct names than the table takes: a repeat of the last one is
    // still merged into its own line.
    OutBuffer b(static_cast<uint16_t>(60000));
    wsp_indexed_output io;
    wsp_indexed_output_start(&io, b.get(), true);
    const int names = wsp_line_index::kSlots;
    for (int i = 0; i < names; ++i) {
        std::string n = "x-" + std::to_string(i);
        ASSERT_EQ(wsp_add_header_line(&io.view, n.c_str(), "1"), WSP_OK);
    }
    ASSERT_NE(wsp_line_index_of(&io.view), nullptr);
    EXPECT_TRUE(io.index.full);
    std::string last = "x-" + std::to_string(names - 1);
    ASSERT_EQ(wsp_add_header_line(&io.view, last.c_str(), "2"), WSP_OK);
    ASSERT_EQ(wsp_add_header_line(&io.view, "x-0", "2"), WSP_OK);
    std::string text = b.text();
    EXPECT_EQ(text.substr(0, 8), "x-0:1,2\n");
    EXPECT_EQ(text.substr(text.size() - last.size() - 5), last + ":1,2\n");
    EXPECT_EQ(io.view.length, text.size());
}

namespace {

// One block entry drawn at random: application headers with text, raw and
// quoted values, well-known headers that merge, append or search the
// output, and now and then a shift or a broken value.
wsp_test::Bytes entry(std::mt19937 &rng, bool quotes) {
    using wsp_test::bytes;
    int kind = below(rng, 14);
    while (!quotes && (kind == 1 || kind == 8 || kind == 11)) kind = below(rng, 14);
    switch (kind) {
    case 0: return app(pick(rng, kNames), "v" + std::to_string(below(rng, 3)));
    case 1: return app(pick(rng, kNames), pick(rng, kValues) == std::string("q\"r") ? "q\"r" : "w");
    case 2: return cat({cstr(pick(rng, kNames)), bytes({0x80 + below(rng, 128)})});
    case 3: return cat({cstr(pick(rng, kNames)), bytes({0x02, 0x41, 0x00})});
    case 4: return cat({bytes({0xA9}), cstr("Handset/" + std::to_string(below(rng, 4)))}); // user-agent
    case 5: return bytes({0x81, 0xEA});                                                     // accept-charset
    case 6: return bytes({0x8D, 0x02, 0x12, 0x34});                                         // content-length
    case 7: return bytes({0x84, 0x80 + below(rng, 2)});                                     // accept-ranges
    case 8: return cat({bytes({0x98}), cstr(below(rng, 2) ? "*" : "\"e1")});               // if-match
    case 9: return bytes({0xB3, 0x81});                                                     // bearer-indication
    case 10: return app("x-a:b", "c");                                                      // a name the walk cuts short
    case 11: return cat({bytes({0x93}), cstr("\"tag")});                                    // etag, quoted
    case 12: return bytes({0x7F, 0x05});                                                    // a shift, no page list
    default: return app(("x-" + std::to_string(below(rng, 40))).c_str(), "d");
    }
}

struct BlockResult {
    int status;
    uint16_t length;
    std::vector<uint8_t> buffer;
    bool released;
};

BlockResult decode(const wsp_test::Bytes &in, const std::string &text, uint16_t size, uint16_t length,
                   bool indexed) {
    Block block(in);
    OutBuffer out(size);
    std::memcpy(out->data, text.data(), text.size() < size ? text.size() : size);
    out->length = length;
    int status = wsp_decode_header_block(block.get(), out.get(), nullptr, 4, indexed);
    return {status, out->length, std::vector<uint8_t>(out->data, out->data + size), block.released()};
}

} // namespace

TEST(LineIndex, BlocksDecodeAsTheExactWalkDecodesThem) {
    std::mt19937 rng(7041);
    for (int round = 0; round < 4000; ++round) {
        wsp_test::Bytes in;
        int entries = 1 + below(rng, 20);
        // Every other block has no quotation mark, so the index is used
        // to its end.
        bool quotes = round % 2 == 0;
        for (int i = 0; i < entries; ++i) {
            wsp_test::Bytes e = entry(rng, quotes);
            in.insert(in.end(), e.begin(), e.end());
        }
        std::string text = below(rng, 3) == 0 ? prefill(rng, quotes) : "";
        uint16_t size = static_cast<uint16_t>(below(rng, 4) == 0 ? 8 + below(rng, 40) : 400);
        uint16_t length = static_cast<uint16_t>(text.size() < size ? text.size() : size - 1);
        BlockResult exact = decode(in, text, size, length, false);
        BlockResult fast = decode(in, text, size, length, true);
        std::string what = "round " + std::to_string(round) + " block " + wsp_test::hex(in.data(), in.size());
        ASSERT_EQ(exact.status, fast.status) << what;
        ASSERT_EQ(exact.length, fast.length) << what;
        ASSERT_EQ(exact.released, fast.released) << what;
        ASSERT_EQ(exact.buffer, fast.buffer) << what;
    }
}

TEST(LineIndex, LargeBlocksOfDistinctAndRepeatedNames) {
    // Beyond the table's capacity, with repeats of early and late names.
    std::mt19937 rng(99);
    for (int round = 0; round < 6; ++round) {
        wsp_test::Bytes in;
        for (int i = 0; i < 900; ++i) {
            int n = below(rng, 4) == 0 ? below(rng, 900) : i;
            wsp_test::Bytes e = app("x-h" + std::to_string(n), "v" + std::to_string(i));
            in.insert(in.end(), e.begin(), e.end());
            if (i % 50 == 0) in.insert(in.end(), {0xA9, 'u', 'a', 0x00});
        }
        BlockResult exact = decode(in, "", 60000, 0, false);
        BlockResult fast = decode(in, "", 60000, 0, true);
        ASSERT_EQ(exact.status, fast.status);
        ASSERT_EQ(exact.length, fast.length);
        ASSERT_EQ(exact.buffer, fast.buffer);
    }
}

namespace {

const uint8_t *find_in(const std::string &text, const std::string &needle) {
    return wsp_text_find(reinterpret_cast<const uint8_t *>(text.data()), text.size(),
                         reinterpret_cast<const uint8_t *>(needle.data()), needle.size());
}

long found_at(const std::string &text, const std::string &needle) {
    const uint8_t *p = find_in(text, needle);
    return p == nullptr ? -1 : static_cast<long>(p - reinterpret_cast<const uint8_t *>(text.data()));
}

} // namespace

TEST(TextFind, FirstOccurrenceAnywhere) {
    EXPECT_EQ(found_at("x-wap-application-id:x-wap-application:mms.ua\n", "application"), 6);
    EXPECT_EQ(found_at("push-flag:1\npush-flag:0\n", "push-flag"), 0);
    EXPECT_EQ(found_at("aab:aac\n", "ac"), 5);
    EXPECT_EQ(found_at("ab", "b"), 1);
}

TEST(TextFind, CandidatesWithTheFirstButNotTheLastOctetAreSkipped) {
    EXPECT_EQ(found_at("pushpushpushpush-flag", "push-flag"), 12);
    EXPECT_EQ(found_at("pppppppp", "pq"), -1);
}

TEST(TextFind, NeedleAtTheVeryEndAndLongerThanTheText) {
    EXPECT_EQ(found_at("abc", "bc"), 1);
    EXPECT_EQ(found_at("abc", "abcd"), -1);
    EXPECT_EQ(found_at("", "a"), -1);
}

TEST(TextFind, EmptyNeedleFindsTheStart) {
    EXPECT_EQ(found_at("abc", ""), 0);
    EXPECT_EQ(found_at("", ""), 0);
}

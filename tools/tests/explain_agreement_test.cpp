// The explain engine must end every walk exactly where the library's block
// decoder ends it: same status, same output text, same length, and the
// block released on the same failures.  Checked on every bundled example
// under every encoding version and on a few thousand generated blocks,
// failing ones included, with output buffers small enough for the line
// writers to refuse lines.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "explain/block_walk.h"
#include "hex_io.h"
#include "tarnwspencdec.h"

namespace {

using wsptool::explain::Explanation;
using wsptool::explain::WalkOptions;

struct LibraryResult {
    int status;
    std::string text;
    bool released;
};

// wsp_dec_hdr on a calloc'ed copy of the block (so that a release frees
// it) into an output of `size` octets laid out as wsptool lays it out.
LibraryResult library_decode(const std::vector<uint8_t> &block, const WalkOptions &options) {
    wsp_buffer input{};
    input.data = static_cast<unsigned char *>(std::calloc(block.size() + 8, 1));
    if (!block.empty()) std::memcpy(input.data, block.data(), block.size());
    input.size = static_cast<uint16_t>(block.size());
    input.length = static_cast<uint16_t>(block.size());
    wsp_hdrbuf holder{static_cast<uint16_t>(block.size()), &input};

    std::vector<uint8_t> storage(static_cast<size_t>(options.output_size) + 1, 0);
    wsp_buffer out{};
    out.data = storage.data();
    out.size = options.output_size;

    LibraryResult r;
    r.status = static_cast<int16_t>(wsp_dec_hdr(&holder, &out, options.pages, options.version));
    r.text.assign(reinterpret_cast<const char *>(storage.data()), out.length);
    r.released = input.data == nullptr;
    std::free(input.data);
    return r;
}

Explanation expect_agreement(const std::vector<uint8_t> &block, const WalkOptions &options,
                             const std::string &what) {
    const LibraryResult lib = library_decode(block, options);
    Explanation walk = wsptool::explain::explain_block(block.data(), static_cast<uint16_t>(block.size()), options);
    EXPECT_EQ(static_cast<int16_t>(walk.status), lib.status) << what;
    EXPECT_EQ(walk.text, lib.text) << what;
    if (lib.status != WSP_OK) {
        EXPECT_EQ(walk.block_released, lib.released) << what;
    }
    // Every octet of the block belongs to exactly one entry, in order, up
    // to where the walk stopped.
    uint32_t next = options.base_offset;
    for (const auto &e : walk.entries) {
        EXPECT_EQ(e.offset, next) << what;
        next = e.offset + static_cast<uint32_t>(e.octets.size());
    }
    if (lib.status == WSP_OK) {
        EXPECT_EQ(next, block.size()) << what;
    }
    return walk;
}

// ---- the bundled examples ----

std::vector<uint8_t> read_hex_file(const std::filesystem::path &path) {
    return wsptool::parse_hex(wsptool::read_file(path.string()));
}

// The header block of a push PDU as the library's push decoder hands it out.
std::vector<uint8_t> push_header_block(const std::vector<uint8_t> &pdu, bool tid) {
    std::vector<uint8_t> copy(pdu);
    copy.resize(copy.size() + 8, 0);
    wsp_buffer record{};
    record.data = copy.data();
    record.size = static_cast<uint16_t>(pdu.size());
    record.offset = tid ? 1 : 0;
    record.length = static_cast<uint16_t>(pdu.size() - record.offset);
    record.flags = WSP_BUFFER_EXTERNAL;
    wsp_buffer spare{};
    wsp_buffer *spare_ptr = &spare;
    wsp_push_result result{};
    EXPECT_EQ(wsp_push_decoding(&record, &result, &spare_ptr), WSP_OK);
    std::vector<uint8_t> block;
    if (result.headers.buffer != nullptr && result.headers.buffer->data != nullptr) {
        const uint8_t *start = result.headers.buffer->data + result.headers.buffer->offset;
        block.assign(start, start + result.headers.length);
    }
    std::free(spare.data);
    return block;
}

TEST(ExplainAgreement, EveryExampleUnderEveryVersion) {
    const std::filesystem::path examples = WSPTOOL_EXAMPLES_DIR;
    int checked = 0;
    for (const auto &item : std::filesystem::directory_iterator(examples)) {
        const std::filesystem::path path = item.path();
        std::vector<uint8_t> block;
        if (path.extension() == ".hex") {
            // The push PDUs only; the connectionless ones start with a
            // transaction id.
            const std::string stem = path.stem().string();
            const bool connectionless = stem == "service-indication" || stem == "service-loading";
            if (!connectionless && stem != "mms-notification" && stem != "drm-rights" && stem != "provisioning")
                continue;
            const std::vector<uint8_t> pdu = read_hex_file(path);
            block = push_header_block(pdu, connectionless);
        } else if (path.filename() == "request-headers.expected") {
            block = read_hex_file(path);
        } else {
            continue;
        }
        ASSERT_FALSE(block.empty()) << path;
        for (int version = 1; version <= 4; ++version) {
            WalkOptions options;
            options.version = version;
            expect_agreement(block, options, path.filename().string() + " version " + std::to_string(version));
            ++checked;
        }
    }
    EXPECT_EQ(checked, 6 * 4); // five push PDUs and one request block
}

// ---- generated blocks ----

// Picks from the engine's raw output, so that the blocks are the same with
// every standard library.
class Dice {
public:
    explicit Dice(uint32_t seed) : engine_(seed) {}
    uint32_t below(uint32_t n) { return static_cast<uint32_t>(engine_() % n); }
    bool one_in(uint32_t n) { return below(n) == 0; }
    uint8_t octet() { return static_cast<uint8_t>(engine_()); }

private:
    std::mt19937 engine_;
};

void add_text(Dice &dice, std::vector<uint8_t> &out, uint32_t most) {
    static const char kChars[] = "abcxyz-_.:/ ,;=\"0123456789ABC";
    const uint32_t n = dice.below(most + 1);
    for (uint32_t i = 0; i < n; ++i) out.push_back(static_cast<uint8_t>(kChars[dice.below(sizeof kChars - 1)]));
    if (!dice.one_in(25)) out.push_back(0);
}

void add_value(Dice &dice, std::vector<uint8_t> &out) {
    switch (dice.below(7)) {
    case 0:
    case 1: out.push_back(static_cast<uint8_t>(0x80 | dice.below(128))); break; // Short-integer
    case 2: {                                                                   // Value-length + octets
        const uint32_t n = dice.below(8);
        out.push_back(static_cast<uint8_t>(n));
        for (uint32_t i = 0; i < n; ++i) out.push_back(dice.one_in(2) ? static_cast<uint8_t>(0x80 | dice.below(128)) : dice.octet());
        break;
    }
    case 3: add_text(dice, out, dice.one_in(10) ? 220 : 12); break; // Text-string
    case 4:                                                          // Quoted-string
        out.push_back('"');
        add_text(dice, out, 10);
        break;
    case 5: { // Long-integer or date
        const uint32_t n = 1 + dice.below(4);
        out.push_back(static_cast<uint8_t>(n));
        for (uint32_t i = 0; i < n; ++i) out.push_back(dice.octet());
        break;
    }
    default: { // Length-quote + uintvar
        const uint32_t n = 31 + dice.below(6);
        out.push_back(31);
        out.push_back(static_cast<uint8_t>(n));
        for (uint32_t i = 0; i < n; ++i) out.push_back(dice.octet());
        break;
    }
    }
}

std::vector<uint8_t> generated_block(Dice &dice) {
    std::vector<uint8_t> block;
    const uint32_t entries = 1 + dice.below(8);
    for (uint32_t i = 0; i < entries; ++i) {
        const uint32_t pick = dice.below(20);
        if (pick < 12) { // well-known (or page) header
            static const uint8_t kCommon[] = {0x80, 0x81, 0x84, 0x85, 0x88, 0x89, 0x8D, 0x91, 0x92, 0x94,
                                              0xA7, 0xA9, 0xAF, 0xB4, 0xB2, 0xC3, 0xC1, 0xC6, 0xC7, 0xB9};
            block.push_back(dice.one_in(3) ? static_cast<uint8_t>(0x80 | dice.below(128))
                                           : kCommon[dice.below(sizeof kCommon)]);
            add_value(dice, block);
        } else if (pick < 17) { // application header
            static const char *const kNames[] = {"X-Foo", "x-bar", "Accept-Ranges", "age",
                                                 "x-a-name-of-exactly-thirty-ch", "x-a-name-of-exactly-thirty-cha"};
            const char *name = kNames[dice.below(6)];
            block.insert(block.end(), name, name + std::strlen(name));
            if (!dice.one_in(20)) block.push_back(0);
            add_value(dice, block);
        } else if (pick < 19) { // shift
            if (dice.one_in(2)) {
                block.push_back(0x7F);
                block.push_back(static_cast<uint8_t>(dice.below(4)));
            } else {
                block.push_back(static_cast<uint8_t>(1 + dice.below(3)));
            }
        } else { // an octet that cannot start an entry, or noise
            block.push_back(dice.one_in(2) ? 0x00 : dice.octet());
        }
    }
    if (dice.one_in(6) && !block.empty()) block.resize(dice.below(static_cast<uint32_t>(block.size())));
    return block;
}

TEST(ExplainAgreement, GeneratedBlocks) {
    // Page 2 names two headers and has a named end row; page 3 has an
    // unnamed end row and a row without a name.
    static const wsp_code_entry kPage2[] = {{"x-two-a", 0x01}, {"x-two-b", 0x05}, {"end", 0}};
    static const wsp_code_entry kPage3[] = {{nullptr, 0x01}, {"x-three", 0x04}, {nullptr, 0}};
    wsp_dec_page pages[] = {{2, 2, kPage2}, {3, 2, kPage3}};
    const wsp_dec_page_list list{2, pages};
    const uint16_t sizes[] = {0xFFFF, 24, 40, 64, 200};

    // How often each outcome came up: the blocks must reach every one.
    std::map<std::string, int> seen;
    Dice dice(20261124);
    for (int round = 0; round < 4000; ++round) {
        const std::vector<uint8_t> block = generated_block(dice);
        WalkOptions options;
        options.version = 1 + static_cast<int>(dice.below(5)); // 5: no well-known header decoded
        options.pages = dice.one_in(2) ? &list : nullptr;
        options.output_size = sizes[dice.below(5)];
        const Explanation walk = expect_agreement(block, options, "round " + std::to_string(round));
        if (HasFailure()) {
            ADD_FAILURE() << "block: " << wsptool::format_hex(block.data(), block.size());
            return;
        }
        ++seen["status " + std::to_string(walk.status)];
        for (const auto &e : walk.entries) {
            std::string key = std::string(wsptool::explain::kind_name(e.kind)) + " " +
                              wsptool::explain::fate_name(e.fate);
            if (e.status) key += " " + std::to_string(*e.status);
            ++seen[key];
        }
    }
    std::string summary;
    for (const auto &[key, count] : seen) summary += key + ": " + std::to_string(count) + "\n";
    for (const char *outcome :
         {"status 32767", "status -211", "status -214", "status -216", "well-known written", "well-known merged",
          "well-known dropped", "well-known dropped -214", "application written", "application merged",
          "application dropped -216", "code-page written", "code-page dropped", "shift shifted",
          "shift failed -211", "well-known failed -216"})
        EXPECT_GE(seen[outcome], 5) << outcome << " came up too rarely:\n" << summary;
    RecordProperty("outcomes", summary);
    std::printf("%s", summary.c_str());
}

TEST(ExplainAgreement, AlmostFullOutput) {
    // Two application headers into 12 octets: the second line does not fit.
    const std::vector<uint8_t> block = {'x', 0, 'a', 0, 'y', 0, 'b', 'b', 'b', 'b', 'b', 'b', 'b', 0};
    WalkOptions options;
    options.output_size = 12;
    expect_agreement(block, options, "almost full");
    const Explanation walk = wsptool::explain::explain_block(block.data(), 14, options);
    ASSERT_EQ(walk.entries.size(), 2u);
    EXPECT_EQ(walk.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(walk.block_released);
    EXPECT_EQ(walk.entries[1].reason, "the line does not fit the output");
}

} // namespace

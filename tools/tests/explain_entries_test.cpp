// Focused cases of the explain engine: for one small block each, the
// entries it records (kind, name, code, form, fate, line, reason, status)
// and the octets each one spans.
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "explain/block_walk.h"
#include "explain/value_form.h"
#include "tarnwspencdec.h"

namespace {

using wsptool::explain::Entry;
using wsptool::explain::Explanation;
using wsptool::explain::Fate;
using wsptool::explain::Kind;
using wsptool::explain::WalkOptions;

Explanation walk(const std::vector<uint8_t> &block, int version = 4, const wsp_dec_page_list *pages = nullptr,
                 uint16_t output_size = 0xFFFF) {
    WalkOptions options;
    options.version = version;
    options.pages = pages;
    options.output_size = output_size;
    return wsptool::explain::explain_block(block.data(), static_cast<uint16_t>(block.size()), options);
}

std::vector<uint8_t> bytes(const std::string &text) { return {text.begin(), text.end()}; }

std::vector<uint8_t> operator+(std::vector<uint8_t> a, const std::vector<uint8_t> &b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

TEST(ExplainEntries, WrittenAndMergedLines) {
    const Explanation w = walk(bytes(std::string("x-a\0" "1\0" "x-b\0" "2\0" "X-A\0" "3\0", 18)) + std::vector<uint8_t>{0xB4, 0x81});
    ASSERT_EQ(w.entries.size(), 4u);
    EXPECT_EQ(w.entries[0].fate, Fate::kWritten);
    EXPECT_EQ(w.entries[0].line, 1u);
    EXPECT_EQ(w.entries[1].line, 2u);
    EXPECT_EQ(w.entries[2].fate, Fate::kMerged);
    EXPECT_EQ(w.entries[2].line, 1u);
    EXPECT_EQ(w.entries[2].name, "x-a");
    EXPECT_EQ(w.entries[2].text, "x-a:3");
    EXPECT_EQ(w.entries[3].kind, Kind::kWellKnown);
    EXPECT_EQ(w.entries[3].code, 0x34u);
    EXPECT_EQ(w.entries[3].line, 3u);
    EXPECT_EQ(w.text, "x-a:1,3\nx-b:2\npush-flag:1\n");
    EXPECT_EQ(w.status, WSP_OK);
    EXPECT_EQ(w.stop_offset, 20);
}

TEST(ExplainEntries, DroppedWellKnownHeadersSayWhy) {
    // 0xB5 profile has no decoder; 0xC7 is above 1.3's limit; 0x91 is the
    // content type; 0x8D with a text value is refused by its decoder.
    const Explanation w = walk({0xB5, 0x81, 0xC7, 0x80, 0x91, 0x83, 0x8D, 'a', 0}, 3);
    ASSERT_EQ(w.entries.size(), 4u);
    for (const Entry &e : w.entries) EXPECT_EQ(e.fate, Fate::kDropped);
    EXPECT_EQ(w.entries[0].reason, "no decoder for this code under encoding version 1.3");
    EXPECT_EQ(w.entries[1].reason, "code above the limit of encoding version 1.3 (0x43)");
    EXPECT_EQ(w.entries[2].reason, "content-type inside a header block is never written out");
    EXPECT_EQ(w.entries[3].reason, "the decoder refused the value");
    EXPECT_EQ(w.entries[3].status, WSP_ERR_FAIL);
    EXPECT_EQ(w.entries[3].octets, (std::vector<uint8_t>{0x8D, 'a', 0}));
    EXPECT_FALSE(w.entries[0].status.has_value());
    EXPECT_EQ(w.text, "");
}

TEST(ExplainEntries, UnknownVersionDecodesNoWellKnownHeader) {
    const Explanation w = walk({0x8D, 0x85}, 7);
    ASSERT_EQ(w.entries.size(), 1u);
    EXPECT_EQ(w.entries[0].reason, "encoding version 7 decodes no well-known header");
}

TEST(ExplainEntries, WriterRefusalNamesTheDamagedLine) {
    const Explanation w = walk({0x84, 0x80, 0x84, 0x81});
    ASSERT_EQ(w.entries.size(), 2u);
    EXPECT_EQ(w.entries[1].fate, Fate::kDropped);
    EXPECT_EQ(w.entries[1].text, "accept-ranges:bytes");
    EXPECT_EQ(w.entries[1].reason, "the writer refused it: \"none\" is never joined with another range unit; line 1 "
                                   "keeps NUL octets where the writer cut it (its colon and line feed)");
    EXPECT_EQ(w.text, std::string("accept-ranges\0none\0", 19));
}

TEST(ExplainEntries, OnlyTheFirstPushFlagIsKept) {
    const Explanation w = walk({0xB4, 0x81, 0xB4, 0x80});
    ASSERT_EQ(w.entries.size(), 2u);
    EXPECT_EQ(w.entries[1].fate, Fate::kDropped);
    EXPECT_EQ(w.entries[1].text, "push-flag:0");
    EXPECT_EQ(w.entries[1].reason, "only the first push-flag is kept: the name already appears in the text");
    EXPECT_EQ(w.text, "push-flag:1\n");
}

TEST(ExplainEntries, PlainWriterWithoutRoomDropsTheHeader) {
    // content-length:5 and its line feed fit in 20 octets, a second such
    // line does not: the plain writer refuses it and decoding goes on.
    const Explanation w = walk({0x8D, 0x85, 0x8D, 0x86}, 4, nullptr, 20);
    ASSERT_EQ(w.entries.size(), 2u);
    EXPECT_EQ(w.status, WSP_OK);
    EXPECT_EQ(w.entries[1].fate, Fate::kDropped);
    EXPECT_EQ(w.entries[1].reason, "the writer refused it: the line does not fit the output");
}

TEST(ExplainEntries, RawValueKeepsItsOctets) {
    const Explanation w = walk(bytes(std::string("x\0", 2)) + std::vector<uint8_t>{0x02, 0xAA, 0xBB});
    ASSERT_EQ(w.entries.size(), 1u);
    EXPECT_EQ(w.entries[0].form, "Value-length + 2");
    EXPECT_EQ(w.entries[0].text, "x:\x02\xAA\xBB");
    EXPECT_EQ(w.entries[0].fate, Fate::kWritten);
}

TEST(ExplainEntries, LongTextValueIsDropped) {
    const Explanation w = walk(bytes(std::string("x\0", 2) + std::string(198, 'v') + std::string(1, '\0')) +
                               bytes(std::string("y\0z\0", 4)));
    ASSERT_EQ(w.entries.size(), 2u);
    EXPECT_EQ(w.entries[0].fate, Fate::kDropped);
    EXPECT_EQ(w.entries[0].reason, "a text value of 198 characters or more");
    EXPECT_EQ(w.entries[0].status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(w.entries[0].octets.size(), 201u);
    EXPECT_EQ(w.text, "y:z\n");
}

TEST(ExplainEntries, ShiftWithoutPageListStepsOverThePage) {
    const Explanation w = walk({0x7F, 0x05, 0x81, 0x82, 'n', 0, 'v', 0, 0x01, 0x8D, 0x85});
    ASSERT_EQ(w.entries.size(), 5u);
    EXPECT_EQ(w.entries[0].kind, Kind::kShift);
    EXPECT_EQ(w.entries[0].fate, Fate::kShifted);
    EXPECT_EQ(w.entries[0].code, 5u);
    EXPECT_EQ(w.entries[1].kind, Kind::kCodePage);
    EXPECT_EQ(w.entries[1].page, 5u);
    EXPECT_EQ(w.entries[1].reason, "page 5 is not decoded without a page list");
    EXPECT_EQ(w.entries[2].name, "n");
    EXPECT_EQ(w.entries[3].reason, "back to page 1");
    EXPECT_EQ(w.entries[4].line, 1u);
    EXPECT_EQ(w.text, "content-length:5\n");
}

TEST(ExplainEntries, CodePageHeadersUseThePageNames) {
    static const wsp_code_entry kRows[] = {{"X-Page-One", 0x01}, {nullptr, 0x02}, {nullptr, 0}};
    wsp_dec_page page{0x10, 2, kRows};
    const wsp_dec_page_list list{1, &page};
    const Explanation w = walk({0x10, 0x81, 'a', 0, 0x82, 0x85, 0x83, 0x85, 0x81, 0x86}, 4, &list);
    ASSERT_EQ(w.entries.size(), 5u);
    EXPECT_EQ(w.entries[0].reason, "to page 16");
    EXPECT_EQ(w.entries[1].name, "X-Page-One");
    EXPECT_EQ(w.entries[1].fate, Fate::kWritten);
    EXPECT_EQ(w.entries[2].reason, "page 16 names no header for this code");
    EXPECT_EQ(w.entries[3].reason, "the code is not on page 16");
    EXPECT_EQ(w.entries[4].fate, Fate::kMerged);
    EXPECT_EQ(w.entries[4].text, "X-Page-One:\x86");
}

TEST(ExplainEntries, FailuresEndTheWalkWhereTheLibraryDoes) {
    const Explanation bad_octet = walk({0x8D, 0x85, 0x22, 0x8D, 0x85});
    EXPECT_EQ(bad_octet.status, WSP_ERR_ARG);
    EXPECT_EQ(bad_octet.stop_offset, 2);
    EXPECT_TRUE(bad_octet.block_released);
    ASSERT_EQ(bad_octet.entries.size(), 2u);
    EXPECT_EQ(bad_octet.entries[1].fate, Fate::kFailed);
    EXPECT_EQ(bad_octet.entries[1].reason, "a quotation mark cannot start an entry");
    EXPECT_EQ(bad_octet.entries[1].octets, (std::vector<uint8_t>{0x22, 0x8D, 0x85}));

    const Explanation unknown_page = walk({0x02}, 4, nullptr);
    EXPECT_EQ(unknown_page.status, WSP_OK); // skip mode to the end
    static const wsp_code_entry kRows[] = {{nullptr, 0}};
    wsp_dec_page page{0x10, 0, kRows};
    const wsp_dec_page_list list{1, &page};
    const Explanation not_listed = walk({0x11}, 4, &list);
    EXPECT_EQ(not_listed.status, WSP_ERR_ARG);
    EXPECT_EQ(not_listed.entries[0].reason, "page 17 is not in the page list");

    // The output holds "x:a\n" and nothing more: the second line does not
    // fit, the block is kept.
    const Explanation full = walk(bytes(std::string("x\0a\0y\0b\0", 8)), 4, nullptr, 6);
    EXPECT_EQ(full.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(full.block_released);
    EXPECT_EQ(full.stop_offset, 6);
    EXPECT_EQ(full.entries.back().reason, "the line does not fit the output");
}

TEST(ExplainEntries, ValueForms) {
    using wsptool::explain::ShortLengthAs;
    using wsptool::explain::value_form;
    const uint8_t short_int[] = {0x85};
    const uint8_t length[] = {0x03, 1, 2, 3};
    const uint8_t quote[] = {0x1F, 0x81, 0x00};
    const uint8_t bad_quote[] = {0x1F, 0x80};
    const uint8_t empty[] = {0x00};
    EXPECT_EQ(value_form(short_int, 1, ShortLengthAs::kValueLength), "Short-integer 5");
    EXPECT_EQ(value_form(length, 4, ShortLengthAs::kValueLength), "Value-length + 3");
    EXPECT_EQ(value_form(length, 4, ShortLengthAs::kLongInteger), "Long-integer (3 octets)");
    EXPECT_EQ(value_form(quote, 3, ShortLengthAs::kValueLength), "Value-length (uintvar) + 128");
    EXPECT_EQ(value_form(bad_quote, 2, ShortLengthAs::kValueLength), "Length-quote without a readable uintvar");
    EXPECT_EQ(value_form(empty, 1, ShortLengthAs::kText), "Text-string (empty)");
    EXPECT_EQ(value_form(empty, 1, ShortLengthAs::kValueLength), "Value-length + 0");
    EXPECT_EQ(value_form(reinterpret_cast<const uint8_t *>("\x7F\x80"), 2, ShortLengthAs::kText),
              "Quote + Text-string");
    EXPECT_EQ(value_form(reinterpret_cast<const uint8_t *>("\"a"), 2, ShortLengthAs::kText), "Quoted-string");
    EXPECT_EQ(value_form(reinterpret_cast<const uint8_t *>("a"), 1, ShortLengthAs::kText), "Text-string");
    EXPECT_EQ(value_form(short_int, 0, ShortLengthAs::kText), "missing (the block ends)");
}

} // namespace

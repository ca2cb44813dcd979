// The three line writers: merging, plain and raw.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "decode/decode.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

// Puts text (and its NUL when it fits) at the start of the buffer's data and
// sets length.
void preset(OutBuffer &b, const std::string &text, uint16_t length) {
    size_t n = text.size() + 1 <= b->size ? text.size() + 1 : text.size();
    std::memcpy(b->data, text.data(), n);
    b->length = length;
}
void preset(OutBuffer &b, const std::string &text) { preset(b, text, static_cast<uint16_t>(text.size())); }

// The first n octets of the buffer's data.
std::string raw(OutBuffer &b, size_t n) { return std::string(reinterpret_cast<const char *>(b->data), n); }

const uint8_t kShort85[] = {0x85};

} // namespace

// ---- merging writer ------------------------------------------------------

TEST(AddHeaderLine, NullArgumentsFail) {
    OutBuffer b(32);
    EXPECT_EQ(wsp_add_header_line(nullptr, "a", "b"), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_add_header_line(b.get(), nullptr, "b"), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", nullptr), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
    EXPECT_EQ(b.text(), "");
}

TEST(AddHeaderLine, FirstLineIntoEmptyText) {
    OutBuffer b(32);
    EXPECT_EQ(wsp_add_header_line(b.get(), "x-foo", "bar"), WSP_OK);
    EXPECT_EQ(b.text(), "x-foo:bar\n");
    EXPECT_EQ(b->length, 10);
}

TEST(AddHeaderLine, LengthZeroClearsOldText) {
    OutBuffer b(32);
    preset(b, "old:stuff\n", 0);
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", "1"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1\n");
    EXPECT_EQ(b->length, 4);
}

TEST(AddHeaderLine, DifferentNameAppendsLine) {
    OutBuffer b(32);
    ASSERT_EQ(wsp_add_header_line(b.get(), "a", "1"), WSP_OK);
    EXPECT_EQ(wsp_add_header_line(b.get(), "b", "2"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1\nb:2\n");
    EXPECT_EQ(b->length, 8);
}

TEST(AddHeaderLine, RepeatsMergeWithComma) {
    OutBuffer b(64);
    ASSERT_EQ(wsp_add_header_line(b.get(), "x-foo", "a"), WSP_OK);
    ASSERT_EQ(wsp_add_header_line(b.get(), "x-foo", "b"), WSP_OK);
    EXPECT_EQ(b.text(), "x-foo:a,b\n");
    ASSERT_EQ(wsp_add_header_line(b.get(), "x-foo", "c"), WSP_OK);
    EXPECT_EQ(b.text(), "x-foo:a,b,c\n");
    EXPECT_EQ(b->length, 12);
}

TEST(AddHeaderLine, MergeIntoMiddleLineKeepsRemainder) {
    OutBuffer b(64);
    preset(b, "a:1\nb:2\nc:3\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "b", "9"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1\nb:2,9\nc:3\n");
    EXPECT_EQ(b->length, 14);
}

TEST(AddHeaderLine, NameComparisonIsCaseSensitive) {
    OutBuffer b(64);
    preset(b, "X-Foo:a\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "x-foo", "b"), WSP_OK);
    EXPECT_EQ(b.text(), "X-Foo:a\nx-foo:b\n");
}

TEST(AddHeaderLine, NamePrefixDoesNotMatch) {
    OutBuffer b(64);
    preset(b, "accept-charset:x\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "accept", "y"), WSP_OK);
    EXPECT_EQ(b.text(), "accept-charset:x\naccept:y\n");
}

TEST(AddHeaderLine, ExactlyFullBufferDropsOnlyTheNul) {
    // "a:1\n" is 4 octets; the NUL would fall on data[4], just past size.
    OutBuffer b(4);
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", "1"), WSP_OK);
    EXPECT_EQ(raw(b, 4), "a:1\n");
    EXPECT_EQ(b->length, 4);
}

TEST(AddHeaderLine, OneOctetShortIsTruncated) {
    OutBuffer b(8);
    preset(b, "a:1\n");
    // 4 + 1 + 2 + 2 = 9 > 8
    EXPECT_EQ(wsp_add_header_line(b.get(), "b", "22"), WSP_ERR_TRUNCATED);
    EXPECT_EQ(b.text(), "a:1\n");
    EXPECT_EQ(b->length, 4);
    // 4 + 1 + 1 + 2 = 8: fits, the NUL is dropped.
    EXPECT_EQ(wsp_add_header_line(b.get(), "b", "2"), WSP_OK);
    EXPECT_EQ(raw(b, 8), "a:1\nb:2\n");
    EXPECT_EQ(b->length, 8);
}

TEST(AddHeaderLine, WalkStopsAtSizeWhenTextHasNoNul) {
    // The buffer is full to its last octet (no NUL inside size): the walk
    // must treat data[size] as the end.  A merge has no room (-216), and the
    // matched line is left as the split made it.
    OutBuffer b(8);
    preset(b, "a:1\nb:2\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "c", "3"), WSP_ERR_TRUNCATED);
    EXPECT_EQ(raw(b, 8), "a:1\nb:2\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "b", "3"), WSP_ERR_TRUNCATED);
    EXPECT_EQ(raw(b, 8), std::string("a:1\nb\0" "2\0", 8));
    EXPECT_EQ(b->length, 8);
}

TEST(AddHeaderLine, MergeRoomTestBoundary) {
    // length + value + 1 must stay below size.
    OutBuffer fits(7);
    preset(fits, "a:1\n");
    EXPECT_EQ(wsp_add_header_line(fits.get(), "a", "2"), WSP_OK); // 4 + 1 + 1 = 6 < 7
    EXPECT_EQ(fits.text(), "a:1,2\n");
    EXPECT_EQ(fits->length, 6);

    OutBuffer full(6);
    preset(full, "a:1\n");
    EXPECT_EQ(wsp_add_header_line(full.get(), "a", "2"), WSP_ERR_TRUNCATED); // 6 >= 6
    EXPECT_EQ(raw(full, 5), std::string("a\0" "1\0\0", 5));
    EXPECT_EQ(full->length, 4);
}

TEST(AddHeaderLine, AcceptRangesNoneIsNeverCombined) {
    OutBuffer b(64);
    ASSERT_EQ(wsp_add_header_line(b.get(), "accept-ranges", "none"), WSP_OK);
    EXPECT_EQ(wsp_add_header_line(b.get(), "accept-ranges", "bytes"), WSP_ERR_FAIL);
    // The line stays split: ':' and '\n' are NUL, length unchanged.
    EXPECT_EQ(raw(b, 19), std::string("accept-ranges\0none\0", 19));
    EXPECT_EQ(b->length, 19);
}

TEST(AddHeaderLine, AcceptRangesNewValueNoneIsRefused) {
    OutBuffer b(64);
    preset(b, "x:1\naccept-ranges:bytes\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "accept-ranges", "none"), WSP_ERR_FAIL);
    EXPECT_EQ(raw(b, 24), std::string("x:1\naccept-ranges\0bytes\0", 24));
    EXPECT_EQ(b->length, 24);
}

TEST(AddHeaderLine, AcceptRangesBytesTwiceMerges) {
    OutBuffer b(64);
    preset(b, "accept-ranges:bytes\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "accept-ranges", "bytes"), WSP_OK);
    EXPECT_EQ(b.text(), "accept-ranges:bytes,bytes\n");
}

TEST(AddHeaderLine, NoneOnlyMattersForAcceptRanges) {
    OutBuffer b(64);
    preset(b, "pragma:none\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "pragma", "none"), WSP_OK);
    EXPECT_EQ(b.text(), "pragma:none,none\n");
}

TEST(AddHeaderLine, RemainderOf198CharactersUsesStackArea) {
    std::string tail = "t:" + std::string(195, 'r') + "\n"; // 198 characters
    OutBuffer b(400);
    preset(b, "a:1\n" + tail);
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", "2"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1,2\n" + tail);
    EXPECT_EQ(b->length, 6 + 198);
}

TEST(AddHeaderLine, LongRemainderIsMovedThroughHeapCopy) {
    std::string tail = "t:" + std::string(196, 'r') + "\n"; // 199 characters
    std::string longer = "u:" + std::string(400, 's') + "\n";
    OutBuffer b(1000);
    preset(b, "a:1\n" + tail + longer);
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", "2"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1,2\n" + tail + longer);
    EXPECT_EQ(b->length, 6 + tail.size() + longer.size());
}

TEST(AddHeaderLine, QuotedNewlineDoesNotSplitLine) {
    OutBuffer b(64);
    preset(b, "a:\"x\ny\"\nb:1\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", "z"), WSP_OK);
    EXPECT_EQ(b.text(), "a:\"x\ny\",z\nb:1\n");
}

TEST(AddHeaderLine, QuotedColonStaysInName) {
    OutBuffer b(64);
    preset(b, "\"k:1\":v\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "\"k:1\"", "w"), WSP_OK);
    EXPECT_EQ(b.text(), "\"k:1\":v,w\n");
}

TEST(AddHeaderLine, LinesWithOtherNamesAreRestored) {
    OutBuffer b(64);
    preset(b, "a:1\nb:2\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "c", "3"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1\nb:2\nc:3\n");
    EXPECT_EQ(b->length, 12);
}

TEST(AddHeaderLine, WalkCoversOnlyLengthOctets) {
    // Lines past `length` are not looked at: "b" is not found and a new
    // line is added at the end of the text.
    OutBuffer b(64);
    preset(b, "a:1\nb:2\n", 4);
    EXPECT_EQ(wsp_add_header_line(b.get(), "b", "3"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1\nb:2\nb:3\n");
    EXPECT_EQ(b->length, 12);
}

TEST(AddHeaderLine, LeadingNewlinesArePassedOver) {
    OutBuffer b(64);
    preset(b, "\n\na:1\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", "2"), WSP_OK);
    EXPECT_EQ(b.text(), "\n\na:1,2\n");
}

TEST(AddHeaderLine, LastLineWithoutNewlineGetsOne) {
    OutBuffer b(64);
    preset(b, "a:1");
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", "2"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1,2\n");
    EXPECT_EQ(b->length, 6);
}

TEST(AddHeaderLine, LineWithoutColonMatchesAsAWholeName) {
    OutBuffer b(64);
    preset(b, "abc\nd:1\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "abc", "v"), WSP_OK);
    EXPECT_EQ(b.text(), "abc,v\nd:1\n");
}

TEST(AddHeaderLine, OffsetIsIgnored) {
    OutBuffer b(64, 3);
    preset(b, "a:1\n");
    EXPECT_EQ(wsp_add_header_line(b.get(), "a", "2"), WSP_OK);
    EXPECT_EQ(b.text(), "a:1,2\n");
}

// ---- plain writer ---------------------------------------------------------

TEST(AppendHeaderLine, NullArgumentsFail) {
    OutBuffer b(32);
    EXPECT_EQ(wsp_append_header_line(nullptr, "a", "b"), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_header_line(b.get(), nullptr, "b"), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_append_header_line(b.get(), "a", nullptr), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

TEST(AppendHeaderLine, NeverMerges) {
    OutBuffer b(64);
    ASSERT_EQ(wsp_append_header_line(b.get(), "age", "5"), WSP_OK);
    ASSERT_EQ(wsp_append_header_line(b.get(), "age", "6"), WSP_OK);
    EXPECT_EQ(b.text(), "age:5\nage:6\n");
    EXPECT_EQ(b->length, 12);
}

TEST(AppendHeaderLine, NoRoomGivesFailNotTruncated) {
    OutBuffer b(11);
    ASSERT_EQ(wsp_append_header_line(b.get(), "age", "5"), WSP_OK);
    EXPECT_EQ(wsp_append_header_line(b.get(), "age", "6"), WSP_ERR_FAIL); // 6 + 6 > 11
    EXPECT_EQ(b.text(), "age:5\n");
    EXPECT_EQ(b->length, 6);
}

TEST(AppendHeaderLine, ExactlyFullDropsOnlyTheNul) {
    OutBuffer b(12);
    ASSERT_EQ(wsp_append_header_line(b.get(), "age", "5"), WSP_OK);
    EXPECT_EQ(wsp_append_header_line(b.get(), "age", "6"), WSP_OK);
    EXPECT_EQ(raw(b, 12), "age:5\nage:6\n");
    EXPECT_EQ(b->length, 12);
}

TEST(AppendHeaderLine, OneOctetToSpareStoresTheNul) {
    // The line and its NUL inside the region: written in one pass.
    OutBuffer b(13);
    b.fill(0xAA);
    ASSERT_EQ(wsp_append_header_line(b.get(), "age", "5"), WSP_OK);
    EXPECT_EQ(wsp_append_header_line(b.get(), "age", "6"), WSP_OK);
    EXPECT_EQ(raw(b, 13), std::string("age:5\nage:6\n\0", 13));
    EXPECT_EQ(b->length, 12);
}

TEST(AppendHeaderLine, WritesAtOffsetPlusLength) {
    OutBuffer b(32, 2);
    EXPECT_EQ(wsp_append_header_line(b.get(), "a", "1"), WSP_OK);
    EXPECT_EQ(raw(b, 7), std::string("\0\0a:1\n\0", 7));
    EXPECT_EQ(b->length, 4);
}

TEST(AppendHeaderLine, WritesAfterCountedNulOfRawWriter) {
    // The raw writer counts the NUL of an empty text; the plain writer then
    // writes after it, leaving that NUL between the two lines.
    OutBuffer b(32);
    ASSERT_EQ(wsp_add_raw_header_line(b.get(), "x", kShort85, 1), WSP_OK);
    ASSERT_EQ(b->length, 5);
    EXPECT_EQ(wsp_append_header_line(b.get(), "age", "5"), WSP_OK);
    EXPECT_EQ(hex(b->data, 12), "78 3A 85 0A 00 61 67 65 3A 35 0A 00");
    EXPECT_EQ(b->length, 11);
}

// ---- raw writer -------------------------------------------------------------

TEST(AddRawHeaderLine, NullArgumentsFail) {
    OutBuffer b(32);
    EXPECT_EQ(wsp_add_raw_header_line(nullptr, "a", kShort85, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), nullptr, kShort85, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "a", nullptr, 1), WSP_ERR_FAIL);
    EXPECT_EQ(b->length, 0);
}

TEST(AddRawHeaderLine, ShortIntegerOctetCopiedAsItStands) {
    OutBuffer b(32);
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x-foo", kShort85, 1), WSP_OK);
    EXPECT_EQ(hex(b->data, 10), "78 2D 66 6F 6F 3A 85 0A 00 00");
    // length counts the NUL of the empty text as well: 1 + 5 + 1 + 2.
    EXPECT_EQ(b->length, 9);
}

TEST(AddRawHeaderLine, NewLineAfterExistingText) {
    OutBuffer b(32);
    preset(b, "a:1\n");
    const uint8_t v[] = {0x02, 0x01, 0x02};
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", v, 3), WSP_OK);
    EXPECT_EQ(hex(b->data, 11), "61 3A 31 0A 78 3A 02 01 02 0A 00");
    EXPECT_EQ(b->length, 4 + 1 + 3 + 2);
}

TEST(AddRawHeaderLine, NewLineCopyStopsAtZeroOctet) {
    OutBuffer b(32);
    const uint8_t v[] = {0x03, 0x00, 0x01, 0x02};
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", v, 4), WSP_OK);
    EXPECT_EQ(hex(b->data, 6), "78 3A 03 0A 00 00");
    EXPECT_EQ(b->length, 1 + 1 + 4 + 2);
}

TEST(AddRawHeaderLine, FoundNameExtendsItsLine) {
    OutBuffer b(32);
    ASSERT_EQ(wsp_add_raw_header_line(b.get(), "x", kShort85, 1), WSP_OK);
    const uint8_t v[] = {0x02, 0x01, 0x02};
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", v, 3), WSP_OK);
    EXPECT_EQ(hex(b->data, 9), "78 3A 85 2C 02 01 02 0A 00");
    // One more than the text grew (4): value size + 2.
    EXPECT_EQ(b->length, 5 + 5);
}

TEST(AddRawHeaderLine, FoundNameKeepsFollowingLines) {
    OutBuffer b(64);
    preset(b, "x:1\ny:2\n");
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", kShort85, 1), WSP_OK);
    EXPECT_EQ(hex(b->data, 11), "78 3A 31 2C 85 0A 79 3A 32 0A 00");
    EXPECT_EQ(b->length, 8 + 3);
}

TEST(AddRawHeaderLine, NameFoundInsideAnotherLine) {
    // A plain substring search: "x-b" inside "ax-b" extends that line.
    OutBuffer b(64);
    preset(b, "ax-b:1\nc:2\n");
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x-b", kShort85, 1), WSP_OK);
    EXPECT_EQ(b.text(), "ax-b:1,\x85\nc:2\n");
}

TEST(AddRawHeaderLine, FoundValueCopiedWithZeroOctets) {
    OutBuffer b(32);
    preset(b, "x:1\n");
    const uint8_t v[] = {0x02, 0x00, 0x05};
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", v, 3), WSP_OK);
    EXPECT_EQ(hex(b->data, 9), "78 3A 31 2C 02 00 05 0A 00");
    EXPECT_EQ(b->length, 4 + 5);
}

TEST(AddRawHeaderLine, NewLineRoomBoundary) {
    // length 0 counts as 1: 1 + 1 + 1 + 2 = 5.
    OutBuffer fits(5);
    EXPECT_EQ(wsp_add_raw_header_line(fits.get(), "x", kShort85, 1), WSP_OK);
    EXPECT_EQ(hex(fits->data, 5), "78 3A 85 0A 00");

    OutBuffer shorter(4);
    EXPECT_EQ(wsp_add_raw_header_line(shorter.get(), "x", kShort85, 1), WSP_ERR_TRUNCATED);
    // The NUL at the start and the counted octet stay.
    EXPECT_EQ(shorter->length, 1);
    EXPECT_EQ(hex(shorter->data, 4), "00 00 00 00");
}

TEST(AddRawHeaderLine, NewLineExactlyFullDropsNul) {
    OutBuffer b(8);
    preset(b, "a:1\n");
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", kShort85, 1), WSP_OK); // 4 + 4 = 8
    EXPECT_EQ(hex(b->data, 8), "61 3A 31 0A 78 3A 85 0A");
    EXPECT_EQ(b->length, 8);
}

TEST(AddRawHeaderLine, FoundRoomBoundary) {
    OutBuffer fits(7);
    preset(fits, "x:1\n");
    EXPECT_EQ(wsp_add_raw_header_line(fits.get(), "x", kShort85, 1), WSP_OK); // 4 + 1 + 1 = 6 < 7
    EXPECT_EQ(hex(fits->data, 7), "78 3A 31 2C 85 0A 00");
    EXPECT_EQ(fits->length, 7);

    OutBuffer full(6);
    preset(full, "x:1\n");
    EXPECT_EQ(wsp_add_raw_header_line(full.get(), "x", kShort85, 1), WSP_ERR_TRUNCATED);
    EXPECT_EQ(full.text(), "x:1\n");
    EXPECT_EQ(full->length, 4);
}

TEST(AddRawHeaderLine, ValueLongerThanScratchIsCopiedWhole) {
    Bytes v(250, 0x41);
    v[0] = 0x1F;
    OutBuffer b(300);
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", v.data(), 250), WSP_OK);
    std::string expect = "x:" + std::string(reinterpret_cast<const char *>(v.data()), 250) + "\n";
    EXPECT_EQ(b.text(), expect);
    EXPECT_EQ(b->length, 1 + 1 + 250 + 2);
}

TEST(AddRawHeaderLine, TextStartsAtOffset) {
    OutBuffer b(32, 2);
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", kShort85, 1), WSP_OK);
    EXPECT_EQ(hex(b->data, 7), "00 00 78 3A 85 0A 00");
    EXPECT_EQ(b->length, 5);
}

TEST(AddRawHeaderLine, LongRemainderMovedThroughHeapCopy) {
    std::string tail = "t:" + std::string(300, 'q') + "\n";
    OutBuffer b(400);
    preset(b, "x:1\n" + tail);
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "x", kShort85, 1), WSP_OK);
    EXPECT_EQ(b.text(), "x:1,\x85\n" + tail);
    EXPECT_EQ(b->length, 4 + tail.size() + 3);
}

// ---- 16-bit counts ----------------------------------------------------------------

TEST(LineWriters, WrappedRoomTestsNeverWritePastSize) {
    // A length near 0xFFFF wraps the room tests; whatever they then let
    // through, nothing is written past size.  The plain writer's line would
    // lie far past the region (0xFFFE + 4 wraps to 2): refused, not counted.
    OutBuffer plain(16);
    plain->length = 0xFFFE;
    EXPECT_EQ(wsp_append_header_line(plain.get(), "a", "b"), WSP_ERR_FAIL);
    EXPECT_EQ(plain->length, 0xFFFE);
    EXPECT_EQ(hex(plain->data, 16), hex(Bytes(16, 0)));

    OutBuffer merging(16);
    merging->length = 0xFFFE;
    EXPECT_EQ(wsp_add_header_line(merging.get(), "a", "b"), WSP_OK);
    EXPECT_EQ(merging.text(), "a:b\n");
    EXPECT_EQ(merging->length, 4);

    OutBuffer raw_out(16);
    raw_out->length = 0xFFFE;
    EXPECT_EQ(wsp_add_raw_header_line(raw_out.get(), "x", kShort85, 1), WSP_OK);
    EXPECT_EQ(hex(raw_out->data, 5), "78 3A 85 0A 00");
    EXPECT_EQ(raw_out->length, 2);
}

TEST(LineWriters, TextFillingSizeIsNeverReadPast) {
    // No NUL inside size: the raw writer's search and the merging writer's
    // walk stop at size.
    OutBuffer b(6);
    std::memcpy(b->data, "ab:c\nd", 6);
    b->length = 6;
    EXPECT_EQ(wsp_add_raw_header_line(b.get(), "zz", kShort85, 1), WSP_ERR_TRUNCATED);
    EXPECT_EQ(wsp_add_header_line(b.get(), "d", "1"), WSP_ERR_TRUNCATED);
    EXPECT_EQ(std::string(reinterpret_cast<char *>(b->data), 6), std::string("ab:c\nd", 6));
}

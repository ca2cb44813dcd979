// The steps the single-value header decoders share: the frame of a value
// that is one item (no octet left, read, write the line, move the cursor)
// and the line writer choice with its cursor rule.
#include <gtest/gtest.h>

#include <cstdint>

#include "decode/decoder_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

constexpr uint32_t kAge = 0x05;
constexpr uint32_t kNoName = WSP_HEADER_NAME_ROWS;

// Reads one octet as a decimal number.
int read_octet(const uint8_t **p, wsp_text_builder *value) {
    value->append_uint(**p);
    *p += 1;
    return WSP_OK;
}

struct ItemRun {
    int status;
    long moved;
};

ItemRun one_item(uint32_t code, const Bytes &in, uint16_t remaining, OutBuffer &out, wsp_line_writer writer,
             wsp_cursor_rule rule) {
    InBytes input(in);
    const uint8_t *cursor = input.data();
    int status = wsp_decode_one_item(code, &cursor, out.get(), remaining, writer, rule, read_octet);
    return {status, static_cast<long>(cursor - input.data())};
}

} // namespace

TEST(DecodeOneItem, ReadItemIsWrittenAsTheCodesLineAndTheCursorMovesPastIt) {
    OutBuffer out(32);
    ItemRun r = one_item(kAge, bytes({0x07, 0x09}), 2, out, wsp_line_writer::plain, wsp_cursor_rule::on_ok);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 1);
    EXPECT_EQ(out.text(), "age:7\n");
}

TEST(DecodeOneItem, NoOctetLeftGives211WithoutAReadOrALine) {
    OutBuffer out(32);
    int reads = 0;
    InBytes input(bytes({0x07}));
    const uint8_t *cursor = input.data();
    int status = wsp_decode_one_item(kAge, &cursor, out.get(), 0, wsp_line_writer::plain, wsp_cursor_rule::always,
                                     [&](const uint8_t **, wsp_text_builder *) {
                                         ++reads;
                                         return WSP_OK;
                                     });
    EXPECT_EQ(status, WSP_ERR_ARG);
    EXPECT_EQ(reads, 0);
    EXPECT_EQ(cursor, input.data());
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeOneItem, ReadStatusIsReturnedAsItStandsAndTheCursorStays) {
    OutBuffer out(32);
    InBytes input(bytes({0x07}));
    const uint8_t *cursor = input.data();
    int status = wsp_decode_one_item(kAge, &cursor, out.get(), 1, wsp_line_writer::plain, wsp_cursor_rule::always,
                                     [](const uint8_t **p, wsp_text_builder *) {
                                         *p += 1;
                                         return WSP_ERR_TRUNCATED;
                                     });
    EXPECT_EQ(status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(cursor, input.data());
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeOneItem, CodeWithoutANameIsRefusedAndTheCursorStays) {
    OutBuffer out(32);
    ItemRun r = one_item(kNoName, bytes({0x07}), 1, out, wsp_line_writer::plain, wsp_cursor_rule::always);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(out->length, 0);
}

TEST(DecodeOneItem, RefusedLineMovesTheCursorOnlyUnderTheAlwaysRule) {
    // "age:7\n" needs 6 octets: the plain writer refuses a 4-octet output
    // with -214, the merging writer with -216.
    OutBuffer plain(4);
    ItemRun r = one_item(kAge, bytes({0x07}), 1, plain, wsp_line_writer::plain, wsp_cursor_rule::on_ok);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    OutBuffer merging(4);
    r = one_item(kAge, bytes({0x07}), 1, merging, wsp_line_writer::merging, wsp_cursor_rule::always);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeOneItem, MergingWriterJoinsRepeats) {
    OutBuffer out(32);
    EXPECT_EQ(one_item(kAge, bytes({0x07}), 1, out, wsp_line_writer::merging, wsp_cursor_rule::on_ok).status, WSP_OK);
    EXPECT_EQ(one_item(kAge, bytes({0x08}), 1, out, wsp_line_writer::merging, wsp_cursor_rule::on_ok).status, WSP_OK);
    EXPECT_EQ(out.text(), "age:7,8\n");
}

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

// One item of `in` with `remaining` octets left, read by `read`.
template <typename Read = int (*)(const uint8_t **, wsp_text_builder *)>
ItemRun one_item(uint32_t code, const Bytes &in, uint16_t remaining, OutBuffer &out, wsp_line_writer writer,
                 wsp_cursor_rule rule, Read read = read_octet) {
    InBytes input(in);
    const uint8_t *cursor = input.data();
    int status = wsp_decode_one_item(code, &cursor, out.get(), remaining, writer, rule, read);
    return {status, static_cast<long>(cursor - input.data())};
}

// A refusal: the status, the cursor where it was and nothing written.
void expect_refused(const ItemRun &r, int status, OutBuffer &out) {
    EXPECT_EQ(r.status, status);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(out->length, 0);
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
    auto count_reads = [&reads](const uint8_t **, wsp_text_builder *) {
        ++reads;
        return WSP_OK;
    };
    ItemRun r = one_item(kAge, bytes({0x07}), 0, out, wsp_line_writer::plain, wsp_cursor_rule::always, count_reads);
    expect_refused(r, WSP_ERR_ARG, out);
    EXPECT_EQ(reads, 0);
}

TEST(DecodeOneItem, ReadStatusIsReturnedAsItStandsAndTheCursorStays) {
    OutBuffer out(32);
    auto truncated = [](const uint8_t **p, wsp_text_builder *) {
        *p += 1;
        return WSP_ERR_TRUNCATED;
    };
    ItemRun r = one_item(kAge, bytes({0x07}), 1, out, wsp_line_writer::plain, wsp_cursor_rule::always, truncated);
    expect_refused(r, WSP_ERR_TRUNCATED, out);
}

TEST(DecodeOneItem, CodeWithoutANameIsRefusedAndTheCursorStays) {
    OutBuffer out(32);
    ItemRun r = one_item(kNoName, bytes({0x07}), 1, out, wsp_line_writer::plain, wsp_cursor_rule::always);
    expect_refused(r, WSP_ERR_FAIL, out);
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

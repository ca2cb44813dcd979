// The exported primitives through the public header: the uintvar encoder
// and decoders, the Short-integer writer and reader, the Token-text writer
// and the in-place tokenizer.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "api_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace api_core;

// ===========================================================================
// uintvar

namespace {
std::string enc_varint(uint32_t v, uint8_t *count_out = nullptr) {
    uint8_t area[5];
    std::memset(area, 0xEE, sizeof area);
    uint8_t *cur = area;
    uint8_t count = 0xCC;
    int st = wsp_enc_varint(v, &cur, &count);
    if (st != WSP_OK) return "failed";
    if (count_out) *count_out = count;
    if (cur != area + count) return "cursor not advanced by the count";
    return hex(area, count);
}
} // namespace

TEST(ApiVarint, EncodesOneToFiveOctets) {
    uint8_t n = 0;
    EXPECT_EQ("00", enc_varint(0, &n));
    EXPECT_EQ(1, n);
    EXPECT_EQ("7F", enc_varint(0x7F, &n));
    EXPECT_EQ(1, n);
    EXPECT_EQ("81 00", enc_varint(0x80, &n));
    EXPECT_EQ(2, n);
    EXPECT_EQ("8F FF FF FF 7F", enc_varint(0xFFFFFFFFu, &n));
    EXPECT_EQ(5, n);
}

TEST(ApiVarint, EncodesEveryGroupBoundary) {
    EXPECT_EQ("FF 7F", enc_varint(0x3FFF));
    EXPECT_EQ("81 80 00", enc_varint(0x4000));
    EXPECT_EQ("FF FF 7F", enc_varint(0x1FFFFF));
    EXPECT_EQ("81 80 80 00", enc_varint(0x200000));
    EXPECT_EQ("FF FF FF 7F", enc_varint(0x0FFFFFFF));
    EXPECT_EQ("81 80 80 80 00", enc_varint(0x10000000));
    EXPECT_EQ("83 31", enc_varint(433));
}

TEST(ApiVarint, DecodesWithinTheAvailableOctets) {
    const uint8_t in[] = {0x81, 0x80, 0x00, 0x55};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 3));
    EXPECT_EQ(0x4000u, v);
    EXPECT_EQ(in + 3, p);

    const uint8_t one[] = {0x05};
    p = one;
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 1));
    EXPECT_EQ(5u, v);
    EXPECT_EQ(one + 1, p);
}

TEST(ApiVarint, RefusesALeadingContinuationOctetWithoutBits) {
    const uint8_t in[] = {0x80, 0x01};
    const uint8_t *p = in;
    uint32_t v = 1234;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 2));
    EXPECT_EQ(in, p);
}

TEST(ApiVarint, RefusesSixOctets) {
    const uint8_t in[] = {0x81, 0x81, 0x81, 0x81, 0x81, 0x01};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 6));
    EXPECT_EQ(in, p);
    const uint8_t longer[] = {0x81, 0x81, 0x81, 0x81, 0x81, 0x81, 0x01};
    p = longer;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 7));
    EXPECT_EQ(longer, p);
}

TEST(ApiVarint, RefusesAValueRunningPastTheAvailableOctets) {
    const uint8_t in[] = {0x81, 0x00};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 1));
    EXPECT_EQ(in, p);
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 0));
    EXPECT_EQ(in, p);
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 2));
    EXPECT_EQ(0x80u, v);
}

TEST(ApiVarint, ASingleOctetNeedsOneAvailableOctet) {
    const uint8_t in[] = {0x05};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_dec_varint(&p, &v, 0));
    EXPECT_EQ(in, p);
}

TEST(ApiVarint, FiveOctetsKeepOnlyTheLow32Bits) {
    const uint8_t in[] = {0xFF, 0xFF, 0xFF, 0xFF, 0x7F};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 5));
    EXPECT_EQ(0xFFFFFFFFu, v);
    EXPECT_EQ(in + 5, p);
    const uint8_t in2[] = {0x9F, 0x80, 0x80, 0x80, 0x01};
    p = in2;
    EXPECT_EQ(WSP_OK, wsp_dec_varint(&p, &v, 5));
    EXPECT_EQ(0xF0000001u, v);
}

TEST(ApiVarint, RoundTripsThroughTheEncoder) {
    const uint32_t values[] = {0, 1, 127, 128, 300, 16383, 16384, 0x12345678, 0xFFFFFFFFu};
    for (uint32_t value : values) {
        uint8_t area[5];
        uint8_t *w = area;
        uint8_t n = 0;
        ASSERT_EQ(WSP_OK, wsp_enc_varint(value, &w, &n));
        const uint8_t *r = area;
        uint32_t back = 0;
        ASSERT_EQ(WSP_OK, wsp_dec_varint(&r, &back, n));
        EXPECT_EQ(value, back);
        EXPECT_EQ(area + n, r);
        r = area;
        ASSERT_EQ(WSP_OK, wsp_dec_varintLen(&r, n, &back, n));
        EXPECT_EQ(value, back);
    }
}

TEST(ApiVarintLen, AcceptsOnlyTheExpectedOctetCount) {
    const uint8_t in[] = {0x81, 0x00};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_OK, wsp_dec_varintLen(&p, 2, &v, 2));
    EXPECT_EQ(0x80u, v);
    EXPECT_EQ(in + 2, p);
    p = in;
    v = 99;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 3, &v, 2));
    EXPECT_EQ(in, p);
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 1, &v, 2));
    EXPECT_EQ(in, p);
}

TEST(ApiVarintLen, SingleOctetNeedsAnExpectedCountOfOne) {
    const uint8_t in[] = {0x05, 0x00};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 2, &v, 2));
    EXPECT_EQ(in, p);
    EXPECT_EQ(WSP_OK, wsp_dec_varintLen(&p, 1, &v, 2));
    EXPECT_EQ(5u, v);
    EXPECT_EQ(in + 1, p);
}

TEST(ApiVarintLen, EveryFailureIsTheUnsignedPattern) {
    const uint8_t lead[] = {0x80, 0x01};
    const uint8_t *p = lead;
    uint32_t v = 0;
    int st = wsp_dec_varintLen(&p, 2, &v, 2);
    EXPECT_EQ(65322, st);
    EXPECT_EQ(-214, low16(st));
    const uint8_t longv[] = {0x81, 0x80, 0x00};
    p = longv;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 3, &v, 2)); // past avail
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 2, &v, 3)); // longer than expected
    EXPECT_EQ(longv, p);
    const uint8_t six[] = {0x81, 0x81, 0x81, 0x81, 0x81, 0x01};
    p = six;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 6, &v, 6));
    EXPECT_EQ(six, p);
    const uint8_t one[] = {0x05};
    p = one;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 1, &v, 0));
    EXPECT_EQ(one, p);
}

TEST(ApiVarintLen, FiveOctetsWhenFiveAreExpected) {
    const uint8_t in[] = {0x8F, 0xFF, 0xFF, 0xFF, 0x7F};
    const uint8_t *p = in;
    uint32_t v = 0;
    EXPECT_EQ(WSP_OK, wsp_dec_varintLen(&p, 5, &v, 5));
    EXPECT_EQ(0xFFFFFFFFu, v);
    p = in;
    EXPECT_EQ(65322, wsp_dec_varintLen(&p, 5, &v, 4));
    EXPECT_EQ(in, p);
}

// ===========================================================================
// Short-integer

TEST(ApiShortInt, WritesValueOrHighBit) {
    uint8_t area[1];
    const uint32_t values[] = {0, 5, 127};
    const uint8_t expect[] = {0x80, 0x85, 0xFF};
    for (int i = 0; i < 3; ++i) {
        uint8_t *w = area;
        area[0] = 0;
        EXPECT_EQ(WSP_OK, wsp_short_int_encodeto(&w, values[i]));
        EXPECT_EQ(expect[i], area[0]);
        EXPECT_EQ(area + 1, w);
    }
}

TEST(ApiShortInt, OnlyTheLowEightBitsCount) {
    uint8_t area[1] = {0};
    uint8_t *w = area;
    EXPECT_EQ(WSP_OK, wsp_short_int_encodeto(&w, 300));
    EXPECT_EQ(0xAC, area[0]);
    w = area;
    EXPECT_EQ(WSP_OK, wsp_short_int_encodeto(&w, 256));
    EXPECT_EQ(0x80, area[0]);
}

TEST(ApiShortInt, RefusesBitSevenAndLeavesTheCursor) {
    uint8_t area[1] = {0x11};
    uint8_t *w = area;
    EXPECT_EQ(WSP_ERR_FAIL, wsp_short_int_encodeto(&w, 128));
    EXPECT_EQ(area, w);
    EXPECT_EQ(WSP_ERR_FAIL, wsp_short_int_encodeto(&w, 255));
    EXPECT_EQ(WSP_ERR_FAIL, wsp_short_int_encodeto(&w, 0x1FF));
    EXPECT_EQ(area, w);
    EXPECT_EQ(0x11, area[0]);
}

TEST(ApiShortInt, DecodesTheLowSevenBits) {
    const uint8_t in[] = {0x80, 0xFF, 0xB5};
    const uint8_t *p = in;
    uint8_t v = 0x55;
    EXPECT_EQ(WSP_OK, wsp_shortint_direct_decode(&p, &v));
    EXPECT_EQ(0, v);
    EXPECT_EQ(in + 1, p);
    EXPECT_EQ(WSP_OK, wsp_shortint_direct_decode(&p, &v));
    EXPECT_EQ(127, v);
    EXPECT_EQ(WSP_OK, wsp_shortint_direct_decode(&p, &v));
    EXPECT_EQ(0x35, v);
    EXPECT_EQ(in + 3, p);
}

TEST(ApiShortInt, DecodeRefusesOctetsBelow128AndLeavesTheCursor) {
    const uint8_t in[] = {0x7F, 0x00, 0x20};
    for (int i = 0; i < 3; ++i) {
        const uint8_t *p = in + i;
        uint8_t v = 0;
        EXPECT_EQ(WSP_ERR_FAIL, wsp_shortint_direct_decode(&p, &v));
        EXPECT_EQ(in + i, p);
    }
}

// The Short-integer writer's last-octet rule as the header encoder shows it:
// a value octet that would fill the block to its last byte fails the call.
TEST(ApiShortInt, AppendingIntoTheLastByteFailsTheHeader) {
    Encoded fits = encode_lines("age: 5", "1.1", 3);
    EXPECT_EQ(WSP_OK, low16(fits.status));
    EXPECT_EQ("85 85", hex(fits.bytes));
    EXPECT_EQ(2, fits.holder_length);
    Encoded full = encode_lines("age: 5", "1.1", 2);
    EXPECT_EQ(WSP_ERR_FAIL, low16(full.status));
    EXPECT_TRUE(full.data_released);
}

// ===========================================================================
// Token-text writer

namespace {
struct TokenOut {
    int status;
    std::string hex_all;
    uint16_t length;
};
TokenOut token_text(const char *text, uint16_t size, uint16_t length = 0) {
    OutBuffer out(size);
    out->length = length;
    TokenOut t;
    t.status = wsp_tokentext_encode_buff(text, out.get());
    t.hex_all = hex(out->data, size);
    t.length = out->length;
    return t;
}
} // namespace

TEST(ApiTokenText, WritesCharactersAndNul) {
    TokenOut t = token_text("x-wap-tod", 10);
    EXPECT_EQ(WSP_OK, t.status);
    EXPECT_EQ(hex(cstr("x-wap-tod")), t.hex_all);
    EXPECT_EQ(10, t.length);
}

TEST(ApiTokenText, EmptyTextWritesOneNul) {
    OutBuffer out(2);
    out->data[0] = 0x77;
    EXPECT_EQ(WSP_OK, wsp_tokentext_encode_buff("", out.get()));
    EXPECT_EQ(1, out->length);
    EXPECT_EQ(0, out->data[0]);
}

TEST(ApiTokenText, AppendsAfterOffsetAndLength) {
    OutBuffer out(10, 3);
    out->length = 2;
    out->data[3] = 0xA1;
    out->data[4] = 0xA2;
    EXPECT_EQ(WSP_OK, wsp_tokentext_encode_buff("abc", out.get()));
    EXPECT_EQ(6, out->length);
    EXPECT_EQ("00 00 00 A1 A2 61 62 63 00 00", hex(out->data, 10));
}

TEST(ApiTokenText, ExactRoomAndOneShort) {
    TokenOut exact = token_text("abc", 4);
    EXPECT_EQ(WSP_OK, exact.status);
    EXPECT_EQ("61 62 63 00", exact.hex_all);
    EXPECT_EQ(4, exact.length);
    TokenOut shortb = token_text("abc", 3);
    EXPECT_EQ(WSP_ERR_FAIL, shortb.status);
    EXPECT_EQ("00 00 00", shortb.hex_all);
    EXPECT_EQ(0, shortb.length);
    TokenOut after = token_text("ab", 5, 2);
    EXPECT_EQ(WSP_OK, after.status);
    EXPECT_EQ(5, after.length);
    TokenOut after_short = token_text("ab", 4, 2);
    EXPECT_EQ(WSP_ERR_FAIL, after_short.status);
    EXPECT_EQ(2, after_short.length);
}

TEST(ApiTokenText, SlashIsASeparator) {
    TokenOut t = token_text("text/plain", 20);
    EXPECT_EQ(WSP_ERR_FAIL, t.status);
    EXPECT_EQ(0, t.length);
    // The characters before the separator stay in the buffer, uncounted.
    EXPECT_EQ("74 65 78 74", t.hex_all.substr(0, 11));
}

TEST(ApiTokenText, EverySeparatorAndControlIsRefused) {
    const char separators[] = "()<>@,;:\\\"/[]?={} \t";
    for (const char *s = separators; *s; ++s) {
        char text[4] = {'a', *s, 'b', 0};
        TokenOut t = token_text(text, 8);
        EXPECT_EQ(WSP_ERR_FAIL, t.status) << "separator " << static_cast<int>(*s);
        EXPECT_EQ(0, t.length);
    }
    const unsigned char others[] = {0x01, 0x0A, 0x0D, 0x1F, 0x7F, 0x80, 0xE9, 0xFF};
    for (unsigned char c : others) {
        char text[3] = {'a', static_cast<char>(c), 0};
        TokenOut t = token_text(text, 8);
        EXPECT_EQ(WSP_ERR_FAIL, t.status) << "octet " << static_cast<int>(c);
    }
}

TEST(ApiTokenText, EveryOtherPrintableIsAccepted) {
    std::string all;
    const std::string separators = "()<>@,;:\\\"/[]?={} \t";
    for (int c = 33; c <= 126; ++c)
        if (separators.find(static_cast<char>(c)) == std::string::npos) all += static_cast<char>(c);
    TokenOut t = token_text(all.c_str(), static_cast<uint16_t>(all.size() + 1));
    EXPECT_EQ(WSP_OK, t.status);
    EXPECT_EQ(all.size() + 1, t.length);
}

TEST(ApiTokenText, SixteenBitRoomTestWraps) {
    // 65535 characters + 0 + 1 is 0 in 16 bits: the room test passes, but
    // the text cannot be stored past the buffer, so the call fails with
    // length unchanged.  Only the octets inside the buffer are written.
    std::string text(65535, 'a');
    OutBuffer out(10);
    EXPECT_EQ(WSP_ERR_FAIL, wsp_tokentext_encode_buff(text.c_str(), out.get()));
    EXPECT_EQ(0, out->length);
    EXPECT_EQ(hex(Bytes(10, 'a')), hex(out->data, 10));
}

// ===========================================================================
// In-place tokenizer

namespace {
// All tokens of `text` split at `delim`, then "NULL" for the end.
std::string tokens(const std::string &text, const char *delim) {
    TextCopy copy(text);
    char *pos = copy.get();
    std::string out;
    for (int i = 0; i < 10; ++i) {
        char *t = wsp_strtoken(&pos, delim);
        if (t == nullptr) return out + "NULL";
        out += "[" + std::string(t) + "]";
    }
    return out + "...";
}
} // namespace

TEST(ApiStrtoken, QuotedSectionsDoNotSplit) {
    EXPECT_EQ("[a][\"b,c\"][d]NULL", tokens("a,\"b,c\",d", ","));
}

TEST(ApiStrtoken, LeadingDelimitersAndEmptyFieldsAreSkipped) {
    EXPECT_EQ("[x]NULL", tokens(",,x", ","));
    EXPECT_EQ("[a][b]NULL", tokens("a,,b", ","));
    EXPECT_EQ("[a]NULL", tokens("a,", ","));
}

TEST(ApiStrtoken, OnlyDelimitersYieldOneEmptyTokenThenNull) {
    EXPECT_EQ("[]NULL", tokens(",,", ","));
    EXPECT_EQ("[]NULL", tokens(" ", " "));
}

TEST(ApiStrtoken, CutsInPlaceAndAdvancesPastTheDelimiter) {
    char text[] = "age: 10\nx-a:1";
    char *pos = text;
    char *line = wsp_strtoken(&pos, "\n");
    ASSERT_EQ(text, line);
    EXPECT_EQ(text + 8, pos);
    EXPECT_EQ('\0', text[7]);
    char *lp = line;
    char *name = wsp_strtoken(&lp, ":");
    EXPECT_STREQ("age", name);
    EXPECT_STREQ(" 10", lp);
    char *last = wsp_strtoken(&pos, "\n");
    EXPECT_STREQ("x-a:1", last);
    EXPECT_EQ('\0', *pos);
    EXPECT_EQ(nullptr, wsp_strtoken(&pos, "\n"));
}

TEST(ApiStrtoken, AnUnbalancedQuoteIsAnOrdinaryCharacter) {
    EXPECT_EQ("[\"a][b]NULL", tokens("\"a,b", ","));
    EXPECT_EQ("[a\"b][c]NULL", tokens("a\"b,c", ","));
}

TEST(ApiStrtoken, TheCharacterAfterAClosingQuoteOpensNothing) {
    // After "a" the next quotation mark is an ordinary character, so the
    // comma after b splits; the rest then has an unbalanced quote.
    EXPECT_EQ("[\"a\"\"b][c\"][d]NULL", tokens("\"a\"\"b,c\",d", ","));
    EXPECT_EQ("[\"x\"y][z]NULL", tokens("\"x\"y,z", ","));
    EXPECT_EQ("[\"x\"][y]NULL", tokens("\"x\",y", ","));
}

TEST(ApiStrtoken, RefusesBadArguments) {
    char text[] = "a,b";
    char *pos = text;
    EXPECT_EQ(nullptr, wsp_strtoken(&pos, ",;"));
    EXPECT_EQ(text, pos);
    EXPECT_EQ(nullptr, wsp_strtoken(nullptr, ","));
    char *none = nullptr;
    EXPECT_EQ(nullptr, wsp_strtoken(&none, ","));
    char empty[] = "";
    char *ep = empty;
    EXPECT_EQ(nullptr, wsp_strtoken(&ep, ","));
    EXPECT_STREQ("a,b", text);
}

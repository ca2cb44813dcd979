// The date header encoder (code octet, then the lower-cased HTTP-date as a
// Long-integer) and If-Range: a date when the value starts with a day name,
// otherwise the lower-cased value as a Text-string.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "wsp_test_support.h"

using wsp_test::bytes;
using wsp_test::hex;

using wsp_test::OutBuffer;
using wsp_test::TextCopy;

namespace {

constexpr uint8_t kIfRange = 0x1A;

struct Encoded {
    int status;
    std::string out;
    std::string text_after;
};

Encoded if_range(const std::string &value, uint16_t size = 32) {
    TextCopy t(value);
    OutBuffer out(size);
    int s = wsp_encode_if_range(kIfRange, t.get(), out.get(), 3);
    return {s, out.written_hex(), t.get()};
}

} // namespace

// ---- date header encoding ----

TEST(EncodeDateHeader, CodeOctetThenLowerCasedDate) {
    TextCopy t("Sun, 06 Nov 1994 08:49:37 GMT");
    OutBuffer out(16);
    EXPECT_EQ(wsp_encode_date_header(0x12, t.get(), out.get(), 3), WSP_OK);
    EXPECT_EQ(out.written_hex(), "92 04 2E BC 98 A1");
    EXPECT_STREQ(t.get(), "sun,"); // lower-cased and cut in place
}

TEST(EncodeDateHeader, AllDateCodes) {
    for (uint8_t code : {0x12, 0x14, 0x17, 0x1B, 0x1D, 0x3F}) {
        TextCopy t("SUN NOV 6 08:49:37 1994");
        OutBuffer out(8);
        EXPECT_EQ(wsp_encode_date_header(code, t.get(), out.get(), 0), WSP_OK) << int(code);
        EXPECT_EQ(out.written_hex(), hex(bytes({0x80 | code, 0x04, 0x2E, 0xBC, 0x98, 0xA1}))) << int(code);
    }
}

// The Short-integer writer refuses to fill the output to its last byte: a
// code octet that fills the buffer exactly is written, counted and -214.
TEST(EncodeDateHeader, CodeOctetFillingTheBufferFails) {
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    OutBuffer out(1);
    EXPECT_EQ(wsp_encode_date_header(0x12, t.get(), out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out.written_hex(), "92");
    EXPECT_STREQ(t.get(), "sun, 06 nov 1994 08:49:37 gmt"); // not parsed
}

TEST(EncodeDateHeader, NoRoomForTheCodeOctetFails) {
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    OutBuffer out(0);
    EXPECT_EQ(wsp_encode_date_header(0x12, t.get(), out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(EncodeDateHeader, ExactRoomForCodeAndValue) {
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    OutBuffer out(6);
    EXPECT_EQ(wsp_encode_date_header(0x12, t.get(), out.get(), 3), WSP_OK);
    EXPECT_EQ(out.written_hex(), "92 04 2E BC 98 A1");
}

TEST(EncodeDateHeader, ValueOneByteShortFails) {
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    OutBuffer out(5);
    EXPECT_EQ(wsp_encode_date_header(0x12, t.get(), out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->data[0], 0x92);
    EXPECT_EQ(out->data[1], 0x04);
}

TEST(EncodeDateHeader, BadDateFailsAfterTheCodeOctet) {
    TextCopy t("Sun, 06 Nov 2070 08:49:37 GMT");
    OutBuffer out(16);
    EXPECT_EQ(wsp_encode_date_header(0x12, t.get(), out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out.written_hex(), "92");
}

TEST(EncodeDateHeader, CodeAbove127Fails) {
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    OutBuffer out(16);
    EXPECT_EQ(wsp_encode_date_header(0x80, t.get(), out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(EncodeDateHeader, NullTextFailsAfterTheCodeOctet) {
    OutBuffer out(16);
    EXPECT_EQ(wsp_encode_date_header(0x12, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out.written_hex(), "92");
}

// ---- If-Range ----

TEST(EncodeIfRange, DateValue) {
    Encoded e = if_range("Sun, 06 Nov 1994 08:49:37 GMT");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "9A 04 2E BC 98 A1");
}

TEST(EncodeIfRange, EveryDayNameStartsADate) {
    const char *values[] = {"sun, 06 nov 1994 08:49:37 gmt", "Mon, 06 Nov 1994 08:49:37 GMT",
                            "TUE nov 6 08:49:37 1994",        "wednesday, 06-nov-1994 08:49:37 gmt",
                            "Thu, 06 Nov 1994 08:49:37",      "FRIDAY, 06-Nov-1994 08:49:37 GMT",
                            "sat nov 6 08:49:37 1994"};
    for (const char *v : values) {
        Encoded e = if_range(v);
        EXPECT_EQ(e.status, WSP_OK) << v;
        EXPECT_EQ(e.out, "9A 04 2E BC 98 A1") << v;
    }
}

// The whole value is lower-cased first, the entity tag included.
TEST(EncodeIfRange, EntityTagIsLowerCasedTextString) {
    Encoded e = if_range("\"ABC\"");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "9A 22 61 62 63 22 00");
    EXPECT_EQ(e.text_after, "\"abc\"");
}

TEST(EncodeIfRange, OtherTextIsTextString) {
    Encoded e = if_range("Xyz");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "9A 78 79 7A 00");
}

// Shorter than a day name: no match, sent as text.
TEST(EncodeIfRange, ShortValueIsText) {
    Encoded e = if_range("Su");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.out, "9A 73 75 00");
}

// Only the first three characters decide: "sunny" goes to the date parser,
// which does not know it.
TEST(EncodeIfRange, DayNamePrefixGoesToTheDateParser) {
    Encoded e = if_range("Sunny");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.out, "9A");
}

TEST(EncodeIfRange, BadDateFailsAfterTheCodeOctet) {
    Encoded e = if_range("Sun, 06 Nov 2070 08:49:37 GMT");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.out, "9A");
}

TEST(EncodeIfRange, CodeOctetFillingTheBufferFails) {
    Encoded d = if_range("Sun, 06 Nov 1994 08:49:37 GMT", 1);
    EXPECT_EQ(d.status, WSP_ERR_FAIL);
    EXPECT_EQ(d.out, "9A");
    Encoded t = if_range("xyz", 1);
    EXPECT_EQ(t.status, WSP_ERR_FAIL);
    EXPECT_EQ(t.out, "9A");
}

TEST(EncodeIfRange, NullTextFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_if_range(kIfRange, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

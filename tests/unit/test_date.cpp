// Date-values to HTTP-date text and back, and the date header encoder.
// Run with TZ=UTC: the handset's local time is taken as GMT.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <cstring>
#include <string>

#include "date.h"
#include "primitives.h"
#include "wsp_test_support.h"

using wsp_test::Bytes;
using wsp_test::bytes;
using wsp_test::hex;
using wsp_test::InBytes;
using wsp_test::OutBuffer;
using wsp_test::TextCopy;

namespace {

// A date text area of exactly WSP_TEXT_CAPACITY bytes on the heap, filled
// with 0xAA so that stray writes show and over-runs reach ASan.
class DateArea {
  public:
    DateArea() : p_(static_cast<char *>(std::malloc(WSP_TEXT_CAPACITY))) { std::memset(p_, 0xAA, WSP_TEXT_CAPACITY); }
    ~DateArea() { std::free(p_); }
    DateArea(const DateArea &) = delete;
    DateArea &operator=(const DateArea &) = delete;
    char *get() { return p_; }
    std::string text() const { return std::string(p_, strnlen(p_, WSP_TEXT_CAPACITY)); }
    // Bytes after the text's NUL still hold the fill.
    bool untouched_after(size_t n) const {
        for (size_t i = n; i < WSP_TEXT_CAPACITY; ++i)
            if (static_cast<uint8_t>(p_[i]) != 0xAA) return false;
        return true;
    }
    bool untouched() const { return untouched_after(0); }

  private:
    char *p_;
};

std::string value_text(uint32_t seconds, int *status = nullptr) {
    DateArea a;
    int s = wsp_date_value_text(seconds, a.get());
    if (status != nullptr) *status = s;
    if (s != WSP_OK) return "<fail>";
    EXPECT_TRUE(a.untouched_after(a.text().size() + 1));
    return a.text();
}

wsp_date_fields fields_of(uint8_t weekday, uint8_t day, uint8_t month, uint16_t year, uint8_t hour, uint8_t minute,
                          uint8_t second) {
    wsp_date_fields f;
    std::memset(&f, 0, sizeof f);
    f.weekday = weekday;
    f.day = day;
    f.month = month;
    f.year = year;
    f.hour = hour;
    f.minute = minute;
    f.second = second;
    return f;
}

struct Parsed {
    int status;
    std::string out;
};

Parsed parse(const std::string &text, uint16_t size = 16) {
    TextCopy t(text);
    OutBuffer out(size);
    int s = wsp_parse_http_date(t.get(), out.get());
    return {s, out.written_hex()};
}

constexpr const char *k1994Bytes = "04 2E BC 98 A1"; // 784111777
constexpr const char *kZeroBytes = "01 00";          // the Long-integer 0

} // namespace

// ---- name tables ----

TEST(DateNames, Tables) {
    const char *months[] = {"jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"};
    for (int i = 0; i < 12; ++i) EXPECT_STREQ(wsp_month_names[i], months[i]);
    const char *days[] = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
    const char *full[] = {"sunday,", "monday,", "tuesday,", "wednesday,", "thursday,", "friday,", "saturday,"};
    for (int i = 0; i < 7; ++i) {
        EXPECT_STREQ(wsp_day_names[i], days[i]);
        EXPECT_EQ(std::string(wsp_day_names_comma[i]), std::string(days[i]) + ",");
        EXPECT_STREQ(wsp_full_day_names_comma[i], full[i]);
    }
}

// ---- time value to fields ----

TEST(DateToFields, SecondsUnit) {
    wsp_time_value v = {784111777, 0};
    wsp_date_fields f;
    std::memset(&f, 0xEE, sizeof f);
    EXPECT_EQ(wsp_date_to_fields(&v, &f), 1);
    EXPECT_EQ(f.hour, 8);
    EXPECT_EQ(f.minute, 49);
    EXPECT_EQ(f.second, 37);
    EXPECT_EQ(f.day, 6);
    EXPECT_EQ(f.month, 11);
    EXPECT_EQ(f.year, 1994);
    EXPECT_EQ(f.weekday, 0);
    EXPECT_EQ(f.dst, 0);
    EXPECT_EQ(f.yday, 309);
    EXPECT_EQ(f.marker, 0);
}

TEST(DateToFields, AnyUnitOtherThanOneIsSeconds) {
    wsp_time_value v = {86400 + 3661, 2};
    wsp_date_fields f{};
    EXPECT_EQ(wsp_date_to_fields(&v, &f), 1);
    EXPECT_EQ(f.year, 1970);
    EXPECT_EQ(f.month, 1);
    EXPECT_EQ(f.day, 2);
    EXPECT_EQ(f.hour, 1);
    EXPECT_EQ(f.minute, 1);
    EXPECT_EQ(f.second, 1);
    EXPECT_EQ(f.weekday, 5);
}

TEST(DateToFields, MillisecondsUnitDividesByThousand) {
    wsp_time_value v = {0xFFFFFFFFu, 1}; // 4294967 s: 1970-02-19 17:02:47
    wsp_date_fields f{};
    EXPECT_EQ(wsp_date_to_fields(&v, &f), 1);
    EXPECT_EQ(f.year, 1970);
    EXPECT_EQ(f.month, 2);
    EXPECT_EQ(f.day, 19);
    EXPECT_EQ(f.hour, 17);
    EXPECT_EQ(f.minute, 2);
    EXPECT_EQ(f.second, 47);

    v = {999, 1};
    EXPECT_EQ(wsp_date_to_fields(&v, &f), 1);
    EXPECT_EQ(f.second, 0);
    v = {1000, 1};
    EXPECT_EQ(wsp_date_to_fields(&v, &f), 1);
    EXPECT_EQ(f.second, 1);
    v = {61999, 1};
    EXPECT_EQ(wsp_date_to_fields(&v, &f), 1);
    EXPECT_EQ(f.minute, 1);
    EXPECT_EQ(f.second, 1);
}

TEST(DateToFields, MillisecondDivisionIsExact) {
    const uint32_t samples[] = {0u, 1u, 999u, 1000u, 1001u, 999999u, 1000000u, 0x7FFFFFFFu, 0x80000000u,
                                4294967000u, 4294966999u, 0xFFFFFFFEu, 0xFFFFFFFFu};
    for (uint32_t ms : samples) {
        wsp_time_value a = {ms, 1};
        wsp_time_value b = {ms / 1000, 0};
        wsp_date_fields fa{}, fb{};
        wsp_date_to_fields(&a, &fa);
        wsp_date_to_fields(&b, &fb);
        EXPECT_EQ(std::memcmp(&fa, &fb, sizeof fa), 0) << ms;
    }
}

// ---- fields to time value ----

TEST(DateFromFields, ConvertsAndSetsSecondsUnit) {
    wsp_date_fields f = fields_of(0, 6, 11, 1994, 8, 49, 37);
    wsp_time_value v = {1, 1};
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 1);
    EXPECT_EQ(v.value, 784111777u);
    EXPECT_EQ(v.unit, 0u);
}

TEST(DateFromFields, WeekdayAndDayOfYearAreNotUsed) {
    wsp_date_fields f = fields_of(3, 6, 11, 1994, 8, 49, 37);
    f.yday = 17;
    wsp_time_value v = {};
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 1);
    EXPECT_EQ(v.value, 784111777u);
}

TEST(DateFromFields, BeyondYear2038) {
    wsp_date_fields f = fields_of(0, 7, 2, 2106, 6, 28, 15);
    wsp_time_value v = {};
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 1);
    EXPECT_EQ(v.value, 0xFFFFFFFFu);
    f = fields_of(2, 19, 1, 2038, 3, 14, 8);
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 1);
    EXPECT_EQ(v.value, 0x80000000u);
}

// mktime's -1 is the failure value: the second before 1970 cannot be told
// from it, and the output stays as it was.
TEST(DateFromFields, MinusOneIsFailure) {
    wsp_date_fields f = fields_of(3, 31, 12, 1969, 23, 59, 59);
    wsp_time_value v = {123, 7};
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 0);
    EXPECT_EQ(v.value, 123u);
    EXPECT_EQ(v.unit, 7u);
}

TEST(DateFromFields, SecondsBefore1970WrapTo32Bits) {
    wsp_date_fields f = fields_of(3, 31, 12, 1969, 23, 59, 58);
    wsp_time_value v = {};
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 1);
    EXPECT_EQ(v.value, 0xFFFFFFFEu);
}

// A calendar date of zero and a two-digit year lie outside what 32 bits of
// seconds cover: failures, output untouched.
TEST(DateFromFields, ZeroDateAndTwoDigitYearFail) {
    wsp_date_fields f;
    std::memset(&f, 0, sizeof f);
    wsp_time_value v = {55, 0};
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 0);
    EXPECT_EQ(v.value, 55u);
    f = fields_of(0, 6, 11, 94, 8, 49, 37);
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 0);
    EXPECT_EQ(v.value, 55u);
    f = fields_of(0, 1, 1, 2107, 0, 0, 0);
    EXPECT_EQ(wsp_date_from_fields(&f, &v), 0);
    EXPECT_EQ(v.value, 55u);
}

// ---- fields to text ----

TEST(DateFieldsText, IntermediateForm) {
    DateArea a;
    wsp_date_fields f = fields_of(0, 6, 11, 1994, 8, 49, 37);
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 1);
    EXPECT_EQ(a.text(), "Sun Nov 06 08:49:37 1994");
    EXPECT_TRUE(a.untouched_after(25));
}

TEST(DateFieldsText, TwoDigitPaddingAndYearUnpadded) {
    DateArea a;
    wsp_date_fields f = fields_of(6, 5, 1, 7, 1, 2, 3);
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 1);
    EXPECT_EQ(a.text(), "Sat Jan 05 01:02:03 7");
    f = fields_of(3, 0, 12, 2000, 0, 0, 0);
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 1);
    EXPECT_EQ(a.text(), "Wed Dec 00 00:00:00 2000");
    f = fields_of(1, 10, 6, 0, 10, 10, 10);
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 1);
    EXPECT_EQ(a.text(), "Mon Jun 10 10:10:10 0");
}

// The widest fields give 29 characters: far inside the 198-byte area.
TEST(DateFieldsText, WidestFieldsStayInsideTheArea) {
    DateArea a;
    wsp_date_fields f = fields_of(6, 255, 12, 65535, 255, 255, 255);
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 1);
    EXPECT_EQ(a.text(), "Sat Dec 255 255:255:255 65535");
    EXPECT_TRUE(a.untouched_after(30));
}

TEST(DateFieldsText, MonthThirteenOrMoreFails) {
    DateArea a;
    wsp_date_fields f = fields_of(0, 6, 13, 1994, 8, 49, 37);
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 0);
    f.month = 255;
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 0);
    f.month = 12;
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 1);
}

// Month 0 and weekday 7 would index outside the name tables: refused.
TEST(DateFieldsText, MonthZeroAndWeekdaySevenFail) {
    DateArea a;
    wsp_date_fields f = fields_of(0, 6, 0, 1994, 8, 49, 37);
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 0);
    f = fields_of(7, 6, 11, 1994, 8, 49, 37);
    EXPECT_EQ(wsp_date_fields_text(&f, a.get()), 0);
}

// ---- date value to HTTP-date text ----

TEST(DateValueText, Example1994) { EXPECT_EQ(value_text(784111777), "Sun, 06 Nov 1994 08:49:37 GMT"); }

TEST(DateValueText, Epoch) { EXPECT_EQ(value_text(0), "Thu, 01 Jan 1970 00:00:00 GMT"); }

TEST(DateValueText, BothSidesOf2038) {
    EXPECT_EQ(value_text(0x7FFFFFFF), "Tue, 19 Jan 2038 03:14:07 GMT");
    EXPECT_EQ(value_text(0x80000000u), "Tue, 19 Jan 2038 03:14:08 GMT");
    EXPECT_EQ(value_text(0xFFFFFFFFu), "Sun, 07 Feb 2106 06:28:15 GMT");
}

TEST(DateValueText, SingleDigitDayIsPadded) {
    EXPECT_EQ(value_text(784111777 - 86400), "Sat, 05 Nov 1994 08:49:37 GMT");
    EXPECT_EQ(value_text(1000000000), "Sun, 09 Sep 2001 01:46:40 GMT");
}

// The longest HTTP-date is 29 characters; it is written with its NUL and
// nothing else of the 198-byte area is touched.
TEST(DateValueText, WritesOnlyTheTextAndItsNul) {
    DateArea a;
    ASSERT_EQ(wsp_date_value_text(0xFFFFFFFFu, a.get()), WSP_OK);
    EXPECT_EQ(a.text().size(), 29u);
    EXPECT_TRUE(a.untouched_after(30));
}

// The text is the intermediate form's five words put back in HTTP-date
// order, in any zone (local time taken as GMT) and across its changes.
TEST(DateValueText, IsTheIntermediateTextReorderedInEveryZone) {
    const char *const zones[] = {"UTC", "America/New_York", "Asia/Kolkata", "Australia/Lord_Howe"};
    const char *saved = std::getenv("TZ");
    const std::string restore = saved != nullptr ? saved : "UTC";
    for (const char *zone : zones) {
        setenv("TZ", zone, 1);
        tzset();
        // Every 7,777,777 seconds plus a day's worth of steps around one DST change.
        for (uint64_t s = 0; s <= 0xFFFFFFFFu; s += 7777777u) {
            for (uint32_t step = 0; step < 4; ++step) {
                const uint32_t seconds = static_cast<uint32_t>(s + step * 3599u);
                wsp_time_value v = {seconds, 0};
                wsp_date_fields f;
                std::memset(&f, 0, sizeof f);
                wsp_date_to_fields(&v, &f);
                DateArea intermediate;
                ASSERT_EQ(wsp_date_fields_text(&f, intermediate.get()), 1);
                char words[5][16];
                ASSERT_EQ(std::sscanf(intermediate.get(), "%15s %15s %15s %15s %15s", words[0], words[1], words[2],
                                      words[3], words[4]),
                          5);
                std::string day = words[2];
                if (day.size() == 1) day = "0" + day;
                std::string expected = std::string(words[0]) + ", " + day + " " + words[1] + " " + words[4] + " " +
                                       words[3] + " GMT";
                ASSERT_EQ(value_text(seconds), expected) << zone << " " << seconds;
            }
        }
    }
    setenv("TZ", restore.c_str(), 1);
    tzset();
    EXPECT_EQ(value_text(784111777), "Sun, 06 Nov 1994 08:49:37 GMT");
}

TEST(DateValueText, NullOutputFails) { EXPECT_EQ(wsp_date_value_text(1, nullptr), WSP_ERR_FAIL); }

// ---- Date-value decoding ----

TEST(DecodeDate, LongIntegerToText) {
    InBytes in(bytes({0x04, 0x2E, 0xBC, 0x98, 0xA1}));
    const uint8_t *cur = in.data();
    DateArea a;
    EXPECT_EQ(wsp_decode_date(&cur, a.get(), in.size()), WSP_OK);
    EXPECT_EQ(a.text(), "Sun, 06 Nov 1994 08:49:37 GMT");
    EXPECT_EQ(cur, in.data() + 5);
}

TEST(DecodeDate, ZeroLengthIsTheEpoch) {
    InBytes in(bytes({0x00}));
    const uint8_t *cur = in.data();
    DateArea a;
    EXPECT_EQ(wsp_decode_date(&cur, a.get(), 1), WSP_OK);
    EXPECT_EQ(a.text(), "Thu, 01 Jan 1970 00:00:00 GMT");
    EXPECT_EQ(cur, in.data() + 1);
}

TEST(DecodeDate, ShortValuesAndTrailingOctetsLeftAlone) {
    InBytes in(bytes({0x01, 0xFF, 0x99}));
    const uint8_t *cur = in.data();
    DateArea a;
    EXPECT_EQ(wsp_decode_date(&cur, a.get(), 3), WSP_OK);
    EXPECT_EQ(a.text(), "Thu, 01 Jan 1970 00:04:15 GMT");
    EXPECT_EQ(cur, in.data() + 2);
}

// The reader gets the available octets minus one: the length octet and all
// value octets must lie inside the input.
TEST(DecodeDate, TruncatedAtEveryLength) {
    const Bytes full = bytes({0x04, 0x2E, 0xBC, 0x98, 0xA1});
    for (uint16_t n = 1; n < 5; ++n) {
        InBytes in(Bytes(full.begin(), full.begin() + n));
        const uint8_t *cur = in.data();
        DateArea a;
        EXPECT_EQ(wsp_decode_date(&cur, a.get(), n), WSP_ERR_FAIL) << n;
        EXPECT_EQ(cur, in.data()) << n;
        EXPECT_TRUE(a.untouched()) << n;
    }
}

TEST(DecodeDate, ExactlyAvailableSucceeds) {
    InBytes in(bytes({0x02, 0x01, 0x00}));
    const uint8_t *cur = in.data();
    DateArea a;
    EXPECT_EQ(wsp_decode_date(&cur, a.get(), 3), WSP_OK);
    EXPECT_EQ(a.text(), "Thu, 01 Jan 1970 00:04:16 GMT");
    EXPECT_EQ(cur, in.data() + 3);
}

// With nothing available the count would wrap to 65535 and the length octet
// would be read from outside the input: refused without reading.
TEST(DecodeDate, NothingAvailableFails) {
    InBytes in(bytes({0x00}));
    const uint8_t *cur = in.data();
    DateArea a;
    EXPECT_EQ(wsp_decode_date(&cur, a.get(), 0), WSP_ERR_FAIL);
    EXPECT_EQ(cur, in.data());
    EXPECT_TRUE(a.untouched());
}

TEST(DecodeDate, LengthAboveFourFails) {
    InBytes in(bytes({0x05, 0x00, 0x2E, 0xBC, 0x98, 0xA1}));
    const uint8_t *cur = in.data();
    DateArea a;
    EXPECT_EQ(wsp_decode_date(&cur, a.get(), in.size()), WSP_ERR_FAIL);
    EXPECT_EQ(cur, in.data());
    InBytes quote(bytes({0x1F, 0x01, 0x00}));
    cur = quote.data();
    EXPECT_EQ(wsp_decode_date(&cur, a.get(), quote.size()), WSP_ERR_FAIL);
    EXPECT_EQ(cur, quote.data());
}

TEST(DecodeDate, NullArgumentsFail) {
    InBytes in(bytes({0x00}));
    const uint8_t *cur = in.data();
    DateArea a;
    EXPECT_EQ(wsp_decode_date(nullptr, a.get(), 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_decode_date(&cur, nullptr, 1), WSP_ERR_FAIL);
    EXPECT_EQ(cur, in.data());
}

// ---- HTTP-date parsing ----

TEST(ParseHttpDate, Rfc1123Example) {
    Parsed p = parse("sun, 06 nov 1994 08:49:37 gmt");
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, k1994Bytes);
}

TEST(ParseHttpDate, AsctimeExample) {
    Parsed p = parse("sun nov 6 08:49:37 1994");
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, k1994Bytes);
}

// The two-digit year is taken as written (year 94): mktime cannot give it
// a 32-bit value, so the Long-integer 0 goes out.
TEST(ParseHttpDate, Rfc850ExampleTwoDigitYearAsWritten) {
    Parsed p = parse("sunday, 06-nov-94 08:49:37 gmt");
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, kZeroBytes);
}

TEST(ParseHttpDate, Rfc850FourDigitYear) {
    Parsed p = parse("sunday, 06-nov-1994 08:49:37 gmt");
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, k1994Bytes);
}

// No range test on the RFC 850 year: 2070 is accepted there.
TEST(ParseHttpDate, Rfc850YearHasNoRangeTest) {
    Parsed p = parse("monday, 06-jan-2070 00:00:00 gmt");
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, "04 BC 1F AB 00"); // 3156192000
}

TEST(ParseHttpDate, YearRangeRfc1123) {
    EXPECT_EQ(parse("sun, 06 nov 2070 08:49:37 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun, 06 nov 1969 08:49:37 gmt").status, WSP_ERR_FAIL);
    Parsed lo = parse("thu, 01 jan 1970 00:00:00 gmt");
    EXPECT_EQ(lo.status, WSP_OK);
    EXPECT_EQ(lo.out, kZeroBytes);
    Parsed hi = parse("tue, 31 dec 2069 23:59:59 gmt");
    EXPECT_EQ(hi.status, WSP_OK);
    EXPECT_EQ(hi.out, "04 BC 19 13 7F"); // 3155759999
}

TEST(ParseHttpDate, YearRangeAsctime) {
    EXPECT_EQ(parse("sun nov 6 08:49:37 2070").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun nov 6 08:49:37 1969").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun nov 6 08:49:37 94").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("tue dec 31 23:59:59 2069").out, "04 BC 19 13 7F");
}

// The year is tested as parsed, before it is kept in 16 bits: 1970 + 65536
// does not pass.
TEST(ParseHttpDate, YearTestedBeforeItIsNarrowed) {
    EXPECT_EQ(parse("sun, 06 nov 67506 08:49:37 gmt").status, WSP_ERR_FAIL);
}

TEST(ParseHttpDate, Rfc1123WithoutGmtAccepted) {
    Parsed p = parse("sun, 06 nov 1994 08:49:37");
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, k1994Bytes);
}

TEST(ParseHttpDate, Rfc850WithoutGmtAccepted) {
    Parsed p = parse("sunday, 06-nov-1994 08:49:37");
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, k1994Bytes);
}

TEST(ParseHttpDate, WordAfterGmtRefused) {
    EXPECT_EQ(parse("sun, 06 nov 1994 08:49:37 gmt x").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sunday, 06-nov-1994 08:49:37 gmt gmt").status, WSP_ERR_FAIL);
}

TEST(ParseHttpDate, TrailingWordOtherThanGmtRefused) {
    EXPECT_EQ(parse("sun, 06 nov 1994 08:49:37 utc").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun, 06 nov 1994 08:49:37 GMT").status, WSP_ERR_FAIL); // callers lower-case first
    EXPECT_EQ(parse("sunday, 06-nov-1994 08:49:37 +0000").status, WSP_ERR_FAIL);
}

TEST(ParseHttpDate, AsctimeHasNoGmt) {
    EXPECT_EQ(parse("sun nov 6 08:49:37 1994 gmt").status, WSP_ERR_FAIL);
}

TEST(ParseHttpDate, FirstWordDecidesTheForm) {
    // Without a comma only the short names are known.
    EXPECT_EQ(parse("sunday 06 nov 1994 08:49:37 gmt").status, WSP_ERR_FAIL);
    // A short name with a comma is RFC 1123: "06-nov-94" is then only a day
    // and "08:49:37" is no month.
    EXPECT_EQ(parse("sun, 06-nov-94 08:49:37 gmt").status, WSP_ERR_FAIL);
    // Five characters or more with a comma is RFC 850: "sun," + anything
    // longer is looked up among the full names.
    EXPECT_EQ(parse("sunn, 06 nov 1994 08:49:37 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sunday, 06 nov 1994 08:49:37 gmt").status, WSP_ERR_FAIL);
}

TEST(ParseHttpDate, DayNameLookupIsExact) {
    EXPECT_EQ(parse("Sun, 06 nov 1994 08:49:37 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun,, 06 nov 1994 08:49:37 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("xyz nov 6 08:49:37 1994").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("funday, 06-nov-1994 08:49:37 gmt").status, WSP_ERR_FAIL);
}

// The weekday is only looked up; the date itself decides the value.
TEST(ParseHttpDate, WrongWeekdayIsNotChecked) {
    EXPECT_EQ(parse("wed, 06 nov 1994 08:49:37 gmt").out, k1994Bytes);
    EXPECT_EQ(parse("saturday, 06-nov-1994 08:49:37 gmt").out, k1994Bytes);
    EXPECT_EQ(parse("fri nov 6 08:49:37 1994").out, k1994Bytes);
}

TEST(ParseHttpDate, UnknownMonthRefused) {
    EXPECT_EQ(parse("sun, 06 nox 1994 08:49:37 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun, 06 november 1994 08:49:37 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sunday, 06-nox-94 08:49:37 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun nox 6 08:49:37 1994").status, WSP_ERR_FAIL);
}

TEST(ParseHttpDate, FourTimePartsRefused) {
    EXPECT_EQ(parse("sun, 06 nov 1994 08:49:37:00 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sunday, 06-nov-1994 08:49:37:00 gmt").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun nov 6 08:49:37:00 1994").status, WSP_ERR_FAIL);
}

TEST(ParseHttpDate, MissingTimePartsStayZero) {
    EXPECT_EQ(parse("sun, 06 nov 1994 08:49 gmt").out, "04 2E BC 98 7C");   // 784111740
    EXPECT_EQ(parse("sun, 06 nov 1994 08 gmt").out, "04 2E BC 8D 00");      // 784108800
    EXPECT_EQ(parse("sun, 06 nov 1994 8:49:37 gmt").out, k1994Bytes);
}

TEST(ParseHttpDate, Rfc850FourthDatePartRefused) {
    EXPECT_EQ(parse("sunday, 06-nov-1994-1 08:49:37 gmt").status, WSP_ERR_FAIL);
}

// Parts that are missing stay 0 and the text is still converted; where
// mktime then has no 32-bit value, 0 goes out.
TEST(ParseHttpDate, MissingPartsStayZero) {
    EXPECT_EQ(parse("sun,").out, kZeroBytes);
    EXPECT_EQ(parse("sun,").status, WSP_OK);
    EXPECT_EQ(parse("sunday,").out, kZeroBytes);
    EXPECT_EQ(parse("sun").out, kZeroBytes);
    EXPECT_EQ(parse("sun, 06 nov").out, kZeroBytes);          // year 0
    EXPECT_EQ(parse("sunday, 06-nov 08:49:37 gmt").out, kZeroBytes);
    Parsed p = parse("sun, 06 nov 1994");
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, "04 2E BC 1C 80"); // 784080000, midnight
    EXPECT_EQ(parse("sun nov 6 08:49:37").out, kZeroBytes);
}

TEST(ParseHttpDate, RunsOfSpacesAreOneSeparator) {
    EXPECT_EQ(parse("sun,   06 nov  1994 08:49:37   gmt").out, k1994Bytes);
    EXPECT_EQ(parse("  sun nov   6 08:49:37 1994").out, k1994Bytes);
    EXPECT_EQ(parse("sun nov 6 08:49:37 1994 ").out, k1994Bytes);
}

// Two or more trailing spaces leave one empty word behind the last one (the
// tokenizer's rule for a text made only of delimiters), and the remaining
// count still allows taking it: a surplus word, refused.
TEST(ParseHttpDate, TrailingSpacesMakeASurplusWord) {
    EXPECT_EQ(parse("sun nov 6 08:49:37 1994  ").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("sun, 06 nov 1994 08:49:37 gmt  ").status, WSP_ERR_FAIL);
    // With leading spaces the count has room for the empty word as well.
    EXPECT_EQ(parse("  sun nov 6 08:49:37 1994  ").status, WSP_ERR_FAIL);
}

TEST(ParseHttpDate, EmptyOrBlankTextRefused) {
    EXPECT_EQ(parse("").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("").out, "");
    EXPECT_EQ(parse("   ").status, WSP_ERR_FAIL);
    EXPECT_EQ(parse("   ").out, "");
}

TEST(ParseHttpDate, NumbersAreKeptAsEightBits) {
    // Day 262 is kept as 6.
    EXPECT_EQ(parse("sun, 262 nov 1994 08:49:37 gmt").out, k1994Bytes);
    // Hour 264 is kept as 8.
    EXPECT_EQ(parse("sun, 06 nov 1994 264:49:37 gmt").out, k1994Bytes);
}

TEST(ParseHttpDate, TextIsCutInPlace) {
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    OutBuffer out(16);
    ASSERT_EQ(wsp_parse_http_date(t.get(), out.get()), WSP_OK);
    EXPECT_STREQ(t.get(), "sun,");
}

TEST(ParseHttpDate, AppendsAfterWhatIsThere) {
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    OutBuffer out(16, 2);
    out->length = 1;
    ASSERT_EQ(wsp_parse_http_date(t.get(), out.get()), WSP_OK);
    EXPECT_EQ(out->length, 6);
    EXPECT_EQ(hex(out->data + 3, 5), k1994Bytes);
}

TEST(ParseHttpDate, OutputExactlyFullSucceeds) {
    Parsed p = parse("sun, 06 nov 1994 08:49:37 gmt", 5);
    EXPECT_EQ(p.status, WSP_OK);
    EXPECT_EQ(p.out, k1994Bytes);
}

// One byte short: the Long-integer writer's failure is passed on.
TEST(ParseHttpDate, OutputOneByteShortFails) {
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    OutBuffer out(4);
    EXPECT_EQ(wsp_parse_http_date(t.get(), out.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->data[0], 0x04);
}

TEST(ParseHttpDate, NullArgumentsFail) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_parse_http_date(nullptr, out.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
    TextCopy t("sun, 06 nov 1994 08:49:37 gmt");
    EXPECT_EQ(wsp_parse_http_date(t.get(), nullptr), WSP_ERR_FAIL);
}

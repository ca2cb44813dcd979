// Date-values (seconds) to HTTP-date text and back.
//
// Both directions go through the local-time functions (mktime and the
// re-entrant localtime_r) and the text always says "GMT": the handset's
// local time is taken as GMT both ways, on purpose.  Every text is built in
// a 198-byte area on the stack; a text of 198 characters or more fails.
#include "date.h"

#include <cstring>
#include <ctime>

#include "primitives.h"

constexpr const char *const wsp_month_names[12] = {
    "jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec",
};
constexpr const char *const wsp_day_names[7] = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
constexpr const char *const wsp_day_names_comma[7] = {"sun,", "mon,", "tue,", "wed,", "thu,", "fri,", "sat,"};
constexpr const char *const wsp_full_day_names_comma[7] = {
    "sunday,", "monday,", "tuesday,", "wednesday,", "thursday,", "friday,", "saturday,",
};

namespace {

// The parser leaves this in the marker field for the two comma forms (0
// for the asctime form).  Nothing reads it back.
constexpr uint16_t kCommaFormMarker = 359;

// A text in a WSP_TEXT_CAPACITY area.  `len` counts every character
// appended, also those that no longer fit, so that the length tests see the
// whole text; characters are only stored while they leave room for the NUL.
struct DateText {
    char *area;
    uint16_t len = 0;

    explicit DateText(char *a) : area(a) { area[0] = '\0'; }

    void put(char c) {
        if (len < WSP_TEXT_CAPACITY - 1) {
            area[len] = c;
            area[len + 1] = '\0';
        }
        len = static_cast<uint16_t>(len + 1);
    }
    void add(const char *s) {
        for (; *s != '\0'; ++s) put(*s);
    }
    // A name with its first letter in upper case ("sun" -> "Sun").
    void add_capitalised(const char *s) {
        if (*s == '\0') return;
        put(static_cast<char>(wsp_ascii_upper(static_cast<uint8_t>(*s))));
        add(s + 1);
    }
    void add_number(uint32_t v) {
        char digits[12];
        add(wsp_uint_to_text(v, digits + sizeof digits - 1));
    }
    // At least two digits: a single digit gets a "0" in front.
    void add_two_digits(uint32_t v) {
        if (v < 10) put('0');
        add_number(v);
    }
    bool full() const { return len >= WSP_TEXT_CAPACITY; }
};

int find_exact(const char *const *names, int count, const char *token) {
    for (int i = 0; i < count; ++i)
        if (std::strcmp(names[i], token) == 0) return i;
    return -1;
}

uint32_t decimal(const char *token) { return wsp_strtou32(token, nullptr, 10); }

} // namespace

// mktime reports failure as -1.  A result that a 32-bit seconds count cannot
// carry (before 1901-12-13 20:45:52 or after 2106-02-07 06:28:15) counts as a
// failure too: the parser relies on a calendar date of zero (a text with
// only a day name) and on a two-digit RFC 850 year failing here rather than
// wrapping into some unrelated date (ParseHttpDate.MissingPartsStayZero,
// ParseHttpDate.Rfc850ExampleTwoDigitYearAsWritten, DateFromFields.ZeroDateAndTwoDigitYearFail).
int wsp_date_from_fields(const wsp_date_fields *fields, wsp_time_value *out) {
    if (fields == nullptr || out == nullptr) return 0;
    struct tm t;
    std::memset(&t, 0, sizeof t);
    t.tm_sec = fields->second;
    t.tm_min = fields->minute;
    t.tm_hour = fields->hour;
    t.tm_mday = fields->day;
    t.tm_mon = fields->month - 1;
    t.tm_year = fields->year - 1900;
    t.tm_wday = fields->weekday;
    t.tm_yday = fields->yday;
    t.tm_isdst = fields->dst;
    const time_t result = mktime(&t);
    if (result == static_cast<time_t>(-1)) return 0;
    const long long seconds = static_cast<long long>(result);
    if (seconds < -0x80000000LL || seconds > 0xFFFFFFFFLL) return 0;
    out->value = static_cast<uint32_t>(seconds);
    out->unit = 0;
    return 1;
}

int wsp_date_to_fields(const wsp_time_value *in, wsp_date_fields *fields) {
    if (in == nullptr || fields == nullptr) return 1;
    // Milliseconds: the high part of value * 274877907 shifted right by 38
    // is value / 1000 exactly for every 32-bit value.
    const uint32_t seconds =
        in->unit == 1 ? static_cast<uint32_t>((static_cast<uint64_t>(in->value) * 274877907u) >> 38) : in->value;
    const time_t when = static_cast<time_t>(seconds);
    struct tm t;
    std::memset(&t, 0, sizeof t);
    // With a 64-bit time_t every 32-bit count converts; should localtime_r
    // ever refuse one, the fields come from the zeroed record instead.
    if (localtime_r(&when, &t) == nullptr) std::memset(&t, 0, sizeof t);
    fields->hour = static_cast<uint8_t>(t.tm_hour);
    fields->minute = static_cast<uint8_t>(t.tm_min);
    fields->second = static_cast<uint8_t>(t.tm_sec);
    fields->unused = 0;
    fields->day = static_cast<uint8_t>(t.tm_mday);
    fields->month = static_cast<uint8_t>(t.tm_mon + 1);
    fields->year = static_cast<uint16_t>(t.tm_year + 1900);
    fields->weekday = static_cast<uint8_t>(t.tm_wday);
    fields->dst = static_cast<uint8_t>(t.tm_isdst);
    fields->yday = static_cast<uint16_t>(t.tm_yday);
    fields->marker = 0;
    return 1;
}

// "Sun Nov 05 08:49:37 1994": day, hour, minute and second always two
// digits, the year as it is.  The length is tested after each group.  A
// weekday above 6 or a month of 0 would index outside the name tables and
// fails like a month of 13 or more.  A text of exactly 198 characters would
// need its NUL one byte past the area: it is refused here, which is what
// the date-value text makes of it anyway (in practice the text never grows
// past 29 characters).
int wsp_date_fields_text(const wsp_date_fields *fields, char *out) {
    if (fields == nullptr || out == nullptr) return 0;
    DateText t(out);
    if (fields->weekday >= 7) return 0;
    t.add_capitalised(wsp_day_names[fields->weekday]);
    t.put(' ');
    if (t.full()) return 0;
    if (fields->month >= 13 || fields->month == 0) return 0;
    t.add_capitalised(wsp_month_names[fields->month - 1]);
    t.put(' ');
    if (t.full()) return 0;
    t.add_two_digits(fields->day);
    t.put(' ');
    if (t.full()) return 0;
    t.add_two_digits(fields->hour);
    t.put(':');
    if (t.full()) return 0;
    t.add_two_digits(fields->minute);
    t.put(':');
    t.add_two_digits(fields->second);
    t.put(' ');
    if (t.full()) return 0;
    t.add_number(fields->year);
    return t.full() ? 0 : 1;
}

// "Sun, 05 Nov 1994 08:49:37 GMT": the words of the intermediate text
// above ("Sun Nov 05 08:49:37 1994") in HTTP-date order, built straight
// from the fields.  The intermediate day is always two digits, so it never
// needs the "0" that a one-character day would get, and none of its words
// holds a space, so cutting it at spaces gives back exactly these words.
// The text is 29 characters, far below the limit; fields that name no day
// or month fail as the intermediate text does.
int wsp_date_value_text(uint32_t seconds, char *out) {
    if (out == nullptr) return kWspErrFail;
    wsp_time_value value = {seconds, 0};
    wsp_date_fields fields;
    std::memset(&fields, 0, sizeof fields);
    wsp_date_to_fields(&value, &fields);
    if (fields.weekday >= 7 || fields.month == 0 || fields.month >= 13) return kWspErrFail;

    DateText t(out);
    t.add_capitalised(wsp_day_names[fields.weekday]);
    t.add(", ");
    t.add_two_digits(fields.day);
    t.put(' ');
    t.add_capitalised(wsp_month_names[fields.month - 1]);
    t.put(' ');
    t.add_number(fields.year);
    t.put(' ');
    t.add_two_digits(fields.hour);
    t.put(':');
    t.add_two_digits(fields.minute);
    t.put(':');
    t.add_two_digits(fields.second);
    t.add(" GMT");
    return kWspOk;
}

// The Long-integer reader keeps the length octet and the value octets inside
// the available octets; with none available it refuses before reading.  The
// cursor is left where it was on every failure.
int wsp_decode_date(const uint8_t **cursor, char *out, uint16_t avail) {
    if (cursor == nullptr || *cursor == nullptr || out == nullptr) return kWspErrFail;
    const uint8_t *const start = *cursor;
    uint32_t seconds = 0;
    if (wsp_read_long_int(cursor, &seconds, avail) != kWspOk) return kWspErrFail;
    if (wsp_date_value_text(seconds, out) != kWspOk) {
        *cursor = start;
        return kWspErrFail;
    }
    return kWspOk;
}

namespace {

// The words of a date text, taken one by one at single spaces (runs of
// spaces are one separator).  Each word taken uses up its length plus one
// of the remaining count; once the count has gone below zero the text is
// exhausted and no further word is taken.  The count is a plain int: the
// text is a header value and far below 2^31 characters.
class DateWords {
  public:
    explicit DateWords(char *text) : pos_(text), remaining_(static_cast<int>(std::strlen(text))) {}

    char *next() {
        if (remaining_ < 0) return nullptr;
        char *word = wsp_strtoken(&pos_, " ");
        if (word == nullptr) {
            remaining_ = -1;
            return nullptr;
        }
        remaining_ -= static_cast<int>(std::strlen(word)) + 1;
        return word;
    }

  private:
    char *pos_;
    int remaining_;
};

// "08:49:37": hour, minute and second, each kept as 8 bits; a missing part
// leaves its field 0, a fourth part fails.
bool parse_time(char *word, wsp_date_fields *f) {
    uint8_t *const parts[3] = {&f->hour, &f->minute, &f->second};
    char *pos = word;
    for (int i = 0;; ++i) {
        char *part = wsp_strtoken(&pos, ":");
        if (part == nullptr) return true;
        if (i == 3) return false;
        *parts[i] = static_cast<uint8_t>(decimal(part));
    }
}

bool set_month(const char *word, wsp_date_fields *f) {
    int m = find_exact(wsp_month_names, 12, word);
    if (m < 0) return false;
    f->month = static_cast<uint8_t>(m + 1);
    return true;
}

// RFC 1123 and asctime years must lie in 1970..2069.
bool set_year_in_range(const char *word, wsp_date_fields *f) {
    uint32_t y = decimal(word);
    if (y < 1970 || y > 2069) return false;
    f->year = static_cast<uint16_t>(y);
    return true;
}

// "06-nov-94": day, month name and year.  The year is kept as written: a
// two-digit year is not widened and not range-tested.  A missing part leaves
// its field 0; a fourth part fails.
bool parse_850_date(char *word, wsp_date_fields *f) {
    char *pos = word;
    for (int i = 0;; ++i) {
        char *part = wsp_strtoken(&pos, "-");
        if (part == nullptr) return true;
        switch (i) {
        case 0:
            f->day = static_cast<uint8_t>(decimal(part));
            break;
        case 1:
            if (!set_month(part, f)) return false;
            break;
        case 2:
            f->year = static_cast<uint16_t>(decimal(part));
            break;
        default:
            return false;
        }
    }
}

// What one word of a date form holds, in the order the form writes them.
enum class date_word : uint8_t { month, day, time, year, day_month_year };

// A date form: the names its first word takes, the marker it leaves in
// the fields, its words after the day name and whether it may end in "gmt".
struct date_form {
    const char *const *day_names;
    uint16_t marker;
    uint8_t word_count;
    date_word words[4];
    bool may_end_in_gmt;
};

// asctime: "sun nov 6 08:49:37 1994"; no "gmt" in this form.
constexpr date_form kAsctimeForm = {
    wsp_day_names, 0, 4, {date_word::month, date_word::day, date_word::time, date_word::year}, false};
// RFC 1123: "sun, 06 nov 1994 08:49:37 gmt".
constexpr date_form kRfc1123Form = {wsp_day_names_comma,
                                    kCommaFormMarker,
                                    4,
                                    {date_word::day, date_word::month, date_word::year, date_word::time},
                                    true};
// RFC 850: "sunday, 06-nov-94 08:49:37 gmt".
constexpr date_form kRfc850Form = {
    wsp_full_day_names_comma, kCommaFormMarker, 2, {date_word::day_month_year, date_word::time}, true};

// Reads one word into its field; false refuses the text.
bool read_date_word(date_word kind, char *word, wsp_date_fields *f) {
    switch (kind) {
    case date_word::month:
        return set_month(word, f);
    case date_word::day:
        f->day = static_cast<uint8_t>(decimal(word));
        return true;
    case date_word::time:
        return parse_time(word, f);
    case date_word::year:
        return set_year_in_range(word, f);
    case date_word::day_month_year:
        return parse_850_date(word, f);
    }
    return false;
}

// Fills the fields from the words of the text.  true: convert what was
// found (missing parts stay 0); false: the text is refused.  The first word
// picks the form: no trailing comma is asctime, a short one RFC 1123, a
// long one RFC 850.
bool parse_words(char *text, wsp_date_fields *f) {
    DateWords words(text);
    char *first = words.next();
    // An empty text (or one of spaces only) names no day: refused.
    if (first == nullptr) return false;
    const size_t n = std::strlen(first);
    const bool comma = n > 0 && first[n - 1] == ',';
    const date_form &form = !comma ? kAsctimeForm : n < 5 ? kRfc1123Form : kRfc850Form;

    int day = find_exact(form.day_names, 7, first);
    if (day < 0) return false;
    f->weekday = static_cast<uint8_t>(day);
    f->marker = form.marker;
    for (uint8_t i = 0; i < form.word_count; ++i) {
        char *w = words.next();
        if (w == nullptr) return true;
        if (!read_date_word(form.words[i], w, f)) return false;
    }
    // The comma forms may end in "gmt", and in nothing else; asctime ends
    // with its year.
    char *w = words.next();
    if (w == nullptr) return true;
    if (!form.may_end_in_gmt || std::strcmp(w, "gmt") != 0) return false;
    return words.next() == nullptr;
}

} // namespace

// When mktime cannot convert the fields (a text with missing parts, a
// two-digit RFC 850 year) the text is still accepted and the Long-integer 0
// goes out in its place.
int wsp_parse_http_date(char *text, wsp_buffer *out) {
    if (text == nullptr || out == nullptr) return kWspErrFail;
    wsp_date_fields fields;
    std::memset(&fields, 0, sizeof fields);
    if (!parse_words(text, &fields)) return kWspErrFail;
    wsp_time_value value = {0, 0};
    if (wsp_date_from_fields(&fields, &value) == 0) value.value = 0;
    return wsp_append_long_int(value.value, out);
}

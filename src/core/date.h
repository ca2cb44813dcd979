// Date-values (Long-integer seconds) to HTTP-date text and back.  Both
// directions go through the local-time functions and always say "GMT": the
// handset's local time is taken as GMT in both directions.
#ifndef WSP_CORE_DATE_H
#define WSP_CORE_DATE_H

#include <cstdint>

#include "tarnwspencdec.h"
#include "text_limits.h"

// Every date text is built in an area of WSP_TEXT_CAPACITY bytes; a text of
// that many characters or more is a failure.

struct wsp_date_fields {
    uint8_t hour;    // 0..23
    uint8_t minute;  // 0..59
    uint8_t second;  // 0..60
    uint8_t unused;  // not used
    uint8_t day;     // 1..31
    uint8_t month;   // 1..12
    uint16_t year;   // full year
    uint8_t weekday; // 0 = Sunday
    uint8_t dst;     // tm_isdst
    uint16_t yday;   // tm_yday
    uint16_t marker; // read by no conversion
};

struct wsp_time_value {
    uint32_t value;
    uint32_t unit; // 1: milliseconds, anything else: seconds
};

extern const char *const wsp_month_names[12];
extern const char *const wsp_day_names[7];
extern const char *const wsp_day_names_comma[7];
extern const char *const wsp_full_day_names_comma[7];

// 1 on success, 0 when mktime fails (output untouched).
int wsp_date_from_fields(const wsp_date_fields *fields, wsp_time_value *out);
// Always 1.
int wsp_date_to_fields(const wsp_time_value *in, wsp_date_fields *fields);
// "Sun Nov 05 08:49:37 1994" into out (WSP_TEXT_CAPACITY bytes); 1 or 0.
int wsp_date_fields_text(const wsp_date_fields *fields, char *out);
// "Sun, 05 Nov 1994 08:49:37 GMT" into out (WSP_TEXT_CAPACITY bytes).
int wsp_date_value_text(uint32_t seconds, char *out);
// Long-integer at the cursor to date text (out: WSP_TEXT_CAPACITY bytes).
int wsp_decode_date(const uint8_t **cursor, char *out, uint16_t avail);
// Lower-case HTTP-date text (cut in place) appended as a Long-integer.
int wsp_parse_http_date(char *text, wsp_buffer *out);

#endif

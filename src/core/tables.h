// The WSP assigned-number tables, what each encoding version admits, and the
// searches the codecs run over the tables.  Every table is constant data
// with a fixed row count and a significant row order; no table has a
// terminating row.  Each codec picks the search (direction, range, case
// rule) that belongs to it; the helpers below give, in constant time, the
// row that a plain scan in that direction would have stopped at.
//
// Storage: a table keeps its names back to back in one pool of characters
// and, per row, the offset of its name and its 16-bit code, so that no row
// needs a pointer (and the shared object no relocation per row).  A hash
// index over the lower-cased names, built at compile time from the same
// rows, lists the rows of each name in row order.
#ifndef WSP_CORE_TABLES_H
#define WSP_CORE_TABLES_H

#include <cstdint>

#include "tarnwspencdec.h"

// ---- row counts ----
inline constexpr uint16_t WSP_HEADER_NAME_ROWS = 72;
inline constexpr uint16_t WSP_PARAM_NAME_ROWS = 30;
inline constexpr uint16_t WSP_VERSION_ROWS = 4;
inline constexpr uint16_t WSP_PUSH_APP_ID_ROWS = 14;
inline constexpr uint16_t WSP_STATUS_CODE_ROWS = 7;
inline constexpr uint16_t WSP_TRANSFER_CODING_ROWS = 7;
inline constexpr uint16_t WSP_CACHE_DIRECTIVE_ROWS = 12;
inline constexpr uint16_t WSP_DISPOSITION_ROWS = 3;
inline constexpr uint16_t WSP_METHOD_ROWS = 7;
inline constexpr uint16_t WSP_RANGE_UNIT_ROWS = 2;
inline constexpr uint16_t WSP_CONTENT_CODING_ROWS = 3;
inline constexpr uint16_t WSP_CONTENT_TYPE_ROWS = 82;
inline constexpr uint16_t WSP_LANGUAGE_ROWS = 139;
inline constexpr uint16_t WSP_LANGUAGE_NAME_ROWS = 143;
inline constexpr uint16_t WSP_LANGUAGE_RUN_ROWS = WSP_LANGUAGE_ROWS + WSP_LANGUAGE_NAME_ROWS; // 282
inline constexpr uint16_t WSP_CHARSET_ROWS = 244;

// ---- well-known header codes (page 1) ----
// Index of wsp_header_names and of both dispatch tables.  Six names came
// back at a higher code in a later encoding version; the later code carries
// the version that introduced it.
enum wsp_header_code : uint8_t {
    WSP_HDR_ACCEPT = 0x00,
    WSP_HDR_ACCEPT_CHARSET = 0x01,
    WSP_HDR_ACCEPT_ENCODING = 0x02,
    WSP_HDR_ACCEPT_LANGUAGE = 0x03,
    WSP_HDR_ACCEPT_RANGES = 0x04,
    WSP_HDR_AGE = 0x05,
    WSP_HDR_ALLOW = 0x06,
    WSP_HDR_AUTHORIZATION = 0x07,
    WSP_HDR_CACHE_CONTROL = 0x08,
    WSP_HDR_CONNECTION = 0x09,
    WSP_HDR_CONTENT_BASE = 0x0A,
    WSP_HDR_CONTENT_ENCODING = 0x0B,
    WSP_HDR_CONTENT_LANGUAGE = 0x0C,
    WSP_HDR_CONTENT_LENGTH = 0x0D,
    WSP_HDR_CONTENT_LOCATION = 0x0E,
    WSP_HDR_CONTENT_MD5 = 0x0F,
    WSP_HDR_CONTENT_RANGE = 0x10,
    WSP_HDR_CONTENT_TYPE = 0x11,
    WSP_HDR_DATE = 0x12,
    WSP_HDR_ETAG = 0x13,
    WSP_HDR_EXPIRES = 0x14,
    WSP_HDR_FROM = 0x15,
    WSP_HDR_HOST = 0x16,
    WSP_HDR_IF_MODIFIED_SINCE = 0x17,
    WSP_HDR_IF_MATCH = 0x18,
    WSP_HDR_IF_NONE_MATCH = 0x19,
    WSP_HDR_IF_RANGE = 0x1A,
    WSP_HDR_IF_UNMODIFIED_SINCE = 0x1B,
    WSP_HDR_LOCATION = 0x1C,
    WSP_HDR_LAST_MODIFIED = 0x1D,
    WSP_HDR_MAX_FORWARDS = 0x1E,
    WSP_HDR_PRAGMA = 0x1F,
    WSP_HDR_PROXY_AUTHENTICATE = 0x20,
    WSP_HDR_PROXY_AUTHORIZATION = 0x21,
    WSP_HDR_PUBLIC = 0x22,
    WSP_HDR_RANGE = 0x23,
    WSP_HDR_REFERER = 0x24,
    WSP_HDR_RETRY_AFTER = 0x25,
    WSP_HDR_SERVER = 0x26,
    WSP_HDR_TRANSFER_ENCODING = 0x27,
    WSP_HDR_UPGRADE = 0x28,
    WSP_HDR_USER_AGENT = 0x29,
    WSP_HDR_VARY = 0x2A,
    WSP_HDR_VIA = 0x2B,
    WSP_HDR_WARNING = 0x2C,
    WSP_HDR_WWW_AUTHENTICATE = 0x2D,
    WSP_HDR_CONTENT_DISPOSITION = 0x2E,
    WSP_HDR_X_WAP_APPLICATION_ID = 0x2F,
    WSP_HDR_X_WAP_CONTENT_URI = 0x30,
    WSP_HDR_X_WAP_INITIATOR_URI = 0x31,
    WSP_HDR_ACCEPT_APPLICATION = 0x32,
    WSP_HDR_BEARER_INDICATION = 0x33,
    WSP_HDR_PUSH_FLAG = 0x34,
    WSP_HDR_PROFILE = 0x35,
    WSP_HDR_PROFILE_DIFF = 0x36,
    WSP_HDR_PROFILE_WARNING = 0x37,
    WSP_HDR_EXPECT = 0x38,
    WSP_HDR_TE = 0x39,
    WSP_HDR_TRAILER = 0x3A,
    WSP_HDR_ACCEPT_CHARSET_1_3 = 0x3B,
    WSP_HDR_ACCEPT_ENCODING_1_3 = 0x3C,
    WSP_HDR_CACHE_CONTROL_1_3 = 0x3D,
    WSP_HDR_CONTENT_RANGE_1_3 = 0x3E,
    WSP_HDR_X_WAP_TOD = 0x3F,
    WSP_HDR_CONTENT_ID = 0x40,
    WSP_HDR_SET_COOKIE = 0x41,
    WSP_HDR_COOKIE = 0x42,
    WSP_HDR_ENCODING_VERSION = 0x43,
    WSP_HDR_PROFILE_WARNING_1_4 = 0x44,
    WSP_HDR_CONTENT_DISPOSITION_1_4 = 0x45,
    WSP_HDR_X_WAP_SECURITY = 0x46,
    WSP_HDR_CACHE_CONTROL_1_4 = 0x47,
};
static_assert(WSP_HDR_CACHE_CONTROL_1_4 + 1 == WSP_HEADER_NAME_ROWS, "one code per header-name row");

// ---- encoding versions ----
// What each encoding version admits; index 0..3 is "1.1".."1.4".
struct wsp_version_limit {
    char text[4];              // the version text, "1.1" .. "1.4"
    uint8_t header_end;        // one past the highest header code it may use
    uint8_t content_type_rows; // leading wsp_content_types rows it may send as codes
    uint8_t param_rows;        // leading wsp_param_names codes it may send
};
inline constexpr wsp_version_limit wsp_version_limits[WSP_VERSION_ROWS] = {
    {"1.1", 0x2F, 46, 9},
    {"1.2", 0x38, 53, 12},
    {"1.3", 0x44, 55, 17},
    {"1.4", 0x48, 82, 30},
};
static_assert(wsp_version_limits[WSP_VERSION_ROWS - 1].header_end == WSP_HEADER_NAME_ROWS);
static_assert(wsp_version_limits[WSP_VERSION_ROWS - 1].content_type_rows == WSP_CONTENT_TYPE_ROWS);
static_assert(wsp_version_limits[WSP_VERSION_ROWS - 1].param_rows == WSP_PARAM_NAME_ROWS);

// The index of a version text (exact comparison), or -1 when the text is
// null or none of the four.
int wsp_version_index(const char *text);

// True when the text (not null) is exactly the text of that row.  Compares
// up to the row's NUL and never reads the text past its own.
constexpr bool wsp_version_is(uint16_t row, const char *text) {
    const char *expected = wsp_version_limits[row].text;
    for (uint16_t i = 0; i < sizeof wsp_version_limits[row].text; ++i) {
        if (expected[i] != text[i]) return false;
        if (expected[i] == '\0') return true;
    }
    return false;
}

// ---- tables ----
// One constant table: `rows` rows, each a name (possibly empty, or absent
// in a name list) and a 16-bit code.  In a name list the code is the row.
struct wsp_table {
    const char *pool;        // every name, NUL-terminated, in row order
    const uint16_t *name_at; // rows + 1 pool offsets; bit 15 marks an absent name, bit 14 a
                             // name that a later row has too (letters folded)
    const uint16_t *codes;   // rows codes
    const uint8_t *slots8;   // hash slots (row + 1, 0 empty) of a table below 255 rows,
    const uint16_t *slots16; // or of a larger one; the other pointer is null
    uint16_t rows;
    uint16_t slot_mask;

    static constexpr uint16_t kAbsent = 0x8000;
    static constexpr uint16_t kRepeated = 0x4000;
    static constexpr uint16_t kOffset = 0x3FFF;

    // The name of a row, null for an absent one.
    constexpr const char *name(uint16_t row) const {
        return (name_at[row] & kAbsent) != 0 ? nullptr : pool + (name_at[row] & kOffset);
    }
    // The length of a present row's name, without the NUL.
    constexpr uint16_t name_length(uint16_t row) const {
        return static_cast<uint16_t>((name_at[row + 1] & kOffset) - (name_at[row] & kOffset) - 1);
    }
    // True when a later row has the same name (ASCII letters folded): a
    // search that has met this row must look further.
    constexpr bool repeated(uint16_t row) const { return (name_at[row] & kRepeated) != 0; }
    constexpr uint16_t code(uint16_t row) const { return codes[row]; }
    constexpr uint16_t slot(uint16_t index) const { return slots8 != nullptr ? slots8[index] : slots16[index]; }
};

// Name lists: index = code.
extern const wsp_table wsp_header_names;
// No parameter name has more rows than this (both spellings of "type",
// "name", "start" and the others count as one name each).
inline constexpr uint16_t WSP_PARAM_ROWS_PER_NAME = 2;
extern const wsp_table wsp_param_names; // 0x04 has no name
extern const wsp_table wsp_transfer_codings;
extern const wsp_table wsp_expect_values;
extern const wsp_table wsp_auth_schemes;
extern const wsp_table wsp_cache_directives;
// The Cache-Control directive codes (rows of wsp_cache_directives), for the
// codecs that treat some of them apart.
enum wsp_cache_directive : uint8_t {
    WSP_CACHE_NO_CACHE,         // 0
    WSP_CACHE_NO_STORE,         // 1
    WSP_CACHE_MAX_AGE,          // 2
    WSP_CACHE_MAX_STALE,        // 3
    WSP_CACHE_MIN_FRESH,        // 4
    WSP_CACHE_ONLY_IF_CACHED,   // 5
    WSP_CACHE_PUBLIC,           // 6
    WSP_CACHE_PRIVATE,          // 7
    WSP_CACHE_NO_TRANSFORM,     // 8
    WSP_CACHE_MUST_REVALIDATE,  // 9
    WSP_CACHE_PROXY_REVALIDATE, // 10
    WSP_CACHE_S_MAXAGE,         // 11, known to the newest Cache-Control code only
};
static_assert(WSP_CACHE_S_MAXAGE + 1 == WSP_CACHE_DIRECTIVE_ROWS, "one code per directive row");
extern const wsp_table wsp_dispositions;

// Code tables.
extern const wsp_table wsp_push_app_ids;
extern const wsp_table wsp_status_codes;
extern const wsp_table wsp_te_values;
extern const wsp_table wsp_pragma_values;
extern const wsp_table wsp_connection_values;
extern const wsp_table wsp_methods;
extern const wsp_table wsp_range_units;
extern const wsp_table wsp_content_codings;
extern const wsp_table wsp_content_types;
extern const wsp_table wsp_charsets;

// The two language tables as one run of 282 rows: the 139 two-letter rows,
// then the 143 name rows.  The Accept-Language and Content-Language codecs
// search the run as one table.
extern const wsp_table wsp_language_run;

// ---- searches ----
// All return a row index, or -1 when no row matches.  A null name and an
// absent row never match.  With ignore_case, ASCII letters compare without
// regard to case.

// Rows 0..rows-1 from the top: the lowest matching row.
int wsp_find_name(const wsp_table &table, uint16_t rows, const char *name, bool ignore_case);
// The same for a name of `length` characters (need not be NUL-terminated).
int wsp_find_name_n(const wsp_table &table, uint16_t rows, const char *name, uint16_t length, bool ignore_case);
// Rows from..0 downward: the highest matching row not above `from`.
int wsp_find_name_down(const wsp_table &table, int from, const char *name, bool ignore_case);
// wsp_find_name_down over the exact rows for a name that is first
// lower-cased in place (the header encoder's lookup): one pass lower-cases
// and hashes it.
int wsp_lower_find_name_down(const wsp_table &table, int from, char *name);
// Every row with that name, in row order, as an ascending run written to
// out (at most `capacity`); returns how many were written.  For the
// searches with rules of their own over a name's rows.
uint16_t wsp_find_name_rows(const wsp_table &table, const char *name, bool ignore_case, uint16_t *out,
                            uint16_t capacity);

// By code (the low 16 bits of `code`), rows first..rows-1 upward.
int wsp_find_code(const wsp_table &table, uint16_t rows, uint32_t code, uint16_t first = 0);
// By code, rows from..0 downward.
int wsp_find_code_down(const wsp_table &table, int from, uint32_t code);

#endif

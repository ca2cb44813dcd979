// The WSP assigned-number tables and the small search helpers that the
// codecs share.  Every table is constant data with a fixed row count and a
// significant row order; no table has a terminating row, every scan is
// bounded by the row count.  Each codec picks the search (direction, range,
// case rule) that belongs to it; the helpers below only implement the three
// search shapes.
#ifndef WSP_CORE_TABLES_H
#define WSP_CORE_TABLES_H

#include <cstdint>

#include "tarnwspencdec.h"

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

// Name lists: index = code.  A missing entry is nullptr.
extern const char *const wsp_header_names[WSP_HEADER_NAME_ROWS];
extern const char *const wsp_param_names[WSP_PARAM_NAME_ROWS];
extern const char *const wsp_transfer_codings[WSP_TRANSFER_CODING_ROWS];
extern const char *const wsp_expect_values[1];
extern const char *const wsp_auth_schemes[1];
extern const char *const wsp_cache_directives[WSP_CACHE_DIRECTIVE_ROWS];
extern const char *const wsp_dispositions[WSP_DISPOSITION_ROWS];

// Version-limit tables.
extern const wsp_code_entry wsp_content_type_versions[WSP_VERSION_ROWS];
extern const wsp_code_entry wsp_header_versions[WSP_VERSION_ROWS];

// Code tables.
extern const wsp_code_entry wsp_push_app_ids[WSP_PUSH_APP_ID_ROWS];
extern const wsp_code_entry wsp_status_codes[WSP_STATUS_CODE_ROWS];
extern const wsp_code_entry wsp_te_values[1];
extern const wsp_code_entry wsp_pragma_values[1];
extern const wsp_code_entry wsp_connection_values[1];
extern const wsp_code_entry wsp_methods[WSP_METHOD_ROWS];
extern const wsp_code_entry wsp_range_units[WSP_RANGE_UNIT_ROWS];
extern const wsp_code_entry wsp_content_codings[WSP_CONTENT_CODING_ROWS];
extern const wsp_code_entry wsp_content_types[WSP_CONTENT_TYPE_ROWS];
extern const wsp_code_entry wsp_charsets[WSP_CHARSET_ROWS];

// The two language tables are stored as one contiguous run of 282 rows: the
// 139 two-letter rows, then the 143 name rows.  The Accept-Language and
// Content-Language codecs search the run as one table.
extern const wsp_code_entry wsp_language_run[WSP_LANGUAGE_RUN_ROWS];
inline const wsp_code_entry *const wsp_languages = wsp_language_run;
inline const wsp_code_entry *const wsp_language_names = wsp_language_run + WSP_LANGUAGE_ROWS;

// Search helpers.  All return a row index, or -1 when no row matches.
// Codes are compared on their low 16 bits.

// Code table, rows 0..rows-1 upward, first equal code wins.
int wsp_find_code(const wsp_code_entry *table, uint16_t rows, uint32_t code);
// Code table, rows from..0 downward, first equal code wins.
int wsp_find_code_down(const wsp_code_entry *table, int from, uint32_t code);
// Code table by name, rows 0..rows-1 upward (exact or case-insensitive).
int wsp_find_name(const wsp_code_entry *table, uint16_t rows, const char *name, bool ignore_case);
// Code table by name, rows from..0 downward.
int wsp_find_name_down(const wsp_code_entry *table, int from, const char *name, bool ignore_case);
// Name list by name, indexes 0..rows-1 upward; null entries never match.
int wsp_find_list_name(const char *const *list, uint16_t rows, const char *name, bool ignore_case);
// Name list by name, indexes from..0 downward; null entries never match.
int wsp_find_list_name_down(const char *const *list, int from, const char *name, bool ignore_case);

#endif

// The three search shapes over the constant tables (by code, by name in a
// code table, by name in a name list), each upward or downward.  Scans are
// bounded by the row count or start row the caller gives; no table has an
// end row.  A null name never matches, whatever the token.
#include "primitives.h"
#include "tables.h"

#include <cstring>

namespace {

bool names_match(const char *row, const char *token, bool ignore_case) {
    if (row == nullptr || token == nullptr) return false;
    return ignore_case ? wsp_strcasecmp(row, token) == 0 : std::strcmp(row, token) == 0;
}

// Only the low 16 bits of a code hold the assigned number.
bool codes_match(uint32_t row_code, uint32_t code) {
    return static_cast<uint16_t>(row_code) == static_cast<uint16_t>(code);
}

} // namespace

int wsp_find_code(const wsp_code_entry *table, uint16_t rows, uint32_t code) {
    if (table == nullptr) return -1;
    for (uint16_t i = 0; i < rows; ++i)
        if (codes_match(table[i].code, code)) return i;
    return -1;
}

int wsp_find_code_down(const wsp_code_entry *table, int from, uint32_t code) {
    if (table == nullptr) return -1;
    for (int i = from; i >= 0; --i)
        if (codes_match(table[i].code, code)) return i;
    return -1;
}

int wsp_find_name(const wsp_code_entry *table, uint16_t rows, const char *name, bool ignore_case) {
    if (table == nullptr) return -1;
    for (uint16_t i = 0; i < rows; ++i)
        if (names_match(table[i].name, name, ignore_case)) return i;
    return -1;
}

int wsp_find_name_down(const wsp_code_entry *table, int from, const char *name, bool ignore_case) {
    if (table == nullptr) return -1;
    for (int i = from; i >= 0; --i)
        if (names_match(table[i].name, name, ignore_case)) return i;
    return -1;
}

int wsp_find_list_name(const char *const *list, uint16_t rows, const char *name, bool ignore_case) {
    if (list == nullptr) return -1;
    for (uint16_t i = 0; i < rows; ++i)
        if (names_match(list[i], name, ignore_case)) return i;
    return -1;
}

int wsp_find_list_name_down(const char *const *list, int from, const char *name, bool ignore_case) {
    if (list == nullptr) return -1;
    for (int i = from; i >= 0; --i)
        if (names_match(list[i], name, ignore_case)) return i;
    return -1;
}

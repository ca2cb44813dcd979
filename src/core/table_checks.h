// Compile-time helpers for the checks that sit next to the constant tables:
// a table whose rows were mistyped, dropped or reordered must not build.
#ifndef WSP_CORE_TABLE_CHECKS_H
#define WSP_CORE_TABLE_CHECKS_H

#include <cstdint>

#include "table_index.h"

// Byte-for-byte equality of two texts; a null text equals only a null text.
constexpr bool wsp_same_text(const char *a, const char *b) {
    if (a == nullptr || b == nullptr) return a == b;
    while (*a != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

// A row holds exactly this name and code.
constexpr bool wsp_row_is(const wsp_row_text &row, const char *name, uint16_t code) {
    return row.code == code && wsp_same_text(row.name, name);
}

// Every row of a table has a name: catches an initializer that came up
// short (the missing rows would be zero-filled).
constexpr bool wsp_all_rows_named(const wsp_row_text *rows, uint16_t count) {
    for (uint16_t i = 0; i < count; ++i)
        if (rows[i].name == nullptr) return false;
    return true;
}

// The same for a name list.
constexpr bool wsp_all_names_set(const char *const *list, uint16_t count) {
    for (uint16_t i = 0; i < count; ++i)
        if (list[i] == nullptr) return false;
    return true;
}

// Rows [first, first + count) carry the codes base, base + 1, ...
constexpr bool wsp_codes_run(const wsp_row_text *rows, uint16_t first, uint16_t count, uint16_t base) {
    for (uint16_t i = 0; i < count; ++i)
        if (rows[first + i].code != base + i) return false;
    return true;
}

#endif

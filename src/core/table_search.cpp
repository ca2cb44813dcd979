// The searches over the constant tables: by name through the hash index,
// by code over the 16-bit code column, and the version text.  Each gives
// the row a plain scan in its direction and range would stop at.
#include <cstring>

#include "table_index.h"
#include "tables.h"

namespace {

// No table name is as long as 0xFFFF characters: a longer text can only miss.
constexpr size_t kLongestSearchable = 0xFFFF;

// The name hash and the length of a NUL-terminated name, in one pass.
uint32_t hash_name(const char *name, size_t *length) {
    uint32_t hash = kWspNameHashSeed;
    size_t n = 0;
    for (; name[n] != '\0'; ++n) hash = wsp_name_hash_step(hash, static_cast<uint8_t>(name[n]));
    *length = n;
    return hash;
}

// The one probe behind the searches by name, kept out of line so that they
// share it.
[[gnu::noinline]] int search_hashed(const wsp_table &table, uint32_t hash, const char *name, size_t length,
                                    bool ignore_case, int last, bool downward) {
    if (length > kLongestSearchable) return -1;
    return wsp_index_search_hashed(table, hash, name, static_cast<uint16_t>(length), ignore_case, last, downward);
}

// A NUL-terminated name.
int search(const wsp_table &table, const char *name, bool ignore_case, int last, bool downward) {
    if (name == nullptr) return -1;
    size_t length = 0;
    const uint32_t hash = hash_name(name, &length);
    return search_hashed(table, hash, name, length, ignore_case, last, downward);
}

// Only the low 16 bits of a code hold the assigned number.
bool codes_match(uint16_t row_code, uint32_t code) { return row_code == static_cast<uint16_t>(code); }

} // namespace

int wsp_version_index(const char *text) {
    if (text == nullptr) return -1;
    for (uint16_t row = 0; row < WSP_VERSION_ROWS; ++row)
        if (wsp_version_is(row, text)) return row;
    return -1;
}

int wsp_find_name(const wsp_table &table, uint16_t rows, const char *name, bool ignore_case) {
    return search(table, name, ignore_case, rows - 1, false);
}

int wsp_find_name_n(const wsp_table &table, uint16_t rows, const char *name, uint16_t length, bool ignore_case) {
    if (name == nullptr) return -1;
    return search_hashed(table, wsp_name_hash(name, length), name, length, ignore_case, rows - 1, false);
}

int wsp_find_name_down(const wsp_table &table, int from, const char *name, bool ignore_case) {
    return search(table, name, ignore_case, from, true);
}

int wsp_lower_find_name_down(const wsp_table &table, int from, char *name) {
    if (name == nullptr) return -1;
    uint32_t hash = kWspNameHashSeed;
    size_t n = 0;
    for (;; ++n) {
        const uint8_t c = static_cast<uint8_t>(name[n]);
        if (c == 0) break;
        const uint8_t lower = wsp_ascii_lower(c);
        if (lower != c) name[n] = static_cast<char>(lower);
        hash = wsp_name_hash_step(hash, lower);
    }
    return search_hashed(table, hash, name, n, false, from, true);
}

uint16_t wsp_find_name_rows(const wsp_table &table, const char *name, bool ignore_case, uint16_t *out,
                            uint16_t capacity) {
    if (out == nullptr || name == nullptr) return 0;
    const size_t length = std::strlen(name);
    if (length > kLongestSearchable) return 0;
    uint16_t found = 0;
    wsp_each_row_named(table, name, static_cast<uint16_t>(length), ignore_case, [&](uint16_t row) {
        if (found == capacity) return false;
        out[found++] = row;
        return true;
    });
    return found;
}

int wsp_find_code(const wsp_table &table, uint16_t rows, uint32_t code, uint16_t first) {
    if (rows > table.rows) rows = table.rows;
    for (uint16_t i = first; i < rows; ++i)
        if (codes_match(table.code(i), code)) return i;
    return -1;
}

int wsp_find_code_down(const wsp_table &table, int from, uint32_t code) {
    if (from >= table.rows) from = table.rows - 1;
    for (int i = from; i >= 0; --i)
        if (codes_match(table.code(static_cast<uint16_t>(i)), code)) return i;
    return -1;
}

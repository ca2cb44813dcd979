// How a constant table is laid out and indexed: the rows as written in the
// table files (the source of truth) are turned, at compile time, into one
// pool of names, per-row name offsets and codes, and an open-addressing
// hash index over the lower-cased names.  The probe that the searches use
// is constexpr too, so every table file can check at compile time that the
// index gives, for each of its names, exactly the rows a plain scan gives.
#ifndef WSP_CORE_TABLE_INDEX_H
#define WSP_CORE_TABLE_INDEX_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "primitives.h"
#include "tables.h"

// One row as written in a table file.  A null name is an absent entry.
struct wsp_row_text {
    const char *name;
    uint16_t code;
};

// ---- hashing ----
// FNV-1a over the lower-cased octets; the slot is taken from the middle
// bits of an odd multiple of it (the multiplier spreads these tables well).  Lower-casing first
// puts every spelling of a name at the same start slot, so one index serves
// the exact and the case-blind searches.
inline constexpr uint32_t kWspNameHashSeed = 2166136261u;
constexpr uint32_t wsp_name_hash_step(uint32_t hash, uint8_t c) {
    return (hash ^ wsp_ascii_lower(c)) * 16777619u;
}
constexpr uint16_t wsp_name_slot(uint32_t hash, uint16_t mask) {
    return static_cast<uint16_t>(((hash * 0x165667B1u) >> 13) & mask);
}

// ---- probing ----
// A row's name equals the `length` characters at text (exactly, or with
// ASCII letters folded).
constexpr bool wsp_row_named(const wsp_table &table, uint16_t row, const char *text, uint16_t length,
                             bool ignore_case) {
    if ((table.name_at[row] & wsp_table::kAbsent) != 0 || table.name_length(row) != length) return false;
    const char *name = table.pool + (table.name_at[row] & wsp_table::kOffset);
    if (!ignore_case && !std::is_constant_evaluated()) return std::memcmp(name, text, length) == 0;
    for (uint16_t i = 0; i < length; ++i) {
        const uint8_t a = static_cast<uint8_t>(name[i]);
        const uint8_t b = static_cast<uint8_t>(text[i]);
        // Only a pair that differs is folded.
        if (a != b && (!ignore_case || wsp_ascii_lower(a) != wsp_ascii_lower(b))) return false;
    }
    return true;
}

// Calls visit(row) for every row named `text`, in ascending row order, until
// visit returns false; `hash` is the name hash of the text.  Rows are
// inserted in row order and all spellings of a name share a start slot, so
// linear probing meets them in row order.  The probe ends after a row that
// no later row shares its name with, or at the first empty slot (a table
// always has one).
template <typename Visit>
constexpr void wsp_each_row_hashed(const wsp_table &table, uint32_t hash, const char *text, uint16_t length,
                                   bool ignore_case, Visit visit) {
    for (uint16_t at = wsp_name_slot(hash, table.slot_mask);; at = static_cast<uint16_t>((at + 1) & table.slot_mask)) {
        uint16_t slot = table.slot(at);
        if (slot == 0) return;
        uint16_t row = static_cast<uint16_t>(slot - 1);
        if (wsp_row_named(table, row, text, length, ignore_case) && (!visit(row) || !table.repeated(row))) return;
    }
}

// The name hash of `length` characters.
constexpr uint32_t wsp_name_hash(const char *text, uint16_t length) {
    uint32_t hash = kWspNameHashSeed;
    for (uint16_t i = 0; i < length; ++i) hash = wsp_name_hash_step(hash, static_cast<uint8_t>(text[i]));
    return hash;
}

template <typename Visit>
constexpr void wsp_each_row_named(const wsp_table &table, const char *text, uint16_t length, bool ignore_case,
                                  Visit visit) {
    wsp_each_row_hashed(table, wsp_name_hash(text, length), text, length, ignore_case, visit);
}

// The row a scan over rows 0..last stops at: upward the lowest row named
// `text`, downward the highest; -1 when none of those rows has the name.
// Rows come in ascending order, so upward the first one decides, and
// downward the probe stops at the first row above `last`.
constexpr int wsp_index_search_hashed(const wsp_table &table, uint32_t hash, const char *text, uint16_t length,
                                      bool ignore_case, int last, bool downward) {
    int found = -1;
    wsp_each_row_hashed(table, hash, text, length, ignore_case, [&](uint16_t row) {
        if (static_cast<int>(row) > last) return false;
        found = row;
        return downward;
    });
    return found;
}

constexpr int wsp_index_search(const wsp_table &table, const char *text, uint16_t length, bool ignore_case, int last,
                               bool downward) {
    return wsp_index_search_hashed(table, wsp_name_hash(text, length), text, length, ignore_case, last, downward);
}

// ---- building ----
// Enough slots to keep the index at most two thirds full, a power of two.
constexpr uint16_t wsp_slot_count(size_t rows) {
    uint16_t slots = 2;
    while (slots < rows + rows / 2 + 1) slots = static_cast<uint16_t>(slots * 2);
    return slots;
}

constexpr size_t wsp_text_length(const char *text) {
    size_t n = 0;
    while (text[n] != '\0') ++n;
    return n;
}

// Bytes of the pool: every present name and its NUL.
template <size_t N>
constexpr size_t wsp_pool_bytes(const std::array<wsp_row_text, N> &rows) {
    size_t bytes = 0;
    for (const wsp_row_text &row : rows)
        if (row.name != nullptr) bytes += wsp_text_length(row.name) + 1;
    return bytes == 0 ? 1 : bytes;
}

// Two names equal with ASCII letters folded.
constexpr bool wsp_same_folded(const char *a, const char *b) {
    for (;; ++a, ++b) {
        if (wsp_ascii_lower(static_cast<uint8_t>(*a)) != wsp_ascii_lower(static_cast<uint8_t>(*b))) return false;
        if (*a == '\0') return true;
    }
}

// The stored form of a table of N rows whose names take PoolBytes.
template <size_t N, size_t PoolBytes>
struct wsp_table_store {
    static_assert(N > 0 && N <= wsp_table::kOffset && PoolBytes <= wsp_table::kOffset, "offsets fit 14 bits");
    using slot_type = std::conditional_t<(N < 255), uint8_t, uint16_t>;
    static constexpr uint16_t kSlots = wsp_slot_count(N);

    char pool[PoolBytes];
    uint16_t name_at[N + 1];
    uint16_t codes[N];
    slot_type slots[kSlots];
};

template <size_t PoolBytes, size_t N>
constexpr wsp_table_store<N, PoolBytes> wsp_build_store(const std::array<wsp_row_text, N> &rows) {
    using store = wsp_table_store<N, PoolBytes>;
    store s{};
    uint16_t at = 0;
    for (size_t r = 0; r < N; ++r) {
        s.codes[r] = rows[r].code;
        if (rows[r].name == nullptr) {
            s.name_at[r] = static_cast<uint16_t>(at | wsp_table::kAbsent);
            continue;
        }
        s.name_at[r] = at;
        for (const char *c = rows[r].name;; ++c) {
            s.pool[at++] = *c;
            if (*c == '\0') break;
        }
    }
    s.name_at[N] = at;
    for (size_t r = 0; r < N; ++r) {
        if (rows[r].name == nullptr) continue;
        for (size_t later = r + 1; later < N; ++later) {
            if (rows[later].name != nullptr && wsp_same_folded(rows[r].name, rows[later].name)) {
                s.name_at[r] = static_cast<uint16_t>(s.name_at[r] | wsp_table::kRepeated);
                break;
            }
        }
    }
    const uint16_t mask = static_cast<uint16_t>(store::kSlots - 1);
    for (size_t r = 0; r < N; ++r) {
        if (rows[r].name == nullptr) continue;
        uint32_t hash = kWspNameHashSeed;
        for (const char *c = rows[r].name; *c != '\0'; ++c) hash = wsp_name_hash_step(hash, static_cast<uint8_t>(*c));
        uint16_t i = wsp_name_slot(hash, mask);
        while (s.slots[i] != 0) i = static_cast<uint16_t>((i + 1) & mask);
        s.slots[i] = static_cast<typename store::slot_type>(r + 1);
    }
    return s;
}

// The search view of a stored table.
template <size_t N, size_t PoolBytes>
constexpr wsp_table wsp_table_of(const wsp_table_store<N, PoolBytes> &s) {
    const uint16_t mask = static_cast<uint16_t>(wsp_table_store<N, PoolBytes>::kSlots - 1);
    if constexpr (std::is_same_v<typename wsp_table_store<N, PoolBytes>::slot_type, uint8_t>) {
        return {s.pool, s.name_at, s.codes, s.slots, nullptr, static_cast<uint16_t>(N), mask};
    } else {
        return {s.pool, s.name_at, s.codes, nullptr, s.slots, static_cast<uint16_t>(N), mask};
    }
}

// A name list (index = code) as rows.
template <size_t N>
constexpr std::array<wsp_row_text, N> wsp_list_rows(const char *const (&names)[N]) {
    std::array<wsp_row_text, N> rows{};
    for (size_t i = 0; i < N; ++i) rows[i] = {names[i], static_cast<uint16_t>(i)};
    return rows;
}

// A code table as rows.
template <size_t N>
constexpr std::array<wsp_row_text, N> wsp_code_rows(const wsp_row_text (&source)[N]) {
    std::array<wsp_row_text, N> rows{};
    for (size_t i = 0; i < N; ++i) rows[i] = source[i];
    return rows;
}

// ---- compile-time checks ----
// For every name of the table and both case rules, the index lists exactly
// the rows a full scan finds, in the same order, and the stored rows read
// back as written.
template <size_t N>
constexpr bool wsp_index_agrees_with_scan(const wsp_table &table, const std::array<wsp_row_text, N> &rows) {
    if (table.rows != N) return false;
    for (uint16_t r = 0; r < N; ++r) {
        if (table.code(r) != rows[r].code) return false;
        if (rows[r].name == nullptr) {
            if (table.name(r) != nullptr) return false;
            continue;
        }
        const char *name = rows[r].name;
        const uint16_t length = static_cast<uint16_t>(wsp_text_length(name));
        if (table.name(r) == nullptr || !wsp_row_named(table, r, name, length, false)) return false;
        for (bool ignore_case : {false, true}) {
            uint16_t next = 0; // the scan's next matching row, N when none is left
            auto advance = [&](uint16_t from) {
                next = from;
                while (next < N && !wsp_row_named(table, next, name, length, ignore_case)) ++next;
            };
            advance(0);
            bool same = true;
            wsp_each_row_named(table, name, length, ignore_case, [&](uint16_t row) {
                if (row != next) same = false;
                advance(static_cast<uint16_t>(next + 1));
                return same;
            });
            if (!same || next != N) return false;
        }
    }
    return true;
}

// The most rows any one name has under a case rule.
template <size_t N>
constexpr uint16_t wsp_most_rows_per_name(const std::array<wsp_row_text, N> &rows, bool ignore_case) {
    uint16_t most = 0;
    for (size_t r = 0; r < N; ++r) {
        if (rows[r].name == nullptr) continue;
        uint16_t count = 0;
        for (size_t s = 0; s < N; ++s) {
            if (rows[s].name == nullptr) continue;
            const char *a = rows[r].name;
            const char *b = rows[s].name;
            while (*a != '\0' && (ignore_case ? wsp_ascii_lower(static_cast<uint8_t>(*a)) ==
                                                     wsp_ascii_lower(static_cast<uint8_t>(*b))
                                               : *a == *b)) {
                ++a;
                ++b;
            }
            if (*a == '\0' && *b == '\0') ++count;
        }
        if (count > most) most = count;
    }
    return most;
}

// The longest run of occupied slots: a bound on any probe.
template <size_t N, size_t PoolBytes>
constexpr uint16_t wsp_longest_probe(const wsp_table_store<N, PoolBytes> &s) {
    constexpr uint16_t slots = wsp_table_store<N, PoolBytes>::kSlots;
    uint16_t longest = 0;
    for (uint16_t start = 0; start < slots; ++start) {
        uint16_t run = 0;
        while (run < slots && s.slots[(start + run) % slots] != 0) ++run;
        if (run > longest) longest = run;
    }
    return longest;
}

// Defines `table` (declared in tables.h) from its rows, a std::array of
// wsp_row_text, with its stored form `table_store` beside it, and checks at
// compile time that no probe visits more than 16 slots and that the index
// agrees with a scan for every name.
#define WSP_DEFINE_TABLE(table, rows)                                                                 \
    constexpr auto table##_store = wsp_build_store<wsp_pool_bytes(rows)>(rows);                        \
    constexpr wsp_table table = wsp_table_of(table##_store);                                          \
    static_assert(wsp_longest_probe(table##_store) <= 16, #table ": the hash index clusters");        \
    static_assert(wsp_index_agrees_with_scan(table, rows), #table ": the index disagrees with a scan")

#endif

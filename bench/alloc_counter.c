/* Counts heap allocations by interposing the allocator entry points in the
 * benchmark executable.  The dynamic linker binds the shared object's
 * calloc/malloc references to these definitions, so allocations made by the
 * library are counted as well as the program's own.  The real work is handed
 * to glibc's internal entry points, so that blocks stay interchangeable with
 * free(). */
#include "alloc_counter.h"

#include <stddef.h>

extern void *__libc_malloc(size_t size);
extern void *__libc_calloc(size_t count, size_t size);
extern void *__libc_realloc(void *block, size_t size);

static uint64_t alloc_calls;
static uint64_t alloc_octets;

static void count_allocation(size_t octets) {
    __atomic_fetch_add(&alloc_calls, 1, __ATOMIC_RELAXED);
    __atomic_fetch_add(&alloc_octets, (uint64_t)octets, __ATOMIC_RELAXED);
}

void *malloc(size_t size) {
    count_allocation(size);
    return __libc_malloc(size);
}

void *calloc(size_t count, size_t size) {
    count_allocation(count * size);
    return __libc_calloc(count, size);
}

void *realloc(void *block, size_t size) {
    count_allocation(size);
    return __libc_realloc(block, size);
}

bench_alloc_totals bench_alloc_snapshot(void) {
    bench_alloc_totals totals;
    totals.calls = __atomic_load_n(&alloc_calls, __ATOMIC_RELAXED);
    totals.octets = __atomic_load_n(&alloc_octets, __ATOMIC_RELAXED);
    return totals;
}

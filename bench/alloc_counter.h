/* Heap allocations seen by this process: the benchmark program interposes
 * malloc, calloc and realloc (alloc_counter.c), so calls made inside the
 * shared object are counted too. */
#ifndef BENCH_ALLOC_COUNTER_H
#define BENCH_ALLOC_COUNTER_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct bench_alloc_totals {
    uint64_t calls;  /* malloc + calloc + realloc calls so far */
    uint64_t octets; /* octets requested by them */
} bench_alloc_totals;

bench_alloc_totals bench_alloc_snapshot(void);

#ifdef __cplusplus
}
#endif

#endif

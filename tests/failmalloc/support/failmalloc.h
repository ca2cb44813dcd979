// Allocation-failure injection for the library's objects.
//
// The failmalloc executables are linked with -Wl,--wrap=calloc and
// -Wl,--wrap=free, so every calloc and free of the objects linked into them
// (the static library archive among them) goes through the two wrappers of
// failmalloc.cpp.  While armed, the wrappers count the calloc calls, make
// the chosen one fail, and remember every block they hand out until it is
// freed, whoever frees it (the library, or the test through the library's
// release functions or its own free).  Disarmed, they pass through.
//
// Arm only around calls into the library: the test's own allocations made
// while armed would be counted as the library's.
#ifndef WSP_FAILMALLOC_H
#define WSP_FAILMALLOC_H

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace failmalloc {

// Starts counting; the fail_at-th calloc (1-based) returns NULL, 0 fails none.
void arm(unsigned fail_at);

// Stops counting; returns the number of calloc calls made while armed,
// the failed one included.
unsigned disarm();

// calloc calls made since arm(), the failed one included.
unsigned calls();

// Blocks handed out while armed and not freed since.
unsigned live_blocks();

// Forgets every remembered block (start of a scenario).
void reset();

// Runs scenario(0), a clean run, to learn how many allocations the path
// makes, then scenario(k) for k = 1 .. that count, each with the k-th
// allocation failing.  A scenario arms the injector with the number it is
// given, calls the library, disarms, checks, and returns what disarm()
// returned.  Returns the count of the clean run.
template <class Scenario> unsigned fail_each_allocation(Scenario scenario) {
    reset();
    const unsigned total = scenario(0u);
    ::testing::Test::RecordProperty("allocations", static_cast<int>(total));
    for (unsigned k = 1; k <= total; ++k) {
        SCOPED_TRACE("allocation " + std::to_string(k) + " of " + std::to_string(total) + " fails");
        reset();
        scenario(k);
    }
    return total;
}

} // namespace failmalloc

#endif

// The calloc and free wrappers named by -Wl,--wrap (see failmalloc_support.h).
#include "failmalloc_support.h"

#include <cstdint>
#include <cstdlib>

extern "C" {
void *__real_calloc(size_t count, size_t size);
void __real_free(void *p);
void *__wrap_calloc(size_t count, size_t size);
void __wrap_free(void *p);
}

namespace {

// The counters of the running scenario: test code, one thread.
constexpr unsigned kMaxBlocks = 256;

struct injector {
    bool armed = false;
    unsigned fail_at = 0;
    unsigned calls = 0;
    void *blocks[kMaxBlocks] = {};
};

injector state;

void remember(void *p) {
    for (void *&slot : state.blocks) {
        if (slot == nullptr) {
            slot = p;
            return;
        }
    }
    std::abort(); // more live blocks than any scenario makes
}

void forget(void *p) {
    for (void *&slot : state.blocks) {
        if (slot == p) {
            slot = nullptr;
            return;
        }
    }
}

} // namespace

extern "C" void *__wrap_calloc(size_t count, size_t size) {
    if (!state.armed) return __real_calloc(count, size);
    ++state.calls;
    if (state.calls == state.fail_at) return nullptr;
    void *p = __real_calloc(count, size);
    if (p != nullptr) remember(p);
    return p;
}

extern "C" void __wrap_free(void *p) {
    if (p != nullptr) forget(p);
    __real_free(p);
}

namespace failmalloc {

void arm(unsigned fail_at) {
    state.armed = true;
    state.fail_at = fail_at;
    state.calls = 0;
}

unsigned disarm() {
    state.armed = false;
    return state.calls;
}

unsigned calls() { return state.calls; }

unsigned live_blocks() {
    unsigned n = 0;
    for (void *slot : state.blocks)
        if (slot != nullptr) ++n;
    return n;
}

void reset() {
    for (void *&slot : state.blocks) slot = nullptr;
    state.calls = 0;
    state.fail_at = 0;
    state.armed = false;
}

} // namespace failmalloc

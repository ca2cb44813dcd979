// The in-place tokenizer over arbitrary text: the first octet picks the
// delimiter (a one-character one, or now and then an empty or two-character
// one, which is refused).  Every token must lie inside the text, the
// position must only move forward, and the walk must end.
#include <cstdlib>
#include <cstring>

#include "harness.h"
#include "tarnwspencdec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 1 || size > 4096) return 0;
    static const char *const delimiters[] = {"\n", ":", ",", ";", "=", " ", ".", "\"", "", "ab"};
    const char *delim = delimiters[data[0] % 10];
    const bool refused = std::strlen(delim) != 1;
    data += 1;
    size -= 1;

    char *text = static_cast<char *>(std::malloc(size + 1));
    std::memcpy(text, data, size);
    text[size] = '\0';
    char *const end = text + std::strlen(text);

    char *pos = text;
    size_t tokens = 0;
    for (;;) {
        char *before = pos;
        char *token = wsp_strtoken(&pos, delim);
        if (token == nullptr) break;
        fuzz_check(!refused);
        fuzz_check(token >= before && token <= end);
        fuzz_check(pos >= token && pos <= end);
        fuzz_check(token + std::strlen(token) <= end);
        // Each call either moves on or hands out the last (possibly empty)
        // token, after which the next call returns NULL.
        fuzz_check(++tokens <= size + 2);
    }
    char *none = nullptr;
    fuzz_check(wsp_strtoken(&none, delim) == nullptr);
    fuzz_check(wsp_strtoken(nullptr, delim) == nullptr);
    std::free(text);
    return 0;
}

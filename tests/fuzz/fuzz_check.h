#pragma once

#include <cstdio>
#include <cstdlib>

// A broken property of the code under test: libFuzzer takes the abort as a crash and keeps the
// input.
inline void fuzzCheck(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "fuzz property broken: %s\n", property);
        std::abort();
    }
}

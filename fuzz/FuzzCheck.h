// The check a fuzz target makes of what the code under test promises: a broken promise aborts, so
// that libFuzzer and the replay tests report it like a crash, with the reason on standard error.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void FuzzCheck(bool holds, const char* promise) {
    if (!holds) {
        std::fprintf(stderr, "broken promise: %s\n", promise);
        std::abort();
    }
}

#pragma once

#include <cstdio>
#include <cstdlib>

// Ends a benchmark whose figures would mean nothing.
inline void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

/// What must hold for every input of a fuzz target.
#pragma once

#include <cstdio>
#include <cstdlib>

/// Aborts, with the condition, if it does not hold; in every build.
#define RIGSTAGE_FUZZ_CHECK(condition)                                                             \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition);    \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

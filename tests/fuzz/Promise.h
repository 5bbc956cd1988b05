#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the process where the code breaks its word, so that fuzzer and replay keep the input.
#define BRINDLECAM_PROMISE(condition)                                                              \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: broken promise: %s\n", __FILE__, __LINE__, #condition);   \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

// What a fuzz target does when a promise is broken.
#ifndef DRAVO_FUZZ_PROMISE_H
#define DRAVO_FUZZ_PROMISE_H

#include <cstdio>
#include <cstdlib>

[[noreturn]] inline void broken(const char *promise) {
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}

inline void expect(bool kept, const char *promise) {
    if (!kept) {
        broken(promise);
    }
}

#endif  // DRAVO_FUZZ_PROMISE_H

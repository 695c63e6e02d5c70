#include "work/counted_steps.h"

#include <strings.h>

#include <cstddef>

#include "driver/Communication_Protocol.h"

namespace {

enum { kNothing, kAll, kWithList } counted = kNothing;
long steps = 0;

}  // namespace

long stepsOf(const std::function<void()> &work) {
    steps = 0;
    counted = kAll;
    work();
    counted = kNothing;
    return steps;
}

long stepsWithList(const std::function<void()> &work) {
    steps = 0;
    counted = kWithList;
    work();
    counted = kNothing;
    return steps;
}

extern "C" {

// The compiler's name for it.
void __sanitizer_cov_trace_pc() {  // NOLINT(bugprone-reserved-identifier)
    if (counted == kAll || (counted == kWithList && isHeld(PLC_driver.listMutex))) {
        ++steps;
    }
}

// Qt's lists move their pointers with it.
void *memmove(void *to, const void *from, size_t size) {
    steps += counted == kAll ? long(size / sizeof(void *)) : 0;
    static void (*const volatile move)(const void *, void *, size_t) = bcopy;  // not to become a call of this one
    move(from, to, size);
    return to;
}

}  // extern "C"

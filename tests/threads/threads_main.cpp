// threads [SECONDS]: the driver, then the line engine, called from several threads at a time; 5 seconds. 0: no fault
// and no race was seen, 66: the sanitizer saw one.
#include <cstdio>
#include <cstdlib>

#include "threads/threads.h"

// The sanitizer's own names. QtCore is not built with it: what its memory is for, and when it is free, is not seen
// whole. Its inline functions, and all of ours, are.
extern "C" {
const char *__tsan_default_options();       // NOLINT(bugprone-reserved-identifier)
const char *__tsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
}
const char *__tsan_default_options() {  // NOLINT(bugprone-reserved-identifier)
    return "halt_on_error=1:second_deadlock_stack=1";
}
const char *__tsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "called_from_lib:libQt5Core.so";
}

int main(int argc, char **argv) {
    char *end = nullptr;
    const long seconds = argc > 1 ? std::strtol(argv[1], &end, 10) : 5;
    if (argc > 2 || seconds < 1 || seconds > 1000000 || (end && *end != 0)) {
        std::fprintf(stderr, "usage: threads [SECONDS], a whole number above 0\n");
        return 2;
    }
    const struct {
        std::string (*run)(std::chrono::milliseconds time);
        int tenths;
    } parts[] = {{laterRebuildStays, 1}, {driverThreads, 6}, {lineThreads, 3}};
    for (const auto &part : parts) {
        const std::string wrong = part.run(std::chrono::milliseconds(seconds * 100 * part.tenths));
        if (!wrong.empty()) {
            std::printf("WRONG: %s\n", wrong.c_str());
            return 1;
        }
    }
    return 0;
}

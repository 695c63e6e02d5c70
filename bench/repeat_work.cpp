// Does one piece of work so many times and nothing else, for instruction counters: repeat_work NAME SIZE TIMES.
#include <cstdio>
#include <cstdlib>

#include "driver_work.h"

int main(int argc, char **argv) {
    for (const Work &work : allWork()) {
        if (argc == 4 && work.name == std::string(argv[1])) {
            const std::function<void()> once = work.prepare(std::atoi(argv[2]));
            for (int left = std::atoi(argv[3]); left > 0; --left) {
                once();
            }
            return 0;
        }
    }
    std::fputs("usage: dravo-repeat NAME SIZE TIMES\n", stderr);
    for (const Work &work : allWork()) {
        std::fprintf(stderr, "  %s, SIZE %s\n", work.name, work.counts);
    }
    return 2;
}

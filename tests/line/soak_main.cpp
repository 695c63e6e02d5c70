// line-soak [EXCHANGES [SEED [RUN]]]: runs of RUN exchanges each (500), from SEED on, until EXCHANGES have been made.
#include <cstdio>
#include <cstdlib>

#include "line/soak.h"

int main(int argc, char **argv) {
    const long exchanges = argc > 1 ? std::atol(argv[1]) : 200000;
    unsigned seed = argc > 2 ? unsigned(std::strtoul(argv[2], nullptr, 10)) : 1;
    const int run = argc > 3 ? std::atoi(argv[3]) : 500;
    long made = 0;
    for (; made < exchanges; ++seed) {
        Soak soak(seed);
        if (!soak.run(run).empty()) {
            std::printf("%s", soak.report().c_str());
            std::printf("%ld exchanges in all; again with: line-soak %d %u %d\n", made + soak.exchanges(), run, seed,
                        run);
            return 1;
        }
        made += soak.exchanges();
    }
    std::printf("%ld exchanges, nothing wrong; next seed %u\n", made, seed);
    return 0;
}

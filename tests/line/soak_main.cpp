// line-soak [EXCHANGES [SEED [RUN]]]: runs of RUN exchanges each (500), from SEED on (a fresh one), until EXCHANGES
// (200000) have been made.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <string>

#include "line/soak.h"

namespace {

/// That nothing went wrong says little where nothing happened.
using Happened = std::map<std::string, long>;

void add(const Soak &soak, Happened *happened) {
    const dravo::LineCounts &counts = soak.counts();
    (*happened)["runs ended by altered bytes with a right CRC"] += soak.hadAccident() ? 1 : 0;
    (*happened)["answered"] += long(counts.answered);
    (*happened)["retries"] += long(counts.retries);
    (*happened)["refused"] += long(counts.failures[dravo::LineCounts::Refused]);
    (*happened)["late answers dropped"] += long(counts.lateDropped);
    (*happened)["foreign frames"] += long(counts.foreignDropped);
    (*happened)["echoes"] += long(counts.echoes);
    (*happened)["operations done"] += soak.operationsDone();
}

}  // namespace

int main(int argc, char **argv) {
    long numbers[] = {200000, long(std::random_device()()), 500};
    for (int i = 1; i < argc; ++i) {
        char *end = argv[i];
        const long number = i < 4 ? std::strtol(argv[i], &end, 10) : 0;
        if (number < 1 || *end != 0) {
            std::fprintf(stderr, "usage: line-soak [EXCHANGES [SEED [RUN]]], whole numbers above 0\n");
            return 2;
        }
        numbers[i - 1] = number;
    }
    const long exchanges = numbers[0];
    unsigned seed = unsigned(numbers[1]);
    const int run = int(std::min<long>(numbers[2], 1000000));
    std::printf("from seed %u\n", seed);
    long made = 0;
    Happened happened;
    for (; made < exchanges; ++seed) {
        Soak soak(seed);
        if (!soak.run(run).empty()) {
            std::printf("%s", soak.report().c_str());
            std::printf("%ld exchanges in all; again with: line-soak %d %u %d\n", made + soak.exchanges(), run, seed,
                        run);
            return 1;
        }
        made += soak.exchanges();
        add(soak, &happened);
    }
    for (const auto &[what, count] : happened) {
        std::printf("%s: %ld\n", what.c_str(), count);
    }
    std::printf("%ld exchanges, nothing wrong; next seed %u\n", made, seed);
    return 0;
}

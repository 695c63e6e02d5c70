// line-soak [EXCHANGES [SEED [RUN]]]: runs of RUN exchanges each (500), from SEED on (a fresh one), until EXCHANGES
// (200000) have been made.
#include <cstdio>
#include <cstdlib>
#include <random>

#include "line/soak.h"

namespace {

/// That nothing went wrong says little where nothing happened.
struct Happened {
    long accidents = 0, answered = 0, retries = 0, refused = 0, late = 0, foreign = 0, echoes = 0, done = 0;
    std::map<int, long> events;

    void add(const Soak &soak) {
        const dravo::LineCounts &counts = soak.counts();
        accidents += soak.hadAccident() ? 1 : 0;
        answered += long(counts.answered);
        retries += long(counts.retries);
        refused += long(counts.failures[dravo::LineCounts::Refused]);
        late += long(counts.lateDropped);
        foreign += long(counts.foreignDropped);
        echoes += long(counts.echoes);
        done += soak.operationsDone();
        for (const auto &[kind, count] : soak.events()) {
            events[kind] += count;
        }
    }
    void print() {
        std::printf("runs ended by altered bytes with a right CRC: %ld\n", accidents);
        std::printf(
            "answered %ld, retries %ld, refused %ld, late answers dropped %ld, foreign frames %ld, echoes %ld\n",
            answered, retries, refused, late, foreign, echoes);
        std::printf("operations %ld of which done %ld, stations down %ld and up %ld, passes %ld, lists cut anew %ld\n",
                    events[dravo::LineEvent::Operation], done, events[dravo::LineEvent::StationDown],
                    events[dravo::LineEvent::StationUp], events[dravo::LineEvent::PassDone],
                    events[dravo::LineEvent::ReadsChanged]);
    }
};

}  // namespace

int main(int argc, char **argv) {
    const long exchanges = argc > 1 ? std::atol(argv[1]) : 200000;
    unsigned seed = argc > 2 ? unsigned(std::strtoul(argv[2], nullptr, 10)) : std::random_device()();
    std::printf("from seed %u\n", seed);
    const int run = argc > 3 ? std::atoi(argv[3]) : 500;
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
        happened.add(soak);
    }
    happened.print();
    std::printf("%ld exchanges, nothing wrong; next seed %u\n", made, seed);
    return 0;
}

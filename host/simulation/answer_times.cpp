#include "host/simulation/answer_times.h"

#include <algorithm>

namespace simulation {

namespace {

constexpr int kFastBaud = 19200;  // above it the silence is a time, no longer a number of characters
constexpr std::chrono::microseconds kFastGap{1750};

Clock::duration seconds(double count) {
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(count));
}

}  // namespace

Clock::duration characterTime(const SimulatedLineOptions &options) {
    return options.paced ? seconds(double(options.bitsPerCharacter) / options.baud) : Clock::duration::zero();
}

Clock::duration frameGap(const SimulatedLineOptions &options) {
    return options.baud > kFastBaud ? Clock::duration(kFastGap)
                                    : seconds(3.5 * options.bitsPerCharacter / options.baud);
}

AnswerTimes::AnswerTimes(const SimulatedLineOptions &options)
    : options_(options), gap_(options.paced ? frameGap(options) : Clock::duration::zero()), generator_(options.seed) {}

Clock::time_point AnswerTimes::begin(int station, Clock::time_point asked, bool late) {
    Clock::time_point &busyUntil = busyUntil_[station];
    busyUntil = std::max(asked + gap_, busyUntil) + turnaround(station);
    return (late ? std::max(busyUntil, asked + options_.lateBy) : busyUntil) + options_.delay;
}

Clock::duration AnswerTimes::turnaround(int station) {
    if (!options_.paced) {
        return Clock::duration::zero();
    }
    const auto own = options_.turnaroundOf.find(station);
    const Turnaround &given = own != options_.turnaroundOf.end() ? own->second : options_.turnaround;
    const auto most = static_cast<std::chrono::microseconds::rep>(given.jitterMs) * 1000;
    return std::chrono::milliseconds(given.ms) +
           std::chrono::microseconds(
               std::uniform_int_distribution<std::chrono::microseconds::rep>(0, most)(generator_));
}

}  // namespace simulation

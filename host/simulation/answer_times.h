// When a controller begins to answer: once the line was silent for long enough to end the request, and the controller's
// turnaround is over. It works on one request at a time. One thread, the relay's.
#ifndef DRAVO_ANSWER_TIMES_H
#define DRAVO_ANSWER_TIMES_H

#include <map>
#include <random>

#include "host/simulation/paced_bytes.h"
#include "host/simulation/simulated_line.h"

namespace simulation {

/// What a character takes, start, parity and stop bits included.
Clock::duration characterTime(const SimulatedLineOptions &options);
/// The silence between two frames: 3.5 characters, above 19200 baud 1.75 ms (Modbus over serial line, 2.5.1.1).
Clock::duration frameGap(const SimulatedLineOptions &options);

class AnswerTimes {
public:
    explicit AnswerTimes(const SimulatedLineOptions &options);

    /// Of the answer to a request whose last byte was through at asked.
    Clock::time_point begin(int station, Clock::time_point asked, bool late);

private:
    Clock::duration turnaround(int station);

    const SimulatedLineOptions options_;
    const Clock::duration gap_;  // none where bytes take no time
    std::map<int, Clock::time_point> busyUntil_;
    std::mt19937 generator_;  // of its own: the faults of a seed do not depend on how long answers take
};

}  // namespace simulation

#endif

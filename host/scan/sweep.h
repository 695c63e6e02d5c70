// The stations that are asked at one setting of the line: whose turn it is, and what came of it. Pure; any thread.
#ifndef DRAVO_HOST_SCAN_SWEEP_H
#define DRAVO_HOST_SCAN_SWEEP_H

#include <optional>
#include <vector>

#include "korvel_dravo_line.h"

/// What a station has done at best.
enum class Answer {
    None,
    Damaged,  // something came, and no whole answer
    Late,     // an answer, after it was no longer waited for
    Whole     // values or an exception
};

struct StationAnswer {
    int station;
    Answer answer = Answer::None;
    int code = 0;  // Whole: the driver's result code
    int exceptionCode = 0;
    qint64 replyUs = -1;  // Whole
};

class Sweep {
public:
    /// Every station is asked until it has answered, at most once a round: a disturbance, or the late answer of another
    /// station, that spoils an answer in one round is over in the next.
    /// @param rounds  1 or more.
    Sweep(const std::vector<int> &stations, int rounds);

    /// The station to ask now; none: all are done.
    std::optional<int> next();
    void judged(const dravo::LineEvent &exchange);
    void heardLate(int station);

    /// Those that did something.
    std::vector<StationAnswer> heard() const;
    int round() const { return round_; }  // from 1
    /// How much of the longest way is behind, 0 to 1.
    double done() const;

private:
    void improve(const StationAnswer &answer);

    std::vector<StationAnswer> stations_;
    int rounds_;
    int round_ = 1;
    std::size_t place_ = 0;  // of the next in its round
};

#endif  // DRAVO_HOST_SCAN_SWEEP_H

#include "host/simulation/option_check.h"

#include <algorithm>
#include <set>

using simulation::Failure;

namespace {

bool isStation(int number) {
    return number >= 1 && number <= 247;
}

bool isUsable(const Turnaround &turnaround) {
    const auto isTime = [](int ms) { return ms >= 0 && ms <= kLongestTurnaroundMs; };
    return isTime(turnaround.ms) && isTime(turnaround.jitterMs);
}

/// Of what takes its time on the line.
Failure checkTimes(const SimulatedLineOptions &options) {
    if (options.baud <= 0) {
        return Failure("the baud rate must be positive");
    }
    if (options.bitsPerCharacter < 10 || options.bitsPerCharacter > 12) {
        return Failure("a character has 10 to 12 bits");
    }
    if (options.delay < std::chrono::milliseconds::zero() || options.delay > std::chrono::hours(1)) {
        return Failure("replies are delayed by 0 milliseconds to one hour");
    }
    if (options.lateBy < std::chrono::milliseconds::zero() || options.lateBy > std::chrono::hours(1)) {
        return Failure("a late reply comes after 0 milliseconds to one hour");
    }
    bool usable = isUsable(options.turnaround);
    for (const auto &own : options.turnaroundOf) {
        usable = usable && isUsable(own.second);
    }
    return usable ? Failure() : Failure("a turnaround takes 0 to " + std::to_string(kLongestTurnaroundMs) + " ms");
}

}  // namespace

Failure simulation::checkOptions(const SimulatedLineOptions &options) {
    const std::set<int> stations(options.stations.begin(), options.stations.end());
    if (stations.empty()) {
        return Failure("a line needs at least one station");
    }
    if (!std::all_of(stations.begin(), stations.end(), isStation)) {
        return Failure("a station is a number from 1 to 247");
    }
    if (stations.size() != options.stations.size()) {
        return Failure("a station is named twice");
    }
    const std::vector<std::string> strangers = namedStrangers(options);
    if (!strangers.empty()) {
        return Failure(strangers.front());
    }
    if (options.remoteNode < -1 || options.remoteNode > 255) {
        return Failure("a remote node is a number from 0 to 255");
    }
    if (Failure failure = checkTimes(options)) {
        return failure;
    }
    std::set<FaultKind> kinds;
    for (const LineFault &fault : options.faults) {
        if (fault.kind == FaultKind::DeadStation) {
            return Failure("a dead station is named by its number");
        }
        if (!(fault.probability >= 0.0 && fault.probability <= 1.0)) {
            return Failure("a fault's probability is from 0 to 1");
        }
        if (!kinds.insert(fault.kind).second) {
            return Failure("a fault is named twice");
        }
    }
    return Failure();
}

std::vector<std::string> namedStrangers(const SimulatedLineOptions &options) {
    std::vector<std::string> strangers;
    std::string known;
    for (const int station : options.stations) {
        known += (known.empty() ? "" : ", ") + std::to_string(station);
    }
    const auto check = [&](const std::string &what, int station) {
        if (std::find(options.stations.begin(), options.stations.end(), station) == options.stations.end()) {
            strangers.push_back(what + ": station " + std::to_string(station) + " is not on the line (" + known + ")");
        }
    };
    if (options.deadStation != 0) {
        check("fault 'dead'", options.deadStation);
    }
    for (const ForbiddenRange &range : options.forbidden) {
        check("fault 'refuse'", range.station);
    }
    for (const auto &own : options.turnaroundOf) {
        check("turnaround", own.first);
    }
    return strangers;
}

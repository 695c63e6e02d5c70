#include "line/operation_turns.h"

#include <limits>

namespace dravo {

OperationTurns::OperationTurns(const LineSettings &settings)
    : lifetimeUs_(settings.lifetimeUs), mayProbe_(true), probeFromUs_(0), writesHeldSinceUs_(-1) {}

bool OperationTurns::take(const CallLoop &loop, const PassClock &passes, HostOperation *operation) {
    if (!passes.hasWork(loop.stations(), loop.nowUs())) {  // nobody to be held up, but for who wants something too
        mayProbe_ = true;
        probeFromUs_ = queue_.hasAnyBut(loop.stations().down()) ? probeFromUs_ : loop.nowUs();
    }
    const bool mayWriteNow = mayWrite(loop, passes);
    if (!loop.mayStartOperation() || !queue_.take(mayWriteNow, resting(loop), operation)) {
        return false;
    }
    if (loop.stations().isDown(operation->variable.station)) {
        mayProbe_ = false;
        probeFromUs_ = loop.nowUs() + lifetimeUs_;
    }
    return true;
}

// Reads show whether the adapter echoes; before that the answers to some writes cannot be told from echoes.
bool OperationTurns::mayWrite(const CallLoop &loop, const PassClock &passes) {
    const qint64 us = qMax(loop.nowUs(), loop.lineFreeUs());
    if (loop.knowsEcho() || !queue_.hasWrites() || !passes.hasWork(loop.stations(), us + 2 * lifetimeUs_)) {
        writesHeldSinceUs_ = -1;
        return true;
    }
    writesHeldSinceUs_ = writesHeldSinceUs_ < 0 ? us : writesHeldSinceUs_;
    return loop.nowUs() >= holdEndUs();
}

// The stations that no operation may ask now: each that does not answer costs the living a whole timeout.
QList<int> OperationTurns::resting(const CallLoop &loop) const {
    QList<int> stations = loop.stations().down();
    const bool mayProbe = mayProbe_ && probeFromUs_ <= loop.nowUs();
    for (int i = stations.size() - 1; mayProbe && i >= 0; --i) {
        if (loop.expectedUntil(stations.at(i)) <= loop.nowUs()) {
            stations.removeAt(i);
        }
    }
    return stations;
}

// What could be taken now has been taken: only later times count.
qint64 OperationTurns::nextUs(const CallLoop &loop) const {
    qint64 us = std::numeric_limits<qint64>::max();
    if (!loop.mayStartOperation()) {
        return us;
    }
    if (writesHeldSinceUs_ >= 0) {
        us = holdEndUs();
    }
    const QList<int> down = loop.stations().down();
    for (int i = 0; mayProbe_ && i < down.size(); ++i) {
        const qint64 fromUs = qMax(probeFromUs_, loop.expectedUntil(down.at(i)));
        us = queue_.hasAnyOf(down.at(i)) && fromUs > loop.nowUs() ? qMin(us, fromUs) : us;
    }
    return us;
}

}  // namespace dravo

#include "line/operation_turns.h"

#include <limits>

namespace dravo {

// Of two lifetimes one may go by with what is outstanding.
OperationTurns::OperationTurns(const LineSettings &settings)
    : longestHoldUs_(2 * settings.lifetimeUs), mayProbe_(true), writesHeldSinceUs_(-1) {}

bool OperationTurns::take(const CallLoop &loop, const PassClock &passes, HostOperation *operation) {
    mayProbe_ = mayProbe_ || !passes.hasWork(loop.stations(), loop.nowUs());
    const bool mayWriteNow = mayWrite(loop, passes);
    if (!loop.mayStartOperation() || !queue_.take(mayWriteNow, resting(loop), operation)) {
        return false;
    }
    mayProbe_ = mayProbe_ && !loop.stations().isDown(operation->variable.station);
    return true;
}

// Reads show whether the adapter echoes; before that the answers to some writes cannot be told from echoes.
bool OperationTurns::mayWrite(const CallLoop &loop, const PassClock &passes) {
    const qint64 us = qMax(loop.nowUs(), loop.lineFreeUs());
    if (loop.knowsEcho() || !queue_.hasWrites() || !passes.hasWork(loop.stations(), us)) {
        writesHeldSinceUs_ = -1;
        return true;
    }
    writesHeldSinceUs_ = writesHeldSinceUs_ < 0 ? us : writesHeldSinceUs_;
    return loop.nowUs() - writesHeldSinceUs_ > longestHoldUs_;
}

// The stations that no operation may ask now: each that does not answer costs the living a whole timeout.
QList<int> OperationTurns::resting(const CallLoop &loop) const {
    QList<int> stations = loop.stations().down();
    for (int i = stations.size() - 1; mayProbe_ && i >= 0; --i) {
        if (loop.expectedUntil(stations.at(i)) <= loop.nowUs()) {
            stations.removeAt(i);
        }
    }
    return stations;
}

qint64 OperationTurns::nextProbeUs(const CallLoop &loop) const {
    qint64 us = std::numeric_limits<qint64>::max();
    const QList<int> down = loop.stations().down();
    for (int i = 0; mayProbe_ && loop.mayStartOperation() && i < down.size(); ++i) {
        us = queue_.hasAnyOf(down.at(i)) ? qMin(us, loop.expectedUntil(down.at(i))) : us;
    }
    return us;
}

}  // namespace dravo

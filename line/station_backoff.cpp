#include "line/station_backoff.h"

#include <limits>

namespace dravo {

namespace {
const qint64 kNever = std::numeric_limits<qint64>::max();
}

StationBackoff::StationBackoff(const LineSettings &settings)
    : downAfter_(settings.downAfter), firstProbeUs_(settings.firstProbeUs), longestProbeUs_(settings.longestProbeUs) {}

bool StationBackoff::heard(int station) {
    Station &known = stations_[station];
    const bool wasDown = known.isDown;
    known = Station();
    known.answeredLast = true;
    return wasDown;
}

bool StationBackoff::missed(int station, qint64 nowUs, qint64 earliestProbeUs) {
    Station &known = stations_[station];
    known.answeredLast = false;
    known.missed = qMin(known.missed + 1, 1000000);
    if (downAfter_ <= 0 || known.missed < downAfter_) {
        return false;
    }
    const bool goesDown = !known.isDown;
    if (goesDown) {
        known.isDown = true;
        known.intervalUs = firstProbeUs_;
    } else {
        known.intervalUs = qMin(known.intervalUs * 2, longestProbeUs_);
    }
    known.probeUs = qMax(nowUs + known.intervalUs, earliestProbeUs);
    return goesDown;
}

QList<int> StationBackoff::down() const {
    QList<int> stations;
    for (QMap<int, Station>::const_iterator it = stations_.constBegin(); it != stations_.constEnd(); ++it) {
        if (it.value().isDown) {
            stations.append(it.key());
        }
    }
    return stations;
}

QList<int> StationBackoff::takeDue(qint64 nowUs) {
    QList<int> stations;
    for (QMap<int, Station>::iterator it = stations_.begin(); it != stations_.end(); ++it) {
        Station &known = it.value();
        if (known.isDown && known.probeUs <= nowUs) {
            known.probeUs = nowUs + known.intervalUs;  // again, should nothing come of it
            stations.append(it.key());
        }
    }
    return stations;
}

void StationBackoff::probeFrom(qint64 us) {
    for (QMap<int, Station>::iterator it = stations_.begin(); it != stations_.end(); ++it) {
        if (it.value().isDown) {
            it.value().probeUs = us;
        }
    }
}

qint64 StationBackoff::nextDueUs() const {
    qint64 next = kNever;
    for (QMap<int, Station>::const_iterator it = stations_.constBegin(); it != stations_.constEnd(); ++it) {
        if (it.value().isDown) {
            next = qMin(next, it.value().probeUs);
        }
    }
    return next;
}

}  // namespace dravo

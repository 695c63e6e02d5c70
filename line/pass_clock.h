// Passes over the cyclic list: which requests have had their turn, and when the next pass may begin. Communication
// thread.
#ifndef DRAVO_LINE_PASS_CLOCK_H
#define DRAVO_LINE_PASS_CLOCK_H

#include <QtCore/QMap>

#include "korvel_dravo_line.h"
#include "korvel_dravo_port.h"
#include "line/station_backoff.h"

namespace dravo {

class PassClock {
public:
    explicit PassClock(qint64 periodUs) : periodUs_(periodUs), beginUs_(0), finished_(0) {}

    /// A pass over these requests may begin at beginUs.
    void begin(const QList<RW_VAR> &requests, qint64 beginUs);
    bool isDue(qint64 nowUs) const { return nowUs >= beginUs_; }
    /// When the next pass may begin, once this one is over.
    qint64 dueUs() const { return finished_ > 0 ? beginUs_ + periodUs_ : beginUs_; }

    /// A request for the elements is over, well or badly.
    void finished(const Elements &elements);
    /// Whether something was read, and only requests of stations that are down are left.
    bool isOver(const StationBackoff &stations) const { return finished_ > 0 && !isLeft(stations); }
    /// Whether a request of a station that is up is to be made now.
    bool hasWork(const StationBackoff &stations, qint64 nowUs) const { return isDue(nowUs) && isLeft(stations); }
    qint64 lastedUs(qint64 nowUs) const { return nowUs - beginUs_; }

private:
    typedef QPair<qint64, qint64> Key;  // station and type, address and count
    static Key keyOf(const Elements &elements);
    bool isLeft(const StationBackoff &stations) const;

    qint64 periodUs_;
    qint64 beginUs_;
    int finished_;
    QMap<Key, int> left_;    // how often, since requests as they stand can be alike
    QMap<int, int> leftOf_;  // by station
};

}  // namespace dravo

#endif  // DRAVO_LINE_PASS_CLOCK_H

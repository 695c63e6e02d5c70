// Which stations are down, and when each is asked again. Times in microseconds. Communication thread.
#ifndef DRAVO_LINE_STATION_BACKOFF_H
#define DRAVO_LINE_STATION_BACKOFF_H

#include <QtCore/QList>
#include <QtCore/QMap>

#include "korvel_dravo_line.h"

namespace dravo {

class StationBackoff {
public:
    explicit StationBackoff(const LineSettings &settings);

    bool isDown(int station) const { return stations_.value(station).isDown; }
    /// Whether the station answered the last request that it was asked.
    bool answeredLast(int station) const { return stations_.value(station).answeredLast; }
    qint64 nextProbeUs(int station) const { return stations_.value(station).probeUs; }

    /// A valid frame of the station came. @return it was down.
    bool heard(int station);
    /// A request of the station is over without any answer, or a probe. @return the station has just gone down.
    /// @param earliestProbeUs  not before this.
    bool missed(int station, qint64 nowUs, qint64 earliestProbeUs);

    /// Those that are down.
    QList<int> down() const;
    /// The stations that are down and due to be asked; each is told once for a probe.
    QList<int> takeDue(qint64 nowUs);
    /// All that are down are due at us.
    void probeFrom(qint64 us);
    /// When the next one is due; the end of time when none is.
    qint64 nextDueUs() const;

private:
    struct Station {
        Station() : missed(0), answeredLast(false), isDown(false), probeUs(0), intervalUs(0) {}
        int missed;  // requests in a row
        bool answeredLast;
        bool isDown;
        qint64 probeUs;
        qint64 intervalUs;  // to the next probe
    };
    int downAfter_;
    qint64 firstProbeUs_;
    qint64 longestProbeUs_;
    QMap<int, Station> stations_;  // 256 at most: a frame carries a station's low byte
};

}  // namespace dravo

#endif  // DRAVO_LINE_STATION_BACKOFF_H

// Why the engine dropped a frame. It counts what it drops for each station and does not name the frames, so each frame
// found among the bytes that were no answer takes one of its station's counts. Communication thread.
#ifndef DRAVO_HOST_TRACE_DROP_COUNTS_H
#define DRAVO_HOST_TRACE_DROP_COUNTS_H

#include <QtCore/QMap>

#include "korvel_dravo_statistics.h"

class DropCounts {
public:
    enum Why { Echo, Late, Foreign, LateOrForeign };

    /// What the engine has counted so far; another engine may begin at nothing.
    void update(const dravo::LineStatistics &statistics);
    /// Why a frame of the station was dropped. @param isCopy  it is one of a request.
    Why take(int station, bool isCopy);
    /// Copies of the station's requests that were dropped and not taken yet.
    qint64 echoes(int station) const { return open_.value(station).echoes; }
    /// What was not taken is of frames that were found in other places than the engine found them.
    void forget() { open_.clear(); }

private:
    struct Counts {
        qint64 echoes = 0;
        qint64 late = 0;
        qint64 foreign = 0;
        qint64 sum() const { return echoes + late + foreign; }
    };
    static Counts countsOf(const dravo::LineFigures &figures);

    qint64 sum_ = 0;
    QMap<int, Counts> seen_;
    QMap<int, Counts> open_;
};

#endif  // DRAVO_HOST_TRACE_DROP_COUNTS_H

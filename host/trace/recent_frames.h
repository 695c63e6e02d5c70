// The last frames of each station, for a page that shows them. Communication thread.
#ifndef DRAVO_HOST_TRACE_RECENT_FRAMES_H
#define DRAVO_HOST_TRACE_RECENT_FRAMES_H

#include <QtCore/QMap>
#include <QtCore/QStringList>

#include "host/trace/traced_frame.h"

class RecentFrames {
public:
    /// Frames kept of a station; of those with numbers beyond 247, which foreign frames may name, as well.
    enum { kMost = 50 };

    /// @param wallUs  microseconds since 1970.
    void add(const TracedFrame &frame, qint64 wallUs);
    /// Decoded, a line each, the oldest first; damaged bytes stand with the station that was asked last.
    QStringList lines(int station) const;

private:
    struct Stamped {
        TracedFrame frame;
        qint64 wallUs;
    };
    QMap<int, QList<Stamped>> frames_;
};

#endif  // DRAVO_HOST_TRACE_RECENT_FRAMES_H

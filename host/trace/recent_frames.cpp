#include "host/trace/recent_frames.h"

#include "host/trace/text_line.h"

void RecentFrames::add(const TracedFrame &frame, qint64 wallUs) {
    QList<Stamped> &frames = frames_[frame.station];
    frames.append({frame, wallUs});
    if (frames.size() > kMost) {
        frames.removeFirst();
    }
}

QStringList RecentFrames::lines(int station) const {
    QStringList lines;
    for (const Stamped &stamped : frames_.value(station)) {
        lines.append(pageLine(stamped.frame, stamped.wallUs));
    }
    return lines;
}

// How busy the line has been of late: over the last ten seconds or so, for an average since the start hides what goes
// on now. Any one thread.
#ifndef DRAVO_HOST_SCREEN_LINE_LOAD_H
#define DRAVO_HOST_SCREEN_LINE_LOAD_H

#include "korvel_dravo_statistics.h"

class LineLoad {
public:
    explicit LineLoad(qint64 nowUs) : older_{nowUs, 0}, newer_{nowUs, 0} {}

    /// Called often. busyUs: as counted since the start.
    void take(qint64 nowUs, qint64 busyUs) {
        if (nowUs - newer_.atUs >= kSampleUs) {
            older_ = newer_;
            newer_ = {nowUs, busyUs};
        }
    }
    /// 0 to 1000.
    int perMille(qint64 nowUs, qint64 busyUs) const {
        dravo::LineCounts counts;
        counts.busyUs = busyUs - older_.busyUs;
        return counts.busyPerMille(nowUs - older_.atUs);
    }

private:
    struct Sample {
        qint64 atUs;
        qint64 busyUs;
    };
    static constexpr qint64 kSampleUs = 5000000;
    Sample older_;
    Sample newer_;
};

#endif  // DRAVO_HOST_SCREEN_LINE_LOAD_H

// How long bytes take on the line. Pure; any thread.
#ifndef DRAVO_LINE_LINE_TIMES_H
#define DRAVO_LINE_LINE_TIMES_H

#include "korvel_dravo_line.h"

namespace dravo {

/// A time that the host gives, bounded so that sums and differences of times fit.
inline qint64 boundedUs(qint64 us) {
    const qint64 farthest = Q_INT64_C(1) << 60;
    return qBound(-farthest, us, farthest);
}

class LineTimes {
public:
    explicit LineTimes(const LineSettings &settings)
        : baud_(qMax(settings.baud, 1)), bits_(qMax(settings.bitsPerCharacter, 1)), silenceUs_(settings.silenceUs) {}

    qint64 charactersUs(qint64 characters) const { return (characters * bits_ * 1000000 + baud_ - 1) / baud_; }
    /// The silence between two frames: 3.5 characters, above 19200 baud 1.75 ms (Modbus over serial line, 2.5.1.1).
    qint64 gapUs() const { return baud_ > 19200 ? 1750 : (bits_ * 3500000LL + baud_ - 1) / baud_; }
    /// The silence that ends what was arriving.
    qint64 silenceUs() const { return qMax(gapUs(), silenceUs_); }

private:
    qint64 baud_;
    qint64 bits_;
    qint64 silenceUs_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_LINE_TIMES_H

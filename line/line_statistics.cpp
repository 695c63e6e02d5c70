#include "line/line_statistics.h"

#include <algorithm>

namespace dravo {

LineCounts::LineCounts()
    : sendings(0),
      retries(0),
      answered(0),
      lateDropped(0),
      foreignDropped(0),
      echoes(0),
      waits(0),
      waitedUs(0),
      bytesOut(0),
      bytesIn(0),
      busyUs(0) {
    std::fill(failures, failures + kFailures, 0);
    std::fill(exceptions, exceptions + kExceptionCodes, 0);
}

int LineCounts::busyPerMille(qint64 elapsedUs) const {
    // Microseconds times 1000 fit for 292 years.
    return elapsedUs <= 0 ? 0 : int(qBound<qint64>(0, busyUs * 1000 / elapsedUs, 1000));
}

template <typename Count>
void LineStatistics::count(int station, Count count) {
    count(line_);
    if (station >= 0 && station <= 255) {
        count(stations_[station]);
    }
}

void LineStatistics::sent(int station, int bytes, qint64 lineUs, bool retry) {
    count(station, [=](LineFigures &figures) {
        ++figures.counts.sendings;
        figures.counts.retries += retry ? 1 : 0;
        figures.counts.bytesOut += bytes;
        figures.counts.busyUs += lineUs;
    });
}

void LineStatistics::received(int station, int bytes, qint64 lineUs) {
    count(station, [=](LineFigures &figures) {
        figures.counts.bytesIn += bytes;
        figures.counts.busyUs += lineUs;
    });
}

void LineStatistics::answered(int station, qint64 replyUs) {
    count(station, [=](LineFigures &figures) {
        ++figures.counts.answered;
        figures.replyTimes.add(replyUs);
    });
}

void LineStatistics::exceptionReceived(int station, int code) {
    const int index = code > 0 && code < LineCounts::kExceptionCodes ? code : 0;
    count(station, [=](LineFigures &figures) { ++figures.counts.exceptions[index]; });
}

void LineStatistics::failed(int station, LineCounts::Failure failure) {
    count(station, [=](LineFigures &figures) { ++figures.counts.failures[failure]; });
}

void LineStatistics::lateDropped(int station) {
    count(station, [](LineFigures &figures) { ++figures.counts.lateDropped; });
}

void LineStatistics::foreignDropped(int station) {
    count(station, [](LineFigures &figures) { ++figures.counts.foreignDropped; });
}

void LineStatistics::echoReceived(int station) {
    count(station, [](LineFigures &figures) { ++figures.counts.echoes; });
}

void LineStatistics::waited(int station, qint64 us) {
    count(station, [=](LineFigures &figures) {
        ++figures.counts.waits;
        figures.counts.waitedUs += us;
    });
}

const LineFigures &LineStatistics::forStation(int station) const {
    const QMap<int, LineFigures>::const_iterator found = stations_.constFind(station);
    return found == stations_.constEnd() ? none_ : found.value();
}

}  // namespace dravo

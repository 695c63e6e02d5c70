// What has happened on the line, counted for the whole of it and for each station. At most 1 MB for 256 stations,
// however long it counts. Communication thread.
#ifndef DRAVO_LINE_LINE_STATISTICS_H
#define DRAVO_LINE_LINE_STATISTICS_H

#include <QtCore/QList>
#include <QtCore/QMap>

#include "line/reply_times.h"

namespace dravo {

struct LineCounts {
    enum Failure { NoAnswer, Damaged, Refused };  // Refused: an exception
    enum { kFailures = 3, kExceptionCodes = 12 };
    LineCounts();

    qint64 sendings;  // retries included
    qint64 retries;
    qint64 answered;                     // with values, or a write's confirmation
    qint64 failures[kFailures];          // requests given up
    qint64 exceptions[kExceptionCodes];  // replies by code, 1 to 11; entry 0: any other code
    qint64 lateDropped;                  // answers to requests that were no longer waiting
    qint64 foreignDropped;               // frames that nobody had asked for
    qint64 echoes;
    qint64 waits;  // for the end of a lifetime, before a request could go out
    qint64 waitedUs;
    qint64 bytesOut;
    qint64 bytesIn;
    qint64 busyUs;  // time in which bytes went over the line

    /// The share of the time that the line was busy, 0 to 1000.
    int busyPerMille(qint64 elapsedUs) const;
};

struct LineFigures {
    LineCounts counts;
    ReplyTimes replyTimes;  // of answered requests, from the end of sending
};

/// Each call counts for the line, and for the station where that is 0 to 255.
class LineStatistics {
public:
    /// @param lineUs  the time that the bytes took.
    void sent(int station, int bytes, qint64 lineUs, bool retry);
    void received(int station, int bytes, qint64 lineUs);
    void answered(int station, qint64 replyUs);
    void exceptionReceived(int station, int code);
    void failed(int station, LineCounts::Failure failure);
    void lateDropped(int station);
    void foreignDropped(int station);
    void echoReceived(int station);
    void waited(int station, qint64 us);

    const LineFigures &line() const { return line_; }
    /// Zeros for a station that nothing was counted for. The reference holds until the next call of any other function.
    const LineFigures &forStation(int station) const;
    /// Those that something was counted for, ascending.
    QList<int> stations() const { return stations_.keys(); }

private:
    template <typename Count>
    void count(int station, Count count);

    LineFigures line_;
    LineFigures none_;
    QMap<int, LineFigures> stations_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_LINE_STATISTICS_H

// The driver's call loop: what goes on the line when, and what the driver is told. Communication thread.
#ifndef DRAVO_LINE_CALL_LOOP_H
#define DRAVO_LINE_CALL_LOOP_H

#include <QtCore/QMap>

#include "korvel_dravo_line.h"
#include "line/driver_port.h"
#include "line/echo_watch.h"
#include "line/frame_finder.h"
#include "line/line_times.h"
#include "line/outstanding.h"
#include "line/station_backoff.h"
#include "line/variable.h"

namespace dravo {

class CallLoop {
public:
    /// @param settings  in range.
    CallLoop(const LineSettings &settings, DriverPort &port, LineStatistics &statistics, qint64 nowUs);

    void received(const QByteArray &bytes, qint64 nowUs);
    /// As Line::next, but comes back whenever a request is over, then with a wait until nowUs.
    /// @param mayFetch  a new request may be taken from the driver.
    Step next(qint64 nowUs, bool mayFetch);
    /// The latest time that the host has given.
    qint64 nowUs() const { return nowUs_; }
    /// Nothing is sent before, be it for the silence at the start.
    qint64 lineFreeUs() const { return lineFreeUs_; }
    /// When silence ends what is arriving, which may be a frame then; the end of time: nothing is.
    qint64 inputEndsUs() const;
    /// The bytes of the last Step::Send have been handed to the port.
    void sent(qint64 nowUs);
    /// The port was closed and opened again: what was on the line is lost or may still come.
    /// @return the operations that the driver had, which are lost: the station, by number.
    QMap<int, int> restart(qint64 nowUs);

    /// Whether the driver has no operation, and the next request may be one.
    bool mayStartOperation() const { return phase_ == Idle && operations_.isEmpty(); }
    /// An operation of the station goes into the driver's queue. Until it is over, the station's requests go out even
    /// while it is down.
    void operationStarts(int operation, int station);
    /// An operation is lost, or was never begun.
    void tellLost(int operation, int station);
    /// The latest time until which an answer of the station is expected; nowUs: none is.
    qint64 expectedUntil(int station) const { return outstanding_.expectedUntil(station, nowUs_); }

    /// The stations that are down and due to be asked, each once.
    QList<int> takeDueProbes() { return stations_.takeDue(nowUs_); }
    /// A read that asks its station whether it is up again.
    void probe(const RW_VAR &read);
    /// Whether something waits in the driver that is no cyclic read.
    bool isAsked() const { return !operations_.isEmpty() || !probed_.isEmpty(); }

    /// The elements that writes taken from the driver since the last call show in the cache.
    QList<Elements> takeWritten();
    bool knowsEcho() const { return echo_.isKnown(); }
    QList<LineEvent> takeEvents();
    const StationBackoff &stations() const { return stations_; }

private:
    enum Phase { Idle, Ready, Waiting, Turnaround };
    /// The request that the driver has handed out.
    struct Current {
        Outstanding::Request request;
        RW_VAR var;
        bool isFirstTry;
        qint64 readySinceUs;
        qint64 heldUs;  // at most, before its first try
        qint64 positionAtSending;
        qint64 endOfSendingUs;
        bool heard;          // its station sent something valid since the first try
        qint64 framedBytes;  // that came as whole frames since the last sending
        bool answered;
        bool echoed;  // a copy of it came that may have been the answer
        Frame answer;
    };

    void advance(qint64 nowUs);
    void sortInput();
    void sortOut(const Frame &frame);
    bool fetch();
    qint64 readyUs() const;
    Step send();
    void setEndOfSending();
    bool isConcluded(qint64 *untilUs) const;
    void conclude();
    void concludeBroadcast();
    void finishTry(const DriverPort::Verdict &verdict, LineEvent::Failure failure, int exceptionCode);
    void count(const LineEvent &exchange);
    void tellOperations(const LineEvent &exchange);
    void tellOperation(LineEvent over);
    void beSilent();
    void silence(int station);
    void missed(int station);
    bool hasOperations(int station) const;

    LineSettings settings_;
    LineTimes times_;
    DriverPort &port_;
    LineStatistics &statistics_;
    FrameFinder finder_;
    Outstanding outstanding_;
    EchoWatch echo_;
    StationBackoff stations_;
    QMap<int, int> operations_;  // in the driver: the station, by number
    QList<int> probed_;          // stations whose probe is in the driver
    qint64 requests_;            // so far
    qint64 nowUs_;
    qint64 lineFreeUs_;
    qint64 pauseUntilUs_;  // a busy controller's
    Phase phase_;
    Current current_;
    QList<Elements> written_;
    QList<LineEvent> events_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_CALL_LOOP_H

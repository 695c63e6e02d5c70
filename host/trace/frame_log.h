// Turns what the pump shows of a line into frames with what became of each, in the order in which they were on the
// line. A request is held until its exchange is over, and with it what arrives meanwhile, up to some thousands of
// bytes. Without I/O or clock. Communication thread.
#ifndef DRAVO_HOST_TRACE_FRAME_LOG_H
#define DRAVO_HOST_TRACE_FRAME_LOG_H

#include <functional>
#include <optional>

#include "host/trace/drop_counts.h"
#include "host/trace/frame_cut.h"
#include "host/trace/traced_frame.h"

class FrameLog {
public:
    /// tell: takes each frame. remote: requests are remote frames.
    FrameLog(std::function<void(const TracedFrame &)> tell, bool remote) : tell_(std::move(tell)), remote_(remote) {}

    // As LineTap's.

    void received(const QByteArray &bytes, qint64 us);
    void counted(const dravo::LineStatistics &statistics, qint64 us);
    void happened(const dravo::LineEvent &event);
    void sent(const QByteArray &frame, qint64 us);
    /// The line was closed or lost, or the run is over: tells what is held.
    void ended();

private:
    struct Portion {
        int end;  // in arrived_
        qint64 us;
    };
    void judge(const dravo::LineEvent &exchange);
    int placeOf(const QByteArray &reply) const;
    void tellAnswer(const dravo::LineEvent &exchange);
    void dropBefore(int end);
    TracedFrame dropped(const Piece &piece);
    TracedFrame arrivedFrame(TracedFrame::Kind kind, int start, int size) const;
    void forgetBefore(int end);
    void giveUpOnVerdict(const QString &verdict);
    void release();
    void tellInTurn(const TracedFrame &frame);

    std::function<void(const TracedFrame &)> tell_;
    const bool remote_;
    std::optional<TracedFrame> request_;  // whose exchange is not over
    QList<TracedFrame> behind_;           // that came after it
    QByteArray arrived_;                  // of which nothing is known yet
    QVector<Portion> portions_;
    DropCounts drops_;
    QList<QByteArray> lastRequests_;
    qint64 lastSentUs_ = -1;
    int lastStation_ = -1;
};

#endif  // DRAVO_HOST_TRACE_FRAME_LOG_H

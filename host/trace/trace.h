// What goes over a line: written to a file where one is asked for, and the last frames of it kept for the screen. It
// listens at the pump. Communication thread.
#ifndef DRAVO_HOST_TRACE_TRACE_H
#define DRAVO_HOST_TRACE_TRACE_H

#include <functional>
#include <optional>

#include "host/pump/line_tap.h"
#include "host/trace/frame_log.h"
#include "host/trace/recent_frames.h"
#include "host/trace/trace_format.h"
#include "host/trace/trace_output.h"

struct TraceSettings {
    QString file;                  // empty: none, "-": standard error; with the suffix pcapng packets, else text
    std::optional<int> megabytes;  // after which another file begins
};

class Trace : public LineTap {
public:
    /// @param tell  takes what the user has to know: that the file is full.
    explicit Trace(std::function<void(const QString &)> tell) : tell_(std::move(tell)) {}
    ~Trace() override { lineClosed(); }

    void setTell(std::function<void(const QString &)> tell) { tell_ = std::move(tell); }
    /// Begins. remote: requests are remote frames.
    Failure open(const TraceSettings &settings, bool remote);

    void received(const QByteArray &bytes, qint64 us) override { log_->received(bytes, us); }
    void counted(const dravo::LineStatistics &statistics, qint64 us) override { log_->counted(statistics, us); }
    void happened(const dravo::LineEvent &event) override { log_->happened(event); }
    void sent(const QByteArray &frame, qint64 us) override { log_->sent(frame, us); }
    /// What has gone out is not waited for any more.
    void lineClosed();

    /// All of a request's exchange is there once it is over.
    const RecentFrames &recent() const { return recent_; }

private:
    void take(const TracedFrame &frame);
    void append(const TracedFrame &frame, qint64 wallUs);

    std::function<void(const QString &)> tell_;
    std::optional<FrameLog> log_;
    RecentFrames recent_;
    TraceOutput output_;
    const TraceFormat *format_ = nullptr;
    qint64 leftOut_ = 0;
    bool toldOfGap_ = false;
    qint64 wallAheadUs_ = 0;  // of nowUs()
};

#endif  // DRAVO_HOST_TRACE_TRACE_H

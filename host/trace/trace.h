// What goes over a line: written to a file where one is asked for, and the last frames of it kept for the screen. It
// listens at the pump. Communication thread.
#ifndef DRAVO_HOST_TRACE_TRACE_H
#define DRAVO_HOST_TRACE_TRACE_H

#include "host/pump/line_tap.h"
#include "host/trace/frame_log.h"
#include "host/trace/recent_frames.h"
#include "host/trace/trace_writer.h"

class Trace : public LineTap {
public:
    /// @param tell  takes what the user has to know: that the file is full.
    explicit Trace(std::function<void(const QString &)> tell) : writer_(std::move(tell)) {}
    ~Trace() override { lineClosed(); }

    void setTell(std::function<void(const QString &)> tell) { writer_.setTell(std::move(tell)); }
    /// Begins, before the line is used. remote: requests are remote frames.
    Failure open(const TraceSettings &settings, bool remote);

    void received(const QByteArray &bytes, qint64 us) override { log_->received(bytes, us); }
    void counted(const dravo::LineStatistics &statistics, qint64 us) override { log_->counted(statistics, us); }
    void happened(const dravo::LineEvent &event) override { log_->happened(event); }
    void sent(const QByteArray &frame, qint64 us) override { log_->sent(frame, us); }
    /// What has gone out is not waited for any more.
    void lineClosed();

    /// The frames of an exchange are there once it is over.
    const RecentFrames &recent() const { return recent_; }

private:
    std::optional<FrameLog> log_;
    RecentFrames recent_;
    TraceWriter writer_;
};

#endif  // DRAVO_HOST_TRACE_TRACE_H

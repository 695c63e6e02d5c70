// A trace in its file, each frame at the time of day. One thread at a time.
#ifndef DRAVO_HOST_TRACE_TRACE_WRITER_H
#define DRAVO_HOST_TRACE_TRACE_WRITER_H

#include <functional>
#include <optional>

#include "host/trace/trace_format.h"
#include "host/trace/trace_output.h"

struct TraceSettings {
    QString file;                  // empty: none; "-": standard error; with the suffix pcapng packets, else text
    std::optional<int> megabytes;  // after which another file begins
};

class TraceWriter {
public:
    /// @param tell  takes what the user has to know: that the file is full.
    explicit TraceWriter(std::function<void(const QString &)> tell) : tell_(std::move(tell)) {}

    void setTell(std::function<void(const QString &)> tell) { tell_ = std::move(tell); }
    Failure open(const TraceSettings &settings);
    /// @return when it was, in microseconds since 1970. A failure is told, once, and ends the trace.
    qint64 write(const TracedFrame &frame);

private:
    void append(const TracedFrame &frame, qint64 wallUs);

    std::function<void(const QString &)> tell_;
    TraceOutput output_;
    const TraceFormat *format_ = nullptr;
    qint64 leftOut_ = 0;
    bool toldOfGap_ = false;
    qint64 wallAheadUs_ = 0;  // of the clock that does not run backwards
};

#endif  // DRAVO_HOST_TRACE_TRACE_WRITER_H

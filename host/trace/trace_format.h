// The forms in which a trace is written. Pure; any thread.
#ifndef DRAVO_HOST_TRACE_TRACE_FORMAT_H
#define DRAVO_HOST_TRACE_TRACE_FORMAT_H

#include "host/trace/traced_frame.h"

struct TraceFormat {
    QByteArray (*head)();  // at the beginning of every file
    /// @param wallUs  microseconds since 1970. @param leftOut  frames that were left out before this one.
    QByteArray (*record)(const TracedFrame &frame, qint64 wallUs, qint64 leftOut);
};

/// A line of text for each frame.
extern const TraceFormat kTextTrace;
/// A packet for each frame, as protocol analysers open it.
extern const TraceFormat kPacketTrace;

#endif  // DRAVO_HOST_TRACE_TRACE_FORMAT_H

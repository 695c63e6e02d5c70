// A frame as a line of text. Pure; any thread.
#ifndef DRAVO_HOST_TRACE_TEXT_LINE_H
#define DRAVO_HOST_TRACE_TEXT_LINE_H

#include "host/trace/traced_frame.h"

/// For a file: time in UTC to the microsecond, > sent or < received, station, function, Modbus addresses and elements,
/// verdict, values, and the bytes after a bar. Below 4,096 characters.
/// @param wallUs  microseconds since 1970.
QString traceLine(const TracedFrame &frame, qint64 wallUs);

/// For a page about one station: time of day, direction, and the same without the bytes.
QString pageLine(const TracedFrame &frame, qint64 wallUs);

#endif  // DRAVO_HOST_TRACE_TEXT_LINE_H

// A frame decoded: who, which function, what of the controller's memory, and the values. Pure; any thread.
#ifndef DRAVO_HOST_TRACE_FRAME_TEXT_H
#define DRAVO_HOST_TRACE_FRAME_TEXT_H

#include "host/trace/traced_frame.h"

/// "read holding registers 100-124 (type 7 100-124)": Modbus addresses as they stand on the line, and elements, as far
/// as they are known. Of damaged bytes how many there are.
QString subjectText(const TracedFrame &frame);

/// The values that the frame carries, as they stand on the line: registers unsigned and decimal, coils in groups of
/// eight, elements with two registers as one number. Empty: it carries none.
QString valuesText(const TracedFrame &frame);

#endif  // DRAVO_HOST_TRACE_FRAME_TEXT_H

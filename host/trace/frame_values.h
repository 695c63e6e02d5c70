// Where addresses and values stand in the bytes of a Modbus frame. Pure; any thread.
#ifndef DRAVO_HOST_TRACE_FRAME_VALUES_H
#define DRAVO_HOST_TRACE_FRAME_VALUES_H

#include "host/trace/traced_frame.h"

/// Modbus addresses, of coils or registers as the function says.
struct FrameAddresses {
    int start = 0;
    int quantity = 0;  // 0: not known
};
/// As the frame says, or the request that it answers.
FrameAddresses addressesOf(const TracedFrame &frame);

struct FrameValues {
    QByteArray data;  // registers, high byte first, or coils, the first one lowest
    int bits = 0;     // coils in data; 0: it holds registers
};
FrameValues valuesOf(const TracedFrame &frame);

#endif  // DRAVO_HOST_TRACE_FRAME_VALUES_H

// How long the requests of a write or one-shot read may be. Pure; any thread.
#ifndef DRAVO_LINE_OPERATION_LIMITS_H
#define DRAVO_LINE_OPERATION_LIMITS_H

#include "korvel_dravo_line.h"

namespace dravo {

/// The driver's frame limit for an operation: the one of the line, as far as Modbus allows it (125 registers read, 123
/// written) and no 32-bit value is read in halves. The driver counts written values, and read elements.
/// @param variable    usable.
/// @param frameLimit  1 to 125.
int operationFrameLimit(const Variable &variable, bool isWrite, int frameLimit);

/// At most how many requests the driver makes of it.
int operationRequests(const Variable &variable, bool isWrite, int frameLimit);

}  // namespace dravo

#endif  // DRAVO_LINE_OPERATION_LIMITS_H

// Where requests enter the driver. Communication thread.
#ifndef DRAVO_CODEC_FUNC_OPERATION_H
#define DRAVO_CODEC_FUNC_OPERATION_H

#include "korvel_dravo_port.h"

/// Starts an operation with its one or two requests: they go to the tail of protocolList, and as many replies finish
/// it. Caller holds listMutex.
void startOperation(Protocol request);
void startOperation(Protocol first, Protocol second);

#endif  // DRAVO_CODEC_FUNC_OPERATION_H

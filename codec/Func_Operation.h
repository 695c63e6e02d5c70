// Where requests enter the driver. Communication thread.
#ifndef DRAVO_CODEC_FUNC_OPERATION_H
#define DRAVO_CODEC_FUNC_OPERATION_H

#include <initializer_list>

#include "korvel_dravo_port.h"

/// Starts an operation with all its requests: they go to the tail of protocolList, and as many replies finish it.
/// Caller holds listMutex.
void startOperation(std::initializer_list<Protocol> requests);

#endif  // DRAVO_CODEC_FUNC_OPERATION_H

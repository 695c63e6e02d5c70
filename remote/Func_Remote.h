// Remote frames: every request of remote mode carries the variable record itself, closed by an additive checksum.
// Communication thread; the scheduler holds listMutex.
#ifndef DRAVO_REMOTE_FUNC_REMOTE_H
#define DRAVO_REMOTE_FUNC_REMOTE_H

#include "korvel_dravo_port.h"

/// Queues one remote read of 22 bytes. var is only read.
void Remote_ReadVar(RW_VAR *var);

/// Queues one remote write of 22 bytes and the data, and shows the values in the cache, whatever the state of the link.
/// var is only read. Takes cacheMutex.
void Remote_WriteVar(RW_VAR *var);

#endif  // DRAVO_REMOTE_FUNC_REMOTE_H

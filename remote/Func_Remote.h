// Starts reads and writes of remote mode. Communication thread. Callers hold listMutex; startOperation checks it.
#ifndef DRAVO_REMOTE_FUNC_REMOTE_H
#define DRAVO_REMOTE_FUNC_REMOTE_H

#include "korvel_dravo_port.h"

/// Starts a remote read. var is only read.
void Remote_ReadVar(RW_VAR *var);

/// Starts a remote write and shows the values in the cache, whatever the state of the link. var is only read. Takes
/// cacheMutex.
void Remote_WriteVar(RW_VAR *var);

#endif  // DRAVO_REMOTE_FUNC_REMOTE_H

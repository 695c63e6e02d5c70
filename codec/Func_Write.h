// Starts writes to a controller. Communication thread. Callers hold listMutex; startOperation checks it.
#ifndef DRAVO_CODEC_FUNC_WRITE_H
#define DRAVO_CODEC_FUNC_WRITE_H

#include "korvel_dravo_port.h"

/// Starts a write, of two replies for a bit inside a word, and shows the values in the cache unless the link has
/// failed. var is the head of writeVarList or a copy of it; it is only read. Takes cacheMutex.
void WriteRegister(RW_VAR *var);

/// Starts an operation of one reply with the write request of var, which is only read.
void WriteAnalog(RW_VAR *var);

#endif  // DRAVO_CODEC_FUNC_WRITE_H

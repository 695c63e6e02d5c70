// Starts reads of a controller. Communication thread. Callers hold listMutex; startOperation checks it.
#ifndef DRAVO_CODEC_FUNC_READ_H
#define DRAVO_CODEC_FUNC_READ_H

#include "korvel_dravo_port.h"

/// Starts the read of a normalised variable, as ReadAnalog does.
void ReadRegister(RW_VAR *var);

/// Starts an operation of one reply with the read request of var, which is only read.
void ReadAnalog(RW_VAR *var);

#endif  // DRAVO_CODEC_FUNC_READ_H

// Write requests to a controller. Communication thread; the scheduler holds listMutex.
#ifndef DRAVO_CODEC_FUNC_WRITE_H
#define DRAVO_CODEC_FUNC_WRITE_H

#include "korvel_dravo_port.h"

/// Queues the requests of one write, two for a bit inside a word, and shows the values in the cache unless the link has
/// failed. var is the head of writeVarList or a copy of it; it is only read. Takes cacheMutex.
void WriteRegister(RW_VAR *var);

/// Queues one write request; data that end too soon are sent as zeros. Function 0 and no values for a type without a
/// write form.
void WriteAnalog(RW_VAR *var);

#endif  // DRAVO_CODEC_FUNC_WRITE_H

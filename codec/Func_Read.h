// Read requests to a controller. Communication thread; the scheduler holds listMutex.
#ifndef DRAVO_CODEC_FUNC_READ_H
#define DRAVO_CODEC_FUNC_READ_H

#include "korvel_dravo_port.h"

/// Queues one read request for a normalised variable, as ReadAnalog does.
void ReadRegister(RW_VAR *var);

/// Queues one read request: function 1 for bit types, 3 for word and double-word types, 0 and no data for any other.
void ReadAnalog(RW_VAR *var);

/// Bytes that count elements take in a reply: packed bits, 4 per double word, else 2 each. Negative for a negative
/// count.
qint64 replyDataBytes(int elemType, int count);

#endif  // DRAVO_CODEC_FUNC_READ_H

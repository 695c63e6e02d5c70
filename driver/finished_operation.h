// What a finished or failed operation does to the lists, and which callbacks report it. Communication thread.
#ifndef DRAVO_DRIVER_FINISHED_OPERATION_H
#define DRAVO_DRIVER_FINISHED_OPERATION_H

#include "korvel_dravo_port.h"

/// Takes the operation out of its list, into the result record. Writes are reported, and one-shot reads unless they are
/// of another node (remote). Caller holds listMutex.
void finishOperation(bool remote);

/// Reports that a request used up its retries, and drops what is queued under the identifiers of the result record.
/// Caller holds listMutex.
void reportFailure();

/// Copies every field but data, which is emptied.
void passRetValue(const RW_VAR &from, RW_VAR &to);

#endif  // DRAVO_DRIVER_FINISHED_OPERATION_H

// Remote frames: every request of remote mode carries the variable record itself, closed by an additive checksum. Pure;
// any thread.
#ifndef DRAVO_REMOTE_REMOTE_REQUEST_H
#define DRAVO_REMOTE_REMOTE_REQUEST_H

#include "korvel_dravo_port.h"

/// A read of 22 bytes.
Protocol remoteReadRequest(const RW_VAR &var);

/// A write of 22 bytes and the data, which go out as they stand.
Protocol remoteWriteRequest(const RW_VAR &var);

#endif  // DRAVO_REMOTE_REMOTE_REQUEST_H

// Judges the reply to the request on the wire and has its data stored. Communication thread.
#ifndef DRAVO_DRIVER_REPLY_JUDGING_H
#define DRAVO_DRIVER_REPLY_JUDGING_H

#include "korvel_dravo_port.h"

// All four look at the head of protocolList, which is not empty.

/// The result code of a reply of length bytes to a request of the own node; a good one's data are stored. Takes
/// cacheMutex. Caller holds listMutex.
int DealDataOfLocalArea(QByteArray *reply, int length);

/// The same for a request of another node, of which only the read half of a bit write is stored, in the pending write.
/// Caller holds listMutex.
int DealDataOfRemoteArea(QByteArray *reply, int length);

/// The result code of an outcome 0 to 7; 200 for any other.
int GetDriverReturnValue(int outcome);

/// A failure code: base + 1, plus the request's ownerId when that is 0 to 11.
int SwitchErrorReturn(int base);

#endif  // DRAVO_DRIVER_REPLY_JUDGING_H

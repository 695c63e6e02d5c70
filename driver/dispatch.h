// Judges replies. Communication thread; DataCom holds listMutex around all of it.
#ifndef DRAVO_DRIVER_DISPATCH_H
#define DRAVO_DRIVER_DISPATCH_H

#include "korvel_dravo_port.h"

/// Judge the reply to the head of protocolList, which is not empty, and store its data: a request of the own node
/// (takes cacheMutex), a request of another node (only the read half of a bit write is stored, in the pending write).
/// @return the result code.
int DealDataOfLocalArea(QByteArray *reply, int length);
int DealDataOfRemoteArea(QByteArray *reply, int length);

/// The result code of an outcome 0 to 7; 200 for any other.
int GetDriverReturnValue(int outcome);

/// A failure code: base + 1, plus the ownerId of the head of protocolList when that is 0 to 11.
int SwitchErrorReturn(int base);

/// Copies every field but data, which is emptied.
void passRetValue(const RW_VAR &from, RW_VAR &to);

#endif  // DRAVO_DRIVER_DISPATCH_H

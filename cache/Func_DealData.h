// Stores the data of a good reply. Communication thread.
#ifndef DRAVO_CACHE_FUNC_DEALDATA_H
#define DRAVO_CACHE_FUNC_DEALDATA_H

#include "korvel_dravo_port.h"

/// Stores the data of the reply to the head of protocolList, which is not empty, one cache entry per element whose
/// bytes are there; the reply to a merge read goes to SpecialRegisterSave. Caller holds cacheMutex, unless the head is
/// a merge read.
void SaveToLocalDataErea(QByteArray *reply);

/// Completes the write of a bit inside a word: takes the word from the reply, sets or clears the bit that the head of
/// writeVarList names, and puts it with a new CRC into the second request. Changes nothing when there is no such write.
/// Caller holds listMutex.
void SpecialRegisterSave(QByteArray *reply);

#endif  // DRAVO_CACHE_FUNC_DEALDATA_H

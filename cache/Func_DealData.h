// What goes into the driver's cache and into its pending bit write. Communication thread, but for WriteDataToLocal.
#ifndef DRAVO_CACHE_FUNC_DEALDATA_H
#define DRAVO_CACHE_FUNC_DEALDATA_H

#include "korvel_dravo_port.h"

/// Names one element of the cache.
struct ControlInformationM {
    int station;
    int elemType;  // a type that has entries: bit, word or double-word
    int address;
    int count;  // elements the caller works through; not part of the key
};

/// The key of the element in the driver's cache, as findEntry gives it. Caller holds cacheMutex.
unsigned int ExtendFindSameVar(ControlInformationM &element);

/// Stores the data of the reply to the head of protocolList, which is not empty; the reply to a merge read goes to
/// SpecialRegisterSave. Caller holds cacheMutex, unless the head is a merge read.
void SaveToLocalDataErea(QByteArray *reply);

/// Completes the second request, the pending write of a bit, with the word that the reply carries and the bit that the
/// head of writeVarList names. Changes nothing when there is no such write. Caller holds listMutex.
void SpecialRegisterSave(QByteArray *reply);

/// Shows the record's values in the cache and pads its data, as storeWritten does. Any thread; takes cacheMutex.
void WriteDataToLocal(RW_VAR *var);

#endif  // DRAVO_CACHE_FUNC_DEALDATA_H

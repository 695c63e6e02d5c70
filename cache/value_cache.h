// Cache keys and entries. Callers hold cacheMutex.
#ifndef DRAVO_CACHE_VALUE_CACHE_H
#define DRAVO_CACHE_VALUE_CACHE_H

#include <QtCore/QByteArray>

#include "korvel_dravo_port.h"

/// Names one element of the cache: a walk through a variable sets station and elemType once and steps address.
struct ControlInformationM {
    int station;
    int elemType;  // a type that has entries: bit, word or double-word
    int address;
    int count;  // elements the caller works through; not part of the key
};

/// Kept for the layout of the driver object; no list of it is ever filled.
struct EXTENDVAR {
    int value1;
    int value2;
    int value3;
    QByteArray data;
};

/// The cache key of the element: station, type and address in 8, 8 and 16 bits. Creates its entry, zero-filled, where
/// there is none. The only place that computes keys and creates entries.
unsigned int ExtendFindSameVar(ControlInformationM &element);

/// The walk through a variable under the type that its entries have.
ControlInformationM cacheWalk(int station, int entryType, int count);

/// The bytes of the entry at address, of which the low 16 bits count; they stay valid until the next call.
char *entryBytes(ControlInformationM &element, qint64 address);

/// Bit bitAddress % 16, which is not negative, of word bitAddress / 16.
bool wordBit(ControlInformationM &element, qint64 bitAddress);
void setWordBit(ControlInformationM &element, qint64 bitAddress, bool value);

#endif  // DRAVO_CACHE_VALUE_CACHE_H

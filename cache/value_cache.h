// The values last seen, one entry per element: keys, entries, and runs of neighbouring entries. Pure; whoever passes
// the driver's cache holds cacheMutex.
#ifndef DRAVO_CACHE_VALUE_CACHE_H
#define DRAVO_CACHE_VALUE_CACHE_H

#include <QtCore/QByteArray>
#include <QtCore/QHash>

#include "korvel_dravo_port.h"

/// Entries by the keys of findEntry.
typedef QHash<unsigned int, QByteArray> ValueCache;

/// Kept for the layout of the driver object; no list of it is ever filled.
struct EXTENDVAR {
    int value1;
    int value2;
    int value3;
    QByteArray data;
};

/// The key of an element: station, entry type and address in 8, 8 and 16 bits. Creates its entry, zero-filled, where
/// there is none. The only place that computes keys and creates entries.
/// @param entryType  a type that has entries: bit, word or double-word.
unsigned int findEntry(ValueCache &cache, int station, int entryType, qint64 address);

/// Puts values into the entries from address on, low byte first. An incomplete last element is left out.
void storeRun(ValueCache &cache, int station, int entryType, qint64 address, const QByteArray &values);

/// Appends the values of count entries from address on.
void appendRun(ValueCache &cache, int station, int entryType, qint64 address, int count, QByteArray &values);

/// Bit bitAddress % 16, which is not negative, of word bitAddress / 16.
bool wordBit(ValueCache &cache, int station, int wordType, qint64 bitAddress);
void setWordBit(ValueCache &cache, int station, int wordType, qint64 bitAddress, bool on);

#endif  // DRAVO_CACHE_VALUE_CACHE_H

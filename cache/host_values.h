// The values of a variable as the host reads and writes them. Pure; whoever passes the driver's cache holds cacheMutex.
// Hosts count 16-bit registers of 32-bit types: two to a value, an odd count is rounded up.
#ifndef DRAVO_CACHE_HOST_VALUES_H
#define DRAVO_CACHE_HOST_VALUES_H

#include "cache/value_cache.h"

/// The last known values: 1 byte per bit, 2 per register, 4 per 32-bit value, least significant byte first. Elements
/// never seen are zeros. Of a type that has no values: count * 2 zero bytes. address is not negative, count at most
/// kMaxElementCount.
QByteArray cachedValues(ValueCache &cache, int elemType, int station, int address, int count);

/// What stands for values that cannot be had: count * 2 zero bytes; below 1: none.
QByteArray zeroValues(int count);

/// Completes record, whose elemType is 0 to 21, with the host's values and count: its count and data in the layout that
/// writes have. Missing values count as 0.
void setWrittenValues(RW_VAR &record, const QByteArray &values, int count);

/// The requests that write such a record: cut at the frame limit, but for bit types; each bit inside a word alone.
QList<RW_VAR> writePieces(const RW_VAR &record, int maxGroupLength);

#endif  // DRAVO_CACHE_HOST_VALUES_H

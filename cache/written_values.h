// Written values as cache entries, without waiting for a read. Pure; whoever passes the driver's cache holds
// cacheMutex.
#ifndef DRAVO_CACHE_WRITTEN_VALUES_H
#define DRAVO_CACHE_WRITTEN_VALUES_H

#include "cache/value_cache.h"

/// Stores the record's values: bits packed eight to a byte, words of 2 bytes, 32-bit values of 4 with count counting
/// them, bits inside words of 1 byte each. Pads var's data with zero bytes to what count needs. Stores nothing for an
/// unknown type or a count above kMaxElementCount.
void storeWritten(ValueCache &cache, RW_VAR &var);

#endif  // DRAVO_CACHE_WRITTEN_VALUES_H

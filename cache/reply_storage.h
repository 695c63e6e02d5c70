// The data of a good reply as cache entries. Pure; whoever passes the driver's cache holds cacheMutex.
#ifndef DRAVO_CACHE_REPLY_STORAGE_H
#define DRAVO_CACHE_REPLY_STORAGE_H

#include "cache/value_cache.h"

/// Stores one entry for each element whose bytes are there. The last register of an odd number of bytes gets a low byte
/// of 0, an incomplete double word is skipped. Nothing is stored for types that are read only after normalisation: a
/// record queued as it stands may name one.
void storeReply(ValueCache &cache, const Protocol &request, const QByteArray &reply);

#endif  // DRAVO_CACHE_REPLY_STORAGE_H

#include "cache/value_cache.h"

#include "codec/element_types.h"

EntryRun::EntryRun(ValueCache &cache, int station, int entryType, qint64 address)
    : cache_(cache),
      area_((static_cast<unsigned int>(station) & 0xFFu) << 24 | (static_cast<unsigned int>(entryType) & 0xFFu) << 16),
      address_(static_cast<unsigned int>(address & 0xFFFF)) {
    cache.detach();
}

char *EntryRun::create(CacheKey key) {
    const int entryType = int(key.bits >> 16 & 0xFFu);
    return cache_.insert(key, QByteArray(cacheEntrySize(entryType), '\0')).value().data();
}

unsigned int findEntry(ValueCache &cache, int station, int entryType, qint64 address) {
    EntryRun run(cache, station, entryType, address);
    const unsigned int key = run.nextKey().bits;
    run.next();
    return key;
}

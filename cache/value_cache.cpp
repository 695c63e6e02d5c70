#include "cache/value_cache.h"

#include "codec/element_types.h"

EntryRun::EntryRun(ValueCache &cache, int station, int entryType, qint64 address)
    : cache_(cache),
      area_((static_cast<unsigned int>(station) & 0xFFu) << 24 | (static_cast<unsigned int>(entryType) & 0xFFu) << 16),
      address_(static_cast<unsigned int>(address & 0xFFFF)) {}

CacheKey EntryRun::nextKey() const {
    const CacheKey key = {area_ | (address_ & 0xFFFFu)};
    return key;
}

char *EntryRun::next() {
    const CacheKey key = nextKey();
    ++address_;
    ValueCache::iterator entry = cache_.find(key);
    if (entry == cache_.end()) {
        entry = cache_.insert(key, QByteArray(cacheEntrySize(int(area_ >> 16 & 0xFFu)), '\0'));
    }
    return entry.value().data();
}

unsigned int findEntry(ValueCache &cache, int station, int entryType, qint64 address) {
    EntryRun run(cache, station, entryType, address);
    const unsigned int key = run.nextKey().bits;
    run.next();
    return key;
}

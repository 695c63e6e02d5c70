// The values last seen, one entry per element: keys, entries, and runs of neighbouring entries. Pure; whoever passes
// the driver's cache holds cacheMutex.
#ifndef DRAVO_CACHE_VALUE_CACHE_H
#define DRAVO_CACHE_VALUE_CACHE_H

#include <QtCore/QByteArray>
#include <QtCore/QHash>

#include "korvel_dravo_port.h"

/// Station, entry type and address in 8, 8 and 16 bits.
struct CacheKey {
    unsigned int bits;
};

inline bool operator==(CacheKey left, CacheKey right) {
    return left.bits == right.bits;
}

/// Neighbours lie in neighbouring buckets; each station and type starts at a place of its own. The bits as they are
/// would lay the same addresses of many stations upon each other.
inline unsigned int qHash(CacheKey key, unsigned int seed = 0) {
    return (key.bits & 0xFFFFu) + (key.bits >> 16) * 0x9E3779B1u + seed;
}

/// Entries by key; an entry of an element has the size that cacheEntrySize gives.
typedef QHash<CacheKey, QByteArray> ValueCache;

/// Kept for the layout of the driver object; no list of it is ever filled.
struct EXTENDVAR {
    int value1;
    int value2;
    int value3;
    QByteArray data;
};

/// Entries from an element on, one after another. The only place that computes keys and creates entries.
class EntryRun {
public:
    /// @param entryType  a type that has entries: bit, word or double-word.
    EntryRun(ValueCache &cache, int station, int entryType, qint64 address);

    /// The bytes of the next entry, low byte first; they stay valid until another entry is asked for. An element
    /// without an entry gets one of zeros.
    char *next() {
        const CacheKey key = nextKey();
        ++address_;
        const ValueCache &entries = cache_;
        const ValueCache::const_iterator entry = entries.constFind(key);
        if (entry == entries.constEnd()) {
            return create(key);
        }
        // The cache was detached by the constructor. A find that is not const would look after that twice more.
        return const_cast<QByteArray &>(entry.value()).data();
    }

    CacheKey nextKey() const {
        const CacheKey key = {area_ | (address_ & 0xFFFFu)};
        return key;
    }

private:
    char *create(CacheKey key);

    ValueCache &cache_;
    unsigned int area_;     // station and type
    unsigned int address_;  // of the next entry
};

/// The key of an element. Creates its entry, zero-filled, where there is none.
unsigned int findEntry(ValueCache &cache, int station, int entryType, qint64 address);

#endif  // DRAVO_CACHE_VALUE_CACHE_H

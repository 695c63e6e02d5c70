#include "cache/value_cache.h"

#include <algorithm>

#include "codec/element_types.h"

namespace {

// The bytes of an entry; they stay valid until the next call.
char *entryBytes(ValueCache &cache, int station, int entryType, qint64 address) {
    return cache[findEntry(cache, station, entryType, address)].data();
}

}  // namespace

unsigned int findEntry(ValueCache &cache, int station, int entryType, qint64 address) {
    const unsigned int type = static_cast<unsigned int>(entryType) & 0xFFu;
    const unsigned int stationByte = static_cast<unsigned int>(station) & 0xFFu;
    const unsigned int key = stationByte << 24 | type << 16 | static_cast<unsigned int>(address & 0xFFFF);
    if (!cache.contains(key)) {
        cache.insert(key, QByteArray(cacheEntrySize(int(type)), '\0'));
    }
    return key;
}

void storeRun(ValueCache &cache, int station, int entryType, qint64 address, const QByteArray &values) {
    const int entrySize = cacheEntrySize(entryType);
    for (int i = 0; i < values.size() / entrySize; ++i) {
        const char *value = values.constData() + qint64(i) * entrySize;
        std::copy(value, value + entrySize, entryBytes(cache, station, entryType, address + i));
    }
}

void appendRun(ValueCache &cache, int station, int entryType, qint64 address, int count, QByteArray &values) {
    const int entrySize = cacheEntrySize(entryType);
    for (int i = 0; i < count; ++i) {
        values.append(entryBytes(cache, station, entryType, address + i), entrySize);
    }
}

bool wordBit(ValueCache &cache, int station, int wordType, qint64 bitAddress) {
    const char *word = entryBytes(cache, station, wordType, bitAddress / 16);
    return (word[bitAddress / 8 % 2] >> (bitAddress % 8)) & 1;
}

void setWordBit(ValueCache &cache, int station, int wordType, qint64 bitAddress, bool on) {
    char *word = entryBytes(cache, station, wordType, bitAddress / 16);
    char &byte = word[bitAddress / 8 % 2];
    const int mask = 1 << (bitAddress % 8);
    byte = char(on ? byte | mask : byte & ~mask);
}

#include "cache/value_cache.h"

#include "codec/element_types.h"
#include "driver/Communication_Protocol.h"

unsigned int ExtendFindSameVar(ControlInformationM &element) {
    const unsigned int station = static_cast<unsigned int>(element.station) & 0xFFu;
    const unsigned int elemType = static_cast<unsigned int>(element.elemType) & 0xFFu;
    const unsigned int address = static_cast<unsigned int>(element.address) & 0xFFFFu;
    const unsigned int key = station << 24 | elemType << 16 | address;
    if (!PLC_driver.valueCache.contains(key)) {
        PLC_driver.valueCache.insert(key, QByteArray(cacheEntrySize(int(elemType)), '\0'));
    }
    return key;
}

ControlInformationM cacheWalk(int station, int entryType, int count) {
    const ControlInformationM element = {station, entryType, 0, count};
    return element;
}

char *entryBytes(ControlInformationM &element, qint64 address) {
    element.address = int(address & 0xFFFF);
    return PLC_driver.valueCache[ExtendFindSameVar(element)].data();
}

bool wordBit(ControlInformationM &element, qint64 bitAddress) {
    const char *word = entryBytes(element, bitAddress / 16);
    return (word[bitAddress / 8 % 2] >> (bitAddress % 8)) & 1;
}

void setWordBit(ControlInformationM &element, qint64 bitAddress, bool value) {
    char *word = entryBytes(element, bitAddress / 16);
    char &byte = word[bitAddress / 8 % 2];
    const int mask = 1 << (bitAddress % 8);
    byte = char(value ? byte | mask : byte & ~mask);
}

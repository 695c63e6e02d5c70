#include "cache/written_values.h"

#include <QtCore/QMutexLocker>

#include <cstring>

#include "cache/value_cache.h"
#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "driver/Communication_Protocol.h"

namespace {

// Entries of entrySize bytes from address on, taken from data as they stand.
void storeEntries(ControlInformationM &element, qint64 address, const QByteArray &data, int entrySize) {
    for (int i = 0; i < element.count; ++i) {
        std::memcpy(entryBytes(element, address + i), data.constData() + qint64(i) * entrySize, size_t(entrySize));
    }
}

// The high half of a 32-bit value lies at the lower address.
void storeWordPairs(ControlInformationM &element, qint64 address, const QByteArray &data) {
    for (qint64 i = 0; i < element.count; ++i) {
        const char *value = data.constData() + 4 * i;
        std::memcpy(entryBytes(element, address + 2 * i + 1), value, 2);
        std::memcpy(entryBytes(element, address + 2 * i), value + 2, 2);
    }
}

}  // namespace

void WriteDataToLocal(RW_VAR *var) {
    const dravo::ElementType *type = dravo::findElementType(var->elemType);
    if (!type || var->count > kMaxElementCount) {
        return;
    }
    QMutexLocker lock(&PLC_driver.cacheMutex);
    ControlInformationM element = cacheWalk(var->station, type->registerType, var->count);
    const qint64 address = var->address;
    const qint64 count = var->count;
    switch (type->elementClass) {
        case dravo::BitClass:
            padTo(var->data, (count + 7) / 8);
            for (qint64 i = 0; i < count; ++i) {
                *entryBytes(element, address + i) = char(valueBit(var->data, i));
            }
            break;
        case dravo::WordClass:
            padTo(var->data, count * 2);
            storeEntries(element, address, var->data, 2);
            break;
        case dravo::DoubleWordClass:
            padTo(var->data, count * 4);
            storeEntries(element, address, var->data, 4);
            break;
        case dravo::WordPairClass:
            padTo(var->data, count * 4);
            storeWordPairs(element, address, var->data);
            break;
        case dravo::BitInWordClass:
            padTo(var->data, count);
            for (qint64 i = 0; i < count; ++i) {
                if ((address + i) % 16 >= 0) {  // a negative remainder names no bit
                    setWordBit(element, address + i, valueByte(var->data, i) != 0);
                }
            }
            break;
    }
}

#include "cache/written_values.h"

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/value_layout.h"

namespace {

// Pads the record's data to what its count needs and gives the bytes that it names.
QByteArray paddedData(RW_VAR &var, qint64 bytes) {
    padTo(var.data, bytes);
    return sizedBytes(var.data, bytes);
}

void storeWordBits(ValueCache &cache, const RW_VAR &var, int wordType) {
    for (int i = 0; i < var.count; ++i) {
        const qint64 bitAddress = qint64(var.address) + i;
        if (bitAddress % 16 >= 0) {  // a negative remainder names no bit
            setWordBit(cache, var.station, wordType, bitAddress, valueByte(var.data, i) != 0);
        }
    }
}

}  // namespace

void storeWritten(ValueCache &cache, RW_VAR &var) {
    const dravo::ElementType *type = dravo::findElementType(var.elemType);
    if (!type || var.count > kMaxElementCount) {
        return;
    }
    const qint64 count = qMax(var.count, 0);
    QByteArray values;
    switch (type->elementClass) {
        case dravo::BitClass:
            values = unpackedBits(paddedData(var, (count + 7) / 8), 0, int(count));
            break;
        case dravo::WordClass:
            values = paddedData(var, count * 2);
            break;
        case dravo::DoubleWordClass:
            values = paddedData(var, count * 4);
            break;
        case dravo::WordPairClass:
            values = swappedHalves(paddedData(var, count * 4));
            break;
        case dravo::BitInWordClass:
            padTo(var.data, count);
            storeWordBits(cache, var, type->registerType);
            return;
    }
    storeRun(cache, var.station, type->registerType, var.address, values);
}

#include "cache/written_values.h"

#include <algorithm>

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/value_layout.h"

namespace {

void storeBits(EntryRun run, const QByteArray &packed, int count) {
    for (int i = 0; i < count; ++i) {
        *run.next() = char(packedBit(packed, i));
    }
}

template <int entrySize>
void storeElements(EntryRun run, const char *values, int count) {
    for (int i = 0; i < count; ++i, values += entrySize) {
        std::copy_n(values, entrySize, run.next());
    }
}

// Two word entries to a value: the high half lies at the lower address.
void storePairs(EntryRun run, const char *values, int count) {
    for (int i = 0; i < count; ++i, values += 4) {
        std::copy_n(values + 2, 2, run.next());
        std::copy_n(values, 2, run.next());
    }
}

void storeWordBits(ValueCache &cache, const RW_VAR &var, int wordType) {
    for (int i = 0; i < var.count; ++i) {
        const qint64 bitAddress = qint64(var.address) + i;
        const int bit = int(bitAddress % 16);
        if (bit < 0) {  // a negative remainder names no bit
            continue;
        }
        char &byte = EntryRun(cache, var.station, wordType, bitAddress / 16).next()[bit / 8];
        const int mask = 1 << (bit % 8);
        byte = char(valueByte(var.data, i) != 0 ? byte | mask : byte & ~mask);
    }
}

}  // namespace

void storeWritten(ValueCache &cache, RW_VAR &var) {
    const dravo::ElementType *type = dravo::findElementType(var.elemType);
    if (!type || var.count > kMaxElementCount) {
        return;
    }
    const EntryRun run(cache, var.station, type->registerType, var.address);
    const int count = qMax(var.count, 0);
    switch (type->elementClass) {
        case dravo::BitClass:
            padTo(var.data, (count + 7) / 8);
            storeBits(run, var.data, count);
            break;
        case dravo::WordClass:
            padTo(var.data, qint64(count) * 2);
            storeElements<2>(run, var.data.constData(), count);
            break;
        case dravo::DoubleWordClass:
            padTo(var.data, qint64(count) * 4);
            storeElements<4>(run, var.data.constData(), count);
            break;
        case dravo::WordPairClass:
            padTo(var.data, qint64(count) * 4);
            storePairs(run, var.data.constData(), count);
            break;
        case dravo::BitInWordClass:
            padTo(var.data, count);
            storeWordBits(cache, var, type->registerType);
            break;
    }
}

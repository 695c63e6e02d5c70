#include "cache/host_values.h"

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/integers.h"
#include "codec/value_layout.h"
#include "vars/request_pieces.h"
#include "vars/variable_record.h"

namespace {

// How the values of a class travel in a write record, and how the record is cut.
struct WriteLayout {
    int registersPerElement;  // of the host's count
    int elementBytes;         // 0: bits, packed eight to a byte
    int addressStep;          // element addresses from one element to the next
};
const WriteLayout kWriteLayouts[] = {
    {1, 0, 1},  // BitClass
    {1, 2, 1},  // WordClass
    {2, 4, 1},  // DoubleWordClass
    {2, 4, 2},  // WordPairClass
    {1, 1, 1},  // BitInWordClass
};

int elementsOf(int count, int registersPerElement) {
    return registersPerElement == 2 ? saturated((qint64(count) + 1) / 2) : count;
}

// Any nonzero byte switches on.
QByteArray switches(const QByteArray &values, int count) {
    return unpackedBits(packedBits(values, count), 0, qMax(count, 0));
}

QByteArray cachedBits(ValueCache &cache, int wordType, int station, int address, int count) {
    QByteArray values;
    for (int i = 0; i < count; ++i) {
        values.append(char(wordBit(cache, station, wordType, qint64(address) + i)));
    }
    return values;
}

}  // namespace

QByteArray cachedValues(ValueCache &cache, int elemType, int station, int address, int count) {
    const dravo::ElementType *type = dravo::findElementType(elemType);
    if (!type) {
        return zeroValues(count);
    }
    QByteArray values;
    const int entryType = type->registerType;
    switch (type->elementClass) {
        case dravo::BitClass:
        case dravo::WordClass:
            appendRun(cache, station, entryType, address, count, values);
            break;
        case dravo::DoubleWordClass:
            appendRun(cache, station, entryType, address, elementsOf(count, 2), values);
            break;
        case dravo::WordPairClass:
            appendRun(cache, station, entryType, address, elementsOf(count, 2) * 2, values);
            return swappedHalves(values);
        case dravo::BitInWordClass:
            return cachedBits(cache, entryType, station, address, count);
    }
    return values;
}

QByteArray zeroValues(int count) {
    return QByteArray(qMax(count, 0) * 2, '\0');
}

void setWrittenValues(RW_VAR &record, const QByteArray &values, int count) {
    const dravo::ElementClass elementClass = dravo::kElementTypes[record.elemType].elementClass;
    const WriteLayout &layout = kWriteLayouts[elementClass];
    record.count = elementsOf(count, layout.registersPerElement);
    switch (elementClass) {
        case dravo::BitClass:
            record.data = packedBits(values, record.count);
            break;
        case dravo::BitInWordClass:
            record.data = switches(values, record.count);
            break;
        default:
            record.data = sizedBytes(values, qint64(record.count) * layout.elementBytes);
    }
}

QList<RW_VAR> writePieces(const RW_VAR &record, int maxGroupLength) {
    QList<RW_VAR> pieces;
    const dravo::ElementClass elementClass = dravo::kElementTypes[record.elemType].elementClass;
    if (elementClass == dravo::BitClass) {
        pieces.append(record);
        return pieces;
    }
    const WriteLayout &layout = kWriteLayouts[elementClass];
    const int limit = elementClass == dravo::BitInWordClass ? 1 : frameLimit(maxGroupLength, record.elemType);
    for (const Piece &piece : piecesOf(record.address, record.count, limit, layout.addressStep)) {
        RW_VAR part = pieceOf(record, piece);
        part.data = record.data.mid(piece.first * layout.elementBytes, piece.count * layout.elementBytes);
        pieces.append(part);
    }
    return pieces;
}

#include "cache/host_values.h"

#include <algorithm>

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

// The values of count entries, one behind the other.
template <int entrySize>
QByteArray cachedEntries(EntryRun run, int count) {
    QByteArray values(count * entrySize, '\0');
    char *out = values.data();
    for (char *const end = out + values.size(); out != end; out += entrySize) {
        std::copy_n(run.next(), entrySize, out);
    }
    return values;
}

// Two word entries to a value: the high half lies at the lower address.
QByteArray cachedPairs(EntryRun run, int count) {
    QByteArray values(count * 4, '\0');
    char *out = values.data();
    for (char *const end = out + values.size(); out != end; out += 4) {
        std::copy_n(run.next(), 2, out + 2);
        std::copy_n(run.next(), 2, out);
    }
    return values;
}

// Bits of word entries; each word is looked up once.
QByteArray cachedBits(EntryRun run, int bit, int count) {
    QByteArray values(count, '\0');
    char *out = values.data();
    const char *word = run.next();
    for (int i = 0; i < count; ++i) {
        if (bit == 16) {
            bit = 0;
            word = run.next();
        }
        out[i] = char(word[bit / 8] >> (bit % 8) & 1);
        ++bit;
    }
    return values;
}

}  // namespace

QByteArray cachedValues(ValueCache &cache, int elemType, int station, int address, int count) {
    const dravo::ElementType *type = dravo::findElementType(elemType);
    if (!type) {
        return zeroValues(count);
    }
    if (count < 1) {
        return QByteArray();
    }
    const bool bits = type->elementClass == dravo::BitInWordClass;
    const EntryRun run(cache, station, type->registerType, bits ? address / 16 : address);
    switch (type->elementClass) {
        case dravo::BitClass:
            return cachedEntries<1>(run, count);
        case dravo::WordClass:
            return cachedEntries<2>(run, count);
        case dravo::DoubleWordClass:
            return cachedEntries<4>(run, elementsOf(count, 2));
        case dravo::WordPairClass:
            return cachedPairs(run, elementsOf(count, 2));
        case dravo::BitInWordClass:
            return cachedBits(run, address % 16, count);
    }
    return QByteArray();
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

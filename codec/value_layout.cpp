#include "codec/value_layout.h"

#include <algorithm>

#include "codec/frame_bytes.h"

bool packedBit(const QByteArray &packed, qint64 index) {
    return (valueByte(packed, index / 8) >> (index % 8)) & 1;
}

QByteArray unpackedBits(const QByteArray &packed, int first, int count) {
    QByteArray values(count, '\0');
    char *bytes = values.data();
    for (int i = 0; i < count; ++i) {
        bytes[i] = char(packedBit(packed, qint64(first) + i));
    }
    return values;
}

QByteArray packedBits(const QByteArray &values, int count) {
    QByteArray packed;
    padTo(packed, (qint64(count) + 7) / 8);
    char *bytes = packed.data();
    for (int i = 0; i < qMin(count, values.size()); ++i) {
        if (values.at(i) != 0) {
            bytes[i / 8] = char(bytes[i / 8] | 1 << (i % 8));
        }
    }
    return packed;
}

QByteArray sizedBytes(const QByteArray &values, qint64 size) {
    QByteArray bytes = values.left(int(qBound<qint64>(0, size, values.size())));
    padTo(bytes, size);
    return bytes;
}

QByteArray reversedElements(const QByteArray &values, int size) {
    QByteArray reversed = values.left(values.size() / size * size);
    char *bytes = reversed.data();
    for (int start = 0; start < reversed.size(); start += size) {
        std::reverse(bytes + start, bytes + start + size);
    }
    return reversed;
}

QByteArray swappedHalves(const QByteArray &values) {
    QByteArray swapped = values;
    if (swapped.isEmpty()) {
        return swapped;  // as null as it was
    }
    char *bytes = swapped.data();
    for (int start = 0; start + 4 <= swapped.size(); start += 4) {
        std::swap_ranges(bytes + start, bytes + start + 2, bytes + start + 2);
    }
    return swapped;
}

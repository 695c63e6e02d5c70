#include "codec/value_layout.h"

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

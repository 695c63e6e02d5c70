// How values lie in records, replies and the cache, and the way from one to the other. Pure; any thread.
#ifndef DRAVO_CODEC_VALUE_LAYOUT_H
#define DRAVO_CODEC_VALUE_LAYOUT_H

#include <QtCore/QByteArray>

/// Bit index of packed bits, lowest element in bit 0 of byte 0; 0 where the data end sooner.
bool packedBit(const QByteArray &packed, qint64 index);

/// One byte, 0 or 1, for each of count bits from bit first on; bits past the end count as 0. count is not negative.
QByteArray unpackedBits(const QByteArray &packed, int first, int count);

/// The first count values, nonzero = 1, eight to a byte; values past the end count as 0. Below 1: empty.
QByteArray packedBits(const QByteArray &values, int count);

/// The first size bytes, completed with zeros; below 1: empty.
QByteArray sizedBytes(const QByteArray &values, qint64 size);

#endif  // DRAVO_CODEC_VALUE_LAYOUT_H

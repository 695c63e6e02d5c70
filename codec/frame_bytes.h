// Bytes of frames and values: order, sign and CRC stand here alone. Pure; any thread.
#ifndef DRAVO_CODEC_FRAME_BYTES_H
#define DRAVO_CODEC_FRAME_BYTES_H

#include <QtCore/QByteArray>

/// A byte as 0 to 255: plain char is signed on x86, unsigned on ARM.
inline int byteAt(const QByteArray &bytes, int index) {
    return uchar(bytes.at(index));
}

/// A byte of a record's data; 0 where the data end sooner.
inline int valueByte(const QByteArray &data, qint64 index) {
    return index < data.size() ? byteAt(data, int(index)) : 0;
}

/// Appends the low 8, 16 or 32 bits of value, high byte first.
void putU8(QByteArray &frame, qint64 value);
void putU16(QByteArray &frame, qint64 value);
void putU32(QByteArray &frame, qint64 value);

/// Appends the CRC of all bytes so far, low byte first.
void appendCrc(QByteArray &frame);

/// Puts the CRC of the bytes before index at index and index + 1. The frame reaches there.
void replaceCrc(QByteArray &frame, int index);

/// Whether the last two bytes are the CRC of those before. The frame holds at least two bytes.
bool endsWithCrc(const QByteArray &frame);

/// Appends the low byte of the sum of all bytes so far.
void appendSum(QByteArray &frame);

/// Appends zero bytes up to size; never shortens.
void padTo(QByteArray &data, qint64 size);

#endif  // DRAVO_CODEC_FRAME_BYTES_H

#include "codec/frame_bytes.h"

#include <algorithm>

#include "korvel_dravo_port.h"

namespace {

// The checksum functions take a plain pointer for their callers' sake; they only read.
unsigned char *bytesOf(const QByteArray &frame) {
    return const_cast<unsigned char *>(reinterpret_cast<const unsigned char *>(frame.constData()));
}

int crcOf(const QByteArray &frame, int length) {
    return CalCRC(bytesOf(frame), quint16(length));
}

}  // namespace

void putU8(QByteArray &frame, qint64 value) {
    frame.append(char(value & 0xFF));
}

void putU16(QByteArray &frame, qint64 value) {
    putU8(frame, value >> 8);
    putU8(frame, value);
}

void putU32(QByteArray &frame, qint64 value) {
    putU16(frame, value >> 16);
    putU16(frame, value);
}

void appendCrc(QByteArray &frame) {
    const int length = frame.size();
    padTo(frame, length + 2);
    replaceCrc(frame, length);
}

void replaceCrc(QByteArray &frame, int index) {
    const int crc = crcOf(frame, index);
    char *bytes = frame.data();
    bytes[index] = char(crc & 0xFF);
    bytes[index + 1] = char(crc >> 8);
}

bool endsWithCrc(const QByteArray &frame) {
    const int length = frame.size() - 2;
    return crcOf(frame, length) == byteAt(frame, length) + 256 * byteAt(frame, length + 1);
}

void appendSum(QByteArray &frame) {
    putU8(frame, CalSUM(bytesOf(frame), quint16(frame.size())));
}

void padTo(QByteArray &data, qint64 size) {
    const int filled = data.size();
    if (filled < size) {
        data.resize(int(size));
        std::fill(data.data() + filled, data.data() + size, '\0');
    }
}

#include "fuzz/driver_frames.h"

#include <algorithm>

#include "fuzz/driver_types.h"

namespace reference {

namespace {

/// Appends the low bytes of value, the highest first.
void put(QByteArray &frame, int bytes, qint64 value) {
    for (int i = bytes - 1; i >= 0; --i) {
        frame.append(static_cast<char>(value >> (8 * i) & 0xFF));
    }
}

QByteArray frameHead(const RW_VAR &var, int functionCode) {
    QByteArray frame;
    put(frame, 1, var.station);
    put(frame, 1, functionCode);
    put(frame, 2, startAddress(var.elemType, var.address));
    return frame;
}

qint64 replyDataBytes(const RW_VAR &var) {
    const qint64 count = var.count;
    switch (classOf(var.elemType)) {
        case Bit:
            return (count + 7) / 8;
        case DoubleWord:
            return 4 * count;
        default:
            return 2 * count;
    }
}

Protocol read(const RW_VAR &var, const QByteArray &frame, qint64 dataBytes) {
    return {frame, frame.size(), narrowed(dataBytes + 5), 3, narrowed(dataBytes), var, 0, 0, 0};
}

Protocol write(const RW_VAR &var, const QByteArray &frame) {
    return {frame, frame.size(), var.station == 0 ? 0 : 8, 0, 0, var, 0, 0, 0};
}

/// The values of the elements that a frame carries, each high byte first.
void putElements(QByteArray &frame, const RW_VAR &var, int bytesEach) {
    for (qint64 i = 0; i < std::min<qint64>(var.count, kMaxElementCount); ++i) {
        for (int k = bytesEach - 1; k >= 0; --k) {
            put(frame, 1, byteAt(var.data, i * bytesEach + k));
        }
    }
}

QByteArray writeFrame(const RW_VAR &var) {
    const Class elementClass = classOf(var.elemType);
    if (elementClass == NoType) {
        return frameHead(var, 0);
    }
    if (elementClass == Bit && var.count == 1) {
        QByteArray frame = frameHead(var, 5);
        put(frame, 2, byteAt(var.data, 0) != 0 ? 0xFF00 : 0);
        return frame;
    }
    if (elementClass == Bit) {
        QByteArray frame = frameHead(var, 15);
        put(frame, 2, var.count);
        put(frame, 1, (qint64(var.count) + 7) / 8);
        return frame + var.data;
    }
    const int registers = elementClass == Word ? 1 : 2;
    QByteArray frame = frameHead(var, elementClass == Word && var.count == 1 ? 6 : 16);
    if (elementClass != Word || var.count != 1) {
        put(frame, 2, qint64(var.count) * registers);
        put(frame, 1, qint64(var.count) * registers * 2);
    }
    putElements(frame, var, registers * 2);
    return frame;
}

QByteArray remoteFrame(const RW_VAR &var, const QByteArray &data) {
    QByteArray frame;
    put(frame, 1, 22 + data.size());
    put(frame, 1, var.ownerId);
    put(frame, 1, var.accessFlag);
    put(frame, 1, var.nodeId);
    put(frame, 1, var.station);
    put(frame, 2, var.elemType);
    put(frame, 4, var.address);
    put(frame, 2, var.count);
    put(frame, 4, var.param1);
    put(frame, 4, var.param2);
    frame += data;
    put(frame, 1, sumOf(frame));
    return frame;
}

}  // namespace

int crcOf(const QByteArray &bytes, int length) {
    unsigned crc = 0xFFFF;
    for (int i = 0; i < length % 65536; ++i) {
        crc ^= static_cast<unsigned>(byteAt(bytes, i));
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xA001 : crc >> 1;
        }
    }
    return static_cast<int>(crc);
}

QByteArray withCrc(QByteArray bytes) {
    const int crc = crcOf(bytes, bytes.size());
    put(bytes, 1, crc);
    put(bytes, 1, crc >> 8);
    return bytes;
}

int sumOf(const QByteArray &bytes) {
    qint64 sum = 0;
    for (int i = 0; i < bytes.size() % 65536; ++i) {
        sum += byteAt(bytes, i);
    }
    return int(sum % 65536);
}

Protocol readRequest(const RW_VAR &var) {
    const Class elementClass = classOf(var.elemType);
    const bool readable = elementClass == Bit || elementClass == Word || elementClass == DoubleWord;
    QByteArray frame = frameHead(var, !readable ? 0 : elementClass == Bit ? 1 : 3);
    put(frame, 2, elementClass == DoubleWord ? 2 * qint64(var.count) : var.count);
    return read(var, withCrc(frame), readable ? replyDataBytes(var) : 0);
}

Protocol writeRequest(const RW_VAR &var) {
    return write(var, withCrc(writeFrame(var)));
}

Protocol remoteReadRequest(const RW_VAR &var) {
    return read(var, remoteFrame(var, QByteArray()), replyDataBytes(var));
}

Protocol remoteWriteRequest(const RW_VAR &var) {
    return write(var, remoteFrame(var, var.data));
}

}  // namespace reference

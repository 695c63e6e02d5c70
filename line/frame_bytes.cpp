#include "line/frame_bytes.h"

#include "korvel_dravo_port.h"

namespace dravo {

bool crcFits(const QByteArray &bytes, int offset, int length) {
    if (length < kShortestFrame) {
        return false;
    }
    // The checksum functions take a plain pointer for their callers' sake; they only read.
    const uchar *frame = reinterpret_cast<const uchar *>(bytes.constData()) + offset;
    const int crc = CalCRC(const_cast<uchar *>(frame), quint16(length - kCrcBytes));
    return frame[length - 2] == (crc & 0xFF) && frame[length - 1] == crc >> 8;
}

int lengthByHeader(const QByteArray &bytes, int offset) {
    const int available = bytes.size() - offset;
    if (available < 1) {
        return 0;
    }
    const int station = byteOf(bytes, offset);
    if (station < 1 || station > 247) {
        return -1;
    }
    if (available < 2) {
        return 0;
    }
    const int function = byteOf(bytes, offset + 1);
    switch (function & 0x7F) {
        case 1:
        case 2:
        case 3:
        case 4:
            if (function & 0x80) {
                return 5;
            }
            return available < 3 ? 0 : 5 + byteOf(bytes, offset + 2);
        case 5:
        case 6:
        case 15:
        case 16:
            return function & 0x80 ? 5 : 8;
        default:
            return -1;
    }
}

}  // namespace dravo

#include "fuzz/driver_values.h"

#include <algorithm>

#include "fuzz/driver_frames.h"
#include "fuzz/driver_types.h"

namespace reference {

namespace {

/// So many bytes from an index on, the lowest first; 0 past the end.
quint32 little(const QByteArray &bytes, qint64 index, int size) {
    quint32 value = 0;
    for (int i = 0; i < size; ++i) {
        value |= static_cast<quint32>(byteAt(bytes, index + i)) << (8 * i);
    }
    return value;
}

quint32 big(const QByteArray &bytes, qint64 index, int size) {
    quint32 value = 0;
    for (int i = 0; i < size; ++i) {
        value = value << 8 | static_cast<quint32>(byteAt(bytes, index + i));
    }
    return value;
}

bool packedBit(const QByteArray &bytes, qint64 index) {
    return (byteAt(bytes, index / 8) >> (index % 8) & 1) != 0;
}

void putLittle(QByteArray &out, quint32 value, int size) {
    for (int i = 0; i < size; ++i) {
        out.append(static_cast<char>(value >> (8 * i) & 0xFF));
    }
}

}  // namespace

void Values::storeReply(const Protocol &request, const QByteArray &reply) {
    const RW_VAR &var = request.var;
    const QByteArray data = reply.mid(3, std::max(request.dataLength, 0));
    switch (classOf(var.elemType)) {
        case Bit:
            for (int i = 0; i < var.count && i < data.size() * 8; ++i) {
                at(var.station, var.elemType, qint64(var.address) + i) = packedBit(data, i);
            }
            break;
        case Word:
            for (qint64 i = 0; 2 * i < data.size(); ++i) {
                at(var.station, var.elemType, var.address + i) = big(data, 2 * i, 2);
            }
            break;
        case DoubleWord:
            for (qint64 i = 0; 4 * i + 3 < data.size(); ++i) {
                at(var.station, var.elemType, var.address + i) = big(data, 4 * i, 4);
            }
            break;
        default:
            break;
    }
}

void Values::storeWritten(const RW_VAR &var) {
    const int type = wireType(var.elemType);
    const int count = var.count > kMaxElementCount ? 0 : var.count;
    for (qint64 i = 0; i < count; ++i) {
        const qint64 element = var.address + i;
        switch (classOf(var.elemType)) {
            case Bit:
                at(var.station, type, element) = packedBit(var.data, i);
                break;
            case Word:
                at(var.station, type, element) = little(var.data, 2 * i, 2);
                break;
            case DoubleWord:
                at(var.station, type, element) = little(var.data, 4 * i, 4);
                break;
            case Pair:
                at(var.station, type, element + i + 1) = little(var.data, 4 * i, 2);
                at(var.station, type, element + i) = little(var.data, 4 * i + 2, 2);
                break;
            case BitInWord:
                setBit(var.station, type, element, byteAt(var.data, i) != 0);
                break;
            case NoType:
                return;
        }
    }
}

QByteArray Values::read(int type, int station, qint64 address, int count) {
    const int wire = wireType(type);
    QByteArray out;
    for (qint64 i = 0; i < count; ++i) {
        switch (classOf(type)) {
            case Bit:
                putLittle(out, at(station, wire, address + i), 1);
                break;
            case Word:
                putLittle(out, at(station, wire, address + i), 2);
                break;
            case DoubleWord:
                if (i % 2 == 0) {
                    putLittle(out, at(station, wire, address + i / 2), 4);
                }
                break;
            case Pair:
                if (i % 2 == 0) {
                    putLittle(out, at(station, wire, address + i + 1), 2);
                    putLittle(out, at(station, wire, address + i), 2);
                }
                break;
            case BitInWord:
                putLittle(out, at(station, wire, (address + i) / 16) >> ((address + i) % 16) & 1, 1);
                break;
            case NoType:
                putLittle(out, 0, 2);
                break;
        }
    }
    return out;
}

std::vector<Values::Key> Values::takeTouched() {
    return std::exchange(touched_, {});
}

int Values::sizeOf(Key key) {
    switch (classOf(key >> 16 & 0xFF)) {
        case Bit:
            return 1;
        case DoubleWord:
            return 4;
        default:
            return 2;
    }
}

quint32 &Values::at(int station, int type, qint64 address) {
    const Key key = static_cast<Key>(station & 0xFF) << 24 | static_cast<Key>(type & 0xFF) << 16 |
                    static_cast<Key>(address & 0xFFFF);
    touched_.push_back(key);
    return values_[key];
}

void Values::setBit(int station, int type, qint64 bitAddress, bool on) {
    const qint64 bit = bitAddress % 16;
    if (bit < 0) {  // names no bit
        return;
    }
    quint32 &word = at(station, type, bitAddress / 16);
    word = on ? word | 1U << bit : word & ~(1U << bit);
}

}  // namespace reference

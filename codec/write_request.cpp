#include "codec/write_request.h"

#include <algorithm>

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/protocol.h"

namespace {

const int kFixedBytes = 6;  // station, function code, start address, CRC
const int kCountBytes = 3;  // quantity, byte count

// The bytes before the values, in a frame with room for so many bytes of them.
QByteArray frameHead(const RW_VAR &var, int functionCode, int valueBytes) {
    QByteArray frame;
    frame.reserve(kFixedBytes + valueBytes);
    putU8(frame, var.station);
    putU8(frame, functionCode);
    putU16(frame, startAddress(var.elemType, var.address));
    return frame;
}

// Bytes of the elements sent. A record that reached the queue past the list calls may have any count.
int sentBytes(const RW_VAR &var, int elementBytes) {
    return qBound(0, var.count, int(kMaxElementCount)) * elementBytes;
}

// The elements of data, each high byte first; what data lack is zeros.
void putElements(QByteArray &frame, const RW_VAR &var, int elementBytes) {
    const int start = frame.size();
    const int size = sentBytes(var, elementBytes);
    padTo(frame, qint64(start) + size);
    char *element = frame.data() + start;
    std::copy_n(var.data.constData(), qMin(size, var.data.size()), element);
    for (char *const end = element + size; element != end; element += elementBytes) {
        std::reverse(element, element + elementBytes);
    }
}

QByteArray singleCoil(const RW_VAR &var) {
    QByteArray frame = frameHead(var, 5, 2);
    putU16(frame, valueByte(var.data, 0) != 0 ? 0xFF00 : 0x0000);
    return frame;
}

QByteArray multipleCoils(const RW_VAR &var) {
    QByteArray frame = frameHead(var, 15, kCountBytes + var.data.size());
    putU16(frame, var.count);
    putU8(frame, (qint64(var.count) + 7) / 8);
    return frame.append(var.data);
}

QByteArray singleRegister(const RW_VAR &var) {
    QByteArray frame = frameHead(var, 6, 2);
    putElements(frame, var, 2);
    return frame;
}

QByteArray multipleRegisters(const RW_VAR &var, int registersPerElement) {
    const int elementBytes = registersPerElement * 2;
    QByteArray frame = frameHead(var, 16, kCountBytes + sentBytes(var, elementBytes));
    const qint64 registers = qint64(var.count) * registersPerElement;
    putU16(frame, registers);
    putU8(frame, registers * 2);
    putElements(frame, var, elementBytes);
    return frame;
}

// Without its CRC.
QByteArray writeFrame(const RW_VAR &var) {
    if (const dravo::ElementType *type = dravo::findElementType(var.elemType)) {
        switch (type->elementClass) {
            case dravo::BitClass:
                return var.count == 1 ? singleCoil(var) : multipleCoils(var);
            case dravo::WordClass:
                return var.count == 1 ? singleRegister(var) : multipleRegisters(var, 1);
            case dravo::DoubleWordClass:
            case dravo::WordPairClass:
                return multipleRegisters(var, 2);
            case dravo::BitInWordClass:
                break;
        }
    }
    return frameHead(var, 0, 0);
}

}  // namespace

Protocol writeRequest(const RW_VAR &var) {
    QByteArray frame = writeFrame(var);
    appendCrc(frame);
    return writeProtocol(var, frame);
}

#include "codec/write_request.h"

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/protocol.h"
#include "codec/value_layout.h"

namespace {

// What follows the start address, and the function code that goes with it.
struct WriteForm {
    int functionCode;
    QByteArray values;
};

// The elements of data, each high byte first. A record that reached the queue past the list calls may have any count.
QByteArray elementsOnTheWire(const RW_VAR &var, int elementBytes) {
    const qint64 sent = qMin(var.count, int(kMaxElementCount));
    return reversedElements(sizedBytes(var.data, sent * elementBytes), elementBytes);
}

WriteForm singleCoil(const RW_VAR &var) {
    WriteForm form = {5, QByteArray()};
    putU16(form.values, valueByte(var.data, 0) != 0 ? 0xFF00 : 0x0000);
    return form;
}

WriteForm multipleCoils(const RW_VAR &var) {
    WriteForm form = {15, QByteArray()};
    putU16(form.values, var.count);
    putU8(form.values, (qint64(var.count) + 7) / 8);
    form.values.append(var.data);
    return form;
}

WriteForm singleRegister(const RW_VAR &var) {
    WriteForm form = {6, elementsOnTheWire(var, 2)};
    return form;
}

WriteForm multipleRegisters(const RW_VAR &var, int registersPerElement) {
    WriteForm form = {16, QByteArray()};
    const qint64 registers = qint64(var.count) * registersPerElement;
    putU16(form.values, registers);
    putU8(form.values, registers * 2);
    form.values.append(elementsOnTheWire(var, registersPerElement * 2));
    return form;
}

WriteForm writeForm(const RW_VAR &var) {
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
    WriteForm none = {0, QByteArray()};
    return none;
}

}  // namespace

Protocol writeRequest(const RW_VAR &var) {
    const WriteForm form = writeForm(var);
    QByteArray frame;
    putU8(frame, var.station);
    putU8(frame, form.functionCode);
    putU16(frame, startAddress(var.elemType, var.address));
    frame.append(form.values);
    appendCrc(frame);
    return writeProtocol(var, frame);
}

#include "codec/Func_Write.h"

#include "cache/written_values.h"
#include "codec/Func_Read.h"
#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/protocol.h"
#include "driver/Communication_Protocol.h"

namespace {

// What follows the start address, and the function code that goes with it.
struct WriteForm {
    int functionCode;
    QByteArray values;
};

// The elements of data, each high byte first. A record that reached the queue past the list calls may have any count.
void appendElements(QByteArray &values, const QByteArray &data, int count, int elementBytes) {
    const int sent = qMin(count, int(kMaxElementCount));
    for (qint64 element = 0; element < sent; ++element) {
        for (int byte = elementBytes - 1; byte >= 0; --byte) {
            putU8(values, valueByte(data, element * elementBytes + byte));
        }
    }
}

WriteForm multipleRegisters(const RW_VAR &var, int registersPerElement) {
    WriteForm form = {16, QByteArray()};
    const qint64 registers = qint64(var.count) * registersPerElement;
    putU16(form.values, registers);
    putU8(form.values, registers * 2);
    appendElements(form.values, var.data, var.count, registersPerElement * 2);
    return form;
}

WriteForm writeForm(const RW_VAR &var) {
    WriteForm form = {0, QByteArray()};
    const dravo::ElementType *type = dravo::findElementType(var.elemType);
    if (!type) {
        return form;
    }
    switch (type->elementClass) {
        case dravo::BitClass:
            if (var.count == 1) {
                form.functionCode = 5;
                putU16(form.values, valueByte(var.data, 0) != 0 ? 0xFF00 : 0x0000);
            } else {
                form.functionCode = 15;
                putU16(form.values, var.count);
                putU8(form.values, (qint64(var.count) + 7) / 8);
                form.values.append(var.data);
            }
            return form;
        case dravo::WordClass:
            if (var.count != 1) {
                return multipleRegisters(var, 1);
            }
            form.functionCode = 6;
            appendElements(form.values, var.data, 1, 2);
            return form;
        case dravo::DoubleWordClass:
        case dravo::WordPairClass:
            return multipleRegisters(var, 2);
        case dravo::BitInWordClass:
            break;
    }
    return form;
}

// A bit inside a word: reads the word, and writes it back with the bit merged in when the reply has come.
void queueMergedWrite(const RW_VAR &var) {
    RW_VAR word = var;
    word.elemType = getPlcReg(var.elemType);
    word.address = var.address / 16;
    word.count = 1;
    word.data = QByteArray(2, '\0');

    word.accessFlag = 0;
    word.param1 = kMergeRead;
    ReadRegister(&word);

    word.accessFlag = 1;
    word.param1 = 0;
    WriteAnalog(&word);
    expectReplies(2);
}

}  // namespace

void WriteRegister(RW_VAR *var) {
    const dravo::ElementType *type = dravo::findElementType(var->elemType);
    if (type && type->elementClass == dravo::BitInWordClass) {
        queueMergedWrite(*var);
    } else {
        WriteAnalog(var);
    }
    if (!PLC_driver.comFailed) {
        RW_VAR shown = *var;  // padded while it is stored
        WriteDataToLocal(&shown);
    }
}

void WriteAnalog(RW_VAR *var) {
    const WriteForm form = writeForm(*var);
    QByteArray frame;
    putU8(frame, var->station);
    putU8(frame, form.functionCode);
    putU16(frame, get_offset_address(var->elemType, var->address));
    frame.append(form.values);
    appendCrc(frame);
    queueRequest(frame, writeReply(var->station), *var);
}

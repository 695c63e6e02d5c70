#include "cache/Func_DealData.h"

#include "cache/value_cache.h"
#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/protocol.h"
#include "driver/Communication_Protocol.h"

namespace {

// The request's data bytes, or as many of them as the reply holds.
QByteArray replyData(const QByteArray &reply, const Protocol &request) {
    const int available = reply.size() - request.dataOffset;
    if (request.dataOffset < 0 || available <= 0 || request.dataLength <= 0) {
        return QByteArray();
    }
    return reply.mid(request.dataOffset, qMin(request.dataLength, available));
}

// The wire carries each register, and of a double word each half, high byte first; entries hold the low byte first.
// The last register of an odd number of bytes is stored with a low byte of 0.
void storeRegisters(ControlInformationM &element, qint64 address, const QByteArray &data, int entrySize) {
    for (int start = 0; start < data.size(); start += entrySize) {
        char *entry = entryBytes(element, address++);
        for (int byte = 0; byte < entrySize; ++byte) {
            entry[byte] = char(valueByte(data, start + entrySize - 1 - byte));
        }
    }
}

}  // namespace

void SaveToLocalDataErea(QByteArray *reply) {
    const Protocol &request = PLC_driver.protocolList.at(0);
    const RW_VAR &var = request.var;
    if (var.param1 == kMergeRead) {
        SpecialRegisterSave(reply);
        return;
    }
    const dravo::ElementType *type = dravo::findElementType(var.elemType);
    if (!type) {
        return;
    }
    QByteArray data = replyData(*reply, request);
    ControlInformationM element = cacheWalk(var.station, var.elemType, var.count);
    switch (type->elementClass) {
        case dravo::BitClass:
            for (qint64 i = 0; i < qMin<qint64>(var.count, qint64(data.size()) * 8); ++i) {
                *entryBytes(element, var.address + i) = char(valueBit(data, i));
            }
            break;
        case dravo::WordClass:
            storeRegisters(element, var.address, data, 2);
            break;
        case dravo::DoubleWordClass:
            data.truncate(data.size() / 4 * 4);  // an incomplete element is skipped
            storeRegisters(element, var.address, data, 4);
            break;
        case dravo::WordPairClass:
        case dravo::BitInWordClass:
            break;  // read only after normalisation; a record queued as it stands has nothing to store
    }
}

void SpecialRegisterSave(QByteArray *reply) {
    if (reply->size() <= 5 || PLC_driver.writeVarList.isEmpty() || PLC_driver.protocolList.size() < 2) {
        return;
    }
    int value = byteAt(*reply, 3) * 256 + byteAt(*reply, 4);
    const RW_VAR &write = PLC_driver.writeVarList.at(0);
    const int bit = write.address % 16;
    if (bit >= 0) {  // a negative remainder names no bit: the word goes back as it was read
        const int mask = 1 << bit;
        value = valueByte(write.data, 0) != 0 ? value | mask : value & ~mask;
    }

    // A function-6 write has its value at 4; a function-16 write of one register has it at 7.
    QByteArray &frame = PLC_driver.protocolList[1].frame;
    const int valueAt = byteAt(frame, 1) == 6 ? 4 : 7;
    if (frame.size() < valueAt + 4) {
        return;
    }
    char *bytes = frame.data();
    bytes[valueAt] = char(value >> 8);
    bytes[valueAt + 1] = char(value & 0xFF);
    replaceCrc(frame, valueAt + 2);
}

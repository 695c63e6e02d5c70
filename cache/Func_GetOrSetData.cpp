// The host's reads and writes of values.
#include <QtCore/QMutexLocker>

#include "cache/value_cache.h"
#include "cache/written_values.h"
#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/integers.h"
#include "driver/Communication_Protocol.h"
#include "vars/Func_Initi.h"
#include "vars/address_text.h"
#include "vars/request_merge.h"

namespace {

const int kWriteToDevice = 2;  // of ComInfo::writeMode

QByteArray zeroBytes(int count) {
    return QByteArray(qMax(count, 0) * 2, '\0');
}

// How the values of a class travel in a write record, and how the record is cut.
struct WriteLayout {
    int registersPerElement;  // of the host's count
    int elementBytes;         // 0: bits, packed eight to a byte
    int addressStep;          // element addresses from one element to the next
};
const WriteLayout kWriteLayouts[] = {
    {1, 0, 1},  // BitClass
    {1, 2, 1},  // WordClass
    {2, 4, 1},  // DoubleWordClass
    {2, 4, 2},  // WordPairClass
    {1, 1, 1},  // BitInWordClass
};

QByteArray packedBits(const QByteArray &values, int count) {
    QByteArray packed;
    padTo(packed, (qint64(count) + 7) / 8);
    char *bytes = packed.data();
    for (int i = 0; i < count; ++i) {
        if (valueByte(values, i) != 0) {
            bytes[i / 8] = char(bytes[i / 8] | 1 << (i % 8));
        }
    }
    return packed;
}

QByteArray switchBytes(const QByteArray &values, int count) {
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        bytes.append(char(valueByte(values, i) != 0));
    }
    return bytes;
}

QByteArray firstBytes(const QByteArray &values, int size) {
    QByteArray bytes = values.left(size);
    padTo(bytes, size);
    return bytes;
}

QByteArray recordData(dravo::ElementClass elementClass, const QByteArray &values, int elements) {
    switch (elementClass) {
        case dravo::BitClass:
            return packedBits(values, elements);
        case dravo::BitInWordClass:
            return switchBytes(values, elements);
        default:
            return firstBytes(values, qMax(elements, 0) * kWriteLayouts[elementClass].elementBytes);
    }
}

void queueForDevice(const RW_VAR &record) {
    appendDriverWrite(PLC_driver.writeVarList, record);
    if (PLC_driver.comFailed) {  // while the link is up, the frame builder shows the value when it is sent
        RW_VAR shown = record;
        WriteDataToLocal(&shown);
    }
}

void queueInPieces(const RW_VAR &whole, dravo::ElementClass elementClass) {
    if (elementClass == dravo::BitClass) {
        queueForDevice(whole);  // bit writes are not cut by the frame limit
        return;
    }
    const WriteLayout &layout = kWriteLayouts[elementClass];
    const int limit =
        elementClass == dravo::BitInWordClass ? 1 : frameLimit(PLC_driver.comInfo->maxGroupLength, whole.elemType);
    const RequestPieces pieces = {whole.address, layout.addressStep, whole.count, limit};
    forEachPiece(pieces, [&](int address, int first, int count) {
        RW_VAR piece = whole;
        piece.address = address;
        piece.count = count;
        piece.data = whole.data.mid(first * layout.elementBytes, count * layout.elementBytes);
        queueForDevice(piece);
    });
}

QByteArray cachedValues(const dravo::ElementType &type, ControlInformationM &element, qint64 address) {
    QByteArray values;
    const int count = element.count;
    switch (type.elementClass) {
        case dravo::BitClass:
        case dravo::WordClass:
        case dravo::DoubleWordClass: {
            const int entrySize = cacheEntrySize(element.elemType);
            const int elements = type.elementClass == dravo::DoubleWordClass ? (count + 1) / 2 : count;
            for (qint64 i = 0; i < elements; ++i) {
                values.append(entryBytes(element, address + i), entrySize);
            }
            break;
        }
        case dravo::WordPairClass:  // the low half lies at the higher address
            for (qint64 i = 0; i < (count + 1) / 2; ++i) {
                values.append(entryBytes(element, address + 2 * i + 1), 2);
                values.append(entryBytes(element, address + 2 * i), 2);
            }
            break;
        case dravo::BitInWordClass:
            for (qint64 i = 0; i < count; ++i) {
                values.append(char(wordBit(element, address + i)));
            }
            break;
    }
    return values;
}

}  // namespace

int GetRegisterData(const QString & /*firstArg*/, int elemType, const QString &addressText, int station,
                    QByteArray &out, int count) {
    out.clear();
    if (count > kMaxElementCount) {
        return 0;
    }
    const int address = PLC_driver.comInfo ? StringAddressToInt(elemType, addressText) : kNoAddress;
    if (address < 0) {
        out = zeroBytes(count);
        return 0;
    }
    const dravo::ElementType *type = dravo::findElementType(elemType);
    if (!type) {
        out = zeroBytes(count);
        return 1;
    }
    ControlInformationM element = cacheWalk(stationInForce(*PLC_driver.comInfo, station), type->registerType, count);
    QMutexLocker lock(&PLC_driver.cacheMutex);
    out = cachedValues(*type, element, address);
    return 1;
}

int SetRegisterData(const QString &label, int elemType, const QString &addressText, int station,
                    const QByteArray &values, int count, int ownerId, int itemId) {
    if (!PLC_driver.comInfo || count > kMaxElementCount) {
        return 0;
    }
    const ComInfo &comInfo = *PLC_driver.comInfo;
    const int address = StringAddressToInt(elemType, addressText);
    if (address < 0) {
        return 0;
    }
    const bool toDevice = comInfo.writeMode == kWriteToDevice;
    if (const dravo::ElementType *type = dravo::findElementType(elemType)) {
        const int registers = kWriteLayouts[type->elementClass].registersPerElement;
        const int elements = registers == 2 ? saturated((qint64(count) + 1) / 2) : count;
        RW_VAR record = driverRecord(comInfo);
        record.ownerId = ownerId;
        record.itemId = itemId;
        record.accessFlag = 1;
        record.label = label;
        record.addressText = addressText;
        record.elemType = elemType;
        record.address = address;
        record.station = stationInForce(comInfo, station);
        record.count = elements;
        record.data = recordData(type->elementClass, values, elements);
        if (toDevice) {
            queueInPieces(record, type->elementClass);
        } else {
            WriteDataToLocal(&record);
        }
    }
    return toDevice ? 0 : 1;
}

int QueryFinishFlag() {
    return 1;
}

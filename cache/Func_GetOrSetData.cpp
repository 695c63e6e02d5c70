// The host's reads and writes of values.
#include <QtCore/QMutexLocker>

#include "cache/Func_DealData.h"
#include "cache/host_values.h"
#include "driver/Communication_Protocol.h"
#include "korvel_dravo_elements.h"
#include "vars/address_text.h"
#include "vars/variable_record.h"
#include "vars/write_cut.h"

namespace {

const int kWriteToDevice = 2;  // of ComInfo::writeMode

void queueForDevice(const RW_VAR &record) {
    const QList<RW_VAR> pieces = writePieces(record, PLC_driver.comInfo->maxGroupLength);
    for (const RW_VAR &piece : pieces) {
        appendDriverWrite(PLC_driver.writeVarList, piece);
        if (PLC_driver.comFailed) {  // while the link is up, the frame builder shows the value when it is sent
            RW_VAR shown = piece;
            WriteDataToLocal(&shown);
        }
    }
}

}  // namespace

int GetRegisterData(const QString & /*firstArg*/, int elemType, const QString &addressText, int station,
                    QByteArray &out, int count) {
    out.clear();
    if (count > kMaxElementCount) {
        return 0;
    }
    const int address = PLC_driver.comInfo ? elementAddress(elemType, addressText) : kNoAddress;
    if (address < 0) {
        out = zeroValues(count);
        return 0;
    }
    const int stationRead = stationInForce(*PLC_driver.comInfo, station);
    QMutexLocker lock(&PLC_driver.cacheMutex);
    out = cachedValues(PLC_driver.valueCache, elemType, stationRead, address, count);
    return 1;
}

int SetRegisterData(const QString &label, int elemType, const QString &addressText, int station,
                    const QByteArray &values, int count, int ownerId, int itemId) {
    if (!PLC_driver.comInfo || count > kMaxElementCount) {
        return 0;
    }
    const ComInfo &comInfo = *PLC_driver.comInfo;
    const int address = elementAddress(elemType, addressText);
    if (address < 0) {
        return 0;
    }
    const bool toDevice = comInfo.writeMode == kWriteToDevice;
    const int result = toDevice ? 0 : 1;
    if (!dravo::findElementType(elemType)) {
        return result;
    }
    RW_VAR record = driverRecord(comInfo);
    record.ownerId = ownerId;
    record.itemId = itemId;
    record.accessFlag = 1;
    record.label = label;
    record.addressText = addressText;
    record.elemType = elemType;
    record.address = address;
    record.station = stationInForce(comInfo, station);
    setWrittenValues(record, values, count);
    if (toDevice) {
        queueForDevice(record);
    } else {
        WriteDataToLocal(&record);
    }
    return result;
}

int QueryFinishFlag() {
    return 1;
}

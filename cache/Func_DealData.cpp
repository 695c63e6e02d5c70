#include "cache/Func_DealData.h"

#include <QtCore/QMutexLocker>

#include "cache/reply_storage.h"
#include "cache/value_cache.h"
#include "cache/written_values.h"
#include "codec/bit_write.h"
#include "codec/frame_bytes.h"
#include "codec/protocol.h"
#include "driver/Communication_Protocol.h"

unsigned int ExtendFindSameVar(ControlInformationM &element) {
    Q_ASSERT(isHeld(PLC_driver.cacheMutex));
    return findEntry(PLC_driver.valueCache, element.station, element.elemType, element.address);
}

void SaveToLocalDataErea(QByteArray *reply) {
    const Protocol &request = PLC_driver.protocolList.at(0);
    if (isMergeRead(request)) {
        SpecialRegisterSave(reply);
        return;
    }
    Q_ASSERT(isHeld(PLC_driver.cacheMutex));
    storeReply(PLC_driver.valueCache, request, *reply);
}

void SpecialRegisterSave(QByteArray *reply) {
    Q_ASSERT(isHeld(PLC_driver.listMutex));
    if (PLC_driver.writeVarList.isEmpty() || PLC_driver.protocolList.size() < 2) {
        return;
    }
    const RW_VAR &write = PLC_driver.writeVarList.at(0);
    completeBitWrite(PLC_driver.protocolList[1].frame, *reply, write.address, valueByte(write.data, 0) != 0);
}

void WriteDataToLocal(RW_VAR *var) {
    QMutexLocker lock(&PLC_driver.cacheMutex);
    storeWritten(PLC_driver.valueCache, *var);
}

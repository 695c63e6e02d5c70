#include "vars/variable_record.h"

#include "codec/element_types.h"
#include "codec/integers.h"

RW_VAR driverRecord(const ComInfo &comInfo) {
    RW_VAR record = RW_VAR();
    record.remoteMode = comInfo.remoteMode;
    record.nodeId = comInfo.localNode;
    return record;
}

int stationInForce(const ComInfo &comInfo, int ownStation) {
    return comInfo.useVarStation ? ownStation : comInfo.defaultStation;
}

int frameLimit(int maxGroupLength, int elemType) {
    const qint64 limit = qMax(maxGroupLength, 1);
    return saturated(isBitType(elemType) ? limit * 8 : limit);
}

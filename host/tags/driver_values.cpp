#include "host/tags/driver_values.h"

QByteArray lastKnownValues(const Variable &variable) {
    QByteArray bytes;
    GetRegisterData(QString(), variable.elemType, variable.addressText, variable.station, bytes, variable.driverCount);
    return bytes;
}

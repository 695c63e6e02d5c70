#include "driver/station_table.h"

#include <QtCore/QMutexLocker>

#include "driver/Communication_Protocol.h"

void EnableEthernet(int station, int enable) {
    QMutexLocker lock(&PLC_driver.stationMutex);
    if (station < 0) {
        PLC_driver.stationMap.clear();
    } else if (enable == 0) {
        PLC_driver.stationMap.insert(station, 0);
    } else if (enable == 1) {
        PLC_driver.stationMap.remove(station);
    }
}

void EnCommStation(int station, int enable) {
    EnableEthernet(station, enable);
}

QMap<int, int> disabledStations() {
    QMutexLocker lock(&PLC_driver.stationMutex);
    return PLC_driver.stationMap;
}

int Ethernetcontains(int station) {
    QMutexLocker lock(&PLC_driver.stationMutex);
    return PLC_driver.stationMap.contains(station) ? 1 : 0;
}

// The stations taken out of communication. Any thread; takes stationMutex.
#ifndef DRAVO_DRIVER_STATION_TABLE_H
#define DRAVO_DRIVER_STATION_TABLE_H

#include <QtCore/QMap>

/// 1: the station is disabled, 0: it is enabled.
int Ethernetcontains(int station);

/// All of them at one moment, for who asks about many: the keys.
QMap<int, int> disabledStations();

#endif  // DRAVO_DRIVER_STATION_TABLE_H

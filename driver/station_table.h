// The stations taken out of communication. Any thread; takes stationMutex.
#ifndef DRAVO_DRIVER_STATION_TABLE_H
#define DRAVO_DRIVER_STATION_TABLE_H

/// 1: the station is disabled, 0: it is enabled.
int Ethernetcontains(int station);

#endif  // DRAVO_DRIVER_STATION_TABLE_H

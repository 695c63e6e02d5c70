// The first line of the live screen. Pure; any thread.
#ifndef DRAVO_HOST_SCREEN_SCREEN_HEADER_H
#define DRAVO_HOST_SCREEN_SCREEN_HEADER_H

#include "host/screen/monitor_model.h"
#include "host/screen/screen_line.h"

/// Port and settings, pass time and load of the line, stations that are down, and which variable of how many is
/// selected. Of a name that is too
/// long the end with the settings stays.
/// @param row  from 0.
ScreenLine headerLine(const MonitorModel &model, const QString &lineName, int row, int width, qint64 nowUs);

#endif  // DRAVO_HOST_SCREEN_SCREEN_HEADER_H

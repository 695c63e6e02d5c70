// How long a scan takes at most. Pure; any thread.
#ifndef DRAVO_HOST_SCAN_SCAN_TIME_H
#define DRAVO_HOST_SCAN_SCAN_TIME_H

#include <QtCore/QString>

#include "korvel_dravo_line.h"

/// All rounds at one setting, with nobody answering, and the wait for late answers behind them.
qint64 longestSweepUs(const dravo::LineSettings &line, int stations, int rounds);

/// "45 s", "12 min", "3 h": rounded up.
QString roughTime(qint64 us);

#endif  // DRAVO_HOST_SCAN_SCAN_TIME_H

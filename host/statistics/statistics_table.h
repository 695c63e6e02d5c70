// Statistics for people: lines of a terminal, for the live screen and at the end of a run. Pure; any thread.
#ifndef DRAVO_HOST_STATISTICS_STATISTICS_TABLE_H
#define DRAVO_HOST_STATISTICS_STATISTICS_TABLE_H

#include <QtCore/QStringList>

#include "host/statistics/run_statistics.h"

/// The line's figures, then a table of stations and line. Columns that do not fit beside the others stand in a further
/// table below, so that nothing is cut. rows: as RunStatistics gives them. width: cells, 40 or more.
QStringList statisticsTable(const QVector<StatisticsRow> &rows, int width);

#endif  // DRAVO_HOST_STATISTICS_STATISTICS_TABLE_H

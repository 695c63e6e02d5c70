// Statistics for programs: one record for each station and one for the line. Pure; any thread.
#ifndef DRAVO_HOST_STATISTICS_STATISTICS_RECORDS_H
#define DRAVO_HOST_STATISTICS_STATISTICS_RECORDS_H

#include <QtCore/QByteArrayList>

#include "host/statistics/run_statistics.h"

/// JSON: an object a line, with "record": "statistics", which no other record has. time: when they were counted.
QByteArrayList statisticsJson(const QVector<StatisticsRow> &rows, const QString &time);
/// CSV, without its first line.
QByteArrayList statisticsCsv(const QVector<StatisticsRow> &rows, const QString &time);
QByteArray statisticsCsvHeader();

#endif  // DRAVO_HOST_STATISTICS_STATISTICS_RECORDS_H

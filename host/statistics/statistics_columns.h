// What is told of a station or the line, column by column: tables, CSV and JSON all show this list. Pure; any thread.
#ifndef DRAVO_HOST_STATISTICS_STATISTICS_COLUMNS_H
#define DRAVO_HOST_STATISTICS_STATISTICS_COLUMNS_H

#include <QtCore/QJsonValue>
#include <QtCore/QString>

#include "host/statistics/run_statistics.h"

struct StatisticsColumn {
    const char *key;                             // in records
    QJsonValue (*value)(const StatisticsRow &);  // null: does not go with this row
    const char *title = nullptr;                 // in tables; null: it is not there
    bool evenIfZero = false;                     // in tables; else only where some row has something
    int decimals = 0;                            // in tables
};

/// In the order shown.
const QVector<StatisticsColumn> &statisticsColumns();

/// A value as it stands in CSV: null is empty, an object's members stand side by side as name:value.
QString statisticsText(const QJsonValue &value);

#endif  // DRAVO_HOST_STATISTICS_STATISTICS_COLUMNS_H

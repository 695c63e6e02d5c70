// What is told of a variable, column by column: table, CSV and JSON records all show this list. Pure; any thread.
#ifndef DRAVO_HOST_SCREEN_COLUMNS_H
#define DRAVO_HOST_SCREEN_COLUMNS_H

#include <QtCore/QJsonArray>
#include <QtCore/QJsonValue>
#include <QtCore/QString>
#include <QtCore/QVector>

#include "host/tags/tag_list.h"

/// A variable and all that is told of it.
struct ShownVariable {
    dravo::Variable variable;
    dravo::ValueState state;
    QJsonArray values;  // raw, unsigned numbers; null where never read
    QJsonArray texts;   // the same in the variable's format
    QString unit;
    QString meaning;  // why there is no fresh value; empty where nothing failed
    qint64 pass = 0;  // records only
    QString time;     // records only
};

struct Column {
    const char *key;                                        // in JSON, and title in table and CSV
    int recordWidth;                                        // cells in the table; 0: ends the line; below: not there
    QJsonValue (*value)(const ShownVariable &);             // null: not known
    QString (*tableText)(const ShownVariable &) = nullptr;  // null: as in the other records
};

/// In the order shown.
const QVector<Column> &columns();

/// Every value with the unit: "21.5 22.0 °C".
QString valuesAndUnit(const ShownVariable &shown);

/// A column's value as text: null is empty, an array's values stand side by side with "-" for null.
QString columnText(const QJsonValue &value);

#endif  // DRAVO_HOST_SCREEN_COLUMNS_H

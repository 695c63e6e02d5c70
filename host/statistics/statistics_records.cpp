#include "host/statistics/statistics_records.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "host/statistics/statistics_columns.h"
#include "host/tags/csv_text.h"

QByteArrayList statisticsJson(const QVector<StatisticsRow> &rows, const QString &time) {
    QByteArrayList records;
    for (const StatisticsRow &row : rows) {
        QJsonObject object{{QStringLiteral("record"), QStringLiteral("statistics")}, {QStringLiteral("time"), time}};
        for (const StatisticsColumn &column : statisticsColumns()) {
            object.insert(QLatin1String(column.key), column.value(row));
        }
        records.append(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
    }
    return records;
}

QByteArrayList statisticsCsv(const QVector<StatisticsRow> &rows, const QString &time) {
    QByteArrayList records;
    for (const StatisticsRow &row : rows) {
        QStringList fields{time};
        for (const StatisticsColumn &column : statisticsColumns()) {
            fields.append(csvField(statisticsText(column.value(row))));
        }
        records.append(fields.join(QLatin1Char(',')).toUtf8() + '\n');
    }
    return records;
}

QByteArray statisticsCsvHeader() {
    QByteArray header("time");
    for (const StatisticsColumn &column : statisticsColumns()) {
        header += ',' + QByteArray(column.key);
    }
    return header + '\n';
}

#include "host/statistics/statistics_table.h"

#include "host/statistics/statistics_columns.h"

namespace {

using TextColumn = QStringList;  // the title, then a text for each row

QString tableText(const QJsonValue &value, int decimals) {
    const QString text = value.isDouble() ? QString::number(value.toDouble(), 'f', decimals) : statisticsText(value);
    return text.isEmpty() ? QStringLiteral("-") : text;
}

TextColumn stationColumn(const QVector<StatisticsRow> &rows) {
    TextColumn texts{QStringLiteral("station")};
    for (const StatisticsRow &row : rows) {
        texts.append(row.station ? QString::number(*row.station) + QLatin1String(row.isDown ? " down" : "")
                                 : QStringLiteral("line"));
    }
    return texts;
}

QVector<TextColumn> figureColumns(const QVector<StatisticsRow> &rows) {
    QVector<TextColumn> columns;
    for (const StatisticsColumn &column : statisticsColumns()) {
        TextColumn texts{QLatin1String(column.title)};
        bool wanted = column.evenIfZero;
        for (const StatisticsRow &row : rows) {
            wanted = wanted || column.value(row).toDouble() != 0;
            texts.append(tableText(column.value(row), column.decimals));
        }
        if (wanted && column.title != nullptr) {
            columns.append(texts);
        }
    }
    return columns;
}

/// One for each code that was received.
QVector<TextColumn> exceptionColumns(const QVector<StatisticsRow> &rows) {
    QVector<TextColumn> columns;
    for (int code = 0; code < dravo::LineCounts::kExceptionCodes; ++code) {
        TextColumn texts{QStringLiteral("exc. %1").arg(code == 0 ? QStringLiteral("other") : QString::number(code))};
        for (const StatisticsRow &row : rows) {
            texts.append(QString::number(row.counts.exceptions[code]));
        }
        if (rows.last().counts.exceptions[code] != 0) {
            columns.append(texts);
        }
    }
    return columns;
}

int widthOf(const TextColumn &column) {
    int width = 0;
    for (const QString &text : column) {
        width = qMax(width, text.size());
    }
    return width;
}

/// Appends a column to the right of lines.
void put(QStringList *lines, const TextColumn &column) {
    const int width = widthOf(column);
    for (int i = 0; i < lines->size(); ++i) {
        (*lines)[i] += QStringLiteral("  ") + column.at(i).rightJustified(width);
    }
}

QStringList started(const TextColumn &first) {
    QStringList lines;
    for (const QString &text : first) {
        lines.append(text.leftJustified(widthOf(first)));
    }
    return lines;
}

/// Texts side by side, on as many lines as that takes.
QStringList flowing(const QStringList &texts, int width) {
    QStringList lines;
    for (const QString &text : texts) {
        if (lines.isEmpty() || lines.last().size() + 3 + text.size() > width) {
            lines.append(text);
        } else {
            lines.last() += QStringLiteral("   ") + text;
        }
    }
    return lines;
}

QString number(double value) {
    return QString::number(value, 'f', 1);
}

QStringList passTexts(const StatisticsRow &line) {
    QStringList texts{QStringLiteral("pass ms: planned %1").arg(number(double(line.plannedPassUs) / 1000))};
    if (line.passes.passes() > 0) {
        texts += {QStringLiteral("min %1").arg(number(line.passes.shortestMs())),
                  QStringLiteral("median %1").arg(number(line.passes.medianMs())),
                  QStringLiteral("max %1").arg(number(line.passes.longestMs()))};
    }
    return texts;
}

QStringList loadTexts(const StatisticsRow &line) {
    QStringList texts{QStringLiteral("%1 values per second").arg(number(line.whole.valuesPerSecond()))};
    if (line.passes.passes() > 0) {
        texts += QStringLiteral("passes took %1 % of the time").arg(number(line.passPercent()));
    }
    return texts << QStringLiteral("bytes %1 %").arg(number(line.whole.busyPercent()));
}

}  // namespace

QStringList statisticsTable(const QVector<StatisticsRow> &rows, int width) {
    const StatisticsRow &line = rows.last();
    QStringList shown = flowing({QStringLiteral("passes %1").arg(line.passes.passes()),
                                 QStringLiteral("requests per pass %1").arg(line.requestsPerPass)},
                                width) +
                        flowing(passTexts(line), width);
    const TextColumn stations = stationColumn(rows);
    QStringList table = started(stations);
    for (const TextColumn &column : figureColumns(rows) + exceptionColumns(rows)) {
        if (table.first().size() + 2 + widthOf(column) > width) {
            shown += table;
            table = started(stations);
        }
        put(&table, column);
    }
    return shown + table + flowing(loadTexts(line), width);
}

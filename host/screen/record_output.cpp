#include "host/screen/record_output.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "host/screen/cell_text.h"
#include "host/tags/csv_text.h"

namespace {

/// One line of a table or a CSV file. text: a column's field.
template <typename Text>
QByteArray fieldLine(RecordFormat format, const Text &text) {
    QStringList fields;
    for (const Column &column : columns()) {
        if (format == RecordFormat::Table && column.recordWidth < 0) {
            continue;
        }
        const QString field = text(column);
        fields.append(format == RecordFormat::Csv ? csvField(field) : padded(field, column.recordWidth));
    }
    return format == RecordFormat::Csv ? (fields.join(QLatin1Char(',')) + QLatin1Char('\n')).toUtf8()
                                       : (fields.join(QLatin1Char(' ')).trimmed() + QLatin1Char('\n')).toLocal8Bit();
}

}  // namespace

QByteArray recordHeader(RecordFormat format) {
    return format == RecordFormat::Json
               ? QByteArray()
               : fieldLine(format, [](const Column &column) { return QString::fromLatin1(column.key); });
}

QByteArray record(RecordFormat format, const ShownVariable &shown) {
    if (format != RecordFormat::Json) {
        return fieldLine(format, [&](const Column &column) {
            return format == RecordFormat::Table && column.tableText != nullptr ? column.tableText(shown)
                                                                                : columnText(column.value(shown));
        });
    }
    QJsonObject object;
    for (const Column &column : columns()) {
        object.insert(QLatin1String(column.key), column.value(shown));
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

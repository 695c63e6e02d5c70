#include "host/record_output.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <cstdio>

#include "host/csv_text.h"

namespace {

// Column widths of the table; the meaning ends the line.
constexpr int kWidths[] = {6, 24, 28, 5, 10, 8, 11, 8, 24, 5};

QString tableRow(const QStringList &fields) {
    QString row;
    for (int i = 0; i < fields.size(); ++i) {
        const int width = i < int(std::size(kWidths)) ? kWidths[i] : 0;
        row += printable(fields.at(i)).leftJustified(width) + QLatin1Char(' ');
    }
    return row.trimmed() + QLatin1Char('\n');
}

QString csvRow(const QStringList &fields) {
    QStringList row;
    for (const QString &field : fields) {
        row.append(csvField(field));
    }
    return row.join(QLatin1Char(',')) + QLatin1Char('\n');
}

const QStringList &fieldNames() {
    static const QStringList names =
        QStringLiteral("pass,time,label,type,address,station,state,age_ms,values,code,meaning").split(QLatin1Char(','));
    return names;
}

QStringList fieldsOf(qint64 pass, const QString &time, const Variable &variable, const ValueLine &line) {
    const bool failing = line.state.code != 0;
    return {QString::number(pass),
            time,
            variable.label,
            QString::number(variable.elemType),
            variable.addressText,
            QString::number(variable.station),
            conditionName(line.state.condition),
            line.state.ageMs < 0 ? QString() : QString::number(line.state.ageMs),
            line.values.join(QLatin1Char(' ')),
            failing ? QString::number(line.state.code) : QString(),
            line.meaning};
}

QByteArray jsonObject(qint64 pass, const QString &time, const Variable &variable, const ValueLine &line) {
    QJsonArray values;
    for (const QString &value : line.values) {
        bool read = false;
        const double number = value.toUInt(&read);
        values.append(read ? QJsonValue(number) : QJsonValue(QJsonValue::Null));
    }
    const bool failing = line.state.code != 0;
    const QJsonObject object{
        {QStringLiteral("pass"), pass},
        {QStringLiteral("time"), time},
        {QStringLiteral("label"), variable.label},
        {QStringLiteral("type"), variable.elemType},
        {QStringLiteral("address"), variable.addressText},
        {QStringLiteral("station"), variable.station},
        {QStringLiteral("state"), conditionName(line.state.condition)},
        {QStringLiteral("age_ms"), line.state.ageMs < 0 ? QJsonValue(QJsonValue::Null) : QJsonValue(line.state.ageMs)},
        {QStringLiteral("values"), values},
        {QStringLiteral("code"), failing ? QJsonValue(line.state.code) : QJsonValue(QJsonValue::Null)},
        {QStringLiteral("meaning"), failing ? QJsonValue(line.meaning) : QJsonValue(QJsonValue::Null)},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

}  // namespace

bool writeOut(const QByteArray &text) {
    const bool written = std::fwrite(text.constData(), 1, size_t(text.size()), stdout) == size_t(text.size());
    return std::fflush(stdout) == 0 && written;
}

bool RecordOutput::writeHeader() const {
    if (format_ == Format::Json) {
        return true;
    }
    return writeOut(format_ == Format::Csv ? csvRow(fieldNames()).toUtf8() : tableRow(fieldNames()).toLocal8Bit());
}

bool RecordOutput::writePass(const MonitorModel &model) const {
    const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    QByteArray records;
    for (const Variable &variable : model.variables()) {
        records += record(model, variable, time);
    }
    return writeOut(records);
}

QByteArray RecordOutput::record(const MonitorModel &model, const Variable &variable, const QString &time) const {
    const qint64 pass = model.statistics().passes();
    const ValueLine line = model.valueLine(variable);
    if (format_ == Format::Json) {
        return jsonObject(pass, time, variable, line);
    }
    const QStringList fields = fieldsOf(pass, time, variable, line);
    return format_ == Format::Csv ? csvRow(fields).toUtf8() : tableRow(fields).toLocal8Bit();
}

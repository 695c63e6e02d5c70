#include "host/screen/columns.h"

#include <QtCore/QStringList>

namespace {

using Shown = ShownVariable;

qint64 ageMs(const Shown &shown) {
    return shown.state.ageUs < 0 ? -1 : shown.state.ageUs / 1000;
}

QJsonValue knownOrNull(bool known, const QJsonValue &value) {
    return known ? value : QJsonValue(QJsonValue::Null);
}

}  // namespace

const QVector<Column> &columns() {
    // clang-format off
    static const QVector<Column> kColumns{
        {"pass",      6, [](const Shown &s) { return QJsonValue(s.pass); }},
        {"time",     24, [](const Shown &s) { return QJsonValue(s.time); }},
        {"label",    28, [](const Shown &s) { return QJsonValue(s.variable.label); }},
        {"type",      5, [](const Shown &s) { return QJsonValue(s.variable.elemType); }},
        {"address",  10, [](const Shown &s) { return QJsonValue(s.variable.addressText); }},
        {"station",   8, [](const Shown &s) { return QJsonValue(s.variable.station); }},
        {"state",    12, [](const Shown &s) { return QJsonValue(dravo::conditionName(s.state.condition)); }},
        {"age_ms",    8, [](const Shown &s) { return knownOrNull(ageMs(s) >= 0, ageMs(s)); }},
        {"values",   24, [](const Shown &s) { return QJsonValue(s.values); },                              &valuesAndUnit},
        {"code",      5, [](const Shown &s) { return knownOrNull(s.state.code != 0, s.state.code); }},
        {"meaning",   0, [](const Shown &s) { return knownOrNull(!s.meaning.isEmpty(), s.meaning); }},
        {"shown",    -1, [](const Shown &s) { return QJsonValue(s.texts); }},
        {"unit",     -1, [](const Shown &s) { return knownOrNull(!s.unit.isEmpty(), s.unit); }},
    };
    // clang-format on
    return kColumns;
}

QString valuesAndUnit(const ShownVariable &shown) {
    const QString values = columnText(shown.texts);
    return shown.unit.isEmpty() ? values : values + QLatin1Char(' ') + shown.unit;
}

QString columnText(const QJsonValue &value) {
    if (value.isArray()) {
        QStringList texts;
        const QJsonArray items = value.toArray();
        for (const QJsonValue &item : items) {
            texts.append(item.isNull() ? QStringLiteral("-") : columnText(item));
        }
        return texts.join(QLatin1Char(' '));
    }
    return value.isDouble() ? QString::number(qint64(value.toDouble())) : value.toString();
}

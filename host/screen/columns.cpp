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

QString ageText(const Shown &shown) {
    const qint64 ms = ageMs(shown);
    if (ms < 0) {
        return QStringLiteral("-");
    }
    return ms < 10000 ? QStringLiteral("%1 ms").arg(ms) : QStringLiteral("%1 s").arg(ms / 1000);
}

// The screen has code and meaning behind state and values, where they cost no columns of their own. That a station is
// down says what its code says.
QString stateAndCode(const Shown &shown) {
    const QString name = dravo::conditionName(shown.state.condition);
    return shown.state.code != 0 && shown.state.condition != dravo::Down
               ? QStringLiteral("%1 %2").arg(name).arg(shown.state.code)
               : name;
}

QString valuesAndUnit(const Shown &shown) {
    const QString values = columnText(shown.texts);
    return shown.unit.isEmpty() ? values : values + QLatin1Char(' ') + shown.unit;
}

QString valuesAndMeaning(const Shown &shown) {
    const QString values = valuesAndUnit(shown);
    return shown.meaning.isEmpty() ? values : values + QStringLiteral("   ") + shown.meaning;
}

}  // namespace

const QVector<Column> &columns() {
    // clang-format off
    static const QVector<Column> kColumns{
        //           in records                                                                            on the screen
        {"pass",      6, [](const Shown &s) { return QJsonValue(s.pass); },                                nullptr,   0, nullptr},
        {"time",     24, [](const Shown &s) { return QJsonValue(s.time); },                                nullptr,   0, nullptr},
        {"label",    28, [](const Shown &s) { return QJsonValue(s.variable.label); },                      "label",   23, nullptr},
        {"type",      5, [](const Shown &s) { return QJsonValue(s.variable.elemType); },                   "type",     6, nullptr},
        {"address",  10, [](const Shown &s) { return QJsonValue(s.variable.addressText); },                "address",  9, nullptr},
        {"station",   8, [](const Shown &s) { return QJsonValue(s.variable.station); },                    "station",  8, nullptr},
        {"state",    12, [](const Shown &s) { return QJsonValue(dravo::conditionName(s.state.condition)); }, "state", 13, &stateAndCode},
        {"age_ms",    8, [](const Shown &s) { return knownOrNull(ageMs(s) >= 0, ageMs(s)); },              "age",      9, &ageText},
        {"values",   24, [](const Shown &s) { return QJsonValue(s.values); },                              "values",   0, &valuesAndMeaning, &valuesAndUnit},
        {"code",      5, [](const Shown &s) { return knownOrNull(s.state.code != 0, s.state.code); },      nullptr,   0, nullptr},
        {"meaning",   0, [](const Shown &s) { return knownOrNull(!s.meaning.isEmpty(), s.meaning); },      nullptr,   0, nullptr},
        {"shown",    -1, [](const Shown &s) { return QJsonValue(s.texts); },                               nullptr,   0, nullptr},
        {"unit",     -1, [](const Shown &s) { return knownOrNull(!s.unit.isEmpty(), s.unit); },            nullptr,   0, nullptr},
    };
    // clang-format on
    return kColumns;
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

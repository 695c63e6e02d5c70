#include "host/screen/columns.h"

#include <QtCore/QStringList>

namespace {

using Shown = ShownVariable;

bool isFailing(const Shown &shown) {
    return shown.state.code != 0;
}

QJsonValue knownOrNull(bool known, const QJsonValue &value) {
    return known ? value : QJsonValue(QJsonValue::Null);
}

QString ageText(const Shown &shown) {
    const qint64 ageMs = shown.state.ageMs;
    if (ageMs < 0) {
        return QStringLiteral("-");
    }
    return ageMs < 10000 ? QStringLiteral("%1 ms").arg(ageMs) : QStringLiteral("%1 s").arg(ageMs / 1000);
}

// The screen has code and meaning behind state and values, where they cost no columns of their own.
QString stateAndCode(const Shown &shown) {
    const QString name = conditionName(shown.state.condition);
    return isFailing(shown) ? QStringLiteral("%1 %2").arg(name).arg(shown.state.code) : name;
}

QString valuesAndMeaning(const Shown &shown) {
    const QString values = columnText(shown.values);
    return isFailing(shown) ? values + QStringLiteral("   ") + shown.meaning : values;
}

}  // namespace

const QVector<Column> &columns() {
    // clang-format off
    static const QVector<Column> kColumns{
        //           in records                                                                            on the screen
        {"pass",      6, [](const Shown &s) { return QJsonValue(s.pass); },                                nullptr,   0, nullptr},
        {"time",     24, [](const Shown &s) { return QJsonValue(s.time); },                                nullptr,   0, nullptr},
        {"label",    28, [](const Shown &s) { return QJsonValue(s.variable.label); },                      "label",   24, nullptr},
        {"type",      5, [](const Shown &s) { return QJsonValue(s.variable.elemType); },                   "type",     6, nullptr},
        {"address",  10, [](const Shown &s) { return QJsonValue(s.variable.addressText); },                "address",  9, nullptr},
        {"station",   8, [](const Shown &s) { return QJsonValue(s.variable.station); },                    "station",  8, nullptr},
        {"state",    11, [](const Shown &s) { return QJsonValue(conditionName(s.state.condition)); },      "state",   12, &stateAndCode},
        {"age_ms",    8, [](const Shown &s) { return knownOrNull(s.state.ageMs >= 0, s.state.ageMs); },    "age",      9, &ageText},
        {"values",   24, [](const Shown &s) { return QJsonValue(s.values); },                              "values",   0, &valuesAndMeaning},
        {"code",      5, [](const Shown &s) { return knownOrNull(isFailing(s), s.state.code); },           nullptr,   0, nullptr},
        {"meaning",   0, [](const Shown &s) { return knownOrNull(isFailing(s), s.meaning); },              nullptr,   0, nullptr},
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

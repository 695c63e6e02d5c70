#include "host/gateway/command_answer.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "host/tags/value_text.h"

namespace {

constexpr int kMostFaults = 5;

QString outcomeName(CommandOutcome outcome) {
    static const char *const kNames[] = {"done", "refused", "failed", "not sure"};
    return QLatin1String(kNames[int(outcome)]);
}

QJsonValue orNull(const QString &text) {
    return text.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

QJsonValue orNull(int code) {
    return code == 0 ? QJsonValue(QJsonValue::Null) : QJsonValue(code);
}

}  // namespace

QString faultsText(const QStringList &faults) {
    QString text = QStringList(faults.mid(0, kMostFaults)).join(QStringLiteral("; "));
    if (faults.size() > kMostFaults) {
        text += QStringLiteral("; and %1 more").arg(faults.size() - kMostFaults);
    }
    return text;
}

QByteArray answerRecord(const CommandAnswer &answer, const Tag *variable, const QByteArray &values,
                        const QString &time) {
    QJsonArray raw;
    QJsonArray texts;
    for (int i = 0; variable != nullptr && i < variable->count; ++i) {
        raw.append(qint64(valueAt(variable->kind, values, i)));
    }
    if (variable != nullptr) {
        texts = QJsonArray::fromStringList(valueTexts(variable->kind, variable->format, values, variable->count));
    }
    const QJsonObject record{
        {QStringLiteral("record"), QStringLiteral("command")},
        {QStringLiteral("time"), time},
        {QStringLiteral("command"), orNull(answer.command)},
        {QStringLiteral("label"), orNull(answer.label)},
        {QStringLiteral("outcome"), outcomeName(answer.outcome)},
        {QStringLiteral("why"), orNull(answer.why)},
        {QStringLiteral("code"), orNull(answer.code)},
        {QStringLiteral("exception"), orNull(answer.exceptionCode)},
        {QStringLiteral("values"), variable != nullptr ? QJsonValue(raw) : QJsonValue(QJsonValue::Null)},
        {QStringLiteral("shown"), variable != nullptr ? QJsonValue(texts) : QJsonValue(QJsonValue::Null)},
        {QStringLiteral("unit"), variable != nullptr ? orNull(variable->format.unit) : QJsonValue(QJsonValue::Null)},
    };
    return "{\"id\":" + answer.id + ',' + QJsonDocument(record).toJson(QJsonDocument::Compact).mid(1) + '\n';
}

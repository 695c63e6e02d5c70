// The commands of the gateway.
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "fuzz/tool_texts.h"
#include "host/gateway/command_answer.h"
#include "host/gateway/command_text.h"

namespace {

bool isObject(const QByteArray &text, QJsonObject *object) {
    QJsonParseError error{};
    *object = QJsonDocument::fromJson(text, &error).object();
    return error.error == QJsonParseError::NoError;
}

}  // namespace

void readAsGatewayCommand(const QByteArray &text) {
    const CommandText command = readCommand(text);
    expectWords(command.faults);
    CommandAnswer answer;
    answer.id = command.id;
    answer.command = command.name;
    answer.label = command.label;
    answer.why = faultsText(command.faults);
    QJsonObject record;
    expect(isObject(answerRecord(answer, nullptr, QByteArray(), QString()), &record), "an answer is no JSON object");
    if (!command.faults.isEmpty()) {
        expect(!answer.why.isEmpty(), "a command is refused without a word");
        return;
    }
    QJsonObject asked;
    expect(isObject(text, &asked), "a command is no JSON object");
    const QJsonValue id = asked.contains(QStringLiteral("id")) ? asked.value(QStringLiteral("id")) : QJsonValue();
    expect(id == record.value(QStringLiteral("id")), "an answer has another id than its command");
    const QJsonArray values = asked.value(command.name).toObject().value(QStringLiteral("values")).toArray();
    expect(!command.isWrite || values.size() == command.values.size(), "a value is lost, or comes from nowhere");
    for (int i = 0; i < values.size(); ++i) {
        expect(!values.at(i).isDouble() || values.at(i).toDouble() == command.values.at(i).toDouble(),
               "a number is another one");
    }
    expect(command.name == QLatin1String(command.isWrite ? "write" : "read"), "a command is none");
    QJsonObject operation{{QStringLiteral("label"), command.label}};
    if (command.isWrite) {
        operation.insert(QStringLiteral("values"), QJsonArray::fromStringList(command.values));
    }
    QByteArray again = QJsonDocument(QJsonObject{{command.name, operation}}).toJson(QJsonDocument::Compact);
    again.insert(1, "\"id\":" + command.id + ',');
    const CommandText reread = readCommand(again);
    expect(reread.faults.isEmpty() && reread.id == command.id && reread.isWrite == command.isWrite &&
               reread.label == command.label && reread.values == command.values,
           "a command reads otherwise as it is written back");
    expect(record.value(QStringLiteral("label")).toString() == command.label, "an answer names another variable");
}

#include "host/gateway/command_text.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <algorithm>

#include "host/gateway/json_text.h"
#include "host/tags/quoted_text.h"

namespace {

constexpr int kExactDigits = 15;  // that a parsed number keeps

/// A number as a person types it. text: as it stands in JSON.
QString numberText(const QByteArray &text) {
    const int digits = int(std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }));
    const double number = text.toDouble();
    if (number == 0 && text.startsWith('-')) {
        return QStringLiteral("-0");  // a value of its own where floats are written
    }
    return digits > kExactDigits ? QString::fromLatin1(text)
                                 : QString::number(number, 'f', QLocale::FloatingPointShortest);
}

/// Whether numbers and strings are as JSON has them; Qt's parser takes 1. and "\x" as well.
bool hasStrictTokens(const QByteArray &line) {
    static const QRegularExpression kTokens(
        QStringLiteral("\\A(?:[][{},:\\s]|true|false|null|-?(?:0|[1-9][0-9]*)(?:\\.[0-9]+)?(?:[eE][-+]?[0-9]+)?|"
                       "\"(?:[^\"\\\\\\x00-\\x1f]|\\\\(?:[\"\\\\/bfnrt]|u[0-9a-fA-F]{4}))*+\")*+\\z"));
    return kTokens.match(QString::fromUtf8(line)).hasMatch();
}

/// What a person would type for a value. Null: nothing.
QString typedText(const QJsonValue &value, const QByteArray &text) {
    return value.isString()   ? value.toString()
           : value.isDouble() ? numberText(text)
           : value.isBool()   ? QLatin1String(value.toBool() ? "on" : "off")
                              : QString();
}

class CommandReader {
public:
    CommandText read(const QByteArray &line) {
        if (hasDoubtfulNames(line)) {  // Qt's parser would lose the memory of the first value
            fault(QStringLiteral("a name is given twice, or escaped"));
            return command_;
        }
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(line, &error);
        if (error.error != QJsonParseError::NoError) {
            fault(QStringLiteral("no JSON, at byte %1: %2").arg(error.offset).arg(error.errorString()));
        } else if (!hasStrictTokens(line)) {
            fault(QStringLiteral("no JSON: a number or a text is not as JSON has it"));
        } else if (!document.isObject()) {
            fault(QStringLiteral("no JSON object"));
        } else {
            readObject(document.object(), line);
        }
        return command_;
    }

private:
    void readObject(const QJsonObject &object, const QByteArray &text) {
        const QByteArray id = jsonMember(text, "id");
        command_.id = id.isEmpty() ? command_.id : id;
        refuseOthers(text, {QStringLiteral("write"), QStringLiteral("read"), QStringLiteral("id")});
        const bool writes = object.contains(QStringLiteral("write"));
        if (writes == object.contains(QStringLiteral("read"))) {
            fault(QLatin1String(writes ? "give one of write and read, not both" : "give write or read"));
            return;
        }
        command_.isWrite = writes;
        command_.name = QLatin1String(writes ? "write" : "read");
        if (object.value(command_.name).isObject()) {
            readOperation(object.value(command_.name).toObject(), jsonMember(text, command_.name.toLatin1()));
        } else {
            fault(command_.name + QStringLiteral(" is no object"));
        }
    }

    void readOperation(const QJsonObject &operation, const QByteArray &text) {
        const QString label = QStringLiteral("label");
        const QString values = QStringLiteral("values");
        refuseOthers(text, command_.isWrite ? QStringList{label, values} : QStringList{label});
        command_.label = operation.value(label).toString();
        if (!operation.value(label).isString()) {
            fault(QStringLiteral("the label is no text"));
        }
        if (command_.isWrite && !operation.value(values).isArray()) {
            fault(QStringLiteral("the values are no array"));
        }
        readValues(operation.value(values).toArray(), jsonItems(jsonMember(text, "values")));
    }

    void readValues(const QJsonArray &values, const QByteArrayList &texts) {
        for (int i = 0; i < values.size(); ++i) {
            command_.values.append(typedText(values.at(i), texts.value(i)));
            if (command_.values.last().isNull()) {
                fault(QStringLiteral("value %1 is no number or text").arg(i + 1));
            }
        }
    }

    // Of the names as they stand there, so that what is read as text is what was parsed.
    void refuseOthers(const QByteArray &object, const QStringList &known) {
        const QByteArrayList items = jsonItems(object);
        for (int i = 0; i + 1 < items.size(); i += 2) {
            const QString name = QString::fromUtf8(items.at(i)).mid(1).chopped(1);
            if (!known.contains(name)) {
                fault(QStringLiteral("%1 is not known here: give %2")
                          .arg(quoted(name), known.join(QStringLiteral(", "))));
            }
        }
    }

    void fault(const QString &reason) { command_.faults.append(reason); }

    CommandText command_;
};

}  // namespace

CommandText readCommand(const QByteArray &line) {
    return CommandReader().read(line);
}

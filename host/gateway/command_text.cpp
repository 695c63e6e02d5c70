#include "host/gateway/command_text.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>

#include "host/tags/quoted_text.h"

namespace {

/// The text that a person would type. Null: there is none.
QString typedText(const QJsonValue &value) {
    switch (value.type()) {
        case QJsonValue::String:
            return value.toString();
        case QJsonValue::Bool:
            return QLatin1String(value.toBool() ? "on" : "off");
        case QJsonValue::Double: {
            const QVariant number = value.toVariant();  // whole numbers of 64 bits come as they are
            return number.type() == QVariant::Double
                       ? QString::number(number.toDouble(), 'f', QLocale::FloatingPointShortest)
                       : number.toString();
        }
        default:
            return QString();
    }
}

class CommandReader {
public:
    CommandText read(const QByteArray &line) {
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(line, &error);
        if (error.error != QJsonParseError::NoError) {
            fault(QStringLiteral("no JSON, at byte %1: %2").arg(error.offset).arg(error.errorString()));
        } else if (!document.isObject()) {
            fault(QStringLiteral("no JSON object"));
        } else {
            readObject(document.object());
        }
        return command_;
    }

private:
    void readObject(const QJsonObject &object) {
        command_.id = object.contains(QStringLiteral("id")) ? object.value(QStringLiteral("id")) : QJsonValue();
        refuseOthers(object, {QStringLiteral("write"), QStringLiteral("read"), QStringLiteral("id")});
        const bool writes = object.contains(QStringLiteral("write"));
        if (writes == object.contains(QStringLiteral("read"))) {
            fault(QLatin1String(writes ? "give one of write and read, not both" : "give write or read"));
            return;
        }
        command_.isWrite = writes;
        command_.name = QLatin1String(writes ? "write" : "read");
        if (object.value(command_.name).isObject()) {
            readOperation(object.value(command_.name).toObject());
        } else {
            fault(command_.name + QStringLiteral(" is no object"));
        }
    }

    void readOperation(const QJsonObject &operation) {
        const QString label = QStringLiteral("label");
        const QString values = QStringLiteral("values");
        refuseOthers(operation, command_.isWrite ? QStringList{label, values} : QStringList{label});
        command_.label = operation.value(label).toString();
        if (!operation.value(label).isString()) {
            fault(QStringLiteral("the label is no text"));
        }
        if (command_.isWrite && !operation.value(values).isArray()) {
            fault(QStringLiteral("the values are no array"));
        }
        const QJsonArray items = operation.value(values).toArray();
        for (const QJsonValue &item : items) {
            command_.values.append(typedText(item));
            if (command_.values.last().isNull()) {
                fault(QStringLiteral("value %1 is no number or text").arg(command_.values.size()));
            }
        }
    }

    void refuseOthers(const QJsonObject &object, const QStringList &known) {
        for (const QString &name : object.keys()) {
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

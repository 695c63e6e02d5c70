#include "host/commands/option_file.h"

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QPair>

namespace {
constexpr qint64 kLargestFile = 1024LL * 1024;
}

OptionFile parseOptionFile(const QByteArray &text) {
    OptionFile file;
    QString command;
    QHash<QPair<QString, QString>, int> firstLine;  // of an option, by command and name
    int number = 0;
    for (const QString &raw : QString::fromUtf8(text).split(QLatin1Char('\n'))) {
        const QString line = raw.trimmed();
        ++number;
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';'))) {
            continue;
        }
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
            command = line.mid(1, line.size() - 2).trimmed();
            continue;
        }
        const int equals = line.indexOf(QLatin1Char('='));
        FileOption option{number, command, line.left(equals).trimmed(), line.mid(equals + 1).trimmed()};
        if (equals < 0) {
            file.faults.append(QStringLiteral("line %1: '%2' is not NAME = VALUE").arg(number).arg(line));
            continue;
        }
        if (option.value.size() > 1 && option.value.startsWith(QLatin1Char('"')) &&
            option.value.endsWith(QLatin1Char('"'))) {
            option.value = option.value.mid(1, option.value.size() - 2);
        }
        const QPair<QString, QString> key(option.command, option.name);
        if (firstLine.contains(key)) {
            file.faults.append(QStringLiteral("line %1: '%2' is given again, first on line %3")
                                   .arg(number)
                                   .arg(option.name)
                                   .arg(firstLine.value(key)));
            continue;
        }
        firstLine.insert(key, number);
        file.options.append(option);
    }
    return file;
}

OptionFile loadOptionFile(const QString &fileName) {
    OptionFile refused;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        refused.faults.append(QStringLiteral("cannot open it: %1").arg(file.errorString()));
        return refused;
    }
    const QByteArray text = file.read(kLargestFile + 1);
    if (file.error() != QFileDevice::NoError) {
        refused.faults.append(QStringLiteral("cannot read it: %1").arg(file.errorString()));
    } else if (text.size() > kLargestFile) {
        refused.faults.append(QStringLiteral("it is larger than 1 MiB"));
    }
    return refused.faults.isEmpty() ? parseOptionFile(text) : refused;
}

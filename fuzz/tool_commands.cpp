// Command lines, option files, and the commands of the gateway.
#include <sys/mman.h>
#include <unistd.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "fuzz/tool_texts.h"
#include "host/commands/command_tree.h"
#include "host/commands/line_options.h"
#include "host/commands/open_line.h"
#include "host/commands/option_file.h"
#include "host/gateway/command_answer.h"
#include "host/gateway/command_text.h"
#include "host/simulation/option_check.h"

namespace {

/// A file that only this process sees.
class MemoryFile {
public:
    explicit MemoryFile(const QByteArray &text) : descriptor_(memfd_create("options", MFD_CLOEXEC)) {
        expect(descriptor_ >= 0 && write(descriptor_, text.constData(), size_t(text.size())) == text.size(),
               "there is no file in memory");
    }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    QString name() const { return QStringLiteral("/proc/self/fd/%1").arg(descriptor_); }

private:
    int descriptor_;
};

bool isObject(const QByteArray &text, QJsonObject *object) {
    QJsonParseError error{};
    *object = QJsonDocument::fromJson(text, &error).object();
    return error.error == QJsonParseError::NoError;
}

/// What a settled command line leads to, as far as that needs no device.
void expectUsable(const CommandLine &line) {
    const dravo::LineSettings settings = lineSettings(line.settings);
    expect(settings.timeoutUs > 0 && settings.lifetimeUs >= settings.timeoutUs && settings.frameLimit >= 1,
           "settings are taken that no line has");
    if (QLatin1String(line.command->name) == QLatin1String("simulate")) {
        expect(!simulation::checkOptions(simulationFor(line.settings)), "a line is taken that does not start");
    }
}

}  // namespace

void readAsOptionFile(const QByteArray &text) {
    const OptionFile file = parseOptionFile(text);
    expectWords(file.faults);
    QString again;
    for (const FileOption &option : file.options) {
        again += QStringLiteral("[%1]\n%2 = \"%3\"\n").arg(option.command, option.name, option.value);
    }
    const OptionFile reread = parseOptionFile(again.toUtf8());
    expect(reread.faults.isEmpty() && reread.options.size() == file.options.size(),
           "options are refused as they are written back");
    for (int i = 0; i < file.options.size(); ++i) {
        const FileOption &one = file.options.at(i);
        const FileOption &other = reread.options.at(i);
        expect(one.command == other.command && one.name == other.name && one.value == other.value,
               "an option reads otherwise as it is written back");
    }
}

void readAsCommandLine(const QByteArray &text) {
    const int end = text.indexOf("\n\n");
    QStringList arguments{QStringLiteral("dravo-host")};
    for (const QString &argument : QString::fromUtf8(text.left(end)).split(QLatin1Char('\n'))) {
        if (!argument.startsWith(QLatin1String("--config"))) {  // no other file than this one
            arguments.append(argument);
        }
    }
    std::optional<MemoryFile> file;
    if (end >= 0) {
        file.emplace(text.mid(end + 2));
        arguments << QStringLiteral("--config") << file->name();
    }
    const CommandLine line = parseCommandLine(arguments);
    expectWords(line.faults);
    const bool runs = line.command != nullptr && line.faults.isEmpty();
    expect(runs || !line.faults.isEmpty() || !line.text.isEmpty(), "a command line leads to nothing");
    if (runs && line.text.isEmpty()) {
        expectUsable(line);
    }
}

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

// Fuzz target options: the command line and the option file of dravo-host. A text that begins with "o" is an option
// file.
#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/tool_texts.h"
#include "host/commands/command_tree.h"
#include "host/commands/open_line.h"
#include "host/commands/option_file.h"
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

/// What a settled command line leads to, as far as that needs no device.
void expectUsable(const CommandLine &line) {
    const dravo::LineSettings settings = lineSettings(line.settings);
    expect(settings.timeoutUs > 0 && settings.lifetimeUs >= settings.timeoutUs && settings.frameLimit >= 1,
           "settings are taken that no line has");
    if (QLatin1String(line.command->name) == QLatin1String("simulate")) {
        expect(!simulation::checkOptions(simulationFor(line.settings)), "a line is taken that does not start");
    }
}

/// What is taken reads the same when it is written back.
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

/// Lines: the arguments, an empty one, and those of an option file.
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size > 0) {
        const QByteArray text(reinterpret_cast<const char *>(data) + 1, int(size) - 1);
        data[0] == 'o' ? readAsOptionFile(text) : readAsCommandLine(text);
    }
    return 0;
}

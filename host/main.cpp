// dravo-host: a host of the driver library for the command line.
#include <QtCore/QCoreApplication>
#include <clocale>
#include <cstdio>

#include "host/commands.h"
#include "host/open_line.h"
#include "host/record_output.h"
#include "host/stop_signal.h"

namespace {

int usage(const QStringList &arguments, const QStringList &faults) {
    for (const QString &fault : faults) {
        fail(kExitUsage, fault);
    }
    const QString command = arguments.value(1);
    const bool known = command == QLatin1String("monitor") || command == QLatin1String("read") ||
                       command == QLatin1String("write") || command == QLatin1String("simulate");
    std::fprintf(stderr, "Try 'dravo-host %s--help'.\n", known ? qUtf8Printable(command + QLatin1Char(' ')) : "");
    return kExitUsage;
}

int run(const Options &options) {
    switch (options.command) {
        case Command::Monitor:
            return runMonitor(options);
        case Command::Read:
            return runRead(options);
        case Command::Write:
            return runWrite(options);
        case Command::Simulate:
            return runSimulate(options);
    }
    return kExitUsage;
}

}  // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("dravo-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral(DRAVO_VERSION));
    const QStringList arguments = QCoreApplication::arguments();
    const ParsedOptions parsed = parseOptions(arguments);
    if (!parsed.faults.isEmpty()) {
        return usage(arguments, parsed.faults);
    }
    if (!parsed.text.isEmpty()) {
        return writeOut(parsed.text.toLocal8Bit()) ? kExitDone : kExitFailed;
    }
    watchStopSignals();
    return run(parsed.options);
}

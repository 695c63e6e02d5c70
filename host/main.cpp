// dravo-host: a host of the driver library for the command line.
#include <QtCore/QCoreApplication>
#include <cstdio>

#include "host/commands/command_tree.h"
#include "host/commands/exit_status.h"
#include "host/pump/stop_signal.h"

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("dravo-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral(DRAVO_VERSION));
    const CommandLine line = parseCommandLine(QCoreApplication::arguments());
    if (!line.faults.isEmpty()) {
        refuse(line.faults);
        std::fprintf(stderr, "Try 'dravo-host %s%s--help'.\n", line.command != nullptr ? line.command->name : "",
                     line.command != nullptr ? " " : "");
        return kExitUsage;
    }
    if (!line.text.isEmpty()) {
        return print(line.text);
    }
    ignoreFileSignals();
    return line.command->run(line.settings);
}

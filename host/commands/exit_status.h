// How the program ends and what it says then. Main thread.
#ifndef DRAVO_HOST_COMMANDS_EXIT_STATUS_H
#define DRAVO_HOST_COMMANDS_EXIT_STATUS_H

#include <QtCore/QStringList>

#include "host/failure.h"

enum ExitStatus { kExitDone = 0, kExitFailed = 1, kExitUsage = 2, kExitPort = 3 };

struct ExitMeaning {
    ExitStatus status;
    const char *text;
};
constexpr ExitMeaning kExitMeanings[] = {
    {kExitDone, "done"},
    {kExitFailed, "a request failed or was refused or the device was lost"},
    {kExitUsage, "usage, or a tag list, command or statistics file"},
    {kExitPort, "the port or the trace file could not be opened"},
};

/// Text on standard error, after the program's name.
void tell(const QString &text);
/// What went wrong, in the same way. @return status.
int fail(ExitStatus status, const Failure &failure);
/// Every fault on a line of its own. @return kExitUsage.
int refuse(const QStringList &faults);

/// Writes text to standard output. @return kExitDone, or kExitFailed when it could not be written: said aloud unless
/// the reader has gone.
int print(const QString &text);
int printBytes(const QByteArray &bytes);

#endif  // DRAVO_HOST_COMMANDS_EXIT_STATUS_H

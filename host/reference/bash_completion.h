// The completion of bash: commands, options, choices and file names. Main thread.
#ifndef DRAVO_HOST_REFERENCE_BASH_COMPLETION_H
#define DRAVO_HOST_REFERENCE_BASH_COMPLETION_H

#include <QtCore/QByteArray>

#include "host/commands/command_tree.h"

/// A script for bash to source, made of the same texts as the help; it needs nothing else.
QByteArray bashCompletion(const CommandTree &tree);

#endif  // DRAVO_HOST_REFERENCE_BASH_COMPLETION_H

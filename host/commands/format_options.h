// --as, --scale and --offset: how read and write show values and take them. Main thread.
#ifndef DRAVO_HOST_COMMANDS_FORMAT_OPTIONS_H
#define DRAVO_HOST_COMMANDS_FORMAT_OPTIONS_H

#include "host/commands/option_set.h"
#include "host/commands/options.h"

void addFormatOptions(OptionSet *options, Options *settings);
/// Settles the format for the variable's type. @return the faults that options have together or with the type.
QStringList settleFormat(Options *settings);

#endif  // DRAVO_HOST_COMMANDS_FORMAT_OPTIONS_H

// The options of a trace, for every command that opens a line. Main thread.
#ifndef DRAVO_HOST_COMMANDS_TRACE_OPTIONS_H
#define DRAVO_HOST_COMMANDS_TRACE_OPTIONS_H

#include "host/commands/option_set.h"
#include "host/commands/options.h"

void addTraceOptions(OptionSet *options, Options *settings);

#endif  // DRAVO_HOST_COMMANDS_TRACE_OPTIONS_H

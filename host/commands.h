// The commands. Each runs on the main thread until it is done or stopped by a signal, and returns the exit status.
#ifndef DRAVO_HOST_COMMANDS_H
#define DRAVO_HOST_COMMANDS_H

#include "host/options.h"

int runMonitor(const Options &options);
int runRead(const Options &options);
int runWrite(const Options &options);
int runSimulate(const Options &options);

#endif  // DRAVO_HOST_COMMANDS_H

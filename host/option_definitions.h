// The options of each command and their help. Main thread.
#ifndef DRAVO_HOST_OPTION_DEFINITIONS_H
#define DRAVO_HOST_OPTION_DEFINITIONS_H

#include "host/command_line.h"
#include "host/options.h"

/// What the program prints for --help without a command.
const char *generalHelp();

/// How the command is written.
QString usageLine(Command command);

/// Adds the options, arguments and description of a command.
void addOptions(CommandLine &line, Command command);

#endif  // DRAVO_HOST_OPTION_DEFINITIONS_H

// The commands of the program, one row each. A command runs on the main thread until it is done or stopped by a signal.
#ifndef DRAVO_HOST_COMMANDS_COMMAND_H
#define DRAVO_HOST_COMMANDS_COMMAND_H

#include <vector>

#include "host/commands/option_set.h"
#include "host/commands/options.h"

struct Command {
    const char *name;
    const char *summary;                                        // in the list of commands
    const char *description;                                    // at the head of its help
    void (*addOptions)(OptionSet *options, Options *settings);  // its options and arguments, which go into settings
    int (*run)(const Options &settings);                        // @return the exit status
};

extern const Command kMonitorCommand;
extern const Command kReadCommand;
extern const Command kWriteCommand;
extern const Command kPlanCommand;
extern const Command kScanCommand;
extern const Command kPortsCommand;
extern const Command kSimulateCommand;

/// In the order in which help names them.
const std::vector<const Command *> &commands();

#endif  // DRAVO_HOST_COMMANDS_COMMAND_H

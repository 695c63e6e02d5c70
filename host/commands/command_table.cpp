#include "host/commands/command.h"

const std::vector<const Command *> &commands() {
    static const std::vector<const Command *> kCommands{&kMonitorCommand, &kReadCommand, &kWriteCommand,
                                                        &kPlanCommand,    &kScanCommand, &kPortsCommand,
                                                        &kSimulateCommand};
    return kCommands;
}

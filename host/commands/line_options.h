// The options of the line that commands share: port, driver, simulated line. Main thread.
#ifndef DRAVO_HOST_COMMANDS_LINE_OPTIONS_H
#define DRAVO_HOST_COMMANDS_LINE_OPTIONS_H

#include "host/commands/option_set.h"
#include "host/commands/options.h"

constexpr Bounds kBaud{50, 4000000};
constexpr Bounds kTimeoutMs{1, 60000};
constexpr Bounds kStation{1, 247};
constexpr Bounds kSeconds{1, 10 * 365 * 24 * 3600};

/// Port, its settings, and how requests go over it.
void addLineOptions(OptionSet *options, Options *settings);
/// How variables share cyclic reads.
void addMergeOption(OptionSet *options, Options *settings);
/// How it is watched for long, merging among it.
void addMonitorLineOptions(OptionSet *options, Options *settings);
/// Remote frames, and the faults of the simulated line.
void addSimulationOptions(OptionSet *options, Options *settings);
/// The faults alone.
void addFaultOption(OptionSet *options, Options *settings);

#endif  // DRAVO_HOST_COMMANDS_LINE_OPTIONS_H

// The options of the line that commands share: port, driver, simulated line. Main thread.
#ifndef DRAVO_HOST_COMMANDS_LINE_OPTIONS_H
#define DRAVO_HOST_COMMANDS_LINE_OPTIONS_H

#include <set>

#include "host/commands/option_set.h"
#include "host/commands/options.h"

constexpr Bounds kBaud{50, 4000000};
constexpr Bounds kTimeoutMs{1, 60000};
constexpr Bounds kRetries{0, 100};
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
/// How long things take on the simulated line.
void addPacingOptions(OptionSet *options, Options *settings);
/// Bits per second, parity, stop bits.
void addCharacterOptions(OptionSet *options, PortSettings *port);
void addStopBitsOption(OptionSet *options, PortSettings *port);
/// What a reply is taken for that comes after this timeout.
void addLateReplyOptions(OptionSet *options, Options *settings, const int *timeoutMs);
/// For a command that runs on a simulated line of its own unless a port is given: that line is faster by default, since
/// it has to be lively rather than like a certain machine.
void addOwnLineSpeed(OptionSet *options, PortSettings *port);
/// What the options of the simulated line say of stations that are not these.
QStringList strangerFaults(const Options &settings, const std::set<int> &stations);
/// The faults alone.
void addFaultOption(OptionSet *options, Options *settings);

#endif  // DRAVO_HOST_COMMANDS_LINE_OPTIONS_H

// The line a command works on: the given port, or a simulated line of its own. Main thread.
#ifndef DRAVO_HOST_COMMANDS_OPEN_LINE_H
#define DRAVO_HOST_COMMANDS_OPEN_LINE_H

#include <memory>
#include <set>

#include "host/commands/options.h"

struct OpenLine {
    std::unique_ptr<SimulatedLine> simulation;  // null on a port; goes after the link
    SerialLink link;

    /// Opens the port, or starts controllers with these stations and opens their device.
    Failure open(const Options &options, const std::set<int> &stations);
};

/// The options of the simulated line, complete for a host with this timeout.
SimulatedLineOptions simulationFor(const Options &options);
/// Starts it.
Failure startSimulation(const SimulatedLineOptions &options, std::unique_ptr<SimulatedLine> *line);

#endif  // DRAVO_HOST_COMMANDS_OPEN_LINE_H

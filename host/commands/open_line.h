// The line a command works on: the given port, or a simulated line of its own. Main thread.
#ifndef DRAVO_HOST_COMMANDS_OPEN_LINE_H
#define DRAVO_HOST_COMMANDS_OPEN_LINE_H

#include <memory>
#include <set>

#include "host/commands/exit_status.h"
#include "host/commands/options.h"
#include "host/trace/trace.h"

class OpenLine {
public:
    /// Begins the trace; then opens the port, or starts controllers with these stations and opens their device.
    Failure open(const Options &options, const std::set<int> &stations);
    /// Opens the same device again after it was lost.
    Failure reopen();

    SerialPort &port() { return port_; }
    /// What the pump shows its bytes.
    Trace &trace() { return trace_; }

private:
    std::unique_ptr<SimulatedLine> simulation_;  // null on a port; goes after the port
    PortSettings settings_;
    SerialPort port_;
    Trace trace_{&tell};
};

/// The stations that variables are of.
std::set<int> stationsOf(const QVector<dravo::Variable> &variables);
/// How the engine is to run the line.
dravo::LineSettings lineSettings(const Options &options);
/// The options of the simulated line, complete for a host with this timeout.
SimulatedLineOptions simulationFor(const Options &options);
/// Starts it.
Failure startSimulation(const SimulatedLineOptions &options, std::unique_ptr<SimulatedLine> *line);

#endif  // DRAVO_HOST_COMMANDS_OPEN_LINE_H

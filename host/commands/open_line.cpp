#include "host/commands/open_line.h"

#include <chrono>

SimulatedLineOptions simulationFor(const Options &options) {
    SimulatedLineOptions simulation = options.simulation;
    simulation.baud = options.line.baud;
    simulation.remoteNode = options.driver.remoteNode.value_or(-1);
    // Late, but within the time for which the host still expects such a reply.
    simulation.lateBy = std::chrono::milliseconds(options.line.timeoutMs + options.line.timeoutMs / 4 + 1);
    return simulation;
}

Failure startSimulation(const SimulatedLineOptions &options, std::unique_ptr<SimulatedLine> *line) {
    const simulation::Failure failure = SimulatedLine::start(options, line);
    return failure
               ? Failure(QStringLiteral("the simulated line does not start: ") + QString::fromStdString(failure.text()))
               : Failure();
}

Failure OpenLine::open(const Options &options, const std::set<int> &stations) {
    LineSettings settings = options.line;
    if (settings.device.isEmpty()) {
        SimulatedLineOptions simulated = simulationFor(options);
        simulated.stations.assign(stations.begin(), stations.end());
        if (Failure failure = startSimulation(simulated, &simulation)) {
            return failure;
        }
        settings.device = QString::fromStdString(simulation->device());
    }
    return link.open(settings);
}

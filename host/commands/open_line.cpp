#include "host/commands/open_line.h"

#include <chrono>

#include "host/pump/stop_signal.h"

namespace {
constexpr qint64 kMs = 1000;
constexpr int kStartAndDataBits = 9;
constexpr int kTimeoutsInLifetime = 3;

simulation::Parity parityOf(const PortSettings &port) {
    return port.parity == QSerialPort::EvenParity  ? simulation::Parity::Even
           : port.parity == QSerialPort::OddParity ? simulation::Parity::Odd
                                                   : simulation::Parity::None;
}

}  // namespace

std::set<int> stationsOf(const QVector<dravo::Variable> &variables) {
    std::set<int> stations;
    for (const dravo::Variable &variable : variables) {
        stations.insert(variable.station);
    }
    return stations;
}

dravo::LineSettings lineSettings(const Options &options) {
    const PortSettings &port = options.port;
    dravo::LineSettings line = options.line;
    line.baud = port.baud;
    line.bitsPerCharacter = kStartAndDataBits + (port.parity == QSerialPort::NoParity ? 0 : 1) +
                            (port.stopBits == QSerialPort::TwoStop ? 2 : 1);
    line.timeoutUs = options.timeoutMs * kMs;
    line.lifetimeUs = options.lifetimeMs.value_or(kTimeoutsInLifetime * options.timeoutMs) * kMs;
    // On a line of its own nobody was asked anything before.
    line.startSilenceUs = options.startSilenceMs.value_or(port.device.isEmpty() ? 0 : -1) * kMs;
    line.remoteNode = options.remoteNode.value_or(-1);
    line.passPeriodUs = options.periodMs.value_or(0) * kMs;
    return line;
}

SimulatedLineOptions simulationFor(const Options &options) {
    SimulatedLineOptions simulation = options.simulation;
    const PortSettings &port = options.port;
    simulation.baud = port.baud;
    simulation.parity = parityOf(port);
    simulation.remoteNode = options.remoteNode.value_or(-1);
    simulation.paced = !options.unpaced;
    // Later than the timeout, but within the lifetime that controllers are taken to keep.
    const dravo::LineSettings line = lineSettings(options);
    simulation.bitsPerCharacter = line.bitsPerCharacter;
    simulation.lateBy = std::chrono::milliseconds((line.timeoutUs + (line.lifetimeUs - line.timeoutUs) / 8) / kMs + 1);
    return simulation;
}

Failure startSimulation(const SimulatedLineOptions &options, std::unique_ptr<SimulatedLine> *line) {
    const simulation::Failure failure = SimulatedLine::start(options, line);
    return failure
               ? Failure(QStringLiteral("the simulated line does not start: ") + QString::fromStdString(failure.text()))
               : Failure();
}

Failure OpenLine::open(const Options &options, const std::set<int> &stations) {
    watchStopSignals();
    if (Failure failure = trace_.open(options.trace, options.remoteNode.has_value())) {
        return failure;
    }
    settings_ = options.port;
    if (settings_.device.isEmpty()) {
        SimulatedLineOptions simulated = simulationFor(options);
        simulated.stations.assign(stations.begin(), stations.end());
        if (Failure failure = startSimulation(simulated, &simulation_)) {
            return failure;
        }
        settings_.device = QString::fromStdString(simulation_->device());
    }
    return reopen();
}

Failure OpenLine::reopen() {
    trace_.lineClosed();
    return port_.open(settings_);
}

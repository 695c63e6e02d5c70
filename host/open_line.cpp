#include "host/open_line.h"

#include <chrono>
#include <cstdio>

SimulatedLineOptions simulationFor(const Options &options) {
    SimulatedLineOptions simulation = options.simulation;
    simulation.baud = options.line.baud;
    // Late, but within the time for which the host still expects such a reply.
    simulation.lateBy = std::chrono::milliseconds(options.line.timeoutMs + options.line.timeoutMs / 4 + 1);
    return simulation;
}

QString OpenLine::open(const Options &options, const std::set<int> &stations) {
    LineSettings settings = options.line;
    if (settings.device.isEmpty()) {
        SimulatedLineOptions simulated = simulationFor(options);
        simulated.stations.assign(stations.begin(), stations.end());
        std::string error;
        simulation = SimulatedLine::start(simulated, &error);
        if (!simulation) {
            return QStringLiteral("the simulated line does not start: %1").arg(QString::fromStdString(error));
        }
        settings.device = QString::fromStdString(simulation->device());
    }
    if (!link.open(settings)) {
        return QStringLiteral("cannot open %1: %2").arg(settings.device, link.openError());
    }
    return QString();
}

int fail(ExitStatus status, const QString &message) {
    std::fprintf(stderr, "dravo-host: %s\n", message.toLocal8Bit().constData());
    return status;
}

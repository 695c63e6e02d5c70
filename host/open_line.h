// The line a command works on: the given port, or a simulated line of its own. Main thread.
#ifndef DRAVO_HOST_OPEN_LINE_H
#define DRAVO_HOST_OPEN_LINE_H

#include <QtCore/QString>
#include <memory>
#include <set>

#include "host/options.h"

struct OpenLine {
    std::unique_ptr<SimulatedLine> simulation;  // null on a port; goes after the link
    SerialLink link;

    /// Opens the port, or starts controllers with these stations and opens their device.
    /// @return empty, or why not.
    QString open(const Options &options, const std::set<int> &stations);
};

/// The options of the simulated line, complete for a host with this timeout.
SimulatedLineOptions simulationFor(const Options &options);

/// What went wrong, on standard error. @return status.
int fail(ExitStatus status, const QString &message);

#endif  // DRAVO_HOST_OPEN_LINE_H

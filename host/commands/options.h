// What the command line and the option file settle. A command reads the fields that its options fill.
#ifndef DRAVO_HOST_COMMANDS_OPTIONS_H
#define DRAVO_HOST_COMMANDS_OPTIONS_H

#include <optional>

#include "host/commands/driver_session.h"
#include "host/pump/serial_link.h"
#include "host/screen/record_output.h"
#include "host/simulation/simulated_line.h"

struct Options {
    LineSettings line;  // device empty: the embedded default, simulated controllers
    DriverSettings driver;
    SimulatedLineOptions simulation;  // stations (simulate), faults and seed
    QString tagFile;                  // empty: the built-in sample
    std::optional<RecordFormat> format;
    std::optional<int> passes;
    std::optional<int> seconds;
    std::optional<int> periodMs;
    Variable variable;  // read and write; resolved
    QStringList values;
    QString link;  // simulate: symbolic links to the two devices, empty where none is asked for
    QString secondLink;
};

#endif  // DRAVO_HOST_COMMANDS_OPTIONS_H

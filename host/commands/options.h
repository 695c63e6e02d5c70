// What the command line and the option file settle. A command reads the fields that its options fill.
#ifndef DRAVO_HOST_COMMANDS_OPTIONS_H
#define DRAVO_HOST_COMMANDS_OPTIONS_H

#include <optional>

#include "host/pump/serial_port.h"
#include "host/scan/scan_settings.h"
#include "host/screen/record_output.h"
#include "host/simulation/simulated_line.h"
#include "host/tags/value_format.h"
#include "host/trace/trace_writer.h"
#include "korvel_dravo_line.h"

enum class PlanFormat { Table, Json, Html };

struct Options {
    PortSettings port;         // device empty: the embedded default, simulated controllers
    dravo::LineSettings line;  // retries, frame limit, down after, echo and merge; the rest: lineSettings()
    int timeoutMs = 500;
    std::optional<int> lifetimeMs;
    std::optional<int> startSilenceMs;
    std::optional<int> remoteNode;
    SimulatedLineOptions simulation;  // stations (simulate), faults, seed and turnarounds
    bool unpaced = false;             // the simulated line
    bool giveUp = false;              // monitor: a lost device ends it
    TraceSettings trace;
    QString tagFile;  // empty: the built-in sample
    std::optional<RecordFormat> format;
    PlanFormat planFormat = PlanFormat::Table;
    ScanSettings scan;
    int turnaroundMs = 5;  // plan
    bool measure = false;  // plan
    std::optional<int> passes;
    std::optional<int> seconds;
    std::optional<int> periodMs;
    QString commandFile;          // monitor: empty: no commands; - is standard input
    bool untilInputEnds = false;  // monitor: its commands
    QString statisticsFile;       // monitor: empty: none; - is standard output
    std::optional<int> everySeconds;
    dravo::Variable variable;                                    // read and write; resolved
    FormatTexts formatTexts{QStringLiteral("dec"), {}, {}, {}};  // as given; settled it is
    ValueFormat valueFormat;
    QStringList values;
    QString link;  // simulate: symbolic links to the two devices, empty where none is asked for
    QString secondLink;
};

#endif  // DRAVO_HOST_COMMANDS_OPTIONS_H

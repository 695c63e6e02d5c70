// The command line. Every option is looked at before anything is done.
#ifndef DRAVO_HOST_OPTIONS_H
#define DRAVO_HOST_OPTIONS_H

#include <QtCore/QStringList>

#include "host/driver_session.h"
#include "host/serial_link.h"
#include "host/simulation/simulated_line.h"

enum class Command { Monitor, Read, Write, Simulate };
enum class Format { Automatic, Table, Csv, Json };  // Automatic: live screen on a terminal, else Table

struct Options {
    Command command = Command::Monitor;
    LineSettings line;  // device empty: the embedded default, simulated controllers
    DriverSettings driver;
    SimulatedLineOptions simulation;  // faults, seed and remote node
    QString tagFile;                  // empty: the built-in sample
    Format format = Format::Automatic;
    int passes = 0;     // 0: no limit given
    int seconds = 0;    // 0: no limit given
    int periodMs = -1;  // -1: not given
    Variable variable;  // read and write
    QStringList values;
    QStringList links;  // simulate: symbolic links to the two devices, empty where none is asked for
};

enum ExitStatus { kExitDone = 0, kExitFailed = 1, kExitUsage = 2, kExitPort = 3 };

struct ParsedOptions {
    Options options;
    QString text;        // --help, --version: print this and leave well
    QStringList faults;  // everything wrong with the command line; empty: run it
};

/// @param arguments  the program's, its name first.
ParsedOptions parseOptions(const QStringList &arguments);

#endif  // DRAVO_HOST_OPTIONS_H

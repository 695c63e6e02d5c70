#include "host/options.h"

#include <QtCore/QCoreApplication>
#include <set>

#include "host/command_line.h"
#include "host/option_definitions.h"
#include "host/value_text.h"

namespace {

constexpr int kLongestRun = 10 * 365 * 24 * 3600;  // seconds
constexpr int kMostPasses = 1000000000;
constexpr int kLongestTimeoutMs = 60000;
constexpr int kMostRegisters = 125;  // that a Modbus read carries; eight times as many coils are within its bound too
constexpr int kMostWrittenCoils = 1968;  // that one Modbus write carries; the driver sends coils in one request
constexpr int kQueueBound = 1024;        // requests that one read may be cut into

void takeShared(CommandLine &line, Options *options) {
    line.takeNumber("remote-node", 0, 255, &options->driver.remoteNode);
    options->simulation.remoteNode = options->driver.remoteNode;
    QString error;
    if (line.has("faults") && !parseFaults(line.text("faults"), options->simulation, &error)) {
        line.fault(QStringLiteral("--faults: %1").arg(error));
    }
}

void takeLine(CommandLine &line, Options *options) {
    LineSettings &settings = options->line;
    settings.device = line.text("port");
    if (line.has("port") && settings.device.isEmpty()) {
        line.fault("--port names no device");
    }
    if (line.has("port") && line.has("faults")) {
        line.fault("--faults are faults of the simulated line and do not go with --port");
    }
    line.takeNumber("baud", 50, 4000000, &settings.baud);
    const QSerialPort::Parity parities[] = {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity};
    int parity = 1;
    line.takeChoice("parity", {"none", "even", "odd"}, &parity);
    settings.parity = parities[parity];
    int stopBits = 0;
    line.takeChoice("stop-bits", {"1", "2"}, &stopBits);
    settings.stopBits = stopBits == 0 ? QSerialPort::OneStop : QSerialPort::TwoStop;
    line.takeNumber("timeout", 1, kLongestTimeoutMs, &settings.timeoutMs);
    line.takeNumber("retries", 0, 100, &options->driver.retries);
    line.takeNumber("frame-limit", 1, kMostRegisters, &options->driver.frameLimit);
}

void refusePositionals(CommandLine &line, int taken) {
    const QStringList rest = line.positionals().mid(taken);
    if (!rest.isEmpty()) {
        line.fault(QStringLiteral("unexpected argument '%1'").arg(rest.first()));
    }
}

void takeMonitor(CommandLine &line, Options *options) {
    refusePositionals(line, 1);
    options->tagFile = line.text("tags");
    if (line.has("tags") && options->tagFile.isEmpty()) {
        line.fault("--tags names no file");
    }
    if (line.has("passes") && line.has("seconds")) {
        line.fault("--passes and --seconds exclude each other");
    }
    line.takeNumber("passes", 1, kMostPasses, &options->passes);
    line.takeNumber("seconds", 1, kLongestRun, &options->seconds);
    line.takeNumber("period", 0, 3600000, &options->periodMs);
    int format = int(Format::Automatic) - 1;
    line.takeChoice("format", {"table", "csv", "json"}, &format);
    options->format = Format(format + 1);
    takeLine(line, options);
    takeShared(line, options);
}

void checkWritten(CommandLine &line, Options *options) {
    QStringList faults;
    options->variable.count = options->values.size();
    valueBytes(valueKind(options->variable.elemType), options->values, &faults);
    for (const QString &found : faults) {
        line.fault(found);
    }
    if (options->variable.elemType <= 6 && options->values.size() > kMostWrittenCoils) {
        line.fault(QStringLiteral("%1 bits are more than one write carries (%2)")
                       .arg(options->values.size())
                       .arg(kMostWrittenCoils));
    }
}

void takeAccess(CommandLine &line, Command command, Options *options) {
    Variable &variable = options->variable;
    const QStringList texts = line.positionals().mid(1);
    const bool write = command == Command::Write;
    if (!write) {
        refusePositionals(line, 3);
    }
    takeLine(line, options);
    takeShared(line, options);
    line.takeNumber("station", 1, 247, &variable.station);
    if (!write) {
        line.takeNumber("count", 1, kMaxValues, &variable.count);
    }
    if (texts.size() < (write ? 3 : 2)) {
        line.fault(write ? "write takes TYPE ADDRESS VALUE..." : "read takes TYPE ADDRESS");
        return;
    }
    if (!wholeNumber(texts.at(0), 0, 21, &variable.elemType)) {
        line.fault(QStringLiteral("type '%1': give a whole number from 0 to 21").arg(texts.at(0)));
        return;
    }
    variable.addressText = texts.at(1);
    options->values = texts.mid(2);
    if (write) {
        checkWritten(line, options);
    }
    const QVector<VariableFault> found = variableFaults(variable);
    for (const VariableFault &fault : found) {
        line.fault(fault.field + QLatin1String(": ") + fault.reason);
    }
    if (found.isEmpty() && variable.elemType > 6 &&
        elementRange(variable).count > kQueueBound * options->driver.frameLimit) {
        line.fault("so many values need more requests than the driver queues: raise --frame-limit");
    }
}

void takeStations(CommandLine &line, Options *options) {
    const QString list = line.has("stations") ? line.text("stations") : "1,2,3";
    std::set<int> stations;
    for (const QString &text : list.split(QLatin1Char(','))) {
        int station = 0;
        if (!wholeNumber(text, 1, 247, &station)) {
            line.fault(QStringLiteral("--stations '%1': give whole numbers from 1 to 247").arg(text));
        } else if (!stations.insert(station).second) {
            line.fault(QStringLiteral("--stations names station %1 twice").arg(station));
        }
    }
    options->simulation.stations.assign(stations.begin(), stations.end());
}

void takeSimulate(CommandLine &line, Options *options) {
    refusePositionals(line, 1);
    options->links = QStringList{line.text("link"), line.text("second-link")};
    if (!options->links.at(0).isEmpty() && options->links.at(0) == options->links.at(1)) {
        line.fault("--link and --second-link name the same file");
    }
    takeStations(line, options);
    line.takeNumber("seconds", 1, kLongestRun, &options->seconds);
    line.takeNumber("timeout", 1, kLongestTimeoutMs, &options->line.timeoutMs);
    line.takeNumber("baud", 50, 4000000, &options->line.baud);
    takeShared(line, options);
}

void take(CommandLine &line, Options *options) {
    switch (options->command) {
        case Command::Monitor:
            return takeMonitor(line, options);
        case Command::Read:
        case Command::Write:
            return takeAccess(line, options->command, options);
        case Command::Simulate:
            return takeSimulate(line, options);
    }
}

}  // namespace

ParsedOptions parseOptions(const QStringList &arguments) {
    static const QStringList kCommands{"monitor", "read", "write", "simulate"};
    ParsedOptions parsed;
    const QString command = arguments.value(1);
    if (command == QLatin1String("--help") || command == QLatin1String("-h")) {
        parsed.text = generalHelp();
        return parsed;
    }
    if (command == QLatin1String("--version")) {
        parsed.text = QStringLiteral("dravo-host %1\n").arg(QCoreApplication::applicationVersion());
        return parsed;
    }
    if (!kCommands.contains(command)) {
        parsed.faults.append(command.isEmpty() ? "give a command: monitor, read, write or simulate"
                                               : QStringLiteral("there is no command '%1'").arg(command));
        return parsed;
    }
    Options &options = parsed.options;
    options.command = Command(kCommands.indexOf(command));
    CommandLine line;
    addOptions(line, options.command);
    if (line.parse(arguments)) {
        take(line, &options);
    } else if (line.helpAsked() && line.faults().isEmpty()) {
        parsed.text = line.helpText(usageLine(options.command));
    }
    parsed.faults = line.faults();
    return parsed;
}

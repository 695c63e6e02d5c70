#include "host/commands/line_options.h"

namespace {

constexpr Bounds kFrameLimit{1, 125};  // registers that a Modbus read carries; eight times as many coils fit as well
constexpr Bounds kNode{0, 255};
constexpr Bounds kLifetimeMs{1, 3 * kTimeoutMs.highest};
constexpr Bounds kSilenceMs{0, kLifetimeMs.highest};
constexpr Bounds kDownAfter{0, 1000};
constexpr int kOwnLineBaud = 115200;  // named in the help of --port; a pass over the built-in sample takes 190 ms
}  // namespace

void addLateReplyOptions(OptionSet *options, Options *settings, const int *timeoutMs) {
    options->addNumber("lifetime", "MS", kLifetimeMs, &settings->lifetimeMs,
                       "Longest time in which a late reply can still come (three timeouts). Nothing that it could be "
                       "mistaken for is asked before.");
    options->addNumber("start-silence", "MS", kSilenceMs, &settings->startSilenceMs,
                       "Silence before the first request (the lifetime; 0 on the simulated line). An earlier master's "
                       "requests may still be answered.");
    options->addChoice<dravo::EchoMode>(
        "echo", {{"auto", dravo::EchoAuto}, {"on", dravo::EchoOn}, {"off", dravo::EchoOff}}, &settings->line.echo,
        "Whether the adapter returns what it sends. Such a copy of a write looks like its reply.");
    options->addCheck([settings, timeoutMs] {
        const bool tooShort = settings->lifetimeMs && *settings->lifetimeMs < *timeoutMs;
        return tooShort ? QStringList{QStringLiteral("--lifetime is less than --timeout")} : QStringList();
    });
}

void addCharacterOptions(OptionSet *options, PortSettings *port) {
    options->addNumber("baud", "N", kBaud, &port->baud, "Bits per second.");
    options->addChoice<QSerialPort::Parity>(
        "parity", {{"none", QSerialPort::NoParity}, {"even", QSerialPort::EvenParity}, {"odd", QSerialPort::OddParity}},
        &port->parity, "Parity.");
    addStopBitsOption(options, port);
}

void addStopBitsOption(OptionSet *options, PortSettings *port) {
    options->addChoice<QSerialPort::StopBits>("stop-bits", {{"1", QSerialPort::OneStop}, {"2", QSerialPort::TwoStop}},
                                              &port->stopBits, "Stop bits.");
}

void addLineOptions(OptionSet *options, Options *settings) {
    options->addText("port", "DEVICE", &settings->port.device,
                     "Serial port; without it the simulated line is used, by monitor, read and write at 115200 baud "
                     "unless --baud is given.");
    addCharacterOptions(options, &settings->port);
    options->addNumber("timeout", "MS", kTimeoutMs, &settings->timeoutMs,
                       "Longest wait for a reply's first byte. Give more than the slowest controller takes.");
    addLateReplyOptions(options, settings, &settings->timeoutMs);
    dravo::LineSettings &line = settings->line;
    options->addNumber("retries", "N", kRetries, &line.retries, "Times a request is sent again after a bad reply.");
    options->addNumber("frame-limit", "N", kFrameLimit, &line.frameLimit,
                       "Most elements in a request, eight times as many coils. Never more than Modbus allows.");
    options->exclude("port", "faults", "--faults are faults of the simulated line and do not go with --port");
}

void addMergeOption(OptionSet *options, Options *settings) {
    options->addChoice<dravo::MergeRule>(
        "merge", {{"driver", dravo::MergeByDriver}, {"time", dravo::MergeByTime}}, &settings->line.merge,
        "How variables share requests. Neighbours within the frame limit, or as takes the least time on the line.");
}

void addMonitorLineOptions(OptionSet *options, Options *settings) {
    addMergeOption(options, settings);
    options->addNumber(
        "down-after", "N", kDownAfter, &settings->line.downAfter,
        "Requests in a row without an answer until a station is only asked now and then, so that it does "
        "not slow the others down. 0: never.");
    options->addFlag("give-up", &settings->giveUp,
                     "End with exit status 1 when the device is lost, instead of opening it again.");
}

void addSimulationOptions(OptionSet *options, Options *settings) {
    options->addNumber("remote-node", "N", kNode, &settings->remoteNode,
                       "Send remote frames for this node instead of controller frames. It is also taken as the own "
                       "node, so that all records name it, replies are stored and writes are reported.");
    addFaultOption(options, settings);
}

void addFaultOption(OptionSet *options, Options *settings) {
    SimulatedLineOptions &simulation = settings->simulation;
    options->add("faults", "LIST",
                 "Faults of the simulated line, separated by commas; P is the probability for each exchange:\n" +
                     faultListHelp(),
                 [&simulation](const QString &text) { return parseFaults(text, &simulation); });
}

void addPacingOptions(OptionSet *options, Options *settings) {
    SimulatedLineOptions &simulation = settings->simulation;
    options->add("turnaround", "LIST",
                 QStringLiteral("Milliseconds that simulated controllers take before they answer, 0 to %1 (%2). "
                                "5,2:20,3:8~4 is 5, for station 2 20, and for station 3 from 8 to 12.")
                     .arg(kLongestTurnaroundMs)
                     .arg(simulation.turnaround.ms),
                 [&simulation](const QString &text) { return parseTurnarounds(text, &simulation); });
    options->addFlag("unpaced", &settings->unpaced,
                     "Bytes and controllers take no time on the simulated line. Otherwise bytes go at the baud rate.");
    options->exclude("unpaced", "turnaround", "--unpaced and --turnaround exclude each other");
}

void addOwnLineSpeed(OptionSet *options, PortSettings *port) {
    options->exclude("port", "turnaround", "--turnaround is of the simulated line and does not go with --port");
    options->exclude("port", "unpaced", "--unpaced is of the simulated line and does not go with --port");
    options->addCheck([options, port] {
        if (!options->given("port") && !options->given("baud")) {
            port->baud = kOwnLineBaud;
        }
        return QStringList();
    });
}

QStringList strangerFaults(const Options &settings, const std::set<int> &stations) {
    SimulatedLineOptions simulation = settings.simulation;
    simulation.stations.assign(stations.begin(), stations.end());
    QStringList faults;
    for (const std::string &fault : namedStrangers(simulation)) {
        faults.append(QString::fromStdString(fault));
    }
    return faults;
}

// scan: which stations answer, with which settings of the line.
#include <numeric>

#include "host/commands/command.h"
#include "host/commands/exit_status.h"
#include "host/commands/line_options.h"
#include "host/commands/list_options.h"
#include "host/commands/scan_line.h"
#include "host/commands/trace_options.h"
#include "host/pump/stop_signal.h"
#include "host/scan/scan_time.h"

namespace {

const std::set<int> kOwnStations{1, 2, 3};  // of the simulated line, as the description says
constexpr int kMostRates = 64;
constexpr int kLastStation = 247;
constexpr int kLastOwnStation = 10;

const std::vector<QSerialPort::Parity> kParities{QSerialPort::NoParity, QSerialPort::EvenParity,
                                                 QSerialPort::OddParity};

QStringList parityNames() {
    QStringList names;
    for (const QSerialPort::Parity parity : kParities) {
        names.append(parityName(parity));
    }
    return names;
}

void addListOptions(OptionSet *options, ScanSettings *scan) {
    options->add("stations", "LIST",
                 QStringLiteral("Stations to ask, such as 1-10,20 (1-%1; 1-%2 on the simulated line).")
                     .arg(kLastStation)
                     .arg(kLastOwnStation),
                 takeRanges(kStation, &scan->stations));
    QStringList bauds;
    for (const int baud : scan->bauds) {
        bauds.append(QString::number(baud));
    }
    options->add("baud", "LIST",
                 QStringLiteral("Bits per second to try, in this order, %1 to %2 each (%3).")
                     .arg(kBaud.lowest)
                     .arg(kBaud.highest)
                     .arg(bauds.join(QLatin1Char(','))),
                 takeNumbers(kBaud, kMostRates, &scan->bauds));
    options->add("parity", "LIST", QStringLiteral("Parities to try with each: none, even, odd (even,none)."),
                 takeNames(parityNames(), [scan](const std::vector<int> &places) {
                     scan->parities.clear();
                     for (const int place : places) {
                         scan->parities.push_back(kParities[std::size_t(place)]);
                     }
                 }));
}

void addOptions(OptionSet *options, Options *settings) {
    ScanSettings *scan = &settings->scan;
    options->addText("port", "DEVICE", &settings->port.device,
                     QStringLiteral("Serial port; without it a simulated line is scanned."));
    addListOptions(options, scan);
    addStopBitsOption(options, &settings->port);
    options->addNumber(
        "timeout", "MS", kTimeoutMs, &scan->timeoutMs,
        QStringLiteral("Longest wait for a reply's first byte. Later ones are known by their station and "
                       "found all the same, unless they meet the next request on the wire."));
    options->addNumber("retries", "N", kRetries, &scan->retries,
                       QStringLiteral("Rounds over the stations without an answer, after the first one."));
    addLateReplyOptions(options, settings, &scan->timeoutMs);
    options->addChoice<bool>("format", {{"table", false}, {"json", true}}, &scan->json,
                             QStringLiteral("Text, or one JSON object."));
    addFaultOption(options, settings);
    addPacingOptions(options, settings);
    addTraceOptions(options, settings);
    for (const char *const own : {"faults", "turnaround", "unpaced"}) {
        options->exclude(
            "port", own,
            QStringLiteral("--%1 is of the simulated line and does not go with --port").arg(QLatin1String(own)));
    }
    options->addCheck([settings] { return strangerFaults(*settings, kOwnStations); });
}

/// Whatever was not given.
Options settled(Options options) {
    ScanSettings &scan = options.scan;
    options.timeoutMs = scan.timeoutMs;
    const bool own = options.port.device.isEmpty();
    if (scan.stations.empty()) {
        scan.stations.resize(std::size_t(own ? kLastOwnStation : kLastStation));
        std::iota(scan.stations.begin(), scan.stations.end(), 1);
    }
    if (!own) {
        options.port.baud = scan.bauds.front();
        options.port.parity = scan.parities.front();
    }
    return options;
}

int report(const ScanResult &result, const ScanSettings &scan) {
    const int printed = scan.json ? printBytes(scanJson(result)) : print(scanTable(result, scan.timeoutMs));
    if (result.settingsDone < result.settings) {
        tell(QStringLiteral("%1 of %2 settings were scanned to the end").arg(result.settingsDone).arg(result.settings));
    }
    if (result.strangers > 0) {
        tell(QStringLiteral("frames came that nobody had asked for (%1): is there another master on the line?")
                 .arg(result.strangers));
    }
    if (!result.anyAnswers()) {
        tell(
            QStringLiteral("no station answers; try other rates and parities, exchange the two wires, and see that "
                           "the controllers have power"));
    }
    return printed != kExitDone || !result.anyAnswers() ? kExitFailed : kExitDone;
}

int run(const Options &given) {
    const Options settings = settled(given);
    OpenLine line;
    if (Failure failure = line.open(settings, kOwnStations)) {
        return fail(kExitPort, failure);
    }
    LineScan scan(settings, &line);
    tell(QStringLiteral("stations: %1, settings: %2; at most %3")
             .arg(scan.result().stations)
             .arg(scan.result().settings)
             .arg(roughTime(scan.longestUs())));
    const Failure lost = scan.run();
    const int status = report(scan.result(), settings.scan);
    return lost ? fail(kExitFailed, lost) : status;
}

}  // namespace

const Command kScanCommand{
    "scan",
    "Find the stations on a line and their settings",
    "Asks every station for one holding register, with every baud rate and parity of the lists, and shows those that "
    "answer; an exception is an answer. Nothing is written. Whoever else is master on the line has to be silent.\n"
    "\n"
    "Ctrl-C ends it with what was found so far. The exit status is 0 when a station answers and 1 when none does. "
    "Without --port a simulated line is scanned that has stations 1, 2 and 3 at 19200 baud with even parity.",
    &addOptions,
    &run,
};

#include "host/commands/scan_line.h"

#include "host/commands/exit_status.h"
#include "host/pump/pump.h"
#include "host/pump/stop_signal.h"
#include "host/scan/scan_time.h"

namespace {

// Nearly every controller has it, and one that has not refuses it, which is an answer too.
dravo::Variable firstRegisterOf(int station) {
    dravo::Variable variable;
    variable.elemType = 7;
    variable.addressText = QStringLiteral("0");
    variable.station = station;
    dravo::resolve(&variable);  // usable
    return variable;
}

QString settingsText(const PortSettings &at) {
    return QStringLiteral("%1 baud, parity %2").arg(at.baud).arg(parityName(at.parity));
}

}  // namespace

LineScan::LineScan(const Options &settings, OpenLine *line) : settings_(settings), line_(line) {
    for (const int baud : settings.scan.bauds) {
        for (const QSerialPort::Parity parity : settings.scan.parities) {
            PortSettings at = settings.port;
            at.baud = baud;
            at.parity = parity;
            toScan_.push_back(at);
        }
    }
    result_.stations = int(settings.scan.stations.size());
    result_.settings = int(toScan_.size());
}

dravo::LineSettings LineScan::lineAt(const PortSettings &at) const {
    Options options = settings_;
    options.port = at;
    dravo::LineSettings line = lineSettings(options);
    line.retries = 0;    // in the next round
    line.downAfter = 0;  // each is asked as often as the others
    if (result_.settingsDone > 0) {
        line.startSilenceUs = 0;  // the setting before has waited for all that was asked
    }
    return line;
}

qint64 LineScan::longestUs() const {
    qint64 us = lineAt(settings_.port).lifetimeUs;  // of silence before it begins
    for (const PortSettings &at : toScan_) {
        us += longestSweepUs(lineAt(at), result_.stations, rounds());
    }
    return us;
}

Failure LineScan::run() {
    Failure lost;
    for (const PortSettings &at : toScan_) {
        if (lost || stopRequested()) {
            break;
        }
        lost = scanAt(at);
        ++settingsPassed_;
    }
    progress_.clear();
    return lost;
}

Failure LineScan::scanAt(const PortSettings &at) {
    line_->trace().lineClosed();
    if (const Failure unusable = line_->port().change(at)) {
        say(unusable.text());  // others may do
        return Failure();
    }
    dravo::Line engine(lineAt(at), nowUs());
    Sweep sweep(settings_.scan.stations, rounds());
    Failure lost = ask(at, &engine, &sweep);
    result_.strangers += engine.statistics().line().counts.foreignDropped;
    keep(at, sweep);
    return lost;
}

// The engine tells the answers of one station from those of another, be they late or damaged. When all is asked, the
// last answers get their time: with the next settings they would be noise.
Failure LineScan::ask(const PortSettings &at, dravo::Line *engine, Sweep *sweep) {
    const qint64 lifetimeUs = lineAt(at).lifetimeUs;
    int operation = 0;
    qint64 quietUs = 0;
    Failure lost;
    while (!lost && !stopRequested()) {
        const std::optional<int> station = operation == 0 ? sweep->next() : std::nullopt;
        if (station) {
            operation = engine->readOnce(firstRegisterOf(*station));
            show(at, *station, *sweep);
        } else if (operation == 0 && nowUs() > quietUs) {
            ++result_.settingsDone;
            break;
        }
        lost = pump(
            &line_->port(), engine,
            [&](const dravo::LineEvent &event) {
                if (event.kind == dravo::LineEvent::Operation) {
                    sweep->judged(event);
                    operation = 0;
                    quietUs = nowUs() + lifetimeUs;
                }
                return operation != 0;  // the next one waits for nothing
            },
            &line_->trace());
        takeLate(engine->statistics(), sweep);
    }
    return lost;
}

void LineScan::takeLate(const dravo::LineStatistics &statistics, Sweep *sweep) {
    if (statistics.line().counts.lateDropped > 0) {
        for (const int station : statistics.stations()) {
            if (statistics.forStation(station).counts.lateDropped > 0) {
                sweep->heardLate(station);
            }
        }
    }
}

void LineScan::show(const PortSettings &at, int station, const Sweep &sweep) {
    const double passed = (settingsPassed_ + sweep.done()) / double(toScan_.size());
    progress_.show(QStringLiteral("%1: station %2, round %3 of %4; found %5; at most %6 left")
                       .arg(settingsText(at))
                       .arg(station)
                       .arg(sweep.round())
                       .arg(rounds())
                       .arg(result_.findings.size() + sweep.heard().size())
                       .arg(roughTime(qint64(double(longestUs()) * (1 - passed)))));
}

void LineScan::keep(const PortSettings &at, const Sweep &sweep) {
    std::vector<int> stations;
    for (const StationAnswer &answer : sweep.heard()) {
        result_.findings.push_back({at, answer});
        stations.push_back(answer.station);
    }
    if (!stations.empty() || (!progress_.onTerminal() && !stopRequested())) {
        say(stations.empty() ? QStringLiteral("%1: nothing").arg(settingsText(at))
                             : QStringLiteral("%1: station %2").arg(settingsText(at), numberList(stations)));
    }
}

void LineScan::say(const QString &text) {
    progress_.clear();
    tell(text);
}

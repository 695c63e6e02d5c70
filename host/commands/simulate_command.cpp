// simulate: serves a simulated line for other programs.
#include <unistd.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <cerrno>

#include "host/commands/command.h"
#include "host/commands/exit_status.h"
#include "host/commands/line_options.h"
#include "host/commands/list_options.h"
#include "host/commands/open_line.h"
#include "host/commands/simulate_trace.h"
#include "host/commands/trace_options.h"
#include "host/pump/port_holders.h"
#include "host/pump/stop_signal.h"
#include "host/scan/scan_report.h"

namespace {

constexpr int kSliceMs = 200;

/// A symbolic link to a device, gone with this object.
class DeviceLink {
public:
    DeviceLink() = default;
    DeviceLink(const DeviceLink &) = delete;
    DeviceLink &operator=(const DeviceLink &) = delete;
    ~DeviceLink() {
        if (target() == device_ && !device_.isEmpty()) {  // else another run has taken the name over
            unlink(path_.constData());
        }
    }

    /// An empty name makes no link. A link that an earlier run left behind is replaced, any other file is not.
    Failure make(const QString &name, const std::string &device) {
        path_ = QFile::encodeName(name);
        if (name.isEmpty()) {
            return Failure();
        }
        if (target().startsWith("/dev/pts/")) {
            const QStringList servers = portHolders(QFile::decodeName(target())).filter(QStringLiteral("dravo-host"));
            if (!servers.isEmpty()) {
                return Failure(QStringLiteral("%1 is the line of %2, which is running").arg(name, servers.first()));
            }
            unlink(path_.constData());
        }
        if (symlink(device.c_str(), path_.constData()) != 0) {
            return Failure::ofSystem(QStringLiteral("cannot make the link %1").arg(name), errno);
        }
        device_ = QByteArray::fromStdString(device);
        return Failure();
    }

private:
    QByteArray target() const {
        QByteArray text(4096, '\0');
        const ssize_t length = readlink(path_.constData(), text.data(), size_t(text.size()));
        return text.left(length < 0 ? 0 : int(length));
    }

    QByteArray path_;
    QByteArray device_;
};

void addOptions(OptionSet *options, Options *settings) {
    std::vector<int> *stations = &settings->simulation.stations;
    *stations = {1, 2, 3};
    options->addText("link", "FILE", &settings->link,
                     QStringLiteral("Make FILE a symbolic link to the first device while serving."));
    options->addText("second-link", "FILE", &settings->secondLink,
                     QStringLiteral("Make FILE a symbolic link to the second device."));
    options->add("stations", "LIST", QStringLiteral("Stations, such as 1-10,20 (%1).").arg(numberList(*stations)),
                 takeRanges(kStation, stations));
    options->addNumber("seconds", "N", kSeconds, &settings->seconds, QStringLiteral("Stop after so many seconds."));
    options->addNumber("timeout", "MS", kTimeoutMs, &settings->timeoutMs,
                       QStringLiteral("Timeout of the masters, which a late reply passes."));
    addCharacterOptions(options, &settings->port);
    options->addFlag("any-settings", &settings->simulation.anySettings,
                     QStringLiteral("Hear masters whatever baud rate and parity they set. Otherwise those with others "
                                    "hear and reach nobody, as on a wire."));
    addSimulationOptions(options, settings);
    addPacingOptions(options, settings);
    addTraceOptions(options, settings);
    options->addCheck([settings, stations] { return strangerFaults(*settings, {stations->begin(), stations->end()}); });
    options->addCheck([settings] {
        const bool same = !settings->link.isEmpty() && settings->link == settings->secondLink;
        return same ? QStringList{QStringLiteral("--link and --second-link name the same file")} : QStringList();
    });
}

int run(const Options &settings) {
    watchStopSignals();
    TraceWriter trace(&tell);
    if (Failure failure = trace.open(settings.trace)) {
        return fail(kExitPort, failure);
    }
    SimulatedLineOptions options = simulationFor(settings);
    options.onExchange = [&trace](const SeenExchange &exchange) { writeExchange(exchange, &trace); };
    std::unique_ptr<SimulatedLine> line;
    if (Failure failure = startSimulation(options, &line)) {
        return fail(kExitPort, failure);
    }
    DeviceLink first;
    DeviceLink second;
    Failure failure = first.make(settings.link, line->device());
    if (!failure) {
        failure = second.make(settings.secondLink, line->secondDevice());
    }
    if (failure) {
        return fail(kExitPort, failure);
    }
    print(QStringLiteral("device %1\nsecond device %2\n")
              .arg(QString::fromStdString(line->device()), QString::fromStdString(line->secondDevice())));
    QElapsedTimer clock;
    clock.start();
    while (!stopRequested() && (!settings.seconds || clock.elapsed() < *settings.seconds * qint64(1000))) {
        sleepUnlessStopped(kSliceMs);
    }
    return kExitDone;
}

}  // namespace

const Command kSimulateCommand{
    "simulate",
    "Serve a simulated line for other programs",
    "There is one controller per station, until Ctrl-C. Prints the paths of two devices on the line: one for "
    "dravo-host "
    "--port, one for a second master such as another Modbus client.",
    &addOptions,
    &run,
};

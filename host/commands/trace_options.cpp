#include "host/commands/trace_options.h"

#include <QtCore/QFileInfo>

namespace {

constexpr Bounds kMegabytes{1, 1000000};

// A trace begins its file anew, which must not be one that the same command line needs.
QStringList traceFaults(const Options &settings) {
    const TraceSettings &trace = settings.trace;
    QStringList faults;
    if (trace.megabytes && (trace.file.isEmpty() || trace.file == QLatin1String("-"))) {
        faults.append(QStringLiteral("--trace-size needs --trace with the name of a file"));
    }
    const QFileInfo file(trace.file);
    if (!trace.file.isEmpty() && file.exists()) {
        if (file == QFileInfo(settings.tagFile)) {
            faults.append(QStringLiteral("--trace: %1 is the tag list").arg(trace.file));
        }
        const QString &device = settings.port.device;  // a name without a slash lies in /dev
        if (!device.isEmpty() && (file == QFileInfo(device) || file == QFileInfo(QStringLiteral("/dev/") + device))) {
            faults.append(QStringLiteral("--trace: %1 is the port").arg(trace.file));
        }
    }
    return faults;
}

}  // namespace

void addTraceOptions(OptionSet *options, Options *settings) {
    options->addText("trace", "FILE", &settings->trace.file,
                     QStringLiteral("Write down every frame, sent and received, and what became of it: a line each, or "
                                    "packets that protocol analysers open where the name ends in .pcapng. - is "
                                    "standard error. A file that exists is replaced."));
    options->addNumber(
        "trace-size", "MB", kMegabytes, &settings->trace.megabytes,
        QStringLiteral("Longest trace. Then FILE becomes FILE.1, in place of an earlier one, and another "
                       "FILE begins."));
    options->addCheck([settings] { return traceFaults(*settings); });
}

// monitor: watches the variables of a tag list.
#include <unistd.h>

#include <cstdio>

#include "host/commands/command.h"
#include "host/commands/exit_status.h"
#include "host/commands/line_options.h"
#include "host/commands/monitor.h"
#include "host/commands/trace_options.h"
#include "host/tags/tag_list.h"

namespace {

constexpr Bounds kPasses{1, 1000000000};
constexpr Bounds kPeriodMs{0, 3600000};
constexpr int kDemoPasses = 5;
constexpr int kDemoPeriodMs = 200;

/// The options with what depends on line and terminal filled in.
Options settled(Options options, bool live) {
    const bool simulated = options.port.device.isEmpty();
    if (!options.periodMs) {
        options.periodMs = simulated ? kDemoPeriodMs : 0;
    }
    const bool endless = live || options.passes || options.seconds || !options.commandFile.isEmpty();
    if (simulated && !endless && isatty(STDOUT_FILENO) == 0) {
        options.passes = kDemoPasses;
    }
    return options;
}

// Records for programs stay clean: their statistics go to standard error.
void closingWords(Monitor &monitor, std::optional<RecordFormat> format) {
    std::FILE *out = format == RecordFormat::Csv || format == RecordFormat::Json ? stderr : stdout;
    for (const QString &line : monitor.statisticsLines()) {
        std::fprintf(out, "%s\n", line.toLocal8Bit().constData());
    }
    std::fflush(out);
}

void addOptions(OptionSet *options, Options *settings) {
    options->addText("tags", "FILE", &settings->tagFile, QStringLiteral("The tag list (a built-in sample)."));
    options->addNumber("passes", "N", kPasses, &settings->passes,
                       QStringLiteral("Stop after so many passes over the variables."));
    options->addNumber(
        "seconds", "N", kSeconds, &settings->seconds,
        QStringLiteral("Stop after so many seconds. Without either, a run on the simulated line without a terminal "
                       "or commands stops after %1 passes; any other goes on.")
            .arg(kDemoPasses));
    options->exclude("passes", "seconds", QStringLiteral("--passes and --seconds exclude each other"));
    options->addChoice<RecordFormat>(
        "format", {{"table", RecordFormat::Table}, {"csv", RecordFormat::Csv}, {"json", RecordFormat::Json}},
        &settings->format, QStringLiteral("Records in this form instead of the live screen."));
    options->addNumber(
        "period", "MS", kPeriodMs, &settings->periodMs,
        QStringLiteral("Least time from the start of a pass to the next (%1 on the simulated line, 0 on a port).")
            .arg(kDemoPeriodMs));
    addLineOptions(options, settings);
    addStreamOptions(options, settings);
    addMonitorLineOptions(options, settings);
    addSimulationOptions(options, settings);
    addPacingOptions(options, settings);
    addOwnLineSpeed(options, &settings->port);
    addTraceOptions(options, settings);
}

int run(const Options &given) {
    const TagList tags = loadTagList(given.tagFile);
    const std::set<int> stations = stationsOf(variablesOf(tags.variables));
    const QStringList strangers = strangerFaults(given, stations);
    if (!tags.faults.isEmpty() || !strangers.isEmpty()) {
        return refuse(tags.faults.isEmpty() ? strangers : tags.faults);  // what stations there are the tag list says
    }
    const bool wantsScreen = !given.format && isatty(STDOUT_FILENO) != 0 && isatty(STDIN_FILENO) != 0;
    if (wantsScreen && given.trace.file == QLatin1String("-") && isatty(STDERR_FILENO) != 0) {
        return refuse({QStringLiteral("--trace: - would write across the live screen; give a file, or --format")});
    }
    MonitorStreams streams;
    const QStringList closed = streams.open(given);
    if (!closed.isEmpty()) {
        return refuse(closed);
    }
    OpenLine line;
    if (Failure failure = line.open(given, stations)) {
        return fail(kExitPort, failure);
    }
    std::optional<Terminal> terminal;
    if (wantsScreen) {
        terminal.emplace();
    }
    const bool live = terminal && terminal->isOpen();
    const Options settings = settled(given, live);
    Monitor monitor(settings, tags.variables, &line, live ? &*terminal : nullptr, &streams);
    const Failure brokenOff = monitor.run();
    monitor.end();
    line.trace().setTell(&tell);  // the screen goes
    terminal.reset();
    if (!monitor.readerGone()) {
        closingWords(monitor, settings.format);
        if (brokenOff) {
            return fail(kExitFailed, brokenOff);
        }
    }
    return monitor.anyFailed() ? kExitFailed : kExitDone;
}

}  // namespace

static_assert(dravo::kMostValues == 2000, "named in the description");

const Command kMonitorCommand{
    "monitor",
    "Watch the values of a tag list",
    "Reads the variables of a tag list over and over and shows each value with its age and state: fresh; stale (older "
    "than three passes should be, at least 1 second, or written since); never read; failing, with the result code and "
    "its meaning; refused (by its controller, which is asked again after a minute); station down (asked now and then). "
    "A value never read is shown as '-'.\n"
    "\n"
    "On a terminal the values stand on a live screen: arrow keys select a variable, which is shown whole below the "
    "others, w writes all values of it, / finds a label, s shows statistics, t the last frames of "
    "its station, ? every key, and q or Ctrl-C leaves. What "
    "does not fit ends in an ellipsis. Otherwise, or when --format is given, there is one record per value and pass.\n"
    "\n"
    "The tag list is CSV; its first line names the columns label,type,address,station,count in any order. type is an "
    "element type (dravo-host help types). count is in bits, registers or 32-bit values, 1 to 2000. Further columns "
    "are taken where wanted: format (dec, signed, hex, "
    "binary or float), scale and offset of dec and signed (shown is raw * scale + offset), and unit. Bits are shown as "
    "0 "
    "or 1, everything else as unsigned decimal numbers where no format is given.\n"
    "\n"
    "With --commands and --format json, lines such as {\"write\": {\"label\": \"mixer speed\", \"values\": [750]}, "
    "\"id\": 7} or {\"read\": {\"label\": \"mixer speed\"}} are carried out. Values are given as they are shown, as "
    "numbers or texts, one for each of the variable. Each is answered by one record that has \"record\": \"command\", "
    "the "
    "id as given, and an outcome: done; refused (nothing was carried out); failed or not sure (a write may have been "
    "carried out); and why.\n"
    "\n"
    "Statistics are records with \"record\": \"statistics\", one for each station and, with station null, one for the "
    "line. They count from the start; what is named recent_ is since the record before. At the end of a run they are "
    "shown as a table.",
    &addOptions,
    &run,
};

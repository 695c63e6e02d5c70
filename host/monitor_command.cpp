#include <unistd.h>

#include <cstdio>
#include <optional>

#include "host/commands.h"
#include "host/monitor.h"
#include "host/open_line.h"
#include "host/tag_list.h"

namespace {

constexpr int kDemoPasses = 5;
constexpr int kDemoPeriodMs = 200;

/// The options with what depends on line and terminal filled in.
Options settled(Options options, bool live) {
    const bool simulated = options.line.device.isEmpty();
    if (options.periodMs < 0) {
        options.periodMs = simulated ? kDemoPeriodMs : 0;
    }
    if (simulated && !live && options.passes == 0 && options.seconds == 0 && isatty(STDOUT_FILENO) == 0) {
        options.passes = kDemoPasses;
    }
    return options;
}

std::set<int> stationsOf(const QVector<Variable> &variables) {
    std::set<int> stations;
    for (const Variable &variable : variables) {
        stations.insert(variable.station);
    }
    return stations;
}

// Records for programs stay clean: their statistics go to standard error.
void closingWords(const MonitorModel &model, Format format) {
    std::FILE *out = format == Format::Csv || format == Format::Json ? stderr : stdout;
    for (const QString &line : model.statisticsLines()) {
        std::fprintf(out, "%s\n", line.toLocal8Bit().constData());
    }
    std::fflush(out);
}

}  // namespace

int runMonitor(const Options &given) {
    const TagList tags = loadTagList(given.tagFile);
    if (!tags.faults.isEmpty()) {
        for (const QString &fault : tags.faults) {
            fail(kExitUsage, fault);
        }
        return kExitUsage;
    }
    OpenLine line;
    const QString refused = line.open(given, stationsOf(tags.variables));
    if (!refused.isEmpty()) {
        return fail(kExitPort, refused);
    }
    std::optional<Screen> screen;
    if (given.format == Format::Automatic && isatty(STDOUT_FILENO) != 0 && isatty(STDIN_FILENO) != 0) {
        screen.emplace();
    }
    const bool live = screen && screen->isOpen();
    const Options options = settled(given, live);
    Monitor monitor(options, tags.variables, line.link, live ? &*screen : nullptr);
    const QString brokenOff = monitor.run();
    screen.reset();
    if (!monitor.readerGone()) {
        closingWords(monitor.model(), options.format);
    }
    if (!brokenOff.isEmpty()) {
        return fail(kExitFailed, brokenOff);
    }
    return monitor.model().statistics().anyFailed() ? kExitFailed : kExitDone;
}

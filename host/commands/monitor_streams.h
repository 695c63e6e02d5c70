// What goes in and out of a monitor beside its values: commands and statistics. Main thread.
#ifndef DRAVO_HOST_COMMANDS_MONITOR_STREAMS_H
#define DRAVO_HOST_COMMANDS_MONITOR_STREAMS_H

#include "host/commands/option_set.h"
#include "host/commands/options.h"
#include "host/gateway/line_input.h"
#include "host/statistics/statistics_file.h"

void addStreamOptions(OptionSet *options, Options *settings);

struct MonitorStreams {
    /// Opens what the options name. @return every one that cannot be opened.
    QStringList open(const Options &settings);
    /// Puts statistics where they are wanted. @param output  gets what is to go to standard output.
    /// @return why there are no more in the file, once.
    Failure record(const QVector<StatisticsRow> &rows, QByteArray *output);

    LineInput commands;
    StatisticsFile statistics;
    bool statisticsFailed = false;
    bool statisticsOnOutput = false;
};

#endif  // DRAVO_HOST_COMMANDS_MONITOR_STREAMS_H

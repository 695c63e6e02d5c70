#include "host/commands/monitor_streams.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>

#include "host/commands/line_options.h"
#include "host/statistics/statistics_records.h"

namespace {

const QString kStandard = QStringLiteral("-");

bool isJson(const Options &settings) {
    return settings.format == RecordFormat::Json;
}

QStringList loneOptions(const OptionSet &options, const Options &settings) {
    QStringList faults;
    if (options.given("commands") && !isJson(settings)) {
        faults.append(QStringLiteral("--commands goes with --format json, the form of the answers"));
    }
    if (options.given("until-input-ends") && !options.given("commands")) {
        faults.append(QStringLiteral("--until-input-ends goes with --commands"));
    }
    if (settings.statisticsFile == kStandard && !isJson(settings)) {
        faults.append(QStringLiteral("--statistics - goes with --format json, where records can be told apart"));
    }
    if (!settings.statisticsFile.isEmpty()) {
        const QFileInfo file(settings.statisticsFile);
        for (const QString &other :
             {settings.tagFile, settings.commandFile, settings.trace.file, settings.port.device}) {
            if (!other.isEmpty() && (other == settings.statisticsFile || (file.exists() && file == QFileInfo(other))) &&
                other != kStandard) {
                faults.append(QStringLiteral("--statistics: %1 is named by another option as well").arg(other));
            }
        }
    }
    if (options.given("every") && !options.given("statistics")) {
        faults.append(QStringLiteral("--every goes with --statistics"));
    }
    return faults;
}

}  // namespace

void addStreamOptions(OptionSet *options, Options *settings) {
    options->addText(
        "commands", "FILE", &settings->commandFile,
        "Take commands from a file, a named pipe or, for -, standard input. See above. That the input ends does not "
        "end the run.");
    options->addFlag("until-input-ends", &settings->untilInputEnds,
                     "Stop once the commands have ended and each is answered.");
    options->addText(
        "statistics", "FILE", &settings->statisticsFile,
        "Add a record of what each station and the line have done to a file when the run ends. They are JSON lines, or "
        "CSV with --format csv and where FILE ends in .csv. With --format json, - is standard output.");
    options->addNumber("every", "SECONDS", kSeconds, &settings->everySeconds,
                       "Write the statistics every so many seconds as well.");
    options->addCheck([options, settings] { return loneOptions(*options, *settings); });
}

QStringList MonitorStreams::open(const Options &settings) {
    QStringList faults;
    if (!settings.commandFile.isEmpty()) {
        if (const Failure failure = commands.open(settings.commandFile)) {
            faults.append(failure.text());
        }
    }
    statisticsOnOutput = settings.statisticsFile == kStandard;
    if (!settings.statisticsFile.isEmpty() && !statisticsOnOutput) {
        const bool csv =
            settings.format == RecordFormat::Csv || settings.statisticsFile.endsWith(QLatin1String(".csv"));
        if (const Failure failure = statistics.open(settings.statisticsFile, csv)) {
            faults.append(failure.text());
        }
    }
    return faults;
}

Failure MonitorStreams::record(const QVector<StatisticsRow> &rows, QByteArray *output) {
    const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    *output = statisticsOnOutput ? statisticsJson(rows, time).join() : QByteArray();
    Failure failure = statistics.isOpen() ? statistics.write(rows, time) : Failure();
    statisticsFailed = statisticsFailed || failure;
    return failure;
}

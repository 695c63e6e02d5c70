// plan: what a pass over a tag list costs, before and on the machine.
#include "host/commands/command.h"
#include "host/commands/exit_status.h"
#include "host/commands/line_options.h"
#include "host/commands/measure_plan.h"
#include "host/commands/trace_options.h"
#include "host/plan/plan_json.h"
#include "host/plan/plan_page.h"
#include "host/plan/plan_table.h"
#include "host/pump/stop_signal.h"
#include "host/tags/tag_list.h"

namespace {

constexpr Bounds kTurnaroundMs{0, 10000};
constexpr Bounds kPasses{1, 10000};

void addOptions(OptionSet *options, Options *settings) {
    options->addText("tags", "FILE", &settings->tagFile, QStringLiteral("The tag list (a built-in sample)."));
    options->addChoice<PlanFormat>(
        "format", {{"table", PlanFormat::Table}, {"json", PlanFormat::Json}, {"html", PlanFormat::Html}},
        &settings->planFormat, QStringLiteral("Text, one JSON object, or a page that needs nothing else."));
    options->addNumber("turnaround", "MS", kTurnaroundMs, &settings->turnaroundMs,
                       QStringLiteral("What a controller takes to answer."));
    options->addFlag("measure", &settings->measure,
                     QStringLiteral("Read on the line and put what each request took beside what was computed. Only "
                                    "then is the port opened."));
    options->addNumber("passes", "N", kPasses, &settings->passes,
                       QStringLiteral("Passes to measure (%1). One more goes before, in which the engine learns the "
                                      "line.")
                           .arg(kMeasuredPasses));
    addLineOptions(options, settings);
    addMergeOption(options, settings);
    addFaultOption(options, settings);
    addTraceOptions(options, settings);
    options->addCheck([settings] {
        const bool silent = !settings->trace.file.isEmpty() && !settings->measure;
        return silent ? QStringList{QStringLiteral("--trace: without --measure nothing goes on the line")}
                      : QStringList();
    });
}

QByteArray formatted(const PassPlan &plan, const Options &settings) {
    switch (settings.planFormat) {
        case PlanFormat::Json:
            return planJson(plan);
        case PlanFormat::Html:
            return planPage(plan, settings.tagFile.isEmpty() ? QStringLiteral("built-in sample") : settings.tagFile);
        case PlanFormat::Table:
            break;
    }
    return planTable(plan).toLocal8Bit();
}

int run(const Options &settings) {
    const TagList tags = loadTagList(settings.tagFile);
    if (!tags.faults.isEmpty()) {
        return refuse(tags.faults);
    }
    const QVector<dravo::Variable> variables = variablesOf(tags.variables);
    const QStringList strangers = strangerFaults(settings, stationsOf(variables));
    if (!strangers.isEmpty()) {
        return refuse(strangers);
    }
    dravo::LineSettings line = lineSettings(settings);
    line.replyDelayUs = settings.turnaroundMs * 1000LL;
    watchStopSignals();
    PassPlan plan;
    const CurvesOf curves = settings.planFormat == PlanFormat::Html ? CurvesOf::AllBauds : CurvesOf::OwnBaud;
    if (Failure failure = planPass(
            variables, line, curves, [] { return !stopRequested(); }, &plan)) {
        return fail(kExitFailed, failure);
    }
    Options measured = settings;
    measured.simulation.turnaround.ms = settings.turnaroundMs;
    const int status = settings.measure ? measurePlan(measured, variables, &plan) : kExitDone;
    if (status == kExitPort) {
        return status;
    }
    const int printed = printBytes(formatted(plan, settings));
    return status != kExitDone ? status : printed;
}

}  // namespace

const Command kPlanCommand{
    "plan",
    "Show what a pass over a tag list costs",
    "Shows the requests that one pass over the variables of a tag list takes, as the driver makes them, with what each "
    "takes on the line: bytes out and in as characters at the baud rate, two silences of 3.5 characters (above 19200 "
    "baud of 1.75 ms each) and the turnaround. Then the pass, and what other settings would make of it.\n"
    "\n"
    "A request has start address and quantity as they stand on the line, and elements as they stand in the tag list. "
    "Gaps are elements read that nobody asked for.",
    &addOptions,
    &run,
};

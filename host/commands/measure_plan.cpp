#include "host/commands/measure_plan.h"

#include "host/commands/exit_status.h"
#include "host/plan/measurement.h"
#include "host/plan/plan_columns.h"
#include "host/pump/pump.h"
#include "host/pump/stop_signal.h"

namespace {

bool anyFailed(const PassPlan &plan) {
    bool any = false;
    for (const PlannedRequest &request : plan.requests) {
        any = any || !request.failure.isEmpty();
    }
    return any;
}

}  // namespace

int measurePlan(const Options &settings, const QVector<dravo::Variable> &variables, PassPlan *plan) {
    OpenLine line;
    if (Failure failure = line.open(settings, stationsOf(variables))) {
        return fail(kExitPort, failure);
    }
    const int passes = settings.passes.value_or(kMeasuredPasses);
    tell(QStringLiteral("measuring %1 passes after a first one, about %2")
             .arg(passes)
             .arg(timeText(plan->itself.figures.us * (passes + 1))));
    dravo::Line engine(plan->line, nowUs());
    engine.watch(variables, nowUs());
    Measurement measurement(*plan);
    Failure lost;
    while (!lost && measurement.passes() <= passes && !stopRequested()) {
        const auto take = [&measurement](const dravo::LineEvent &event) {
            measurement.take(event, nowUs());
            return true;
        };
        lost = pump(&line.port(), &engine, take, &line.trace());
    }
    measurement.fill(plan);
    if (lost) {
        return fail(kExitFailed, lost);
    }
    return anyFailed(*plan) ? kExitFailed : kExitDone;
}

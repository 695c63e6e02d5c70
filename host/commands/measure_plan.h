// plan --measure: runs the pass on the line. Main thread.
#ifndef DRAVO_HOST_COMMANDS_MEASURE_PLAN_H
#define DRAVO_HOST_COMMANDS_MEASURE_PLAN_H

#include "host/commands/open_line.h"
#include "host/plan/pass_plan.h"

/// After one more, in which the engine learns the line.
constexpr int kMeasuredPasses = 9;

/// @return the exit status: kExitFailed where the device was lost or a request failed; what was measured stands in the
/// plan all the same.
int measurePlan(const Options &settings, const QVector<dravo::Variable> &variables, PassPlan *plan);

#endif  // DRAVO_HOST_COMMANDS_MEASURE_PLAN_H

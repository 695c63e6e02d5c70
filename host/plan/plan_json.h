// The plan as one JSON object; docs/plan.md says what each field holds. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_PLAN_JSON_H
#define DRAVO_HOST_PLAN_PLAN_JSON_H

#include "host/plan/pass_plan.h"

/// UTF-8, ends with a line end.
QByteArray planJson(const PassPlan &plan);

#endif  // DRAVO_HOST_PLAN_PLAN_JSON_H

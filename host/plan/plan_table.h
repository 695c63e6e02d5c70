// The plan as text of 80 columns. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_PLAN_TABLE_H
#define DRAVO_HOST_PLAN_PLAN_TABLE_H

#include "host/plan/pass_plan.h"

QString planTable(const PassPlan &plan);

#endif  // DRAVO_HOST_PLAN_PLAN_TABLE_H

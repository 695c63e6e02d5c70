// The plan as one HTML page that needs nothing else: drawings and style are in it, no script. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_PLAN_PAGE_H
#define DRAVO_HOST_PLAN_PLAN_PAGE_H

#include "host/plan/pass_plan.h"

/// Well-formed XML in UTF-8. The plan has curves. source: where the variables come from.
QByteArray planPage(const PassPlan &plan, const QString &source);

#endif  // DRAVO_HOST_PLAN_PLAN_PAGE_H

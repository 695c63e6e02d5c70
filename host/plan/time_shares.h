// Into what the time of a request goes. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_TIME_SHARES_H
#define DRAVO_HOST_PLAN_TIME_SHARES_H

#include "host/plan/pass_plan.h"

/// In the order in which they come on the line; the drawing of a request shows them so.
struct TimeShare {
    const char *style;  // class of the style sheet
    const char *name;
    double us;
};
QVector<TimeShare> timeShares(const PlannedRequest &request, const RequestCost &cost);
/// Of a whole pass, entry by entry the sum; silences stand once.
QVector<TimeShare> timeShares(const PassPlan &plan);

#endif  // DRAVO_HOST_PLAN_TIME_SHARES_H

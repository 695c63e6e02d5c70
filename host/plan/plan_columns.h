// What is told of a request, column by column: the table and the page show this list. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_PLAN_COLUMNS_H
#define DRAVO_HOST_PLAN_PLAN_COLUMNS_H

#include "host/plan/pass_plan.h"

struct PlanColumn {
    const char *title;      // short, for a terminal
    const char *longTitle;  // for the page
    bool isNumber;          // stands to the right
    QString (*text)(const PlannedRequest &request);
};

/// In the order shown. The number of a request, its variables and its notes are left to whoever shows them.
QVector<PlanColumn> planColumns(bool measured);

/// "18.4", in milliseconds.
QString msText(qint64 us);
/// With its unit, in seconds from 10 s on: "1178.4 ms", "145.0 s".
QString timeText(qint64 us);
/// "+12.3 %": what a pass takes more or less than another.
QString differenceText(qint64 us, qint64 ofUs);

/// What other settings would give, in the order shown.
struct PlanAlternative {
    QString name;
    OtherPass pass;
};
QVector<PlanAlternative> planAlternatives(const PassPlan &plan);

#endif  // DRAVO_HOST_PLAN_PLAN_COLUMNS_H

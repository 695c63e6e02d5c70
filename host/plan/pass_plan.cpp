#include "host/plan/pass_plan.h"

#include <algorithm>

namespace {

constexpr int kMostRequests = 20000;  // a pass of minutes; memory and page stay bounded
constexpr int kManyVariables = 2000;  // from then on curves of other baud rates have every fourth frame limit
constexpr int kCoarseStep = 4;

OtherPass passWith(const QVector<dravo::Variable> &variables, const dravo::LineSettings &line) {
    return {line.baud, line.merge, line.frameLimit, passFigures(variables, line)};
}

dravo::LineSettings withMerge(dravo::LineSettings line, dravo::MergeRule merge) {
    line.merge = merge;
    return line;
}

dravo::LineSettings withBaud(dravo::LineSettings line, int baud) {
    line.baud = baud;
    return line;
}

void addSums(const QVector<dravo::Variable> &variables, PassPlan *plan) {
    const RequestCost cost(plan->line);
    for (const dravo::Variable &variable : variables) {
        plan->values += variable.count;
    }
    for (const PlannedRequest &request : plan->requests) {
        plan->bytesOut += request.bytesOut;
        plan->bytesIn += request.bytesIn;
        plan->gapUs += request.gap() * request.bitsPerElement() / 8 * double(cost.charactersUs(1));
    }
}

void addRequests(const QVector<dravo::Variable> &variables, PassPlan *plan) {
    const VariableIndex index(variables);
    const RequestCost cost(plan->line);
    for (const DryRequest &dry : dryPass(variables, plan->line)) {
        plan->requests.append(plannedRequest(dry, index, cost));
    }
}

LimitCurve limitCurve(const QVector<dravo::Variable> &variables, dravo::LineSettings line, int step, const GoOn &goOn) {
    LimitCurve curve{line.baud, step, {}};
    for (line.frameLimit = 1; line.frameLimit <= kMostFrameLimit && goOn(); line.frameLimit += step) {
        curve.us.append(passFigures(variables, line).us);
    }
    return curve;
}

dravo::LineSettings withBestLimit(dravo::LineSettings line, const LimitCurve &curve) {
    line.frameLimit = curve.limitAt(int(std::min_element(curve.us.begin(), curve.us.end()) - curve.us.begin()));
    return line;
}

}  // namespace

QString mergeName(dravo::MergeRule merge) {
    return merge == dravo::MergeByTime ? QStringLiteral("time") : QStringLiteral("driver");
}

Failure planPass(const QVector<dravo::Variable> &variables, const dravo::LineSettings &line, CurvesOf curves,
                 const GoOn &goOn, PassPlan *plan) {
    PassPlan made;
    made.line = line;
    made.itself = passWith(variables, line);
    if (made.itself.figures.requests > kMostRequests) {
        return Failure(QStringLiteral("a pass takes %1 requests, more than the %2 that a plan shows")
                           .arg(made.itself.figures.requests)
                           .arg(kMostRequests));
    }
    addRequests(variables, &made);
    addSums(variables, &made);
    const bool byTime = line.merge == dravo::MergeByTime;
    made.otherMerge = passWith(variables, withMerge(line, byTime ? dravo::MergeByDriver : dravo::MergeByTime));
    const int step = variables.size() > kManyVariables ? kCoarseStep : 1;
    for (const int baud : kPlanBauds) {
        made.bauds.append(passWith(variables, withBaud(line, baud)));
        if (curves == CurvesOf::AllBauds && baud != line.baud) {
            made.curves.append(limitCurve(variables, withBaud(line, baud), step, goOn));
        }
    }
    made.curves.append(limitCurve(variables, line, 1, goOn));
    if (made.curves.last().us.size() < kMostFrameLimit) {
        return Failure(QStringLiteral("interrupted"));
    }
    made.bestLimit = passWith(variables, withBestLimit(line, made.curves.last()));
    *plan = made;
    return Failure();
}

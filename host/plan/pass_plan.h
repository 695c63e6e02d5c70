// The plan of a pass: its requests, what they cost, and what other settings would cost. Binds the driver for a while,
// so no dravo::Line may exist meanwhile. Communication thread.
#ifndef DRAVO_HOST_PLAN_PASS_PLAN_H
#define DRAVO_HOST_PLAN_PASS_PLAN_H

#include <functional>

#include "host/failure.h"
#include "host/plan/planned_request.h"

constexpr int kMostFrameLimit = 125;
constexpr int kPlanBauds[] = {9600, 19200, 38400, 57600, 115200};

/// A pass with other settings.
struct OtherPass {
    int baud;
    dravo::MergeRule merge;
    int frameLimit;
    PassFigures figures;
};

/// Pass time against frame limit.
struct LimitCurve {
    int baud;
    int step;            // from one frame limit to the next
    QVector<qint64> us;  // entry 0: limit 1
    int limitAt(int entry) const { return 1 + entry * step; }
};

struct PassPlan {
    dravo::LineSettings line;
    QVector<PlannedRequest> requests;
    OtherPass itself{};
    OtherPass otherMerge{};
    OtherPass bestLimit{};       // the smallest of those with the shortest pass
    QVector<OtherPass> bauds;    // kPlanBauds
    QVector<LimitCurve> curves;  // of the plan's own baud rate last, before it of the others in kPlanBauds if asked for
    qint64 values = 0;           // that users see, in a pass
    int bytesOut = 0;
    int bytesIn = 0;
    double gapUs = 0;  // in which bytes went over the line that nobody asked for
    bool isMeasured = false;

    double valuesPerSecond() const { return double(values) * 1e6 / double(qMax<qint64>(1, itself.figures.us)); }
    double gapShare() const { return gapUs / double(qMax<qint64>(1, itself.figures.us)); }
};

/// Told before each longer step, so that it can be stopped. @return false: stop.
using GoOn = std::function<bool()>;

enum class CurvesOf { OwnBaud, AllBauds };

/// variables: usable, at least one. Fails when a pass has more requests than a plan shows, or when it was stopped.
Failure planPass(const QVector<dravo::Variable> &variables, const dravo::LineSettings &line, CurvesOf curves,
                 const GoOn &goOn, PassPlan *plan);

QString mergeName(dravo::MergeRule merge);

#endif  // DRAVO_HOST_PLAN_PASS_PLAN_H

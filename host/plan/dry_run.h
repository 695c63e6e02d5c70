// The requests of a pass as the driver makes them: its own call loop is run against a line on which every answer is
// good and takes no time. Binds the driver, so no other dravo::Line may exist meanwhile. Communication thread.
#ifndef DRAVO_HOST_PLAN_DRY_RUN_H
#define DRAVO_HOST_PLAN_DRY_RUN_H

#include "korvel_dravo_line.h"

struct DryRequest {
    dravo::Elements elements;  // as carried on the line
    QByteArray request;
    QByteArray reply;
};

/// In the order in which they go out. variables: usable. settings: for controller frames.
QVector<DryRequest> dryPass(const QVector<dravo::Variable> &variables, const dravo::LineSettings &settings);

/// A pass without its requests, from the engine's own account: for looking at many settings.
struct PassFigures {
    int requests;
    qint64 us;
};
PassFigures passFigures(const QVector<dravo::Variable> &variables, const dravo::LineSettings &settings);

#endif  // DRAVO_HOST_PLAN_DRY_RUN_H

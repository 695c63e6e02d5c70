// Where the requests of one area of a station stand in its strips. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_STRIP_LAYOUT_H
#define DRAVO_HOST_PLAN_STRIP_LAYOUT_H

#include "host/plan/planned_request.h"

using Requests = QVector<const PlannedRequest *>;

constexpr double kStripWidth = 926;
constexpr double kStripBreak = 16;  // between ranges that are no neighbours

struct StripPlace {
    int row;
    double x;
    double width;
    bool hasLabel;  // there is room for its addresses
};

/// requests: in address order. scale: width of a coil or register; no request is wider than the strip.
QVector<StripPlace> stripPlaces(const Requests &requests, double scale);

/// "100-131".
QString addressesText(const PlannedRequest &request);

#endif  // DRAVO_HOST_PLAN_STRIP_LAYOUT_H

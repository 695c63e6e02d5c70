// Places on an axis. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_PAGE_SCALE_H
#define DRAVO_HOST_PLAN_PAGE_SCALE_H

#include <QtCore/QString>
#include <QtCore/QVector>

/// Round numbers from 0 to at most highest (above 0), about as many as asked for.
QVector<double> linearTicks(double highest, int about);
/// 1, 1.5, 2, 3, 5 and 7 times powers of ten, from the last at or below lowest (above 0) to the first at or above
/// highest.
QVector<double> logarithmicTicks(double lowest, double highest);
/// A time in ms as an axis has it: "500 ms", "2 s".
QString axisTime(double ms);

#endif  // DRAVO_HOST_PLAN_PAGE_SCALE_H

// The reads that fetch everything wanted in the least time on the line. Pure; any thread.
#ifndef DRAVO_LINE_READ_PLAN_H
#define DRAVO_LINE_READ_PLAN_H

#include "line/read_cost.h"
#include "line/refusals.h"

namespace dravo {

/// The requests for one station and element type, ascending. They hold every wanted value that is not refused, each
/// 32-bit value whole in one of them, and read gaps where that is faster. Overlapping values can make them overlap.
/// None is longer than the limits allow, crosses the bound or a wall. Of equally fast plans it is the one with fewer
/// requests; of those the one whose last request begins earliest, and so on backwards.
QVector<ElementRange> planReads(const WantedElements &wanted, const ReadCost &cost, const Refusals &refusals);

}  // namespace dravo

#endif  // DRAVO_LINE_READ_PLAN_H

// Elements as people write them. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_ELEMENT_RANGE_H
#define DRAVO_HOST_PLAN_ELEMENT_RANGE_H

#include "korvel_dravo_line.h"

/// The range in the controller's own notation: "7 100-124", octal where its address texts are.
QString elementRangeText(const dravo::Elements &elements);

#endif  // DRAVO_HOST_PLAN_ELEMENT_RANGE_H

// Settings as the engine works with them. Pure; any thread.
#ifndef DRAVO_LINE_LINE_SETTINGS_H
#define DRAVO_LINE_LINE_SETTINGS_H

#include "korvel_dravo_line.h"

namespace dravo {

/// Every setting in its range and worked out where it is left open, so that no sum of times overflows whatever the host
/// gives.
LineSettings inRange(const LineSettings &given);

}  // namespace dravo

#endif  // DRAVO_LINE_LINE_SETTINGS_H

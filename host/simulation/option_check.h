// Whether a simulated line can be run as its options say. Pure function.
#ifndef DRAVO_OPTION_CHECK_H
#define DRAVO_OPTION_CHECK_H

#include "host/simulation/simulated_line.h"

namespace simulation {

/// The first fault of options that no text form has checked before.
Failure checkOptions(const SimulatedLineOptions &options);

}  // namespace simulation

#endif

// What a list of faults names besides those that are drawn: properties of the line that hold all the time.
#ifndef DRAVO_FAULT_SETTINGS_H
#define DRAVO_FAULT_SETTINGS_H

#include <vector>

#include "host/simulation/simulated_line.h"

namespace simulation {

struct FaultSetting {
    const char *name;
    const char *value;  // what stands behind "name="; empty: nothing does
    const char *help;
    bool repeats;  // may be named more than once
    /// Takes a value into options. @return what is wrong with it; empty: nothing.
    QString (*take)(const QString &value, SimulatedLineOptions *options);
};

const std::vector<FaultSetting> &faultSettings();

}  // namespace simulation

#endif

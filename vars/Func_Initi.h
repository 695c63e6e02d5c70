// How variables and requests enter the driver's lists; the entry points among these are declared for the host.
#ifndef DRAVO_VARS_FUNC_INITI_H
#define DRAVO_VARS_FUNC_INITI_H

#include "korvel_dravo_port.h"

/// Merges one sorted group (one station, one normalised type) into readVarList, in requests of at most limit elements.
/// Caller holds listMutex.
void BitVarReCreat(QList<RW_VAR> *group, int limit);

#endif  // DRAVO_VARS_FUNC_INITI_H

// Builds the cyclic read list. Caller holds listMutex.
#ifndef DRAVO_VARS_CYCLIC_LIST_H
#define DRAVO_VARS_CYCLIC_LIST_H

#include "korvel_dravo_port.h"

/// Sorts by address, ascending and stable; n log n.
void Bubble_Sort(QList<RW_VAR> *list);

/// Merges one sorted group (one station, one normalised type) into readVarList, in requests of at most limit elements.
void BitVarReCreat(QList<RW_VAR> *group, int limit);

#endif  // DRAVO_VARS_CYCLIC_LIST_H

// From the host's variables to the requests of the cyclic list: grouped, sorted, merged. Pure; any thread.
#ifndef DRAVO_VARS_CYCLIC_LIST_H
#define DRAVO_VARS_CYCLIC_LIST_H

#include "korvel_dravo_port.h"

/// The usable variables as records, normalised: one group for each station and normalised type, in ascending order,
/// each sorted by address. No group is empty.
QList<QList<RW_VAR>> sortedGroups(const QList<ReadVarEntry> &entries, const ComInfo &comInfo);

/// Sorts by address, ascending and stable; n log n.
void Bubble_Sort(QList<RW_VAR> *list);

/// Merges a sorted group into requests of at most limit elements and appends them to requests. Only requests appended
/// here grow.
void appendMerged(QList<RW_VAR> &requests, const QList<RW_VAR> &sortedGroup, int limit);

#endif  // DRAVO_VARS_CYCLIC_LIST_H

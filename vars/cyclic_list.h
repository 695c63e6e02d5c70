// From the host's variables to the requests of the cyclic list: sorted and merged. Pure; any thread.
#ifndef DRAVO_VARS_CYCLIC_LIST_H
#define DRAVO_VARS_CYCLIC_LIST_H

#include "korvel_dravo_port.h"

/// The requests that read the usable variables, in the order of sortedVariables: of at most the frame limit, cut at
/// every area bound, with the elements between two variables of a request. n log n; beside the result 16 bytes a
/// variable.
QList<RW_VAR> cyclicRequests(const QList<ReadVarEntry> &entries, const ComInfo &comInfo);

#endif  // DRAVO_VARS_CYCLIC_LIST_H

// Cuts write requests at area bounds, values and all. No lock: the caller makes sure that nobody else changes the list.
#ifndef DRAVO_VARS_WRITE_CUT_H
#define DRAVO_VARS_WRITE_CUT_H

#include "korvel_dravo_port.h"

/// Appends a write whose data are complete, cut at every bound of the address map. A 32-bit value that lies across one
/// becomes two one-register writes, high half first; a bit that is cut off its neighbours goes alone.
void appendDriverWrite(QList<RW_VAR> &list, const RW_VAR &var);

#endif  // DRAVO_VARS_WRITE_CUT_H

// Cuts read requests at area bounds. No lock: the caller makes sure that nobody else changes the list.
#ifndef DRAVO_VARS_REQUEST_MERGE_H
#define DRAVO_VARS_REQUEST_MERGE_H

#include "korvel_dravo_port.h"

/// Whether count elements from address on start below bound and end beyond it.
inline bool crossesBound(int address, qint64 count, int bound) {
    return address < bound && address + count > bound;
}

inline bool crossesBound(const RW_VAR &var, int bound) {
    return crossesBound(var.address, var.count, bound);
}

/// Takes the part below the bound off var, which crosses it and keeps the rest. The data stay as they are.
RW_VAR cutAtBound(RW_VAR &var, int bound);

/// As function_rw_var_add_read and function_rw_var_revise, cut at every bound of the address map. var is only read.
void appendDriverRead(QList<RW_VAR> &list, const RW_VAR &var);
void reviseDriverRead(QList<RW_VAR> &list, const RW_VAR &var);

#endif  // DRAVO_VARS_REQUEST_MERGE_H

// The host's variables in the order in which the cyclic list reads them. Pure; any thread.
#ifndef DRAVO_VARS_CYCLIC_VARIABLES_H
#define DRAVO_VARS_CYCLIC_VARIABLES_H

#include <vector>

#include "korvel_dravo_port.h"

/// A usable variable, normalised. Without its texts, so that sorting moves 16 bytes; those stand at index.
struct CyclicVariable {
    quint64 place;  // own station (0 where the default one is in force), element type, address
    int count;      // elements
    int index;      // in the host's list

    int address() const { return int(place & 0x7FFFFFFFu); }
    int elemType() const { return int(place >> 32 & 0xFFu); }
    quint64 group() const { return place >> 32; }  // variables of one group may share a request
};

/// By station, normalised type and address, ascending; of equal ones the host's earlier one first. Variables whose
/// address does not convert, whose station is 0, whose type or count is impossible are left out.
std::vector<CyclicVariable> sortedVariables(const QList<ReadVarEntry> &entries, const ComInfo &comInfo);

#endif  // DRAVO_VARS_CYCLIC_VARIABLES_H

// Variable records that the driver builds itself, and the settings that shape them. Pure; any thread.
#ifndef DRAVO_VARS_VARIABLE_RECORD_H
#define DRAVO_VARS_VARIABLE_RECORD_H

#include "korvel_dravo_port.h"

/// A record with every field set: the host's mode and node, everything else 0 or empty.
RW_VAR driverRecord(const ComInfo &comInfo);

/// The station that a variable of its own station goes to.
int stationInForce(const ComInfo &comInfo, int ownStation);

/// Most elements of a type in one frame: maxGroupLength, below 1 counted as 1, and eight times it for bit types.
int frameLimit(int maxGroupLength, int elemType);

#endif  // DRAVO_VARS_VARIABLE_RECORD_H

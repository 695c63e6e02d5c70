// The turn of the cyclic list. Communication thread.
#ifndef DRAVO_DRIVER_ROTATION_H
#define DRAVO_DRIVER_ROTATION_H

#include "korvel_dravo_port.h"

/// Moves the head of a list, which is not empty, to its tail. Takes the same time however long the list is. Caller
/// holds listMutex.
void headToTail(QList<RW_VAR> &list);

#endif  // DRAVO_DRIVER_ROTATION_H

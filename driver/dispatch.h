// What DataCom leaves in the result record.
#ifndef DRAVO_DRIVER_DISPATCH_H
#define DRAVO_DRIVER_DISPATCH_H

#include "korvel_dravo_port.h"

/// Copies every field but data, which is emptied. Any thread that owns the records.
void passRetValue(const RW_VAR &from, RW_VAR &to);

#endif  // DRAVO_DRIVER_DISPATCH_H

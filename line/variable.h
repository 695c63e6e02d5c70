// What the driver's calls take of a variable. Pure; any thread.
#ifndef DRAVO_LINE_VARIABLE_H
#define DRAVO_LINE_VARIABLE_H

#include "korvel_dravo_line.h"
#include "korvel_dravo_port.h"

namespace dravo {

/// A read record of a variable whose element address and driver's count are known, not yet normalised; identifiers,
/// node and mode are zero.
RW_VAR readRecord(const Variable &variable);

/// The elements that a record of a driver's write touches.
Elements writtenElements(const RW_VAR &record);

/// The elements that a normalised read record asks for.
Elements elementsOf(const RW_VAR &record);

}  // namespace dravo

#endif  // DRAVO_LINE_VARIABLE_H

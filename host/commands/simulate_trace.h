// The trace of a simulated line, as its controllers see it: what masters send is received. A thread of the line's own.
#ifndef DRAVO_HOST_COMMANDS_SIMULATE_TRACE_H
#define DRAVO_HOST_COMMANDS_SIMULATE_TRACE_H

#include "host/simulation/simulated_line.h"
#include "host/trace/trace_writer.h"

void writeExchange(const SeenExchange &exchange, TraceWriter *writer);

#endif  // DRAVO_HOST_COMMANDS_SIMULATE_TRACE_H

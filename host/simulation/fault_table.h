// The kinds of faults that are drawn for each exchange, one row each: how the operator writes it, and what it does to
// an exchange. Pure functions.
#ifndef DRAVO_SIMULATION_FAULT_TABLE_H
#define DRAVO_SIMULATION_FAULT_TABLE_H

#include <functional>
#include <vector>

#include "host/simulation/line_frame.h"
#include "host/simulation/simulated_line.h"

namespace simulation {

/// One exchange on its way over the line, as far as faults change it.
struct FaultyExchange {
    bool requestLost = false;        // the request does not reach the controller
    bool replyLost = false;          // no reply comes, lost request or not
    std::uint8_t exceptionCode = 0;  // the controller refuses the request with it; 0: it does not
    Bytes reply;
    bool late = false;  // the reply is held back
};

/// A random number from 0 to end - 1.
using DrawBelow = std::function<unsigned(std::size_t end)>;

enum class FaultStage { Request, Reply };

struct FaultRow {
    const char *name;
    FaultKind kind;
    const char *help;
    FaultStage stage;  // Request: before the controller gets it; Reply: once there is a reply
    /// @return whether it changed the exchange.
    bool (*strike)(FaultyExchange &exchange, const DrawBelow &drawBelow);
};

/// In the order in which the faults of a stage strike.
const std::vector<FaultRow> &faultTable();

}  // namespace simulation

#endif

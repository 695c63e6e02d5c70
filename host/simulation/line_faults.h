// Which faults strike an exchange, and how often each has struck. One thread, the relay's; count() from any.
#ifndef DRAVO_LINE_FAULTS_H
#define DRAVO_LINE_FAULTS_H

#include <array>
#include <atomic>
#include <random>

#include "host/simulation/fault_table.h"

namespace simulation {

class LineFaults {
public:
    LineFaults(const std::vector<LineFault> &faults, std::uint32_t seed);

    /// Draws the faults of the next exchange. Each kind is drawn whether or not another one struck before it.
    void drawNext();
    /// Lets the faults of a stage strike, and counts those that change the exchange.
    void strike(FaultStage stage, FaultyExchange *exchange);
    /// For a request that nobody answers: whether it is lost. Counted like any other loss.
    bool losesBroadcast();

    void countDead() { ++counts_[static_cast<std::size_t>(FaultKind::DeadStation)]; }
    std::uint64_t count(FaultKind kind) const { return counts_[static_cast<std::size_t>(kind)]; }

private:
    unsigned drawBelow(std::size_t end);

    std::array<double, kFaultKinds> probabilities_{};
    std::array<bool, kFaultKinds> drawn_{};
    bool losesRequests_ = false;  // of this exchange: a lost answer is a lost request
    std::mt19937 generator_;
    std::array<std::atomic<std::uint64_t>, kFaultKinds> counts_{};
};

}  // namespace simulation

#endif

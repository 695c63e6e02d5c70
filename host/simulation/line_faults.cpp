#include "host/simulation/line_faults.h"

namespace simulation {

LineFaults::LineFaults(const std::vector<LineFault> &faults, std::uint32_t seed) : generator_(seed) {
    for (const LineFault &fault : faults) {
        probabilities_[static_cast<std::size_t>(fault.kind)] = fault.probability;
    }
}

void LineFaults::drawNext() {
    std::uniform_real_distribution<double> draw(0.0, 1.0);
    for (std::size_t kind = 0; kind < drawn_.size(); ++kind) {
        drawn_[kind] = draw(generator_) < probabilities_[kind];
    }
    losesRequests_ = drawBelow(2) == 0;
}

void LineFaults::strike(FaultStage stage, FaultyExchange *exchange) {
    for (const FaultRow &fault : faultTable()) {
        const auto kind = static_cast<std::size_t>(fault.kind);
        if (fault.stage == stage && drawn_[kind] &&
            fault.strike(*exchange, [this](std::size_t end) { return drawBelow(end); })) {
            ++counts_[kind];
        }
    }
    exchange->requestLost = exchange->replyLost && losesRequests_;
}

bool LineFaults::losesBroadcast() {
    const auto kind = static_cast<std::size_t>(FaultKind::NoReply);
    const bool lost = drawn_[kind] && losesRequests_;
    counts_[kind] += lost ? 1 : 0;
    return lost;
}

unsigned LineFaults::drawBelow(std::size_t end) {
    return std::uniform_int_distribution<unsigned>(0, static_cast<unsigned>(end - 1))(generator_);
}

}  // namespace simulation

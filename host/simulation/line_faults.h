// Which faults strike an exchange, and what they do to its reply. One thread, the relay's; count() from any.
#ifndef DRAVO_LINE_FAULTS_H
#define DRAVO_LINE_FAULTS_H

#include <array>
#include <atomic>
#include <random>

#include "host/simulation/line_frame.h"
#include "host/simulation/simulated_line.h"

namespace simulation {

class LineFaults {
public:
    LineFaults(const std::vector<LineFault> &faults, std::uint32_t seed);

    /// Draws the faults of the next exchange. Each kind is drawn whether or not another one struck before it.
    void drawNext();
    /// Asks whether a fault of the exchange changes it, at the moment when it would, and counts it if so.
    bool strikes(FaultKind kind);
    /// For an exchange without reply: whether its request was lost as well.
    bool requestLost() const { return requestLost_; }

    std::uint8_t drawExceptionCode();
    /// The reply as it leaves the line: with the faults that alter its bytes.
    Bytes distorted(Bytes reply);

    void countDead() { ++counts_[static_cast<std::size_t>(FaultKind::DeadStation)]; }
    std::uint64_t count(FaultKind kind) const { return counts_[static_cast<std::size_t>(kind)]; }

private:
    unsigned below(std::size_t end);  // 0 to end - 1

    std::array<double, kFaultKinds> probabilities_{};
    std::array<bool, kFaultKinds> drawn_{};
    bool requestLost_ = false;
    std::mt19937 generator_;
    std::array<std::atomic<std::uint64_t>, kFaultKinds> counts_{};
};

}  // namespace simulation

#endif

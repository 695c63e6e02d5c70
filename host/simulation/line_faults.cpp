#include "host/simulation/line_faults.h"

namespace simulation {

namespace {

constexpr int kHighestStation = 247;

std::uint8_t otherStation(std::uint8_t station, unsigned draw)  // draw: 0 to kHighestStation - 2
{
    return static_cast<std::uint8_t>((station + draw) % kHighestStation + 1U);
}

}  // namespace

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
    requestLost_ = below(2) == 0;
}

bool LineFaults::strikes(FaultKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    if (drawn_[index]) {
        ++counts_[index];
    }
    return drawn_[index];
}

std::uint8_t LineFaults::drawExceptionCode() {
    return static_cast<std::uint8_t>(kIllegalFunction + below(kDeviceFailure));
}

Bytes LineFaults::distorted(Bytes reply) {
    if (strikes(FaultKind::WrongStation)) {
        reply[0] = otherStation(reply[0], below(kHighestStation - 1));
        reply.resize(reply.size() - 2);
        appendCrc(reply);  // so that nothing but the station is wrong
    }
    if (strikes(FaultKind::FlippedBit)) {
        const unsigned bit = below(reply.size() * 8);
        reply[bit / 8] = static_cast<std::uint8_t>(reply[bit / 8] ^ 1U << bit % 8);
    }
    if (strikes(FaultKind::Truncated)) {
        reply.resize(1 + below(reply.size() - 1));  // something is left: no reply at all is another fault
    }
    if (strikes(FaultKind::StrayByte)) {
        reply.insert(reply.begin(), static_cast<std::uint8_t>(below(256)));
    }
    return reply;
}

unsigned LineFaults::below(std::size_t end) {
    return std::uniform_int_distribution<unsigned>(0, static_cast<unsigned>(end - 1))(generator_);
}

}  // namespace simulation

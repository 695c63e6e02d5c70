#include "host/simulation/moving_values.h"

#include <cmath>

namespace simulation {

namespace {

constexpr unsigned kStationLead = 7;
constexpr unsigned kRampSteps = 101;
constexpr unsigned kSineSteps = 50;

unsigned sineAt(std::uint32_t step) {
    const double turn = 2 * 3.14159265358979323846 * (step % kSineSteps) / kSineSteps;
    return static_cast<unsigned>(std::lround(500 + 500 * std::sin(turn)));
}

}  // namespace

void moveValues(ControllerMemory &memory, int station, std::uint32_t step) {
    const std::uint32_t t = step + kStationLead * static_cast<unsigned>(station);
    const unsigned ramp = t % kRampSteps * 10;
    const std::uint32_t thousands = t * 1000U;

    const std::lock_guard<std::mutex> lock(memory.mutex);
    const auto setRegister = [&memory](int address, unsigned value) {
        memory.mapping->tab_registers[address] = static_cast<std::uint16_t>(value & 0xFFFFU);
    };
    for (unsigned bit = 0; bit < 8; ++bit) {
        memory.mapping->tab_bits[bit] = static_cast<std::uint8_t>(t >> bit & 1U);
        memory.mapping->tab_bits[1200 + bit] = t % 8 == bit ? 1 : 0;
    }
    setRegister(100, ramp);
    setRegister(101, sineAt(t));
    setRegister(102, t);
    setRegister(8000, 1U << t % 16);
    setRegister(8500, 1000 - ramp);
    setRegister(9300, thousands >> 16U);
    setRegister(9301, thousands);
    setRegister(12000, t * 100U);
    setRegister(13000, t % 2 == 0 ? 0x5555U : 0xAAAAU);
    setRegister(50000, sineAt(t + kSineSteps / 4));
}

}  // namespace simulation

// The life in a controller's memory. Everything else starts at 0 and stays as a master writes it.
//
//   coils 0 to 7            binary counter, coil 0 toggles at every step
//   coils 1200 to 1207      running light
//   register 100            ramp, 0 to 1000 by tens
//   register 101            sine, 0 to 1000, a period of 10 seconds
//   register 102            counter
//   register 8000           running light in the word's bits
//   register 8500           falling ramp, 1000 to 0 by tens
//   registers 9300, 9301    32-bit counter by thousands, high word first
//   register 12000          counter by hundreds
//   register 13000          all bits toggling
//   register 50000          sine a quarter period ahead of 101
//
// Stations are out of step by seven steps each, so that values tell them apart.
#ifndef DRAVO_MOVING_VALUES_H
#define DRAVO_MOVING_VALUES_H

#include <chrono>
#include <cstdint>

#include "host/simulation/controller_memory.h"

namespace simulation {

constexpr std::chrono::milliseconds kMovingStep{200};

/// Sets the moving values of a station to what they are at a step. Takes the memory's mutex.
void moveValues(ControllerMemory &memory, int station, std::uint32_t step);

}  // namespace simulation

#endif

#include "host/simulation/controller_memory.h"

#include <algorithm>

namespace simulation {

namespace {

bool exists(int address) {
    return address >= 0 && address < kAddressSpace;
}

}  // namespace

ControllerMemory::ControllerMemory()
    : mapping(modbus_mapping_new(kAddressSpace, 0, kAddressSpace, 0), &modbus_mapping_free) {}

std::uint16_t ControllerMemory::holdingRegister(int address) const {
    const std::lock_guard<std::mutex> lock(mutex);
    return exists(address) ? mapping->tab_registers[address] : std::uint16_t{0};
}

void ControllerMemory::setHoldingRegister(int address, std::uint16_t value) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (exists(address)) {
        mapping->tab_registers[address] = value;
    }
}

bool ControllerMemory::coil(int address) const {
    const std::lock_guard<std::mutex> lock(mutex);
    return exists(address) && mapping->tab_bits[address] != 0;
}

void ControllerMemory::setCoil(int address, bool on) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (exists(address)) {
        mapping->tab_bits[address] = on ? 1 : 0;
    }
}

bool ControllerMemory::refuses(int first, int count) const {
    return std::any_of(forbidden.begin(), forbidden.end(), [=](const std::pair<int, int> &range) {
        return first <= range.second && first + count > range.first;
    });
}

}  // namespace simulation

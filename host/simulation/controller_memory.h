// The coils and holding registers of one controller, the whole 16-bit space of each.
#ifndef DRAVO_CONTROLLER_MEMORY_H
#define DRAVO_CONTROLLER_MEMORY_H

#include <modbus.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace simulation {

constexpr int kAddressSpace = 65536;

struct ControllerMemory {
    ControllerMemory();  // all zero; mapping is null when there is no memory for it

    std::uint16_t holdingRegister(int address) const;
    void setHoldingRegister(int address, std::uint16_t value);
    bool coil(int address) const;
    void setCoil(int address, bool on);
    /// Whether a master that asks for these coils or registers is refused.
    bool refuses(int first, int count) const;

    // Whoever looks into mapping holds mutex, so that one request sees and leaves one state. The four functions above
    // take it themselves.
    mutable std::mutex mutex;
    std::unique_ptr<modbus_mapping_t, decltype(&modbus_mapping_free)> mapping;
    std::vector<std::pair<int, int>> forbidden;  // first and last; set before the first request, no mutex
};

}  // namespace simulation

#endif

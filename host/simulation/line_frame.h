// Modbus RTU frames as bytes: where a frame ends, and its CRC. Pure functions.
#ifndef DRAVO_LINE_FRAME_H
#define DRAVO_LINE_FRAME_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace simulation {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kExceptionBit = 0x80;
enum ExceptionCode : std::uint8_t {
    kIllegalFunction = 1,
    kIllegalAddress = 2,
    kIllegalValue = 3,
    kDeviceFailure = 4,
    kDeviceBusy = 6
};

void appendCrc(Bytes &frame);
bool crcFits(const Bytes &frame);

/// Length of the request that starts at the first byte, by its function code; 0: not told yet, or unknown function.
std::size_t requestLength(const Bytes &bytes);
/// The same for a reply.
std::size_t replyLength(const Bytes &bytes);

struct AddressSpan {
    int first;
    int count;
};
/// What a whole request reads or writes.
AddressSpan addressesOf(const Bytes &request);

Bytes exceptionReply(std::uint8_t station, std::uint8_t function, std::uint8_t code);

}  // namespace simulation

#endif

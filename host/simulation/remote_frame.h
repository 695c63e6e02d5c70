// Remote frames as bytes: requests that carry a variable record instead of Modbus addresses. Pure functions.
//
//   0     length of the frame, low byte        11-12  count
//   1     host's identifier                    13-20  two parameters, of no use here
//   2     0: read, else write                  21...  values, write only
//   3     node                                 last   sum of all bytes before it, low byte
//   4     station, 0: all
//   5-6   element type, high byte first
//   7-10  element address
#ifndef DRAVO_REMOTE_FRAME_H
#define DRAVO_REMOTE_FRAME_H

#include <cstdint>
#include <optional>

#include "host/simulation/line_frame.h"

namespace simulation {

struct RemoteFrame {
    bool write;  // a frame that carries values is a write whatever byte 2 says
    std::uint8_t station;
    int elementType;
    std::int32_t address;
    int count;
    Bytes data;  // as the record holds it: bits eight to a byte, or one byte each inside words; least significant first
};

/// The frame in bytes; empty when the length byte or the sum is not right.
std::optional<RemoteFrame> parseRemoteFrame(const Bytes &bytes);

/// Length of the remote frame that starts at the first byte, by its type and count; 0: not told yet, or a frame that
/// only silence can end. A Modbus request is never taken for one: where the type stands it has quantity and byte
/// count, which together are no type.
std::size_t remoteFrameLength(const Bytes &bytes);

}  // namespace simulation

#endif

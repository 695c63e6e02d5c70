// What a node does with a remote frame: it reads or writes the elements of one controller's memory.
#ifndef DRAVO_REMOTE_NODE_H
#define DRAVO_REMOTE_NODE_H

#include "host/simulation/controller_memory.h"
#include "host/simulation/remote_frame.h"

namespace simulation {

/// Carries out one frame, wholly or not at all. Takes the memory's mutex.
/// @return the reply of that memory's controller. Read: station, 1 (coils) or 3, byte count, data, CRC. Write:
///         station, 6, low words of address and count, CRC. Refused: an exception reply.
Bytes serveRemoteFrame(const RemoteFrame &frame, std::uint8_t station, ControllerMemory &memory);

/// The exception reply to a frame.
Bytes remoteException(const RemoteFrame &frame, std::uint8_t station, std::uint8_t code);

}  // namespace simulation

#endif

// What a controller does with a request of either form, and what it answers. The relay's thread.
#ifndef DRAVO_CARRY_OUT_H
#define DRAVO_CARRY_OUT_H

#include "host/simulation/controller.h"
#include "host/simulation/remote_frame.h"

namespace simulation {

int stationOf(const Bytes &request);
int stationOf(const RemoteFrame &request);

/// The exception reply to a request.
Bytes refusal(const Bytes &request, std::uint8_t code);
Bytes refusal(const RemoteFrame &request, std::uint8_t code);

/// Has a request carried out. @return the reply; empty when there is none, also when stop was raised meanwhile.
Bytes carryOut(const Bytes &request, Controller &controller, const StopFlag &stop);
Bytes carryOut(const RemoteFrame &request, Controller &controller, const StopFlag &stop);

void carryOutBroadcast(const Bytes &request, Controller &controller);
void carryOutBroadcast(const RemoteFrame &request, Controller &controller);

}  // namespace simulation

#endif

#include "host/simulation/carry_out.h"

#include "host/simulation/remote_node.h"

namespace simulation {

namespace {

/// Whether the server reads exactly this request. Where function code and length do not agree it would read on, or
/// leave the rest for the next request; of a frame too long for Modbus it always leaves the rest.
bool isLegible(const Bytes &request) {
    return requestLength(request) == request.size() && request.size() <= MODBUS_RTU_MAX_ADU_LENGTH;
}

bool isForbidden(const Bytes &request, const ControllerMemory &memory) {
    const AddressSpan span = addressesOf(request);
    return memory.refuses(span.first, span.count);
}

}  // namespace

int stationOf(const Bytes &request) {
    return request[0];
}

int stationOf(const RemoteFrame &request) {
    return request.station;
}

Bytes refusal(const Bytes &request, std::uint8_t code) {
    return exceptionReply(request[0], request[1], code);
}

Bytes refusal(const RemoteFrame &request, std::uint8_t code) {
    return remoteException(request, request.station, code);
}

Bytes carryOut(const Bytes &request, Controller &controller, const StopFlag &stop) {
    if (isLegible(request)) {
        return isForbidden(request, controller.memory()) ? refusal(request, kIllegalAddress)
                                                         : controller.exchange(request, stop);
    }
    return refusal(request, requestLength(request) == 0 ? kIllegalFunction : kIllegalValue);
}

Bytes carryOut(const RemoteFrame &request, Controller &controller, const StopFlag & /*stop*/) {
    return serveRemoteFrame(request, request.station, controller.memory());
}

void carryOutBroadcast(const Bytes &request, Controller &controller) {
    if (isLegible(request) && !isForbidden(request, controller.memory())) {
        controller.broadcast(request);
    }
}

void carryOutBroadcast(const RemoteFrame &request, Controller &controller) {
    if (request.write) {
        serveRemoteFrame(request, request.station, controller.memory());
    }
}

}  // namespace simulation

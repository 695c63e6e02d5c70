#include "host/simulation/relay.h"

#include <poll.h>

#include <algorithm>

#include "host/simulation/remote_node.h"

namespace simulation {

namespace {

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

/// Whether the server reads exactly this request. Where function code and length do not agree it would read on, or
/// leave the rest for the next request; of a frame too long for Modbus it always leaves the rest.
bool isLegible(const Bytes &request) {
    return requestLength(request) == request.size() && request.size() <= MODBUS_RTU_MAX_ADU_LENGTH;
}

Bytes carryOut(const Bytes &request, Controller &controller, const StopFlag &stop) {
    if (isLegible(request)) {
        return controller.exchange(request, stop);
    }
    return refusal(request, requestLength(request) == 0 ? kIllegalFunction : kIllegalValue);
}

Bytes carryOut(const RemoteFrame &request, Controller &controller, const StopFlag & /*stop*/) {
    return serveRemoteFrame(request, request.station, controller.memory());
}

void carryOutBroadcast(const Bytes &request, Controller &controller) {
    if (isLegible(request)) {
        controller.broadcast(request);
    }
}

void carryOutBroadcast(const RemoteFrame &request, Controller &controller) {
    if (request.write) {
        serveRemoteFrame(request, request.station, controller.memory());
    }
}

}  // namespace

Relay::Relay(const SimulatedLineOptions &options, Controllers &controllers, LineFaults &faults, const StopFlag &stop,
             std::array<MasterPort, 2> &ports)
    : deadStation_(options.deadStation),
      lateBy_(options.lateBy),
      remoteFrames_(options.remoteNode >= 0),
      controllers_(controllers),
      faults_(faults),
      stop_(stop),
      ports_(ports) {}

void Relay::run() {
    bool workLeft = false;
    while (waitForWork(workLeft)) {
        for (MasterPort &port : ports_) {
            port.receive();
            port.sendWhatIsDue();
        }
        workLeft = serveOne();
    }
}

bool Relay::waitForWork(bool workLeft) {
    Clock::time_point deadline = Clock::time_point::max();
    for (const MasterPort &port : ports_) {
        deadline = std::min(deadline, port.nextDeadline());
    }
    int patience = -1;
    if (workLeft) {
        patience = 0;
    } else if (deadline != Clock::time_point::max()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        patience = static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(left, 0, 60000));
    }
    std::array<pollfd, 3> waitFor{
        {{stop_.descriptor(), POLLIN, 0}, {ports_[0].descriptor(), POLLIN, 0}, {ports_[1].descriptor(), POLLIN, 0}}};
    ::poll(waitFor.data(), waitFor.size(), patience);
    return waitFor[0].revents == 0;
}

/// Serves at most one frame, the masters taking turns. @return whether there may be another one.
bool Relay::serveOne() {
    for (std::size_t i = 0; i < ports_.size(); ++i) {
        MasterPort &port = ports_[(turn_ + i) % ports_.size()];
        if (const std::optional<Bytes> frame = port.takeFrame()) {
            turn_ = (turn_ + i + 1) % ports_.size();
            serve(port, *frame);
            return true;
        }
    }
    return false;
}

void Relay::serve(MasterPort &port, const Bytes &frame) {
    const Clock::time_point asked = Clock::now();
    const auto serveRequest = [&](const auto &request) {
        faults_.drawNext();
        if (stationOf(request) == 0) {
            broadcast(request);
            return;
        }
        const FaultyExchange done = exchange(stationOf(request), request);
        if (!done.reply.empty()) {
            port.reply(done.reply, done.late ? asked + lateBy_ : asked);
        }
    };
    // The CRC first: it is the stronger sign. Frames for every node are served: the line leads to one node, whatever
    // number its master knows it by.
    const bool modbus = crcFits(frame);
    const bool wholeModbus = modbus && requestLength(frame) == frame.size();
    if (const auto remote = remoteFrames_ && !wholeModbus ? parseRemoteFrame(frame) : std::nullopt) {
        serveRequest(*remote);
    } else if (modbus) {
        serveRequest(frame);
    }
}

/// One request to one station, with its faults. The reply is empty when none comes.
template <class Request>
FaultyExchange Relay::exchange(int station, const Request &request) {
    FaultyExchange exchange;
    const auto controller = controllers_.find(station);
    if (controller == controllers_.end()) {
        return exchange;
    }
    if (station == deadStation_) {
        faults_.countDead();
        return exchange;
    }
    faults_.strike(FaultStage::Request, &exchange);
    if (!exchange.requestLost) {
        exchange.reply = exchange.exceptionCode != 0 ? refusal(request, exchange.exceptionCode)
                                                     : carryOut(request, *controller->second, stop_);
    }
    if (exchange.replyLost) {
        exchange.reply.clear();
    }
    if (!exchange.reply.empty()) {
        faults_.strike(FaultStage::Reply, &exchange);
    }
    return exchange;
}

/// One request to every station. Of all faults only the loss of the request can be seen.
template <class Request>
void Relay::broadcast(const Request &request) {
    if (faults_.losesBroadcast()) {
        return;
    }
    for (const auto &[station, controller] : controllers_) {
        if (station != deadStation_) {
            carryOutBroadcast(request, *controller);
        }
    }
}

}  // namespace simulation

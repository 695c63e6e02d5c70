#include "host/simulation/relay.h"

#include <poll.h>

#include <algorithm>

#include "host/simulation/carry_out.h"

namespace simulation {

Relay::Relay(const SimulatedLineOptions &options, Controllers &controllers, LineFaults &faults, const StopFlag &stop,
             std::array<MasterPort, 2> &ports)
    : deadStation_(options.deadStation),
      character_(characterTime(options)),
      gap_(options.paced ? frameGap(options) : Clock::duration::zero()),
      remoteFrames_(options.remoteNode >= 0),
      onExchange_(options.onExchange),
      answerTimes_(options),
      controllers_(controllers),
      faults_(faults),
      stop_(stop),
      ports_(ports) {}

void Relay::run() {
    bool workLeft = false;
    while (waitForWork(workLeft)) {
        carryBytes();
        workLeft = serveOne();
    }
}

/// A master always hears and is heard in its own exchange, the other one only between two.
bool Relay::isHeard(std::size_t port) const {
    return port == talker_ || (Clock::now() >= lineFree_ && !ports_[talker_].isTalking());
}

void Relay::carryBytes() {
    const std::size_t other = 1 - talker_;  // goes first, so that the two take turns
    for (const std::size_t port : {other, 1 - other}) {
        if (isHeard(port)) {
            ports_[port].listen();
        }
        ports_[port].carry();
        if (isHeard(port) && ports_[port].isTalking()) {
            talker_ = port;
        }
    }
}

bool Relay::waitForWork(bool workLeft) {
    Clock::time_point deadline = lineFree_ > Clock::now() ? lineFree_ : Clock::time_point::max();
    std::array<pollfd, 3> waitFor{{{stop_.descriptor(), POLLIN, 0}}};
    for (std::size_t port = 0; port < ports_.size(); ++port) {
        deadline = std::min(deadline, ports_[port].nextDeadline());
        const bool listens = isHeard(port) && ports_[port].hasRoom();
        waitFor[1 + port] = {listens ? ports_[port].descriptor() : -1, POLLIN, 0};
    }
    std::chrono::nanoseconds patience{0};
    if (!workLeft) {
        patience = std::clamp<std::chrono::nanoseconds>(deadline - Clock::now(), patience, std::chrono::minutes(1));
    }
    const timespec timeout{static_cast<time_t>(patience.count() / 1000000000), patience.count() % 1000000000};
    ::ppoll(waitFor.data(), waitFor.size(), &timeout, nullptr);
    return waitFor[0].revents == 0;
}

/// Serves at most one frame. @return whether there may be another one.
bool Relay::serveOne() {
    for (MasterPort &port : ports_) {
        if (const std::optional<Bytes> frame = port.takeFrame()) {
            serve(port, *frame);
            return true;
        }
    }
    return false;
}

void Relay::serve(MasterPort &port, const Bytes &frame) {
    const Clock::time_point asked = port.frameEnd();
    lineFree_ = asked + gap_;
    SeenExchange seen;
    seen.request = frame;
    seen.requestEnd = asked;
    const auto serveRequest = [&](const auto &request) {
        seen.isRequest = true;
        faults_.drawNext();
        if (stationOf(request) == 0) {
            broadcast(request);
            return;
        }
        const FaultyExchange done = exchange(stationOf(request), request);
        if (!done.reply.empty()) {
            const Clock::time_point due = answerTimes_.begin(stationOf(request), asked, done.late);
            port.reply(done.reply, due);
            seen.reply = done.reply;
            seen.replyBegin = due;
            seen.late = done.late;
            if (!done.late) {
                lineFree_ = due + character_ * static_cast<Clock::rep>(done.reply.size()) + gap_;
            }
        }
    };
    // The CRC first: it is the stronger sign. Frames for every node are served: the line leads to one node, whatever
    // number its master knows it by.
    const bool modbus = crcFits(frame);
    const bool wholeModbus = modbus && requestLength(frame) == frame.size();
    if (const auto remote = remoteFrames_ && !wholeModbus ? parseRemoteFrame(frame) : std::nullopt) {
        seen.remote = true;
        serveRequest(*remote);
    } else if (modbus) {
        serveRequest(frame);
    }
    if (onExchange_) {
        onExchange_(seen);
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

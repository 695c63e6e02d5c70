// The wire: hands the masters' requests to the controllers and their replies back, one exchange at a time.
//
// A server of the Modbus library listens to a line of its own: it keeps no frame timer, and after a frame for another
// station it takes the next frame for that station's reply. On a shared line, where replies are lost and stations are
// dead, it would fall out of step. A real controller has a frame timer and an address filter; here the relay does
// their work and hands every controller whole frames of its own only.
#ifndef DRAVO_RELAY_H
#define DRAVO_RELAY_H

#include <array>
#include <map>
#include <memory>

#include "host/simulation/answer_times.h"
#include "host/simulation/controller.h"
#include "host/simulation/line_faults.h"
#include "host/simulation/master_port.h"
#include "host/simulation/remote_frame.h"

namespace simulation {

using Controllers = std::map<int, std::unique_ptr<Controller>>;

class Relay {
public:
    /// Everything passed by reference outlives the relay's run().
    Relay(const SimulatedLineOptions &options, Controllers &controllers, LineFaults &faults, const StopFlag &stop,
          std::array<MasterPort, 2> &ports);
    /// The relay's thread; returns when stop is raised.
    void run();

private:
    bool waitForWork(bool workLeft);  // false: stop
    bool isHeard(std::size_t port) const;
    void carryBytes();
    bool serveOne();
    void serve(MasterPort &port, const Bytes &frame);
    template <class Request>
    FaultyExchange exchange(int station, const Request &request);
    template <class Request>
    void broadcast(const Request &request);

    const int deadStation_;
    const Clock::duration character_;
    const Clock::duration gap_;
    const bool remoteFrames_;
    const std::function<void(const SeenExchange &)> onExchange_;
    AnswerTimes answerTimes_;
    Controllers &controllers_;
    LineFaults &faults_;
    const StopFlag &stop_;
    std::array<MasterPort, 2> &ports_;
    std::size_t talker_ = 0;      // the port whose exchange is under way, or was the last one
    Clock::time_point lineFree_;  // when that is over, and the silence after it
};

}  // namespace simulation

#endif

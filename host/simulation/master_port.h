// A master's place on the line: its requests cut into frames, its replies held until they are due. The relay's thread.
#ifndef DRAVO_MASTER_PORT_H
#define DRAVO_MASTER_PORT_H

#include <chrono>
#include <deque>
#include <optional>
#include <utility>

#include "host/simulation/pseudo_terminal.h"

namespace simulation {

using Clock = std::chrono::steady_clock;

/// How a line tells where a frame ends.
struct FrameRules {
    Clock::duration silence;  // 3.5 characters
    bool remoteFrames;        // remote frames are recognised as well as Modbus requests
};

class MasterPort {
public:
    MasterPort(PseudoTerminal terminal, FrameRules rules) : terminal_(std::move(terminal)), rules_(rules) {}

    const std::string &path() const { return terminal_.path(); }
    int descriptor() const { return terminal_.descriptor(); }

    /// Takes in what the master has sent.
    void receive();
    /// The next frame: as soon as it is known to be whole, at the latest after the silence. Call it right after
    /// receive(), or bytes that wait in the device are mistaken for silence.
    std::optional<Bytes> takeFrame();

    /// Lets the master have a reply, not before due. A reply behind one that is held back does not overtake it: the
    /// two arrive together.
    void reply(const Bytes &bytes, Clock::time_point due);
    void sendWhatIsDue();

    /// When this port needs attention though nothing arrives; the end of time when it does not.
    Clock::time_point nextDeadline() const;

private:
    PseudoTerminal terminal_;
    FrameRules rules_;
    Bytes input_;
    Clock::time_point lastInput_;
    struct Output {
        Bytes bytes;
        Clock::time_point due;
    };
    std::deque<Output> output_;  // in the order of due
};

}  // namespace simulation

#endif

// A master's place on the line: its requests cut into frames, its replies held until they are due. The relay's thread.
#ifndef DRAVO_MASTER_PORT_H
#define DRAVO_MASTER_PORT_H

#include <optional>
#include <utility>

#include "host/simulation/device_settings.h"
#include "host/simulation/paced_bytes.h"
#include "host/simulation/pseudo_terminal.h"

namespace simulation {

/// How bytes go over a line, and how it tells where a frame ends.
struct LineRules {
    Clock::duration character;  // zero: bytes take no time
    Clock::duration silence;    // 3.5 characters
    bool remoteFrames;          // remote frames are recognised as well as Modbus requests
    bool echo;                  // the master gets back what it sends
    int baud;                   // what the controllers are set to
    Parity parity;
    bool anySettings;  // it does not matter
};

class MasterPort {
public:
    MasterPort(PseudoTerminal terminal, LineRules rules)
        : terminal_(std::move(terminal)), rules_(rules), sent_(rules.character), output_(rules.character) {}

    const std::string &path() const { return terminal_.path(); }
    int descriptor() const { return terminal_.descriptor(); }

    /// Puts on the wire what the master has sent, unless there is plenty on it: the device then fills up, as any does.
    void listen();
    bool hasRoom() const { return sent_.size() < kMostWaiting; }
    /// Moves the bytes on the wire, both ways.
    void carry();
    /// The next frame: as soon as it is known to be whole, at the latest after the silence. Call it right after
    /// listen() and carry(), or bytes that wait in the device are mistaken for silence.
    std::optional<Bytes> takeFrame();
    /// When the last byte was through that the frames taken so far can have.
    Clock::time_point frameEnd() const { return sent_.lastByte(); }

    /// Lets the master have a reply, not before due. One that is held back is overtaken by those that are due earlier.
    void reply(const Bytes &bytes, Clock::time_point due) { output_.put(bytes, due); }

    /// Whether this master's exchange has begun: something of it is on the wire, or waits for its end.
    bool isTalking() const;
    /// When this port needs attention though nothing arrives; the end of time when it does not.
    Clock::time_point nextDeadline() const;

private:
    static constexpr std::size_t kMostWaiting = 4096;  // bytes, each way; no frame is as long
    bool speaksAsControllers() const;
    bool mayServe() const { return !input_.empty() && output_.size() < kMostWaiting; }

    PseudoTerminal terminal_;
    LineRules rules_;
    PacedBytes sent_;         // by the master, on its way
    bool understood_ = true;  // what it sent last
    Bytes input_;             // arrived, of no frame yet
    PacedBytes output_;       // replies
};

}  // namespace simulation

#endif

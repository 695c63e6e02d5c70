// A pseudo-terminal in raw mode: the relay keeps one end, a master or a controller opens the other by its path.
#ifndef DRAVO_PSEUDO_TERMINAL_H
#define DRAVO_PSEUDO_TERMINAL_H

#include <optional>
#include <string>

#include "host/simulation/file_descriptor.h"
#include "host/simulation/line_frame.h"

namespace simulation {

class PseudoTerminal {
public:
    static Failure open(std::optional<PseudoTerminal> *terminal);

    const std::string &path() const { return path_; }
    int descriptor() const { return relayEnd_.get(); }
    /// Appends what has arrived to bytes, some thousands of them at most; never waits.
    void read(Bytes &bytes) const;
    /// Never waits: what the other end has no room for is lost, as on a wire.
    void write(const Bytes &bytes) const;

private:
    PseudoTerminal() = default;
    FileDescriptor relayEnd_;
    // Held open for the life of the line: without it, a master that closes its device and opens it again would make
    // reads at the relay's end fail with EIO in between.
    FileDescriptor deviceEnd_;
    std::string path_;
};

}  // namespace simulation

#endif

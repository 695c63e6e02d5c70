#include "host/simulation/pseudo_terminal.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

namespace simulation {

namespace {

bool makeRaw(int descriptor) {
    termios settings{};
    if (::tcgetattr(descriptor, &settings) != 0) {
        return false;
    }
    ::cfmakeraw(&settings);
    return ::tcsetattr(descriptor, TCSANOW, &settings) == 0;
}

}  // namespace

std::optional<PseudoTerminal> PseudoTerminal::open(std::string *error) {
    PseudoTerminal terminal;
    std::array<char, 64> path{};
    const auto refused = [error](int reason) {
        if (error != nullptr) {
            *error = systemError("pseudo-terminal", reason);
        }
        return std::nullopt;
    };
    terminal.relayEnd_ = FileDescriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    if (!terminal.relayEnd_.isOpen() || ::grantpt(terminal.descriptor()) != 0 ||
        ::unlockpt(terminal.descriptor()) != 0) {
        return refused(errno);
    }
    if (const int reason = ::ptsname_r(terminal.descriptor(), path.data(), path.size()); reason != 0) {
        return refused(reason);
    }
    terminal.path_ = path.data();
    terminal.deviceEnd_ = FileDescriptor(::open(path.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!terminal.deviceEnd_.isOpen() || !makeRaw(terminal.deviceEnd_.get())) {
        return refused(errno);
    }
    return terminal;
}

void PseudoTerminal::read(Bytes &bytes) const {
    std::array<std::uint8_t, 1024> chunk;
    ssize_t got = 0;
    while ((got = ::read(descriptor(), chunk.data(), chunk.size())) > 0) {
        bytes.insert(bytes.end(), chunk.begin(), chunk.begin() + got);
    }
}

void PseudoTerminal::write(const Bytes &bytes) const {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::write(descriptor(), bytes.data() + done, bytes.size() - done);
        if (put <= 0) {
            return;
        }
        done += static_cast<std::size_t>(put);
    }
}

}  // namespace simulation

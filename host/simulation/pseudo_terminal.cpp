#include "host/simulation/pseudo_terminal.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <utility>

namespace simulation {

namespace {

constexpr std::size_t kMostAtOnce = 4096;  // the other end may write as fast as this one reads

bool makeRaw(int descriptor) {
    termios settings{};
    if (::tcgetattr(descriptor, &settings) != 0) {
        return false;
    }
    ::cfmakeraw(&settings);
    return ::tcsetattr(descriptor, TCSANOW, &settings) == 0;
}

}  // namespace

Failure PseudoTerminal::open(std::optional<PseudoTerminal> *terminal) {
    PseudoTerminal opened;
    std::array<char, 64> path{};
    const std::string name = "pseudo-terminal";
    opened.relayEnd_ = FileDescriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    if (!opened.relayEnd_.isOpen() || ::grantpt(opened.descriptor()) != 0 || ::unlockpt(opened.descriptor()) != 0) {
        return Failure::ofSystem(name, errno);
    }
    if (const int reason = ::ptsname_r(opened.descriptor(), path.data(), path.size()); reason != 0) {
        return Failure::ofSystem(name, reason);
    }
    opened.path_ = path.data();
    opened.deviceEnd_ = FileDescriptor(::open(path.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!opened.deviceEnd_.isOpen() || !makeRaw(opened.deviceEnd_.get())) {
        return Failure::ofSystem(name, errno);
    }
    *terminal = std::move(opened);
    return Failure();
}

void PseudoTerminal::read(Bytes &bytes) const {
    std::array<std::uint8_t, 1024> chunk;
    ssize_t got = 0;
    const std::size_t most = bytes.size() + kMostAtOnce;
    while (bytes.size() < most && (got = ::read(descriptor(), chunk.data(), chunk.size())) > 0) {
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

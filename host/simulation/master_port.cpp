#include "host/simulation/master_port.h"

#include <algorithm>

#include "host/simulation/remote_frame.h"

namespace simulation {

namespace {

/// Length of the whole frame that stands at the front; 0: only silence can tell.
std::size_t wholeFrame(const Bytes &input, bool remoteFrames) {
    if (const std::size_t length = remoteFrames ? remoteFrameLength(input) : 0; length != 0 && length <= input.size()) {
        const Bytes frame(input.begin(), input.begin() + static_cast<std::ptrdiff_t>(length));
        if (parseRemoteFrame(frame)) {
            return length;
        }
    }
    if (const std::size_t length = requestLength(input); length != 0 && length <= input.size()) {
        const Bytes frame(input.begin(), input.begin() + static_cast<std::ptrdiff_t>(length));
        if (crcFits(frame)) {
            return length;
        }
    }
    return 0;
}

}  // namespace

void MasterPort::listen() {
    if (hasRoom()) {
        Bytes bytes;
        terminal_.read(bytes);
        sent_.put(bytes, Clock::now());
        understood_ = bytes.empty() ? understood_ : speaksAsControllers();
    }
}

void MasterPort::carry() {
    const Clock::time_point now = Clock::now();
    const Bytes arrived = sent_.take(now);
    if (rules_.echo) {
        terminal_.write(arrived);
    }
    if (understood_) {
        input_.insert(input_.end(), arrived.begin(), arrived.end());
    }
    if (input_.size() > kMostWaiting) {  // more without a silence is noise
        input_.resize(kMostWaiting);
    }
    if (const Bytes answered = output_.take(now); !answered.empty() && speaksAsControllers()) {
        terminal_.write(answered);
    }
}

/// With other settings every byte is another one, and no checksum fits: it is as if nothing came.
bool MasterPort::speaksAsControllers() const {
    return rules_.anySettings || mayBeSetTo(terminal_.descriptor(), rules_.baud, rules_.parity);
}

std::optional<Bytes> MasterPort::takeFrame() {
    if (!mayServe()) {
        return std::nullopt;
    }
    std::size_t length = wholeFrame(input_, rules_.remoteFrames);
    if (length == 0 && sent_.isEmpty() && Clock::now() - sent_.lastByte() >= rules_.silence) {
        length = input_.size();
    }
    if (length == 0) {
        return std::nullopt;
    }
    const auto end = input_.begin() + static_cast<std::ptrdiff_t>(length);
    Bytes frame(input_.begin(), end);
    input_.erase(input_.begin(), end);
    return frame;
}

bool MasterPort::isTalking() const {
    return !sent_.isEmpty() || !input_.empty() || output_.isMoving(Clock::now());
}

Clock::time_point MasterPort::nextDeadline() const {
    Clock::time_point deadline = std::min(sent_.nextDue(), output_.nextDue());
    if (mayServe() && sent_.isEmpty()) {
        deadline = std::min(deadline, sent_.lastByte() + rules_.silence);
    }
    return deadline;
}

}  // namespace simulation

#include "host/simulation/master_port.h"

#include <algorithm>

#include "host/simulation/remote_frame.h"

namespace simulation {

namespace {

constexpr std::size_t kLongestInput = 4096;  // no frame is as long; more without a silence is noise

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

void MasterPort::receive() {
    const std::size_t before = input_.size();
    terminal_.read(input_);
    if (input_.size() == before) {
        return;
    }
    lastInput_ = Clock::now();
    if (input_.size() > kLongestInput) {
        input_.resize(kLongestInput);
    }
}

std::optional<Bytes> MasterPort::takeFrame() {
    if (input_.empty()) {
        return std::nullopt;
    }
    std::size_t length = wholeFrame(input_, rules_.remoteFrames);
    if (length == 0 && Clock::now() - lastInput_ >= rules_.silence) {
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

void MasterPort::reply(const Bytes &bytes, Clock::time_point due) {
    if (!output_.empty() && due <= output_.back().due) {
        output_.back().bytes.insert(output_.back().bytes.end(), bytes.begin(), bytes.end());
    } else {
        output_.push_back({bytes, due});
    }
    sendWhatIsDue();
}

void MasterPort::sendWhatIsDue() {
    for (; !output_.empty() && output_.front().due <= Clock::now(); output_.pop_front()) {
        terminal_.write(output_.front().bytes);
    }
}

Clock::time_point MasterPort::nextDeadline() const {
    Clock::time_point deadline = Clock::time_point::max();
    if (!input_.empty()) {
        deadline = lastInput_ + rules_.silence;
    }
    if (!output_.empty()) {
        deadline = std::min(deadline, output_.front().due);
    }
    return deadline;
}

}  // namespace simulation

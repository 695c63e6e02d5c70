#include "host/simulation/paced_bytes.h"

#include <algorithm>

namespace simulation {

namespace {
constexpr std::chrono::milliseconds kPortion{1};
}

Clock::time_point PacedBytes::begin() const {
    return std::max(frames_.front().due, lastByte_ - character_ * static_cast<Clock::rep>(taken_));
}

Clock::time_point PacedBytes::through(std::size_t count) const {
    return begin() + character_ * static_cast<Clock::rep>(count);
}

void PacedBytes::put(const Bytes &bytes, Clock::time_point due) {
    if (bytes.empty()) {
        return;
    }
    const auto first = frames_.begin() + (taken_ > 0 ? 1 : 0);
    const auto later = std::upper_bound(first, frames_.end(), due,
                                        [](Clock::time_point at, const Frame &frame) { return at < frame.due; });
    frames_.insert(later, {bytes, due});
}

Bytes PacedBytes::take(Clock::time_point now) {
    Bytes arrived;
    while (!frames_.empty() && through(taken_ + 1) <= now) {
        const Bytes &front = frames_.front().bytes;
        arrived.push_back(front[taken_]);
        const Clock::time_point at = through(taken_ + 1);
        lastByte_ = at;
        if (++taken_ == front.size()) {
            frames_.pop_front();
            taken_ = 0;
        }
        lastTake_ = now;
    }
    return arrived;
}

std::size_t PacedBytes::size() const {
    std::size_t bytes = 0;
    for (const Frame &frame : frames_) {
        bytes += frame.bytes.size();
    }
    return bytes - taken_;
}

Clock::time_point PacedBytes::nextDue() const {
    if (frames_.empty()) {
        return Clock::time_point::max();
    }
    return std::min(through(frames_.front().bytes.size()), std::max(through(taken_ + 1), lastTake_ + kPortion));
}

}  // namespace simulation

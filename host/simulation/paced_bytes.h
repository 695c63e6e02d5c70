// Bytes on their way over a wire, each one character after the one before it. They are handed on one by one, but no
// more often than once a millisecond, as the buffer of a serial converter would, and the last one of a frame on its own
// time: a receiver sees a long frame arrive while it arrives, and its end when it ends. One thread, the relay's.
#ifndef DRAVO_PACED_BYTES_H
#define DRAVO_PACED_BYTES_H

#include <chrono>
#include <deque>

#include "host/simulation/line_frame.h"

namespace simulation {

using Clock = std::chrono::steady_clock;

class PacedBytes {
public:
    /// character: what one takes; zero: no time at all.
    explicit PacedBytes(Clock::duration character) : character_(character) {}

    /// The first byte begins at due, or when what stands before it is through. Nothing overtakes what is due earlier,
    /// nor what has begun.
    void put(const Bytes &bytes, Clock::time_point due);
    /// Takes what is through by now.
    Bytes take(Clock::time_point now);

    bool isEmpty() const { return frames_.empty(); }
    /// Whether a byte is on the wire.
    bool isMoving(Clock::time_point now) const { return !isEmpty() && begin() <= now; }
    std::size_t size() const;
    /// When the last byte that was taken was through.
    Clock::time_point lastByte() const { return lastByte_; }
    /// When take() has something to give; the end of time while nothing is on its way.
    Clock::time_point nextDue() const;

private:
    struct Frame {
        Bytes bytes;
        Clock::time_point due;
    };
    Clock::time_point begin() const;  // of the frame in front
    Clock::time_point through(std::size_t count) const;

    Clock::duration character_;
    std::deque<Frame> frames_;  // in the order of due, but for a front that has begun
    std::size_t taken_ = 0;     // of the front
    Clock::time_point lastByte_;
    Clock::time_point lastTake_;
};

}  // namespace simulation

#endif

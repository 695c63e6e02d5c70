// What a request takes on the line. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_REQUEST_COST_H
#define DRAVO_HOST_PLAN_REQUEST_COST_H

#include "korvel_dravo_line.h"

/// A request is sent, seen after a silence, answered after the turnaround, and the next one waits for a silence again.
/// A silence is 3.5 characters, above 19200 baud 1.75 ms. Times in microseconds, rounded up.
class RequestCost {
public:
    /// Looks at baud rate, bits per character and reply delay.
    explicit RequestCost(const dravo::LineSettings &line);

    qint64 charactersUs(int characters) const { return roundedUp(characters * perCharacter_); }
    qint64 silenceUs() const { return roundedUp(silence_); }
    qint64 turnaroundUs() const { return turnaroundUs_; }
    qint64 us(int bytesOut, int bytesIn) const {
        return roundedUp((bytesOut + bytesIn) * perCharacter_ + 2 * silence_ + turnaroundUs_ * baud_);
    }

private:
    // In units of a microsecond divided by the baud rate: sums round once.
    qint64 roundedUp(qint64 exact) const { return (exact + baud_ - 1) / baud_; }

    qint64 baud_;
    qint64 perCharacter_;
    qint64 silence_;
    qint64 turnaroundUs_;
};

#endif  // DRAVO_HOST_PLAN_REQUEST_COST_H

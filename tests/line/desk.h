// A host at its desk: the line engine on a wire in virtual time, run for as long as a test asks.
#ifndef DRAVO_TESTS_LINE_DESK_H
#define DRAVO_TESTS_LINE_DESK_H

#include "korvel_dravo_line.h"
#include "line/wire.h"

/// A usable variable; label is its address text.
inline dravo::Variable variable(int station, int elemType, const char *address, int count = 1) {
    dravo::Variable made;
    made.label = made.addressText = QString::fromLatin1(address);
    made.station = station;
    made.elemType = elemType;
    made.count = count;
    dravo::resolve(&made);
    return made;
}

/// A line of 9600 baud whose controllers answer after 5 ms, and the settings for it.
inline dravo::LineSettings at9600() {
    dravo::LineSettings settings;
    settings.baud = 9600;
    settings.startSilenceUs = 0;
    return settings;
}

inline WireTimes wireAt9600() {
    WireTimes times;
    times.baud = 9600;
    times.timeoutUs = 500000;
    times.lifetimeUs = 1500000;
    times.replyFirstUs = times.replyLastUs = 5000;
    return times;
}

class Desk {
public:
    Desk(const dravo::LineSettings &settings, const WireFaults &faults, const WireTimes &times, unsigned seed = 1)
        : wire(faults, times, {1, 2, 3}, Draws(seed)), line(settings, 0) {
        wire.alarm = [](const std::string &) {};
        wire.written = [](int, bool, int, quint16, quint16) {};
    }

    /// Runs until some time, or until an event for which stop is true.
    void run(Us untilUs, const std::function<bool(const dravo::LineEvent &)> &stop = nullptr) {
        bool stopped = false;
        while (now < untilUs && !stopped) {
            wire.advance(now);
            line.received(wire.take(now), now);
            const dravo::Step step = line.next(now);
            for (dravo::LineEvent event; line.takeEvent(&event);) {
                stopped = stopped || (stop && stop(event));
            }
            if (step.kind == dravo::Step::Send) {
                wire.send(step.bytes, now, ++sent);
                line.sent(now);
            } else {
                now = std::min(untilUs, std::max(now + 1, std::min(step.untilUs, wire.nextArrivalUs())));
            }
        }
    }
    Wire wire;
    dravo::Line line;
    Us now = 0;
    int sent = 0;
};

#endif  // DRAVO_TESTS_LINE_DESK_H

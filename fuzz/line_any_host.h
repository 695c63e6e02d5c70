// A host that does whatever it may, with settings of any value and at any times, on a line where anything arrives. Of
// values it knows nothing; it looks at what holds whatever happens:
// - a frame that goes out is one that Modbus knows, and the line is silent and free before it;
// - nothing happens before the time that the engine named, which is never now;
// - every operation has exactly one outcome; events are bounded; a reply that is believed has arrived;
// - what is said of stations, values and counts agrees with each other.
#ifndef DRAVO_FUZZ_LINE_ANY_HOST_H
#define DRAVO_FUZZ_LINE_ANY_HOST_H

#include <set>

#include "korvel_dravo_line.h"
#include "line/draws.h"
#include "line/line_times.h"
#include "line/wire.h"

class AnyHost {
public:
    explicit AnyHost(Draws draws);
    /// Until the draws are spent.
    void run();

private:
    static dravo::LineSettings drawnSettings(Draws *draws);
    bool drawnVariable(dravo::Variable *variable);
    void act();
    void watch();
    void ask();
    void write(dravo::Variable variable, bool everywhere);
    void asked(int operation);
    void restart();
    void receive(const QByteArray &bytes);
    void answer();
    QByteArray drawnAnswer();
    void letTimePass();
    void letMuchHappen();
    /// Asks the engine once what is to be done.
    void settle(Us us);
    void settleUntilNothingIsDue();
    void take(const dravo::Step &step);
    /// The request that the controller gets: of a remote frame what its node makes of it, element addresses as they
    /// are.
    QByteArray atController(const QByteArray &frame) const;
    void looksRight(const QByteArray &frame) const;
    /// @return how many.
    int takeEvents();
    void take(const dravo::LineEvent &event);
    void takeExchange(const dravo::LineEvent &event);
    void look();
    int below(int bound) { return int(draws_.between(0, bound - 1)); }

    Draws draws_;
    Us nowUs_;
    const dravo::LineSettings given_;
    const dravo::LineSettings settings_;  // the nearest in range
    const dravo::LineTimes times_;
    dravo::Line line_;
    QVector<dravo::Variable> watched_;
    std::set<int> pending_;
    std::set<int> down_;
    bool takesEvents_ = true;
    bool tookEvents_ = true;     // all of them, the last time
    bool eventsMissed_ = false;  // some since the last sending
    bool judged_ = true;         // the last sending
    bool untouched_ = true;      // since untilUs_ was named
    Us untilUs_;
    Us freeUs_;  // the line, as far as the own sendings say
    QByteArray sent_;
    QByteArray received_;  // the end of it
};

#endif  // DRAVO_FUZZ_LINE_ANY_HOST_H

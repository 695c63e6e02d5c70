// A host over the line engine on a wire in virtual time. After every exchange:
// - a value that was read is one that its controller held at that address between the sending and the reply;
// - a write that is done was carried out after it was asked for; none was carried out after an overlapping later one
//   was sent; the neighbours of a written bit stay as they are;
// - a value that is shown as fresh is one that its controller held not much longer ago than it says, and not before a
//   write of it was done;
// - every write and one-shot read has exactly one outcome; an exception that is believed was meant.
#ifndef DRAVO_TESTS_LINE_SOAK_H
#define DRAVO_TESTS_LINE_SOAK_H

#include <set>
#include <string>

#include "korvel_dravo_line.h"
#include "line/wire.h"

class Soak {
public:
    /// Draws line, controllers and host. seed: how a report names it.
    Soak(Draws draws, unsigned seed);
    explicit Soak(unsigned seed) : Soak(Draws(seed), seed) {}

    /// Runs until so many frames went out, or the draws are spent. @return what went wrong, empty: nothing.
    std::string run(int exchanges);

    int exchanges() const { return exchanges_; }
    /// Whether altered bytes got a right CRC, which ended the run: nothing can be said of what followed.
    bool hadAccident() const { return hadAccident_; }
    const dravo::LineCounts &counts() const { return line_.statistics().line().counts; }
    /// How often each kind of event came.
    long operationsDone() const { return operationsDone_; }
    /// How to see it again.
    std::string report() const;

private:
    struct Asked {
        bool write;
        int station;
        bool coils;
        int address;  // Modbus
        QByteArray values;
        int bit;  // of the register; below 0: whole values
        Us us;
    };

    static WireFaults drawnFaults(Draws &random);
    static dravo::LineSettings drawnSettings(Draws &random, const WireTimes &times, const WireFaults &faults);
    void watchSomething();
    void askSomething();
    void askWrite(int station);
    void askBroadcast();
    void askOnceRead(int station);
    void asked(int operation, const Asked &what);
    void turn(bool asks);
    void lookWhetherHealthy();
    void wait(Us untilUs);
    void look();
    void lookAt(const dravo::LineEvent &event);
    void lookAtShown();
    void lookAtRead(const dravo::LineEvent &event);
    void lookAtOperation(const dravo::LineEvent &event);
    Us windowStart(const dravo::LineEvent &event) const;
    bool wasCarriedOut(const Asked &asked);
    void fail(const std::string &what);
    int below(int bound) { return int(wire_.between(0, bound - 1)); }

    const unsigned seed_;
    Draws random_;
    const WireTimes times_;
    const WireFaults faults_;
    Wire wire_;
    const dravo::LineSettings settings_;
    dravo::Line line_;
    const bool byteByByte_;
    const int asksEvery_;  // so many turns
    Us nowUs_ = 0;
    int exchanges_ = 0;
    int requests_ = 1;         // that were new
    std::set<int> bitWrites_;  // those that write one bit of a register back
    struct Sending {
        QByteArray frame;
        Us us;  // when the engine asked for it
        Us endUs;
        int request;
    };
    std::deque<Sending> sendings_;
    std::map<int, Asked> pending_;
    std::map<std::pair<int, int>, Us> writtenUs_;  // by station and register, when the last write was done
    quint16 nextValue_ = 1;
    std::set<int> down_;
    QVector<dravo::Variable> watched_;
    long operationsDone_ = 0;
    bool hadAccident_ = false;
    std::string failure_;
};

#endif  // DRAVO_TESTS_LINE_SOAK_H

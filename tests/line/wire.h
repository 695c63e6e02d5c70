// A serial line with controllers in virtual time, drawn from a seed or bytes: replies come late, in order or
// overtaking, bytes are lost, cut, altered and added, frames of others pass by, an adapter may echo, stations die and
// come back. Every sending is answered once at most, and within the reply lifetime or never.
#ifndef DRAVO_TESTS_LINE_WIRE_H
#define DRAVO_TESTS_LINE_WIRE_H

#include <QtCore/QByteArray>

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "line/draws.h"

using Us = qint64;

inline int byteOf(const QByteArray &bytes, int index) {
    return uchar(bytes.at(index));
}
inline int wordOf(const QByteArray &bytes, int index) {
    return byteOf(bytes, index) << 8 | byteOf(bytes, index + 1);
}

/// What the line does, as probabilities and times.
struct WireFaults {
    double late = 0;        // a reply comes between the timeout and the lifetime
    double lastMoment = 0;  // of these, those at its very end
    double lost = 0;        // a request or a reply does not come through
    double cut = 0;         // a reply loses its head or its tail
    double altered = 0;     // bits of a request or a reply change
    double stray = 0;       // bytes that belong to nothing, around and inside replies
    double foreign = 0;     // whole frames of other stations and functions
    double exception = 0;   // a request is refused for no lasting reason
    double doubled = 0;     // a reply comes twice
    bool remote = false;    // requests are remote frames, and a node hands them on
    bool overtaking = false;
    bool echo = false;
    int deadStation = 0;        // from time to time
    int refusedFrom = 1 << 20;  // registers from this address on do not exist
    int refusedTo = 1 << 20;    // up to this one
};

struct WireTimes {
    int baud = 19200;
    Us timeoutUs = 200000;
    Us lifetimeUs = 600000;
    Us turnaroundUs = 100000;
    Us replyFirstUs = 2000;  // usual time to a reply's first byte
    Us replyLastUs = 20000;
};

/// One coil or register. Those that nobody writes count on by themselves and say in every value who they are.
class Cell {
public:
    explicit Cell(int name = -1, quint16 value = 0) : name_(name), changes_{{INT64_MIN, value}} {}
    quint16 at(Us us) const;
    void write(quint16 value, Us us);
    bool heldBetween(quint16 value, Us from, Us to) const;
    /// Whether some write put a value there between from and to that is right.
    bool writtenBetween(Us from, Us to, const std::function<bool(quint16)> &right) const;
    int latestWriter = 0;  // sender's number of the latest write sent to it

private:
    static constexpr Us kStepUs = 50000;
    int name_;  // below 0: it stays as it is written
    std::deque<std::pair<Us, quint16>> changes_;
};

class Wire {
public:
    Wire(const WireFaults &faults, const WireTimes &times, const std::vector<int> &stations, Draws draws);

    void setFaults(const WireFaults &faults) { faults_ = faults; }
    /// What reaches the controller: of a remote frame the request that its node makes of it.
    QByteArray atController(const QByteArray &frame) const;

    /// The host's bytes go out at us. writer: grows with each new request, not with its retries.
    void send(const QByteArray &frame, Us us, int writer);
    /// Whatever happens up to us happens.
    void advance(Us us);
    /// The bytes that are there at us and have not been taken.
    QByteArray take(Us us);
    /// When the next byte will be there; INT64_MAX: nothing is on its way.
    Us nextArrivalUs() const;

    Cell &holdingRegister(int station, int address) { return registers_[{station, address}]; }
    Cell &coil(int station, int address) { return coils_[{station, address}]; }
    bool wasRefused(const QByteArray &request, int exceptionCode, Us since) const;
    /// Whether somebody put this frame on the line lately, be it an echo or a stranger's: altered bytes get a right CRC
    /// by accident once in 65,536 times.
    bool isGenuine(const QByteArray &frame) const;
    Us charactersUs(qint64 characters) const { return characters * 11 * 1000000 / times_.baud; }
    bool chance(double probability) { return draws_.chance(probability); }
    Us between(Us from, Us to) { return draws_.between(from, to); }

    /// Called for what a controller must never be made to do.
    std::function<void(const std::string &)> alarm;
    /// Called for every coil and register that a controller writes.
    std::function<void(int writer, bool coil, int address, quint16 before, quint16 after)> written;
    /// The last frames, for whoever looks for the cause.
    const std::deque<std::string> &log() const { return log_; }
    void note(const std::string &what, const QByteArray &bytes, Us us);

private:
    struct Request {
        Us us;  // when the controller carries it out
        Us replyUs;
        Us lastUs;  // the reply has arrived by then or never
        int station;
        QByteArray frame;
        int writer;
    };
    void at(Us us, std::function<void()> happens) { events_.emplace(us, std::move(happens)); }
    void schedule(int station, const QByteArray &frame, Us endUs, int writer);
    void carryOut(const Request &request);
    QByteArray replyTo(const Request &request);
    QByteArray answer(const Request &request);
    void writeCells(const Request &request);
    void noteGenuine(const QByteArray &frame);
    void putOnLine(const QByteArray &bytes, Us us, Us lastUs = INT64_MAX);
    QByteArray distorted(QByteArray reply);
    void flip(QByteArray &bytes);
    bool isDead(int station, Us us) const;

    WireFaults faults_;
    const WireTimes times_;
    std::vector<int> stations_;
    Draws draws_;
    std::map<std::pair<int, int>, Cell> registers_, coils_;
    std::multimap<Us, std::function<void()>> events_;
    std::map<int, Us> lastReplyUs_;  // of a station, where replies keep their order
    Us busyUntilUs_ = 0;             // one frame at a time
    std::deque<std::pair<Us, char>> bytes_;
    struct Refusal {
        QByteArray frame;
        int code;
        Us us;
    };
    std::deque<Refusal> refusals_;
    std::deque<QByteArray> genuine_;  // whole frames as they left whoever sent them
    std::deque<std::string> log_;
};

#endif  // DRAVO_TESTS_LINE_WIRE_H

// A two-wire serial line with simulated controllers on it: the line that the host drives when it is given no port.
//
// Every station is a Modbus RTU server in a thread of its own. A relay joins them, by pseudo-terminals, with two
// devices that masters open like any serial port. Every function may be called from any thread.
#ifndef DRAVO_SIMULATED_LINE_H
#define DRAVO_SIMULATED_LINE_H

#include <QtCore/QStringList>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/simulation/device_settings.h"
#include "host/simulation/failure.h"

/// What can go wrong with one exchange. The faults of an exchange are drawn independently of each other.
enum class FaultKind {
    NoReply,         // even odds: the request is lost and not carried out, or only its reply is lost
    LateReply,       // the reply is held back, see SimulatedLineOptions::lateBy
    Truncated,       // one or more bytes are missing at the end
    FlippedBit,      // one bit anywhere, CRC included
    WrongStation,    // another station number under a CRC that fits it
    StrayByte,       // one byte more, before the reply
    ExceptionReply,  // the request is refused with an exception and not carried out
    DeadStation,     // counted only: which station is dead is said by SimulatedLineOptions::deadStation
};
constexpr int kFaultKinds = 8;  // how each is written and what it does: fault_table.cpp, fault_settings.cpp

struct LineFault {
    FaultKind kind;
    double probability;  // 0 to 1, for each exchange
};

/// Time from the silence that ends a request to the first byte of its answer, drawn for each request.
struct Turnaround {
    int ms = 5;        // 0 to kLongestTurnaroundMs, and so is jitterMs
    int jitterMs = 0;  // up to so much more
};
constexpr int kLongestTurnaroundMs = 60000;

/// Coils and registers of a station, by Modbus address, that it refuses with exception 2.
struct ForbiddenRange {
    int station;
    int first;
    int last;
};

/// What a master sent, and what it gets.
struct SeenExchange {
    std::vector<std::uint8_t> request;
    std::chrono::steady_clock::time_point requestEnd;
    bool isRequest = false;  // else a frame that no controller takes for one
    bool remote = false;
    std::vector<std::uint8_t> reply;  // empty: none
    std::chrono::steady_clock::time_point replyBegin;
    bool late = false;
};

struct SimulatedLineOptions {
    std::vector<int> stations;  // one controller each, 1 to 247
    int baud = 19200;
    simulation::Parity parity = simulation::Parity::Even;
    bool anySettings = false;  // masters are heard whatever baud rate and parity they set; else what goes over the line
                               // with others than these is lost
    int bitsPerCharacter = 11;  // start, data, parity and stop bits, 10 to 12
    bool paced = true;          // bytes and turnarounds take their time; false: none
    Turnaround turnaround;
    std::map<int, Turnaround> turnaroundOf;  // by station, where it has one of its own
    std::vector<LineFault> faults;           // each kind at most once
    int deadStation = 0;                     // never answers and carries nothing out; 0: none
    std::chrono::milliseconds delay{0};      // every answer comes so much later, also where nothing is paced
    std::vector<ForbiddenRange> forbidden;
    bool echo = false;                       // the masters' adapters return what they send
    std::uint32_t seed = 1;                  // the same seed and the same requests give the same faults
    std::chrono::milliseconds lateBy{1100};  // a late reply begins so long after its request: a little more than the
                                             // master's timeout, so that it arrives during the next request
    int remoteNode = -1;                     // 0 to 255: the line carries remote frames as well; -1: it does not
    std::function<void(const SeenExchange &)>
        onExchange;      // empty: nobody looks on. Called by a thread of the line's own
    bool moving = true;  // values move about five times a second, as moving_values.h lists them
};

class SimulatedLine {
public:
    /// Starts the line. Fails when an option is unusable or the system refuses.
    static simulation::Failure start(const SimulatedLineOptions &options, std::unique_ptr<SimulatedLine> *line);
    /// Stops the threads and closes the devices, at once.
    ~SimulatedLine();
    SimulatedLine(const SimulatedLine &) = delete;
    SimulatedLine &operator=(const SimulatedLine &) = delete;

    /// Path of the device that the host opens as its serial port.
    const std::string &device() const;
    /// Path of a device for a second master on the same line. Exchanges of the two masters take turns: what one sends
    /// while the other's is under way goes on the wire after it.
    const std::string &secondDevice() const;

    /// The memory of a controller, behind its back. Addresses are Modbus addresses, 0 to 65535. What does not exist
    /// (station, address) reads as 0 and takes nothing.
    std::uint16_t holdingRegister(int station, int address) const;
    void setHoldingRegister(int station, int address, std::uint16_t value);
    bool coil(int station, int address) const;
    void setCoil(int station, int address, bool on);

    /// How many exchanges a fault of this kind has changed so far.
    std::uint64_t faultCount(FaultKind kind) const;

private:
    struct Parts;
    explicit SimulatedLine(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts_;
};

/// Reads a list of faults such as "noreply=0.1,late=0.05,dead=3,refuse=2:100-119,echo,seed=7" into the fields of
/// options that it names; an empty text names none. @return what is wrong with each bad item; options are then as they
/// were.
QStringList parseFaults(const QString &text, SimulatedLineOptions *options);

/// What such a list may name: "noreply=P  what it does", a line each.
QString faultListHelp();

/// Reads turnarounds such as "5,2:20,3:8~4": of every station, of station 2, and of station 3 from 8 to 12 ms. A
/// failure names every bad item and leaves options as they are.
QStringList parseTurnarounds(const QString &text, SimulatedLineOptions *options);

/// Everything in options that names a station which is not on the line, in words; empty: nothing does.
std::vector<std::string> namedStrangers(const SimulatedLineOptions &options);

#endif

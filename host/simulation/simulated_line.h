// A two-wire serial line with simulated controllers on it: the line that the host drives when it is given no port.
//
// Every station is a Modbus RTU server in a thread of its own. A relay joins them, by pseudo-terminals, with two
// devices that masters open like any serial port. Every function may be called from any thread.
#ifndef DRAVO_SIMULATED_LINE_H
#define DRAVO_SIMULATED_LINE_H

#include <QtCore/QString>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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
constexpr int kFaultKinds = 8;  // how each is written and what it does: fault_table.cpp

struct LineFault {
    FaultKind kind;
    double probability;  // 0 to 1, for each exchange
};

struct SimulatedLineOptions {
    std::vector<int> stations;               // one controller each, 1 to 247
    int baud = 19200;                        // sets the silence that ends a frame; bytes are not slowed down to it
    std::vector<LineFault> faults;           // each kind at most once
    int deadStation = 0;                     // never answers and carries nothing out; 0: none
    std::uint32_t seed = 1;                  // the same seed and the same requests give the same faults
    std::chrono::milliseconds lateBy{1100};  // a late reply comes so long after its request: a little more than the
                                             // master's timeout, so that it arrives during the next request
    int remoteNode = -1;                     // 0 to 255: the line carries remote frames as well; -1: it does not
    bool moving = true;                      // values move about five times a second, as moving_values.h lists them
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
    /// Path of a device for a second master on the same line. Exchanges of the two masters take turns.
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

/// Reads a list of faults such as "noreply=0.1,late=0.05,dead=3,seed=7" into the faults, deadStation and seed of
/// options; an empty text names none. A failure names every bad item and leaves options as they are.
simulation::Failure parseFaults(const QString &text, SimulatedLineOptions *options);

/// What such a list may name: "noreply=P  what it does", a line each.
QString faultListHelp();

#endif

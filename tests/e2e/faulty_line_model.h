// What a line with faults may and may not do to the controllers and to the host: the rules, kept beside the driver.
#ifndef DRAVO_TESTS_E2E_FAULTY_LINE_MODEL_H
#define DRAVO_TESTS_E2E_FAULTY_LINE_MODEL_H

#include <deque>
#include <map>
#include <set>
#include <tuple>
#include <vector>

#include "host/simulation/simulated_line.h"
#include "korvel_dravo_port.h"

/// One coil or register of one controller.
struct Cell {
    int station;
    bool isCoil;
    int address;  // Modbus address
    bool operator<(const Cell &other) const {
        return std::tie(station, isCoil, address) < std::tie(other.station, other.isCoil, other.address);
    }
};

/// A write of some bits of a cell.
struct CellWrite {
    Cell cell;
    int mask;
    int value;
};

/// One of the driver's requests as the test asked for it.
struct Queued {
    int ownerId;
    int itemId;
    int station;
    std::vector<CellWrite> writes;  // empty for a read
};

/// The controllers' memory as seen from behind, exchange by exchange.
class MemoryWatch {
public:
    MemoryWatch(SimulatedLine &line, const std::set<Cell> &cells);
    /// Faults of the exchange just made: cells that changed although the request did not write them, or to another
    /// value.
    std::vector<std::string> changesBeyond(const std::vector<CellWrite> &allowed);
    /// Whether the controller ever held this value, or the host wrote it (noteWritten).
    bool everHeld(const Cell &cell, int value) const { return held_.at(cell).count(value) != 0; }
    void noteWritten(const CellWrite &write);
    const std::map<Cell, int> &now() const { return now_; }

private:
    int read(const Cell &cell) const;
    SimulatedLine &line_;
    std::map<Cell, int> now_;
    std::map<Cell, std::set<int>> held_;
};

/// The callback that a finished request gives: 0 for none.
int expectedCallback(const std::deque<Queued> &queue, bool failed);

/// Takes the head off, and after a failure what is queued under the same identifiers and station.
void finish(std::deque<Queued> &queue, bool failed);

#endif  // DRAVO_TESTS_E2E_FAULTY_LINE_MODEL_H

// What a line with faults may and may not do to the controllers and to the host: the rules, kept beside the driver.
#ifndef DRAVO_TESTS_E2E_FAULTY_LINE_MODEL_H
#define DRAVO_TESTS_E2E_FAULTY_LINE_MODEL_H

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <tuple>

#include "host/simulation/simulated_line.h"

using Cell = std::tuple<int, bool, int>;  // station; coil or register; Modbus address

struct CellWrite {
    int mask;  // the bits that are written
    int value;
};

/// One of the driver's requests as the test asked for it.
struct Queued {
    int ownerId;
    int itemId;
    int station;
    std::map<Cell, CellWrite> writes;  // empty for a read
    bool hasIdentifiersOf(const Queued &other) const { return ownerId == other.ownerId && itemId == other.itemId; }
};

/// Takes the head off, and after a failure what is queued under the same identifiers and station. @return the callbacks
/// that this gives: success stays unreported while a later request has the same identifiers.
inline std::vector<std::tuple<int, int, int>> finishHead(std::deque<Queued> &queue, bool failed) {
    const Queued head = queue.front();
    queue.pop_front();
    const auto isLater = [&](const Queued &entry) { return entry.hasIdentifiersOf(head); };
    if (!failed && std::any_of(queue.begin(), queue.end(), isLater)) {
        return {};
    }
    const auto isDropped = [&](const Queued &entry) {
        return failed && isLater(entry) && entry.station == head.station;
    };
    queue.erase(std::remove_if(queue.begin(), queue.end(), isDropped), queue.end());
    return {{head.ownerId, head.itemId, failed ? 2 : 1}};
}

/// The controllers' memory as seen from behind, exchange by exchange.
class MemoryWatch {
public:
    explicit MemoryWatch(SimulatedLine &line) : line_(line) {}
    void add(const Cell &cell) { held_[cell].insert(now_[cell] = read(cell)); }
    /// Whether the controller ever held this value, or the host wrote it.
    bool everHeld(const Cell &cell, int value) const { return held_.at(cell).count(value) != 0; }
    void noteWritten(const Cell &cell, int value) { held_[cell].insert(value); }

    /// The cells that an exchange changed although its request did not write them, or to another value.
    std::vector<Cell> changesBeyond(const std::map<Cell, CellWrite> &writes) {
        std::vector<Cell> strange;
        for (auto &[cell, before] : now_) {
            const int after = read(cell);
            const auto write = writes.find(cell);
            const int mask = write == writes.end() ? 0 : write->second.mask;
            if (after != before && (mask == 0 || after != ((before & ~mask) | (write->second.value & mask)))) {
                strange.push_back(cell);
            }
            before = after;
            held_[cell].insert(after);
        }
        return strange;
    }

private:
    int read(const Cell &cell) const {
        const auto [station, isCoil, address] = cell;
        return isCoil ? int(line_.coil(station, address)) : int(line_.holdingRegister(station, address));
    }
    SimulatedLine &line_;
    std::map<Cell, int> now_;
    std::map<Cell, std::set<int>> held_;
};

#endif  // DRAVO_TESTS_E2E_FAULTY_LINE_MODEL_H

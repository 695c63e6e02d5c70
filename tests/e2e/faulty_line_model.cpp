#include "e2e/faulty_line_model.h"

#include <algorithm>

namespace {

bool sameIdentifiers(const Queued &a, const Queued &b) {
    return a.ownerId == b.ownerId && a.itemId == b.itemId;
}

std::string nameOf(const Cell &cell) {
    return (cell.isCoil ? "coil " : "register ") + std::to_string(cell.address) + " of station " +
           std::to_string(cell.station);
}

}  // namespace

MemoryWatch::MemoryWatch(SimulatedLine &line, const std::set<Cell> &cells) : line_(line) {
    for (const Cell &cell : cells) {
        now_[cell] = read(cell);
        held_[cell] = {now_[cell]};
    }
}

int MemoryWatch::read(const Cell &cell) const {
    return cell.isCoil ? int(line_.coil(cell.station, cell.address))
                       : int(line_.holdingRegister(cell.station, cell.address));
}

std::vector<std::string> MemoryWatch::changesBeyond(const std::vector<CellWrite> &allowed) {
    std::vector<std::string> faults;
    for (auto &[cell, before] : now_) {
        const int after = read(cell);
        const Cell &place = cell;
        const auto write = std::find_if(allowed.begin(), allowed.end(), [&](const CellWrite &candidate) {
            return !(candidate.cell < place) && !(place < candidate.cell);
        });
        const int expected = write == allowed.end() ? before : (before & ~write->mask) | (write->value & write->mask);
        if (after != before && after != expected) {
            faults.push_back(nameOf(cell) + ": " + std::to_string(before) + " became " + std::to_string(after));
        }
        before = after;
        held_[cell].insert(after);
    }
    return faults;
}

void MemoryWatch::noteWritten(const CellWrite &write) {
    held_[write.cell].insert(write.value);
}

int expectedCallback(const std::deque<Queued> &queue, bool failed) {
    if (failed) {
        return 2;
    }
    const bool later = std::any_of(queue.begin() + 1, queue.end(),
                                   [&](const Queued &entry) { return sameIdentifiers(entry, queue.front()); });
    return later ? 0 : 1;
}

void finish(std::deque<Queued> &queue, bool failed) {
    const Queued head = queue.front();
    queue.pop_front();
    if (failed) {
        queue.erase(std::remove_if(queue.begin(), queue.end(),
                                   [&](const Queued &entry) {
                                       return sameIdentifiers(entry, head) && entry.station == head.station;
                                   }),
                    queue.end());
    }
}

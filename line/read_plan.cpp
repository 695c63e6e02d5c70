#include "line/read_plan.h"

#include <algorithm>

#include "korvel_dravo_elements.h"

namespace dravo {

namespace {

// Elements that one request has to hold together.
struct Unit {
    int first;
    int end;
};

enum { SingleRefused = 1, PairRefused = 2 };

// Which values are refused, by address.
QByteArray refusedValues(const WantedElements &wanted, const QVector<RefusedRange> &refused) {
    QByteArray values(wanted.end() - wanted.begin(), '\0');
    for (const RefusedRange &entry : refused) {
        const int end = int(qMin<qint64>(wanted.end(), entry.range.end()));
        for (int address = qMax(wanted.begin(), entry.range.first - 1); address < end; ++address) {
            const int index = address - wanted.begin();
            const int single = entry.covers(address, 1) ? SingleRefused : 0;
            const int pair = entry.covers(address, 2) ? PairRefused : 0;
            values[index] = char(values.at(index) | single | pair);
        }
    }
    return values;
}

// The units that lie in no other, so that both their first addresses and their ends ascend.
QVector<Unit> unitsToRead(const WantedElements &wanted, const QVector<RefusedRange> &refused) {
    const QByteArray values = refusedValues(wanted, refused);
    QVector<Unit> units;
    int pairsEnd = 0;
    for (int address = wanted.begin(); address < wanted.end(); ++address) {
        const int value = uchar(values.at(address - wanted.begin()));
        if (wanted.isPair(address) && !(value & PairRefused)) {
            const Unit pair = {address, address + 2};
            units.append(pair);
            pairsEnd = pair.end;
        } else if (wanted.isSingle(address) && address >= pairsEnd && !(value & SingleRefused)) {
            const Unit single = {address, address + 1};
            units.append(single);
        }
    }
    return units;
}

// The best way to read all units before one.
struct Best {
    qint64 cost;
    int requests;
    int lastFrom;  // index of the first unit in the last request
};

bool isBetter(const Best &a, const Best &b) {
    return a.cost != b.cost ? a.cost < b.cost : a.requests < b.requests;
}

QVector<int> wallsAndBound(const QVector<int> &walls, int bound) {
    QVector<int> all = walls;
    all.insert(std::lower_bound(all.begin(), all.end(), bound), bound);
    return all;
}

// Entry i: the best way to read the first i units. Units ascend, so some best plan gives each request consecutive ones.
QVector<Best> bestWays(const QVector<Unit> &units, const WantedElements &wanted, const ReadCost &cost,
                       const QVector<int> &walls) {
    const ReadLimits &limits = wanted.limits();
    const Best nothing = {0, 0, 0};
    QVector<Best> ways(units.size() + 1, nothing);
    int wallsBelow = 0;
    for (int last = 0; last < units.size(); ++last) {
        const int end = units.at(last).end;
        while (wallsBelow < walls.size() && walls.at(wallsBelow) < end) {
            ++wallsBelow;
        }
        const int lastWall = wallsBelow == 0 ? kNoBound : walls.at(wallsBelow - 1);
        const int earliest = qMax(end - limits.elementsPerRead, lastWall);
        const auto withRequestFrom = [&](int from) -> Best {
            const Best &before = ways.at(from);
            const int dataBytes = limits.dataBytes(end - units.at(from).first);
            const Best way = {before.cost + cost.exact(dataBytes), before.requests + 1, from};
            return way;
        };
        // The last unit alone is always allowed: it crosses a wall only where one lies within a 32-bit value.
        Best best = withRequestFrom(last);
        for (int from = last - 1; from >= 0 && units.at(from).first >= earliest; --from) {
            const Best way = withRequestFrom(from);
            if (!isBetter(best, way)) {
                best = way;
            }
        }
        ways[last + 1] = best;
    }
    return ways;
}

}  // namespace

QVector<ElementRange> planReads(const WantedElements &wanted, const ReadCost &cost, const Refusals &refusals) {
    const QVector<Unit> units = unitsToRead(wanted, refusals.refused);
    const QVector<int> walls = wallsAndBound(refusals.walls, wanted.limits().bound);
    const QVector<Best> ways = bestWays(units, wanted, cost, walls);
    QVector<ElementRange> requests(ways.last().requests);
    int unitsEnd = units.size();
    for (int i = requests.size() - 1; i >= 0; --i) {
        const int from = ways.at(unitsEnd).lastFrom;
        requests[i].first = units.at(from).first;
        requests[i].count = units.at(unitsEnd - 1).end - units.at(from).first;
        unitsEnd = from;
    }
    return requests;
}

}  // namespace dravo

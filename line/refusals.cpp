#include "line/refusals.h"

#include <algorithm>

namespace dravo {

namespace {

bool comesBefore(const RefusedRange &a, const RefusedRange &b) {
    return a.range.first != b.range.first ? a.range.first < b.range.first : a.range.count < b.range.count;
}

// Whether a plan with these walls would have cut the request. A wall within a 32-bit value at either end does not
// count: the neighbour that shares the value may have brought it since.
bool isCut(const ElementRange &request, const QVector<int> &walls, const WantedElements &wanted) {
    const int end = int(request.end());
    const int from = request.first + (wanted.isPair(request.first) ? 1 : 0);
    const int to = end - (wanted.isPair(end - 2) ? 1 : 0);
    const QVector<int>::const_iterator wall = std::upper_bound(walls.constBegin(), walls.constEnd(), from);
    return wall != walls.constEnd() && *wall < to;
}

void addWalls(QVector<int> &walls, const QVector<int> &added) {
    for (const int wall : added) {
        const QVector<int>::iterator place = std::lower_bound(walls.begin(), walls.end(), wall);
        if (place == walls.end() || *place != wall) {
            walls.insert(place, wall);
        }
    }
}

bool isAnythingWanted(const ElementRange &range, const WantedElements &wanted) {
    for (int address = range.first; address < range.end(); ++address) {
        if (wanted.isWanted(address)) {
            return true;
        }
    }
    return false;
}

QVector<int> gapEnds(const ElementRange &range, const WantedElements &wanted) {
    QVector<int> ends;
    for (int address = range.first + 1; address < range.end(); ++address) {
        if (wanted.isWanted(address) != wanted.isWanted(address - 1)) {
            ends.append(address);
        }
    }
    return ends;
}

QVector<int> boundariesInside(const ElementRange &range, const WantedElements &wanted) {
    QVector<int> boundaries;
    for (int address = range.first + 1; address < range.end(); ++address) {
        if (wanted.isBoundary(address)) {
            boundaries.append(address);
        }
    }
    return boundaries;
}

bool endsAt(const QVector<RefusedRange> &refused, int wall) {
    return std::any_of(refused.constBegin(), refused.constEnd(), [wall](const RefusedRange &entry) {
        return entry.range.first == wall || entry.range.end() == wall;
    });
}

}  // namespace

int Refusals::placeOf(const ElementRange &range) const {
    const RefusedRange entry = {range, false, 0};
    return int(std::lower_bound(refused.constBegin(), refused.constEnd(), entry, comesBefore) - refused.constBegin());
}

Learnt Refusals::learn(const ElementRange &request, const WantedElements &wanted, qint64 retryUs) {
    if (request.first < 0 || request.first >= wanted.end() || request.count > kMostElementsPerRead ||
        !isAnythingWanted(request, wanted)) {
        return NothingNew;
    }
    const int place = placeOf(request);
    if (place < refused.size() && refused.at(place).range == request) {
        refused[place].nextRetryUs = retryUs;
        return NothingNew;
    }
    if (isCut(request, walls, wanted)) {
        return NothingNew;
    }
    // Walls at both ends too: the parts merge with nothing else, so each further refusal is about less.
    addWalls(walls, QVector<int>() << request.first << int(request.end()));
    const QVector<int> gaps = gapEnds(request, wanted);
    if (!gaps.isEmpty()) {
        addWalls(walls, gaps);
        return GapsCut;
    }
    const QVector<int> boundaries = boundariesInside(request, wanted);
    addWalls(walls, boundaries);
    const bool isPair = request.count == 2 && wanted.isPair(request.first);
    if (!boundaries.isEmpty() && !isPair) {
        return VariablesCut;
    }
    const RefusedRange entry = {request, !boundaries.isEmpty(), retryUs};
    refused.insert(place, entry);
    return LeftOut;
}

bool Refusals::takeBack(const ElementRange &answered) {
    QVector<int> ends;
    const ElementRange firstInside = {answered.first, 0};
    int place = placeOf(firstInside);
    while (place < refused.size() && refused.at(place).range.first < answered.end()) {
        const ElementRange range = refused.at(place).range;
        if (range.end() <= answered.end()) {
            ends << range.first << int(range.end());
            refused.remove(place);
        } else {
            ++place;
        }
    }
    for (const int wall : ends) {
        if (!endsAt(refused, wall)) {
            walls.erase(std::remove(walls.begin(), walls.end(), wall), walls.end());
        }
    }
    return !ends.isEmpty();
}

Refusals Refusals::stillOfUse(const WantedElements &wanted) const {
    Refusals kept;
    for (const int wall : walls) {
        if (wanted.isWanted(wall - 1) || wanted.isWanted(wall)) {
            kept.walls.append(wall);
        }
    }
    for (const RefusedRange &entry : refused) {
        const QVector<int> boundaries = boundariesInside(entry.range, wanted);
        if (!entry.onlyPair && !boundaries.isEmpty()) {
            addWalls(kept.walls, boundaries);
        } else if (isAnythingWanted(entry.range, wanted) && entry.range.count <= wanted.limits().elementsPerRead) {
            kept.refused.append(entry);
        }
    }
    return kept;
}

}  // namespace dravo

#include "line/request_walls.h"

#include <algorithm>
#include <limits>

#include "korvel_dravo_elements.h"

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

// Where the range stands among the refused ones, or would.
int placeOf(const QVector<RefusedRange> &refused, const ElementRange &range) {
    const RefusedRange entry = {range, false, 0};
    return int(std::lower_bound(refused.constBegin(), refused.constEnd(), entry, comesBefore) - refused.constBegin());
}

bool isAt(const QVector<RefusedRange> &refused, int place, const ElementRange &range) {
    return place < refused.size() && refused.at(place).range.first == range.first &&
           refused.at(place).range.count == range.count;
}

bool endsAt(const QVector<RefusedRange> &refused, int wall) {
    return std::any_of(refused.constBegin(), refused.constEnd(), [wall](const RefusedRange &entry) {
        return entry.range.first == wall || entry.range.end() == wall;
    });
}

// A 32-bit value across the bound is read in halves.
bool isLeftOut(int first, int count, int bound, const RefusedRange &entry) {
    const bool isHalved = count == 2 && first + 1 == bound;
    return entry.covers(first, count) || (isHalved && (entry.covers(first, 1) || entry.covers(bound, 1)));
}

// What the variables of today leave of the lessons of one group.
Refusals stillOfUse(const Refusals &known, const WantedElements &wanted) {
    Refusals kept;
    for (const int wall : known.walls) {
        if (wanted.isWanted(wall - 1) || wanted.isWanted(wall)) {
            kept.walls.append(wall);
        }
    }
    for (const RefusedRange &entry : known.refused) {
        const QVector<int> boundaries = boundariesInside(entry.range, wanted);
        if (!entry.onlyPair && !boundaries.isEmpty()) {
            addWalls(kept.walls, boundaries);
        } else if (isAnythingWanted(entry.range, wanted) && entry.range.count <= wanted.limits().elementsPerRead) {
            kept.refused.append(entry);
        }
    }
    return kept;
}

}  // namespace

QString Lesson::text(const ReadGroup &group) const {
    static const char *const kConsequences[] = {"", "its gaps are no longer read", "its variables are read one by one",
                                                "no longer read, tried again rarely"};
    if (kind == Nothing) {
        return QString();
    }
    const QString last = range.count > 1 ? QString::fromLatin1(" to %1").arg(range.end() - 1) : QString();
    return QString::fromLatin1("station %1 refuses %2%3 of type %4: %5")
        .arg(QString::number(group.station), QString::number(range.first), last, QString::number(group.elemType),
             QString::fromLatin1(kConsequences[kind]));
}

Lesson RequestWalls::refused(const ReadGroup &group, const ElementRange &request, const WantedElements &wanted,
                             qint64 nowUs) {
    Lesson lesson = {Lesson::Nothing, request};
    if (request.first < 0 || request.count > kMostElementsPerRead || !isAnythingWanted(request, wanted)) {
        return lesson;
    }
    Refusals &known = groups_[group];
    const int place = placeOf(known.refused, request);
    if (isAt(known.refused, place, request)) {
        known.refused[place].nextRetryUs = nowUs + retryAfterUs_;
        return lesson;
    }
    if (isCut(request, known.walls, wanted)) {
        return lesson;
    }
    const bool isPair = request.count == 2 && wanted.isPair(request.first);
    const QVector<int> gaps = gapEnds(request, wanted);
    const QVector<int> boundaries = boundariesInside(request, wanted);
    if (!gaps.isEmpty()) {
        lesson.kind = Lesson::GapsCut;
        addWalls(known.walls, gaps);
    } else if (!boundaries.isEmpty() && !isPair) {
        lesson.kind = Lesson::VariablesCut;
        addWalls(known.walls, boundaries);
    } else {
        lesson.kind = Lesson::Refused;
        const RefusedRange entry = {request, !boundaries.isEmpty(), nowUs + retryAfterUs_};
        known.refused.insert(place, entry);
        addWalls(known.walls, boundaries);
    }
    // Walls at both ends: the parts merge with nothing else, so each further refusal is about less.
    addWalls(known.walls, QVector<int>() << request.first << int(request.end()));
    return lesson;
}

bool RequestWalls::answered(const ReadGroup &group, const ElementRange &request) {
    const QMap<ReadGroup, Refusals>::iterator found = groups_.find(group);
    if (found == groups_.end()) {
        return false;
    }
    Refusals &known = found.value();
    QVector<int> ends;
    const ElementRange firstInside = {request.first, 0};
    int place = placeOf(known.refused, firstInside);
    while (place < known.refused.size() && known.refused.at(place).range.first < request.end()) {
        const ElementRange range = known.refused.at(place).range;
        if (range.end() <= request.end()) {
            ends << range.first << int(range.end());
            known.refused.remove(place);
        } else {
            ++place;
        }
    }
    for (const int wall : ends) {
        if (!endsAt(known.refused, wall)) {
            known.walls.erase(std::remove(known.walls.begin(), known.walls.end(), wall), known.walls.end());
        }
    }
    return !ends.isEmpty();
}

void RequestWalls::wantedChanged(const QMap<ReadGroup, WantedElements> &wanted) {
    QMap<ReadGroup, Refusals> kept;
    for (QMap<ReadGroup, Refusals>::const_iterator group = groups_.constBegin(); group != groups_.constEnd(); ++group) {
        if (wanted.contains(group.key())) {
            kept.insert(group.key(), stillOfUse(group.value(), wanted.value(group.key())));
        }
    }
    groups_ = kept;
}

bool RequestWalls::isRefused(const ReadGroup &group, const WantedRange &variable) const {
    const QVector<RefusedRange> refused = of(group).refused;
    const int step = variable.unit == 2 ? 2 : 1;
    const int bound = addressMapBound(group.elemType);
    const qint64 end = qint64(variable.address) + variable.count;
    const ElementRange firstNear = {qMax(variable.address, 0) - kMostElementsPerRead, 0};
    int place = placeOf(refused, firstNear);
    for (; place < refused.size() && refused.at(place).range.first < end; ++place) {
        const RefusedRange &entry = refused.at(place);
        const qint64 from = qMax<qint64>(variable.address, entry.range.first - 1);
        for (qint64 value = from + (from - variable.address) % step; value < qMin(end, entry.range.end());
             value += step) {
            if (isLeftOut(int(value), step, bound, entry)) {
                return true;
            }
        }
    }
    return false;
}

qint64 RequestWalls::nextRetryUs() const {
    qint64 next = std::numeric_limits<qint64>::max();
    for (const Refusals &known : groups_) {
        for (const RefusedRange &entry : known.refused) {
            next = qMin(next, entry.nextRetryUs);
        }
    }
    return next;
}

bool RequestWalls::takeDueRetry(qint64 nowUs, ReadGroup *group, ElementRange *range) {
    const qint64 due = nextRetryUs();
    if (due > nowUs) {
        return false;
    }
    for (QMap<ReadGroup, Refusals>::iterator known = groups_.begin(); known != groups_.end(); ++known) {
        for (RefusedRange &entry : known.value().refused) {
            if (entry.nextRetryUs == due) {
                entry.nextRetryUs = nowUs + retryAfterUs_;
                *group = known.key();
                *range = entry.range;
                return true;
            }
        }
    }
    return false;
}

}  // namespace dravo

#include "line/request_walls.h"

#include <limits>

#include "korvel_dravo_elements.h"

namespace dravo {

namespace {

// A 32-bit value across the bound is read in halves.
bool isLeftOut(int first, int count, int bound, const RefusedRange &entry) {
    const bool isHalved = count == 2 && first + 1 == bound;
    return entry.covers(first, count) || (isHalved && (entry.covers(first, 1) || entry.covers(bound, 1)));
}

}  // namespace

QString Lesson::text(const ReadGroup &group) const {
    static const char *const kConsequences[] = {"", "its gaps are no longer read", "its variables are read one by one",
                                                "no longer read, tried again rarely"};
    if (learnt == NothingNew) {
        return QString();
    }
    const ElementType *type = findElementType(group.elemType);
    const int base = type ? type->textBase : 10;  // as its addresses are written
    const QString last =
        range.count > 1 ? QString::fromLatin1(" to %1").arg(QString::number(range.end() - 1, base)) : QString();
    return QString::fromLatin1("station %1 refuses %2%3 of type %4: %5")
        .arg(QString::number(group.station), QString::number(range.first, base), last, QString::number(group.elemType),
             QString::fromLatin1(kConsequences[learnt]));
}

Lesson RequestWalls::refused(const ReadGroup &group, const ElementRange &request, const WantedElements &wanted,
                             qint64 nowUs) {
    const Lesson lesson = {groups_[group].learn(request, wanted, nowUs + retryAfterUs_), request};
    return lesson;
}

bool RequestWalls::answered(const ReadGroup &group, const ElementRange &request) {
    const QMap<ReadGroup, Refusals>::iterator found = groups_.find(group);
    return found != groups_.end() && found.value().takeBack(request);
}

void RequestWalls::wantedChanged(const QMap<ReadGroup, WantedElements> &wanted) {
    QMap<ReadGroup, Refusals> kept;
    for (QMap<ReadGroup, Refusals>::const_iterator group = groups_.constBegin(); group != groups_.constEnd(); ++group) {
        if (wanted.contains(group.key())) {
            kept.insert(group.key(), group.value().stillOfUse(wanted.value(group.key())));
        }
    }
    groups_ = kept;
}

bool RequestWalls::isRefused(const ReadGroup &group, const WantedRange &variable) const {
    const Refusals known = of(group);
    const QVector<RefusedRange> &refused = known.refused;
    const int step = variable.unit == 2 ? 2 : 1;
    const int bound = addressMapBound(group.elemType);
    const qint64 end = variable.address + variable.elements();
    const ElementRange firstNear = {qMax(variable.address, 0) - kMostElementsPerRead, 0};
    int place = known.placeOf(firstNear);
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

bool RequestWalls::anyRefused(int station, ReadGroup *group, ElementRange *range) const {
    for (QMap<ReadGroup, Refusals>::const_iterator known = groups_.constBegin(); known != groups_.constEnd(); ++known) {
        if (known.key().station == station && !known.value().refused.isEmpty()) {
            *group = known.key();
            *range = known.value().refused.at(0).range;
            return true;
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

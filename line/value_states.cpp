#include "line/value_states.h"

#include <algorithm>
#include <limits>

#include "line/wanted_elements.h"

namespace dravo {

namespace {

const int kBitsInWord = 16;
const qint64 kNeverUs = std::numeric_limits<qint64>::min();

bool isBitInWord(const Variable &variable) {
    return variable.elements.elemType != variable.elemType && variable.kind == BitValue;
}

int elementsPerValue(const Variable &variable) {
    return isBitInWord(variable) || variable.count < 1 ? 1 : qMax(variable.elements.count / variable.count, 1);
}

// The elements of one value, counted from the first that the variable covers.
ElementRange elementsOfValue(const Variable &variable, int index) {
    const int each = elementsPerValue(variable);
    const ElementRange elements = {isBitInWord(variable) ? (variable.firstBit + index) / kBitsInWord : each * index,
                                   each};
    return elements;
}

// For each value, whether all of its elements are marked.
QVector<bool> wholeValues(const Variable &variable, const QVector<bool> &marked) {
    QVector<bool> whole;
    for (int i = 0; i < variable.count; ++i) {
        const ElementRange elements = elementsOfValue(variable, i);
        const QVector<bool>::const_iterator first = marked.constBegin() + elements.first;
        whole.append(std::find(first, first + elements.count, false) == first + elements.count);
    }
    return whole;
}

}  // namespace

ValueState::ValueState() : condition(NeverRead), ageUs(-1), code(0), exceptionCode(0) {}

QString conditionName(Condition condition) {
    static const char *const kNames[] = {"fresh", "stale", "never read", "failing", "refused", "station down"};
    return QLatin1String(kNames[condition]);
}

ValueStates::Group ValueStates::groupOf(const Elements &elements) {
    return qint64(elements.station) << 32 | quint32(elements.elemType);
}

void ValueStates::cutAt(Segments *segments, int address) {
    Segments::iterator at = segments->upperBound(address);
    if (at == segments->begin()) {
        return;
    }
    --at;
    if (at.key() < address && at.value().end > address) {
        Segment behind = at.value();
        at.value().end = address;
        segments->insert(address, behind);
    }
}

// Makes segments of exactly these elements, new ones where there were none.
ValueStates::Segments *ValueStates::cutOut(const Elements &elements) {
    Segments *segments = &groups_[groupOf(elements)];
    const int end = elements.address + elements.count;
    cutAt(segments, elements.address);
    cutAt(segments, end);
    int covered = elements.address;
    const Segment unknown = {end, kNeverUs, 0, false, 0, 0};
    for (Segments::iterator at = segments->lowerBound(elements.address); at != segments->end() && at.key() < end;) {
        const int next = at.key();
        const int nextEnd = at.value().end;
        ++at;
        if (next > covered) {
            Segment gap = unknown;
            gap.end = next;
            segments->insert(covered, gap);
        }
        covered = nextEnd;
    }
    if (covered < end) {
        segments->insert(covered, unknown);
    }
    return segments;
}

template <typename Change>
void ValueStates::changeEach(const Elements &elements, Change change) {
    Segments *segments = cutOut(elements);
    Segments::iterator at = segments->lowerBound(elements.address);
    for (; at != segments->end() && at.key() < elements.address + elements.count; ++at) {
        change(&at.value());
    }
}

void ValueStates::readFinished(const Elements &elements, bool good, int code, int exceptionCode, qint64 nowUs) {
    if (elements.count < 1) {
        return;
    }
    if (!good) {
        changeEach(elements, [=](Segment *segment) {
            segment->code = code;
            segment->exceptionCode = exceptionCode;
        });
        return;
    }
    Segments *segments = cutOut(elements);
    const int end = elements.address + elements.count;
    Segments::iterator at = segments->lowerBound(elements.address);
    while (at != segments->end() && at.key() < end) {
        at = segments->erase(at);
    }
    const Segment read = {end, nowUs, ++reads_, false, 0, 0};
    segments->insert(elements.address, read);
}

void ValueStates::becameUnsure(const Elements &elements) {
    // Where nothing was ever read, nothing can become stale.
    const QList<Group> groups = groups_.keys();
    for (int i = 0; i < groups.size() && elements.count > 0; ++i) {
        Elements written = elements;
        written.station = elements.station == 0 ? int(groups.at(i) >> 32) : elements.station;
        if (groupOf(written) == groups.at(i)) {
            changeEach(written, [](Segment *segment) { segment->unsure = true; });
        }
    }
}

void ValueStates::keepOnly(const QVector<Variable> &variables) {
    QMap<Group, Segments> kept;
    for (int i = 0; i < variables.size(); ++i) {
        const Elements &elements = variables.at(i).elements;
        const Segments *known = cutOut(elements);
        Segments &segments = kept[groupOf(elements)];
        Segments::const_iterator at = known->lowerBound(elements.address);
        for (; at != known->constEnd() && at.key() < elements.address + elements.count; ++at) {
            segments.insert(at.key(), at.value());
        }
    }
    groups_ = kept;
}

ValueState ValueStates::stateOf(const Variable &variable, qint64 nowUs, qint64 staleAfterUs) const {
    const Elements &elements = variable.elements;
    const int end = elements.address + elements.count;
    ValueState state;
    QVector<bool> read(elements.count, false);
    qint64 oldestUs = nowUs;
    bool unsure = false;
    qint64 readBefore = 0;
    const Segments segments = groups_.value(groupOf(elements));
    Segments::const_iterator at = segments.upperBound(elements.address);
    if (at != segments.constBegin()) {
        --at;
    }
    for (; at != segments.constEnd() && at.key() < end; ++at) {
        const Segment &segment = at.value();
        const int first = qMax(at.key(), elements.address);
        const int last = qMin(segment.end, end);
        if (first >= last) {
            continue;
        }
        if (segment.code != 0 && state.code == 0) {
            state.code = segment.code;
            state.exceptionCode = segment.exceptionCode;
        }
        const bool isInValue = (first - elements.address) % elementsPerValue(variable) != 0;
        unsure = unsure || segment.unsure || (isInValue && segment.read != readBefore);
        readBefore = segment.read;
        if (segment.goodAtUs != kNeverUs) {
            oldestUs = qMin(oldestUs, segment.goodAtUs);
            for (int i = first; i < last; ++i) {
                read[i - elements.address] = true;
            }
        }
    }
    state.valuesRead = wholeValues(variable, read);
    const bool allRead = !state.valuesRead.contains(false);
    state.ageUs = allRead ? nowUs - oldestUs : -1;
    const bool stale = unsure || state.ageUs > staleAfterUs;
    state.condition = state.code != 0 ? Failing : !allRead ? NeverRead : stale ? Stale : Fresh;
    return state;
}

}  // namespace dravo

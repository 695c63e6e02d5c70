#include "host/tags/value_states.h"

#include <iterator>

#include "host/tags/result_text.h"
#include "korvel_dravo_elements.h"

namespace {

constexpr int kBitsInWord = 16;

typedef std::tuple<int, int, int> Start;

Start startOf(const ElementRange &range) {
    return std::make_tuple(range.station, range.elemType, range.address);
}
Start endOf(const ElementRange &range) {
    return std::make_tuple(range.station, range.elemType, range.address + range.count);
}

/// elementsRead: for each element of the variable's range.
QVector<bool> valuesRead(const Variable &variable, const QVector<bool> &elementsRead) {
    const bool inWords = dravo::findElementType(variable.elemType)->elementClass == dravo::BitInWordClass;
    const int elementsPerValue = inWords ? 1 : variable.range.count / variable.count;
    QVector<bool> read(variable.count, true);
    for (int i = 0; i < variable.count; ++i) {
        const int first = inWords ? (variable.firstBit + i) / kBitsInWord : i * elementsPerValue;
        for (int element = first; element < first + elementsPerValue; ++element) {
            read[i] = read.at(i) && elementsRead.at(element);
        }
    }
    return read;
}

}  // namespace

QString conditionName(Condition condition) {
    switch (condition) {
        case Condition::Fresh:
            return QLatin1String("fresh");
        case Condition::Stale:
            return QLatin1String("stale");
        case Condition::NeverRead:
            return QLatin1String("never read");
        case Condition::Failing:
            return QLatin1String("failing");
    }
    return QString();
}

void ValueStates::finished(const ElementRange &range, int code, int exceptionCode, qint64 nowMs) {
    Request &request = requests_[startOf(range)];
    request.count = range.count;
    request.code = code;
    request.exceptionCode = exceptionCode;
    if (outcomeOf(code) == Outcome::Good) {
        request.goodAtMs = nowMs;
    }
}

// The request that holds the first element may start before it.
ValueStates::Requests::const_iterator ValueStates::firstThatReaches(const ElementRange &range) const {
    const Requests::const_iterator request = requests_.upper_bound(startOf(range));
    if (request != requests_.begin()) {
        const Requests::const_iterator before = std::prev(request);
        Start end = before->first;
        std::get<2>(end) += before->second.count;
        if (startOf(range) < end) {
            return before;
        }
    }
    return request;
}

ValueState ValueStates::stateOf(const Variable &variable, qint64 nowMs, qint64 staleAfterMs) const {
    const ElementRange &range = variable.range;
    ValueState state;
    QVector<bool> read(range.count, false);
    qint64 oldest = nowMs;
    for (auto at = firstThatReaches(range); at != requests_.end() && at->first < endOf(range); ++at) {
        const Request &request = at->second;
        if (outcomeOf(request.code) != Outcome::Good && state.code == 0) {
            state.code = request.code;
            state.exceptionCode = request.exceptionCode;
        }
        if (request.goodAtMs >= 0) {
            const int first = qMax(std::get<2>(at->first) - range.address, 0);
            const int end = qMin(std::get<2>(at->first) - range.address + request.count, range.count);
            for (int element = first; element < end; ++element) {
                read[element] = true;
            }
            oldest = qMin(oldest, request.goodAtMs);
        }
    }
    const bool allRead = !read.contains(false);
    if (allRead) {
        state.ageMs = nowMs - oldest;
    }
    if (state.code != 0) {
        state.condition = Condition::Failing;
    } else if (allRead) {
        state.condition = state.ageMs > staleAfterMs ? Condition::Stale : Condition::Fresh;
    }
    state.valuesRead = valuesRead(variable, read);
    return state;
}

#include "host/value_states.h"

#include "host/result_text.h"

namespace {

using Start = std::tuple<int, int, int>;

Start startOf(const ElementRange &range) {
    return {range.station, range.elemType, range.address};
}
Start endOf(const ElementRange &range) {
    return {range.station, range.elemType, range.address + range.count};
}

}  // namespace

QString conditionName(ValueState::Condition condition) {
    switch (condition) {
        case ValueState::Condition::Fresh:
            return QStringLiteral("fresh");
        case ValueState::Condition::Stale:
            return QStringLiteral("stale");
        case ValueState::Condition::NeverRead:
            return QStringLiteral("never read");
        case ValueState::Condition::Failing:
            return QStringLiteral("failing");
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
    auto request = requests_.upper_bound(startOf(range));
    if (request != requests_.begin()) {
        const auto before = std::prev(request);
        const auto [station, elemType, address] = before->first;
        if (startOf(range) < Start(station, elemType, address + before->second.count)) {
            return before;
        }
    }
    return request;
}

ValueState ValueStates::stateOf(const Variable &variable, qint64 nowMs, qint64 staleAfterMs) const {
    const ElementRange range = elementRange(variable);
    ValueState state;
    int covered = 0;
    qint64 oldest = nowMs;
    for (auto at = firstThatReaches(range); at != requests_.end() && at->first < endOf(range); ++at) {
        const Request &request = at->second;
        const int address = std::get<2>(at->first);
        if (outcomeOf(request.code) != Outcome::Good && state.code == 0) {
            state.code = request.code;
            state.exceptionCode = request.exceptionCode;
        }
        if (request.goodAtMs >= 0) {
            covered += qMin(address + request.count, range.address + range.count) - qMax(address, range.address);
            oldest = qMin(oldest, request.goodAtMs);
        }
    }
    const bool allRead = covered == range.count;
    if (allRead) {
        state.ageMs = nowMs - oldest;
    }
    if (state.code != 0) {
        state.condition = ValueState::Condition::Failing;
    } else if (allRead) {
        state.condition = state.ageMs > staleAfterMs ? ValueState::Condition::Stale : ValueState::Condition::Fresh;
    }
    return state;
}

bool ValueStates::everRead(const ElementRange &range) const {
    int covered = 0;
    for (auto at = firstThatReaches(range); at != requests_.end() && at->first < endOf(range); ++at) {
        const int address = std::get<2>(at->first);
        if (at->second.goodAtMs >= 0) {
            covered += qMin(address + at->second.count, range.address + range.count) - qMax(address, range.address);
        }
    }
    return covered == range.count;
}

QVector<bool> ValueStates::valuesRead(const Variable &variable) const {
    QVector<bool> read;
    for (int i = 0; i < variable.count; ++i) {
        read.append(everRead(elementsOfValue(variable, i)));
    }
    return read;
}

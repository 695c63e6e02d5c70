// What is known of each variable: fresh, stale, never read or failing. Worked out from the results of the cyclic
// requests, of which one may cover many variables, and several may cover one. Communication thread only.
#ifndef DRAVO_HOST_VALUE_STATES_H
#define DRAVO_HOST_VALUE_STATES_H

#include <QtCore/QVector>
#include <map>
#include <tuple>

#include "host/variable.h"

struct ValueState {
    enum class Condition { Fresh, Stale, NeverRead, Failing };
    Condition condition = Condition::NeverRead;
    qint64 ageMs = -1;      // since the oldest of its elements was read; -1: some were never read
    int code = 0;           // Failing: the result code of the failed request, else 0
    int exceptionCode = 0;  // Failing: of the exception that refused it, else 0
};

/// One word for a condition, as shown and recorded.
QString conditionName(ValueState::Condition condition);

class ValueStates {
public:
    /// A cyclic request over range was finished at nowMs. code: its result code.
    void finished(const ElementRange &range, int code, int exceptionCode, qint64 nowMs);

    /// One failed request makes the variable failing; else one element never read makes it never read; else its oldest
    /// element decides: above staleAfterMs it is stale.
    ValueState stateOf(const Variable &variable, qint64 nowMs, qint64 staleAfterMs) const;

    /// For each value of the variable, whether its elements have ever been read.
    QVector<bool> valuesRead(const Variable &variable) const;

private:
    struct Request {
        int count = 0;
        qint64 goodAtMs = -1;  // last good reply; -1: none yet
        int code = 0;          // last result
        int exceptionCode = 0;
    };
    using Start = std::tuple<int, int, int>;  // station, normalised type, address
    using Requests = std::map<Start, Request>;
    Requests::const_iterator firstThatReaches(const ElementRange &range) const;
    bool everRead(const ElementRange &range) const;

    Requests requests_;  // the requests of the cyclic list never overlap
};

#endif  // DRAVO_HOST_VALUE_STATES_H

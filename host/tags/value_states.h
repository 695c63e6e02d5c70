// What is known of each variable: fresh, stale, never read or failing. Worked out from the results of the cyclic
// requests, of which one may cover many variables, and several may cover one. Communication thread only.
#ifndef DRAVO_HOST_TAGS_VALUE_STATES_H
#define DRAVO_HOST_TAGS_VALUE_STATES_H

#include <QtCore/QVector>
#include <map>
#include <tuple>

#include "host/tags/variable.h"

enum class Condition { Fresh, Stale, NeverRead, Failing };

/// One word for a condition, as shown and recorded.
QString conditionName(Condition condition);

struct ValueState {
    ValueState() : condition(Condition::NeverRead), ageMs(-1), code(0), exceptionCode(0) {}

    Condition condition;
    qint64 ageMs;              // since the oldest of its elements was read; -1: some were never read
    int code;                  // Failing: the result code of the failed request, else 0
    int exceptionCode;         // Failing: of the exception that refused it, else 0
    QVector<bool> valuesRead;  // for each value, whether all its elements have ever been read
};

class ValueStates {
public:
    /// A cyclic request over range was finished at nowMs. code: its result code.
    void finished(const ElementRange &range, int code, int exceptionCode, qint64 nowMs);

    /// Of a usable variable. One failed request makes it failing; else one element never read makes it never read; else
    /// its oldest element decides: above staleAfterMs it is stale.
    ValueState stateOf(const Variable &variable, qint64 nowMs, qint64 staleAfterMs) const;

private:
    struct Request {
        Request() : count(0), goodAtMs(-1), code(0), exceptionCode(0) {}

        int count;
        qint64 goodAtMs;  // last good reply; -1: none yet
        int code;         // last result
        int exceptionCode;
    };
    typedef std::tuple<int, int, int> Start;  // station, normalised type, address
    typedef std::map<Start, Request> Requests;
    Requests::const_iterator firstThatReaches(const ElementRange &range) const;

    Requests requests_;  // the requests of the cyclic list never overlap
};

#endif  // DRAVO_HOST_TAGS_VALUE_STATES_H

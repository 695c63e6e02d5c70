// The calls of a host, as an input chooses them: each is a call of the driver and what the model makes of it.
#ifndef DRAVO_FUZZ_DRIVER_OPERATIONS_H
#define DRAVO_FUZZ_DRIVER_OPERATIONS_H

#include <functional>

#include "fuzz/driver_choices.h"
#include "fuzz/driver_model.h"

/// What a host sees of a call.
struct Outcome {
    qint64 code = 0;
    QByteArray bytes = QByteArray();
    QList<RW_VAR> records = QList<RW_VAR>();
};
bool operator==(const Outcome &a, const Outcome &b);

struct Operation {
    std::function<Outcome()> call;
    std::function<Outcome(reference::Model &)> expected;
};

/// What an input may still spend. Single values may be anything; their sum is bounded: a request for each element of
/// the largest variable takes seconds and hundreds of megabytes, by promise.
struct Budget {
    int elements = 20000;  // of values written and asked for
    int entries = 3000;    // of lists

    /// count where the rest suffices, else instead.
    int elementsFor(int count, int instead = kMaxElementCount + 1) { return spend(elements, count, count, instead); }
    int entriesFor(int count, int limit, int instead = kMaxElementCount + 1);

private:
    static int spend(int &rest, qint64 cost, int count, int instead);
};

/// The host's settings records; the driver reads and writes the bound one.
extern ComInfo hostRecords[reference::Model::kRecords];

/// record: of hostRecords; beyond: unbinds.
Operation bind(int record);
/// Any call outside the call loop.
Operation anyCall(Choices &choices, Budget &budget);
/// One that a callback may make.
Operation callInCallback(Choices &choices, Budget &budget);
/// One of a function without state.
Operation pureCall(Choices &choices, Budget &budget);

RW_VAR anyRecord(Choices &choices);
/// Shares no memory with var, so that a change in place shows.
RW_VAR ownCopy(const RW_VAR &var);

#endif  // DRAVO_FUZZ_DRIVER_OPERATIONS_H

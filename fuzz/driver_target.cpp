// A host that does whatever the bytes say, and a model of the driver beside it: after each call both agree.
#include <cstring>
#include <new>

#include "driver/Communication_Protocol.h"
#include "fuzz/driver_host.h"
#include "fuzz/driver_promises.h"

namespace {

const int kMostCalls = 300;

void promiseRecords(const reference::Model &model) {
    expect(std::memcmp(hostRecords, model.records, sizeof hostRecords) == 0, "the host's settings and counters");
}

void carryOut(const Operation &operation, reference::Model &model) {
    const Outcome outcome = operation.call();
    expect(outcome == operation.expected(model), "a call gives back what it promises");
    promiseState(model);
    promiseRecords(model);
}

/// A host as most are, bound or not.
void begin(Choices &choices, reference::Model &model) {
    PLC_driver.~Communication_Protocol();
    new (&PLC_driver) Communication_Protocol();
    for (int i = 0; i < reference::Model::kRecords; ++i) {
        ComInfo &record = hostRecords[i];
        std::memset(static_cast<void *>(&record), 0, sizeof record);
        record.maxGroupLength = 8;
        record.useVarStation = 1 - i;
        record.defaultStation = i;
        record.retryTimes = i;
        record.writeMode = 2;
        record.hostContext = &record;
        std::memcpy(static_cast<void *>(&model.records[i]), &record, sizeof record);
    }
    const int start = choices.below(4);
    if (start != 3) {
        carryOut(registerCallbacks(true, true), model);
        carryOut(bind(start == 2 ? 1 : 0), model);
    }
}

const Protocol *outstanding() {
    return PLC_driver.protocolList.isEmpty() ? nullptr : &PLC_driver.protocolList.at(0);
}

void step(Choices &choices, Budget &budget, reference::Model &model) {
    const bool remoteMode = PLC_driver.comInfo != nullptr && PLC_driver.comInfo->remoteMode != 0;
    const int kind = choices.below(8);
    if (kind < 4) {
        carryOut(anyCall(choices, budget), model);
    } else if (kind == 4) {
        carryOut(nextRequest(), model);
    } else if (kind == 5) {
        carryOut(answer(anyReply(choices, outstanding(), remoteMode)), model);
    } else {
        carryOut(nextRequest(), model);
        if (outstanding() != nullptr) {
            carryOut(answer(kind == 6 ? goodReply(choices, *outstanding(), remoteMode)
                                      : anyReply(choices, outstanding(), remoteMode)),
                     model);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    Choices choices(bytes, size);
    Budget budget;
    chooseInCallbacksBy(&choices, &budget);
    reference::Model model;
    begin(choices, model);
    for (int calls = 0; choices.left() && calls < kMostCalls; ++calls) {
        step(choices, budget, model);
    }
    promiseValues(model);
    return 0;
}

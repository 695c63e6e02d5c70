#include "fuzz/driver_host.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "driver/Communication_Protocol.h"
#include "fuzz/driver_promises.h"

namespace {

using reference::Callback;
using reference::Model;

struct CallMade {
    Operation operation;
    Outcome outcome;
};
struct CallbackReceived {
    Callback callback;
    std::vector<CallMade> calls;  // inside it
};

Choices *choicesInForce;
Budget *budgetInForce;
std::vector<CallbackReceived> received;  // in the DataCom under way

void receive(const Callback &callback) {
    expect(isHeld(PLC_driver.listMutex), "callbacks run with listMutex held");
    received.push_back({callback, {}});
    for (int left = choicesInForce->below(8) - 5; left > 0; --left) {
        const Operation operation = callInCallback(*choicesInForce, *budgetInForce);
        const Outcome outcome = operation.call();
        received.back().calls.push_back({operation, outcome});
    }
}

void varCallBack(void *context, int ownerId, int itemId, int code) {
    receive({Callback::Var, context, ownerId, itemId, code});
}

void listCallBack(QList<RW_VAR> *list, int ownerId, int code) {
    if (!list) {
        broken("a list is handed out");
    }
    expect(list->isEmpty(), "the list handed out is empty");
    list->append(RW_VAR());
    receive({Callback::List, nullptr, ownerId, 0, code});
}

/// A reply without a byte of room behind it, so that a read past its end shows.
class ExactBytes {
public:
    explicit ExactBytes(const QByteArray &bytes) : bytes_(static_cast<char *>(std::malloc(size_t(bytes.size())))) {
        std::memcpy(bytes_.get(), bytes.constData(), size_t(bytes.size()));
        array_ = QByteArray::fromRawData(bytes_.get(), bytes.size());
    }
    QByteArray *array() { return &array_; }

private:
    struct Freed {
        void operator()(char *bytes) const { std::free(bytes); }
    };
    std::unique_ptr<char, Freed> bytes_;
    QByteArray array_;
};

qint64 callDataCom(const Reply &reply) {
    ExactBytes bytes(reply.bytes);
    received.clear();
    const RW_VAR *result = DataCom(reply.isNull ? nullptr : bytes.array(), reply.length);
    expect(result == &PLC_driver.retVar, "the result record is always the same");
    expect(*bytes.array() == reply.bytes, "a reply is only read");
    return result->retValue;
}

/// Every callback of the model is one that the host received, in that order, and what it called meanwhile fits too.
qint64 expectedAnswer(Model &model, const Reply &reply) {
    size_t next = 0;
    model.called = [&](const Callback &due) {
        expect(next < received.size(), "a callback that is due is called");
        const CallbackReceived &came = received[next++];
        expect(came.callback == due, "a callback says what became of whose operation");
        for (const CallMade &call : came.calls) {
            expect(call.outcome == call.operation.expected(model), "a call inside a callback");
        }
    };
    const QByteArray bytes = reply.bytes;
    const int code = model.answer(reply.isNull ? nullptr : &bytes, reply.length);
    expect(next == received.size(), "no callback but those due");
    return code;
}

}  // namespace

void chooseInCallbacksBy(Choices *choices, Budget *budget) {
    choicesInForce = choices;
    budgetInForce = budget;
}

Operation registerCallbacks(bool var, bool list) {
    return {[=] {
                RegistCallBackFuncIntf(var ? varCallBack : nullptr, list ? listCallBack : nullptr);
                return Outcome();
            },
            [=](Model &model) {
                model.hasVarCallBack = var;
                model.hasListCallBack = list;
                return Outcome();
            }};
}

Operation nextRequest() {
    return {[] {
                const Protocol *const request = ComCommunication();
                if (request == nullptr) {
                    return Outcome{0};
                }
                expect(request == &PLC_driver.protocolList.at(0), "the request handed out is the outstanding one");
                expect(ComCommunication() == request, "an unanswered request is handed out again");
                return Outcome{1, request->frame};
            },
            [](Model &model) {
                return model.next() ? Outcome{1, model.outstanding.front().frame} : Outcome{0};
            }};
}

Operation answer(const Reply &reply) {
    return {[=] { return Outcome{callDataCom(reply)}; },
            [=](Model &model) { return Outcome{expectedAnswer(model, reply)}; }};
}

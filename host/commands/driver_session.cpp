#include "host/commands/driver_session.h"

#include "host/tags/result_text.h"

namespace {

constexpr int kOwnerId = 1;        // of writes and one-shot reads; cyclic entries have 0
constexpr int kCyclicItemId = -1;  // the driver's own, for its cyclic entries
constexpr int kCheckingMode = 0;
constexpr int kWritesGoToDevice = 2;
constexpr int kExceptionLength = 5;
constexpr int kExceptionBit = 0x80;

int byteAt(const QByteArray &bytes, int index) {
    return uchar(bytes.at(index));
}

// 0: the reply is no exception. To the driver every exception is a reply of another length than the expected one, or
// too short; its name is for the display alone.
int exceptionCodeOf(const Protocol &request, bool remote, QByteArray reply) {
    if (reply.size() != kExceptionLength || byteAt(reply, 0) != (request.var.station & 0xFF)) {
        return 0;
    }
    const int functionCode = byteAt(reply, 1);
    const bool refusal =
        remote ? (functionCode & kExceptionBit) != 0 : functionCode == (byteAt(request.frame, 1) | kExceptionBit);
    const int crc = CalCRC(reinterpret_cast<unsigned char *>(reply.data()), kExceptionLength - 2);
    const bool whole = byteAt(reply, 3) == (crc & 0xFF) && byteAt(reply, 4) == crc >> 8;
    return refusal && whole ? byteAt(reply, 2) : 0;
}

}  // namespace

DriverSession::DriverSession(const DriverSettings &settings, SerialLink &link) : link_(link) {
    comInfo_.maxGroupLength = settings.frameLimit;
    comInfo_.retryTimes = settings.retries;
    comInfo_.useVarStation = 1;
    comInfo_.writeMode = kWritesGoToDevice;
    comInfo_.hostContext = this;
    if (settings.remoteNode) {
        // Records that the driver builds name the own node, so the own node is the one asked for: then replies are
        // stored and callbacks come, as for a controller on the line.
        comInfo_.remoteMode = 1;
        comInfo_.localNode = *settings.remoteNode;
    }
    SetComInfo(&comInfo_);
    RegistCallBackFuncIntf(&DriverSession::onVariable, nullptr);
}

DriverSession::~DriverSession() {
    RegistCallBackFuncIntf(nullptr, nullptr);
    SetComInfo(nullptr);
}

int DriverSession::readCyclically(const QVector<Variable> &variables) {
    QList<ReadVarEntry> entries;
    entries.reserve(variables.size());
    for (const Variable &variable : variables) {
        ReadVarEntry entry{};
        entry.elemType = static_cast<unsigned char>(variable.elemType);
        entry.station = static_cast<unsigned char>(variable.station);
        entry.addressText = variable.addressText;
        entry.label = variable.label;
        entry.count = variable.driverCount;
        entries.append(entry);
    }
    return ReCreatReadVarList(&entries);
}

int DriverSession::newOperation() {
    outcomes_.insert(++lastOperation_, OperationState::Pending);
    return lastOperation_;
}

int DriverSession::readOnce(const Variable &variable) {
    const int operation = newOperation();
    RW_VAR record = readRecord(variable);
    record.ownerId = kOwnerId;
    record.itemId = operation;
    record.remoteMode = comInfo_.remoteMode;
    record.nodeId = comInfo_.localNode;
    if (AddListOnceReadVar(&record, kCheckingMode) == 0) {
        outcomes_.insert(operation, OperationState::Failed);
    }
    return operation;
}

int DriverSession::write(const Variable &variable, const QByteArray &values) {
    const int operation = newOperation();
    SetRegisterData(variable.label, variable.elemType, variable.addressText, variable.station, values,
                    variable.driverCount, kOwnerId, operation);
    return operation;
}

Exchange DriverSession::step(const SerialLink::KeepWaiting &keepWaiting) {
    Exchange exchange;
    Protocol *request = ComCommunication();
    if (request == nullptr) {
        return exchange;
    }
    QByteArray reply;
    const LineRequest lineRequest{request->frame.left(request->frameLength), request->replyLength,
                                  request->var.station};
    const SerialLink::Result result = link_.exchange(lineRequest, keepWaiting, &reply);
    if (result != SerialLink::Result::Done) {
        exchange.status =
            result == SerialLink::Result::LineLost ? Exchange::Status::LineLost : Exchange::Status::Interrupted;
        return exchange;
    }
    exchange.status = Exchange::Status::Judged;
    exchange.exceptionCode = exceptionCodeOf(*request, comInfo_.remoteMode != 0, reply);
    const RW_VAR &judged = *DataCom(&reply, reply.size());  // from here on request may be gone
    exchange.code = judged.retValue;
    const Outcome outcome = outcomeOf(exchange.code);
    // A write to a bit inside a word is two requests. Until the operation is over the record still shows the one
    // before it.
    const bool wellDone = outcome == Outcome::Good && comInfo_.frameDone >= comInfo_.frameTotal;
    exchange.finished = wellDone || (outcome != Outcome::Good && outcome != Outcome::Retry);
    exchange.cyclic = exchange.finished && judged.ownerId == 0 && judged.itemId == kCyclicItemId;
    exchange.range = {judged.station, judged.elemType, judged.address, judged.count};
    return exchange;
}

DriverSession::OperationState DriverSession::outcome(int operation) const {
    return outcomes_.value(operation, OperationState::Failed);
}

void DriverSession::onVariable(void *session, int /*ownerId*/, int itemId, int code) {
    static_cast<DriverSession *>(session)->outcomes_.insert(itemId,
                                                            code == 1 ? OperationState::Done : OperationState::Failed);
}

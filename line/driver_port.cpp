#include "line/driver_port.h"

#include "line/operation_limits.h"
#include "line/variable.h"
namespace dravo {

namespace {

const int kOwnerId = 12;  // the first that adds nothing to a failure code
const int kCheckingMode = 0;
const int kQueueUnchanged = 1;
const int kWritesGoToDevice = 2;
const int kDone = 1;          // code of the callback
const int kReadAgainId = 13;  // owner of reads that are no operation

// The port that has bound the driver last and still exists. The driver's callback names what the bound record says,
// which is another's once somebody has bound it anew.
const DriverPort *boundPort = nullptr;

// The driver object is exported for its layout: the settings' pointer, then the cyclic list.
const ComInfo *boundRecord() {
    return *reinterpret_cast<const ComInfo *const *>(&PLC_driver);
}

const QList<RW_VAR> &cyclicList() {
    const char *const driver = reinterpret_cast<const char *>(&PLC_driver);
    return *reinterpret_cast<const QList<RW_VAR> *>(driver + sizeof(void *));
}

}  // namespace

DriverPort::DriverPort(const LineSettings &settings) : frameLimit_(settings.frameLimit), comInfo_() {
    comInfo_.maxGroupLength = settings.frameLimit;
    comInfo_.retryTimes = qMax(settings.retries, 0);
    comInfo_.useVarStation = 1;
    comInfo_.writeMode = kWritesGoToDevice;
    comInfo_.hostContext = this;
    if (settings.remoteNode >= 0) {
        // Records that the driver builds name the own node, so the own node is the one asked for: then replies are
        // stored and callbacks come, as for a controller on the line.
        comInfo_.remoteMode = 1;
        comInfo_.localNode = settings.remoteNode;
    }
    if (!boundRecord()) {
        boundPort = this;
        SetComInfo(&comInfo_);
        RegistCallBackFuncIntf(&DriverPort::onVariable, nullptr);
        dropAll();
    }
}

DriverPort::~DriverPort() {
    if (hasDriver()) {
        dropAll();
        RegistCallBackFuncIntf(nullptr, nullptr);
        SetComInfo(nullptr);
    }
    boundPort = boundPort == this ? nullptr : boundPort;
}

bool DriverPort::hasDriver() const {
    return boundRecord() == &comInfo_;
}

void DriverPort::dropAll() {
    QList<ReadVarEntry> none;
    setCyclicReads(&none, QList<RW_VAR>());
    dropOperations();
}

// The driver drops what is queued for disabled stations.
void DriverPort::dropOperations() {
    if (!hasDriver()) {
        return;
    }
    for (int station = 0; station < 256; ++station) {
        setStation(station, false);
    }
    while (request()) {
        endTries();
        judge(refusable());
    }
    setStation(-1, true);
    finished_.clear();
}

// Null comes once after five writes or one-shot reads in a row with nothing else to send; the next call goes on.
const Protocol *DriverPort::request() {
    const Protocol *next = ComCommunication();
    return next ? next : ComCommunication();
}

DriverPort::Verdict DriverPort::judge(QByteArray reply) {
    Verdict verdict = {DataCom(&reply, reply.size())->retValue, false, false};
    verdict.good = verdict.code == kResultGood || verdict.code == kResultRemoteGood;
    verdict.over = verdict.good ? comInfo_.frameDone >= comInfo_.frameTotal : verdict.code != kResultRetry;
    return verdict;
}

// Shorter than the shortest reply that it takes, and of no length that a request can expect.
QByteArray DriverPort::refusable() {
    return QByteArray(1, '\0');
}

// Nobody else changes the list, for this port is the only one that makes lists.
QList<RW_VAR> DriverPort::setCyclicReads(QList<ReadVarEntry> *merged, const QList<RW_VAR> &requests) {
    if (!hasDriver()) {
        return QList<RW_VAR>();
    }
    ReCreatReadVarList(merged);
    for (int i = 0; i < requests.size(); ++i) {
        RW_VAR request = requests.at(i);
        AddListReadVar(&request);
    }
    return cyclicList();
}

void DriverPort::readAgain(RW_VAR request) {
    request.ownerId = kReadAgainId;
    AddListOnceReadVar(&request, kQueueUnchanged);
}

bool DriverPort::isReadAgain(const RW_VAR &request) {
    return request.ownerId == kReadAgainId;
}

void DriverPort::start(const HostOperation &operation) {
    // The driver cuts an operation when it is queued, and cyclic reads when their list is made.
    comInfo_.maxGroupLength = operationFrameLimit(operation.variable, operation.isWrite, frameLimit_);
    operation.isWrite ? write(operation) : readOnce(operation);
    comInfo_.maxGroupLength = frameLimit_;
}

void DriverPort::write(const HostOperation &operation) {
    const Variable &variable = operation.variable;
    SetRegisterData(variable.label, variable.elemType, variable.addressText, variable.station, operation.values,
                    variable.driverCount, kOwnerId, operation.number);
}

void DriverPort::readOnce(const HostOperation &operation) {
    RW_VAR record = readRecord(operation.variable);
    record.remoteMode = comInfo_.remoteMode;
    record.nodeId = comInfo_.localNode;
    record.ownerId = kOwnerId;
    record.itemId = operation.number;
    AddListOnceReadVar(&record, kCheckingMode);
}

QList<DriverPort::Finished> DriverPort::takeFinished() {
    const QList<Finished> taken = finished_;
    finished_.clear();
    return taken;
}

void DriverPort::setStation(int station, bool enabled) {
    if (hasDriver()) {
        EnableEthernet(station, enabled ? 1 : 0);
    }
}

RW_VAR DriverPort::ownRecord() const {
    RW_VAR record = RW_VAR();
    record.remoteMode = comInfo_.remoteMode;
    record.nodeId = comInfo_.localNode;
    return record;
}

void DriverPort::onVariable(void *port, int ownerId, int itemId, int code) {
    if (ownerId != kOwnerId || port != boundPort || !boundPort->hasDriver()) {
        return;
    }
    const Finished finished = {itemId, code == kDone};
    static_cast<DriverPort *>(port)->finished_.append(finished);
}

}  // namespace dravo

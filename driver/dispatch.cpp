// DataCom: retries, completion of operations, callbacks, and the rotation of the cyclic list.
#include "driver/dispatch.h"

#include <QtCore/QMutexLocker>

#include <algorithm>

#include "codec/integers.h"
#include "driver/Communication_Protocol.h"
#include "driver/reply_judging.h"

namespace {

const int kDone = 1;  // codes of varCallBack, and the one of listCallBack
const int kFailed = 2;
const int kListCode = 1;

// Whether an entry behind the head has the head's two identifiers. Of one-shot reads only those of the own node count.
bool hasLaterDuplicate(const QList<RW_VAR> &queue, bool ownNodeOnly) {
    const RW_VAR &head = queue.at(0);
    for (int i = 1; i < queue.size(); ++i) {
        const RW_VAR &entry = queue.at(i);
        if (entry.ownerId == head.ownerId && entry.itemId == head.itemId &&
            (!ownNodeOnly || entry.nodeId == PLC_driver.comInfo->localNode)) {
            return true;
        }
    }
    return false;
}

// Success stays unreported while a later request of the same identifiers waits; failure never does.
void reportHead(const QList<RW_VAR> &queue, bool ownNodeOnly) {
    const bool failed = PLC_driver.comFailed == 1;
    if (!failed && hasLaterDuplicate(queue, ownNodeOnly)) {
        return;
    }
    const RW_VAR &head = queue.at(0);
    if (PLC_driver.varCallBack) {
        // listMutex held: of the calls that change lists the host may make only AddListReadVar and SetRegisterData here
        PLC_driver.varCallBack(PLC_driver.comInfo->hostContext, head.ownerId, head.itemId, failed ? kFailed : kDone);
    }
}

void finishHead(QList<RW_VAR> &queue) {
    passRetValue(queue.at(0), PLC_driver.retVar);
    queue.removeFirst();
}

// Takes the finished or failed operation out of its list and reports it.
void finishOperation(bool remote) {
    Communication_Protocol &driver = PLC_driver;
    if (driver.comType == kWrite && !driver.writeVarList.isEmpty()) {
        reportHead(driver.writeVarList, false);
        finishHead(driver.writeVarList);
    } else if (driver.comType == kOnceRead && !driver.onceReadVarList.isEmpty()) {
        if (!remote) {
            reportHead(driver.onceReadVarList, true);
        }
        finishHead(driver.onceReadVarList);
    } else if (driver.comType == kCyclicRead && !driver.readVarList.isEmpty() &&
               driver.readVarList.at(0).retValue == kInFlight) {
        driver.readVarList.first().retValue = 0;
        passRetValue(driver.readVarList.at(0), driver.retVar);
        driver.readVarList.move(0, driver.readVarList.size() - 1);
    }
}

// Drops what is queued under the identifiers of the result record.
void removeDuplicates(QList<RW_VAR> &queue) {
    const int ownerId = PLC_driver.retVar.ownerId;
    const int itemId = PLC_driver.retVar.itemId;
    const int station = PLC_driver.retVar.station;
    // A callback may have unbound the host.
    const bool anyStation = !PLC_driver.comInfo || PLC_driver.comInfo->useVarStation == 0;
    const auto isDuplicate = [=](const RW_VAR &entry) {
        return entry.ownerId == ownerId && entry.itemId == itemId && (anyStation || entry.station == station);
    };
    queue.erase(std::remove_if(queue.begin(), queue.end(), isDuplicate), queue.end());
}

void reportFailure() {
    if (PLC_driver.listCallBack) {
        QList<RW_VAR> list;
        PLC_driver.listCallBack(&list, PLC_driver.retVar.ownerId, kListCode);  // listMutex held, as in reportHead
    }
    if (PLC_driver.comType == kWrite) {
        removeDuplicates(PLC_driver.writeVarList);
    } else if (PLC_driver.comType == kOnceRead) {
        removeDuplicates(PLC_driver.onceReadVarList);
    }
}

// Every finished local operation counts; a pass is done with one more than the list has entries.
void countTowardPass() {
    if (PLC_driver.comInfo->cycleDone != 0) {
        return;
    }
    ++PLC_driver.readCycleCount;
    if (PLC_driver.readCycleCount > PLC_driver.readVarList.size()) {
        PLC_driver.readCycleCount = 0;
        PLC_driver.comInfo->cycleDone = 1;
    }
}

// Takes the answered request off the list. True: it was the operation's last.
bool acceptReply(bool remote) {
    ComInfo &comInfo = *PLC_driver.comInfo;
    PLC_driver.comFailed = 0;
    comInfo.frameDone = saturated(qint64(comInfo.frameDone) + 1);
    const bool finished = comInfo.frameDone >= comInfo.frameTotal;
    if (finished && !remote) {
        countTowardPass();
    }
    PLC_driver.protocolList.removeFirst();
    return finished;
}

// Counts a bad reply. True: the retries are used up, and the rest of the operation is dropped.
bool exhaustsRetries() {
    ComInfo &comInfo = *PLC_driver.comInfo;
    const qint64 badReplies = qint64(comInfo.retryCount) + 1;
    if (badReplies <= comInfo.retryTimes) {
        comInfo.retryCount = int(badReplies);
        return false;
    }
    PLC_driver.comFailed = 1;
    PLC_driver.readCycleCount = 0;
    comInfo.cycleDone = 0;
    comInfo.retryCount = 0;
    PLC_driver.protocolList.clear();
    return true;
}

bool isGood(int code) {
    return code == kResultGood || code == kResultRemoteGood;
}

}  // namespace

void passRetValue(const RW_VAR &from, RW_VAR &to) {
    to = from;
    to.data.clear();
}

RW_VAR *DataCom(QByteArray *reply, int length) {
    Communication_Protocol &driver = PLC_driver;
    // Held to the end: the reply to a merge read looks at the head of writeVarList.
    QMutexLocker lock(&driver.listMutex);
    driver.retVar.retValue = kResultGood;
    if (!driver.comInfo || driver.protocolList.isEmpty()) {
        return &driver.retVar;
    }
    QByteArray nothing;
    if (!reply) {
        reply = &nothing;
        length = 0;
    }
    const bool remote = driver.protocolList.at(0).var.nodeId != driver.comInfo->localNode;
    const int code = remote ? DealDataOfRemoteArea(reply, length) : DealDataOfLocalArea(reply, length);
    if (isGood(code)) {
        if (!acceptReply(remote)) {
            driver.retVar.retValue = code;
            return &driver.retVar;
        }
    } else if (!exhaustsRetries()) {
        driver.retVar.retValue = kResultRetry;
        return &driver.retVar;
    }
    finishOperation(remote);
    if (driver.comFailed) {
        reportFailure();
    }
    driver.retVar.retValue = code;
    return &driver.retVar;
}

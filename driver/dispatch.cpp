// DataCom: replies, retries, and the count of a pass.
#include <QtCore/QMutexLocker>

#include "codec/integers.h"
#include "driver/Communication_Protocol.h"
#include "driver/finished_operation.h"
#include "driver/reply_judging.h"

namespace {

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

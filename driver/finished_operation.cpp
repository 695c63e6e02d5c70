#include "driver/finished_operation.h"

#include <algorithm>

#include "driver/Communication_Protocol.h"
#include "driver/rotation.h"

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

}  // namespace

void passRetValue(const RW_VAR &from, RW_VAR &to) {
    to = from;
    to.data.clear();
}

void finishOperation(bool remote) {
    Q_ASSERT(isHeld(PLC_driver.listMutex));
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
        headToTail(driver.readVarList);
    }
}

void reportFailure() {
    Q_ASSERT(isHeld(PLC_driver.listMutex));
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

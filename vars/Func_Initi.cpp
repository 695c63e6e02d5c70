// How variables and requests enter the driver's lists.
#include <QtCore/QMutexLocker>

#include "driver/Communication_Protocol.h"
#include "vars/cyclic_list.h"
#include "vars/request_queue.h"
#include "vars/variable_record.h"

namespace {

const int kQueueUnchanged = 1;  // mode: the record as it stands

// The later of two rebuilds is the one that stays. Held by a thread that holds no other lock of the driver.
QMutex rebuildMutex;

// What requests are made by. The record's counters change meanwhile.
ComInfo requestSettings() {
    QMutexLocker lock(&PLC_driver.listMutex);
    ComInfo settings = ComInfo();
    settings.maxGroupLength = PLC_driver.comInfo->maxGroupLength;
    settings.defaultStation = PLC_driver.comInfo->defaultStation;
    settings.useVarStation = PLC_driver.comInfo->useVarStation;
    settings.remoteMode = PLC_driver.comInfo->remoteMode;
    settings.localNode = PLC_driver.comInfo->localNode;
    return settings;
}

bool refuses(const RW_VAR *var) {
    return !PLC_driver.comInfo || !var || var->count > kMaxElementCount;
}

}  // namespace

int ReCreatReadVarList(QList<ReadVarEntry> *entries) {
    if (!PLC_driver.comInfo || !entries) {
        return 0;
    }
    const QList<ReadVarEntry> &hostEntries = *entries;
    QMutexLocker rebuildLock(&rebuildMutex);
    QList<RW_VAR> requests = cyclicRequests(hostEntries, requestSettings());
    // Built aside: only the exchange of the lists keeps others waiting, and what leaves is freed after the lock.
    QMutexLocker lock(&PLC_driver.listMutex);
    PLC_driver.readVarList.swap(requests);
    if (!hostEntries.isEmpty()) {
        PLC_driver.readCycleCount = 0;
        PLC_driver.comInfo->cycleDone = 0;
    }
    return PLC_driver.readVarList.size();
}

int AddListReadVar(RW_VAR *var) {
    if (refuses(var)) {
        return 0;
    }
    PLC_driver.readVarList.append(*var);
    return PLC_driver.readVarList.size();
}

int AddListOnceReadVar(RW_VAR *var, int mode) {
    if (refuses(var)) {
        return 0;
    }
    QList<RW_VAR> &queue = PLC_driver.onceReadVarList;
    if (mode == kQueueUnchanged) {
        QMutexLocker lock(&PLC_driver.listMutex);
        queue.append(*var);
        return queue.size();
    }
    const bool negative = var->count < 0;  // of bits inside a word it can normalise to one word, yet asks for nothing
    if (!resolveOnceRead(*var, *PLC_driver.comInfo)) {
        return 0;
    }
    const int limit = frameLimit(PLC_driver.comInfo->maxGroupLength, var->elemType);
    QMutexLocker lock(&PLC_driver.listMutex);
    appendOnceRead(queue, *var, negative ? 0 : var->count, limit);
    return queue.size();
}

int AddListWriteVar(RW_VAR *var, int mode) {
    if (refuses(var)) {
        return 0;
    }
    QList<RW_VAR> &queue = PLC_driver.writeVarList;
    QMutexLocker lock(&PLC_driver.listMutex);
    if (mode == kQueueUnchanged) {
        queue.append(*var);
    } else {
        appendOrReplaceWrite(queue, *var);
    }
    return queue.size();
}

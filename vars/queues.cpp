// The one-shot read queue and the write queue: how entries enter them.
#include <QtCore/QMutexLocker>

#include "driver/Communication_Protocol.h"
#include "vars/Func_Initi.h"
#include "vars/request_merge.h"

namespace {

const int kQueueBound = 1024;   // the checking modes add nothing to a queue this long
const int kQueueUnchanged = 1;  // mode: the record as it stands

bool sameWrite(const RW_VAR &a, const RW_VAR &b) {
    return a.station == b.station && a.elemType == b.elemType && a.address == b.address && a.count == b.count;
}

bool sameOnceRead(const RW_VAR &a, const RW_VAR &b) {
    return sameWrite(a, b) && a.ownerId == b.ownerId && a.itemId == b.itemId && a.nodeId == b.nodeId;
}

bool isQueued(const QList<RW_VAR> &queue, const RW_VAR &var) {
    for (const RW_VAR &entry : queue) {
        if (sameOnceRead(entry, var)) {
            return true;
        }
    }
    return false;
}

bool refuses(const RW_VAR *var) {
    return !PLC_driver.comInfo || !var || var->count > kMaxElementCount;
}

// Works address, station and normalised type out, into the caller's record.
bool resolve(RW_VAR &var) {
    const int address = StringAddressToInt(var.elemType, var.addressText);
    if (address < 0) {
        return false;
    }
    var.address = address;
    var.station = stationInForce(*PLC_driver.comInfo, var.station);
    var.param1 = 0;
    var.param2 = 0;
    return var.station != 0 && updateRwVar(&var) == 0;
}

}  // namespace

int AddListOnceReadVar(RW_VAR *var, int mode) {
    if (refuses(var)) {
        return 0;
    }
    const bool negative = var->count < 0;  // of bits inside a word it can normalise to one word, yet asks for nothing
    if (mode != kQueueUnchanged && !resolve(*var)) {
        return 0;
    }
    QList<RW_VAR> &queue = PLC_driver.onceReadVarList;
    QMutexLocker lock(&PLC_driver.listMutex);
    if (mode == kQueueUnchanged) {
        queue.append(*var);
        return queue.size();
    }
    const int limit = frameLimit(PLC_driver.comInfo->maxGroupLength, var->elemType);
    const RequestPieces pieces = {var->address, 1, negative ? 0 : var->count, limit};
    forEachPiece(pieces, [&](int address, int, int count) {
        var->address = address;
        var->count = count;
        if (queue.size() < kQueueBound && !isQueued(queue, *var)) {
            RW_VAR piece = *var;  // a cut at a bound must not reach the caller's record
            appendDriverRead(queue, piece);
        }
    });
    return queue.size();
}

int AddListWriteVar(RW_VAR *var, int mode) {
    if (refuses(var)) {
        return 0;
    }
    QList<RW_VAR> &queue = PLC_driver.writeVarList;
    QMutexLocker lock(&PLC_driver.listMutex);
    if (mode != kQueueUnchanged) {
        for (int i = 1; i < queue.size(); ++i) {  // the head is being served, so search from 1
            if (sameWrite(queue.at(i), *var)) {
                queue[i] = *var;
                return queue.size();
            }
        }
        if (queue.size() >= kQueueBound) {
            return queue.size();
        }
    }
    queue.append(*var);
    return queue.size();
}

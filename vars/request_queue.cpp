#include "vars/request_queue.h"

#include "vars/address_text.h"
#include "vars/request_merge.h"
#include "vars/request_pieces.h"
#include "vars/variable_record.h"

namespace {

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

}  // namespace

bool resolveOnceRead(RW_VAR &var, const ComInfo &comInfo) {
    const int address = elementAddress(var.elemType, var.addressText);
    if (address < 0) {
        return false;
    }
    var.address = address;
    var.station = stationInForce(comInfo, var.station);
    var.param1 = 0;
    var.param2 = 0;
    return var.station != 0 && updateRwVar(&var) == 0;
}

void appendOnceRead(QList<RW_VAR> &queue, RW_VAR &var, int count, int limit) {
    for (const Piece &piece : piecesOf(var.address, count, limit)) {
        var.address = piece.address;
        var.count = piece.count;
        if (queue.size() < kQueueBound && !isQueued(queue, var)) {
            appendDriverRead(queue, var);
        }
    }
}

void appendOrReplaceWrite(QList<RW_VAR> &queue, const RW_VAR &var) {
    for (int i = 1; i < queue.size(); ++i) {  // the head is being served, so search from 1
        if (sameWrite(queue.at(i), var)) {
            queue[i] = var;
            return;
        }
    }
    if (queue.size() < kQueueBound) {
        queue.append(var);
    }
}

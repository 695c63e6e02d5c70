// What the model makes of a reply.
#include <climits>

#include "fuzz/driver_frames.h"
#include "fuzz/driver_model.h"
#include "fuzz/driver_types.h"

namespace reference {

int Model::answer(const QByteArray *reply, int length) {
    result.retValue = 1;
    if (settings == nullptr || outstanding.empty()) {
        return 1;
    }
    const bool remote = outstanding.front().var.nodeId != settings->localNode;
    const int code =
        judge(outstanding.front(), reply == nullptr ? QByteArray() : *reply, reply == nullptr ? 0 : length);
    if (code == 1 || code == 100) {
        failed = false;
        settings->frameDone = narrowed(settings->frameDone + 1LL);
        outstanding.pop_front();
        if (settings->frameDone < settings->frameTotal) {
            return result.retValue = code;
        }
        if (!remote) {
            countTowardPass();
        }
    } else if (retry()) {
        return result.retValue = 0;
    }
    finish(remote);
    if (failed) {
        reportFailure();
    }
    return result.retValue = code;
}

/// The result code, and what a good reply leaves behind.
int Model::judge(const Protocol &request, const QByteArray &reply, int length) {
    const bool remote = request.var.nodeId != settings->localNode;
    const bool mergeRead = request.var.param1 == -1;
    const Verdict verdict = check(request, reply);
    int base = 0;
    if (length == 0 && request.replyLength != 0) {
        base = 40;
    } else if (request.replyLength != length && request.replyLength != -1) {
        base = 70;
    } else if (verdict == Rejected) {
        base = 10;
    }
    if (base != 0) {
        const int ownerId = request.var.ownerId;
        return base + (remote ? 100 : 0) + 1 + (ownerId >= 0 && ownerId <= 11 ? ownerId : 0);
    }
    if (mergeRead && (remote || verdict == ToStore)) {
        completeBitWrite(reply);
    } else if (!remote && verdict == ToStore) {
        values.storeReply(request, reply);
    }
    return remote && !(mergeRead && settings->frameDone != 1) ? 100 : 1;
}

Model::Verdict Model::check(const Protocol &request, const QByteArray &reply) const {
    const int station = byteAt(request.frame, settings->remoteMode != 0 ? 4 : 0);
    if (station == 0) {
        return NothingToStore;
    }
    const int size = reply.size();
    if (size < 6 || byteAt(reply, 0) != station ||
        crcOf(reply, size - 2) != byteAt(reply, size - 2) + 256 * byteAt(reply, size - 1)) {
        return Rejected;
    }
    return request.var.accessFlag == 0 ? ToStore : NothingToStore;
}

void Model::completeBitWrite(const QByteArray &reply) {
    if (reply.size() < 6 || writes.isEmpty() || outstanding.size() < 2) {
        return;
    }
    const int bit = writes.first().address % 16;
    int word = byteAt(reply, 3) * 256 + byteAt(reply, 4);
    if (bit >= 0) {
        word = byteAt(writes.first().data, 0) != 0 ? word | 1 << bit : word & ~(1 << bit);
    }
    QByteArray frame = outstanding[1].frame.left(4);  // of function 6: no bit write makes another
    frame.append(static_cast<char>(word >> 8)).append(static_cast<char>(word & 0xFF));
    outstanding[1].frame = withCrc(frame);
}

void Model::countTowardPass() {
    if (settings->cycleDone == 0 && ++passCount > cyclic.size()) {
        passCount = 0;
        settings->cycleDone = 1;
    }
}

/// False: the retries are used up.
bool Model::retry() {
    if (settings->retryCount != INT_MAX && settings->retryCount + 1 <= settings->retryTimes) {
        ++settings->retryCount;
        return true;
    }
    failed = true;
    passCount = settings->cycleDone = settings->retryCount = 0;
    outstanding.clear();
    return false;
}

void Model::finish(bool remote) {
    if (kind == 1 && !writes.isEmpty()) {
        finishHead(writes, true, false);
    } else if (kind == 2 && !onceReads.isEmpty()) {
        finishHead(onceReads, !remote, true);
    } else if (kind == 0 && !cyclic.isEmpty() && cyclic.first().retValue == -1) {
        cyclic.first().retValue = 0;
        cyclic.append(cyclic.takeFirst());
        result = cyclic.last();
        result.data.clear();
    }
}

void Model::finishHead(QList<RW_VAR> &queue, bool report, bool ownNodeOnly) {
    const RW_VAR head = queue.first();
    bool again = false;
    for (int i = 1; i < queue.size(); ++i) {
        again = again || (queue[i].ownerId == head.ownerId && queue[i].itemId == head.itemId &&
                          (!ownNodeOnly || queue[i].nodeId == settings->localNode));
    }
    if (report && hasVarCallBack && (failed || !again)) {
        called({Callback::Var, settings->hostContext, head.ownerId, head.itemId, failed ? 2 : 1});
    }
    result = head;
    result.data.clear();
    queue.removeFirst();
}

void Model::reportFailure() {
    if (hasListCallBack) {
        called({Callback::List, nullptr, result.ownerId, 0, 1});
    }
    if (kind != 1 && kind != 2) {
        return;
    }
    QList<RW_VAR> &queue = kind == 1 ? writes : onceReads;
    QList<RW_VAR> kept;
    for (const RW_VAR &entry : queue) {
        const bool stationsCount = settings != nullptr && settings->useVarStation != 0;
        if (entry.ownerId != result.ownerId || entry.itemId != result.itemId ||
            (stationsCount && entry.station != result.station)) {
            kept.append(entry);
        }
    }
    queue = kept;
}

}  // namespace reference

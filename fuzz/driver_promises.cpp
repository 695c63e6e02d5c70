#include "fuzz/driver_promises.h"

#include <algorithm>

#include "driver/Communication_Protocol.h"

namespace {

bool isFree(QMutex &mutex) {
    const bool taken = mutex.tryLock();
    if (taken) {
        mutex.unlock();
    }
    return taken;
}

void promiseLocks() {
    expect(isFree(PLC_driver.listMutex), "listMutex is free after a call");
    expect(isFree(PLC_driver.cacheMutex), "cacheMutex is free after a call");
    expect(isFree(PLC_driver.stationMutex), "stationMutex is free after a call");
}

// Looked at entry by entry: a copy of the list would move its records.
void promiseOutstanding(const std::deque<Protocol> &expected) {
    const QList<Protocol> &requests = PLC_driver.protocolList;
    expect(requests.size() == static_cast<int>(expected.size()), "the outstanding requests are those of the operation");
    for (int i = 0; i < requests.size(); ++i) {
        const Protocol &request = requests.at(i);
        const Protocol &other = expected[static_cast<size_t>(i)];
        expect(request.frame == other.frame, "a frame holds what it is to say, and its checksum");
        expect(request.frameLength == other.frameLength, "frameLength is that of the frame");
        expect(request.replyLength == other.replyLength, "replyLength is that of the reply");
        expect(request.dataOffset == other.dataOffset, "dataOffset");
        expect(request.dataLength == other.dataLength, "dataLength");
        expect(sameRecord(request.var, other.var), "a request names its variable");
        expect(request.reserved1 == 0 && request.reserved2 == 0 && request.reserved3 == 0, "reserved words are 0");
    }
}

void promiseCounters(const reference::Model &model) {
    expect(PLC_driver.comType == model.kind, "comType is the kind of the last request");
    expect(PLC_driver.writeTimes == model.writesInARow, "writes in a row");
    expect(PLC_driver.onceReadTimes == model.onceReadsInARow, "one-shot reads in a row");
    expect(PLC_driver.readCycleCount == model.passCount, "operations counted toward a pass");
    expect((PLC_driver.comFailed != 0) == model.failed, "the link counts as failed from a failure to a good reply");
    expect(PLC_driver.spareVarList.isEmpty() && PLC_driver.extendVars.isEmpty() && PLC_driver.spareFlag == 0,
           "what is spare stays empty");
}

bool holdsValue(reference::Values::Key key, quint32 value) {
    const QByteArray entry = PLC_driver.valueCache.value(CacheKey{key});
    quint32 held = 0;
    for (int i = 0; i < entry.size(); ++i) {
        held |= static_cast<quint32>(static_cast<unsigned char>(entry.at(i))) << (8 * i);
    }
    return entry.size() == reference::Values::sizeOf(key) && held == value;
}

}  // namespace

bool sameRecord(const RW_VAR &a, const RW_VAR &b) {
    return a.ownerId == b.ownerId && a.itemId == b.itemId && a.accessFlag == b.accessFlag &&
           a.remoteMode == b.remoteMode && a.nodeId == b.nodeId && a.retValue == b.retValue && a.label == b.label &&
           a.addressText == b.addressText && a.elemType == b.elemType && a.address == b.address &&
           a.station == b.station && a.count == b.count && a.param1 == b.param1 && a.param2 == b.param2 &&
           a.data == b.data;
}

bool sameList(const QList<RW_VAR> &a, const QList<RW_VAR> &b) {
    return a.size() == b.size() && std::equal(a.constBegin(), a.constEnd(), b.constBegin(), sameRecord);
}

void promiseState(reference::Model &model) {
    promiseLocks();
    expect(sameList(PLC_driver.readVarList, model.cyclic), "the cyclic list");
    expect(sameList(PLC_driver.writeVarList, model.writes), "the write queue");
    expect(sameList(PLC_driver.onceReadVarList, model.onceReads), "the queue of one-shot reads");
    promiseOutstanding(model.outstanding);
    expect(sameRecord(PLC_driver.retVar, model.result), "the result record names what was finished last");
    promiseCounters(model);
    expect(PLC_driver.stationMap.size() == static_cast<int>(model.disabled.size()), "disabled stations");
    for (const int station : model.disabled) {
        expect(PLC_driver.stationMap.value(station, 1) == 0, "a disabled station is in the table");
    }
    for (const reference::Values::Key key : model.values.takeTouched()) {
        expect(holdsValue(key, model.values.all().at(key)), "an element holds what was last read or written");
    }
    expect(PLC_driver.valueCache.size() == static_cast<int>(model.values.all().size()), "no other element is touched");
}

void promiseValues(const reference::Model &model) {
    for (const auto &value : model.values.all()) {
        expect(holdsValue(value.first, value.second), "every element holds what was last read or written");
    }
}

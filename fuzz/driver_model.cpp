#include "fuzz/driver_model.h"

#include "fuzz/driver_cuts.h"
#include "fuzz/driver_frames.h"
#include "fuzz/driver_types.h"

namespace reference {

namespace {

const int kMostQueued = 1024;

bool sameElements(const RW_VAR &a, const RW_VAR &b) {
    return a.station == b.station && a.elemType == b.elemType && a.address == b.address && a.count == b.count;
}

bool holds(const QList<RW_VAR> &queue, const RW_VAR &var) {
    for (const RW_VAR &entry : queue) {
        if (sameElements(entry, var) && entry.ownerId == var.ownerId && entry.itemId == var.itemId &&
            entry.nodeId == var.nodeId) {
            return true;
        }
    }
    return false;
}

/// Values of a host as a write record carries them.
QByteArray recordData(const QByteArray &values, Class elementClass, int count) {
    QByteArray data;
    const int bytesEach = elementClass == Word ? 2 : elementClass == DoubleWord || elementClass == Pair ? 4 : 1;
    for (qint64 i = 0; i < qint64(count) * bytesEach; ++i) {
        const int value = byteAt(values, i);
        if (elementClass == Bit) {
            if (i % 8 == 0) {
                data.append('\0');
            }
            data[data.size() - 1] = static_cast<char>(data.at(data.size() - 1) | (value != 0) << (i % 8));
        } else {
            data.append(static_cast<char>(elementClass == BitInWord ? value != 0 : value));
        }
    }
    return data;
}

}  // namespace

void Model::bind(int record) {
    settings = record < kRecords ? &records[record] : nullptr;
    if (settings != nullptr) {
        settings->clearedWordA = settings->clearedWordB = 0;
    }
}

int Model::addCyclic(const RW_VAR &var) {
    if (settings == nullptr || var.count > kMaxElementCount) {
        return 0;
    }
    cyclic.append(var);
    return cyclic.size();
}

int Model::addOnceRead(RW_VAR &var, int mode) {
    if (settings == nullptr || var.count > kMaxElementCount) {
        return 0;
    }
    if (mode == 1) {
        onceReads.append(var);
        return onceReads.size();
    }
    const int address = elementAddress(var.elemType, var.addressText);
    if (address < 0) {
        return 0;
    }
    var.station = stationInForce(*settings, var.station);
    var.address = address;
    var.param1 = var.param2 = 0;
    const bool asksForNothing = var.count < 0;
    if (var.station == 0 || !normalise(var)) {
        return 0;
    }
    const int count = asksForNothing ? 0 : var.count;
    for (const RW_VAR &piece : pieces(var, count, frameLimit(settings->maxGroupLength, var.elemType))) {
        var = piece;
        if (onceReads.size() < kMostQueued && !holds(onceReads, piece)) {
            onceReads += readsOf(piece, bound(piece.elemType));
        }
    }
    return onceReads.size();
}

int Model::addWrite(const RW_VAR &var, int mode) {
    if (settings == nullptr || var.count > kMaxElementCount) {
        return 0;
    }
    int same = mode == 1 ? writes.size() : 1;
    while (same < writes.size() && !sameElements(writes[same], var)) {
        ++same;
    }
    if (same < writes.size()) {
        writes[same] = var;
    } else if (mode == 1 || writes.size() < kMostQueued) {
        writes.append(var);
    }
    return writes.size();
}

int Model::rebuild(const QList<ReadVarEntry> &entries) {
    if (settings == nullptr) {
        return 0;
    }
    cyclic = cyclicReads(entries, *settings);
    if (!entries.isEmpty()) {
        passCount = 0;
        settings->cycleDone = 0;
    }
    return cyclic.size();
}

int Model::getValues(int type, const QString &addressText, int station, QByteArray &out, int count) {
    out.clear();
    if (count > kMaxElementCount) {
        return 0;
    }
    const int address = settings == nullptr ? -1 : elementAddress(type, addressText);
    if (address < 0) {
        out.fill('\0', count < 1 ? 0 : count * 2);
        return 0;
    }
    out = values.read(type, stationInForce(*settings, station), address, count);
    return 1;
}

int Model::setValues(RW_VAR record, const QByteArray &hostValues, int hostCount) {
    if (settings == nullptr || hostCount > kMaxElementCount) {
        return 0;
    }
    const Class elementClass = classOf(record.elemType);
    record.accessFlag = 1;
    record.remoteMode = settings->remoteMode;
    record.nodeId = settings->localNode;
    record.address = elementAddress(record.elemType, record.addressText);
    record.station = stationInForce(*settings, record.station);
    const bool twoRegisters = elementClass == Pair || elementClass == DoubleWord;
    record.count = twoRegisters ? int((hostCount + 1LL) / 2) : hostCount;
    if (record.address < 0) {
        return 0;
    }
    const bool toDevice = settings->writeMode == 2;
    if (elementClass != NoType) {
        record.data = recordData(hostValues, elementClass, record.count);
        const QList<RW_VAR> parts = toDevice ? deviceWrites(record, settings->maxGroupLength) : QList<RW_VAR>({record});
        for (const RW_VAR &part : parts) {
            if (toDevice) {
                writes.append(part);
            }
            if (!toDevice || failed) {
                values.storeWritten(part);
            }
        }
    }
    return toDevice ? 0 : 1;
}

void Model::enableStation(int station, int enable) {
    if (station < 0) {
        disabled.clear();
    } else if (enable == 0) {
        disabled.insert(station);
    } else if (enable == 1) {
        disabled.erase(station);
    }
}

bool Model::next() {
    if (settings == nullptr || !outstanding.empty()) {
        return settings != nullptr;
    }
    if (!serve(writes, writesInARow, 1) && !serve(onceReads, onceReadsInARow, 2)) {
        serveCyclic();
    }
    if (outstanding.empty()) {
        writesInARow = onceReadsInARow = 0;
        settings->cycleDone = 1;
    }
    return !outstanding.empty();
}

bool Model::serve(QList<RW_VAR> &queue, int &inARow, int servedKind) {
    if (inARow == 5) {
        return false;
    }
    while (!queue.isEmpty() && disabled.count(queue.first().station) != 0) {
        queue.removeFirst();
    }
    if (queue.isEmpty()) {
        return false;
    }
    build(queue.first(), servedKind == 1);
    kind = servedKind;
    ++inARow;
    return true;
}

void Model::serveCyclic() {
    for (int tried = 0; tried < cyclic.size(); ++tried) {
        if (disabled.count(cyclic.first().station) == 0) {
            build(cyclic.first(), false);
            cyclic.first().retValue = -1;
            kind = writesInARow = onceReadsInARow = 0;
            return;
        }
        cyclic.append(cyclic.takeFirst());
    }
}

void Model::build(const RW_VAR &var, bool write) {
    const bool remote = settings->remoteMode != 0;
    if (write && !remote && classOf(var.elemType) == BitInWord) {
        buildBitWrite(var);
    } else if (write) {
        outstanding.push_back(remote ? remoteWriteRequest(var) : writeRequest(var));
    } else {
        outstanding.push_back(remote ? remoteReadRequest(var) : readRequest(var));
    }
    settings->frameTotal = int(outstanding.size());
    settings->frameDone = 0;
    if (write && (remote || !failed)) {
        values.storeWritten(var);
    }
}

void Model::buildBitWrite(const RW_VAR &var) {
    RW_VAR word = var;
    word.elemType = wireType(var.elemType);
    word.address /= 16;
    word.count = 1;
    word.data = QByteArray(2, '\0');
    word.accessFlag = 0;
    word.param1 = -1;
    outstanding.push_back(readRequest(word));
    word.accessFlag = 1;
    word.param1 = 0;
    outstanding.push_back(writeRequest(word));
}

}  // namespace reference

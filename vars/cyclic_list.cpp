#include "vars/cyclic_list.h"

#include <QtCore/QMap>
#include <QtCore/QMutexLocker>

#include <algorithm>

#include "driver/Communication_Protocol.h"
#include "vars/Func_Initi.h"
#include "vars/request_merge.h"

namespace {

typedef QMap<int, QMap<int, QList<RW_VAR>>> Groups;  // by station, then by normalised element type

bool byAddress(const RW_VAR &left, const RW_VAR &right) {
    return left.address < right.address;
}

qint64 endOf(const RW_VAR &var) {
    return qint64(var.address) + var.count;
}

void startRequest(QList<RW_VAR> &requests, const RW_VAR &variable, int limit) {
    const RequestPieces pieces = {variable.address, 1, variable.count, limit};
    forEachPiece(pieces, [&](int address, int, int count) {
        RW_VAR piece = variable;
        piece.address = address;
        piece.count = count;
        appendDriverRead(requests, piece);
    });
}

// Lengthens the last request to end. The pieces beyond the frame limit become requests of their own.
void growLast(QList<RW_VAR> &requests, qint64 end, int limit) {
    const RW_VAR tail = requests.last();  // a copy: the last entry changes below
    const RequestPieces pieces = {tail.address, 1, end - tail.address, limit};
    forEachPiece(pieces, [&](int address, int first, int count) {
        RW_VAR piece = tail;
        piece.address = address;
        piece.count = count;
        if (first == 0) {
            reviseDriverRead(requests, piece);
        } else {
            appendDriverRead(requests, piece);
        }
    });
}

// Fills work with the entry's variable, normalised. False: the entry is to be left out.
bool fillVariable(const ReadVarEntry &entry, const ComInfo &comInfo, RW_VAR &work) {
    const int address = StringAddressToInt(entry.elemType, entry.addressText);
    const int station = stationInForce(comInfo, entry.station);
    if (address < 0 || station == 0 || entry.count > kMaxElementCount) {
        return false;
    }
    work.label = entry.label;
    work.addressText = entry.addressText;
    work.elemType = entry.elemType;
    work.address = address;
    work.station = station;
    work.count = entry.count;
    return updateRwVar(&work) == 0;
}

Groups groupVariables(const QList<ReadVarEntry> &entries, const ComInfo &comInfo) {
    Groups groups;
    RW_VAR work = driverRecord(comInfo);
    work.itemId = -1;
    for (int i = 0; i < entries.size(); ++i) {
        // Only looked at: the host's entries may be longer than the fields known here.
        if (fillVariable(entries.at(i), comInfo, work)) {
            groups[work.station][work.elemType].append(work);
        }
    }
    return groups;
}

}  // namespace

void Bubble_Sort(QList<RW_VAR> *list) {
    std::stable_sort(list->begin(), list->end(), byAddress);
}

void BitVarReCreat(QList<RW_VAR> *group, int limit) {
    QList<RW_VAR> &requests = PLC_driver.readVarList;
    const int firstOfGroup = requests.size();
    const QList<RW_VAR> &variables = *group;
    for (const RW_VAR &variable : variables) {
        const bool hasTail = requests.size() > firstOfGroup;
        if (!hasTail || variable.address >= qint64(requests.last().address) + limit) {
            startRequest(requests, variable, limit);
        } else if (endOf(variable) > endOf(requests.last())) {
            growLast(requests, endOf(variable), limit);
        }
    }
}

int ReCreatReadVarList(QList<ReadVarEntry> *entries) {
    if (!PLC_driver.comInfo || !entries) {
        return 0;
    }
    QMutexLocker lock(&PLC_driver.listMutex);
    PLC_driver.readVarList.clear();
    const QList<ReadVarEntry> &hostEntries = *entries;
    if (hostEntries.isEmpty()) {
        return 0;
    }
    ComInfo &comInfo = *PLC_driver.comInfo;
    PLC_driver.readCycleCount = 0;
    comInfo.cycleDone = 0;
    const int limit = comInfo.maxGroupLength;  // once: the host may change it meanwhile
    Groups groups = groupVariables(hostEntries, comInfo);
    for (Groups::iterator station = groups.begin(); station != groups.end(); ++station) {
        QMap<int, QList<RW_VAR>> &types = station.value();
        for (QMap<int, QList<RW_VAR>>::iterator type = types.begin(); type != types.end(); ++type) {
            Bubble_Sort(&type.value());
            BitVarReCreat(&type.value(), frameLimit(limit, type.key()));
        }
    }
    return PLC_driver.readVarList.size();
}

int AddListReadVar(RW_VAR *var) {
    if (!PLC_driver.comInfo || !var || var->count > kMaxElementCount) {
        return 0;
    }
    PLC_driver.readVarList.append(*var);
    return PLC_driver.readVarList.size();
}

void WhetherGroup(int count, int limit, RW_VAR *var, QList<RW_VAR> *list) {
    const int pieceLimit = qMax(limit, 1);
    if (count <= pieceLimit) {
        list->append(*var);
        return;
    }
    if (count > kMaxElementCount) {
        return;
    }
    const RequestPieces pieces = {var->address, 1, count, pieceLimit};
    forEachPiece(pieces, [&](int address, int, int pieceCount) {
        var->address = address;
        var->count = pieceCount;
        list->append(*var);
    });
}

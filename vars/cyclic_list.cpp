#include "vars/cyclic_list.h"

#include <QtCore/QMap>

#include <algorithm>

#include "vars/address_text.h"
#include "vars/request_merge.h"
#include "vars/request_pieces.h"
#include "vars/variable_record.h"

namespace {

typedef QMap<int, QMap<int, QList<RW_VAR>>> Groups;  // by station, then by normalised element type

bool byAddress(const RW_VAR &left, const RW_VAR &right) {
    return left.address < right.address;
}

qint64 endOf(const RW_VAR &var) {
    return qint64(var.address) + var.count;
}

// Fills work with the entry's variable, normalised. False: the entry is to be left out.
bool fillVariable(const ReadVarEntry &entry, const ComInfo &comInfo, RW_VAR &work) {
    const int address = elementAddress(entry.elemType, entry.addressText);
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

void startRequest(QList<RW_VAR> &requests, const RW_VAR &variable, int limit) {
    for (const Piece &piece : piecesOf(variable.address, variable.count, limit)) {
        appendDriverRead(requests, pieceOf(variable, piece));
    }
}

// Lengthens the last request to end. The pieces beyond the frame limit become requests of their own.
void growLast(QList<RW_VAR> &requests, qint64 end, int limit) {
    const RW_VAR tail = requests.last();  // a copy: the last entry changes below
    for (const Piece &piece : piecesOf(tail.address, end - tail.address, limit)) {
        const RW_VAR part = pieceOf(tail, piece);
        if (piece.first == 0) {
            reviseDriverRead(requests, part);
        } else {
            appendDriverRead(requests, part);
        }
    }
}

}  // namespace

QList<QList<RW_VAR>> sortedGroups(const QList<ReadVarEntry> &entries, const ComInfo &comInfo) {
    QList<QList<RW_VAR>> sorted;
    Groups groups = groupVariables(entries, comInfo);
    for (QMap<int, QList<RW_VAR>> &types : groups) {
        for (QList<RW_VAR> &group : types) {
            Bubble_Sort(&group);
            sorted.append(group);
        }
    }
    return sorted;
}

void Bubble_Sort(QList<RW_VAR> *list) {
    std::stable_sort(list->begin(), list->end(), byAddress);
}

void appendMerged(QList<RW_VAR> &requests, const QList<RW_VAR> &sortedGroup, int limit) {
    const int firstOfGroup = requests.size();
    for (const RW_VAR &variable : sortedGroup) {
        const bool hasTail = requests.size() > firstOfGroup;
        if (!hasTail || variable.address >= qint64(requests.last().address) + limit) {
            startRequest(requests, variable, limit);
        } else if (endOf(variable) > endOf(requests.last())) {
            growLast(requests, endOf(variable), limit);
        }
    }
}

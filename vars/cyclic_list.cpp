#include "vars/cyclic_list.h"

#include "korvel_dravo_elements.h"
#include "vars/cyclic_variables.h"
#include "vars/request_merge.h"
#include "vars/request_pieces.h"
#include "vars/variable_record.h"

namespace {

RW_VAR recordOf(const CyclicVariable &variable, const ReadVarEntry &entry, const ComInfo &comInfo) {
    RW_VAR record = driverRecord(comInfo);
    record.itemId = -1;
    record.label = entry.label;
    record.addressText = entry.addressText;
    record.elemType = variable.elemType();
    record.address = variable.address();
    record.station = stationInForce(comInfo, entry.station);
    record.count = variable.count;
    return record;
}

void startRequest(QList<RW_VAR> &requests, const RW_VAR &variable, int limit) {
    for (const Piece &piece : piecesOf(variable.address, variable.count, limit)) {
        appendDriverRead(requests, pieceOf(variable, piece));
    }
}

// Lengthens the last request to so many elements. The pieces beyond the frame limit become requests of their own.
void growLast(QList<RW_VAR> &requests, qint64 count, int limit) {
    RW_VAR tail = requests.last();  // a copy: the last entry changes below
    for (const Piece &piece : piecesOf(tail.address, count, limit)) {
        const RW_VAR part = pieceOf(tail, piece);
        if (piece.first == 0) {
            reviseDriverRead(requests, part);
        } else {
            appendDriverRead(requests, part);
        }
    }
}

// Has the last request read the variable too. False: it starts beyond the reach of that request.
bool joinLast(QList<RW_VAR> &requests, const CyclicVariable &variable, int limit) {
    const RW_VAR &last = requests.at(requests.size() - 1);
    if (variable.address() >= qint64(last.address) + limit) {
        return false;
    }
    const qint64 count = qint64(variable.address()) + variable.count - last.address;
    if (count > limit || crossesBound(last.address, count, dravo::addressMapBound(last.elemType))) {
        growLast(requests, count, limit);
    } else if (count > last.count) {
        requests.last().count = int(count);  // as nearly always: nothing to cut
    }
    return true;
}

}  // namespace

QList<RW_VAR> cyclicRequests(const QList<ReadVarEntry> &entries, const ComInfo &comInfo) {
    QList<RW_VAR> requests;
    const std::vector<CyclicVariable> variables = sortedVariables(entries, comInfo);
    int firstOfGroup = 0;  // only requests of the variable's own group grow
    int limit = 0;
    for (size_t i = 0; i < variables.size(); ++i) {
        const CyclicVariable &variable = variables[i];
        if (i == 0 || variable.group() != variables[i - 1].group()) {
            firstOfGroup = requests.size();
            limit = frameLimit(comInfo.maxGroupLength, variable.elemType());
        }
        if (requests.size() == firstOfGroup || !joinLast(requests, variable, limit)) {
            startRequest(requests, recordOf(variable, entries.at(variable.index), comInfo), limit);
        }
    }
    return requests;
}

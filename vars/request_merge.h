// Cuts requests into frames and at area bounds. No lock: the caller makes sure that nobody else changes the list.
#ifndef DRAVO_VARS_REQUEST_MERGE_H
#define DRAVO_VARS_REQUEST_MERGE_H

#include <climits>

#include "korvel_dravo_port.h"

/// A run of elements to be cut into requests.
struct RequestPieces {
    int address;      // of the first element
    int addressStep;  // from one element to the next
    qint64 count;     // elements; below 1: no piece
    int limit;        // most elements in a piece; below 1 counts as 1
};

/// Calls use(address, first, count) for each piece in order: its element address, the index of its first element, and
/// its elements. Elements whose address exceeds an int are left out: no controller has them.
template <typename Use>
void forEachPiece(const RequestPieces &whole, Use use) {
    const int limit = qMax(whole.limit, 1);
    for (qint64 first = 0; first < whole.count; first += limit) {
        const qint64 address = whole.address + first * whole.addressStep;
        if (address > INT_MAX) {
            return;
        }
        use(int(address), int(first), int(qMin<qint64>(limit, whole.count - first)));
    }
}

/// As function_rw_var_add_read and function_rw_var_revise, cut at every bound of the address map.
void appendDriverRead(QList<RW_VAR> &list, RW_VAR &var);
void reviseDriverRead(QList<RW_VAR> &list, RW_VAR &var);

/// Appends a write whose data are complete, cut at every bound of the address map. A 32-bit value that lies across one
/// becomes two one-register writes, high half first; a bit that is cut off its neighbours goes alone.
void appendDriverWrite(QList<RW_VAR> &list, const RW_VAR &var);

#endif  // DRAVO_VARS_REQUEST_MERGE_H

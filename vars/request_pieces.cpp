#include "vars/request_pieces.h"

#include <climits>

#include "codec/integers.h"

Pieces::Pieces(int address, qint64 count, int limit, int step)
    : address_(address), count_(count), limit_(qMax(limit, 1)), step_(step), size_(0) {
    const qint64 addressable = (qint64(INT_MAX) - address) / step + 1;
    const qint64 cut = qMin(count, addressable);
    if (cut > 0) {
        size_ = (cut - 1) / limit_ + 1;
    }
}

Piece Pieces::at(qint64 index) const {
    const qint64 first = index * limit_;
    const Piece piece = {int(address_ + first * step_), saturated(first), int(qMin<qint64>(limit_, count_ - first))};
    return piece;
}

RW_VAR pieceOf(const RW_VAR &whole, const Piece &piece) {
    RW_VAR part = whole;
    part.address = piece.address;
    part.count = piece.count;
    return part;
}

void WhetherGroup(int count, int limit, RW_VAR *var, QList<RW_VAR> *list) {
    if (count <= qMax(limit, 1)) {
        list->append(*var);
        return;
    }
    if (count > kMaxElementCount) {
        return;
    }
    for (const Piece &piece : piecesOf(var->address, count, limit)) {
        var->address = piece.address;
        var->count = piece.count;
        list->append(*var);
    }
}

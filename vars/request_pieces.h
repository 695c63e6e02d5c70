// Cuts a run of elements into pieces of a largest size. Pure; any thread.
#ifndef DRAVO_VARS_REQUEST_PIECES_H
#define DRAVO_VARS_REQUEST_PIECES_H

#include "korvel_dravo_port.h"

struct Piece {
    int address;  // element address
    int first;    // index of its first element in the run
    int count;    // elements
};

/// The pieces of a run, in order: for (const Piece &piece : piecesOf(...)).
class Pieces {
public:
    Pieces(int address, qint64 count, int limit, int step);

    class const_iterator {
    public:
        const_iterator(const Pieces &pieces, qint64 index) : pieces_(&pieces), index_(index) {}
        Piece operator*() const { return pieces_->at(index_); }
        const_iterator &operator++() {
            ++index_;
            return *this;
        }
        bool operator!=(const const_iterator &other) const { return index_ != other.index_; }

    private:
        const Pieces *pieces_;
        qint64 index_;
    };
    const_iterator begin() const { return const_iterator(*this, 0); }
    const_iterator end() const { return const_iterator(*this, size_); }

private:
    Piece at(qint64 index) const;

    int address_;
    qint64 count_;
    int limit_;
    int step_;
    qint64 size_;
};

/// @param address  of the first element; step (at least 1) leads from one element to the next.
/// @param count    elements; below 1: no piece.
/// @param limit    most elements in a piece; below 1 counts as 1.
/// Pieces whose address exceeds an int are left out: no controller has them.
inline Pieces piecesOf(int address, qint64 count, int limit, int step = 1) {
    return Pieces(address, count, limit, step);
}

/// A copy of whole with the address and count of a piece.
RW_VAR pieceOf(const RW_VAR &whole, const Piece &piece);

#endif  // DRAVO_VARS_REQUEST_PIECES_H

// The elements that the variables of one station and element type need, by address: what may be read by itself, what
// belongs together, where a variable begins or ends. Pure; any thread.
#ifndef DRAVO_LINE_WANTED_ELEMENTS_H
#define DRAVO_LINE_WANTED_ELEMENTS_H

#include <QtCore/QByteArray>
#include <QtCore/QVector>

#include "line/read_limits.h"

namespace dravo {

/// Elements first to first + count - 1.
struct ElementRange {
    int first;
    int count;

    qint64 end() const { return qint64(first) + count; }
};
inline bool operator==(const ElementRange &a, const ElementRange &b) {
    return a.first == b.first && a.count == b.count;
}

/// One variable, in elements of the type that carries it on the line.
struct WantedRange {
    int address;
    int count;  // elements; below 1: nothing
    int unit;   // elements that make one value and are read together: 2 for a 32-bit value in two registers (an odd
                // count is rounded up), else 1

    qint64 elements() const { return unit == 2 ? (count + 1LL) / 2 * 2 : count; }
};

class WantedElements {
public:
    WantedElements();
    /// Any number of ranges in any order, overlapping ones too. Elements without an address on the wire are left out;
    /// of a range that begins below 0, all. A 32-bit value that lies across the type's bound, or that the frame limit
    /// is too small for, counts as two elements: it can only be read in halves.
    WantedElements(const QVector<WantedRange> &ranges, const ReadLimits &limits);

    const ReadLimits &limits() const { return limits_; }

    /// Everything wanted lies in begin() to end() - 1.
    int begin() const { return begin_; }
    int end() const { return begin_ + qMax(flags_.size() - 1, 0); }
    bool isWanted(int address) const { return (flags(address) & (Single | Pair)) || (flags(address - 1) & Pair); }
    /// An element that makes a value by itself; it may lie in a 32-bit value too.
    bool isSingle(int address) const { return flags(address) & Single; }
    /// A 32-bit value begins here.
    bool isPair(int address) const { return flags(address) & Pair; }
    /// A variable begins here, or ends before it.
    bool isBoundary(int address) const { return flags(address) & Boundary; }

private:
    enum { Single = 1, Pair = 2, Boundary = 4 };
    int flags(int address) const {
        return address < begin_ || address - begin_ >= flags_.size() ? 0 : flags_.at(address - begin_);
    }

    ReadLimits limits_;
    int begin_;
    QByteArray flags_;  // from begin to end, that one included
};

}  // namespace dravo

#endif  // DRAVO_LINE_WANTED_ELEMENTS_H

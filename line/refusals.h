// What the refusals of one station and element type have taught: where requests are cut, and what is left out. Pure.
#ifndef DRAVO_LINE_REFUSALS_H
#define DRAVO_LINE_REFUSALS_H

#include "line/wanted_elements.h"

namespace dravo {

/// Elements that were refused in a request of their own.
struct RefusedRange {
    ElementRange range;
    bool onlyPair;  // only the 32-bit value in it is refused, single elements of it may be readable
    qint64 nextRetryUs;

    /// Whether a value of count elements is left out.
    bool covers(int first, int count) const {
        const bool holdsRange = first <= range.first && first + count >= range.end();
        const bool liesInside = first >= range.first && first + count <= range.end();
        return holdsRange || (liesInside && !onlyPair);
    }
};

/// What a refusal has taught.
enum Learnt {
    NothingNew,
    GapsCut,       // the elements between the variables of the request are no longer read
    VariablesCut,  // its variables are no longer read together
    LeftOut        // it is not read any more
};

struct Refusals {
    QVector<int> walls;             // ascending. At a wall x no request holds both x - 1 and x, except one for a
                                    // single 32-bit value that lies across it
    QVector<RefusedRange> refused;  // by first address, then count; with a wall at both ends

    /// The request was refused.
    /// @param retryUs  when it is to be tried again, if it is left out.
    Learnt learn(const ElementRange &request, const WantedElements &wanted, qint64 retryUs);
    /// The request was answered. @return something that was left out has come back. The walls around it fall, those
    /// between other variables stay.
    bool takeBack(const ElementRange &answered);
    /// What concerns the variables of today. A refused range in which one begins or ends is to be asked in parts, one
    /// that no longer fits a request again.
    Refusals stillOfUse(const WantedElements &wanted) const;

    /// The index of the first refused range that does not come before this one.
    int placeOf(const ElementRange &range) const;
};

}  // namespace dravo

#endif  // DRAVO_LINE_REFUSALS_H

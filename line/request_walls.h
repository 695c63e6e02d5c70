// What controllers have refused, and where requests are therefore cut. A refused request is first cut at its gaps,
// then between its variables; what cannot be cut is left out and tried again rarely. The lessons hang on station,
// element type and addresses, so they hold for any plan. Pure of clocks; communication thread.
#ifndef DRAVO_LINE_REQUEST_WALLS_H
#define DRAVO_LINE_REQUEST_WALLS_H

#include <QtCore/QMap>
#include <QtCore/QString>

#include "line/wanted_elements.h"

namespace dravo {

/// Variables that can share requests.
struct ReadGroup {
    int station;
    int elemType;  // as carried on the line
};
inline bool operator<(const ReadGroup &a, const ReadGroup &b) {
    return a.station != b.station ? a.station < b.station : a.elemType < b.elemType;
}

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

/// What is known of one group.
struct Refusals {
    QVector<int> walls;             // ascending. At a wall x no request holds both x - 1 and x, except one for a
                                    // single 32-bit value that lies across it
    QVector<RefusedRange> refused;  // by first address, then count; with a wall at both ends
};

/// What a refusal has taught.
struct Lesson {
    enum Kind { Nothing, GapsCut, VariablesCut, Refused };
    Kind kind;
    ElementRange range;  // the request that was refused

    /// For the user: "station 3 refuses 110 to 119 of type 7: no longer read, tried again rarely". Empty for Nothing.
    QString text(const ReadGroup &group) const;
};

class RequestWalls {
public:
    explicit RequestWalls(qint64 retryAfterUs = 60000000) : retryAfterUs_(retryAfterUs) {}

    /// A cyclic read or a retry was refused with exception 2 or 3. Requests may be cut in any way.
    /// @return Nothing: a refused retry, a request that a plan with the present walls would not hold, or one for
    ///         elements that nobody wants any more. Otherwise the group needs a new plan.
    Lesson refused(const ReadGroup &group, const ElementRange &request, const WantedElements &wanted, qint64 nowUs);
    /// A read was answered with values. @return something refused can be read again; the group needs a new plan. The
    /// walls around it fall, those between other variables stay.
    bool answered(const ReadGroup &group, const ElementRange &request);
    /// The variables have changed. Forgets what no longer concerns any of them. A refused range in which a variable
    /// now begins or ends is to be asked again in parts.
    void wantedChanged(const QMap<ReadGroup, WantedElements> &wanted);

    /// For planReads.
    Refusals of(const ReadGroup &group) const { return groups_.value(group); }
    /// Whether some of the variable is refused.
    bool isRefused(const ReadGroup &group, const WantedRange &variable) const;

    /// When the next refused range is to be tried again; the largest qint64 when none is refused.
    qint64 nextRetryUs() const;
    /// The range to try again now, the longest overdue first. It is due again after the retry time, whatever comes.
    /// @return false: none is due.
    bool takeDueRetry(qint64 nowUs, ReadGroup *group, ElementRange *range);

private:
    qint64 retryAfterUs_;
    QMap<ReadGroup, Refusals> groups_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_REQUEST_WALLS_H

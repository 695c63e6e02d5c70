// What controllers have refused, and where requests are therefore cut. A refused request is first cut at its gaps,
// then between its variables; what cannot be cut is left out and tried again rarely. The lessons hang on station,
// element type and addresses, so they hold for any plan. Pure of clocks; communication thread.
#ifndef DRAVO_LINE_REQUEST_WALLS_H
#define DRAVO_LINE_REQUEST_WALLS_H

#include <QtCore/QMap>
#include <QtCore/QString>

#include "line/refusals.h"

namespace dravo {

/// Variables that can share requests.
struct ReadGroup {
    int station;
    int elemType;  // as carried on the line
};
inline bool operator<(const ReadGroup &a, const ReadGroup &b) {
    return a.station != b.station ? a.station < b.station : a.elemType < b.elemType;
}

struct Lesson {
    Learnt learnt;
    ElementRange range;  // the request that was refused

    /// For the user: "station 3 refuses 110 to 119 of type 7: no longer read, tried again rarely". Empty where nothing
    /// new was learnt.
    QString text(const ReadGroup &group) const;
};

class RequestWalls {
public:
    explicit RequestWalls(qint64 retryAfterUs = 60000000) : retryAfterUs_(retryAfterUs) {}

    /// A cyclic read or a retry was refused with exception 2 or 3. The request may come from any merge. Unless nothing
    /// new was learnt, the group needs a new plan; a group with walls is to be read by plan, since requests across a
    /// wall teach nothing.
    Lesson refused(const ReadGroup &group, const ElementRange &request, const WantedElements &wanted, qint64 nowUs);
    /// A read was answered with values. @return something refused can be read again; the group needs a new plan.
    bool answered(const ReadGroup &group, const ElementRange &request);
    /// The variables have changed. Forgets what no longer concerns any of them.
    void wantedChanged(const QMap<ReadGroup, WantedElements> &wanted);

    /// For planReads.
    Refusals of(const ReadGroup &group) const { return groups_.value(group); }
    /// Whether some of the variable is refused.
    bool isRefused(const ReadGroup &group, const WantedRange &variable) const;

    /// Something of the station that is refused. @return false: nothing is.
    bool anyRefused(int station, ReadGroup *group, ElementRange *range) const;

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

// The cyclic list of the driver: made of the watched variables, by the driver's own merge or by time, and cut anew
// where a controller refuses something. Communication thread.
#ifndef DRAVO_LINE_CYCLIC_READS_H
#define DRAVO_LINE_CYCLIC_READS_H

#include "line/driver_port.h"
#include "line/read_plan.h"
#include "line/request_walls.h"

namespace dravo {

class CyclicReads {
public:
    CyclicReads(const LineSettings &settings, DriverPort &port);

    void watch(const QVector<Variable> &variables);

    /// A cyclic read, or a read of what was refused, is over. @return in words what the controller taught, empty:
    /// nothing; then the list is made anew by update().
    QString finished(const LineEvent &exchange, qint64 nowUs);
    /// Gives the driver a new list if there is something new to it. @return there was.
    bool update();

    /// Queues a read of something refused that is to be tried again, as a one-shot read.
    void retryRefused(qint64 nowUs);
    qint64 nextRetryUs() const { return walls_.nextRetryUs(); }
    bool isRefused(const Variable &variable) const;
    /// The 32-bit values that are watched and of which a read brought one half.
    QList<Elements> tornBy(const Elements &read) const;
    /// A read to ask a station whether it is there: the one that asks for least, else one that is refused.
    /// @return false: it has none.
    bool probeOf(int station, RW_VAR *read) const;

    /// What the driver has in its list.
    const QList<RW_VAR> &requests() const { return requests_; }
    /// What they take on a line without faults.
    qint64 plannedUs() const { return plannedUs_; }

private:
    ReadCost cost() const;
    qint64 workOutPlannedUs() const;
    static ReadGroup groupOf(const Elements &elements);
    static WantedRange wantedOf(const Variable &variable);
    bool isPlannedHere(const ReadGroup &group) const;
    QList<RW_VAR> makeList();
    bool findBadlyMerged(const QList<RW_VAR> &requests);
    RW_VAR record(const ReadGroup &group, const ElementRange &range) const;

    LineSettings settings_;
    DriverPort &port_;
    QVector<Variable> variables_;
    QMap<ReadGroup, WantedElements> wanted_;
    QMap<ReadGroup, bool> badlyMerged_;  // those that the driver's merge does not fit
    RequestWalls walls_;
    QList<RW_VAR> requests_;
    qint64 plannedUs_;
    bool isNew_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_CYCLIC_READS_H

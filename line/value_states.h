// What is known of every element that cyclic requests cover: when it was read, and how the last request for it ended.
// Requests may be cut anew at any time. Communication thread.
#ifndef DRAVO_LINE_VALUE_STATES_H
#define DRAVO_LINE_VALUE_STATES_H

#include <QtCore/QMap>

#include "korvel_dravo_line.h"

namespace dravo {

class ValueStates {
public:
    ValueStates() : reads_(0) {}

    /// A read of the elements is over at nowUs. good: their values are in the cache.
    void readFinished(const Elements &elements, bool good, int code, int exceptionCode, qint64 nowUs);
    /// What the cache shows of the elements may be something that the controller does not hold, such as a write that
    /// has begun: stale until read again. Station 0 is every station.
    void becameUnsure(const Elements &elements);
    /// Forgets the elements that no variable covers, so that memory is bounded by what is watched.
    void keepOnly(const QVector<Variable> &variables);

    /// Fresh, Stale, NeverRead or Failing, in this order of what a variable's parts can be. A 32-bit value whose halves
    /// came with different reads is stale: they may be of two moments.
    ValueState stateOf(const Variable &variable, qint64 nowUs, qint64 staleAfterUs) const;

private:
    struct Segment {
        int end;          // behind its last element
        qint64 goodAtUs;  // the smallest time: never
        qint64 read;      // the number of the read that brought it; two of them may end at the same time
        bool unsure;
        int code;
        int exceptionCode;
    };
    typedef QMap<int, Segment> Segments;  // by first element; they do not overlap
    typedef qint64 Group;                 // station and element type

    static Group groupOf(const Elements &elements);
    static void cutAt(Segments *segments, int address);
    Segments *cutOut(const Elements &elements);
    template <typename Change>
    void changeEach(const Elements &elements, Change change);

    QMap<Group, Segments> groups_;
    qint64 reads_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_VALUE_STATES_H

// Which of the host's operations the driver gets next, and when: stations that are down do not hold the others up, and
// writes wait until it is known whether the adapter echoes. Communication thread.
#ifndef DRAVO_LINE_OPERATION_TURNS_H
#define DRAVO_LINE_OPERATION_TURNS_H

#include "line/call_loop.h"
#include "line/operation_queue.h"
#include "line/pass_clock.h"

namespace dravo {

class OperationTurns {
public:
    /// @param settings  in range.
    explicit OperationTurns(const LineSettings &settings);

    OperationQueue &queue() { return queue_; }

    /// The next operation, if the driver may have one now.
    bool take(const CallLoop &loop, const PassClock &passes, HostOperation *operation);
    /// When the next one may be had, if nothing else happens before; the end of time: nobody knows.
    qint64 nextUs(const CallLoop &loop) const;

    void passIsOver() { mayProbe_ = true; }
    /// The reads have another chance to show whether the adapter echoes: after a write that nobody is sure of, and
    /// where nothing is known any more.
    void echoIsUnclear() { writesHeldSinceUs_ = -1; }

private:
    bool mayWrite(const CallLoop &loop, const PassClock &passes);
    QList<int> resting(const CallLoop &loop) const;

    // Of two lifetimes one may go by with what is outstanding.
    qint64 holdEndUs() const { return writesHeldSinceUs_ + 2 * lifetimeUs_ + 1; }

    const qint64 lifetimeUs_;
    OperationQueue queue_;
    bool mayProbe_;             // a station that is down by an operation, in this pass
    qint64 probeFromUs_;        // and not before
    qint64 writesHeldSinceUs_;  // below 0: they are not
};

}  // namespace dravo

#endif  // DRAVO_LINE_OPERATION_TURNS_H

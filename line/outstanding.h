// Which sent frames can still be answered. One entry for every sending, retries included, until the end of sending plus
// the reply lifetime.
#ifndef DRAVO_LINE_OUTSTANDING_H
#define DRAVO_LINE_OUTSTANDING_H

#include <QtCore/QHash>
#include <QtCore/QList>

#include "line/frame_finder.h"
#include "line/reply_shape.h"

namespace dravo {

class Outstanding {
public:
    /// @param answersMayDouble  an answer takes no entry away.
    explicit Outstanding(bool answersMayDouble) : answersMayDouble_(answersMayDouble), broadcastWrites_(0) {}

    /// A request as the driver hands it out: what may answer it, its number, and whether it is of the cyclic list. An
    /// answer to an earlier sending of the same frame serves a cyclic read as well, as long as nothing was written to
    /// the station since.
    struct Request {
        RequestShape shape;
        qint64 number;
        bool cyclic;
        qint64 position;  // bytes received before its first sending; what began before is no answer to it
    };

    /// A frame goes out behind the bytes received so far; its answer has arrived by expiresUs or never will.
    void sent(const Request &request, qint64 position, qint64 expiresUs);
    /// The last frame went out later than thought.
    void delayLast(qint64 expiresUs);
    /// Drops the entries that nothing arriving at nowUs or later can answer.
    void expire(qint64 nowUs);

    /// Until when the first try of a request has to be held back; nowUs: not at all.
    qint64 heldUntil(const Request &request, qint64 nowUs) const;

    /// What a reply frame is to the request that waits (null: none does).
    enum Match {
        Foreign,    // nothing outstanding can have caused it
        Answer,     // to the waiting request
        Late,       // to another one
        Ambiguous,  // an exception that more than one request can have caused
    };
    /// Matches a frame by when and where it arrived, and removes the oldest entry that it can answer.
    Match take(const Frame &reply, const Request *waiting);

    /// Length of an answer to an entry whose first bytes stand at offset, of which there may be too few to be sure; 0:
    /// there is none.
    /// @param longerThan  only those; the lengths are asked for in turn.
    int nextLength(const QByteArray &bytes, int offset, int longerThan) const;

    /// The latest time until which an answer of the station is expected; nowUs: none is.
    qint64 expectedUntil(int station, qint64 nowUs) const;

private:
    struct Entry {
        RequestShape shape;
        qint64 request;   // its number
        qint64 position;  // bytes received before it was sent
        qint64 expiresUs;
        qint64 writesBefore;  // to the station
    };
    Match takeException(const Frame &reply, const Request *waiting);
    bool serves(const Entry &entry, const Request &request) const;
    bool isAlive(const Entry &entry, const Frame &reply) const;
    void answered(int index);
    qint64 writesTo(int station) const { return writes_.value(station) + broadcastWrites_; }

    bool answersMayDouble_;
    QList<Entry> entries_;       // in the order of sending
    QHash<int, qint64> writes_;  // by station
    qint64 broadcastWrites_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_OUTSTANDING_H

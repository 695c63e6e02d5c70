#include "line/outstanding.h"

#include <limits.h>

#include "line/frame_bytes.h"

namespace dravo {

void Outstanding::sent(const Request &request, qint64 position, qint64 expiresUs) {
    const RequestShape &shape = request.shape;
    if (shape.station == 0) {
        ++broadcastWrites_;  // nothing answers it, and the turnaround is its time to be carried out
        return;
    }
    const Entry entry = {shape, request.number, position, expiresUs, writesTo(shape.station)};
    entries_.append(entry);
    if (shape.isWrite) {
        ++writes_[shape.station];
    }
}

void Outstanding::expire(qint64 nowUs) {
    for (int i = entries_.size() - 1; i >= 0; --i) {
        if (entries_.at(i).expiresUs < nowUs) {
            entries_.removeAt(i);
        }
    }
}

void Outstanding::delayLast(qint64 expiresUs) {
    if (!entries_.isEmpty()) {
        entries_.last().expiresUs = qMax(entries_.last().expiresUs, expiresUs);
    }
}

qint64 Outstanding::heldUntil(const Request &request, qint64 nowUs) const {
    qint64 until = nowUs;
    for (int i = 0; i < entries_.size(); ++i) {
        const Entry &entry = entries_.at(i);
        if (entry.expiresUs < nowUs) {
            continue;
        }
        const bool mistakable = answersLookAlike(entry.shape, request.shape) && !serves(entry, request);
        if (mistakable || (entry.shape.isWrite && overlap(entry.shape, request.shape))) {
            until = qMax(until, entry.expiresUs + 1);
        }
    }
    return until;
}

bool Outstanding::serves(const Entry &entry, const Request &request) const {
    return entry.request == request.number || (request.cyclic && entry.shape.frame == request.shape.frame &&
                                               entry.writesBefore == writesTo(request.shape.station));
}

// The oldest entry decides: a request is held back until no other's answer could pass for its own.
Outstanding::Match Outstanding::take(const Frame &reply, const Request *waiting) {
    if (isException(reply.bytes)) {
        return takeException(reply, waiting);
    }
    for (int i = 0; i < entries_.size(); ++i) {
        const Entry &entry = entries_.at(i);
        if (isAlive(entry, reply) && entry.shape.fits(reply.bytes)) {
            const bool isAnswer = waiting && reply.start >= waiting->position && serves(entry, *waiting);
            answered(i);
            return isAnswer ? Answer : Late;
        }
    }
    return Foreign;
}

Outstanding::Match Outstanding::takeException(const Frame &reply, const Request *waiting) {
    int oldest = -1;
    int serving = 0;
    int others = 0;
    for (int i = 0; i < entries_.size(); ++i) {
        const Entry &entry = entries_.at(i);
        if (!isAlive(entry, reply) || !entry.shape.fitsException(reply.bytes)) {
            continue;
        }
        if (oldest >= 0 && entry.shape.frame != entries_.at(oldest).shape.frame) {
            return Ambiguous;
        }
        oldest = oldest < 0 ? i : oldest;
        ++(waiting && reply.start >= waiting->position && serves(entry, *waiting) ? serving : others);
    }
    if (oldest < 0) {
        return Foreign;
    }
    if (serving > 0 && others > 0) {
        return Ambiguous;
    }
    answered(oldest);
    return serving > 0 ? Answer : Late;
}

// An answer lies wholly behind the sending of what it answers, and within its lifetime. Nobody looks at the line all
// the time, so it counts as arrived when it was not there yet: an entry taken for expired too early would let the
// answer remove a younger one.
bool Outstanding::isAlive(const Entry &entry, const Frame &reply) const {
    return entry.position <= reply.start && reply.sinceUs <= entry.expiresUs;
}

void Outstanding::answered(int index) {
    if (!answersMayDouble_) {
        entries_.removeAt(index);
    }
}

int Outstanding::nextLength(const QByteArray &bytes, int offset, int longerThan) const {
    int next = INT_MAX;
    for (int i = 0; i < entries_.size(); ++i) {
        const RequestShape &shape = entries_.at(i).shape;
        if (byteOf(bytes, offset) != shape.station) {
            continue;
        }
        const int function = byteOf(bytes, offset + 1);  // -1: not there yet
        const bool exception = function < 0 || function == ((shape.function | kExceptionBit) & 0xFF) ||
                               (shape.function == kAnyFunction && (function & kExceptionBit));
        if (exception && kExceptionLength > longerThan) {
            next = qMin(next, kExceptionLength);
        }
        const bool ordinary = function < 0 || function == shape.function || shape.function == kAnyFunction;
        const QByteArray head = bytes.mid(offset + 2, shape.head.size());
        if (ordinary && shape.head.startsWith(head) && shape.replyLength <= kLongestFrame &&
            shape.replyLength > longerThan) {
            next = qMin(next, shape.replyLength);
        }
    }
    return next == INT_MAX ? 0 : next;
}

qint64 Outstanding::expectedUntil(int station, qint64 nowUs) const {
    qint64 until = nowUs;
    for (int i = 0; i < entries_.size(); ++i) {
        if (entries_.at(i).shape.station == station) {
            until = qMax(until, entries_.at(i).expiresUs);
        }
    }
    return until;
}

}  // namespace dravo

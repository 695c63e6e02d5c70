// Adapters that return what was sent: whether this one does, and which frames are such copies.
#ifndef DRAVO_LINE_ECHO_WATCH_H
#define DRAVO_LINE_ECHO_WATCH_H

#include <QtCore/QList>

#include "korvel_dravo_line.h"
#include "line/frame_finder.h"
#include "line/reply_shape.h"

namespace dravo {

class EchoWatch {
public:
    explicit EchoWatch(EchoMode mode);
    /// Nothing is known any more, unless the mode is set.
    void restart();

    /// A frame goes out behind the bytes received so far; its copy may come until expiresUs.
    void sent(const RequestShape &shape, qint64 position, qint64 expiresUs);
    /// The last frame went out later than thought.
    void delayLast(qint64 expiresUs);
    void expire(qint64 nowUs);

    /// Whether the frame is a copy of one that was sent. Each copy is expected once.
    bool take(const Frame &frame);
    /// A read that does not look like its answer is over. clean: answered at its first try by the very first bytes.
    void readFinished(bool clean);

    /// The length of the longest expected copy of which the bytes from offset on are the beginning; 0: none.
    int lengthAt(const QByteArray &bytes, int offset) const;

    bool isKnown() const { return state_ != Undecided; }

private:
    enum State { Undecided, Present, Absent };
    struct Copy {
        RequestShape shape;
        qint64 position;
        qint64 expiresUs;
    };
    EchoMode mode_;
    State state_;
    int cleanReads_;
    QList<Copy> expected_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_ECHO_WATCH_H

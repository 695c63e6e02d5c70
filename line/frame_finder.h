// Finds whole frames in what arrives: behind noise, in any portions, several at once. A frame that is still arriving is
// not searched for others.
#ifndef DRAVO_LINE_FRAME_FINDER_H
#define DRAVO_LINE_FRAME_FINDER_H

#include <QtCore/QByteArray>
#include <QtCore/QList>

namespace dravo {

struct Frame {
    QByteArray bytes;  // CRC included and right
    qint64 start;      // bytes received before its first one
    qint64 sinceUs;    // its last byte was not there at this time yet
    qint64 arrivedUs;  // and seen at this one
};

class Outstanding;
class EchoWatch;

class FrameFinder {
public:
    explicit FrameFinder(qint64 nowUs) : position_(0), noise_(0), lastByteUs_(nowUs), lookedUs_(nowUs) {}

    /// All that has arrived up to nowUs and was not passed before; empty: nothing.
    void received(const QByteArray &bytes, qint64 nowUs);
    /// Drops what has not become a frame.
    void clear() {
        noise_ += bytes_.size();
        drop(bytes_.size());
    }

    /// The next whole frame, or false. Bytes that start none are dropped on the way.
    /// @param silent  nothing more belongs to what has arrived so far.
    bool take(const Outstanding &outstanding, const EchoWatch &echo, bool silent, Frame *frame);

    /// Bytes that belonged to no frame, since the last call.
    qint64 takeNoise() {
        const qint64 noise = noise_;
        noise_ = 0;
        return noise;
    }

    /// Bytes received so far, from the first on.
    qint64 position() const { return position_; }
    qint64 lastByteUs() const { return lastByteUs_; }
    /// Whether something has arrived that may become a frame.
    bool isArriving() const { return !bytes_.isEmpty(); }
    /// When the oldest byte that may become a frame was not there yet.
    qint64 arrivingSinceUs() const { return portionOf(position_ - bytes_.size()).sinceUs; }

private:
    enum Claim { NothingStarts = 0, MayGrow = -1 };
    int claimAt(int offset, const Outstanding &outstanding, const EchoWatch &echo, bool silent) const;
    struct Portion {
        qint64 end;  // position behind its last byte
        qint64 sinceUs;
        qint64 arrivedUs;
    };
    Portion portionOf(qint64 position) const;
    void drop(int count);

    QByteArray bytes_;         // not yet sorted out
    QList<Portion> portions_;  // that they came in
    qint64 position_;
    qint64 noise_;
    qint64 lastByteUs_;
    qint64 lookedUs_;  // for bytes
};

}  // namespace dravo

#endif  // DRAVO_LINE_FRAME_FINDER_H

#include "line/frame_finder.h"

#include "line/echo_watch.h"
#include "line/frame_bytes.h"
#include "line/outstanding.h"

namespace dravo {

void FrameFinder::received(const QByteArray &bytes, qint64 nowUs) {
    if (!bytes.isEmpty()) {
        bytes_.append(bytes);
        position_ += bytes.size();
        lastByteUs_ = nowUs;
        const Portion portion = {position_, lookedUs_, nowUs};
        portions_.append(portion);
    }
    lookedUs_ = nowUs;
}

bool FrameFinder::take(const Outstanding &outstanding, const EchoWatch &echo, bool silent, Frame *frame) {
    int offset = 0;
    int claim = NothingStarts;
    while (offset < bytes_.size()) {
        claim = claimAt(offset, outstanding, echo, silent);
        if (claim != NothingStarts) {
            break;
        }
        ++offset;
    }
    noise_ += offset;
    drop(offset);
    if (claim <= 0) {
        return false;
    }
    frame->bytes = bytes_.left(claim);
    frame->start = position_ - bytes_.size();
    const Portion portion = portionOf(frame->start + claim - 1);
    frame->sinceUs = portion.sinceUs;
    frame->arrivedUs = portion.arrivedUs;
    drop(claim);
    return true;
}

// A copy of what was sent goes before everything else: a shorter frame inside it is none. Then answers that are
// expected, then any frame that its own header measures. In remote mode only their lengths are known, and one may have
// a right CRC within another: then the header decides.
int FrameFinder::claimAt(int offset, const Outstanding &outstanding, const EchoWatch &echo, bool silent) const {
    const int available = bytes_.size() - offset;
    const int copy = echo.lengthAt(bytes_, offset);
    if (copy > 0 && copy <= available) {
        return copy;
    }
    bool mayGrow = copy > 0;
    if (mayGrow && !silent) {
        return MayGrow;
    }
    const int byHeader = lengthByHeader(bytes_, offset);
    int claim = 0;
    for (int length = outstanding.nextLength(bytes_, offset, 0); length > 0;
         length = outstanding.nextLength(bytes_, offset, length)) {
        if (length > available) {
            mayGrow = true;
            claim = length == byHeader && !silent ? MayGrow : claim;
        } else if (crcFits(bytes_, offset, length)) {
            claim = claim <= 0 || length == byHeader ? length : claim;
        }
    }
    if (claim != NothingStarts) {
        return claim;
    }
    if (byHeader == 0 || byHeader > available) {
        mayGrow = true;
    } else if (byHeader > 0 && crcFits(bytes_, offset, byHeader)) {
        return byHeader;
    }
    return mayGrow && !silent ? MayGrow : NothingStarts;
}

FrameFinder::Portion FrameFinder::portionOf(qint64 position) const {
    for (int i = 0; i < portions_.size(); ++i) {
        if (position < portions_.at(i).end) {
            return portions_.at(i);
        }
    }
    const Portion none = {position, lookedUs_, lookedUs_};
    return none;
}

void FrameFinder::drop(int count) {
    bytes_.remove(0, count);
    const qint64 start = position_ - bytes_.size();
    while (!portions_.isEmpty() && portions_.at(0).end <= start) {
        portions_.removeFirst();
    }
}

}  // namespace dravo

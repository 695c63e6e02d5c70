#include "line/echo_watch.h"

namespace dravo {

namespace {
const int kCleanReads = 3;  // a copy that got lost three times in a row is taken for one that never comes
}

EchoWatch::EchoWatch(EchoMode mode) : mode_(mode), state_(Undecided), cleanReads_(0) {
    restart();
}

void EchoWatch::restart() {
    state_ = mode_ == EchoOn ? Present : mode_ == EchoOff ? Absent : Undecided;
    cleanReads_ = 0;
    expected_.clear();
}

void EchoWatch::sent(const RequestShape &shape, qint64 position, qint64 expiresUs) {
    const Copy copy = {shape, position, expiresUs};
    expected_.append(copy);
}

void EchoWatch::delayLast(qint64 expiresUs) {
    if (!expected_.isEmpty()) {
        expected_.last().expiresUs = qMax(expected_.last().expiresUs, expiresUs);
    }
}

void EchoWatch::expire(qint64 nowUs) {
    while (!expected_.isEmpty() && expected_.at(0).expiresUs < nowUs) {
        expected_.removeFirst();
    }
}

bool EchoWatch::take(const Frame &frame) {
    for (int i = 0; i < expected_.size(); ++i) {
        const Copy &copy = expected_.at(i);
        if (copy.position > frame.start || copy.expiresUs < frame.sinceUs || copy.shape.frame != frame.bytes) {
            continue;
        }
        if (copy.shape.looksAnswered && state_ == Absent) {
            return false;  // it is the answer
        }
        if (!copy.shape.looksAnswered && mode_ == EchoAuto) {
            state_ = Present;  // nothing but an echo looks like this
        }
        expected_.removeAt(i);
        return true;
    }
    return false;
}

void EchoWatch::readFinished(bool clean) {
    if (state_ != Undecided) {
        return;
    }
    cleanReads_ = clean ? cleanReads_ + 1 : 0;
    if (cleanReads_ >= kCleanReads) {
        state_ = Absent;
    }
}

int EchoWatch::lengthAt(const QByteArray &bytes, int offset) const {
    int longest = 0;
    const int available = bytes.size() - offset;
    for (int i = 0; i < expected_.size(); ++i) {
        const QByteArray &frame = expected_.at(i).shape.frame;
        const int compared = qMin(available, frame.size());
        const bool begins = bytes.mid(offset, compared) == frame.left(compared);
        if (begins && frame.size() > longest) {
            longest = frame.size();
        }
    }
    return longest;
}

}  // namespace dravo

#include "line/pass_clock.h"

#include "line/variable.h"

namespace dravo {

PassClock::Key PassClock::keyOf(const Elements &elements) {
    return Key(qint64(elements.station) << 32 | quint32(elements.elemType),
               qint64(elements.address) << 32 | quint32(elements.count));
}

void PassClock::begin(const QList<RW_VAR> &requests, qint64 beginUs) {
    beginUs_ = beginUs;
    finished_ = 0;
    left_.clear();
    leftOf_.clear();
    for (int i = 0; i < requests.size(); ++i) {
        ++left_[keyOf(elementsOf(requests.at(i)))];
        ++leftOf_[requests.at(i).station];
    }
}

void PassClock::finished(const Elements &elements) {
    const QMap<Key, int>::iterator left = left_.find(keyOf(elements));
    if (left == left_.end()) {
        return;  // of a list that is no more
    }
    ++finished_;
    if (--left.value() == 0) {
        left_.erase(left);
    }
    const QMap<int, int>::iterator ofStation = leftOf_.find(elements.station);
    if (--ofStation.value() == 0) {
        leftOf_.erase(ofStation);
    }
}

bool PassClock::isLeft(const StationBackoff &stations) const {
    for (QMap<int, int>::const_iterator it = leftOf_.constBegin(); it != leftOf_.constEnd(); ++it) {
        if (!stations.isDown(it.key())) {
            return true;
        }
    }
    return false;
}

}  // namespace dravo

#include "line/operation_queue.h"

#include <algorithm>

namespace dravo {

namespace {

const int kMostReadRequests = 700;  // the driver's queue of one-shot reads ends at 1024, and 247 stations may be probed
const int kMostWriteRequests = 10000;
const int kWritesInARow = 5;  // as the driver has it
const int kNone = -1;

struct OfStation {
    explicit OfStation(int number) : station(number) {}
    bool operator()(const HostOperation &operation) const { return operation.variable.station == station; }
    int station;
};

struct OfOthers {
    explicit OfOthers(const QList<int> &these) : stations(these) {}
    bool operator()(const HostOperation &operation) const { return !stations.contains(operation.variable.station); }
    const QList<int> &stations;
};

bool wasAskedBefore(const HostOperation &a, const HostOperation &b) {
    return a.number < b.number;
}

}  // namespace

OperationQueue::OperationQueue() : writeRequests_(0), readRequests_(0), writesInARow_(0) {}

bool OperationQueue::hasRoom(bool isWrite, int requests) const {
    return isWrite ? writeRequests_ + requests <= kMostWriteRequests : readRequests_ + requests <= kMostReadRequests;
}

void OperationQueue::add(const HostOperation &operation) {
    (operation.isWrite ? writes_ : reads_).append(operation);
    (operation.isWrite ? writeRequests_ : readRequests_) += operation.requests;
}

HostOperation OperationQueue::takeAt(QList<HostOperation> *queue, int index) {
    HostOperation operation = queue->takeAt(index);
    (operation.isWrite ? writeRequests_ : readRequests_) -= operation.requests;
    return operation;
}

bool OperationQueue::hasAnyOf(int station) const {
    return std::any_of(writes_.constBegin(), writes_.constEnd(), OfStation(station)) ||
           std::any_of(reads_.constBegin(), reads_.constEnd(), OfStation(station));
}

bool OperationQueue::hasAnyBut(const QList<int> &stations) const {
    return std::any_of(writes_.constBegin(), writes_.constEnd(), OfOthers(stations)) ||
           std::any_of(reads_.constBegin(), reads_.constEnd(), OfOthers(stations));
}

// A broadcast writes to every station.
bool OperationQueue::hasWriteTo(int station) const {
    return std::any_of(writes_.constBegin(), writes_.constEnd(), OfStation(station)) ||
           std::any_of(writes_.constBegin(), writes_.constEnd(), OfStation(0));
}

// Its index; below 0: none.
int OperationQueue::nextWrite(const QList<int> &resting) const {
    bool passed = false;
    for (int i = 0; i < writes_.size(); ++i) {
        const int station = writes_.at(i).variable.station;
        if (station == 0 && passed) {
            return kNone;
        }
        if (!resting.contains(station)) {
            return i;
        }
        passed = true;
    }
    return kNone;
}

int OperationQueue::nextRead(bool mayWrite, const QList<int> &resting) const {
    for (int i = 0; i < reads_.size(); ++i) {
        const int station = reads_.at(i).variable.station;
        if (!resting.contains(station) && (mayWrite || !hasWriteTo(station))) {
            return i;
        }
    }
    return kNone;
}

bool OperationQueue::take(bool mayWrite, const QList<int> &resting, HostOperation *operation) {
    const int write = mayWrite ? nextWrite(resting) : kNone;
    const int read = write == kNone || writesInARow_ >= kWritesInARow ? nextRead(mayWrite, resting) : kNone;
    if (write == kNone && read == kNone) {
        return false;
    }
    writesInARow_ = read == kNone ? qMin(writesInARow_ + 1, kWritesInARow) : 0;
    *operation = read == kNone ? takeAt(&writes_, write) : takeAt(&reads_, read);
    return true;
}

QList<HostOperation> OperationQueue::takeAllOf(int station) {
    QList<HostOperation> taken;
    QList<HostOperation> *const queues[] = {&writes_, &reads_};
    for (QList<HostOperation> *const queue : queues) {
        for (int i = 0; i < queue->size();) {
            if (queue->at(i).variable.station == station) {
                taken.append(takeAt(queue, i));
            } else {
                ++i;
            }
        }
    }
    std::sort(taken.begin(), taken.end(), wasAskedBefore);
    return taken;
}

QList<HostOperation> OperationQueue::takeAll() {
    QList<HostOperation> all = writes_ + reads_;
    std::sort(all.begin(), all.end(), wasAskedBefore);
    *this = OperationQueue();
    return all;
}

}  // namespace dravo

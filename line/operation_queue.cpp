#include "line/operation_queue.h"

#include <algorithm>

#include "line/station_backoff.h"

namespace dravo {

namespace {

const int kMostReadRequests = 1000;  // the driver's queue of one-shot reads ends at 1024
const int kMostWriteRequests = 10000;

bool wasAskedBefore(const HostOperation &a, const HostOperation &b) {
    return a.number < b.number;
}

}  // namespace

OperationQueue::OperationQueue() : writeRequests_(0), readRequests_(0), mayProbe_(true) {}

bool OperationQueue::hasRoom(bool isWrite, int requests) const {
    return isWrite ? writeRequests_ + requests <= kMostWriteRequests : readRequests_ + requests <= kMostReadRequests;
}

void OperationQueue::add(const HostOperation &operation) {
    (operation.isWrite ? writes_ : reads_).append(operation);
    (operation.isWrite ? writeRequests_ : readRequests_) += operation.requests;
}

bool OperationQueue::take(const StationBackoff &stations, HostOperation *operation) {
    return takeFrom(&writes_, stations, operation) || takeFrom(&reads_, stations, operation);
}

bool OperationQueue::takeFrom(QList<HostOperation> *queue, const StationBackoff &stations, HostOperation *operation) {
    for (int i = 0; i < queue->size(); ++i) {
        const bool isProbe = stations.isDown(queue->at(i).variable.station);
        if (isProbe && !mayProbe_) {
            continue;
        }
        mayProbe_ = mayProbe_ && !isProbe;
        *operation = queue->takeAt(i);
        (operation->isWrite ? writeRequests_ : readRequests_) -= operation->requests;
        return true;
    }
    return false;
}

QList<HostOperation> OperationQueue::takeAll() {
    QList<HostOperation> all = writes_ + reads_;
    std::sort(all.begin(), all.end(), wasAskedBefore);
    *this = OperationQueue();
    return all;
}

}  // namespace dravo

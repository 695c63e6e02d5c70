#include "line/operation_queue.h"

#include <algorithm>

namespace dravo {

namespace {

const int kMostReadRequests = 1000;  // the driver's queue of one-shot reads ends at 1024
const int kMostWriteRequests = 10000;

bool wasAskedBefore(const HostOperation &a, const HostOperation &b) {
    return a.number < b.number;
}

}  // namespace

OperationQueue::OperationQueue() : writeRequests_(0), readRequests_(0) {}

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
    const auto isOfStation = [station](const HostOperation &one) { return one.variable.station == station; };
    return std::any_of(writes_.constBegin(), writes_.constEnd(), isOfStation) ||
           std::any_of(reads_.constBegin(), reads_.constEnd(), isOfStation);
}

bool OperationQueue::take(bool mayWrite, const QList<int> &resting, HostOperation *operation) {
    QList<HostOperation> *const queues[] = {&writes_, &reads_};
    for (int q = mayWrite ? 0 : 1; q < 2; ++q) {
        for (int i = 0; i < queues[q]->size(); ++i) {
            if (!resting.contains(queues[q]->at(i).variable.station)) {
                *operation = takeAt(queues[q], i);
                return true;
            }
        }
    }
    return false;
}

QList<HostOperation> OperationQueue::takeAll(int station) {
    QList<HostOperation> taken;
    QList<HostOperation> *const queues[] = {&writes_, &reads_};
    for (QList<HostOperation> *const queue : queues) {
        for (int i = 0; i < queue->size();) {
            if (station < 0 || queue->at(i).variable.station == station) {
                taken.append(takeAt(queue, i));
            } else {
                ++i;
            }
        }
    }
    std::sort(taken.begin(), taken.end(), wasAskedBefore);
    return taken;
}

}  // namespace dravo

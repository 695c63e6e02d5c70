// The writes and one-shot reads that a host has asked for, until the driver gets them: one at a time, so that what has
// not begun can wait where its station is down. Pure; communication thread.
#ifndef DRAVO_LINE_OPERATION_QUEUE_H
#define DRAVO_LINE_OPERATION_QUEUE_H

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include "korvel_dravo_line.h"

namespace dravo {

struct HostOperation {
    int number;
    bool isWrite;
    Variable variable;
    QByteArray values;  // of a write
    int requests;       // at most, that the driver makes of it
};

class OperationQueue {
public:
    OperationQueue();

    /// Whether as many requests more of one kind can be queued.
    bool hasRoom(bool isWrite, int requests) const;
    void add(const HostOperation &operation);

    bool hasWrites() const { return !writes_.isEmpty(); }
    bool hasAnyOf(int station) const;

    /// The next one for the driver: writes before reads, each in the order of asking.
    /// @param resting  stations whose operations stay where they are.
    /// @return false: none.
    bool take(bool mayWrite, const QList<int> &resting, HostOperation *operation);
    /// All those of a station, of every station where it is below 0, in the order of asking.
    QList<HostOperation> takeAll(int station);

private:
    HostOperation takeAt(QList<HostOperation> *queue, int index);

    QList<HostOperation> writes_;
    QList<HostOperation> reads_;
    int writeRequests_;
    int readRequests_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_OPERATION_QUEUE_H

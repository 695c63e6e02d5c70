// The writes and one-shot reads that a host has asked for, until the driver gets them: one at a time, so that what has
// not begun can wait where its station is down. Pure; communication thread.
#ifndef DRAVO_LINE_OPERATION_QUEUE_H
#define DRAVO_LINE_OPERATION_QUEUE_H

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include "korvel_dravo_line.h"

namespace dravo {

class StationBackoff;

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

    /// The next one for the driver: writes before reads, each in the order of asking. Operations of stations that are
    /// down are passed over after one, until allowAnotherProbe(): each costs the others a whole timeout.
    /// @return false: none.
    bool take(const StationBackoff &stations, HostOperation *operation);
    void allowAnotherProbe() { mayProbe_ = true; }

    /// All of them, in the order of asking.
    QList<HostOperation> takeAll();

private:
    bool takeFrom(QList<HostOperation> *queue, const StationBackoff &stations, HostOperation *operation);

    QList<HostOperation> writes_;
    QList<HostOperation> reads_;
    int writeRequests_;
    int readRequests_;
    bool mayProbe_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_OPERATION_QUEUE_H

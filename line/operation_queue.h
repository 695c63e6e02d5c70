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
    bool hasAnyBut(const QList<int> &stations) const;

    /// The next one for the driver, in the order of asking: writes before reads, but after five writes a read.
    /// @param mayWrite  else writes stay, and the reads of their stations behind them.
    /// @param resting   stations whose operations stay where they are. A broadcast does not pass a write, nor a write a
    ///                  broadcast.
    /// @return false: none.
    bool take(bool mayWrite, const QList<int> &resting, HostOperation *operation);
    /// All those of a station, or all there are, in the order of asking.
    QList<HostOperation> takeAllOf(int station);
    QList<HostOperation> takeAll();

private:
    HostOperation takeAt(QList<HostOperation> *queue, int index);
    int nextWrite(const QList<int> &resting) const;
    int nextRead(bool mayWrite, const QList<int> &resting) const;
    bool hasWriteTo(int station) const;

    QList<HostOperation> writes_;
    QList<HostOperation> reads_;
    int writeRequests_;
    int readRequests_;
    int writesInARow_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_OPERATION_QUEUE_H

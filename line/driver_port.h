// The one place that calls the driver: binding, call loop, lists, stations. Communication thread.
#ifndef DRAVO_LINE_DRIVER_PORT_H
#define DRAVO_LINE_DRIVER_PORT_H

#include <QtCore/QHash>
#include <QtCore/QList>

#include "korvel_dravo_line.h"
#include "korvel_dravo_port.h"
#include "line/operation_queue.h"

namespace dravo {

/// With ownerId 0: the driver's mark of its cyclic entries.
const int kCyclicItemId = -1;

class DriverPort {
public:
    /// Binds the driver if nobody has. What is still queued in it is dropped, now and at the end: nothing that this
    /// line was not asked for goes out on it.
    explicit DriverPort(const LineSettings &settings);
    ~DriverPort();

    /// Whether this port has the driver: it was free, and nobody has bound it anew since. If not, call nothing but
    /// what says so: the driver would serve another's record and lists.
    bool hasDriver() const;

    bool remote() const { return comInfo_.remoteMode != 0; }

    /// The request that the driver wants sent, the outstanding one again while it is unanswered; null: none.
    const Protocol *request();
    /// The request that is out gets its full number of tries, from now on.
    void startTries() { comInfo_.retryCount = 0; }
    /// The next bad reply is its last.
    void endTries() { comInfo_.retryCount = comInfo_.retryTimes; }
    bool isLastTry() const { return comInfo_.retryCount >= comInfo_.retryTimes; }

    struct Verdict {
        int code;  // result code of the driver
        bool good;
        bool over;  // the operation is finished, well or badly
    };
    /// Hands the driver what answered its request, or bytes that it is sure to refuse.
    Verdict judge(QByteArray reply);

    /// Bytes that the driver's check refuses as a reply to the request, whatever the line was full of.
    static QByteArray refusable();

    /// Replaces the cyclic reads: what the driver's own merge makes of the variables, then the requests as they stand.
    /// @return the driver's list. Empty, and nothing done: the driver is another's.
    QList<RW_VAR> setCyclicReads(QList<ReadVarEntry> *merged, const QList<RW_VAR> &requests);
    /// Queues a read as it stands. Nobody hears of its end but through the exchange.
    void readAgain(RW_VAR request);
    /// Whether readAgain queued it.
    static bool isReadAgain(const RW_VAR &request);

    /// Queues a write or a one-shot read. Its end is one of finished().
    void start(const HostOperation &operation);

    struct Finished {
        int operation;
        bool done;
    };
    /// The operations that have ended since the last call, in their order.
    QList<Finished> takeFinished();

    /// Fails the request that is out and drops the queued ones; the cyclic reads stay. No end is told. Does nothing
    /// while the driver is another's.
    void dropOperations();

    /// Does nothing while the driver is another's.
    void setStation(int station, bool enabled);

    /// The fields that every record of the own node shares; everything else is 0 or empty.
    RW_VAR ownRecord() const;

private:
    DriverPort(const DriverPort &);
    DriverPort &operator=(const DriverPort &);
    void dropAll();
    void write(const HostOperation &operation);
    void readOnce(const HostOperation &operation);
    static void onVariable(void *port, int ownerId, int itemId, int code);

    const int frameLimit_;
    ComInfo comInfo_;
    QList<Finished> finished_;
};

}  // namespace dravo

#endif  // DRAVO_LINE_DRIVER_PORT_H

// The driver bound to a line: the settings record, the callbacks and the call loop. One at a time in a process, since
// there is one driver. Everything runs on the thread that made it, which is the driver's communication thread.
#ifndef DRAVO_HOST_COMMANDS_DRIVER_SESSION_H
#define DRAVO_HOST_COMMANDS_DRIVER_SESSION_H

#include <QtCore/QHash>
#include <QtCore/QVector>
#include <optional>

#include "host/pump/serial_link.h"
#include "host/tags/variable.h"
#include "korvel_dravo_port.h"

struct DriverSettings {
    int retries = 2;
    int frameLimit = 32;            // elements in a request; eight times as many coils
    std::optional<int> remoteNode;  // 0 to 255: requests are remote frames for this node; none: controller frames
};

/// One request sent and judged.
struct Exchange {
    enum class Status { Judged, Idle, Interrupted, LineLost };
    Status status = Status::Idle;
    int code = 0;           // what DataCom returned; the rest is meant for Judged only
    int exceptionCode = 0;  // of a reply that was an exception, else 0
    bool finished = false;  // the operation is over, well or badly; range names what it was for
    bool cyclic = false;    // and it was a cyclic read
    ElementRange range;
};

class DriverSession {
public:
    DriverSession(const DriverSettings &settings, SerialLink &link);
    ~DriverSession();
    DriverSession(const DriverSession &) = delete;
    DriverSession &operator=(const DriverSession &) = delete;

    // Variables are usable ones.

    /// Makes these the cyclic reads. @return requests in a pass.
    int readCyclically(const QVector<Variable> &variables);
    /// Queue an operation. @return its number, for outcome().
    int readOnce(const Variable &variable);
    int write(const Variable &variable, const QByteArray &values);

    /// Sends what the driver wants sent next, or the same again, and lets it judge the reply.
    Exchange step(const SerialLink::KeepWaiting &keepWaiting);

    enum class OperationState { Pending, Done, Failed };
    OperationState outcome(int operation) const;

private:
    static void onVariable(void *session, int ownerId, int itemId, int code);
    int newOperation();

    ComInfo comInfo_{};
    SerialLink &link_;
    int lastOperation_ = 0;
    QHash<int, OperationState> outcomes_;
};

#endif  // DRAVO_HOST_COMMANDS_DRIVER_SESSION_H

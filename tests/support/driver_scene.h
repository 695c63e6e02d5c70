// A bound driver and a few verbs to play host with. Each test, and each row after restart(), finds the driver empty.
#ifndef DRAVO_TESTS_DRIVER_SCENE_H
#define DRAVO_TESTS_DRIVER_SCENE_H

#include <functional>
#include <string>

#include "driver/Communication_Protocol.h"
#include "korvel_dravo_port.h"
#include "support/record_text.h"

/// The entries of the driver's cache. Takes cacheMutex.
std::string cacheText();

class DriverScene : public ::testing::Test {
public:
    DriverScene();
    ~DriverScene() override;

    /// An empty driver bound to settings: frame limit 32, stations of their own, no retries, device-write mode.
    void restart();

    QByteArray send();       // frame of the request handed out; empty: nothing to send
    std::string sendKind();  // W, O, C or - for a write, a one-shot read, a cyclic read, nothing
    static int answer(const QByteArray &reply);
    static int answer(const char *hexWithoutCrc) { return answer(withCrc(hexWithoutCrc)); }
    static int noReply() { return answer(QByteArray()); }
    int exchange();  // sends and gets a good reply
    static QByteArray goodReply(const QByteArray &data = QByteArray());

    static void queueWrite(const std::string &variables);  // all three: as they stand
    static void queueOnceRead(const std::string &variables);
    static void addCyclic(const std::string &variables);
    static void queue(const std::string &call);  // "write 7@100+1=3412", "read ...", "cyclic ..."
    static int setValues(const char *variable);  // values as data, owner and item: "7@100+1=3412:3/4"
    static QByteArray getValues(const char *variable, int expectedResult = 1);

    /// One exchange a row under the titles exchange, queued, sent, reply, code, callbacks, result, left. queued: what
    /// the host queues first (write, read, cyclic). sent, reply: without their CRC; nothing sent: nothing to send.
    /// left: the queues and the cyclic list.
    void play(const char *transcript);
    /// The callbacks since the last call: "done 3/4, failed 3/4, list 3" (owner, item; owner).
    void expectCallbacks(const std::string &expected);

    ComInfo settings;
    std::function<void(QList<RW_VAR> *)> duringCallback;  // list: null in the callback for one variable

private:
    static void onVariable(void *context, int ownerId, int itemId, int code);
    static void onList(QList<RW_VAR> *list, int ownerId, int code);
    void called(const std::string &callback, QList<RW_VAR> *list);

    std::string calls;
};

#endif  // DRAVO_TESTS_DRIVER_SCENE_H

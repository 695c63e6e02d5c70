// A bound driver and a few verbs to play host with. Each test, and each row after restart(), finds the driver empty.
#ifndef DRAVO_TESTS_DRIVER_SCENE_H
#define DRAVO_TESTS_DRIVER_SCENE_H

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "codec/protocol.h"
#include "driver/Communication_Protocol.h"
#include "korvel_dravo_port.h"
#include "support/frame_text.h"

/// Requests as text: "7@100+2 2/8@5+1=3412:3/4^9" is type, address (or any address text) and count, then data, owner
/// and item, node where they are not empty or 0; a station other than 1 comes first. All other fields are 0 or empty.
QList<RW_VAR> records(const std::string &text);
RW_VAR record(const std::string &text);
std::string listText(const QList<RW_VAR> &list);

/// "01070064=3412 01070065=7856": every entry of the value cache by key. Takes cacheMutex.
std::string cacheText();

struct ExpectedReply {
    int length;
    int dataOffset;
    int dataLength;
};

class DriverScene : public ::testing::Test {
public:
    DriverScene();
    ~DriverScene() override;

    /// An empty driver bound to settings: frame limit 32, stations of their own, no retries, device-write mode.
    void restart();

    QByteArray send();       // frame of the request handed out; empty: nothing to send
    std::string sendKind();  // W, O, C or - for a write, a one-shot read, a cyclic read, nothing
    int answer(const QByteArray &reply);
    int answer(const char *hexWithoutCrc) { return answer(withCrc(hexWithoutCrc)); }
    int noReply() { return answer(QByteArray()); }
    int exchange();  // sends and gets a good reply
    static QByteArray goodReply(const QByteArray &data = QByteArray());

    static void queueWrite(const std::string &variables);  // all three: as they stand
    static void queueOnceRead(const std::string &variables);
    static void addCyclic(const std::string &variables);
    static int setValues(const char *variable);  // values as data, owner and item: "7@100+1=3412:3/4"
    static QByteArray getValues(const char *variable, int expectedResult = 1);

    /// One exchange a row: what the host queues (write, read, cyclic), frame sent and reply without their CRC, result
    /// code, callbacks, result record, and what is left in the queues and the cyclic list. No frame: nothing to send.
    void play(const char *transcript);
    /// Has build make the request of var, which stays as it is, and looks at every field of what is handed out.
    void expectRequest(void (*build)(RW_VAR *), const RW_VAR &var, const QByteArray &frame, const ExpectedReply &reply);
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

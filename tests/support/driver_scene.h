// A bound driver and a few verbs to play host with. Each test, and each row after restart(), finds the driver empty.
#ifndef DRAVO_TESTS_DRIVER_SCENE_H
#define DRAVO_TESTS_DRIVER_SCENE_H

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "driver/Communication_Protocol.h"
#include "korvel_dravo_port.h"
#include "support/frame_text.h"

/// A request of station 1 with every other field 0 or empty; data in hexadecimal digits.
RW_VAR record(int elemType, int address, int count, const char *data = "");
/// Requests as text: "7@100+2=34127856 2/8@5+1" is type, address (or any address text), count, data if any; a station
/// other than 1 comes first.
RW_VAR record(const char *text);
QList<RW_VAR> records(const char *text);
std::string listText(const QList<RW_VAR> &list);
RW_VAR recordOf(int ownerId, int itemId, const RW_VAR &var);
RW_VAR recordAt(int station, const RW_VAR &var);

/// "01070064=3412 01070065=7856": every entry of the value cache by key. Takes cacheMutex.
std::string cacheText();

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

    static int queueWrite(const RW_VAR &var) { return AddListWriteVar(copyOf(var), 1); }
    static int queueOnceRead(const RW_VAR &var) { return AddListOnceReadVar(copyOf(var), 1); }
    static int addCyclic(const RW_VAR &var) { return AddListReadVar(copyOf(var)); }
    static int setValues(const char *variable, int ownerId = 0, int itemId = 0);  // values as data: "7@100+1=3412"
    static QByteArray getValues(const char *variable, int expectedResult = 1);

    /// The callbacks since the last call: "done 3/4", "failed 3/4" (owner, item), "list 3" (owner).
    void expectCallbacks(const std::vector<std::string> &expected);

    ComInfo settings;
    std::function<void(QList<RW_VAR> *)> duringCallback;  // list: null in the callback for one variable

private:
    static RW_VAR *copyOf(const RW_VAR &var);
    static void onVariable(void *context, int ownerId, int itemId, int code);
    static void onList(QList<RW_VAR> *list, int ownerId, int code);

    std::vector<std::string> calls;
};

#endif  // DRAVO_TESTS_DRIVER_SCENE_H

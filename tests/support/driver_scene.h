// A bound driver and a few verbs to play host with. Each test, and each row after restart(), finds the driver empty.
#ifndef DRAVO_TESTS_DRIVER_SCENE_H
#define DRAVO_TESTS_DRIVER_SCENE_H

#include <functional>
#include <string>
#include <utility>

#include "driver/Communication_Protocol.h"
#include "korvel_dravo_port.h"
#include "support/record_text.h"

/// The entries of the driver's cache. Takes cacheMutex.
std::string cacheText();

class DriverScene : public ::testing::Test {
public:
    DriverScene() { restart(); }
    ~DriverScene() override { reset(); }

    /// A new driver, bound to settings: frame limit 32, stations of their own, no retries, device-write mode.
    static void restart();

    /// Frame of the request handed out; empty: nothing to send.
    static QByteArray send() {
        const Protocol *request = ComCommunication();
        return request == nullptr ? QByteArray() : request->frame;
    }
    static int answer(const QByteArray &reply);
    static int answer(const char *hexWithoutCrc) { return answer(withCrc(hexWithoutCrc)); }
    static int noReply() { return answer(QByteArray()); }
    /// Sends and gets a good reply.
    static int exchange() {
        EXPECT_FALSE(send().isEmpty());
        return answer(goodReply());
    }
    static QByteArray goodReply(const QByteArray &data = QByteArray());

    static void queue(const std::string &requests);  // as they stand: "write 7@1+1=3412 read 7@1+1 7@2+1 cyclic 8@1+1"
    static int setValues(const char *variable);      // values as data, owner and item: "7@100+1=3412:3/4"
    static QByteArray getValues(const char *variable, int expectedResult = 1);
    /// The queue of writes, that of one-shot reads, the cyclic list.
    static std::string left() {
        return listText(PLC_driver.writeVarList + PLC_driver.onceReadVarList + PLC_driver.readVarList);
    }

    /// One exchange a row under the titles exchange, queued, sent, reply, code, callbacks, result, left. queued: what
    /// the host queues first. sent, reply: without their CRC; nothing sent: nothing to send.
    static void play(const char *transcript);
    /// The callbacks since the last call: "done 3/4, failed 3/4, list 3" (owner, item; owner).
    static std::string takeCallbacks() { return std::exchange(calls, std::string()); }

    static inline ComInfo settings;
    static inline std::function<void(QList<RW_VAR> *)> duringCallback;  // list: null in the callback for one variable

private:
    static void reset();
    static void called(const std::string &callback, QList<RW_VAR> *list);

    static inline std::string calls;
};

#endif  // DRAVO_TESTS_DRIVER_SCENE_H

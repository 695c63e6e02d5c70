#include "support/driver_scene.h"

namespace {

class Scheduler : public DriverScene {
protected:
    void fill(int writes, int onceReads, int cyclic) {
        for (int i = 0; i < writes; ++i) {
            queueWrite(recordOf(1, i, record(7, i, 1, "0100")));
        }
        for (int i = 0; i < onceReads; ++i) {
            queueOnceRead(recordOf(2, i, record(8, i, 1)));
        }
        for (int i = 0; i < cyclic; ++i) {
            addCyclic(record(9, i, 1));
        }
    }
    /// The kinds of the next requests, each answered at once.
    std::string served(size_t requests) {
        std::string kinds;
        while (kinds.size() < requests) {
            kinds += sendKind();
            if (kinds.back() != '-') {
                EXPECT_EQ(answer(goodReply()), 1);
            }
        }
        return kinds;
    }
};

struct OrderCase {
    int writes, onceReads, cyclic;
    const char *kinds;
};

// A cyclic read resets both counters, and so does an idle call, with capped entries waiting.
TEST_F(Scheduler, Order) {
    static const OrderCase kOrders[] = {
        {7, 7, 1, "WWWWWOOOOOCWWOOCC"},
        {7, 7, 0, "WWWWWOOOOO-WWOO--"},
        {7, 2, 0, "WWWWWOO-WW-"},
        {2, 7, 0, "WWOOOOO-OO-"},
        {11, 0, 1, "WWWWWCWWWWWCWCC"},
        {0, 6, 1, "OOOOOCOCC"},
        {5, 5, 1, "WWWWWOOOOOCCC"},
        {0, 0, 2, "CCC"},
        {0, 0, 0, "--"},
    };
    for (const OrderCase &row : kOrders) {
        restart();
        fill(row.writes, row.onceReads, row.cyclic);
        EXPECT_EQ(served(std::string(row.kinds).size()), row.kinds);
    }
}

TEST_F(Scheduler, WritesQueuedMeanwhileStayCapped) {
    fill(5, 6, 1);
    EXPECT_EQ(served(6), "WWWWWO");
    fill(1, 0, 0);
    EXPECT_EQ(served(6), "OOOOCW");
}

TEST_F(Scheduler, OutstandingRequestIsReplayed) {
    fill(0, 0, 1);
    const Protocol *request = ComCommunication();
    const QByteArray frame = request->frame;
    fill(2, 2, 0);
    settings.cycleDone = 5;
    PLC_driver.writeTimes = 3;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ComCommunication(), request);
        EXPECT_EQ(request->frame, frame);
    }
    EXPECT_EQ(settings.cycleDone, 5);
    EXPECT_EQ(PLC_driver.writeTimes, 3);
    EXPECT_EQ(PLC_driver.comType, kCyclicRead);
    EXPECT_EQ(PLC_driver.protocolList.size(), 1);
}

TEST_F(Scheduler, ServedEntriesStayAtTheHead) {
    fill(2, 0, 0);
    send();
    EXPECT_EQ(listText(PLC_driver.writeVarList), "7@0+1=0100 7@1+1=0100");
    restart();
    fill(0, 2, 0);
    send();
    EXPECT_EQ(listText(PLC_driver.onceReadVarList), "8@0+1 8@1+1");
    restart();
    fill(0, 0, 2);
    PLC_driver.readVarList[0].retValue = 5;
    send();
    EXPECT_EQ(listText(PLC_driver.readVarList), "9@0+1 9@1+1");
    EXPECT_EQ(PLC_driver.readVarList.at(0).retValue, -1);
    EXPECT_EQ(PLC_driver.readVarList.at(1).retValue, 0);
    EXPECT_EQ(PLC_driver.protocolList.at(0).var.retValue, 5);
}

TEST_F(Scheduler, DisabledStationsLoseTheirWritesAndOnceReads) {
    EnableEthernet(2, 0);
    for (const int station : {2, 2, 1, 2}) {
        queueWrite(recordOf(1, station, recordAt(station, record(7, station, 1, "0100"))));
        queueOnceRead(recordOf(2, station, recordAt(station, record(8, station, 1))));
    }
    EXPECT_EQ(sendKind(), "W");
    EXPECT_EQ(listText(PLC_driver.writeVarList), "7@1+1=0100 2/7@2+1=0100");
    EXPECT_EQ(PLC_driver.onceReadVarList.size(), 4);
    EXPECT_EQ(answer(goodReply()), 1);
    EXPECT_EQ(sendKind(), "O");
    EXPECT_TRUE(PLC_driver.writeVarList.isEmpty());
    EXPECT_EQ(listText(PLC_driver.onceReadVarList), "8@1+1 2/8@2+1");
    EXPECT_EQ(answer(goodReply()), 1);
    EXPECT_EQ(sendKind(), "-");
    EXPECT_TRUE(PLC_driver.onceReadVarList.isEmpty());
    expectCallbacks({"done 1/1", "done 2/1"});
}

TEST_F(Scheduler, DisabledStationsKeepTheirCyclicReads) {
    for (const int station : {2, 3, 1}) {
        addCyclic(recordAt(station, record("7@5+1")));
        EnableEthernet(station, 0);
    }
    EXPECT_EQ(sendKind(), "-");
    EXPECT_EQ(listText(PLC_driver.readVarList), "2/7@5+1 3/7@5+1 7@5+1");
    EnableEthernet(3, 1);
    EXPECT_EQ(send(), withCrc("0303 0005 0001"));
    EXPECT_EQ(listText(PLC_driver.readVarList), "3/7@5+1 7@5+1 2/7@5+1");
}

TEST_F(Scheduler, RemoteModeSendsRemoteFrames) {
    for (const char *kind : {"W", "O", "C"}) {
        restart();
        settings.remoteMode = 1;
        fill(*kind == 'W' ? 1 : 0, *kind == 'O' ? 1 : 0, 1);
        EXPECT_EQ(sendKind(), kind);
        const QByteArray frame = send();
        EXPECT_EQ(frame.size(), *kind == 'W' ? 24 : 22);
        EXPECT_EQ(frame.at(0), frame.size());
    }
}

}  // namespace

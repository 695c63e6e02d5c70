#include <QtCore/QStringList>

#include "support/driver_scene.h"

namespace {

class Scheduler : public DriverScene {
protected:
    static void fill(int writes, int onceReads, int cyclic) {
        queueWrite(QByteArray("7@1+1 ").repeated(writes).toStdString());
        queueOnceRead(QByteArray("8@1+1 ").repeated(onceReads).toStdString());
        addCyclic(QByteArray("9@1+1 ").repeated(cyclic).toStdString());
    }
    /// The kinds of the next requests, each answered at once.
    std::string served(size_t requests) {
        std::string kinds;
        while (kinds.size() < requests) {
            settings.cycleDone = 0;
            kinds += sendKind();
            EXPECT_EQ(settings.cycleDone, kinds.back() == '-' ? 1 : 0);
            EXPECT_EQ(kinds.back() == '-' ? 1 : answer(goodReply()), 1);
        }
        return kinds;
    }
};

TEST_F(Scheduler, Order) {
    expectColumn(cases("driver/scheduler", "order"), "order", [this](const TableRow &row) {
        restart();
        fill(row.number("writes"), row.number("reads"), row.number("cyclic"));
        return served(row.text("order").size());
    });
    restart();
    fill(5, 6, 1);
    EXPECT_EQ(served(6), "WWWWWO");
    fill(1, 0, 0);
    EXPECT_EQ(served(6), "OOOOCW") << "writes queued meanwhile stay capped";
}

TEST_F(Scheduler, OutstandingRequestIsReplayed) {
    fill(0, 0, 2);
    PLC_driver.readVarList[0].retValue = 5;
    const Protocol *request = ComCommunication();
    fill(2, 2, 0);
    settings.cycleDone = 5;
    EXPECT_EQ(ComCommunication(), request);
    EXPECT_EQ(request->frame, withCrc("0103 2329 0001"));
    EXPECT_EQ(request->var.retValue, 5) << "as it was";
    EXPECT_EQ(PLC_driver.readVarList.at(0).retValue, -1) << "stays at the head, marked";
    EXPECT_EQ(PLC_driver.readVarList.at(1).retValue, 0);
    EXPECT_EQ(settings.cycleDone, 5);
    EXPECT_EQ(PLC_driver.writeTimes, 0);
    EXPECT_EQ(PLC_driver.protocolList.size(), 1);
}

TEST_F(Scheduler, StationTable) {
    for (const auto edit : {&EnableEthernet, &EnCommStation}) {
        expectColumn(cases("driver/scheduler", "station table"), "disabled", [edit](const TableRow &row) {
            edit(row.number("station"), row.number("enable"));
            QStringList disabled;
            for (const int station : PLC_driver.stationMap.keys()) {
                disabled += QString::number(station);
            }
            return disabled.join(QLatin1Char(' ')).toStdString();
        });
    }
}

TEST_F(Scheduler, DisabledStationsLoseTheirQueuesAndKeepTheirCyclicReads) {
    EnableEthernet(2, 0);
    addCyclic("2/9@1+1 2/9@2+1");
    queueOnceRead("2/8@1+1 2/8@1+1 8@2+1:3/4 2/8@3+1");
    play(R"(
        exchange       | queued                              | sent           | reply          | code | callbacks | result    | left
        first enabled  | write 2/7@1+1 2/7@1+1 7@2+1:1/2 2/7@3+1 | 0106 0002 0000 | 0106 0002 0000 | 1 | done 1/2 | 7@2+1:1/2 | 2/7@3+1 2/8@1+1 2/8@1+1 8@2+1:3/4 2/8@3+1 2/9@1+1 2/9@2+1
        the reads'     |                                     | 0103 1f42 0001 | 0103 02 0000   | 1    | done 3/4  | 8@2+1:3/4 | 2/8@3+1 2/9@1+1 2/9@2+1
        none enabled   |                                     |                |                | 1    |           | 8@2+1:3/4 | 2/9@1+1 2/9@2+1
        behind them    | cyclic 9@3+1                        | 0103 232b 0001 | 0103 02 0000   | 1    |           | 9@3+1     | 2/9@1+1 2/9@2+1 9@3+1)");
    send();
    EnableEthernet(1, 0);
    EXPECT_EQ(answer("0103 02 0000"), 1) << "a request that is out is answered all the same";
}

TEST_F(Scheduler, RemoteModeSendsRemoteFrames) {
    settings.remoteMode = 1;
    PLC_driver.comFailed = 1;  // written values show all the same
    for (const char *call : {"write 7@1+1=0100", "read 7@1+1", "cyclic 7@1+1"}) {
        queue(call);
        EXPECT_EQ(send().size(), *call == 'w' ? 24 : 22) << call;
        EXPECT_EQ(cacheText(), "01070001=0100");
        EXPECT_EQ(answer(goodReply(bytes("0001"))), 1);
    }
}

}  // namespace

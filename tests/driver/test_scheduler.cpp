#include "support/driver_scene.h"

namespace {

using Scheduler = DriverScene;

// w, o, c, d: a write, a one-shot read, a cyclic read, a write of a disabled station is queued. W, O, C, -: what is
// sent next, answered at once.

TEST_F(Scheduler, Order) {
    const std::map<char, const char *> queued = {
        {' ', ""}, {'w', "write 7@1+1"}, {'o', "read 8@1+1"}, {'c', "cyclic 9@1+1"}, {'d', "write 2/7@1+1"}};
    for (const TableRow &row : table(cases("driver/scheduler", "order"))) {
        restart();
        EnableEthernet(2, 0);
        for (const char step : row.text("order")) {
            if (queued.count(step) != 0) {
                queue(queued.at(step));
                continue;
            }
            settings.cycleDone = 0;
            const bool sent = ComCommunication() != nullptr;
            EXPECT_EQ(sent ? std::string("CWO").at(size_t(PLC_driver.comType)) : '-', step) << row.line();
            EXPECT_EQ(settings.cycleDone, sent ? 0 : 1);
            EXPECT_EQ(sent ? answer(goodReply()) : 1, 1);
        }
    }
}

TEST_F(Scheduler, OutstandingRequestIsReplayed) {
    queue("cyclic 9@1+1 9@1+1");
    PLC_driver.readVarList[0].retValue = 5;
    const Protocol *request = ComCommunication();
    queue("write 7@1+1 read 8@1+1");
    settings.cycleDone = 5;
    EXPECT_EQ(ComCommunication(), request);
    EXPECT_EQ(request->frame, withCrc("0103 2329 0001"));
    EXPECT_EQ(request->var.retValue, 5) << "as it was";
    EXPECT_EQ(PLC_driver.readVarList.at(0).retValue, -1) << "stays at the head, marked";
    EXPECT_EQ(settings.cycleDone, 5);
    EXPECT_EQ(PLC_driver.protocolList.size(), 1);
}

TEST_F(Scheduler, StationTable) {
    for (const auto edit : {&EnableEthernet, &EnCommStation}) {
        for (const TableRow &row : table(cases("driver/scheduler", "station table"))) {
            edit(row.number("station"), row.number("enable"));
            for (const char *station : {"0", "5", "6"}) {
                EXPECT_EQ(PLC_driver.stationMap.contains(std::stoi(station)), row.number(station) != 0) << row.line();
            }
        }
    }
}

TEST_F(Scheduler, DisabledStationsLoseTheirQueuesAndKeepTheirCyclicReads) {
    EnableEthernet(2, 0);
    queue("cyclic 2/9@1+1 2/9@2+1 read 2/8@1+1 2/8@1+1 8@2+1:3/4 2/8@3+1");
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
    settings.remoteMode = 2;
    PLC_driver.comFailed = 1;  // written values show all the same
    for (const char *call : {"write 7@1+1=0100", "read 7@1+1", "cyclic 7@1+1"}) {
        queue(call);
        EXPECT_EQ(send().size(), *call == 'w' ? 24 : 22) << call;
        EXPECT_EQ(cacheText(), "01070001=0100");
        EXPECT_EQ(answer(goodReply(bytes("0001"))), 1);
    }
}

}  // namespace

// What a finished or failed request does to the lists, and which callbacks report it.
#include "support/driver_scene.h"

namespace {

using FinishedRequests = DriverScene;

// Queue, what a failure of its head leaves, the same with stations ignored, kinds whose success is reported. A later
// request of the same owner and item silences success; reads of other nodes silence nothing and are not reported.
const char kQueues[] = R"(
    7@10+1:1/2 >  >  > WO
    7@10+1:1/2 9@30+1:1/3 10@40+1:2/2 > 9@30+1:1/3 10@40+1:2/2 > 9@30+1:1/3 10@40+1:2/2 > WO
    7@10+1:1/2 9@30+1:1/3 8@20+1:1/2 8@20+1:1/2 > 9@30+1:1/3 > 9@30+1:1/3 > -
    7@10+1:1/2 5/8@20+1:1/2 > 5/8@20+1:1/2 >  > -
    7@10+1:1/2 8@20+1:1/2^4 >  >  > O
    7@10+1:1/2^4 >  >  > W
    7@10+1:1/2^4 8@20+1:1/2 9@30+1:1/3 > 9@30+1:1/3 > 9@30+1:1/3 > -)";

TEST_F(FinishedRequests, DoneOrFailed) {
    enum Outcome { done, failed, failedStationsIgnored };
    for (const Row &row : rows(kQueues)) {
        for (const std::string kind : {"W", "O"}) {
            for (const Outcome outcome : {done, failed, failedStationsIgnored}) {
                SCOPED_TRACE(row.text + ", " + kind + std::to_string(outcome));
                restart();
                settings.useVarStation = outcome == failedStationsIgnored ? 0 : 1;
                const QList<RW_VAR> queued = records(row[0]);
                QList<RW_VAR> &queue = kind == "W" ? PLC_driver.writeVarList : PLC_driver.onceReadVarList;
                QList<RW_VAR> &other = kind == "W" ? PLC_driver.onceReadVarList : PLC_driver.writeVarList;
                queue = queued;
                EXPECT_EQ(sendKind(), kind);
                other = queued;
                const bool otherNode = queued.at(0).nodeId != 0;
                if (outcome == done) {
                    EXPECT_EQ(answer(goodReply()), otherNode ? 100 : 1);
                    expectCallbacks(row.fields[3].find(kind) != std::string::npos ? "done 1/2" : "");
                    EXPECT_EQ(listText(queue), listText(queued.mid(1)));
                } else {
                    EXPECT_EQ(noReply(), otherNode ? 142 : 42);
                    expectCallbacks(kind == "O" && otherNode ? "list 1" : "failed 1/2, list 1");
                    EXPECT_EQ(listText(queue), row[outcome == failed ? 1 : 2]);
                }
                EXPECT_EQ(listText({PLC_driver.retVar}), listText({queued.at(0)}));
                EXPECT_EQ(listText(other), row[0]);
            }
        }
    }
}

TEST_F(FinishedRequests, CyclicReadsRotateDoneOrFailedWithoutCallback) {
    play(R"(
        cyclic 7@1+1 7@2+1 > 0103 0001 0001 > 0103 02 0000 > 1  >        > 7@1+1 > 7@2+1 7@1+1
                           > 0103 0002 0001 >              > 41 > list 0 > 7@2+1 > 7@1+1 7@2+1)");
    EXPECT_EQ(PLC_driver.readVarList.first().retValue + PLC_driver.readVarList.last().retValue, 0);
}

TEST_F(FinishedRequests, CallbacksMayReadAndWriteValues) {
    queueWrite("7@10+1=3412:1/2");
    duringCallback = [](QList<RW_VAR> *list) {
        if (list != nullptr) {
            list->append(record("7@99+1"));  // dropped
            return;
        }
        EXPECT_EQ(PLC_driver.writeVarList.size(), 1);  // the request is still in its queue
        EXPECT_EQ(getValues("7@10+1"), bytes("3412"));
        EXPECT_EQ(setValues("7@11+1=7856:3/4"), 0);
        addCyclic("9@1+1");
        EnableEthernet(9, 0);
    };
    EXPECT_EQ(exchange(), 1);
    EXPECT_EQ(PLC_driver.retVar.address, 10);
    EXPECT_EQ(listText(PLC_driver.writeVarList), "7@11+1=7856:3/4");
    send();
    EXPECT_EQ(noReply(), 44);
    EXPECT_EQ(listText(PLC_driver.writeVarList), "");  // the one written in the callback is a namesake
    EXPECT_EQ(listText(PLC_driver.readVarList), "9@1+1 9@1+1");
    expectCallbacks("done 1/2, failed 3/4, list 3");
}

TEST_F(FinishedRequests, CallbackMayUnbindTheDriver) {
    queueWrite("7@10+1=3412:1/2 5/7@11+1=7856:1/2");
    send();
    duringCallback = [](QList<RW_VAR> *) { SetComInfo(nullptr); };
    EXPECT_EQ(noReply(), 42);
    EXPECT_EQ(listText(PLC_driver.writeVarList), "");
    expectCallbacks("failed 1/2, list 1");
}

}  // namespace

#include "driver/finished_operation.h"

#include "support/driver_scene.h"

namespace {

using FinishedOperation = DriverScene;

// A later request of the same owner and item silences success; reads of other nodes silence nothing and are not
// reported. Left: what a failure of the head leaves, with each variable's own station and with one for all.
const char kQueues[] = R"(
    behind the head        | queue                                          | done of write | done of read | left, own stations            | left, one station
    nothing                | 7@10+1:1/2                                     | done 1/2 | done 1/2 |                          |
    namesakes              | 7@10+1:1/2 9@30+1:1/3 8@20+1:1/2 8@20+1:1/2    |          |          | 9@30+1:1/3               | 9@30+1:1/3
    of another station     | 7@10+1:1/2 5/8@20+1:1/2                        |          |          | 5/8@20+1:1/2             |
    of another node        | 7@10+1:1/2 8@20+1:1/2^4                        |          | done 1/2 |                          |
    head of another node   | 7@10+1:1/2^4                                   | done 1/2 |          |                          |
    and a namesake here    | 7@10+1:1/2^4 8@20+1:1/2 9@30+1:1/3             |          |          | 9@30+1:1/3               | 9@30+1:1/3)";

TEST_F(FinishedOperation, DoneOrFailed) {
    enum Outcome { done, failed, failedWithOneStation };
    for (const TableRow &row : table(kQueues)) {
        for (const bool isWrite : {true, false}) {
            for (const Outcome outcome : {done, failed, failedWithOneStation}) {
                SCOPED_TRACE(row.line() + (isWrite ? ", write " : ", read ") + std::to_string(outcome));
                restart();
                settings.useVarStation = outcome == failedWithOneStation ? 0 : 1;
                const QList<RW_VAR> queued = records(row["queue"]);
                QList<RW_VAR> &queue = isWrite ? PLC_driver.writeVarList : PLC_driver.onceReadVarList;
                QList<RW_VAR> &other = isWrite ? PLC_driver.onceReadVarList : PLC_driver.writeVarList;
                queue = queued;
                EXPECT_EQ(sendKind(), isWrite ? "W" : "O");
                other = queued;
                const bool otherNode = queued.at(0).nodeId != 0;
                if (outcome == done) {
                    EXPECT_EQ(answer(goodReply()), otherNode ? 100 : 1);
                    expectCallbacks(row[isWrite ? "done of write" : "done of read"]);
                    EXPECT_EQ(listText(queue), listText(queued.mid(1)));
                } else {
                    EXPECT_EQ(noReply(), otherNode ? 142 : 42);
                    expectCallbacks(!isWrite && otherNode ? "list 1" : "failed 1/2, list 1");
                    EXPECT_EQ(listText(queue), row[outcome == failed ? "left, own stations" : "left, one station"]);
                }
                EXPECT_EQ(listText({PLC_driver.retVar}), listText({queued.at(0)}));
                EXPECT_EQ(listText(other), row["queue"]);
            }
        }
    }
}

TEST_F(FinishedOperation, CyclicReadsRotateDoneOrFailedWithoutCallback) {
    play(R"(
        exchange | queued             | sent           | reply        | code | callbacks | result | left
        done     | cyclic 7@1+1 7@2+1 | 0103 0001 0001 | 0103 02 0000 | 1    |           | 7@1+1  | 7@2+1 7@1+1
        failed   |                    | 0103 0002 0001 |              | 41   | list 0    | 7@2+1  | 7@1+1 7@2+1)");
    EXPECT_EQ(PLC_driver.readVarList.first().retValue, 0);
    EXPECT_EQ(PLC_driver.readVarList.last().retValue, 0);
}

TEST_F(FinishedOperation, CallbacksMayReadAndWriteValues) {
    queueWrite("7@10+1=3412:1/2");
    duringCallback = [](QList<RW_VAR> *list) {
        if (list != nullptr) {
            list->append(record("7@99+1"));  // dropped
            return;
        }
        EXPECT_EQ(PLC_driver.writeVarList.size(), 1) << "the request is still in its queue";
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
    EXPECT_EQ(listText(PLC_driver.writeVarList), "") << "the one written in the callback is a namesake";
    EXPECT_EQ(listText(PLC_driver.readVarList), "9@1+1 9@1+1");
    expectCallbacks("done 1/2, failed 3/4, list 3");
}

TEST_F(FinishedOperation, CallbackMayUnbindTheDriver) {
    queueWrite("7@10+1=3412:1/2 5/7@11+1=7856:1/2");
    send();
    duringCallback = [](QList<RW_VAR> *) { SetComInfo(nullptr); };
    EXPECT_EQ(noReply(), 42);
    EXPECT_EQ(listText(PLC_driver.writeVarList), "");
    expectCallbacks("failed 1/2, list 1");
}

TEST_F(FinishedOperation, ResultRecordCopiesEverythingButTheData) {
    RW_VAR from = record("2/7@100+2=3412:5/6^7"), to = record("1@1+1=ff");
    from.label = QString::fromLatin1("label");
    int RW_VAR::*const others[] = {&RW_VAR::accessFlag, &RW_VAR::remoteMode, &RW_VAR::retValue, &RW_VAR::param1,
                                   &RW_VAR::param2};
    for (int i = 0; i < 5; ++i) {
        from.*others[i] = 10 + i;
    }
    passRetValue(from, to);
    EXPECT_EQ(listText({to}), "2/7@100+2:5/6^7");
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(to.*others[i], 10 + i);
    }
    EXPECT_EQ(to.label, QString::fromLatin1("label"));
    EXPECT_EQ(to.addressText, QString::fromLatin1("100"));
}

}  // namespace

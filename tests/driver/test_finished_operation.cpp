#include "driver/finished_operation.h"

#include "support/driver_scene.h"

namespace {

using FinishedOperation = DriverScene;

// Each queue as writes and as reads. A later request of the same owner and item silences success; reads of other nodes
// silence nothing and are not reported. Left: what a failure of the head leaves, by each one's own station or by none.

TEST_F(FinishedOperation, DoneOrFailed) {
    for (const TableRow &row : table(cases("driver/finished_operation", "queues"))) {
        for (const std::string kind : {"write", "read"}) {
            for (const char *outcome : {"done", "left, own stations", "left, one station"}) {
                SCOPED_TRACE(row.line() + ", " + kind + ", " + outcome);
                restart();
                settings.useVarStation = outcome == std::string("left, one station") ? 0 : 1;
                queue(kind + " " + row.text("queue"));
                EXPECT_EQ(sendKind(), kind == "write" ? "W" : "O");
                queue((kind == "write" ? "read " : "write ") + row.text("queue"));  // left alone
                const QList<RW_VAR> queued = records(row["queue"]);
                const QList<RW_VAR> &served = kind == "write" ? PLC_driver.writeVarList : PLC_driver.onceReadVarList;
                const int otherNode = queued.at(0).nodeId != 0 ? 1 : 0;
                const bool silent = otherNode && kind == "read";
                if (outcome == std::string("done")) {
                    EXPECT_EQ(answer(goodReply()), otherNode ? 100 : 1);
                    expectCallbacks(row[kind.c_str()]);
                    EXPECT_EQ(listText(served), listText(queued.mid(1)));
                } else {
                    EXPECT_EQ(noReply(), 42 + 100 * otherNode);
                    expectCallbacks(silent ? "list 1" : "failed 1/2, list 1");
                    EXPECT_EQ(listText(served), row[outcome]);
                }
                EXPECT_EQ(listText({PLC_driver.retVar}), listText({queued.at(0)}));
                EXPECT_EQ(PLC_driver.writeVarList.size() + PLC_driver.onceReadVarList.size(),
                          served.size() + queued.size());
            }
        }
    }
}

TEST_F(FinishedOperation, CyclicReadsRotateDoneOrFailedWithoutCallback) {
    play(R"(
        exchange | queued             | sent           | reply        | code | callbacks | result | left
        done     | cyclic 7@1+1 7@2+1 | 0103 0001 0001 | 0103 02 0000 | 1    |           | 7@1+1  | 7@2+1 7@1+1
        failed   |                    | 0103 0002 0001 |              | 41   | list 0    | 7@2+1  | 7@1+1 7@2+1)");
    EXPECT_EQ(PLC_driver.readVarList.at(0).retValue, 0);
    EXPECT_EQ(PLC_driver.readVarList.at(1).retValue, 0);
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
    };
    exchange();
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
}

TEST_F(FinishedOperation, ResultRecordCopiesEverythingButTheData) {
    RW_VAR from = record("2/7@100+2=3412:5/6^7"), to = record("1@1+1=ff");
    from.label = QString::fromLatin1("label");
    int value = 10;
    const auto others = {&RW_VAR::accessFlag, &RW_VAR::remoteMode, &RW_VAR::retValue, &RW_VAR::param1, &RW_VAR::param2};
    for (int RW_VAR::*field : others) {
        from.*field = ++value;
    }
    passRetValue(from, to);
    EXPECT_EQ(listText({to}), "2/7@100+2:5/6^7");
    for (int RW_VAR::*field : others) {
        EXPECT_EQ(to.*field, from.*field);
    }
    EXPECT_EQ(to.label, QString::fromLatin1("label"));
    EXPECT_EQ(to.addressText, QString::fromLatin1("100"));
}

}  // namespace

#include "support/driver_scene.h"

namespace {

using FinishedOperation = DriverScene;

// Each queue as writes and as reads. A later request of the same owner and item silences success; reads of other nodes
// silence nothing and are not reported. Left: what a failure of the head leaves, by each one's own station or by none.

TEST_F(FinishedOperation, DoneOrFailed) {
    for (const TableRow &row : table(cases("driver/finished_operation", "queues"))) {
        const QList<RW_VAR> queued = records(row["queue"]);
        const bool otherNode = queued.at(0).nodeId != 0;
        for (const std::string kind : {"write", "read"}) {
            const bool write = kind == "write";
            for (const std::string outcome : {"done", "left, own stations", "left, one station"}) {
                SCOPED_TRACE(testing::Message() << row.line() << ", " << kind << ", " << outcome);
                restart();
                settings.useVarStation = outcome == "left, one station" ? 0 : 1;
                queue(kind + " " + row["queue"]);
                send();
                PLC_driver.readCycleCount = 3;
                queue((write ? "read " : "write ") + row.text("queue"));  // left alone
                const bool done = outcome == "done";
                EXPECT_EQ(done ? answer(goodReply()) : noReply(), done ? (otherNode ? 100 : 1) : otherNode ? 142 : 42);
                EXPECT_TRUE(done || PLC_driver.readCycleCount == 0) << "a new pass";
                const char *const failed = otherNode && !write ? "list 1" : "failed 1/2, list 1";
                EXPECT_EQ(takeCallbacks(), done ? row[kind.c_str()] : failed);
                const std::string expected = done ? listText(queued.mid(1)) : row[outcome.c_str()];
                EXPECT_EQ(listText(write ? PLC_driver.writeVarList : PLC_driver.onceReadVarList), expected);
                EXPECT_EQ(listText(write ? PLC_driver.onceReadVarList : PLC_driver.writeVarList), listText(queued));
                EXPECT_EQ(listText({PLC_driver.retVar}), listText({queued.at(0)}));
            }
        }
    }
}

TEST_F(FinishedOperation, CallbacksMayReadAndWriteValuesAndUnbindTheDriver) {
    queue("write 7@10+1=3412:1/2");
    duringCallback = [](QList<RW_VAR> *list) {
        if (list != nullptr) {
            list->append(record("7@99+1"));  // dropped
            SetComInfo(nullptr);             // from here on namesakes are of any station
            return;
        }
        EXPECT_FALSE(PLC_driver.writeVarList.isEmpty()) << "the request is still in its queue";
        EXPECT_EQ(getValues("7@10+1"), bytes("3412"));
        EXPECT_EQ(setValues("7@11+1=7856:3/4"), 0);
        EXPECT_EQ(setValues("5/7@12+1=7856:3/4"), 0);
        queue("cyclic 9@1+1");
    };
    exchange();
    EXPECT_EQ(left(), "7@11+1=7856:3/4 5/7@12+1=7856:3/4 9@1+1");
    send();
    EXPECT_EQ(noReply(), 44);
    EXPECT_EQ(left(), "9@1+1 9@1+1") << "those written in the callback are namesakes";
    EXPECT_EQ(takeCallbacks(), "done 1/2, failed 3/4, list 3");
}

}  // namespace

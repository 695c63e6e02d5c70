#include "cache/Func_DealData.h"
#include "support/driver_scene.h"

namespace {

using Dispatch = DriverScene;

// Only a checked reply is stored, and only of the own node; length is what DataCom was told, not what the reply has.

TEST_F(Dispatch, RepliesToARead) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): not looked into
    QByteArray *const nothing = reinterpret_cast<QByteArray *>(alignof(QByteArray));
    for (const TableRow &row : table(cases("driver/dispatch", "replies"))) {
        SCOPED_TRACE(row.line());
        restart();
        settings.localNode = row.number("own node");
        settings.remoteMode = row.number("remote mode");
        queue("read " + row.text("request"));
        PLC_driver.onceReadVarList[0].accessFlag = row.number("access");
        send();
        const std::string text = row["bytes"];
        QByteArray received = bytes(row["bytes"]);
        QByteArray *const reply = text == "null" ? nullptr : text == "nothing" ? nothing : &received;
        EXPECT_EQ(DataCom(reply, row.number("length"))->retValue, row.number("code"));
        EXPECT_EQ(cacheText(), row["stored"]);
    }
}

// Cyclic reads rotate, done or failed.

TEST_F(Dispatch, RetriesThenFailure) {
    settings.retryTimes = 2;
    PLC_driver.readCycleCount = 2;
    play(R"(
        exchange      | queued             | sent           | reply        | code | callbacks | result  | left
        nothing came  | cyclic 7@1+1 7@2+1 | 0103 0001 0001 |              | 0    |           | 0/0@0+0 | 7@1+1 7@2+1
        nothing came  |                    | 0103 0001 0001 |              | 0    |           | 0/0@0+0 | 7@1+1 7@2+1
        good          |                    | 0103 0001 0001 | 0103 02 1234 | 1    |           | 7@1+1   | 7@2+1 7@1+1
        wrong station |                    | 0103 0002 0001 | 0203 02 1234 | 11   | list 0    | 7@2+1   | 7@1+1 7@2+1)");
    EXPECT_EQ(PLC_driver.comFailed, 1);
    EXPECT_EQ(std::make_tuple(settings.retryCount, PLC_driver.readCycleCount, settings.cycleDone),
              std::make_tuple(0, 0, 0));
    EXPECT_EQ(PLC_driver.readVarList.at(0).retValue, 0);
    EXPECT_EQ(PLC_driver.readVarList.at(1).retValue, 0);
    exchange();
    EXPECT_EQ(PLC_driver.comFailed, 0);
}

TEST_F(Dispatch, PassIsDoneWithOneOperationMoreThanEntries) {
    queue("cyclic 7@1+1 7@2+1 write 7@3+1=0100 read 7@4+1^2");  // the write counts as well, the other node's read not
    const int operations[][2] = {{0, 1}, {0, 1}, {0, 2}, {1, 0}, {1, 0}};
    for (const auto &[cycleDone, readCycleCount] : operations) {
        exchange();
        EXPECT_EQ(settings.cycleDone, cycleDone);
        EXPECT_EQ(PLC_driver.readCycleCount, readCycleCount);
    }
}

TEST_F(Dispatch, BothHalvesOfABitWriteAreOneOperation) {
    // Until the bit is written, the result record shows what was before.
    play(R"(
        exchange             | queued                | sent           | reply          | code | callbacks          | result        | left
        what was before      | read 9@1+1            | 0103 2329 0001 | 0103 02 1234   | 1    | done 0/0           | 9@1+1         |
        another write behind | write 16@37+1=01:3/4 16@37+1=00 | 0103 1f42 0001 | 0103 02 8001 | 1 |             | 9@1+1         | 16@37+1=01:3/4 16@37+1=00
        the bit is written   |                       | 0106 1f42 8021 | 0106 1f42 8021 | 1    | done 3/4           | 16@37+1:3/4   | 16@37+1=00
        read half fails      |                       | 0103 1f42 0001 |                | 41   | failed 0/0, list 0 | 16@37+1       |
        nothing of it left   | write 15@32+1=01:3/4  | 0103 0002 0001 | 0103 02 0000   | 1    |                    | 16@37+1       | 15@32+1=01:3/4
        write half fails     |                       | 0106 0002 0001 |                | 44   | failed 3/4, list 3 | 15@32+1:3/4   |
        of another node      | write 15@32+1=01:3/4^4 | 0103 0002 0001 | 0103 02 0100  | 1    |                    | 15@32+1:3/4   | 15@32+1=01:3/4^4
        its write            |                       | 0106 0002 0101 | 0106 0002 0101 | 100  | done 3/4           | 15@32+1:3/4^4 |)");
    EXPECT_EQ(cacheText(), "01080002=0000 01090001=3412");
    queue("write 15@35+1=01");
    send();
    QByteArray reply = withCrc("010302ffff");
    const QMutexLocker lock(&PLC_driver.listMutex);
    PLC_driver.writeVarList.clear();
    SaveToLocalDataErea(&reply);  // no write to complete
    EXPECT_EQ(PLC_driver.protocolList.at(1).frame, withCrc("0106 0002 0000"));
}

TEST_F(Dispatch, UnboundDriverRefusesAndKeepsEverything) {
    queue("write 7@1+1=0100 read 7@2+1 cyclic 7@3+1");
    const QByteArray outstanding = send();
    SetComInfo(nullptr);
    RW_VAR var = record("7@5+1");
    QList<ReadVarEntry> entries = {ReadVarEntry()};
    for (const int mode : {0, 1}) {
        for (const int refused : {AddListOnceReadVar(&var, mode), AddListWriteVar(&var, mode), AddListReadVar(&var),
                                  ReCreatReadVarList(&entries), setValues("7@5+1=0100")}) {
            EXPECT_EQ(refused, 0);
        }
    }
    EXPECT_EQ(ComCommunication(), nullptr);
    EXPECT_EQ(answer("0106 0001 0001"), 1);
    EXPECT_EQ(getValues("1@5+3", 0), QByteArray(6, '\0'));
    EXPECT_EQ(QueryFinishFlag(), 1);
    SetComInfo(&settings);
    RegistCallBackFuncIntf(nullptr, nullptr);
    EXPECT_EQ(left(), "7@1+1=0100 7@2+1 7@3+1");
    EXPECT_EQ(cacheText(), "01070001=0100");
    EXPECT_EQ(send(), outstanding);
    EXPECT_EQ(noReply(), 41);
    EXPECT_EQ(takeCallbacks(), "") << "callbacks that are not there are skipped";
}

}  // namespace

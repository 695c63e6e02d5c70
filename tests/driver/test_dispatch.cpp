#include "cache/Func_DealData.h"
#include "support/driver_scene.h"

namespace {

using Dispatch = DriverScene;

// Only a checked reply is stored, and only of the own node; length is what DataCom was told, not what the reply has.

TEST_F(Dispatch, RepliesToARead) {
    for (const TableRow &row : table(cases("driver/dispatch", "replies"))) {
        SCOPED_TRACE(row.line());
        restart();
        settings.remoteMode = row.number("remote mode");
        queueOnceRead(row["request"]);
        PLC_driver.onceReadVarList[0].accessFlag = row.number("access");
        send();
        QByteArray reply = bytes(row["bytes"]);
        EXPECT_EQ(DataCom(&reply, row.number("length"))->retValue, row.number("code"));
        EXPECT_EQ(cacheText(), row["stored"]);
    }
    queueOnceRead("7@100+1");
    send();
    EXPECT_EQ(DataCom(nullptr, 7)->retValue, 41) << "null is an empty reply";
    // NOLINTNEXTLINE(performance-no-int-to-ptr): neither length is one that is looked into
    QByteArray *const nothing = reinterpret_cast<QByteArray *>(alignof(QByteArray));
    for (const int length : {0, 8}) {
        queueOnceRead("7@100+1");
        send();
        EXPECT_EQ(DataCom(nothing, length)->retValue, length == 0 ? 41 : 71);
    }
    settings.localNode = 4;
    queueOnceRead("7@100+1^4");
    EXPECT_EQ(exchange(), 1) << "of the own node";
}

TEST_F(Dispatch, RetriesThenFailure) {
    settings.retryTimes = 2;
    PLC_driver.readCycleCount = 1;
    play(R"(
        exchange      | queued         | sent           | reply        | code | callbacks | result  | left
        nothing came  | cyclic 7@100+1 | 0103 0064 0001 |              | 0    |           | 0/0@0+0 | 7@100+1
        nothing came  |                | 0103 0064 0001 |              | 0    |           | 0/0@0+0 | 7@100+1
        good          |                | 0103 0064 0001 | 0103 02 1234 | 1    |           | 7@100+1 | 7@100+1
        wrong station |                | 0103 0064 0001 | 0203 02 1234 | 11   | list 0    | 7@100+1 | 7@100+1)");
    EXPECT_EQ(PLC_driver.comFailed, 1);
    for (const int count : {settings.retryCount, PLC_driver.readCycleCount, settings.cycleDone}) {
        EXPECT_EQ(count, 0);
    }
    exchange();
    EXPECT_EQ(PLC_driver.comFailed, 0);
}

TEST_F(Dispatch, PassIsDoneWithOneOperationMoreThanEntries) {
    addCyclic("7@1+1 7@2+1");
    queueWrite("7@3+1=0100");  // counts as well
    queueOnceRead("7@4+1^2");  // does not
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
}

TEST_F(Dispatch, NoBitWriteToComplete) {
    queueWrite("15@35+1=01");
    send();
    QByteArray reply = withCrc("010302ffff");
    const QMutexLocker lock(&PLC_driver.listMutex);
    PLC_driver.writeVarList.clear();
    SaveToLocalDataErea(&reply);
    EXPECT_EQ(PLC_driver.protocolList.takeLast().frame, withCrc("0106 0002 0000"));
    PLC_driver.writeVarList = records("15@35+1=01");
    SaveToLocalDataErea(&reply);  // no second request
    EXPECT_EQ(PLC_driver.protocolList.size(), 1);
}

TEST_F(Dispatch, KeyOfAnElementInTheDriversCache) {
    ControlInformationM element = {1, 7, 100, -1};
    const QMutexLocker lock(&PLC_driver.cacheMutex);
    EXPECT_EQ(ExtendFindSameVar(element), 0x01070064U);
    EXPECT_EQ(element.address, 100);
    EXPECT_EQ(cacheText(PLC_driver.valueCache), "01070064=0000");
}

}  // namespace

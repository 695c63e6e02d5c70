#include <climits>
#include <cstddef>
#include <cstring>

#include "support/driver_scene.h"

namespace {

using HostBinding = DriverScene;

TEST_F(HostBinding, SetComInfoZeroesTwoWordsOnly) {
    ComInfo first, second, expected;
    memset(static_cast<void *>(&first), 0xAA, sizeof first);
    memcpy(static_cast<void *>(&second), &first, sizeof first);
    memcpy(static_cast<void *>(&expected), &first, sizeof first);
    memset(reinterpret_cast<char *>(&expected) + 40, 0, 4);
    memset(reinterpret_cast<char *>(&expected) + 52, 0, 4);
    SetComInfo(&first);
    EXPECT_EQ(memcmp(&first, &expected, sizeof first), 0);
    SetComInfo(&second);
    ComCommunication();  // idle: writes cycleDone of the second record alone
    EXPECT_EQ(memcmp(&first, &expected, sizeof first), 0);
    EXPECT_EQ(second.cycleDone, 1);
    EXPECT_EQ(offsetof(ComInfo, cycleDone), 68U);
    SetComInfo(&settings);
}

TEST_F(HostBinding, AreaWords) {
    FlashLocalRegister(1, 0x80000000U, 0xFFFFFFFFU);
    EXPECT_EQ(LB, 1U);
    EXPECT_EQ(LW, 0x80000000U);
    EXPECT_EQ(RWI, 0xFFFFFFFFU);
    FlashLocalRegister(0, 0, 0);
    EXPECT_EQ(LB + LW + RWI, 0U);
}

TEST_F(HostBinding, NothingOutstanding) {
    PLC_driver.retVar.ownerId = 5;
    PLC_driver.retVar.retValue = 41;
    PLC_driver.comFailed = 1;
    settings.retryCount = settings.frameDone = 2;
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(PLC_driver.retVar.ownerId, 5);
    EXPECT_EQ(PLC_driver.comFailed, 1);
    EXPECT_EQ(settings.retryCount, 2);
    EXPECT_EQ(settings.frameDone, 2);
    EXPECT_EQ(cacheText(), "");
}

TEST_F(HostBinding, UnboundDriverRefusesAndKeepsEverything) {
    queueWrite(record("7@1+1=0100"));
    queueOnceRead(record("7@2+1"));
    addCyclic(record("7@3+1"));
    const QByteArray outstanding = send();
    SetComInfo(nullptr);
    RW_VAR var = record("7@5+1");
    QList<ReadVarEntry> entries;
    EXPECT_EQ(ReCreatReadVarList(&entries), 0);
    entries.append(ReadVarEntry());
    EXPECT_EQ(ReCreatReadVarList(&entries), 0);
    EXPECT_EQ(AddListReadVar(&var), 0);
    for (const int mode : {0, 1}) {
        EXPECT_EQ(AddListOnceReadVar(&var, mode), 0);
        EXPECT_EQ(AddListWriteVar(&var, mode), 0);
    }
    EXPECT_EQ(listText({var}), "7@5+1");
    EXPECT_EQ(ComCommunication(), nullptr);
    EXPECT_EQ(answer("0106 0001 0001"), 1);
    EXPECT_EQ(noReply(), 1);
    EXPECT_EQ(getValues("7@5+2", 0), QByteArray(4, '\0'));
    EXPECT_EQ(getValues("1@5+3", 0), QByteArray(6, '\0'));
    EXPECT_EQ(getValues("7@5+-1", 0), QByteArray());
    EXPECT_EQ(getValues("7@5+2147483647", 0), QByteArray());
    EXPECT_EQ(setValues("7@5+1=0100"), 0);
    EXPECT_EQ(PLCAddressChangeIntef(7, QString::fromLatin1("5")), 5);
    EXPECT_EQ(QueryFinishFlag(), 1);
    SetComInfo(&settings);
    EXPECT_EQ(listText(PLC_driver.writeVarList), "7@1+1=0100");
    EXPECT_EQ(listText(PLC_driver.onceReadVarList), "7@2+1");
    EXPECT_EQ(listText(PLC_driver.readVarList), "7@3+1");
    EXPECT_EQ(cacheText(), "01070001=0100");
    EXPECT_EQ(send(), outstanding);
    EXPECT_EQ(answer(goodReply()), 1);
    expectCallbacks({"done 0/0"});
}

TEST_F(HostBinding, NullCallbacksAreSkipped) {
    RegistCallBackFuncIntf(nullptr, nullptr);
    queueWrite(record("7@1+1=0100"));
    EXPECT_EQ(exchange(), 1);
    queueWrite(record("7@1+1=0100"));
    send();
    EXPECT_EQ(noReply(), 41);
    EXPECT_TRUE(PLC_driver.writeVarList.isEmpty());
}

TEST_F(HostBinding, NullReplyIsAnEmptyReply) {
    queueWrite(recordOf(3, 0, record("7@1+1=0100")));
    send();
    EXPECT_EQ(DataCom(nullptr, 0)->retValue, 44);
    queueWrite(record("0/7@1+1=0100"));
    send();
    EXPECT_EQ(DataCom(nullptr, 0)->retValue, 1);
}

}  // namespace

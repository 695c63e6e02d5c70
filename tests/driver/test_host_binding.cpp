#include "support/driver_scene.h"

namespace {

using HostBinding = DriverScene;

TEST_F(HostBinding, AreaWords) {
    FlashLocalRegister(1, 0x80000000U, 0xFFFFFFFFU);
    EXPECT_EQ(LB, 1U);
    EXPECT_EQ(LW, 0x80000000U);
    EXPECT_EQ(RWI, 0xFFFFFFFFU);
}

TEST_F(HostBinding, NothingOutstanding) {
    PLC_driver.retVar = record("7@1+1:5/6");
    PLC_driver.comFailed = 1;
    settings.retryCount = settings.frameDone = 1;
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(listText({PLC_driver.retVar}), "7@1+1:5/6");
    for (const int kept : {int(PLC_driver.comFailed), settings.retryCount, settings.frameDone}) {
        EXPECT_EQ(kept, 1);
    }
}

TEST_F(HostBinding, UnboundDriverRefusesAndKeepsEverything) {
    queueWrite("7@1+1=0100");
    queueOnceRead("7@2+1");
    addCyclic("7@3+1");
    const QByteArray outstanding = send();
    SetComInfo(nullptr);
    RW_VAR var = record("7@5+1");
    QList<ReadVarEntry> entries = {ReadVarEntry()};
    EXPECT_EQ(ReCreatReadVarList(&entries), 0);
    EXPECT_EQ(AddListReadVar(&var), 0);
    EXPECT_EQ(setValues("7@5+1=0100"), 0);
    for (const int mode : {0, 1}) {
        EXPECT_EQ(AddListOnceReadVar(&var, mode), 0);
        EXPECT_EQ(AddListWriteVar(&var, mode), 0);
    }
    EXPECT_EQ(ComCommunication(), nullptr);
    EXPECT_EQ(answer("0106 0001 0001"), 1);
    EXPECT_EQ(getValues("1@5+3", 0), QByteArray(6, '\0'));
    EXPECT_EQ(getValues("7@5+-1", 0), QByteArray());
    EXPECT_EQ(PLCAddressChangeIntef(7, QString::fromLatin1("5")), 5);
    EXPECT_EQ(QueryFinishFlag(), 1);
    SetComInfo(&settings);
    RegistCallBackFuncIntf(nullptr, nullptr);
    EXPECT_EQ(listText(PLC_driver.writeVarList + PLC_driver.onceReadVarList + PLC_driver.readVarList),
              "7@1+1=0100 7@2+1 7@3+1");
    EXPECT_EQ(cacheText(), "01070001=0100");
    EXPECT_EQ(send(), outstanding);
    EXPECT_EQ(noReply(), 41);  // callbacks that are not there are skipped
}

}  // namespace

// A write to a bit inside a word: its word is read, patched and written back.
#include "driver/dispatch.h"
#include "support/driver_scene.h"

namespace {

using BitWrite = DriverScene;

TEST_F(BitWrite, ReadPatchedAndWrittenBack) {
    addCyclic(record("9@1+1"));
    EXPECT_EQ(exchange(), 1);  // the result record shows it until the bit is written
    EXPECT_EQ(setValues("16@2.5+1=01", 3, 4), 0);
    EXPECT_EQ(send(), withCrc("0103 1f42 0001"));
    EXPECT_EQ(cacheText(), "01080002=2000 01090001=0000");
    EXPECT_EQ(answer("0103 02 8001"), 1);
    expectCallbacks({});
    EXPECT_EQ(PLC_driver.retVar.elemType, 9);
    EXPECT_EQ(listText(PLC_driver.writeVarList), "16@37+1=01");
    EXPECT_EQ(cacheText(), "01080002=2000 01090001=0000");
    EXPECT_EQ(send(), withCrc("0106 1f42 8021"));
    EXPECT_EQ(answer("0106 1f42 8021"), 1);
    expectCallbacks({"done 3/4"});
    EXPECT_EQ(PLC_driver.retVar.elemType, 16);
    EXPECT_EQ(PLC_driver.retVar.address, 37);
    EXPECT_TRUE(PLC_driver.writeVarList.isEmpty());
}

TEST_F(BitWrite, EachHalfIsRetriedAlone) {
    settings.retryTimes = 5;
    setValues("15@2.0+1=00", 3, 4);
    const QByteArray read = send();
    EXPECT_EQ(noReply(), 0);
    EXPECT_EQ(send(), read);
    EXPECT_EQ(answer("0103 02 ffff"), 1);
    const QByteArray write = send();
    EXPECT_EQ(write, withCrc("0106 0002 fffe"));
    EXPECT_EQ(answer("0206 0002 fffe"), 0);
    EXPECT_EQ(send(), write);
    EXPECT_EQ(answer("0106 0002 fffe"), 1);
    expectCallbacks({"done 3/4"});
}

TEST_F(BitWrite, FailureOfEitherHalfDropsBoth) {
    for (const bool second : {false, true}) {
        restart();
        setValues("15@2.0+1=01", 3, 4);
        send();
        if (second) {
            EXPECT_EQ(answer("0103 02 0000"), 1);
            send();
        }
        EXPECT_EQ(noReply(), 44);
        expectCallbacks({"failed 3/4", "list 3"});
        EXPECT_TRUE(PLC_driver.writeVarList.isEmpty());
        EXPECT_EQ(sendKind(), "-");
    }
}

TEST_F(BitWrite, CodesByNodeAndHalf) {
    static const int kCodes[][3] = {{0, 1, 1}, {4, 1, 100}};  // node, code of the read, code of the write
    for (const auto &row : kCodes) {
        restart();
        RW_VAR bit = recordOf(3, 4, record("15@32+1=01"));
        bit.nodeId = row[0];
        queueWrite(bit);
        send();
        EXPECT_EQ(answer("0103 02 0100"), row[1]) << "node " << row[0];
        EXPECT_EQ(send(), withCrc("0106 0002 0101"));
        EXPECT_EQ(answer("0106 0002 0101"), row[2]) << "node " << row[0];
        expectCallbacks({"done 3/4"});
    }
}

TEST_F(BitWrite, RemoteReadHalfAsTheSecondReply) {
    RW_VAR bit = record("15@32+1=01");
    bit.nodeId = 4;
    queueWrite(bit);
    send();
    settings.frameDone = 1;
    const QMutexLocker lock(&PLC_driver.listMutex);
    QByteArray reply = withCrc("0103 02 0100");
    EXPECT_EQ(DealDataOfRemoteArea(&reply, reply.size()), 100);
    EXPECT_EQ(PLC_driver.protocolList.at(1).frame, withCrc("0106 0002 0101"));
    settings.frameDone = 0;
    EXPECT_EQ(DealDataOfRemoteArea(&reply, reply.size()), 1);
}

TEST_F(BitWrite, WriteQueuedMeanwhileDoesNotChangeTheBit) {
    setValues("15@2.0+1=01");
    send();
    setValues("15@2.0+1=00");
    EXPECT_EQ(answer("0103 02 0000"), 1);
    EXPECT_EQ(send(), withCrc("0106 0002 0001"));
}

}  // namespace

#include "remote/Func_Remote.h"
#include "support/driver_scene.h"

namespace {

using RemoteFrames = DriverScene;

RW_VAR remoteRecord(int elemType, int address, int count, const char *data, int accessFlag, int param1) {
    RW_VAR var = recordOf(5, 6, record(elemType, address, count, data));
    var.nodeId = 2;
    var.accessFlag = accessFlag;
    var.param1 = param1;
    return var;
}

struct ReadCase {
    int type, address, count, param1;
    const char *frame;
    int dataLength;
};

TEST_F(RemoteFrames, Reads) {
    static const ReadCase kReads[] = {
        {7, 100, 2, 0, "16 05 00 02 01 0007 00000064 0002 00000000 00000000 8b", 4},
        {13, 100, 1, -1, "16 05 00 02 01 000d 00000064 0001 ffffffff 00000000 8c", 4},
        {3, 256, 9, 0, "16 05 00 02 01 0003 00000100 0009 00000000 00000000 2b", 2},
        {6, 0, 8, 0, "16 05 00 02 01 0006 00000000 0008 00000000 00000000 2c", 1},
        {12, 100, 3, 0, "16 05 00 02 01 000c 00000064 0003 00000000 00000000 91", 6},
        {15, 163, 1, 0, "16 05 00 02 01 000f 000000a3 0001 00000000 00000000 d1", 2},
        {-1, 1, 1, 0, "16 05 00 02 01 ffff 00000001 0001 00000000 00000000 1e", 2},
        {7, 0x12345678, 300, 0x01020304, "16 05 00 02 01 0007 12345678 012c 01020304 00000000 70", 600}};
    for (const ReadCase &row : kReads) {
        SCOPED_TRACE(row.frame);
        restart();
        settings.remoteMode = 1;
        settings.frameTotal = settings.frameDone = 7;
        RW_VAR var = remoteRecord(row.type, row.address, row.count, "", 0, row.param1);
        Remote_ReadVar(&var);
        ASSERT_EQ(PLC_driver.protocolList.size(), 1);
        const Protocol &request = PLC_driver.protocolList.at(0);
        EXPECT_EQ(request.frame, bytes(row.frame));
        EXPECT_EQ(request.frameLength, 22);
        EXPECT_EQ(request.dataOffset, 3);
        EXPECT_EQ(request.dataLength, row.dataLength);
        EXPECT_EQ(request.replyLength, row.dataLength + 5);
        EXPECT_EQ(request.var.nodeId, 2);
        EXPECT_EQ(settings.frameTotal, 1);
        EXPECT_EQ(settings.frameDone, 0);
    }
}

TEST_F(RemoteFrames, WriteCarriesItsDataAndShowsInTheCache) {
    settings.remoteMode = 1;
    settings.frameTotal = settings.frameDone = 7;
    PLC_driver.comFailed = 1;  // makes no difference here
    RW_VAR var = remoteRecord(7, 100, 1, "3412", 1, 0);
    Remote_WriteVar(&var);
    const Protocol &request = PLC_driver.protocolList.at(0);
    EXPECT_EQ(request.frame, bytes("18 05 01 02 01 0007 00000064 0001 00000000 00000000 3412 d3"));
    EXPECT_EQ(request.frameLength, 24);
    EXPECT_EQ(request.replyLength, 8);
    EXPECT_EQ(request.dataOffset, 0);
    EXPECT_EQ(request.dataLength, 0);
    EXPECT_EQ(settings.frameTotal, 1);
    EXPECT_EQ(settings.frameDone, 0);
    EXPECT_EQ(cacheText(), "01070064=3412");
    RW_VAR bit = remoteRecord(15, 163, 1, "01", 1, 0);  // its own code, no read first
    Remote_WriteVar(&bit);
    ASSERT_EQ(PLC_driver.protocolList.size(), 2);
    EXPECT_EQ(PLC_driver.protocolList.at(1).frame, bytes("17 05 01 02 01 000f 000000a3 0001 00000000 00000000 01 d4"));
    EXPECT_EQ(cacheText(), "0107000a=0800 01070064=3412");
}

TEST_F(RemoteFrames, LengthByteWrapsAt256AndDataStandAsTheyAre) {
    static const int kSizes[][3] = {{0, 22, 0x16}, {233, 255, 0xFF}, {234, 256, 0}, {235, 257, 1}, {600, 622, 0x6E}};
    for (const auto &row : kSizes) {
        restart();
        RW_VAR var = record(row[0] == 233 ? "0/7@0+2" : "7@0+2");
        var.data = QByteArray(row[0], '\x01');
        Remote_WriteVar(&var);
        const Protocol &request = PLC_driver.protocolList.at(0);
        EXPECT_EQ(request.frame.size(), row[1]);
        EXPECT_EQ(request.frameLength, row[1]);
        EXPECT_EQ(static_cast<unsigned char>(request.frame.at(0)), row[2]);
        EXPECT_EQ(request.frame.mid(21, row[0]), var.data);
        EXPECT_EQ(request.replyLength, row[0] == 233 ? 0 : 8);
    }
}

}  // namespace

#include "remote/Func_Remote.h"
#include "support/driver_scene.h"

namespace {

using RemoteFrames = DriverScene;

// Every field as it stands in the record; the data bytes of the reply.
const char kReads[] = R"(
    7@100+2:5/6^2 > 16 05 00 02 01 0007 00000064 0002 00000000 00000000 8b > 4
    3@256+9:5/6^2 > 16 05 00 02 01 0003 00000100 0009 00000000 00000000 2b > 2
    6@0+8:5/6^2 > 16 05 00 02 01 0006 00000000 0008 00000000 00000000 2c > 1
    12@100+3:5/6^2 > 16 05 00 02 01 000c 00000064 0003 00000000 00000000 91 > 6
    15@163+1:5/6^2 > 16 05 00 02 01 000f 000000a3 0001 00000000 00000000 d1 > 2
    -1@1+1:5/6^2 > 16 05 00 02 01 ffff 00000001 0001 00000000 00000000 1e > 2)";

TEST_F(RemoteFrames, Reads) {
    for (const Row &row : rows(kReads)) {
        SCOPED_TRACE(row.text);
        const int data = row.number(2);
        expectRequest(Remote_ReadVar, record(row[0]), bytes(row[1]), {data + 5, 3, data});
    }
    RW_VAR var = record("13@305419896+300:5/6^2");
    var.param1 = 0x01020304;
    var.param2 = -2;
    expectRequest(Remote_ReadVar, var, bytes("16 05 00 02 01 000d 12345678 012c 01020304 fffffffe 71"),
                  {1205, 3, 1200});
}

TEST_F(RemoteFrames, WritesCarryTheirDataAndShowInTheCache) {
    RW_VAR word = record("7@100+1=3412:5/6^2"), bit = record("15@163+1=01:5/6^2");
    word.accessFlag = bit.accessFlag = 1;
    const QByteArray wordFrame = bytes("18 05 01 02 01 0007 00000064 0001 00000000 00000000 3412 d3");
    expectRequest(Remote_WriteVar, word, wordFrame, {8, 0, 0});
    EXPECT_EQ(cacheText(), "01070064=3412");
    // Its own code, no read first.
    const QByteArray bitFrame = bytes("17 05 01 02 01 000f 000000a3 0001 00000000 00000000 01 d4");
    expectRequest(Remote_WriteVar, bit, bitFrame, {8, 0, 0});
    EXPECT_EQ(cacheText(), "0107000a=0800");
    PLC_driver.comFailed = 1;  // makes no difference here
    Remote_WriteVar(&word);
    EXPECT_EQ(cacheText(), "0107000a=0800 01070064=3412");
}

TEST_F(RemoteFrames, LengthByteWrapsAt256) {
    for (const Row &row : rows("233 > 255; 234 > 0; 600 > 110")) {
        restart();
        RW_VAR var = record("0/7@0+2");
        var.data = QByteArray(row.number(0), '\x01');
        Remote_WriteVar(&var);
        const Protocol &request = PLC_driver.protocolList.at(0);
        EXPECT_EQ(static_cast<unsigned char>(request.frame.at(0)), row.number(1));
        EXPECT_EQ(request.frame.size(), 22 + row.number(0));
        EXPECT_EQ(request.replyLength, 0);
    }
}

}  // namespace

#include "codec/Func_Write.h"
#include "support/driver_scene.h"

namespace {

using WriteFrames = DriverScene;

// On, off and missing coils; data short, exact and long; no elements; both sides of the bounds; types without a frame.
const char kFrames[] = R"(
    1@10+1=01 > 0105000aff00                  ; 1@10+1=00 > 0105000a0000
    1@10+1=80 > 0105000aff00                  ; 1@10+1 > 0105000a0000
    1@0+10=cd01 > 010f0000000a02cd01          ; 1@0+10=cd > 010f0000000a02cd
    1@0+3=05aabb > 010f000000030105aabb       ; 0@0+0 > 010f04b0000000
    0@0+2048 > 010f04b0080000                 ; 2@2047+1=01 > 01050fcfff00
    2@2048+1=01 > 01052ee0ff00                ; 6@255+1=01 > 010524efff00
    7@100+1=3412 > 010600641234               ; 7@100+1 > 010600640000
    7@100+1=34 > 010600640034                 ; 7@100+1=34125678 > 010600641234
    7@100+2=01000200 > 0110006400020400010002 ; 7@100+2=010002 > 0110006400020400010002
    7@100+2=ff > 0110006400020400ff0000       ; 7@100+0=3412 > 01100064000000
    7@100+-1=3412 > 01100064fffffe            ; 7@8000+1=3412 > 0106c3501234
    8@256+1=3412 > 01062ee01234               ; 9@255+1=3412 > 010624271234
    10@0+1=3412 > 0106251c1234                ; 11@0+1=3412 > 010621341234
    19@0+1=3412 > 010632c81234                ; 12@100+1=78563412 > 0110006400020412345678
    12@100+1=7856 > 0110006400020400005678    ; 14@256+2=7856341201000000 > 01102ee00004081234567800000001
    18@0+1=78563412 > 0110213400020412345678  ; 21@0+1=78563412 > 011032c800020412345678
    13@255+1=78563412 > 0110265200020412345678; 13@256+2=7856341201 > 011027100004081234567800000001
    13@0+0 > 01102454000000                   ; 13@0+-1 > 01102454fffefc
    15@163+1=01 > 01000000                    ; 20@163+1=01 > 01000000
    22@5+1=01 > 01000000                      ; -1@5+1=01 > 01000000)";

TEST_F(WriteFrames, OfEveryClass) {
    for (const Row &row : rows(kFrames)) {
        SCOPED_TRACE(row.text);
        restart();
        settings.frameTotal = settings.frameDone = 7;
        RW_VAR var = record(row[0]);
        WriteAnalog(&var);
        const Protocol &request = PLC_driver.protocolList.at(0);
        EXPECT_EQ(request.frame, withCrc(row[1]));
        EXPECT_EQ(request.frameLength, request.frame.size());
        EXPECT_EQ(request.replyLength, 8);
        EXPECT_EQ(request.dataOffset + request.dataLength, 0);
        EXPECT_EQ(listText({request.var, var}), std::string(row[0]) + " " + row[0]);
        EXPECT_EQ(settings.frameTotal, 1);
        EXPECT_EQ(settings.frameDone, 0);
    }
}

TEST_F(WriteFrames, OnlyStationZeroExpectsNoReply) {
    static const int kStations[][3] = {{0, 0, 0}, {1, 1, 8}, {256, 0, 8}, {257, 1, 8}, {-1, 255, 8}};
    for (const auto &row : kStations) {
        restart();
        RW_VAR var = recordAt(row[0], record("7@100+1=3412"));
        WriteAnalog(&var);
        EXPECT_EQ(static_cast<unsigned char>(PLC_driver.protocolList.at(0).frame.at(0)), row[1]);
        EXPECT_EQ(PLC_driver.protocolList.at(0).replyLength, row[2]) << "station " << row[0];
    }
}

TEST_F(WriteFrames, BitInWordIsReadThenWrittenAsItsWord) {
    static const char kBits[] = R"(
    15@37+1=01 > 0103 0002 0001 > 0106 0002 0000 > 7@2+1=0000
    15@127999+1=01 > 0103 1f3f 0001 > 0106 1f3f 0000 > 7@7999+1=0000
    15@128000+1=01 > 0103 c350 0001 > 0106 c350 0000 > 7@8000+1=0000
    16@37+1=01 > 0103 1f42 0001 > 0106 1f42 0000 > 8@2+1=0000
    17@15+1=01 > 0103 2134 0001 > 0106 2134 0000 > 11@0+1=0000
    20@16+1=01 > 0103 32c9 0001 > 0106 32c9 0000 > 19@1+1=0000)";
    for (const Row &row : rows(kBits)) {
        SCOPED_TRACE(row.text);
        restart();
        RW_VAR var = record(row[0]);
        var.accessFlag = 1;
        WriteRegister(&var);
        EXPECT_EQ(listText({var}), row[0]);
        ASSERT_EQ(PLC_driver.protocolList.size(), 2);
        const Protocol &read = PLC_driver.protocolList.at(0), &write = PLC_driver.protocolList.at(1);
        EXPECT_EQ(read.frame, withCrc(row[1]));
        EXPECT_EQ(write.frame, withCrc(row[2]));
        EXPECT_EQ(read.replyLength, 7);
        EXPECT_EQ(write.replyLength, 8);
        EXPECT_EQ(read.var.param1, -1);
        EXPECT_EQ(write.var.param1, 0);
        EXPECT_EQ(read.var.accessFlag, 0);
        EXPECT_EQ(write.var.accessFlag, 1);
        EXPECT_EQ(listText({read.var, write.var}), std::string(row[3]) + " " + row[3]);
        EXPECT_EQ(settings.frameTotal, 2);
        EXPECT_EQ(settings.frameDone, 0);
    }
}

TEST_F(WriteFrames, WrittenValuesShowInTheCacheUnlessTheLinkHasFailed) {
    RW_VAR word = record("7@100+2=341278"), bit = record("16@37+1=01");
    WriteRegister(&word);
    WriteRegister(&bit);
    EXPECT_EQ(cacheText(), "01070064=3412 01070065=7800 01080002=2000");
    EXPECT_EQ(word.data, bytes("341278"));
    restart();
    PLC_driver.comFailed = 1;
    WriteRegister(&word);
    WriteRegister(&bit);
    EXPECT_EQ(cacheText(), "");
    EXPECT_EQ(PLC_driver.protocolList.size(), 3);
}

}  // namespace

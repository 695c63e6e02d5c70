// A write to a bit inside a word: its word is read, patched and written back.
#include "cache/Func_DealData.h"
#include "driver/reply_judging.h"
#include "support/driver_scene.h"

namespace {

using BitWrites = DriverScene;

TEST_F(BitWrites, BothHalvesAreOneOperationAndRetriedAlone) {
    settings.retryTimes = 5;
    // A write queued meanwhile does not change the bit. Until it is written, the result record shows what was before.
    play(R"(
        read 9@1+1           > 0103 2329 0001 > 0103 02 1234   > 1 > done 0/0 > 9@1+1 >
        write 16@37+1=01:3/4 > 0103 1f42 0001 >                > 0 >          > 9@1+1 > 16@37+1=01:3/4
        write 16@37+1=00     > 0103 1f42 0001 > 0103 02 8001   > 1 >          > 9@1+1 > 16@37+1=01:3/4 16@37+1=00
                             > 0106 1f42 8021 > 0206 1f42 8021 > 0 >          > 9@1+1 > 16@37+1=01:3/4 16@37+1=00
                             > 0106 1f42 8021 > 0106 1f42 8021 > 1 > done 3/4 > 16@37+1:3/4 > 16@37+1=00)");
    EXPECT_EQ(cacheText(), "01080002=2000 01090001=3412");
}

TEST_F(BitWrites, NegativeAddressNamesABitWhenItIsTheFirstOfAWord) {
    play(R"(
        write 15@-16+1=01 > 0103 ffff 0001 > 0103 02 8000   > 1 >          > 0/0@0+0  > 15@-16+1=01
                          > 0106 ffff 8001 > 0106 ffff 8001 > 1 > done 0/0 > 15@-16+1 >
        write 15@-17+1=01 > 0103 ffff 0001 > 0103 02 0000   > 1 >          > 15@-16+1 > 15@-17+1=01
                          > 0106 ffff 0000 > 0106 ffff 0000 > 1 > done 0/0 > 15@-17+1 >)");
}

TEST_F(BitWrites, FailureOfEitherHalfDropsBoth) {
    play(R"(
        write 15@32+1=01:3/4 > 0103 0002 0001 >              > 44 > failed 3/4, list 3 > 15@32+1:3/4 >
        write 15@32+1=01:3/4 > 0103 0002 0001 > 0103 02 0000 > 1  >                    > 15@32+1:3/4 > 15@32+1=01:3/4
                             > 0106 0002 0001 >              > 44 > failed 3/4, list 3 > 15@32+1:3/4 >
                             >                >              > 1  >                    > 15@32+1:3/4 >)");
}

TEST_F(BitWrites, OfAnotherNode) {
    queueWrite("15@32+1=01:3/4^4");
    send();
    settings.frameDone = 1;  // as the second reply the read half counts as the operation's last
    QByteArray reply = withCrc("0103 02 0100");
    EXPECT_EQ(DealDataOfRemoteArea(&reply, reply.size()), 100);
    settings.frameDone = 0;
    EXPECT_EQ(answer(reply), 1);
    EXPECT_EQ(send(), withCrc("0106 0002 0101"));
    EXPECT_EQ(answer("0106 0002 0101"), 100);
    expectCallbacks("done 3/4");
}

// Value, word address, word as read, word as written.
const char kPatches[] = R"(
    15@7999.15+1=01 > 1f3f > 0000 > 8000; 15@8000.0+1=01 > c350 > 0100 > 0101; 16@2.5+1=01 > 1f42 > 8001 > 8021
    17@0.15+1=01 > 2134 > 00ff > 80ff   ; 20@1.0+1=00 > 32c9 > ffff > fffe   ; 15@2.3+1=00 > 0002 > ffff > fff7
    15@2.8+1=80 > 0002 > 00ff > 01ff    ; 15@2.7+1=00 > 0002 > ff80 > ff00   ; 15@2.0+1=0001 > 0002 > 0001 > 0000)";

TEST_F(BitWrites, PatchedInEitherFormOfWrite) {
    for (const Row &row : rows(kPatches)) {
        SCOPED_TRACE(row.text);
        restart();
        setValues(row[0]);
        EXPECT_EQ(send(), withCrc(bytes("0103") + bytes(row[1]) + bytes("0001")));
        const QByteArray read = withCrc(bytes("010302") + bytes(row[2]));
        EXPECT_EQ(answer(read), 1);
        const QByteArray written = send();
        EXPECT_EQ(PLC_driver.protocolList.at(0).var.param1, 0);  // no merge read any more
        EXPECT_EQ(written, withCrc(bytes("0106") + bytes(row[1]) + bytes(row[3])));
        const std::string shown = cacheText();
        EXPECT_EQ(answer(written), 1);
        EXPECT_EQ(cacheText(), shown);
    }
    setValues("15@2.3+1=01");
    send();
    PLC_driver.protocolList[1].frame = withCrc("0110 0002 0001 02 0000");
    EXPECT_EQ(answer("0103 02 8000"), 1);
    EXPECT_EQ(send(), withCrc("0110 0002 0001 02 8008"));
}

TEST_F(BitWrites, NothingToPatch) {
    queueWrite("15@35+1=01");
    send();
    QByteArray reply = withCrc("010302ffff"), tooShort = reply.left(5);
    SaveToLocalDataErea(&tooShort);
    PLC_driver.writeVarList.clear();
    SaveToLocalDataErea(&reply);
    EXPECT_EQ(PLC_driver.protocolList.takeLast().frame, withCrc("0106 0002 0000"));
    queueWrite("15@35+1=01");
    SaveToLocalDataErea(&reply);  // no second request
    EXPECT_EQ(PLC_driver.protocolList.size(), 1);
}

}  // namespace

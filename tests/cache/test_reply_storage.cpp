#include "cache/Func_DealData.h"

#include <climits>

#include "support/driver_scene.h"

namespace {

class ReplyStorage : public DriverScene {
protected:
    static void expectReply(const RW_VAR &var, int dataOffset, int dataLength) {
        Protocol request = Protocol();
        request.var = var;
        request.dataOffset = dataOffset;
        request.dataLength = dataLength;
        PLC_driver.protocolList.append(request);
    }
    static void store(QByteArray reply) {
        const QMutexLocker listLock(&PLC_driver.listMutex);
        const QMutexLocker cacheLock(&PLC_driver.cacheMutex);
        SaveToLocalDataErea(&reply);
    }
};

// Data exact, long, short and cut inside an element; what the host queued unchanged stores nothing.
const char kReplies[] = R"(
    7@100+2 > 4 > 12345678 > 01070064=3412 01070065=7856; 19@0+9 > 4 > 12345678 > 01130000=3412 01130001=7856
    200/8@255+1 > 2 > 8001 > c80800ff=0180; 9@5+2 > 3 > 123456 > 01090005=3412 01090006=0056
    10@5+2 > 4 > 1234 > 010a0005=3412; 11@5+1 > 2 > 12345678 > 010b0005=3412
    7@2147483647+2 > 4 > 12345678 > 01070000=7856 0107ffff=3412
    13@5+2 > 8 > 0001000200030004 > 010d0005=02000100 010d0006=04000300; 13@5+2 > 8 > 000100020003 > 010d0005=02000100
    1@0+10 > 2 > 0503 > 01010000=01 01010001=00 01010002=01 01010003=00 01010004=00 01010005=00 01010006=00 01010007=00 01010008=01 01010009=01
    6@255+2 > 1 > fe > 010600ff=00 01060100=01; 0@0+20 > 3 >  >; 0@0+-1 > 1 > ff >; 12@10+2 > 4 > 12345678 >
    14@10+2 > 4 > 12345678 >; 15@10+1 > 2 > 1234 >; 16@10+1 > 2 > 1234 >; 17@10+1 > 2 > 1234 >; 18@10+2 > 4 > 12345678 >
    20@10+1 > 2 > 1234 >; 21@10+2 > 4 > 12345678 >; 22@10+1 > 2 > 1234 >; -1@10+1 > 2 > 1234 >)";

TEST_F(ReplyStorage, ByClass) {
    for (const Row &row : rows(kReplies)) {
        restart();
        expectReply(record(row[0]), 3, row.number(1));
        store(bytes("010302") + bytes(row[2]));
        EXPECT_EQ(cacheText(), row[3]) << row.text;
    }
}

TEST_F(ReplyStorage, RepliesShorterThanTheirOffset) {
    for (const int offset : {3, 100, INT_MAX}) {
        PLC_driver.protocolList.clear();
        expectReply(record("7@100+1"), offset, 2);
        store(bytes("01"));
        store(QByteArray());
    }
    EXPECT_EQ(cacheText(), "");
}

TEST_F(ReplyStorage, MergeReadPatchesThePendingWrite) {
    static const char kMerges[] = R"(
    35 > 01 > 8000 > 8008; 35 > 00 > ffff > fff7; 32 >  > ffff > fffe   ; 47 > 01 > 0000 > 8000
    40 > 80 > 00ff > 01ff; 39 > 00 > ff80 > ff00; 0 > 0001 > 0001 > 0000; 43 > 01 > f7ff > ffff)";
    for (const Row &row : rows(kMerges)) {
        restart();
        RW_VAR read = record("7@2+1");
        read.param1 = -1;
        queueWrite(record(15, row.number(0), 1, row[1]));
        expectReply(read, 3, 2);
        expectReply(record("7@2+1"), 0, 0);
        PLC_driver.protocolList[1].frame = withCrc("0106 0002 0000");
        store(withCrc(bytes("010302") + bytes(row[2])));
        EXPECT_EQ(PLC_driver.protocolList.at(1).frame, withCrc(bytes("0106 0002") + bytes(row[3])));
        EXPECT_EQ(cacheText(), "");
        PLC_driver.protocolList[1].frame = withCrc("0110 0002 0001 02 0000");
        store(withCrc(bytes("010302") + bytes(row[2])));
        EXPECT_EQ(PLC_driver.protocolList.at(1).frame, withCrc(bytes("0110 0002 0001 02") + bytes(row[3])));
    }
}

TEST_F(ReplyStorage, NothingToPatch) {
    RW_VAR read = record("7@2+1");
    read.param1 = -1;
    const QByteArray pending = withCrc("0106 0002 0000");
    const QByteArray reply = withCrc("010302ffff");
    expectReply(read, 3, 2);
    queueWrite(record("15@35+1=01"));
    store(reply);  // no second request
    EXPECT_EQ(PLC_driver.protocolList.size(), 1);
    expectReply(record("7@2+1"), 0, 0);
    PLC_driver.protocolList[1].frame = pending;
    store(reply.left(5));
    EXPECT_EQ(PLC_driver.protocolList.at(1).frame, pending);
    PLC_driver.writeVarList.clear();
    store(reply);
    EXPECT_EQ(PLC_driver.protocolList.at(1).frame, pending);
    EXPECT_EQ(cacheText(), "");
}

}  // namespace

#include "cache/value_cache.h"

#include "cache/Func_DealData.h"
#include "cache/Func_DealData.h"
#include "support/driver_scene.h"

namespace {

using ValueCaches = DriverScene;

TEST_F(ValueCaches, KeysAndEntries) {
    PLC_driver.valueCache.insert(0x01070064U, bytes("3412"));
    for (const Row &row :
         rows("1 > 7 > 100; 257 > 263 > 65636; 2 > 0 > 1; 2 > 6 > 1; 2 > 12 > 1; 2 > 13 > 1; 2 > 269 > 2;"
              "2 > 22 > 1; -1 > -1 > -1; -2147483648 > 7 > 2147483647")) {
        ControlInformationM element = {row.number(0), row.number(1), row.number(2), -1};
        const unsigned int key = ExtendFindSameVar(element);
        EXPECT_TRUE(PLC_driver.valueCache.contains(key)) << row.text;
        EXPECT_EQ(element.address, row.number(2));
    }
    EXPECT_EQ(cacheText(),
              "0007ffff=0000 01070064=3412 02000001=00 02060001=00 020c0001=0000 020d0001=00000000 "
              "020d0002=00000000 02160001=0000 ffffffff=0000");
}

// Request, data of its reply, entries: data exact, long, short and cut inside an element; what the host queued
// unchanged stores nothing.
const char kReplies[] = R"(
    7@100+2 > 4 > 12345678 > 01070064=3412 01070065=7856; 19@0+9 > 4 > 12345678 > 01130000=3412 01130001=7856
    200/8@255+1 > 2 > 8001 > c80800ff=0180; 9@5+2 > 3 > 123456 > 01090005=3412 01090006=0056
    10@5+2 > 4 > 1234 > 010a0005=3412; 11@5+1 > 2 > 12345678 > 010b0005=3412; 7@2147483647+1 > 2 > 1234 > 0107ffff=3412
    13@5+2 > 8 > 0001000200030004 > 010d0005=02000100 010d0006=04000300; 13@5+2 > 8 > 000100020003 > 010d0005=02000100
    1@7+3 > 1 > fd > 01010007=01 01010008=00 01010009=01
    6@255+9 > 1 > 00 > 010600ff=00 01060100=00 01060101=00 01060102=00 01060103=00 01060104=00 01060105=00 01060106=00
    0@0+20 > 3 >  >; 0@0+-1 > 1 > ff >; 12@10+2 > 4 > 12345678 >; 14@10+2 > 4 > 12345678 >; 15@10+1 > 2 > 1234 >
    16@10+1 > 2 > 1234 >; 17@10+1 > 2 > 1234 >; 18@10+2 > 4 > 12345678 >; 20@10+1 > 2 > 1234 >; 21@10+2 > 4 > 12345678 >
    22@10+1 > 2 > 1234 >; -1@10+1 > 2 > 1234 >)";

TEST_F(ValueCaches, RepliesByClass) {
    for (const Row &row : rows(kReplies)) {
        restart();
        Protocol request = Protocol();
        request.var = record(row[0]);
        request.dataOffset = 3;
        request.dataLength = row.number(1);
        PLC_driver.protocolList.append(request);
        QByteArray reply = bytes("010302") + bytes(row[2]), tooShort = bytes("01");
        SaveToLocalDataErea(&tooShort);
        SaveToLocalDataErea(&reply);
        EXPECT_EQ(cacheText(), row[3]) << row.text;
    }
}

// Requests, entries, data of the last request afterwards: padded, never shortened.
const char kWrites[] = R"(
    2@2047+9=0d01 > 010207ff=01 01020800=00 01020801=01 01020802=01 01020803=00 01020804=00 01020805=00 01020806=00 01020807=01 > 0d01
    1@0+2 > 01010000=00 01010001=00 > 00; 1@0+1=ffff > 01010000=01 > ffff
    7@100+2=34127856 > 01070064=3412 01070065=7856 > 34127856; 19@100+2=341278 > 01130064=3412 01130065=7800 > 34127800
    12@10+1=78563412 > 0107000a=3412 0107000b=7856 > 78563412; 14@255+1=7856 > 010800ff=0000 01080100=7856 > 78560000
    18@0+1=78563412 > 010b0000=3412 010b0001=7856 > 78563412; 21@0+1=78563412 > 01130000=3412 01130001=7856 > 78563412
    13@10+2=7856341201 > 010d000a=78563412 010d000b=01000000 > 7856341201000000; 15@163+1=01 > 0107000a=0800 > 01
    16@172+1=ff > 0108000a=0010 > ff; 17@31+2=0101 > 010b0001=0080 010b0002=0100 > 0101
    20@31+2=01 > 01130001=0080 01130002=0000 > 0100; 7@10+1=ffff 15@172+1=00 > 0107000a=ffef > 00
    15@-1+1=01 >  > 01; 15@-16+1=01 > 0107ffff=0100 > 01
    7@100+0=3412 >  > 3412; 13@100+-1=3412 >  > 3412; 22@100+1=3412 >  > 3412; 7@1+1048577 >  >
    7@2147483647+2=34127856 > 01070000=7856 0107ffff=3412 > 34127856)";

TEST_F(ValueCaches, WrittenValues) {
    for (const Row &row : rows(kWrites)) {
        restart();
        QList<RW_VAR> list = records(row[0]);
        for (RW_VAR &var : list) {
            WriteDataToLocal(&var);
        }
        EXPECT_EQ(cacheText(), row[1]) << row.text;
        EXPECT_EQ(list.last().data, bytes(row[2])) << row.text;
    }
}

}  // namespace

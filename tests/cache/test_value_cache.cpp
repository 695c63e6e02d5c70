#include "cache/value_cache.h"

#include <climits>

#include "cache/written_values.h"
#include "support/driver_scene.h"

namespace {

using ValueCache = DriverScene;

unsigned int keyOf(int station, int elemType, int address) {
    const QMutexLocker lock(&PLC_driver.cacheMutex);
    ControlInformationM element = {station, elemType, address, -1};
    const unsigned int key = ExtendFindSameVar(element);
    EXPECT_EQ(element.station, station);
    EXPECT_EQ(element.elemType, elemType);
    EXPECT_EQ(element.address, address);
    EXPECT_EQ(element.count, -1);
    return key;
}

TEST_F(ValueCache, EntrySizesByTheLowByteOfTheType) {
    for (int type = -1; type < 300; ++type) {
        const int lowByte = type & 0xFF;
        const int size = lowByte < 7 ? 1 : lowByte == 13 ? 4 : 2;
        PLC_driver.valueCache.clear();
        EXPECT_EQ(PLC_driver.valueCache.value(keyOf(1, type, 5)), QByteArray(size, '\0')) << "type " << type;
    }
}

TEST_F(ValueCache, Keys) {
    EXPECT_EQ(keyOf(1, 7, 100), 0x01070064U);
    EXPECT_EQ(keyOf(257, 263, 65636), 0x01070064U);
    EXPECT_EQ(keyOf(-1, -1, -1), 0xFFFFFFFFU);
    EXPECT_EQ(keyOf(INT_MIN, 7, INT_MAX), 0x0007FFFFU);
    EXPECT_EQ(PLC_driver.valueCache.size(), 3);
}

TEST_F(ValueCache, ExistingEntriesAreLeftAlone) {
    PLC_driver.valueCache.insert(0x01070064U, bytes("3412"));
    keyOf(1, 7, 100);
    EXPECT_EQ(cacheText(), "01070064=3412");
}

// Request, cache, data of the request afterwards: padded, never shortened.
const char kWrites[] = R"(
    2@2047+10=0d03 > 010207ff=01 01020800=00 01020801=01 01020802=01 01020803=00 01020804=00 01020805=00 01020806=00 01020807=01 01020808=01 > 0d03
    1@0+2 > 01010000=00 01010001=00 > 00; 1@0+1=ffff > 01010000=01 > ffff
    7@100+2=34127856 > 01070064=3412 01070065=7856 > 34127856; 19@100+2=341278 > 01130064=3412 01130065=7800 > 34127800
    12@10+1=78563412 > 0107000a=3412 0107000b=7856 > 78563412
    21@10+2=7856341201 > 0113000a=3412 0113000b=7856 0113000c=0000 0113000d=0100 > 7856341201000000
    14@255+1=78563412 > 010800ff=3412 01080100=7856 > 78563412; 18@0+1=78563412 > 010b0000=3412 010b0001=7856 > 78563412
    13@10+2=7856341201 > 010d000a=78563412 010d000b=01000000 > 7856341201000000; 15@163+1=01 > 0107000a=0800 > 01
    16@172+1=ff > 0108000a=0010 > ff; 17@31+2=0101 > 010b0001=0080 010b0002=0100 > 0101
    20@31+2=01 > 01130001=0080 01130002=0000 > 0100; 7@100+0=3412 >  > 3412; 13@100+-1=3412 >  > 3412
    22@100+1=3412 >  > 3412; -1@100+1=3412 >  > 3412; 7@2147483647+2=34127856 > 01070000=7856 0107ffff=3412 > 34127856)";

TEST_F(ValueCache, WrittenValues) {
    for (const Row &row : rows(kWrites)) {
        restart();
        RW_VAR var = record(row[0]);
        WriteDataToLocal(&var);
        EXPECT_EQ(cacheText(), row[1]) << row.text;
        EXPECT_EQ(var.data, bytes(row[2])) << row.text;
    }
}

TEST_F(ValueCache, BitOfAWordLeavesItsNeighbours) {
    RW_VAR word = record("7@10+1=ffff"), clear = record("15@172+1=00"), zero = record("7@10+1=0000"),
           set = record("15@163+1=01");
    WriteDataToLocal(&word);
    WriteDataToLocal(&clear);
    EXPECT_EQ(cacheText(), "0107000a=ffef");
    WriteDataToLocal(&zero);
    WriteDataToLocal(&set);
    EXPECT_EQ(cacheText(), "0107000a=0800");
}

}  // namespace

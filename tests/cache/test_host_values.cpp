#include "support/driver_scene.h"

namespace {

using HostValues = DriverScene;

// Every class, rounded-up counts, elements never read, no elements, types without values.
const char kGets[] = R"(
    7@10+2 > 02010403                            ; 12@10+3 > 0403020108070605         ; 12@10+1 > 04030201
    15@10.0+16 > 00010000000000000100000000000000; 15@10.8+11 > 0100000000000000000001; 13@5+3 > 1122334455667788
    1@7+3 > 010001; 14@500+2 > 00000000; 13@500+1 > 00000000; 20@500.5+2 > 0000; 7@10+0 >; 12@10+-1 >
    15@10.0+-2147483648 >; 22@10+3 > 000000000000; -1@10+1 > 0000)";

// Texts that do not convert, counts that no controller holds.
const char kRefusedGets[] = R"(
    7@x+3 > 000000000000; 15@10+1 > 0000; 7@-10+1 > 0000; 7@x+0 >; 7@x+-2147483648 >; 7@10+1048577 >
    22@10+2147483647 >)";

TEST_F(HostValues, Got) {
    settings.writeMode = 0;
    for (const char *values : {"7@10+4=0201040306050807", "13@5+4=1122334455667788", "1@7+3=010002"}) {
        EXPECT_EQ(setValues(values), 1);
    }
    for (const Row &row : rows(kGets)) {
        EXPECT_EQ(getValues(row[0]), bytes(row[1])) << row.text;
    }
    EXPECT_EQ(getValues("22@1+1048576").size(), 2097152);
    PLC_driver.valueCache.clear();
    for (const Row &row : rows(kRefusedGets)) {
        EXPECT_EQ(getValues(row[0], 0), bytes(row[1])) << row.text;
    }
    getValues("22@1+2");
    EXPECT_EQ(cacheText(), "");
    getValues("20@1.15+2");
    getValues("14@8+1");
    EXPECT_EQ(cacheText(), "01080008=0000 01080009=0000 01130001=0000 01130002=0000");
}

// Frame limit, values, writes to the controller: pieces, short data, bounds, no elements, refusals.
const char kSets[] = R"(
    2 > 7@100+5=01000200030004000500 > 7@100+2=01000200 7@102+2=03000400 7@104+1=0500
    2 > 7@100+3=010002 > 7@100+2=01000200 7@102+1=0000; 2 > 19@100+1=01000200 > 19@100+1=0100
    0 > 7@5+2=01000200 > 7@5+1=0100 7@6+1=0200; -2147483648 > 13@5+4=0100000002000000 > 13@5+1=01000000 13@6+1=02000000
    32 > 7@7999+3=010002000300 > 7@7999+1=0100 7@8000+2=02000300; 32 > 8@255+2=01000200 > 8@255+1=0100 8@256+1=0200
    2 > 7@7997+5=01000200030004000500 > 7@7997+2=01000200 7@7999+1=0300 7@8000+1=0400 7@8001+1=0500
    32 > 10@255+2=01000200 > 10@255+2=01000200; 32 > 12@100+3=7856341201 > 12@100+2=7856341201000000
    2 > 18@100+6=010000000200000003000000 > 18@100+2=0100000002000000 18@104+1=03000000
    32 > 12@7998+2=01000000 > 12@7998+1=01000000; 32 > 12@7999+2=78563412 > 7@7999+1=3412 7@8000+1=7856
    32 > 12@7998+4=0100000002000000 > 12@7998+1=01000000 12@8000+1=02000000
    32 > 12@7995+10=0100000002000000785634120400000005000000 > 12@7995+2=0100000002000000 7@7999+1=3412 7@8000+1=7856 12@8001+2=0400000005000000
    2 > 14@251+6=010000000200000078563412 > 14@251+2=0100000002000000 8@255+1=3412 8@256+1=7856
    32 > 21@7999+2=78563412 > 21@7999+1=78563412; 32 > 13@255+4=0100000002000000 > 13@255+1=01000000 13@256+1=02000000
    32 > 13@5+3=010203040506 > 13@5+2=0102030405060000; 2 > 13@5+6=01 > 13@5+2=0100000000000000 13@7+1=00000000
    1 > 0@0+10=01000101000000000101 > 0@0+10=0d03; 32 > 1@10+9=02 > 1@8+9=0100
    32 > 3@253+16=01000100000100010000010101010000 > 3@253+3=a5 3@256+13=9407
    32 > 2@2047+2=0001 > 2@2047+1=00 2@2048+1=01; 32 > 6@255+3=010001 > 6@255+1=01 6@256+2=02
    32 > 16@2.5+3=0200 > 16@37+1=01 16@38+1=00 16@39+1=00
    32 > 1@0+0=01 > 1@0+0; 32 > 1@0+-2=01 > 1@0+-2; 32 > 15@2.5+0=01 >; 32 > 7@5+-70=0100 >; 32 > 13@5+-2147483648=01 >
    32 > 22@5+1=0100 >; 32 > 7@x+1=0100 >; 32 > 7@5+1048577=0100 >; 32 > 1@5+2147483647=01 >)";

TEST_F(HostValues, SetShowsTheSameByEveryRoad) {
    enum Road { cacheOnly, linkDown, linkUp };
    for (const Row &row : rows(kSets)) {
        SCOPED_TRACE(row.text);
        std::string shown;
        for (const Road road : {cacheOnly, linkDown, linkUp}) {
            restart();
            settings.maxGroupLength = row.number(0);
            settings.writeMode = road == cacheOnly ? 1 : 2;
            PLC_driver.comFailed = road == linkDown ? 1 : 0;
            const RW_VAR asked = record(row[1]);
            const bool refused = asked.count > kMaxElementCount || asked.addressText == QLatin1String("x");
            EXPECT_EQ(setValues(row[1]), road != cacheOnly || refused ? 0 : 1);
            EXPECT_EQ(listText(PLC_driver.writeVarList), road == cacheOnly ? "" : row[2]);
            EXPECT_TRUE(road != linkUp || cacheText().empty());  // shown when sent
            while (!PLC_driver.writeVarList.isEmpty()) {
                exchange();
            }
            shown = road == cacheOnly ? cacheText() : shown;
            EXPECT_EQ(cacheText(), shown);
        }
    }
}

TEST_F(HostValues, SettingsInTheWrites) {
    settings.remoteMode = 3;
    settings.localNode = 4;
    settings.useVarStation = 0;
    settings.defaultStation = 9;
    setValues("12@7999+4=7856341201000000:5/6");
    EXPECT_EQ(listText(PLC_driver.writeVarList),
              "9/7@7999+1=3412:5/6^4 9/7@8000+1=7856:5/6^4 9/12@8001+1=01000000:5/6^4");
    const QList<RW_VAR> &writes = PLC_driver.writeVarList;
    for (const RW_VAR &write : writes) {
        EXPECT_EQ(write.accessFlag, 1);
        EXPECT_EQ(write.remoteMode, 3);
        EXPECT_EQ(write.retValue + write.param1 + write.param2, 0);
        EXPECT_EQ(write.label + write.addressText, QString::fromLatin1("label7999"));
    }
    settings.writeMode = 0;
    setValues("7@5+1=3412");
    EXPECT_EQ(cacheText(), "09070005=3412");
    EXPECT_EQ(getValues("7@5+1"), bytes("3412"));
}

}  // namespace

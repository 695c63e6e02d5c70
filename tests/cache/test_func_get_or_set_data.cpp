#include "support/driver_scene.h"

namespace {

using HostAccess = DriverScene;

TEST_F(HostAccess, RefusedReadsLeaveTheCacheAlone) {
    EXPECT_EQ(getValues("7@x+3", 0), bytes("000000000000"));
    EXPECT_EQ(getValues("7@-10+1", 0), bytes("0000"));
    EXPECT_EQ(getValues("7@x+-2147483648", 0), QByteArray());
    EXPECT_EQ(getValues("22@10+1048577", 0), QByteArray()) << "too many elements";
    EXPECT_EQ(cacheText(), "");
    EXPECT_EQ(getValues("22@10+1048576").size(), 2 * kMaxElementCount);
}

const char kWrites[] = R"(
    write                       | limit | given                                 | queued
    words in pieces             | 2     | 7@100+5=01000200030004000500          | 7@100+2=01000200 7@102+2=03000400 7@104+1=0500
    limit below 1 is 1          | 0     | 7@5+2=01000200                        | 7@5+1=0100 7@6+1=0200
    a pair across the gap       | 2     | 14@251+6=010000000200000078563412     | 14@251+2=0100000002000000 8@255+1=3412 8@256+1=7856
    bits, octal address         | 1     | 1@10+9=02                             | 1@8+9=0100
    bits in words               | 32    | 16@2.5+3=0200                         | 16@37+1=01 16@38+1=00 16@39+1=00
    no bits are a request       | 32    | 1@0+0=01                              | 1@0+0
    unknown type                | 32    | 22@5+1=0100                           |
    text that does not convert  | 32    | 7@x+1=0100                            |
    too many elements           | 32    | 7@5+1048577=0100                      |)";

TEST_F(HostAccess, WritesShowTheSameByEveryRoad) {
    enum Road { cacheOnly, linkDown, linkUp };
    for (const TableRow &row : table(kWrites)) {
        SCOPED_TRACE(row.line());
        std::string shown;
        for (const Road road : {cacheOnly, linkDown, linkUp}) {
            restart();
            settings.maxGroupLength = row.number("limit");
            settings.writeMode = road == cacheOnly ? 1 : 2;
            PLC_driver.comFailed = road == linkDown ? 1 : 0;
            const RW_VAR asked = record(row["given"]);
            const bool refused = asked.count > kMaxElementCount || asked.addressText == QLatin1String("x");
            EXPECT_EQ(setValues(row["given"]), road != cacheOnly || refused ? 0 : 1);
            EXPECT_EQ(listText(PLC_driver.writeVarList), road == cacheOnly ? "" : row["queued"]);
            EXPECT_TRUE(road != linkUp || cacheText().empty()) << "shown when sent";
            while (!PLC_driver.writeVarList.isEmpty()) {
                exchange();
            }
            shown = road == cacheOnly ? cacheText() : shown;
            EXPECT_EQ(cacheText(), shown);
        }
    }
}

TEST_F(HostAccess, SettingsInTheWrites) {
    settings.remoteMode = 3;
    settings.localNode = 4;
    settings.useVarStation = 0;
    settings.defaultStation = 9;
    setValues("12@7999+4=7856341201000000:5/6");
    EXPECT_EQ(listText(PLC_driver.writeVarList),
              "9/7@7999+1=3412:5/6^4 9/7@8000+1=7856:5/6^4 9/12@8001+1=01000000:5/6^4");
    for (const RW_VAR &write : static_cast<const QList<RW_VAR> &>(PLC_driver.writeVarList)) {
        EXPECT_EQ(write.accessFlag, 1);
        EXPECT_EQ(write.remoteMode, 3);
        for (const int zero : {write.retValue, write.param1, write.param2}) {
            EXPECT_EQ(zero, 0);
        }
        EXPECT_EQ(write.label, QString::fromLatin1("label"));
        EXPECT_EQ(write.addressText, QString::fromLatin1("7999"));
    }
    settings.writeMode = 0;
    setValues("7@5+1=3412");
    EXPECT_EQ(cacheText(), "09070005=3412");
    EXPECT_EQ(getValues("7@5+1"), bytes("3412"));
}

}  // namespace

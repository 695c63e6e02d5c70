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

TEST_F(HostAccess, WritesShowTheSameByEveryRoad) {
    enum Road { cacheOnly, linkDown, linkUp };
    for (const TableRow &row : table(cases("cache/func_get_or_set_data", "writes"))) {
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

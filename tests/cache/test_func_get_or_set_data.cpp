#include "support/driver_scene.h"

namespace {

using HostAccess = DriverScene;

TEST_F(HostAccess, ReadsOfValuesSeenOrNot) {
    settings.writeMode = 1;
    for (const char *seen :
         {"7@10+4=0201040306050807", "13@5+4=1122334455667788", "1@7+3=010001", "7@65535+2=34127856"}) {
        setValues(seen);
    }
    for (const TableRow &row : table(cases("cache/func_get_or_set_data", "reads"))) {
        const std::string before = cacheText();
        EXPECT_EQ(getValues(row["variable"], row.number("result")), bytes(row["values"])) << row.line();
        EXPECT_TRUE(row.number("result") == 1 || cacheText() == before) << row.line();
    }
    EXPECT_EQ(getValues("22@10+1048576").size(), 2 * kMaxElementCount);
    restart();
    for (const char *created : {"20@1.15+2", "14@8+1", "22@1+2"}) {
        getValues(created);
    }
    EXPECT_EQ(cacheText(), "01080008=0000 01080009=0000 01130001=0000 01130002=0000");
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
            EXPECT_EQ(setValues(row["given"]), road == cacheOnly ? row.number("result") : 0);
            EXPECT_EQ(left(), road == cacheOnly ? "" : row["queued"]);
            EXPECT_TRUE(road != linkUp || cacheText().empty()) << "shown when sent";
            while (!PLC_driver.writeVarList.isEmpty()) {
                exchange();
            }
            shown = road == cacheOnly ? cacheText() : shown;
            EXPECT_EQ(cacheText(), shown);
        }
    }
}

// In the writes, and in the result record of the first.

TEST_F(HostAccess, SettingsInTheWrites) {
    settings.remoteMode = 3;
    settings.localNode = 4;
    settings.useVarStation = 0;
    settings.defaultStation = 9;
    setValues("12@7999+4=7856341201000000:5/6");
    EXPECT_EQ(left(), "9/7@7999+1=3412:5/6^4 9/7@8000+1=7856:5/6^4 9/12@8001+1=01000000:5/6^4");
    EXPECT_EQ(otherFields(PLC_driver.writeVarList.at(2)), "label, 7999: 6 1 3 0 0 0");
    PLC_driver.writeVarList[0].param1 = 11;
    PLC_driver.writeVarList[0].param2 = 12;
    exchange();
    EXPECT_EQ(listText({PLC_driver.retVar}), "9/7@7999+1:5/6^4");
    EXPECT_EQ(otherFields(PLC_driver.retVar), "label, 7999: 6 1 3 1 11 12");
    settings.writeMode = 0;
    setValues("7@5+1=3412");
    EXPECT_EQ(cacheText(), "09070005=3412 09071f3f=3412");
    EXPECT_EQ(getValues("7@5+1"), bytes("3412"));
}

}  // namespace

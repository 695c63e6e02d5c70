// What the monitor tells of a variable, from the requests to the cells and records.
#include <gtest/gtest.h>

#include "host/screen/monitor_model.h"
#include "host/screen/record_output.h"
#include "korvel_dravo_port.h"

namespace {

Variable register100(int count) {
    Variable variable;
    variable.label = "a,\n\"b\"";
    variable.elemType = 7;
    variable.addressText = "100";
    variable.count = count;
    EXPECT_TRUE(resolve(&variable).isEmpty());
    return variable;
}

// Registers 100 to 102 hold 7, 65535, 9 in the driver's cache.
class ShownValues : public ::testing::Test {
protected:
    ShownValues() {
        SetComInfo(&settings);
        const QByteArray values = QByteArray::fromHex("0700ffff0900");
        SetRegisterData(QString(), 7, "100", 1, values, 3, 0, 0);  // write mode 0: to the cache
    }
    ~ShownValues() override { SetComInfo(nullptr); }

    struct ComInfo settings = {};
};

TEST_F(ShownValues, AreKnownOnceReadAndFreshForThreePasses) {
    const Variable variable = register100(3);
    MonitorModel model({variable}, 1);
    model.finished({1, 7, 100, 2}, kResultGood, 0, 1000);
    EXPECT_EQ(columnText(model.shown(variable, 1000).values), QString("7 65535 -"));
    model.finished({1, 7, 102, 1}, kResultGood, 0, 2000);
    EXPECT_EQ(columnText(model.shown(variable, 2000).values), QString("7 65535 9"));
    EXPECT_EQ(model.shown(variable, 4000).state.condition, Condition::Fresh) << "3 seconds at least";
    EXPECT_EQ(model.shown(variable, 4001).state.condition, Condition::Stale);
    model.passDone(2000);
    EXPECT_EQ(model.shown(variable, 7000).state.condition, Condition::Fresh) << "three passes";
    EXPECT_EQ(model.shown(variable, 7001).state.condition, Condition::Stale);
    model.finished({1, 7, 102, 1}, 71, 2, 3000);
    EXPECT_EQ(model.shown(variable, 3000).meaning, QString("refused: illegal data address (exception 2)"));
}

TEST(MonitorModel, TellsPassesRequestsAndBytes) {
    MonitorModel model({}, 18);
    for (const double milliseconds : {5, 1, 9}) {
        model.passDone(milliseconds);
    }
    model.judged(41, 0);
    model.setBytes(12, 34);
    EXPECT_TRUE(model.anyFailed());
    EXPECT_EQ(model.statisticsLines(),
              (QStringList{"passes 3   requests per pass 18   ms per pass: min 1.0  median 5.0  max 9.0",
                           "retries 0   failed requests: no reply 1  wrong length 0  rejected 0  exception 0",
                           "bytes out 12   bytes in 34"}));
}

TEST(PassStatistics, MedianIsOfTheLastThousand) {
    PassStatistics statistics(1);
    EXPECT_EQ(statistics.medianMs(), 0);
    for (int pass = 0; pass < 2500; ++pass) {
        statistics.passDone(pass < 1000 || pass >= 2000 ? 9 : 1);
        EXPECT_EQ(statistics.medianMs(), pass < 1500 || pass >= 2499 ? 9 : 1) << pass;
    }
}

ShownVariable failingVariable() {
    ShownVariable shown;
    shown.variable = register100(2);
    shown.state.condition = Condition::Failing;
    shown.state.code = 71;
    shown.values = QJsonArray{4294967295.0, QJsonValue::Null};
    shown.meaning = "refused";
    shown.pass = 3;
    shown.time = "noon";
    return shown;
}

TEST(Records, ShowTheSameInEveryForm) {
    const ShownVariable failing = failingVariable();
    ShownVariable fresh = failing;
    fresh.state.condition = Condition::Fresh;
    fresh.state.code = 0;
    fresh.state.ageMs = 0;
    EXPECT_EQ(recordHeader(RecordFormat::Csv),
              "pass,time,label,type,address,station,state,age_ms,values,code,meaning\n");
    EXPECT_EQ(record(RecordFormat::Csv, failing),
              "3,noon,\"a,\n\"\"b\"\"\",7,100,1,failing,,4294967295 -,71,refused\n");
    EXPECT_EQ(record(RecordFormat::Csv, fresh), "3,noon,\"a,\n\"\"b\"\"\",7,100,1,fresh,0,4294967295 -,,\n");
    EXPECT_EQ(recordHeader(RecordFormat::Json), "");
    EXPECT_EQ(record(RecordFormat::Json, failing),
              R"({"address":"100","age_ms":null,"code":71,"label":"a,\n\"b\"","meaning":"refused","pass":3,)"
              R"("state":"failing","station":1,"time":"noon","type":7,"values":[4294967295,null]})"
              "\n");
    EXPECT_EQ(
        recordHeader(RecordFormat::Table),
        "pass   time                     label                        type  address    station  state       age_ms"
        "   values                   code  meaning\n");
    EXPECT_EQ(
        record(RecordFormat::Table, failing),
        "3      noon                     a, \"b\"                       7     100        1        failing             "
        " 4294967295 -             71    refused\n");
}

TEST(Columns, HaveTheirPlacesOnTheScreen) {
    const ShownVariable failing = failingVariable();
    QStringList cells;
    for (const Column &column : columns()) {
        if (column.title != nullptr) {
            cells += QString("%1 %2 ").arg(column.title).arg(column.screenWidth) +
                     (column.screenText != nullptr ? column.screenText(failing) : columnText(column.value(failing)));
        }
    }
    EXPECT_EQ(cells, (QStringList{"label 24 a,\n\"b\"", "type 6 7", "address 9 100", "station 8 1",
                                  "state 12 failing 71", "age 9 -", "values 0 4294967295 -   refused"}));
}

}  // namespace

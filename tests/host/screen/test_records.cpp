// What the monitor tells of a variable, from the requests to the cells and records.
#include <gtest/gtest.h>

#include "host/screen/monitor_model.h"
#include "host/screen/record_output.h"
#include "support/frame_text.h"

namespace {

dravo::Variable register100(int count) {
    dravo::Variable variable;
    variable.label = "a,\n\"b\"";
    variable.elemType = 7;
    variable.addressText = "100";
    variable.count = count;
    EXPECT_TRUE(dravo::resolve(&variable).isEmpty());
    return variable;
}

TEST(MonitorModel, TellsValuesWhatIsWrongAndFigures) {
    dravo::LineSettings settings;
    settings.startSilenceUs = 0;
    settings.frameLimit = 2;  // registers 100 and 101, then 102
    settings.retries = 0;
    settings.downAfter = 2;
    const dravo::Variable variable = register100(3);
    dravo::Line line(settings, 0);
    line.watch({variable}, 0);
    MonitorModel model({variable}, line, 0);
    qint64 now = 0;
    dravo::Step step = line.next(now);
    // Lets the next request be answered with this, or not at all.
    const auto told = [&](const QByteArray &reply) {
        for (; step.kind == dravo::Step::Wait; step = line.next(now)) {
            now = qMax(now, step.untilUs);
        }
        line.sent(now);
        now += reply.isEmpty() ? 600000 : 10000;
        line.received(reply, now);
        step = line.next(now);
        const ShownVariable shown = model.shown(variable, now);
        return columnText(shown.values) + '|' + dravo::conditionName(shown.state.condition) + '|' + shown.meaning;
    };
    EXPECT_EQ(told(withCrc("0103 04 0007 ffff")), "7 65535 -|never read|");
    EXPECT_EQ(told(withCrc("0103 02 0009")), "7 65535 9|fresh|");
    model.setLost(true);
    EXPECT_EQ(model.shown(variable, now).state.condition, dravo::Stale);
    model.setLost(false);
    EXPECT_EQ(told(withCrc("0183 04")), "7 65535 9|failing|refused: device failure (exception 4)");
    EXPECT_EQ(model.statisticsLines(now).first(),
              "passes 0   requests per pass 2   pass ms: min 0.0  median 0.0  max 0.0");
    told(QByteArray());
    EXPECT_EQ(told(QByteArray()), "7 65535 9|station down|no answer, next try in 1 s");
    EXPECT_TRUE(model.anyFailed());
    // Of the last thousand passes 500 took 1 ms, one 5 ms, the others 9 ms.
    for (int pass = 0; pass < 2000; ++pass) {
        model.passDone(pass == 1999 ? 5000 : pass / 500 == 2 ? 1000 : 9000);
    }
    EXPECT_EQ(model.statisticsLines(now).join("\n").toStdString(),
              "passes 2000   requests per pass 2   pass ms: min 1.0  median 5.0  max 9.0\n"
              "requests 5   retries 0   failed: no answer 2  damaged 0  refused 1\n"
              "reply ms: median 5.4  95th 5.4  99th 5.4  max 5.4   exceptions 1\n"
              "bytes out 40  in 21   busy 2.8 %   dropped: late 0  foreign 0");
}

TEST(Records, ShowTheSameInEveryForm) {
    ShownVariable fresh;
    fresh.variable = register100(2);
    fresh.state.condition = dravo::Fresh;
    fresh.state.ageUs = 999;
    fresh.values = QJsonArray{4294967295.0, QJsonValue::Null};
    fresh.pass = 3;
    fresh.time = "noon";
    ShownVariable failing = fresh;
    failing.state.condition = dravo::Failing;
    failing.state.ageUs = -1;
    failing.state.code = 71;
    failing.meaning = "refused";
    EXPECT_EQ(recordHeader(RecordFormat::Csv) + record(RecordFormat::Csv, fresh),
              "pass,time,label,type,address,station,state,age_ms,values,code,meaning\n"
              "3,noon,\"a,\n\"\"b\"\"\",7,100,1,fresh,0,4294967295 -,,\n");
    EXPECT_EQ(recordHeader(RecordFormat::Json) + record(RecordFormat::Json, failing),
              R"({"address":"100","age_ms":null,"code":71,"label":"a,\n\"b\"","meaning":"refused","pass":3,)"
              R"("state":"failing","station":1,"time":"noon","type":7,"values":[4294967295,null]})"
              "\n");
    EXPECT_EQ(
        record(RecordFormat::Table, failing),
        "3      noon                     a, \"b\"                       7     100        1        failing              "
        " 4294967295 -             71    refused\n");
}

}  // namespace

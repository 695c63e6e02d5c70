// What the monitor tells of a variable, from the requests to the records of every form.
#include <gtest/gtest.h>

#include "host/screen/monitor_model.h"
#include "host/screen/record_output.h"
#include "support/frame_text.h"

namespace {

TEST(MonitorModel, TellsValuesWhatIsWrongAndFigures) {
    dravo::LineSettings settings;
    settings.startSilenceUs = 0;
    settings.frameLimit = 2;  // one value a request
    settings.retries = 0;
    settings.downAfter = 2;
    Tag variable;
    variable.format = {Notation::Signed, Scaling{5, 0, 1}, "\u00b0C"};
    variable.label = "a,\n\"b\"";
    variable.elemType = 12;
    variable.addressText = "100";
    variable.count = 2;
    EXPECT_TRUE(dravo::resolve(&variable).isEmpty());
    dravo::Line line(settings, 0);
    MonitorModel model({variable}, line, 0);
    line.watch(variablesOf(model.variables()), 0);
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
        for (dravo::LineEvent event; line.takeEvent(&event);) {
            if (event.kind == dravo::LineEvent::Exchange) {  // passes are given below
                model.take(event, now);
            }
        }
        ShownVariable shown = model.shown(variable, now);
        shown.pass = 3;
        shown.time = "noon";
        return shown;
    };
    EXPECT_EQ(recordHeader(RecordFormat::Csv) + record(RecordFormat::Csv, told(withCrc("0103 04 ffff fffe"))),
              "pass,time,label,type,address,station,state,age_ms,values,code,meaning,shown,unit\n"
              "3,noon,\"a,\n\"\"b\"\"\",12,100,1,never read,,4294967294 -,,,-1.0 -,\u00b0C\n");
    EXPECT_EQ(recordHeader(RecordFormat::Json) + record(RecordFormat::Json, told(withCrc("0103 04 0000 0009"))),
              R"({"address":"100","age_ms":12,"code":null,"label":"a,\n\"b\"","meaning":null,"pass":3,)"
              R"("shown":["-1.0","4.5"],"state":"fresh","station":1,"time":"noon","type":12,"unit":"°C",)"
              R"("values":[4294967294,9]})"
              "\n");
    model.setLost(true);
    EXPECT_EQ(model.shown(variable, now).state.condition, dravo::Stale);
    model.setLost(false);
    EXPECT_EQ(
        record(RecordFormat::Table, told(withCrc("0183 04"))),
        "3      noon                     a, \"b\"                       12    100        1        failing      24      "
        " -1.0 4.5 \u00b0C              71    its part 100 to 101, refused: device failure (exception 4)\n");
    told(QByteArray());
    EXPECT_EQ(told(QByteArray()).meaning, QString("no reply for 2 s, next try in 1 s"));
    EXPECT_TRUE(model.shown(variable, now + 999999).meaning.endsWith("next try in 1 s")) << "not in 0 s";
    EXPECT_TRUE(model.anyFailed());
}

TEST(PassStatistics, TakeTheMedianOfTheLastThousand) {
    PassStatistics passes;
    for (int pass = 0; pass < 2000; ++pass) {  // 500 of them took 1 ms, one 5 ms, the others 9 ms
        passes.passDone(pass == 1999 ? 5 : pass / 500 == 2 ? 1 : 9);
    }
    EXPECT_EQ(passes.medianMs(), 5);
    EXPECT_EQ(passes.shortestMs() + passes.longestMs() + passes.lastMs(), 15);
}

}  // namespace

// The plan: requests as the driver makes them, each at its price, and the page and the measurement made of it.
#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <random>
#include <set>

#include "host/plan/measurement.h"
#include "host/plan/plan_json.h"

namespace {

dravo::Variable variable(const QString &label, int elemType, const QString &address, int station, int count) {
    dravo::Variable made;
    made.label = label;
    made.elemType = elemType;
    made.addressText = address;
    made.station = station;
    made.count = count;
    return made;
}

dravo::LineSettings lineAt(int baud, int frameLimit, dravo::MergeRule merge) {
    dravo::LineSettings line;
    line.baud = baud;
    line.frameLimit = frameLimit;
    line.merge = merge;
    return line;
}

PassPlan planOf(QVector<dravo::Variable> variables, const dravo::LineSettings &line) {
    for (dravo::Variable &each : variables) {
        EXPECT_TRUE(dravo::resolve(&each).isEmpty()) << each.label.toStdString();
    }
    PassPlan plan;
    EXPECT_FALSE(planPass(
        variables, line, CurvesOf::OwnBaud, [] { return true; }, &plan));
    return plan;
}

// The engine works out the same pass without frames, so the sums of both have to meet to the microsecond.
TEST(Plan, CoversWhatIsWantedAtTheEnginesPrice) {
    std::mt19937 random(1);
    const auto below = [&random](unsigned n) { return int(random() % n); };
    for (int round = 0; round < 36; ++round) {
        const int bauds[] = {50, 9600, 19200, 19201, 115200, 4000000};
        dravo::LineSettings line = lineAt(bauds[round % 6], 1 + below(125), dravo::MergeRule(round / 6 % 2));
        line.bitsPerCharacter = 10 + below(3);
        line.replyDelayUs = below(20) * 1000LL;
        QVector<dravo::Variable> variables;
        std::set<std::tuple<int, int, int>> wanted;
        std::set<QString> labels;
        for (int i = 0; i < 40; ++i) {
            const int type = below(22);
            const QString bit = QStringList{"15", "16", "17", "20"}.contains(QString::number(type)) ? ".3" : "";
            const int address = type < 2 ? 7 : QVector<int>{0, 200, 255, 1000, 2040, 7990}.at(below(6)) % 1200;
            const QString text = QString::number(address + (type < 2 ? 0 : below(30))) + bit;
            dravo::Variable made = variable(QString::number(i), type, text, 1 + below(3), 1 + below(40));
            if (dravo::resolve(&made).isEmpty()) {
                variables.append(made);
                labels.insert(made.label);
                for (int n = 0; n < made.elements.count; ++n) {
                    wanted.insert({made.station, made.elements.elemType, made.elements.address + n});
                }
            }
        }
        const PassPlan plan = planOf(variables, line);
        qint64 us = 0;
        std::set<std::tuple<int, int, int>> covered;  // some twice, where 32-bit values overlap
        for (const PlannedRequest &request : plan.requests) {
            us += request.us;
            int inRuns = 0;
            for (const ElementRun &run : request.wanted) {
                inRuns += run.count;
                for (int n = 0; n < run.count; ++n) {
                    covered.insert({request.elements.station, request.elements.elemType, run.first + n});
                }
            }
            EXPECT_EQ(inRuns, request.wantedCount);
            EXPECT_EQ(bool(request.notes & NoteGap), request.gap() > 0);
            EXPECT_FALSE(request.notes & NoteTooLong);
            for (const QString &label : request.labels) {
                labels.erase(label);
            }
        }
        EXPECT_EQ(us, plan.itself.figures.us) << round;
        EXPECT_EQ(plan.requests.size(), plan.itself.figures.requests) << round;
        EXPECT_EQ(covered, wanted) << round;
        EXPECT_TRUE(labels.empty()) << round << labels.begin()->toStdString();
        EXPECT_LE(plan.bestLimit.figures.us, us);
    }
}

// 9600 baud, 11 bits: a character takes 1.1458 ms. Seven of them are silence.
TEST(Plan, TellsEachRequestAsDocumented) {
    const PassPlan plan = planOf(
        {variable("run", 7, "100", 1, 2), variable("far", 15, "104.1", 1, 16), variable("pair", 12, "7999", 1, 1),
         variable("coil", 0, "17", 2, 1), variable("upper", 7, "8000", 2, 1)},
        lineAt(9600, 125, dravo::MergeByDriver));
    const QJsonObject json = QJsonDocument::fromJson(planJson(plan)).object();
    const QStringList expected = {
        R"({"address":100,"bytes_in":17,"bytes_out":8,"count":6,"elem_type":7,"function":3,"gap":2,"labels":["run","far"],"ms":41.667,"notes":["gap"],"quantity":6,"start":100,"station":1,"wanted":4})",
        R"({"address":7999,"bytes_in":7,"bytes_out":8,"count":1,"elem_type":7,"function":3,"gap":0,"labels":["pair"],"ms":30.209,"notes":["cut 32-bit value","split at a bound"],"quantity":1,"start":7999,"station":1,"wanted":1})",
        R"({"address":8000,"bytes_in":7,"bytes_out":8,"count":1,"elem_type":7,"function":3,"gap":0,"labels":["pair"],"ms":30.209,"notes":["cut 32-bit value","split at a bound"],"quantity":1,"start":50000,"station":1,"wanted":1})",
        R"({"address":15,"bytes_in":6,"bytes_out":8,"count":1,"elem_type":0,"function":1,"gap":0,"labels":["coil"],"ms":29.063,"notes":[],"quantity":1,"start":1215,"station":2,"wanted":1})",
        R"({"address":8000,"bytes_in":7,"bytes_out":8,"count":1,"elem_type":7,"function":3,"gap":0,"labels":["upper"],"ms":30.209,"notes":[],"quantity":1,"start":50000,"station":2,"wanted":1})"};
    for (int i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(QJsonDocument(json["requests"].toArray().at(i).toObject()).toJson(QJsonDocument::Compact),
                  expected.at(i));
    }
    EXPECT_EQ(json["line"].toObject(),
              (QJsonObject{{"baud", 9600}, {"bits_per_character", 11}, {"silence_ms", 4.011}, {"turnaround_ms", 5}}));
    EXPECT_EQ(json["pass_ms"].toDouble(), 161.357);
    EXPECT_EQ(json["best_frame_limit"].toObject(), (QJsonObject{{"limit", 6}, {"pass_ms", 161.357}}));
    EXPECT_EQ(json["other_merge"].toObject(), (QJsonObject{{"merge", "time"}, {"requests", 5}, {"pass_ms", 161.357}}));
}

TEST(Measurement, TakesTheMedianOfCleanExchangesAfterTheFirstPass) {
    PassPlan plan = planOf({variable("a", 7, "0", 1, 1), variable("b", 7, "0", 2, 1), variable("c", 7, "0", 3, 1)},
                           lineAt(9600, 32, dravo::MergeByDriver));
    Measurement measurement(plan);
    qint64 now = 0;
    const auto exchange = [&](int request, qint64 us, dravo::LineEvent::Failure failure = dravo::LineEvent::None) {
        dravo::LineEvent event;
        event.request = plan.requests.at(request).sent;
        event.failure = failure;
        event.over = true;
        event.code = failure == dravo::LineEvent::None ? dravo::LineEvent().code + 1 : 41;
        measurement.take(event, now += us);
    };
    for (const qint64 us : {1, 40, 10, 30}) {
        exchange(0, us);
        exchange(1, 1000 + us, us == 40 ? dravo::LineEvent::NoAnswer : dravo::LineEvent::None);
        dravo::LineEvent passDone;
        passDone.kind = dravo::LineEvent::PassDone;
        measurement.take(passDone, now);
    }
    measurement.fill(&plan);
    EXPECT_EQ(measurement.passes(), 4);
    EXPECT_EQ(plan.requests.at(0).measuredUs, 40) << "of 40 and 30; what follows a failure is left out";
    EXPECT_EQ(plan.requests.at(1).measuredUs, 1030);
    EXPECT_EQ(plan.requests.at(1).failure, QString());
    EXPECT_EQ(plan.requests.at(2).failure, "not asked");
}

}  // namespace

// The line engine as a host uses it: stations that die, refused addresses, the state of every value.
#include <gtest/gtest.h>
#include <malloc.h>

#include <climits>

#include "korvel_dravo_port.h"
#include "line/desk.h"
#include "line/soak.h"
#include "line/station_backoff.h"
#include "support/frame_text.h"

using dravo::Condition;
using dravo::LineEvent;

namespace {

constexpr Us kSecond = 1000000;

TEST(Line, DeadStationCostsSixPercentAtMostAndItsOperationsFail) {
    Desk desk(at9600(), WireFaults(), wireAt9600());
    QVector<dravo::Variable> variables;
    for (int i = 0; i < 24; ++i) {
        variables.append(variable(i / 8 == 2 ? 9 : 1 + i / 8, 7, QByteArray::number(i * 100), 8));  // nobody is 9
    }
    desk.line.watch(variables, 0);
    desk.run(60 * kSecond, [](const LineEvent &event) { return event.kind == LineEvent::PassDone; });
    EXPECT_LT(desk.now, 60 * kSecond);
    const dravo::LineCounts &counts = desk.line.statistics().line().counts;
    const qint64 before = counts.answered;
    desk.run(desk.now + 60 * kSecond);
    EXPECT_GE(1.06 * double(counts.answered - before), 60 / 0.0423) << "8 characters, 5 ms, 21 characters, silence";
    EXPECT_EQ(desk.line.stateOf(variables.last(), desk.now).condition, Condition::Down);
    dravo::Variable everywhere = variables.first();
    everywhere.station = 0;
    for (int round = 0; round < 2; ++round) {  // in the second one the station rests first
        QMap<int, int> outcomes;
        for (int i = 0; i < 6; ++i) {
            ++outcomes[desk.line.readOnce(variables.last())];
            ++outcomes[desk.line.write(variables.last(), QByteArray(16, char(i)))];
        }
        const int last = desk.line.write(everywhere, QByteArray(16, '\0'));
        ++outcomes[last];
        desk.run(desk.now + 60 * kSecond, [&](const LineEvent &event) {
            EXPECT_FALSE(event.cyclic && event.station == 9) << "once down, it costs probes and operations alone";
            if (event.kind == LineEvent::Operation) {
                EXPECT_EQ(event.done, event.operation == last && outcomes.size() == 1);
                EXPECT_TRUE(event.done || (event.failure == LineEvent::NoAnswer && event.station == 9));
                EXPECT_EQ(outcomes.take(event.operation), 1);
            }
            return outcomes.isEmpty();
        });
        EXPECT_TRUE(outcomes.isEmpty());
    }
}

TEST(Line, StatesFollowReadsWritesRefusalsAndADeadStation) {
    WireFaults faults;
    faults.deadStation = 3;    // from 10 s to 20 s
    faults.refusedFrom = 110;  // in a gap between two variables, and in one of its own
    dravo::LineSettings settings = at9600();
    settings.passPeriodUs = kSecond;
    settings.downAfter = 0;  // never
    EXPECT_FALSE(dravo::StationBackoff(settings).missed(3, 0, 0));
    settings.downAfter = 3;
    Desk desk(settings, faults, wireAt9600());
    const dravo::Variable watched = variable(3, 7, "40", 2);
    const QVector<dravo::Variable> around = {variable(1, 7, "104"), variable(1, 12, "107"),
                                             variable(1, 15, "109.3", 2)};
    const dravo::Variable refused = variable(1, 7, "111", 2);
    desk.line.watch(around + QVector<dravo::Variable>{watched, refused}, 0);
    const auto conditionAt = [&](double seconds, Us laterUs = 0) {
        desk.run(Us(seconds * kSecond));
        return desk.line.stateOf(watched, desk.now + laterUs).condition;
    };
    const auto runUntil = [&](LineEvent::Kind kind, double seconds) {
        desk.run(Us(seconds * kSecond), [&](const LineEvent &event) { return event.kind == kind; });
        EXPECT_LT(desk.now, Us(seconds * kSecond)) << kind;
    };
    EXPECT_EQ(conditionAt(0), Condition::NeverRead);
    runUntil(LineEvent::ReadsChanged, 0.5);
    EXPECT_EQ(conditionAt(1.5, 2 * kSecond), Condition::Fresh);
    EXPECT_EQ(conditionAt(1.5, 4 * kSecond), Condition::Stale);
    desk.line.write(watched, QByteArray(4, '\x01'));
    EXPECT_EQ(conditionAt(2.1), Condition::Stale) << "done, and not read back";
    EXPECT_EQ(conditionAt(4), Condition::Fresh);
    EXPECT_EQ(dravo::Line::values(watched), QByteArray(4, '\x01'));
    for (const dravo::Variable &one : around) {
        EXPECT_EQ(desk.line.stateOf(one, desk.now).condition, Condition::Fresh) << one.label.toStdString();
    }
    EXPECT_EQ(desk.line.stateOf(refused, desk.now).condition, Condition::NotReadable);
    const dravo::LineCounts &counts = desk.line.statistics().line().counts;
    const qint64 refusals = counts.exceptions[2];
    EXPECT_EQ(conditionAt(14), Condition::Failing);
    EXPECT_EQ(desk.line.stateOf(watched, desk.now).code, 41) << "no reply";
    runUntil(LineEvent::StationDown, 20);
    runUntil(LineEvent::StationUp, 30);
    EXPECT_EQ(conditionAt(50), Condition::Fresh);
    EXPECT_EQ(counts.exceptions[2], refusals) << "asked again too soon";
    desk.run(75 * kSecond);
    EXPECT_GT(counts.exceptions[2], refusals) << "never asked again";
}

TEST(Line, AStationIsProbedAfterARestartThoughAProbeWasWaiting) {
    WireFaults faults;
    faults.deadStation = 3;  // from 10 s to 20 s
    Desk desk(at9600(), faults, wireAt9600());
    desk.line.watch({variable(1, 7, "100"), variable(2, 7, "100"), variable(3, 7, "100")}, 0);
    desk.run(20 * kSecond, [](const LineEvent &event) { return event.kind == LineEvent::StationDown; });
    ASSERT_TRUE(desk.line.isDown(3));
    desk.run(desk.line.nextProbeUs(3));
    ASSERT_EQ(desk.line.next(desk.now).kind, dravo::Step::Wait) << "for the answer to another request";
    desk.line.restart(desk.now);
    desk.run(45 * kSecond);
    EXPECT_FALSE(desk.line.isDown(3));
}

TEST(Line, ARequestThatWasHeldWaitsOnceAndGetsItsAnswer) {
    dravo::LineSettings settings = at9600();
    settings.retries = 1;
    for (const int sendings : {3, 4}) {  // the third is held, the fourth its retry
        dravo::Line line(settings, 0);
        line.watch({variable(1, 7, "100"), variable(1, 7, "200")}, 0);  // whose answers look alike
        Us now = 0;
        for (int sent = 0; sent < sendings;) {
            const dravo::Step step = line.next(now);
            sent += step.kind == dravo::Step::Send ? 1 : 0;
            now = step.untilUs;
        }
        line.received(withCrc("0103 02 0001"), now + 50000);  // in one portion, and nobody looked before
        const dravo::LineCounts &counts = line.statistics().line().counts;
        EXPECT_EQ((QList<qint64>{counts.waits, counts.lateDropped}), (QList<qint64>{1, 0})) << sendings;
    }
}

TEST(Line, OfEventsThatNobodyTakesOutcomesStay) {
    dravo::Line line(at9600(), 0);
    line.watch({variable(1, 7, "100")}, 0);
    const int operation = line.readOnce(variable(1, 7, "200"));
    Us now = 0;
    for (int i = 0; i < 20000; ++i) {
        const dravo::Step step = line.next(now);
        now = step.untilUs;
        line.received(step.kind == dravo::Step::Send ? withCrc("0103 02 0001") : QByteArray(), now);
    }
    int events = 0;
    int outcomes = 0;
    for (LineEvent event; line.takeEvent(&event); ++events) {
        outcomes += event.kind == LineEvent::Operation && event.operation == operation ? 1 : 0;
    }
    EXPECT_TRUE(outcomes == 1 && events == 4096) << outcomes << " of " << events;
}

// Under the sanitizers, which have an allocator of their own, it says nothing.
TEST(Line, MemoryDoesNotGrow) {
    Soak soak(3);
    EXPECT_EQ(soak.run(60000), "") << soak.report();  // by then every address has been met
    const size_t before = mallinfo2().uordblks;
    EXPECT_EQ(soak.run(200000), "") << soak.report();
    EXPECT_LT(mallinfo2().uordblks, before + 50000);
}

TEST(Line, SettingsAndTimesOfAnySize) {
    const qint64 extremes[] = {LLONG_MIN, -1, 0, 1, LLONG_MAX};
    for (const qint64 us : extremes) {
        dravo::LineSettings settings;
        settings.baud = settings.bitsPerCharacter = settings.retries = settings.frameLimit = settings.downAfter =
            int(qBound<qint64>(INT_MIN, us, INT_MAX));
        settings.timeoutUs = settings.lifetimeUs = settings.startSilenceUs = settings.turnaroundUs = us;
        settings.silenceUs = settings.busyPauseUs = settings.replyDelayUs = settings.passPeriodUs = us;
        settings.staleAfterUs = settings.refusedRetryUs = settings.firstProbeUs = settings.longestProbeUs = us;
        dravo::Line line(settings, us);
        line.watch({variable(1, 7, "100"), variable(1, 1, "17")}, us);
        for (const qint64 now : extremes) {
            line.received(QByteArray(300, '\x01'), now);
            line.next(now);
            line.sent(now);
            line.restart(now);
        }
        EXPECT_GE(line.plannedPassUs(), 0);
    }
}

TEST(Line, DriverOfAnotherIsLeftAlone) {
    ComInfo own = ComInfo();
    own.useVarStation = 1;
    const dravo::Variable dead = variable(5, 7, "100");
    {
        Desk desk(at9600(), WireFaults(), wireAt9600());
        desk.line.watch({variable(1, 7, "100"), dead}, 0);
        {
            dravo::Line second(at9600(), 0);
            EXPECT_FALSE(second.hasDriver());
            EXPECT_EQ(second.watch({variable(1, 7, "200")}, 0), 0);
            EXPECT_EQ(second.write(variable(1, 7, "200"), "12"), 0);
            EXPECT_EQ(second.next(0).kind, dravo::Step::Wait);
            second.restart(0);
        }
        desk.run(9 * kSecond);
        EXPECT_TRUE(desk.line.isDown(5)) << "of the first";
        EXPECT_EQ(desk.line.stateOf(variable(1, 7, "100"), desk.now).condition, dravo::Fresh);
        // Its read half is out, or will be, when the host binds anew.
        const int write = desk.line.write(variable(1, 15, "300.5"), QByteArray(1, '\1'));
        desk.run(desk.now + 30000);
        SetComInfo(&own);
        EnableEthernet(-1, 1);
        RW_VAR read = RW_VAR();
        read.elemType = 7;
        read.station = 5;
        read.count = 1;
        AddListReadVar(&read);
        const int sent = desk.sent;
        int failed = 0;
        desk.run(desk.now + kSecond / 10, [&](const dravo::LineEvent &event) {
            failed += event.kind == dravo::LineEvent::Operation && !event.done && event.operation == write;
            return false;
        });
        EXPECT_EQ(failed, 1);
        EXPECT_EQ(desk.sent, sent);
        EXPECT_EQ(desk.line.stateOf(variable(1, 7, "100"), desk.now).condition, dravo::Stale);
        // The host's loop: what was begun is its own now, its station was not taken out again, nobody else hears of it.
        bool asked = false;
        for (int i = 0; i < 20; ++i) {
            const Protocol *request = ComCommunication();
            asked = asked || (request && request->var.station == 5);
            DataCom(nullptr, 0);
        }
        EXPECT_TRUE(asked);
    }
    EXPECT_FALSE(dravo::Line(at9600(), 0).hasDriver()) << "still the host's";
    SetComInfo(nullptr);
    EXPECT_TRUE(dravo::Line(at9600(), 0).hasDriver());
}

TEST(Line, NoRequestIsLongerThanModbusAllowsOrTearsAValue) {
    for (const dravo::MergeRule merge : {dravo::MergeByDriver, dravo::MergeByTime}) {
        dravo::LineSettings settings = at9600();
        settings.merge = merge;
        settings.frameLimit = 125;
        settings.timeoutUs = 20000;  // and no lifetime given: the longest answer alone takes 292 ms
        settings.staleAfterUs = 100 * kSecond;
        Desk desk(settings, WireFaults(), wireAt9600());
        desk.wire.alarm = [](const std::string &what) { ADD_FAILURE() << what; };
        const QVector<dravo::Variable> variables = {variable(1, 13, "10", 150), variable(1, 12, "201", 150),
                                                    variable(1, 7, "1000", 200), variable(1, 1, "0", 1968)};
        desk.line.watch(variables, 0);
        desk.run(5 * kSecond);
        for (const dravo::Variable &one : variables) {
            EXPECT_GT(desk.line.write(one, QByteArray(4 * one.count, '\x01')), 0);
            EXPECT_GT(desk.line.readOnce(one), 0);
        }
        EXPECT_EQ(desk.line.write(variable(1, 1, "0", 1969), QByteArray()), 0) << "more than one request carries";
        desk.run(60 * kSecond);
        EXPECT_EQ(desk.line.statistics().line().counts.failures[dravo::LineCounts::NoAnswer], 0);
        for (const dravo::Variable &one : variables) {
            EXPECT_EQ(desk.line.stateOf(one, desk.now).condition, Condition::Fresh) << one.elemType;
            EXPECT_EQ(dravo::Line::values(one).count('\x01'), dravo::Line::values(one).size());
        }
    }
}

}  // namespace

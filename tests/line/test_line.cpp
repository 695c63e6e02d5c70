// The line engine as a host uses it: stations that die, refused addresses, the state of every value.
#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <climits>

#include "line/desk.h"
#include "line/soak.h"

using dravo::Condition;
using dravo::LineEvent;

namespace {

constexpr Us kSecond = 1000000;

QVector<dravo::Variable> eightReadsEach(std::initializer_list<int> stations) {
    QVector<dravo::Variable> variables;
    for (const int station : stations) {
        for (int i = 0; i < 8; ++i) {
            variables.append(variable(station, 7, QByteArray::number(i * 100), 8));
        }
    }
    return variables;
}

/// The mean length of the passes that ended in the minute after the first one.
double meanPassUs(Desk &desk) {
    desk.run(600 * kSecond, [](const LineEvent &event) { return event.kind == LineEvent::PassDone; });
    const Us first = desk.now;
    desk.events.clear();
    desk.run(first + 60 * kSecond);
    return 60.0 * kSecond / std::max(desk.count(LineEvent::PassDone), 1);
}

TEST(Line, DeadStationCostsSixPercentAtMost) {
    Desk healthy(at9600(), WireFaults(), wireAt9600());
    healthy.line.watch(eightReadsEach({1, 2}), 0);
    const double without = meanPassUs(healthy);

    Desk desk(at9600(), WireFaults(), wireAt9600());
    desk.line.watch(eightReadsEach({1, 2, 9}), 0);  // nobody has number 9
    const double with = meanPassUs(desk);
    EXPECT_LE(with, 1.06 * without) << "passes of " << with << " and " << without << " us";
    EXPECT_TRUE(desk.line.isDown(9));
    EXPECT_EQ(desk.line.stateOf(variable(9, 7, "0"), desk.now).condition, Condition::Down);
    EXPECT_EQ(desk.line.stateOf(variable(1, 7, "0"), desk.now).condition, Condition::Fresh);
}

TEST(Line, DeadStationIsAskedLessAndLessOftenAndComesBack) {
    WireFaults faults;
    faults.deadStation = 3;  // from 10 s to 20 s
    Desk desk(at9600(), faults, wireAt9600());
    desk.line.watch(eightReadsEach({3}), 0);
    desk.run(19 * kSecond);
    EXPECT_EQ(desk.count(LineEvent::StationDown), 1);
    EXPECT_EQ(desk.count(LineEvent::StationUp), 0);
    desk.run(40 * kSecond, [](const LineEvent &event) { return event.kind == LineEvent::StationUp; });
    EXPECT_LT(desk.now, 30 * kSecond);
    desk.run(desk.now + 2 * kSecond);
    EXPECT_EQ(desk.line.stateOf(variable(3, 7, "0", 8), desk.now).condition, Condition::Fresh);
}

TEST(Line, OperationsOfADeadStationHaveAnOutcome) {
    Desk desk(at9600(), WireFaults(), wireAt9600());
    desk.line.watch(eightReadsEach({1, 9}), 0);
    desk.run(60 * kSecond, [](const LineEvent &event) { return event.kind == LineEvent::StationDown; });
    desk.events.clear();
    QList<int> asked;
    for (int i = 0; i < 12; ++i) {
        asked.append(i % 2 == 0 ? desk.line.write(variable(9, 7, "5"), QByteArray(2, char(i)))
                                : desk.line.readOnce(variable(9, 7, QByteArray::number(i))));
    }
    desk.run(desk.now + 60 * kSecond);
    QList<int> over;
    for (const LineEvent &event : desk.events) {
        if (event.kind == LineEvent::Operation) {
            over.append(event.operation);
            EXPECT_FALSE(event.done);
            EXPECT_EQ(event.failure, LineEvent::NoAnswer);
        }
    }
    std::sort(over.begin(), over.end());
    EXPECT_EQ(over, asked);
    EXPECT_EQ(desk.line.stateOf(variable(1, 7, "0"), desk.now).condition, Condition::Fresh);
}

TEST(Line, ReadsAroundARefusedAddressHeal) {
    WireFaults faults;
    faults.refusedFrom = 110;  // in a gap between two variables, and in one of its own
    for (const dravo::MergeRule merge : {dravo::MergeByDriver, dravo::MergeByTime}) {
        dravo::LineSettings settings = at9600();
        settings.merge = merge;
        Desk desk(settings, faults, wireAt9600());
        const QVector<dravo::Variable> readable = {variable(1, 7, "100", 2), variable(1, 7, "104"),
                                                   variable(1, 12, "107"), variable(1, 15, "109.3", 2)};
        const dravo::Variable refused = variable(1, 7, "111", 2);
        desk.line.watch(readable + QVector<dravo::Variable>{refused}, 0);
        int passes = 0;
        desk.run(60 * kSecond,
                 [&](const LineEvent &event) { return event.kind == LineEvent::PassDone && ++passes == 5; });
        for (const dravo::Variable &one : readable) {
            EXPECT_EQ(desk.line.stateOf(one, desk.now).condition, Condition::Fresh) << one.label.toStdString();
        }
        EXPECT_EQ(desk.line.stateOf(refused, desk.now).condition, Condition::NotReadable);
        EXPECT_GE(desk.count(LineEvent::ReadsChanged), 1);
        const dravo::LineCounts before = desk.line.statistics().line().counts;
        desk.run(desk.now + 50 * kSecond);
        EXPECT_EQ(desk.line.statistics().line().counts.exceptions[2], before.exceptions[2]) << "asked again too soon";
        desk.run(desk.now + 20 * kSecond);
        EXPECT_GT(desk.line.statistics().line().counts.exceptions[2], before.exceptions[2]) << "never asked again";
    }
}

TEST(Line, StateOfAValueFollowsItsReadsAndWrites) {
    WireFaults faults;
    faults.deadStation = 3;
    dravo::LineSettings settings = at9600();
    settings.passPeriodUs = kSecond;
    settings.downAfter = 0;
    Desk desk(settings, faults, wireAt9600());
    const dravo::Variable watched = variable(3, 7, "40", 2);
    const auto condition = [&] { return desk.line.stateOf(watched, desk.now).condition; };
    desk.line.watch({watched}, 0);
    EXPECT_EQ(condition(), Condition::NeverRead);
    desk.run(kSecond / 2);
    EXPECT_EQ(condition(), Condition::Fresh);
    EXPECT_EQ(desk.line.stateOf(watched, desk.now + 2 * kSecond).condition, Condition::Fresh);
    EXPECT_EQ(desk.line.stateOf(watched, desk.now + 4 * kSecond).condition, Condition::Stale);
    desk.line.write(watched, QByteArray(4, '\x01'));
    desk.run(desk.now + 10000);
    EXPECT_EQ(condition(), Condition::Stale) << "shown, and not yet answered";
    desk.run(desk.now + 100000);
    EXPECT_EQ(condition(), Condition::Stale) << "done, and not read back";
    desk.run(3 * kSecond);
    EXPECT_EQ(dravo::Line::values(watched), QByteArray(4, '\x01'));
    desk.run(18 * kSecond);
    EXPECT_EQ(condition(), Condition::Failing);
    EXPECT_EQ(dravo::describeResult(desk.line.stateOf(watched, desk.now).code, 0), QLatin1String("no reply"));
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
        for (const int number : {INT_MIN, -1, 0, 1, INT_MAX}) {
            dravo::LineSettings settings;
            settings.baud = settings.bitsPerCharacter = settings.retries = settings.frameLimit = settings.downAfter =
                number;
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
}

TEST(Line, NoRequestIsLongerThanModbusAllowsOrTearsAValue) {
    const int most[] = {0, 2000, 0, 125, 0, 1, 1};  // by function code; of writes: 15 and 16
    for (const dravo::MergeRule merge : {dravo::MergeByDriver, dravo::MergeByTime}) {
        dravo::LineSettings settings = at9600();
        settings.merge = merge;
        settings.frameLimit = 125;
        settings.staleAfterUs = 100 * kSecond;
        Desk desk(settings, WireFaults(), wireAt9600());
        const QVector<dravo::Variable> variables = {variable(1, 13, "10", 150), variable(1, 12, "201", 150),
                                                    variable(1, 7, "1000", 200), variable(1, 1, "0", 1500)};
        desk.line.watch(variables, 0);
        desk.run(5 * kSecond);
        for (const dravo::Variable &one : variables) {
            const int bytes = one.kind == dravo::BitValue ? 1 : one.kind == dravo::WordValue ? 2 : 4;
            EXPECT_GT(desk.line.write(one, QByteArray(bytes * one.count, '\x01')), 0);
            EXPECT_GT(desk.line.readOnce(one), 0);
        }
        desk.run(60 * kSecond);
        for (const LineEvent &event : desk.events) {
            EXPECT_EQ(event.failure, LineEvent::None);
            const int function = event.request.isEmpty() ? 0 : event.request.at(1);
            const int quantity =
                event.request.isEmpty() ? 0 : uchar(event.request.at(4)) << 8 | uchar(event.request.at(5));
            EXPECT_LE(quantity, function == 15 ? 1968 : function == 16 ? 123 : function < 7 ? most[function] : 0);
        }
        for (const dravo::Variable &one : variables) {
            EXPECT_EQ(desk.line.stateOf(one, desk.now).condition, Condition::Fresh) << one.elemType;
            EXPECT_EQ(dravo::Line::values(one).count('\x01'), dravo::Line::values(one).size());
        }
    }
}

}  // namespace

// The line engine as a host uses it: stations that die, refused addresses, the state of every value.
#include <gtest/gtest.h>
#include <malloc.h>

#include <climits>

#include "line/desk.h"
#include "line/soak.h"

using dravo::Condition;
using dravo::LineEvent;

namespace {

constexpr Us kSecond = 1000000;

/// How many of eight reads a station are answered in the minute after the first pass.
double answersInAMinute(Desk &desk, std::initializer_list<int> stations) {
    QVector<dravo::Variable> variables;
    for (int i = 0; i < 8; ++i) {
        for (const int station : stations) {
            variables.append(variable(station, 7, QByteArray::number(i * 100), 8));
        }
    }
    desk.line.watch(variables, 0);
    desk.run(60 * kSecond, [](const LineEvent &event) { return event.kind == LineEvent::PassDone; });
    EXPECT_LT(desk.now, 60 * kSecond);
    const auto before = desk.line.statistics().line().counts.answered;
    desk.run(desk.now + 60 * kSecond);
    return double(desk.line.statistics().line().counts.answered - before);
}

TEST(Line, DeadStationCostsSixPercentAtMostAndItsOperationsHaveAnOutcome) {
    Desk healthy(at9600(), WireFaults(), wireAt9600());
    Desk desk(at9600(), WireFaults(), wireAt9600());
    EXPECT_GE(1.06 * answersInAMinute(desk, {1, 2, 9}), answersInAMinute(healthy, {1, 2})) << "nobody has number 9";
    EXPECT_EQ(desk.line.stateOf(variable(9, 7, "0"), desk.now).condition, Condition::Down);
    QMap<int, int> outcomes;
    for (int i = 0; i < 12; ++i) {
        ++outcomes[i % 2 == 0 ? desk.line.write(variable(9, 7, "5"), QByteArray(2, char(i)))
                              : desk.line.readOnce(variable(9, 7, QByteArray::number(i)))];
    }
    EXPECT_EQ(outcomes.size(), 12);
    desk.run(desk.now + 60 * kSecond, [&](const LineEvent &event) {
        if (event.kind == LineEvent::Operation) {
            EXPECT_TRUE(!event.done && event.failure == LineEvent::NoAnswer && event.station == 9);
            EXPECT_EQ(outcomes.take(event.operation), 1);
        }
        return false;
    });
    EXPECT_TRUE(outcomes.isEmpty());
    EXPECT_EQ(desk.line.stateOf(variable(1, 7, "0"), desk.now).condition, Condition::Fresh);
}

TEST(Line, ReadsAroundARefusedAddressHeal) {
    WireFaults faults;
    faults.refusedFrom = 110;  // in a gap between two variables, and in one of its own
    for (const dravo::MergeRule merge : {dravo::MergeByDriver, dravo::MergeByTime}) {
        dravo::LineSettings settings = at9600();
        settings.merge = merge;
        Desk desk(settings, faults, wireAt9600());
        const QVector<dravo::Variable> variables = {variable(1, 7, "111", 2), variable(1, 7, "100", 2),
                                                    variable(1, 7, "104"), variable(1, 12, "107"),
                                                    variable(1, 15, "109.3", 2)};
        desk.line.watch(variables, 0);
        int left = 5;
        desk.run(60 * kSecond, [&](const LineEvent &event) {
            left -= event.kind == LineEvent::PassDone ? 1 : 0;
            return left == 0;
        });
        for (const dravo::Variable &one : variables) {
            EXPECT_EQ(desk.line.stateOf(one, desk.now).condition,
                      one.label == "111" ? Condition::NotReadable : Condition::Fresh)
                << one.label.toStdString();
        }
        const dravo::LineCounts &counts = desk.line.statistics().line().counts;
        const qint64 before = counts.exceptions[2];
        desk.run(desk.now + 50 * kSecond);
        EXPECT_EQ(counts.exceptions[2], before) << "asked again too soon";
        desk.run(desk.now + 20 * kSecond);
        EXPECT_GT(counts.exceptions[2], before) << "never asked again";
    }
}

TEST(Line, StateOfAValueFollowsItsReadsAndWrites) {
    WireFaults faults;
    faults.deadStation = 3;  // from 10 s to 20 s
    dravo::LineSettings settings = at9600();
    settings.passPeriodUs = kSecond;
    Desk desk(settings, faults, wireAt9600());
    const dravo::Variable watched = variable(3, 7, "40", 2);
    const auto conditionAt = [&](Us us, Us laterUs) {
        desk.run(us);
        return desk.line.stateOf(watched, desk.now + laterUs).condition;
    };
    desk.line.watch({watched}, 0);
    EXPECT_EQ(conditionAt(0, 0), Condition::NeverRead);
    EXPECT_EQ(conditionAt(kSecond / 2, 2 * kSecond), Condition::Fresh);
    EXPECT_EQ(conditionAt(kSecond / 2, 4 * kSecond), Condition::Stale);
    desk.line.write(watched, QByteArray(4, '\x01'));
    EXPECT_EQ(conditionAt(desk.now + 10000, 0), Condition::Stale) << "shown, and not yet answered";
    EXPECT_EQ(conditionAt(desk.now + 100000, 0), Condition::Stale) << "done, and not read back";
    EXPECT_EQ(conditionAt(3 * kSecond, 0), Condition::Fresh);
    EXPECT_EQ(dravo::Line::values(watched), QByteArray(4, '\x01'));
    EXPECT_EQ(conditionAt(14 * kSecond, 0), Condition::Failing);
    EXPECT_EQ(dravo::describeResult(desk.line.stateOf(watched, desk.now).code, 0), QLatin1String("no reply"));
    for (const LineEvent::Kind kind : {LineEvent::StationDown, LineEvent::StationUp}) {
        desk.run(30 * kSecond, [&](const LineEvent &event) { return event.kind == kind; });
        EXPECT_EQ(conditionAt(desk.now + kSecond, 0),
                  kind == LineEvent::StationUp ? Condition::Fresh : Condition::Down);
    }
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

}  // namespace

// Where reads are cut, and what refused ones teach about it.
#include <gtest/gtest.h>

#include <climits>

#include "line/refusing_controller.h"

using namespace dravo;

namespace {

TEST(ReadLimits, FrameLimitModbusAndTheEndOfTheAddressMap) {
    const auto elementsEndAndBytesOfTwo = [](int type, int frameLimit) {
        const ReadLimits limits = readLimits(type, frameLimit);
        return QList<int>{limits.elementsPerRead, limits.end, limits.dataBytes(2)};
    };
    EXPECT_EQ(elementsEndAndBytesOfTwo(0, 32), (QList<int>{256, 64336, 1}));
    EXPECT_EQ(elementsEndAndBytesOfTwo(1, INT_MAX), (QList<int>{2000, 65536, 1}));
    EXPECT_EQ(elementsEndAndBytesOfTwo(6, INT_MIN), (QList<int>{8, 55792, 1}));
    EXPECT_EQ(elementsEndAndBytesOfTwo(13, 125), (QList<int>{62, 28024, 8}));
    EXPECT_EQ(elementsEndAndBytesOfTwo(12, 32), (QList<int>{1, 0, 4}));
    EXPECT_EQ(ReadCost({19200, 12, 22, 5000}).us(4), 28750) << "characters, silences and turnaround";
    EXPECT_EQ(ReadCost({115200, 11, 8, 0}).us(4), 5124);
    EXPECT_EQ(ReadCost({0, 10, 8, -1}).us(0), 200000000);
}

TEST(ReadPlan, EarliestCutsAndRangesOfAnySize) {
    const auto plan = [](const Variables &wanted, int type, int frameLimit) {
        return planReads({wanted, readLimits(type, frameLimit)}, ReadCost({9600, 11, 8, 0}), Refusals());
    };
    EXPECT_EQ(plan({{100, 40, 1}}, 7, 32), (Requests{{100, 8}, {108, 32}}));
    const Variables beyond = {{INT_MAX, INT_MAX, 2}, {-1, 4, 1}, {INT_MIN, INT_MAX, 1}, {0, INT_MIN, 1}, {5, -3, 2}};
    EXPECT_EQ(plan(beyond + Variables{{23535, INT_MAX, 2}}, 7, 32), (Requests{{23535, 1}}));
    std::mt19937 random(1);
    Variables many(1000000);
    for (WantedRange &range : many) {
        range = {int(random() % 70000), int(random() % 1048577), 1 + int(random() % 2)};
    }
    // 56036 registers, 125 each, one shared: pairs begin everywhere.
    EXPECT_EQ(plan(many, 10, 250).size(), 452);
}

TEST(RequestWalls, GapsThenVariablesThenRefusedAndHealed) {
    RefusingController scene(0);
    scene.type = 7;
    scene.limits = readLimits(7, 32);
    scene.watch({{100, 2, 1}, {104, 4, 1}, {108, 2, 2}, {110, 10, 1}, {120, 1, 1}, {121, 2, 1}});
    scene.refused = {113, 120, 122};
    for (int pass = 0; pass < 3; ++pass) {
        const Requests requests = scene.plan();
        std::for_each(requests.begin(), requests.end(), [&](const ElementRange &request) { scene.ask(request); });
    }
    EXPECT_STREQ(qPrintable(scene.said),
                 "station 3 refuses 100 to 122 of type 7: its gaps are no longer read\n"
                 "station 3 refuses 104 to 122 of type 7: its variables are read one by one\n"
                 "station 3 refuses 110 to 119 of type 7: no longer read, tried again rarely\n"
                 "station 3 refuses 120 of type 7: no longer read, tried again rarely\n"
                 "station 3 refuses 121 to 122 of type 7: no longer read, tried again rarely\n");
    EXPECT_FALSE(scene.walls.isRefused({4, 7}, {110, 10, 1}));

    ReadGroup group = {0, 0};
    Requests retries(4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(scene.walls.takeDueRetry(i == 0 ? kRetryUs - 1 : kRetryUs, &group, &retries[i]), i > 0);
    }
    EXPECT_EQ(scene.walls.nextRetryUs(), 2 * kRetryUs);  // even if nothing comes back
    EXPECT_EQ(scene.walls.refused({3, 7}, {110, 10}, scene.wanted(), kRetryUs + 5).learnt, NothingNew);
    EXPECT_TRUE(scene.walls.takeDueRetry(3 * kRetryUs, &group, &retries[0]));
    EXPECT_EQ(retries, (Requests{{120, 1}, {110, 10}, {120, 1}, {121, 2}}));  // the longest overdue first
    EXPECT_FALSE(scene.walls.answered({3, 8}, {110, 10}));
    EXPECT_TRUE(scene.walls.answered({3, 7}, {110, 10}) && scene.walls.answered({3, 7}, {121, 2}));
    EXPECT_EQ(scene.plan(), (Requests{{100, 2}, {104, 4}, {108, 12}, {121, 2}}));  // 120 keeps its walls
    for (const ElementRange &request : Requests{{102, 2}, {104, -1}, {-5, 200}, {0, INT_MAX}, {INT_MAX, 5}}) {
        EXPECT_EQ(RequestWalls().refused({3, 7}, request, scene.wanted(), 0).learnt, NothingNew) << request.first;
    }
    EXPECT_FALSE(scene.walls.answered({3, 7}, {INT_MAX, INT_MAX}));
    EXPECT_FALSE(scene.walls.isRefused({3, 7}, {INT_MAX, INT_MAX, 2}));
}

/// All ways to read the values that are not refused.
struct EveryCut {
    EveryCut(const RefusingController &seen, bool learnt) : scene(seen), walls(seen.walls.of(seen.group()).walls) {
        for (const WantedRange &variable : scene.watched) {
            bool good = true;
            for (const ElementRange &value : scene.valuesOf(variable)) {
                good = good && scene.isGood(value);
                if (!scene.walls.isRefused(scene.group(), {value.first, value.count, value.count})) {
                    values.append(value);
                }
            }
            const bool marked = scene.walls.isRefused(scene.group(), variable);
            EXPECT_TRUE(marked != good || (!marked && !learnt)) << variable.address;
        }
        std::sort(values.begin(), values.end(), [](auto &a, auto &b) { return a.first < b.first; });
    }

    bool isAllowed(const ElementRange &request) const {
        const auto cuts = [&](int wall) { return wall > request.first && wall < request.end(); };
        return request.count <= scene.limits.elementsPerRead && !cuts(scene.limits.bound) &&
               (values.contains(request) || std::none_of(walls.begin(), walls.end(), cuts));
    }
    /// Of equal times the one with fewer requests is less.
    qint64 costOf(const ElementRange &request) const {
        return scene.cost.exact(scene.limits.dataBytes(request.count)) * 64 + 1;
    }
    qint64 cheapest(int from) const {
        qint64 best = from == values.size() ? 0 : LLONG_MAX / 2;
        int end = 0;
        for (int last = from; last < values.size(); ++last) {
            end = qMax(end, int(values.at(last).end()));
            const ElementRange request = {values.at(from).first, end - values.at(from).first};
            if (isAllowed(request)) {
                best = qMin(best, costOf(request) + cheapest(last + 1));
            }
        }
        return best;
    }

    const RefusingController &scene;
    QVector<int> walls;
    Requests values;  // ascending
};

/// Only variables that hold refused addresses are marked, everything else is read, and no cuts are faster.
/// learnt: all of them are, and nothing is refused.
void expectBestPlan(const RefusingController &scene, bool learnt) {
    const EveryCut every(scene, learnt);
    const Requests requests = scene.plan();
    qint64 cost = 0;
    for (const ElementRange &request : requests) {
        ASSERT_TRUE(every.isAllowed(request) && (!learnt || scene.isGood(request))) << request.first;
        cost += every.costOf(request);
    }
    for (const ElementRange &value : every.values) {
        ASSERT_TRUE(std::any_of(requests.begin(), requests.end(), [&](const ElementRange &request) {
            return request.first <= value.first && request.end() >= value.end();
        })) << value.first;
    }
    ASSERT_TRUE(every.values.size() > 12 || cost == every.cheapest(0));
}

TEST(ReadPlan, FourPassesLearnAnythingAndNoCutsAreFaster) {
    for (unsigned seed = 0; seed < 6000 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RefusingController scene(seed);
        for (int change = 0; change < 3; ++change) {
            const Variables before = scene.below(2) == 0 ? scene.watched : Variables();
            scene.drawLimits();
            const int spans[] = {16, 80, 960 / scene.limits.bitsPerElement};
            const int most = scene.below(2) == 0 ? 7 : 14;
            scene.watch(before + scene.drawnVariables(most, spans[scene.below(3)], scene.below(4) == 0 ? 20 : 3));
            for (int pass = scene.below(2); pass < 4; ++pass) {
                scene.pass(pass == 0 ? scene.otherMerge() : scene.plan());
            }
            if (scene.below(2) == 0) {
                scene.watch(scene.watched);  // nothing changes
            }
            expectBestPlan(scene, false);
            scene.pass(scene.plan());
            expectBestPlan(scene, true);
        }
        // Every mark goes once the controller lets it, and nothing is kept of what nobody wants.
        scene.refused.clear();
        ReadGroup group = {0, 0};
        for (ElementRange range = {0, 0}; scene.walls.takeDueRetry(kRetryUs, &group, &range); scene.ask(range)) {
            ASSERT_LE(range.count, scene.limits.elementsPerRead);
        }
        scene.pass(scene.plan());
        expectBestPlan(scene, true);
        scene.watch({});
        ASSERT_TRUE(scene.walls.of(scene.group()).walls.isEmpty());
    }
}

}  // namespace

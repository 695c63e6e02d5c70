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
}

TEST(ReadCost, CharactersSilencesAndTurnaround) {
    EXPECT_EQ(ReadCost({19200, 12, 22, 5000}).us(4), 28750);
    EXPECT_EQ(ReadCost({115200, 11, 8, 0}).us(4), 5124);
    EXPECT_EQ(ReadCost({0, 10, 8, -1}).us(0), 200000000);
}

TEST(ReadPlan, EarliestCutsAndRangesOfAnySize) {
    const auto plan = [](const Variables &wanted, int type, int frameLimit) {
        return planReads({wanted, readLimits(type, frameLimit)}, ReadCost({9600, 11, 8, 0}), Refusals());
    };
    EXPECT_EQ(plan({{100, 40, 1}}, 7, 32), (Requests{{100, 8}, {108, 32}}));
    // Three would take as long: what the third costs, the gaps it leaves out save.
    const WantedElements bits({{49, 1, 1}, {164, 1, 1}, {170, 2, 1}, {269, 1, 1}, {373, 1, 1}, {432, 1, 1}},
                              readLimits(1, 28));
    EXPECT_EQ(planReads(bits, ReadCost({9600, 12, 1, 0}), Refusals()).size(), 2);
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

/// Variables, what a few passes have taught, and the best that any cuts can make of it.
struct EveryCut : RefusingController {
    explicit EveryCut(unsigned seed) : RefusingController(seed) {
        watch(drawnVariables(7, below(2) == 0 ? 16 : 960 / limits.bitsPerElement, 3));
        for (int passes = below(4); passes > 0; --passes) {
            pass(below(2) == 0 ? otherMerge() : plan());
        }
        for (const ElementRange &value : valuesOf(watched)) {
            if (!walls.isRefused(group(), {value.first, value.count, value.count})) {
                values.append(value);
            }
        }
        std::sort(values.begin(), values.end(), [](auto &a, auto &b) { return a.first < b.first; });
    }

    bool isAllowed(const ElementRange &request) const {
        const auto cuts = [&](int wall) { return wall > request.first && wall < request.end(); };
        const QVector<int> learnt = walls.of(group()).walls;
        return request.count <= limits.elementsPerRead && !cuts(limits.bound) &&
               (values.contains(request) || std::none_of(learnt.begin(), learnt.end(), cuts));
    }
    /// Of equal times the one with fewer requests is less.
    qint64 costOf(const ElementRange &request) const { return cost.exact(limits.dataBytes(request.count)) * 64 + 1; }
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

    Requests values;  // to be read, ascending
};

TEST(ReadPlan, NoCutsAreFaster) {
    for (unsigned seed = 0; seed < 6000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const EveryCut every(seed);
        qint64 cost = 0;
        for (const ElementRange &request : every.plan()) {
            ASSERT_TRUE(every.isAllowed(request)) << request.first;
            cost += every.costOf(request);
        }
        ASSERT_TRUE(every.values.size() > 12 || cost == every.cheapest(0));
    }
}

}  // namespace
